#pragma once

#include "containers/orientation.h"
#include "host/events/one_shot_timer.h"
#include "text/text_entry.h"

namespace wainscot {

class ScrollBar;
class TextRowsView;

/// Lines of text that the user edits, with scroll bars where they are needed. Its value is the text; lines
/// end at line feeds. A carriage return, alone or before a line feed, counts as one in texts that are set and
/// pasted.
///
/// Long lines are wrapped at words to the width of the box, or scrolled sideways. Texts of any length are
/// edited at the cost of what is in sight. Of a wrapped text of more than 200,000 characters the scroll bar
/// shows an estimate first.
///
/// It tells its owner what `requestCallback` asks for: `eEditStart` and `eEditEnd` when it gets and loses the
/// keyboard focus, `eChanged` when the user changes the text, `eDoubleClick` when a box that cannot be edited
/// is clicked twice. Return begins a new line and is not told; Escape and Tab are left to others. A box that
/// cannot be edited can have the keyboard focus, so that its text can be read, selected and copied by keys.
class WAINSCOT_API MultiLineTextBox : public TextEntry {
public:
    /// What it tells others, by `eCallbackEvent`. The messages have the names that were asked for.
    static constexpr MessageInfo messageTable[] = {
        {"edit start",
         MessageInfo::ownThenText,
         {},
         MessageInfo::queued,
         eEditStart,
         "it has got the keyboard focus"},
        {"edit end",
         MessageInfo::ownThenText,
         {},
         MessageInfo::queued,
         eEditEnd,
         "it has lost the keyboard focus"},
        {"changed",
         MessageInfo::ownThenText,
         {},
         MessageInfo::called,
         eChanged,
         "the user has changed the text"},
        {"double click",
         MessageInfo::ownThenText,
         {},
         MessageInfo::queued,
         eDoubleClick,
         "a box that cannot be edited was clicked twice within 400 ms"},
        {"callback", MessageInfo::fixed, {}, MessageInfo::callback, 0, "instead, where a callback was given"},
        {"data",
         MessageInfo::fixed,
         {},
         MessageInfo::callback,
         0,
         "at the end of editing, before, where it is bound to data"},
    };

    /// A width or height of 0 is that of 12 buttons, and of 5 rows.
    class WAINSCOT_API InitArgs : public TextEntry::InitArgs {
    public:
        using TextEntry::InitArgs::InitArgs;
        InitArgs(GlobCreationInfo const& info) : TextEntry::InitArgs(info) {}

        /// Whether lines are wrapped at words to the width of the box.
        bool wrap = true;
    };

    /// A row, as it is drawn: a line of the text or, of a wrapped line, a part of one.
    struct SubStringRec {
        /// The line of the text.
        unsigned int line = 0;
        /// The characters of the line that stand in the row.
        int start = 0;
        int length = 0;
        /// What is selected of it, as places in the line, the smaller one first; both -1 = nothing.
        NumRange<int, Unordered> selection{-1, -1};
        /// Whether the line ends here and what is selected goes on in the next line.
        bool isLineEndSelected = false;
    };

    explicit MultiLineTextBox(InitArgs const& args);
    MultiLineTextBox(unsigned short width, unsigned short height, Palette const& palette,
                     Canvas* canvas = nullptr);
    ~MultiLineTextBox() override;

    // --- Lines of the text, counted from 0. Lines that do not exist = the last one.
    unsigned int numLines() const;
    /// Without the line feed; all of it, or so many of its characters.
    Text getLine(unsigned int line) const;
    Text getLine(unsigned int line, int from, int count) const;
    int getLineLength(unsigned int line) const;
    /// The index of the first character.
    int getLineStart(unsigned int line) const;
    /// The line in which a gap lies.
    unsigned int getLineOf(int index) const;
    /// Where the cursor is: the line, and how many characters of it stand before.
    unsigned int getCursorLine() const;
    int getCursorColumn() const;
    /// Drops the selection. A column beyond the line's end is its end.
    void setCursorPlace(unsigned int line, int column);
    /// Adds text at the end, as a program that keeps a log does. It tells nobody and cannot be taken back by
    /// undo; cursor and selection stay. A view at the end of the text stays at the end.
    void append(UIString const& text);

    // --- Rows, as they are seen, and scrolling
    void setWrap(bool wraps);
    bool getWrap() const;
    std::size_t numRows() const;
    int getRowHeight() const;
    /// The line to which a row belongs.
    unsigned int getLineOfRow(std::size_t row) const;
    /// The uppermost row that is seen.
    std::size_t getTopRow() const;
    void setTopRow(std::size_t row);
    /// How many pixels are hidden at the left.
    int getScroll() const;
    void setScroll(int pixels);
    /// Scrolls so that a line is seen; one that was out of sight comes to the middle.
    void showLine(unsigned int line);
    void setAlignment(TextAlignment alignment) override;
    void updateVisibleWindow() override;
    /// Where text is seen, in its own coordinates.
    IntBox textArea() const;

