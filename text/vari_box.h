#pragma once

#include "foundation/focusable.h"
#include "foundation/key_table.h"
#include "foundation/report.h"
#include "text/vari_box_parser_base.h"
#include "text/vari_friendly_text_box.h"

#include <memory>
#include <optional>

namespace wainscot {

/// The measures of a value box.
struct VariBoxMetrics {
    enum eMetric {
        /// The width of a box that was made without one, and its height.
        eWidth,
        eHeight,
        /// Beside the text, at either end.
        eTextMargin,
        /// Between the edge of the box and its bar, on all sides.
        eThermMargin,
        /// How thick the strong line of the bar is.
        eThermLine,
    };
};

/// Sets a number by dragging, the wheel, keys and typing, and shows it over a bar that tells where it lies
/// within its range. What the number is, its parser knows; without one the box only shows its text.
///
/// A drag with the left or right button makes one step for every three pixels: up to the right and upwards.
/// Ctrl, or both buttons together, make major steps; Shift makes steps a tenth as large, or takes ten times
/// the way for each where the parser has no such steps. The pointer is hidden meanwhile, and back at its
/// place in the end. Escape brings back the value from before. A click with the right button opens the
/// context menu; a double click puts the default back, or edits the text where there is none.
///
/// Messages to the parent, with the box as sender, are queued. Each step of a drag sends
/// "varibox_ValueChanged", its end "varibox_ChangeComplete"; all other changes by the user send both. The
/// data of the parser is asked first.
class WAINSCOT_API VariBox : public Focusable<Pressable<rect>> {
public:
    enum eMessageType : int { eValueChanged = 1, eChangeComplete = 2 };
    enum eAppearance : unsigned char {
        eStandard = 0,
        /// Lower, for rows of many boxes.
        eSmall = 1,
    };

    static constexpr LightweightString<char> valueChangedMsg{"varibox_ValueChanged"};
    static constexpr LightweightString<char> changeCompleteMsg{"varibox_ChangeComplete"};
    static constexpr LightweightString<char> invalidMsg{"varibox_<INVALID>"};

    /// What it tells others.
    static constexpr MessageInfo messageTable[] = {
        {"changed", MessageInfo::fixed, valueChangedMsg.view(), MessageInfo::queued, eValueChanged,
         "the user has changed the value"},
        {"complete", MessageInfo::fixed, changeCompleteMsg.view(), MessageInfo::queued, eChangeComplete,
         "a drag has ended; after any other change as well"},
        {"callback", MessageInfo::fixed, {}, MessageInfo::callback, 0, "instead, after `setCallback`"},
        {"data", MessageInfo::fixed, {}, MessageInfo::callback, 0, "before, where its parser is bound"},
    };

    enum KeyAction { stepUp, stepDown, majorUp, majorDown, edit };
    static constexpr KeyRow<KeyAction> keyTable[] = {
        {Key::up, stepUp, "a minor step up"},
        {Key::down, stepDown, "a minor step down"},
        {Key::shift | Key::up, stepUp, "a fine step up"},
        {Key::shift | Key::down, stepDown, "a fine step down"},
        {Key::pageUp, majorUp, "a major step up"},
        {Key::pageDown, majorDown, "a major step down"},
        {Key::enter, edit, "edits the text"},
        {Key::function(2), edit, "edits the text"},
    };

    class WAINSCOT_API InitArgs : public GlobCreationInfo {
    public:
        /// A width of 0 is the usual one. A height that is set afterwards counts instead of that of the
        /// appearance.
        explicit InitArgs(UIString content = {}, unsigned short w = 0);

        /// Shown while there is no parser.
        UIString text;
        eAppearance appearance = eStandard;
    };

    explicit VariBox(InitArgs const& args);
    ~VariBox() override;

    // --- Parser
    /// Replaces the parser; a drag and the editing of the text end first. With `owns` the box destroys it,
    /// once its handlers have returned. The parser of another owner may die first. One that is in another box
    /// leaves that. Null = none.
    void setParser(VariBoxParserBase* parser, bool owns);
    /// Null when there is none.
    VariBoxParserBase* getParser() const { return parser_; }
    /// Whether the user can change the value.
    bool takesInput() const { return parser_ && isActive(); }

    // --- What the parser tells its box
    void parser_SetAllowedCharacters(LightweightString<char> const& characters);
    void parser_SetMaxNumChars(unsigned long most);
    /// Shows the text and the position anew; with true the parent is told that the user has changed the
    /// value. It may destroy everything.
    void parser_TextChanged(bool byUser);
    /// The parser is being destroyed.
    void parser_Gone();

