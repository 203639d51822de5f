#pragma once

#include "foundation/bindable.h"
#include "host/base/num_range.h"
#include "host/drawing/uif_std.h"
#include "host/events/mouse_listeners.h"
#include "text/text_box_base.h"

#include <memory>
#include <utility>

namespace wainscot {

/// What the boxes for one line of text and for many share: the text as value, cursor and selection, keys,
/// keyboard focus and pointer. The derived classes lay the text out, and know which keys move through it.
///
/// Bound data is asked once at the end of editing, before the owner hears of that; also before a press
/// elsewhere, and before a key that the box does not use, so that buttons and commands find what was entered.
class WAINSCOT_API TextEntry : public Bindable<ValWidget<LightweightString<wchar_t>>, TextBoxBase> {
public:
    using Text = LightweightString<wchar_t>;

    class WAINSCOT_API InitArgs : public GlobCreationInfo {
    public:
        /// A width or height of 0 is the usual one.
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
        TextAlignment alignment = eAlignLeft;
        Glib::FontDesc font = UifStd::getFont();
        Text characters;
        eCharacterRestriction restriction = eNoRestriction;
        /// The most characters that can be entered; 0 = any number.
        unsigned long sizeLimit = 0;
        bool editable = true;
    };

    /// Where `setCursorPosition` puts the cursor.
    enum eCursorPos : bool { eCursorAtStart = false, eCursorAtEnd = true };

    ~TextEntry() override;

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
    /// The room beside the text.
    virtual void setMargins(unsigned short left, unsigned short right);
    void setAlignment(TextAlignment alignment) override;
    TextAlignment getAlignment() const { return alignment_; }
    void setGhostLabel(UIString const& label);
    UIString const& getGhostLabel() const { return ghostLabel_; }
    bool isGhostLabelVisible() const;
    void setFont(Glib::FontDesc const& font) override;
    /// Places the text again, and scrolls by as little as shows the cursor.
    virtual void updateVisibleWindow() = 0;
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
    void handleKbdFocus() override;
    void handleDetached() override;
    std::optional<IntBox> textCaret() const override;
    void handleDataMixed(bool mixed, eRedrawFlag redraw) override;
    void handleDataAdaptorChange() override;

    void reshape() override;
    void draw() override;
    void drawBackground() override;
    void handleLookChange(LookChange changes) override;
    void describe(GlobDescription& description) const override;

protected:
    /// What the pointer selects at once.
    enum class Unit : unsigned char { character, word, all };
    /// How a key was used.
    enum class Use : unsigned char {
        no,
        /// Not used, but the selection stays as the key has left it.
        passed,
        yes,
        /// Editing has ended: the selection stays as it is.
        last
    };
    struct Margins {
        unsigned short left = 0;
        unsigned short right = 0;

        friend bool operator==(Margins const&, Margins const&) = default;
    };

    explicit TextEntry(GlobCreationInfo const& info);
    TextEntry(unsigned short width, unsigned short height, Palette const& palette, Canvas* canvas);
    /// To be called by the constructors of derived classes, at the end.
    void init(InitArgs const& args);

    // --- What derived classes lay out
    virtual void takeFont() = 0;
    /// All that is shown may have changed.
    virtual void showAll() = 0;
    /// Another text was set: the view goes back to its beginning.
    virtual void resetScroll() = 0;
    /// Marks what is shown otherwise than before for painting.
    virtual void damageText() = 0;
    virtual void drawText(CanvasRenderer& renderer) = 0;
    /// The lower-left corner of the caret, in the box.
    virtual XY<int> caretPlace() const = 0;
    /// The gap nearest to a place in the box.
    virtual int gapAt(XY<int> const& place) = 0;
    /// Whether text is seen at a place in the box; else a held pointer scrolls.
    virtual bool showsTextAt(XY<int> const& place) const = 0;
    /// What a unit at a gap is, as two gaps.
    virtual std::pair<int, int> unitAt(int index, Unit unit) const;

    // --- What derived classes do with keys
    /// A key that enters no character and is no shortcut.
    virtual Use performAction(std::uint32_t key, bool hadAnchor) = 0;
    /// Uses a key. It may destroy the box.
    virtual int performKey(std::uint32_t key);
    /// Moves the cursor by a character or a word. Shift and Meta together select from the cursor to that end
    /// of the text instead.
    void moveBy(std::uint32_t key, bool backwards);
    /// Whether typing replaces the character behind the cursor.
    virtual bool overwritesNext() const;

    /// A text as the box keeps it.
    virtual Text admitted(Text const& text) const;
    /// Takes over a text of which most is there already, and leaves the view where it is. False, and nothing
    /// is done, for others.
    virtual bool updateText(Text const& text);
    /// Whether Escape brings back the text from before editing.
    virtual bool bringsTextBack() const { return false; }
    Text const& textAtFocus() const { return textAtFocus_; }
    /// Editing has ended, and nobody has been told.
    virtual void handleEditEnd();

    bool isEditing() const { return isEditing_; }
    bool isInKey() const { return isInKey_; }
    bool showsGhost() const { return showsGhost_; }
    /// To be called by `showAll`.
    void noteGhost() { showsGhost_ = isGhostLabelVisible(); }
    void dropPending() { isPending_ = false; }
    Margins margins() const;
    /// Shows what has become of text, cursor and selection.
    void updateShown(eRedrawFlag redraw = eRedrawYes);
    /// To be called when the text may have changed by the user.
    void noteEdit(bool hasChanged);
    void selectTo(int index);
    /// Lets other programs have the selected text by their middle button, soon.
    void offerSelectionSoon();
    bool pressBegan(Event const& event) override;
    void pressMoved(Event const& event) override;
    void pressEnded(PressEnd how) override;

    /// Another text by a step of the user: asks the data at once. It may destroy the box.
    void setByUser(Text const& text);
    void setTextInternal(Text const& text, eRedrawFlag redraw = eRedrawYes);
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
    /// Something else is pressed during editing, and may need the text: hands it over. It may destroy the
    /// box.
    virtual void handlePressElsewhere() { handOverText(); }

    /// Escape brings back the present text from now on.
    void noteTextAtFocus();

private:
    struct Selecting;

    /// Shows what has become of a step by the user.
    void noteStep(Text const& before, Text const& known, bool wasPending);
    /// Shows cursor and selection if one of them has moved.
    void updateIfMoved(int cursor, TextSelection const& selection);

    /// Uses a key in one step for all who look on.
    int useKey(int keyCode);
    /// The selection after a key that was used.
    void followKey(std::uint32_t key, bool hadAnchor);

    void gainFocus();
    void loseFocus();

    bool handleReadOnlyPress(Event const& event);
    bool pressWithMiddle(Event const& event);
    /// Gives it the focus because of a press. False when it has not got it, or the press is over.
    bool takeFocus();
    void notePress(Event const& event);
    void scrollWhileSelecting();
    Selecting& selecting();
    void offerSelection();

    std::unique_ptr<Selecting> selecting_;
    UIString ghostLabel_;
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
};

} // namespace wainscot
