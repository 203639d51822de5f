#pragma once

#include "host/base/lightweight_string.h"

namespace wainscot {

/// The natural order of names: negative, 0 or positive as `a` comes before, is equal to or comes behind `b`.
/// Runs of the digits 0 to 9 are compared by value, however long; letters are compared without regard to
/// case. Texts that are equal so far are compared by code points, so that only equal texts give 0. The same
/// in every locale.
WAINSCOT_API int wstrxcmp(LightweightString<wchar_t> const& a, LightweightString<wchar_t> const& b);

} // namespace wainscot