    // --- Text
    /// What is shown.
    LightweightString<wchar_t> getText() const;
    /// The box in which the text is edited. Other boxes make it only while the user is editing; once it has
    /// been asked for it stays.
    VariFriendlyTextBox* getTextBox();
    /// Lets the user edit the text. False when there is nothing to edit.
    bool beginEditing();
    void editAt(XY<int> const& place);
    /// Ends that: with `accept` the text is read, else it is dropped. False when it could not be read; the
    /// value stays as it is.
    bool endEditing(bool accept);
    bool isEditing() const { return isEditing_; }
    /// What the user has entered so far; empty while the text is not edited.
    LightweightString<wchar_t> getEnteredText() const;
    bool isDragging() const { return isDragging_; }

    // --- Reports
    static LightweightString<char> message(eMessageType type);
    void sendMessageToParent(eMessageType type);
    /// The value has changed by a step that is complete: shows and reports that.
    void handleNudge();
    /// The callback is told instead of the parent, with the same name and the type as code; null = the parent
    /// again.
    void setCallback(WidgetCallback const& callback) { reporter_.setCallback(callback.getCallback()); }

    // --- Look
    /// A box of standard height gets that of the appearance.
    void setAppearance(eAppearance appearance);
    eAppearance getAppearance() const { return appearance_; }
    static unsigned short getDefaultWidth();
    static unsigned short getDefaultHeight(eAppearance appearance);
    int calcSize(VariBoxMetrics::eMetric metric) const;
    /// The colour of the bar; the accent until it is set.
    void setThermCol(Colour const& colour);
    /// The colour of the text, and of that of a value that is being dragged.
    void setTextCol(Colour const& colour);
    void setDraggingForeCol(Colour const& colour);
    /// Has the bar and the text painted.
    void redrawTherm();

    // --- Glob
    SizeNeeds sizeNeeds() const override;
    void reshape() override;
    bool react(Event const& event) override;
    void draw() override;
    void setActive(bool active, eRedrawFlag redraw = eRedrawYes) override;
    void setPalette(Palette const& palette) override;
    void reviewMenu(Event const* event) override;
    void handleDetached() override;
    bool wantsFullMotion() const override { return isDragging_; }
    bool wantsUnboundedMotion() const override { return isDragging_; }
    MouseCursorID contextCursor(XY<int> const& place) const override;
    bool getTooltipDetails(XY<int> const& place, TooltipDetails& details) const override;
    void describe(GlobDescription& description) const override;
    bool isTabStopActive() override;

protected:
    bool pressBegan(Event const& event) override;
    void pressMoved(Event const& event) override;
    void pressEnded(PressEnd how) override;

private:
    class Editor;
    struct Extras;
    enum class Stepping : unsigned char { upMinor, downMinor, upMajor, downMajor };

    Extras& extras();
    Editor* editor() const;

    // Steps
    static Stepping steppingFor(bool isUp, bool isMajor);
    /// Has the parser make a step. False also when the box is dead. An exception comes when all is reported.
    bool step(Stepping stepping, DataChangeType why, bool isFine);
    static bool makeStep(VariBoxParserBase& parser, Stepping stepping);
    template <class Change>
    void changeAtOnce(Change change);
    void nudge(bool isUp, bool isMajor, bool isFine);
    void turnWheel(Event const& event);
    bool reactToKey(Event const& event);
    void putDefaultBack();
    bool startsEntry(std::uint32_t key) const;
    /// What a typed character goes in as: the language may have another sign for one that is allowed.
    static wchar_t enteredAs(wchar_t character, LightweightString<wchar_t> const& allowed);
    bool enter(std::uint32_t key);

    // Dragging
    void beginDrag(Event const& event);
    void showDragging(bool isDragging);
    void doubleClicked();

    // Editing
    bool readEntered();
    void closeEditor();
    void stepWhileEditing(KeyAction action, bool isFine);

    // Drawing
    bool isMixed() const { return parser_ && parser_->isMixed(); }
    /// Where the bar is, in its own coordinates: within the edge and the round ends of the field.
    IntBox thermArea() const;
    Colour barColour() const;
    Colour textColour() const;
    LightweightString<wchar_t> shownText() const;
    void drawTherm(CanvasRenderer& renderer);
    Colour fieldColour() const;
    void drawText(CanvasRenderer& renderer);

    VariBoxParserBase* parser_ = nullptr;
    std::unique_ptr<Extras> extras_;
    Reporter reporter_;
    /// Where the next step of a drag is measured from, in root coordinates.
    XY<int> reference_;
    eAppearance appearance_;
    bool ownsParser_ = false;
    bool isDragging_ = false;
    bool isDraggingLeft_ = false;
    /// Whether the pointer has gone far enough for a step.
    bool hasMoved_ = false;
    /// Before the press.
    bool hadFocus_ = false;
    bool isEditing_ = false;
    bool standardWidth_ = false;
    bool standardHeight_ = false;
    /// Whether the context menu has an item for the default.
    bool hasDefaultItem_ = false;
    bool isDisabledByParser_ = false;
};

} // namespace wainscot
