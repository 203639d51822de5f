#pragma once

#include "host/base/lightweight_string.h"

#include <string>
#include <string_view>

namespace wainscot {

/// Between the window library's UTF-8 and wide text. What is invalid becomes U+FFFD.
LightweightString<wchar_t> wideFromUtf8(std::string_view text);
std::string utf8FromWide(LightweightString<wchar_t> const& text);

} // namespace wainscot
