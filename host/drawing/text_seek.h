#pragma once

#include "host/drawing/font.h"

#include <cstddef>
#include <string_view>
#include <utility>

/// Places in a text, for editors that keep their text in another form than a string.
namespace wainscot::Glib {

/// The same as `iFont::seek`. The answer depends on the text only.
WAINSCOT_API std::size_t seekInText(std::wstring_view text, std::size_t current,
                                    iFont::eCharSeekMethod method, int index = iFont::currentIndex);

/// The word beside a gap, which a double click selects, as two gaps: letters and digits, a row of blanks, or
/// another character. Where a word and blanks meet, the word.
WAINSCOT_API std::pair<std::size_t, std::size_t> wordInText(std::wstring_view text, std::size_t index);

} // namespace wainscot::Glib
