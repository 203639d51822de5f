#pragma once

#include "host/drawing/font.h"
#include "text/text_store.h"
#include "text/undo_history.h"

#include <cstdint>
#include <utility>

namespace wainscot {

/// A selection in a text, as two gaps between characters in either order. Without an anchor nothing is
/// selected, and nothing where both are the same.
struct TextSelection {
    int start = -1;
    int end = -1;

    bool hasAnchor() const { return start >= 0; }
    bool isEmpty() const { return !hasAnchor() || start == end; }
    /// Both 0 when nothing is selected.
    int first() const { return isEmpty() ? 0 : std::min(start, end); }
    int last() const { return isEmpty() ? 0 : std::max(start, end); }
    friend bool operator==(TextSelection const&, TextSelection const&) = default;
};

/// One change of a text: `removed` characters from `index` on were replaced.
struct TextEdit {
    std::size_t index = 0;
    std::size_t removed = 0;
    LightweightString<wchar_t> inserted;
};

/// Follows the text of a document, to show it.
class WAINSCOT_API iTextView {
public:
    virtual ~iTextView();
    /// The text has changed. Must not change it.
    virtual void textEdited(TextEdit const& edit) = 0;
};

/// A text that is edited: the characters, the cursor, the selection, and what can be taken back. It draws
/// nothing and tells nobody but its view. Any characters are accepted. Indices outside the text are clamped.
class WAINSCOT_API TextDocument {
public:
    TextDocument() = default;
    TextDocument(TextDocument const&) = delete;
    TextDocument& operator=(TextDocument const&) = delete;

    /// The view must outlive the document, or take itself away; null = none.
    void setView(iTextView* view) { view_ = view; }

    // --- Text
    std::size_t length() const { return store_.size(); }
    /// `index` must be below `length()`.
    wchar_t at(std::size_t index) const { return isWhole() ? text_[index] : store_[index]; }
    LightweightString<wchar_t> substr(std::size_t index, std::size_t count) const;
    /// All of it; kept until the text changes.
    LightweightString<wchar_t> const& text() const;
    /// Another number after each change.
    std::uint64_t revision() const { return revision_; }

    /// Sets another text and forgets what can be taken back. False when it is the text already.
    bool setText(LightweightString<wchar_t> const& text);
    /// The same where most of the text stays: only what differs is replaced, and cursor and selection stay
    /// with their characters. False, and nothing is done, when less than half of the text would stay.
    bool updateText(LightweightString<wchar_t> const& text);
    /// Replaces characters. The cursor stands behind the new ones, nothing is selected. With `Record::yes`
    /// the change can be taken back, with `alone` never together with others; with `no` what came before can
    /// not be taken back any more either, unless an item for it is added next, or it was behind all of the
    /// text. False when it changes nothing; it may be recorded nevertheless.
    enum class Record { no, yes, alone };
    bool replace(int index, int count, LightweightString<wchar_t> const& text, Record record);

    // --- Lines. A line ends at a line feed, which is not part of it. Lines that do not exist = the last one.
    std::size_t numLines() const { return store_.numLines(); }
    /// The line in which a gap lies.
    std::size_t lineOf(std::size_t index) const;
    /// The gaps before and behind the characters of a line.
    std::size_t lineStart(std::size_t line) const;
    std::size_t lineEnd(std::size_t line) const;
    /// The end of the line in which a gap lies.
    std::size_t lineEndFrom(std::size_t gap) const { return store_.lineEnd(gap); }

    // --- Cursor and selection
    int cursor() const { return cursor_; }
    void setCursor(int index) { cursor_ = clamped(index); }
    TextSelection const& selection() const { return selection_; }
    /// Ends beyond the text are clamped; a start below 0 = no anchor.
    void setSelection(int start, int end);
    void dropSelection() { selection_ = {}; }
    LightweightString<wchar_t> selectedText() const;

    /// Whether the words are not to be found out: all of the text counts as one.
    void setOneWord(bool isOneWord) { isOneWord_ = isOneWord; }
    /// The gap that a move leads to, from a gap.
    int seek(int from, iFont::eCharSeekMethod method, int index = iFont::currentIndex) const;
    /// The word, row of blanks or other character beside a gap, as two gaps.
    std::pair<int, int> wordAt(int index) const;

    // --- What can be taken back
    UndoHistory const& history() const { return history_; }
    void addUndoItem(HistoryItem item);
    void clearHistory();
    /// False when there is nothing to be taken back, or made again.
    bool undo();
    bool redo();

private:
    int clamped(int index) const;
    bool replaceUnrecorded(int index, int count, LightweightString<wchar_t> const& text);
    void forgetStale();
    /// Whether `text_` is the text now.
    bool isWhole() const { return textRevision_ == revision_; }
    void change(std::size_t index, std::size_t count, LightweightString<wchar_t> text);

    TextStore store_;
    bool isOneWord_ = false;
    /// Whether the text was changed in a way that the history does not know.
    bool isHistoryStale_ = false;
    UndoHistory history_;
    iTextView* view_ = nullptr;
    std::uint64_t revision_ = 0;
    int cursor_ = 0;
    TextSelection selection_;
    mutable LightweightString<wchar_t> text_;
    mutable std::uint64_t textRevision_ = 0;
};

} // namespace wainscot
