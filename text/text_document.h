#pragma once

#include "host/drawing/font.h"
#include "text/gap_buffer.h"
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
    std::size_t length() const { return length_; }
    /// `index` must be below `length()`.
    wchar_t at(std::size_t index) const { return isWhole() ? text_[index] : buffer_[index]; }
    LightweightString<wchar_t> substr(std::size_t index, std::size_t count) const;
    /// All of it; kept until the text changes.
    LightweightString<wchar_t> const& text() const;
    /// Another number after each change.
    std::uint64_t revision() const { return revision_; }

    /// Sets another text and forgets what can be taken back. False when it is the text already.
    bool setText(LightweightString<wchar_t> const& text);
    /// Replaces characters. The cursor stands behind the new ones, nothing is selected. With `Record::yes`
    /// the change can be taken back, with `alone` never together with others. False when it changes nothing;
    /// it may be recorded nevertheless.
    enum class Record { no, yes, alone };
    bool replace(int index, int count, LightweightString<wchar_t> const& text, Record record);

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
    void clearHistory() { history_.clear(); }
    /// False when there is nothing to be taken back, or made again.
    bool undo();
    bool redo();

private:
    int clamped(int index) const;
    /// Whether `text_` is the text now.
    bool isWhole() const { return textRevision_ == revision_; }
    std::pair<std::wstring_view, std::wstring_view> parts(std::size_t index, std::size_t count) const;
    /// Whether the text has these characters there; they must fit.
    bool holds(std::size_t index, std::wstring_view text) const;
    void change(std::size_t index, std::size_t count, LightweightString<wchar_t> text);

    /// The text while it is edited; of a text that was only set, nothing.
    GapBuffer buffer_;
    bool isBufferInUse_ = false;
    bool isOneWord_ = false;
    std::size_t length_ = 0;
    UndoHistory history_;
    iTextView* view_ = nullptr;
    std::uint64_t revision_ = 0;
    int cursor_ = 0;
    TextSelection selection_;
    mutable LightweightString<wchar_t> text_;
    mutable std::uint64_t textRevision_ = 0;
};

} // namespace wainscot
