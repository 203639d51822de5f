#include "text/text_document.h"

#include "host/drawing/text_seek.h"

#include <algorithm>

namespace wainscot {

namespace {

/// How many characters round a place are looked at first.
constexpr std::size_t neighbourhood = 160;
/// In longer rows of flags they are no longer told apart.
constexpr std::size_t mostFlagLetters = 4096;
/// A longer word is cut where a double click selects it.
constexpr std::size_t longestWord = 2048;

/// Part of a document, from some place before a gap to some place behind it.
class Excerpt {
public:
    Excerpt(TextDocument const& document, std::size_t around, std::size_t reach)
        : start_(startFor(document, around - std::min(around, reach))),
          text_(document.substr(start_, around - start_ + reach)), length_(document.length()) {}

    std::wstring_view view() const { return text_.view(); }
    std::size_t toExcerpt(std::size_t index) const { return index - start_; }
    std::size_t toDocument(std::size_t index) const { return index + start_; }
    /// Whether the answer may be another one with more of the text.
    bool isCutAt(std::size_t index) const {
        return (index == 0 && start_ > 0) || (index == text_.size() && start_ + text_.size() < length_);
    }

private:
    /// Flags are pairs of letters that are counted from the beginning of a row of them.
    static std::size_t startFor(TextDocument const& document, std::size_t start) {
        auto const isFlagLetter = [](wchar_t c) { return c >= 0x1F1E6 && c <= 0x1F1FF; };
        std::size_t const least = start - std::min(start, mostFlagLetters);
        while (start > least && start < document.length() && isFlagLetter(document.at(start))) --start;
        return start;
    }

