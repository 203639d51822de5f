#include "text/text_engine.h"

#include <algorithm>

namespace wainscot {

namespace {

using Text = LightweightString<wchar_t>;

} // namespace

/// A text that may be entered as it is, is not copied.
Text TextEngine::kept(Text const& text, std::size_t length) const {
    std::size_t room = text.size();
    if (std::uint64_t const limit = rules_.sizeLimit(); limit > 0)
        room = limit > length ? static_cast<std::size_t>(limit - length) : 0;
    if (text.size() <= room && rules_.areAllowed(text.view())) return text;
    Text result;
    for (wchar_t const c : text.view()) {
        if (result.size() >= room) break;
        if (rules_.isAllowed(c)) result.push_back(c);
    }
    return result;
}

bool TextEngine::paste(Text const& text) {
    TextSelection const selection = document_.selection();
    bool const replaces = !selection.isEmpty();
    int const from = replaces ? selection.first() : document_.cursor();
    int const count = selection.last() - selection.first();
    Text const lines = rules_.areLineFeedsAllowed() ? TextRules::withLineFeeds(text) : text;
    Text const entered = kept(lines, document_.length() - static_cast<std::size_t>(count));
    if (entered.empty() && !replaces) return false;
    return document_.replace(from, count, entered, TextDocument::Record::yes);
}

void TextEngine::selectNextCharacter() {
    int const cursor = document_.cursor();
    int const next = document_.seek(cursor, iFont::eSeekNextChar);
    if (next > cursor) document_.setSelection(cursor, next);
}

bool TextEngine::erase(CharPos from, CharPos to, bool recordUndo) {
    int const most = static_cast<int>(document_.length());
    int const first = std::clamp(std::min(from.index, to.index), 0, most);
    int const last = std::clamp(std::max(from.index, to.index), 0, most);
    auto const record = recordUndo ? TextDocument::Record::yes : TextDocument::Record::no;
    return first < last && document_.replace(first, last - first, {}, record);
}

bool TextEngine::eraseSelection(bool recordUndo) {
    TextSelection const selection = document_.selection();
    return erase(selection.first(), selection.last(), recordUndo);
}

bool TextEngine::eraseBackwards(bool byWord) {
    if (!document_.selection().isEmpty()) return eraseSelection(true);
    int const cursor = document_.cursor();
    return erase(document_.seek(cursor, byWord ? iFont::eSeekPrevWord : iFont::eSeekPrevChar), cursor, true);
}

bool TextEngine::eraseForwards(bool byWord) {
    if (!document_.selection().isEmpty()) return eraseSelection(true);
    int const cursor = document_.cursor();
    return erase(cursor, document_.seek(cursor, byWord ? iFont::eSeekNextWord : iFont::eSeekNextChar), true);
}

bool TextEngine::replaceAll(Text const& text) {
    auto const length = static_cast<int>(document_.length());
    if (document_.text() != text) return document_.replace(0, length, text, TextDocument::Record::alone);
    document_.setCursor(length);
    return false;
}

bool TextEngine::hasRoom() const {
    TextSelection const selection = document_.selection();
    auto const selected = static_cast<std::size_t>(selection.last() - selection.first());
    return rules_.sizeLimit() == 0 || document_.length() - selected < rules_.sizeLimit();
}

void TextEngine::selectAll() {
    auto const length = static_cast<int>(document_.length());
    document_.setCursor(length);
    if (length > 0) document_.setSelection(0, length);
}

void TextEngine::select(CharPos from, CharPos to) {
    document_.setCursor(to.index);
    document_.setSelection(std::max(from.index, 0), to.index);
    if (document_.selection().isEmpty()) document_.dropSelection();
}

void TextEngine::extendTo(CharPos place) {
    TextSelection const selection = document_.selection();
    int const start = selection.hasAnchor() ? selection.start : document_.cursor();
    document_.setCursor(place.index);
    document_.setSelection(start, place.index);
}

} // namespace wainscot
