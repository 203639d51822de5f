#pragma once

#include "host/base/export.h"

#include <string_view>

namespace wainscot {

// Texts in which large and small letters count as the same.

WAINSCOT_API bool isSameText(std::wstring_view a, std::wstring_view b);
WAINSCOT_API bool beginsWithText(std::wstring_view text, std::wstring_view start);
/// The empty part is in every text.
WAINSCOT_API bool holdsText(std::wstring_view text, std::wstring_view part);
WAINSCOT_API wchar_t largeLetter(wchar_t letter);

} // namespace wainscot
