#include "host/drawing/text_seek.h"

#include "host/drawing/text_boundaries_p.h"

#include <algorithm>

namespace wainscot::Glib {

namespace {

std::size_t nextWord(std::wstring_view text, std::size_t at) {
    while (at < text.size() && TextBoundaries::isBlank(text[at])) ++at;
    while (at < text.size() && !TextBoundaries::isBlank(text[at])) ++at;
    while (!TextBoundaries::isStop(text, at)) ++at;
    return at;
}

std::size_t previousWord(std::wstring_view text, std::size_t at) {
    while (at > 0 && TextBoundaries::isBlank(text[at - 1])) --at;
    while (at > 0 && !TextBoundaries::isBlank(text[at - 1])) --at;
    while (!TextBoundaries::isStop(text, at)) --at;
    return at;
}

} // namespace

std::size_t seekInText(std::wstring_view text, std::size_t current, iFont::eCharSeekMethod method,
                       int index) {
    std::size_t const at = std::min(current, text.size());
    switch (method) {
    case iFont::eSeekPrevChar:
        return TextBoundaries::previousStop(text, at);
    case iFont::eSeekNextChar:
        return TextBoundaries::nextStop(text, at);
    case iFont::eSeekNextWord:
        return nextWord(text, at);
    case iFont::eSeekPrevWord:
        return previousWord(text, at);
    case iFont::eSeekStart:
        return 0;
    case iFont::eSeekEnd:
        return text.size();
    case iFont::eSeekAbsolute:
        return index < 0 ? at : std::min(static_cast<std::size_t>(index), text.size());
    }
    return at;
}

std::pair<std::size_t, std::size_t> wordInText(std::wstring_view text, std::size_t index) {
    return TextBoundaries::wordAt(text, index);
}

} // namespace wainscot::Glib