    std::size_t start_;
    LightweightString<wchar_t> text_;
    std::size_t length_;
};

} // namespace

iTextView::~iTextView() = default;

int TextDocument::clamped(int index) const {
    return std::clamp(index, 0, static_cast<int>(length()));
}

LightweightString<wchar_t> TextDocument::substr(std::size_t index, std::size_t count) const {
    index = std::min(index, length());
    count = std::min(count, length() - index);
    return isWhole() ? text_.substr(index, count) : store_.substr(index, count);
}

LightweightString<wchar_t> const& TextDocument::text() const {
    if (!isWhole()) text_ = store_.substr(0, length());
    textRevision_ = revision_;
    return text_;
}

std::size_t TextDocument::lineOf(std::size_t index) const {
    return store_.lineOf(std::min(index, length()));
}

std::size_t TextDocument::lineStart(std::size_t line) const {
    return store_.lineStart(std::min(line, numLines() - 1));
}

std::size_t TextDocument::lineEnd(std::size_t line) const {
    return line + 1 < numLines() ? store_.lineStart(line + 1) - 1 : length();
}

void TextDocument::change(std::size_t index, std::size_t count, LightweightString<wchar_t> text) {
    bool const isOther = count == length();
    if (isOther)
        store_ = TextStore(text);
    else
        store_.replace(index, count, text);
    ++revision_;
    text_ = isOther ? text : LightweightString<wchar_t>();
    if (isOther) textRevision_ = revision_;
    selection_ = {};
    if (view_) view_->textEdited({index, count, std::move(text)});
}

bool TextDocument::setText(LightweightString<wchar_t> const& text) {
    if (text.size() == length() && store_.holds(0, text.view())) return false;
    clearHistory();
    change(0, length(), text);
    cursor_ = clamped(cursor_);
    return true;
}

bool TextDocument::updateText(LightweightString<wchar_t> const& text) {
    std::size_t const shorter = std::min(text.size(), length());
    std::size_t const longer = std::max(text.size(), length());
    std::size_t const before = store_.commonPrefix(text.view());
    std::size_t const behind = std::min(store_.commonSuffix(text.view()), shorter - before);
    if (longer == 0 || before + behind < longer - (before + behind)) return false;
    std::size_t const removed = length() - before - behind;
    LightweightString<wchar_t> const inserted = text.substr(before, text.size() - before - behind);
    if (removed == 0 && inserted.empty()) return true;
    clearHistory();
    auto const moved = [&, shift = inserted.size() - removed](int gap) {
        auto const place = static_cast<std::size_t>(gap);
        return static_cast<int>(place <= before ? place : place >= before + removed ? place + shift : before);
    };
    int const cursor = moved(cursor_);
    TextSelection const selection = selection_;
    change(before, removed, inserted);
    cursor_ = cursor;
    if (selection.hasAnchor()) setSelection(moved(selection.start), moved(selection.end));
    return true;
}

bool TextDocument::replaceUnrecorded(int index, int count, LightweightString<wchar_t> const& text) {
    auto const from = static_cast<std::size_t>(clamped(index));
    auto const removed = std::min(static_cast<std::size_t>(std::max(count, 0)), length() - from);
    cursor_ = static_cast<int>(from + text.size());
    if (removed == text.size() && store_.holds(from, text.view())) {
        selection_ = {};
        return false;
    }
    change(from, removed, text);
    return true;
}

bool TextDocument::replace(int index, int count, LightweightString<wchar_t> const& text, Record record) {
    auto const from = static_cast<std::size_t>(clamped(index));
    auto const removed = std::min(static_cast<std::size_t>(std::max(count, 0)), length() - from);
    if (record == Record::no) {
        isHistoryStale_ = isHistoryStale_ || from < length();
        return replaceUnrecorded(index, count, text);
    }
    forgetStale();
    auto const after = static_cast<int>(from + text.size());
    history_.add({substr(from, removed), text, cursor_, after}, record == Record::alone);
    return replaceUnrecorded(index, count, text);
}

void TextDocument::addUndoItem(HistoryItem item) {
    isHistoryStale_ = false;
    item.cursorBefore = std::max(item.cursorBefore, 0);
    item.cursorAfter = std::max(item.cursorAfter, 0);
    history_.add(item);
}

void TextDocument::clearHistory() {
    history_.clear();
    isHistoryStale_ = false;
}

void TextDocument::forgetStale() {
    if (isHistoryStale_) clearHistory();
}

void TextDocument::setSelection(int start, int end) {
    selection_ = start < 0 ? TextSelection() : TextSelection{clamped(start), clamped(end)};
}

LightweightString<wchar_t> TextDocument::selectedText() const {
    auto const first = static_cast<std::size_t>(selection_.first());
    return substr(first, static_cast<std::size_t>(selection_.last()) - first);
}

int TextDocument::seek(int from, iFont::eCharSeekMethod method, int index) const {
    auto const is = [&](iFont::eCharSeekMethod edge, iFont::eCharSeekMethod word) {
        return method == edge || (isOneWord_ && method == word);
    };
    if (is(iFont::eSeekStart, iFont::eSeekPrevWord)) return 0;
    if (is(iFont::eSeekEnd, iFont::eSeekNextWord)) return static_cast<int>(length());
    if (method == iFont::eSeekAbsolute) return clamped(index < 0 ? from : index);
    auto const start = static_cast<std::size_t>(clamped(from));
    for (std::size_t reach = neighbourhood;; reach *= 4) {
        Excerpt const near(*this, start, reach);
        std::size_t const found = Glib::seekInText(near.view(), near.toExcerpt(start), method);
        if (!near.isCutAt(found)) return static_cast<int>(near.toDocument(found));
    }
}

std::pair<int, int> TextDocument::wordAt(int index) const {
    if (isOneWord_) return {0, static_cast<int>(length())};
    auto const place = static_cast<std::size_t>(clamped(index));
    Excerpt const near(*this, place, longestWord);
    auto const [from, to] = Glib::wordInText(near.view(), near.toExcerpt(place));
    return {static_cast<int>(near.toDocument(from)), static_cast<int>(near.toDocument(to))};
}

bool TextDocument::undo() {
    forgetStale();
    UndoHistory::Group const* const group = history_.undo();
    if (!group) return false;
    for (auto item = group->rbegin(); item != group->rend(); ++item) {
        replaceUnrecorded(item->position(), static_cast<int>(item->inserted.size()), item->removed);
        setCursor(item->cursorBefore);
    }
    return true;
}

bool TextDocument::redo() {
    forgetStale();
    UndoHistory::Group const* const group = history_.redo();
    if (!group) return false;
    for (HistoryItem const& item : *group) {
        replaceUnrecorded(item.position(), static_cast<int>(item.removed.size()), item.inserted);
        setCursor(item.cursorAfter);
    }
    return true;
}

} // namespace wainscot
