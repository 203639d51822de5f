#pragma once

#include "foundation/bindable.h"
#include "host/base/num_range.h"
#include "host/drawing/uif_std.h"
#include "host/events/mouse_listeners.h"
#include "text/text_box_base.h"

#include <memory>

namespace wainscot {

class TextLineView;

/// One line of text that the user edits. Its value is the text.
///
/// It tells its owner what `requestCallback` asks for: `eEditStart` and `eEditEnd` when it gets and loses the
/// keyboard focus, `eChanged` when the user changes the text, `eReturn` when Return ends the editing,
/// `eDoubleClick` when a box that cannot be edited is clicked twice. Bound data is asked once at the end of
/// editing, before the owner hears of that; also before a press elsewhere, and before a key that the box does
/// not use, so that buttons and commands find what was entered.
class WAINSCOT_API TextBox : public Bindable<ValWidget<LightweightString<wchar_t>>, TextBoxBase> {
public:
    using Text = LightweightString<wchar_t>;

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
         "it has lost the keyboard focus; called when a step has set a new number"},
        {"changed",
         MessageInfo::ownThenText,
         {},
         MessageInfo::called,
         eChanged,
         "the user has changed the text"},
        {"return",
         MessageInfo::ownThenText,
         {},
         MessageInfo::queued,
         eReturn,
         "Return was pressed; the keyboard focus goes next"},
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

    class WAINSCOT_API InitArgs : public GlobCreationInfo {
    public:
        /// A width or height of 0 is that of the text and of a button.
        InitArgs(unsigned short w, unsigned short h = 0, Text content = {})
            : GlobCreationInfo(w, h), text(std::move(content)) {}
        explicit InitArgs(XY<int> const& size, Text content = {})
            : GlobCreationInfo(size), text(std::move(content)) {}
        explicit InitArgs(int const (&size)[2], Text content = {})
            : GlobCreationInfo(size), text(std::move(content)) {}
        InitArgs(GlobCreationInfo const& info) : GlobCreationInfo(info) {}

        Text text;
        /// What is to be entered; shown while the box is empty and has no keyboard focus.
        UIString ghostLabel;
        /// Shown behind the text, such as a unit.
        Text suffix;
        TextAlignment alignment = eAlignLeft;
        Glib::FontDesc font = UifStd::getFont();
        Text characters;
        eCharacterRestriction restriction = eNoRestriction;
        /// The most characters that can be entered; 0 = any number.
        unsigned long sizeLimit = 0;
        bool editable = true;
        bool obfuscated = false;
    };

    /// Where `setCursorPosition` puts the cursor.
    enum eCursorPos : bool { eCursorAtStart = false, eCursorAtEnd = true };

    explicit TextBox(InitArgs const& args);
    TextBox(unsigned short width, unsigned short height, Palette const& palette, Canvas* canvas = nullptr);
    ~TextBox() override;

    // --- Value. The setters tell nobody; a text that is there already changes nothing. Another text cannot
    // be taken back by undo.
    Text getWidgetValue() const override { return getText(); }
    void setNewWidgetValue(Text& value, eRedrawFlag redraw) override;
    Text getString() const { return getText(); }
    void setString(UIString const& text) { setText(text); }
    void setText(UIString const& text);
    Text getText() const;
    /// The part between two places, in either order.
    Text getText(CharPos const& from, CharPos const& to) const;
    Text getSelectedText() const;
    /// What is shown: text, mask or ghost label, with the suffix.
    Text getDisplayText() const;

    // --- Cursor and selection. Indices are gaps between characters, clamped to the text.
    int getCursorPosition() const;
    // These three drop the selection.
    void setCursorPosition(eCursorPos where);
    void setCursorPosition(unsigned short index);
    void setCursorIndex(int index);
    /// Moves the cursor alone; a negative index stands for the place of the cursor.
    void updateCurrentPosition(iFont::eCharSeekMethod method, int index = iFont::currentIndex);
    /// Selects from the start of the range to its end, where the cursor is put. A negative start selects
    /// nothing.
    void setSelection(NumRange<int, Unordered> const& range);
    /// From the anchor to the other end; both -1 where nothing is selected.
    NumRange<int, Unordered> getSelection() const;
    void invalidateTextSelection();
    void highlightAllText(bool highlight);

    // --- Look
    /// The room beside the text. The text begins at the left margin.
    void setMargins(unsigned short left, unsigned short right);
    void setAlignment(TextAlignment alignment) override;
    TextAlignment getAlignment() const { return alignment_; }
    void setDisplaySuffix(Text const& suffix);
    void setGhostLabel(UIString const& label);
    UIString const& getGhostLabel() const { return ghostLabel_; }
    bool isGhostLabelVisible() const;
    void setObfuscatedDisplay(bool obfuscated) override;
    void setFont(Glib::FontDesc const& font) override;
    /// Between places in the text, from its left end, and places in a box that is not scrolled.
    int textXToDisplayX(int x) const;
    int displayXToTextX(int x) const;
    /// By how many pixels the text is scrolled to the left.
    int getScroll() const;
    /// Places the text again, and scrolls by as little as shows the cursor.
    void updateVisibleWindow();
    /// Puts the caret where the cursor is.
    void placeCaret();