    // --- Events
    int handleMouseEvent(Event const& event) override;
    /// Takes the messages of its scroll bars.
    int handleMessageEvent(LightweightString<char> name, Glob* sender) override;
    MouseCursorID contextCursor(XY<int> const& place) const override;
    void handleLayout() override;
    SizeNeeds sizeNeeds() const override;
    void describe(GlobDescription& description) const override;
    void setPalette(Palette const& palette) override;

protected:
    /// Draws a row with the left end of its text at a place on the canvas, on the baseline. An overrider
    /// draws with the two below.
    virtual void drawLine(SubStringRec const& row, XY<int> const& place);
    /// Draws characters of a row, from one place in the line to another, in a colour, where nothing of them
    /// is selected. Only in `drawLine`, with its own arguments.
    void drawCharacters(SubStringRec const& row, NumRange<int, Unordered> const& range, XY<int> const& place,
                        Colour const& colour);
    /// Fills the ground of the row. Only in `drawLine`.
    void drawGround(Colour const& colour);
    /// Return: begins a new line. With Shift, `indent` is false.
    virtual void handleReturnKeypress(bool indent);

    bool takesFocus() const override { return isActive(); }
    void takeFont() override;
    void showAll() override;
    void resetScroll() override;
    void damageText() override;
    void drawText(CanvasRenderer& renderer) override;
    XY<int> caretPlace() const override;
    int gapAt(XY<int> const& place) override;
    bool showsTextAt(XY<int> const& place) const override;
    std::pair<int, int> unitAt(int index, Unit unit) const override;
    Use performAction(std::uint32_t key, bool hadAnchor) override;
    int performKey(std::uint32_t key) override;
    bool overwritesNext() const override;
    Text admitted(Text const& text) const override;
    void textEdited(TextEdit const& edit) override;
    bool updateText(Text const& text) override;
    /// Other rows are seen: the view was scrolled, or its rows were laid out anew. Does nothing here. It may
    /// destroy the box.
    virtual void handleScrolled();
    bool pressBegan(Event const& event) override;

private:
    void init(InitArgs const& args);
    /// Whether a key would change the text.
    bool isEditingKey(std::uint32_t key) const;
    bool isAtRowEnd() const { return rowEnd_ == getCursorPosition(); }
    std::size_t cursorRow() const;
    void putCursor(int index, bool isAtRowEnd = false);
    /// Puts the cursor at a gap of a row.
    void putInRow(std::size_t row, int gap);
    void moveByRows(std::int64_t rows);
    void moveByPage(bool down);
    void moveInRow(bool toEnd);
    void scrollRows(std::int64_t rows);
    void noteTop();
    /// After scrolling: bars, caret and picture.
    void noteScrolled();

    bool isOnText(XY<int> const& place) const;
    int turnWheel(Event const& event);
    void followBar(ScrollBar const& bar, LightweightString<char> const& name);
    /// The room for text, with these bars.
    IntBox roomWith(bool vertical, bool horizontal) const;
    void layOut();
    void settleMore();
    void updateBars();
    void updateBar(HandlerRef<ScrollBar>& bar, Orientation orientation, bool isShown);

    void drawHint(CanvasRenderer& renderer, Text const& text);
    SubStringRec recordOf(std::size_t shown) const;
    std::vector<IntBox> boxesOf(int from, int to, XY<int> const& place) const;
    /// Draws the part of the present row that lies in a box.
    void drawRowIn(IntBox const& box, XY<int> const& place, Colour const& colour);

    std::unique_ptr<TextRowsView> view_;
    HandlerRef<ScrollBar> verticalBar_;
    HandlerRef<ScrollBar> horizontalBar_;
    bool isVerticalShown_ = false;
    bool isHorizontalShown_ = false;
    /// Where text was seen at the last layout.
    IntBox laidOut_;
    bool standardWidth_ = false;
    bool standardHeight_ = false;
    /// Where the cursor stands at the end of a wrapped row instead of at the beginning of the next one.
    int rowEnd_ = -1;
    int rowEndBefore_ = -1;
    /// The x that moves by rows keep to.
    std::optional<int> wantedX_;
    std::optional<int> wantedBefore_;
    /// The cursor's place when it was last scrolled into sight.
    int followed_ = 0;
    std::uint64_t followedRevision_ = 0;
    /// Whether the cursor's row is in sight.
    mutable bool isCaretSeen_ = true;
    /// The text after an `append` that ended with a carriage return.
    std::uint64_t returnRevision_ = 0;
    /// Something was added that is not shown yet; the view was at the end before.
    bool isAppended_ = false;
    /// Whether the end of the text is seen; it stays so when the rows are laid out anew.
    bool isAtEnd_ = false;
    std::size_t shownTop_ = 0;
    bool staysAtEnd_ = false;
    /// While a row is drawn.
    CanvasRenderer* renderer_ = nullptr;
    std::size_t drawn_ = 0;
    IntBox rowBox_;
    OneShotTimer settling_;
};

} // namespace wainscot