    // --- Editing, as by the user, but the owner is not told
    /// A character, with or without the flag of Shift. One that may not be entered is dropped.
    void addCharacter(int character);
    /// The cursor stands there then.
    void erase(CharPos const& from, CharPos const& to, bool recordUndo);
    void eraseSelectedText(bool recordUndo);
    void selectAll() override;
    /// Copies what is selected, or everything, and takes it away. Nothing is copied of an obfuscated text.
    void cut() override;
    /// Inserts what may be entered of a text, in the place of what is selected.
    void paste(Text const& text) override;
    void undo() override;
    void redo() override;

    // --- Events
    int handleKeyboardEvent(int keyCode) override;
    int handleMouseEvent(Event const& event) override;
    /// Tab selects all of the text.
    void handleTabStopFocusReceipt(eDirection direction) override;
    void handleKbdFocus() override;
    void handleDetached() override;
    std::optional<IntBox> textCaret() const override;
    void handleDataMixed(bool mixed, eRedrawFlag redraw) override;
    void handleDataAdaptorChange() override;

    void reshape() override;
    void draw() override;
    void drawBackground() override;
    SizeNeeds sizeNeeds() const override;
    void handleLookChange(LookChange changes) override;
    bool getTooltipDetails(XY<int> const& place, TooltipDetails& details) const override;
    void describe(GlobDescription& description) const override;

protected:
    bool pressBegan(Event const& event) override;
    void pressMoved(Event const& event) override;
    void pressEnded(PressEnd how) override;
    void textEdited(TextEdit const& edit) override;

    /// Another text by a step of the user: asks the data at once. It may destroy the box.
    void setByUser(Text const& text);
    /// Text, cursor or selection have changed, and are shown. Does nothing here. It may destroy the box.
    virtual void handleCursorChange();
    /// Whether the data may be asked for the present text at the end of editing.
    virtual bool isTextValid() const;
    /// The ink of the text.
    virtual Colour shownTextColour() const;
    /// Whether a press puts the cursor and selects.
    virtual bool selectsByPointer() const { return true; }
    /// Asks the data for a text that the user has entered, if that has not been done. It may destroy the box.
    void handOverText();

private:
    /// What a press with the pointer selects at once.
    enum class Unit : unsigned char { character, word, all };
    /// How a key was used.
    enum class Use : unsigned char {
        no,
        yes,
        /// Editing has ended: the selection stays as it is.
        last
    };
    struct Selecting;

    void init(InitArgs const& args);
    struct Margins {
        unsigned short left = 0;
        unsigned short right = 0;

        friend bool operator==(Margins const&, Margins const&) = default;
    };
    Margins margins() const;
    void setTextInternal(Text const& text, eRedrawFlag redraw = eRedrawYes);
    void showAll();
    /// Shows what has become of text, cursor and selection.
    void noteStep(Text const& before, Text const& known, bool wasPending);
    void updateShown(eRedrawFlag redraw = eRedrawYes);
    /// The same if one of the two has moved.
    void updateIfMoved(int cursor, TextSelection const& selection);
    void noteEdit(bool hasChanged);

    /// Uses a key in one step for all who look on.
    int useKey(int keyCode);
    int performKey(std::uint32_t key);
    Use performAction(std::uint32_t key, bool hadAnchor);
    Use performReturn(std::uint32_t key);
    void performEscape();
    void moveBy(std::uint32_t key, bool backwards);
    /// The selection after a key that was used.
    void followKey(std::uint32_t key, bool hadAnchor);

    void gainFocus();
    void loseFocus();

    int handleReadOnlyPress(Event const& event);
    bool pressWithMiddle(Event const& event);
    /// Gives it the focus because of a press. False when it has not got it, or the press is over.
    bool takeFocus();
    void notePress(Event const& event);
    int indexAt(Event const& event) const;
    void selectTo(int index);
    void scrollWhileSelecting();
    Selecting& selecting();
    /// Lets other programs have the selected text by their middle button, soon or now.
    void offerSelectionSoon();
    void offerSelection();

    void damageText();
    void drawBehindCorners(CanvasRenderer& renderer);
    void drawText(CanvasRenderer& renderer);
    /// Where text can be seen, in its own coordinates.
    IntBox textArea() const;

    std::unique_ptr<TextLineView> line_;
    std::unique_ptr<Selecting> selecting_;
    UIString ghostLabel_;
    Text suffix_;
    Text textAtFocus_;
    /// The text that the data has, as far as the box knows.
    Text handedOver_;
    std::optional<Margins> margins_;
    TextAlignment alignment_ = eAlignLeft;
    /// Hears of presses elsewhere during editing.
    Glib::MouseListener presses_;
    bool isEditing_ = false;
    /// Whether the user has changed the text since the data was asked.
    bool isPending_ = false;
    /// Whether the ghost label is shown instead of the text.
    bool showsGhost_ = false;
    /// While a key is being used, what has become of text and cursor is shown at its end.
    bool isInKey_ = false;
    bool isOutdated_ = false;
    /// As wide and as high as the standard says.
    bool standardWidth_ = false;
    bool standardHeight_ = false;
};

} // namespace wainscot
