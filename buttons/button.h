#pragma once

#include "buttons/button_widget.h"
#include "foundation/automatic_size.h"
#include "foundation/bindable.h"
#include "foundation/fitted_label.h"
#include "foundation/focusable.h"
#include "foundation/key_table.h"
#include "foundation/report.h"
#include "host/drawing/image.h"

#include <string_view>

namespace wainscot {

namespace ControlLook {
struct Face;
}

enum button_state : unsigned char { buttonUp = 0, buttonDown = 1 };

enum eButtonStyle : unsigned char {
    /// No face until the pointer is over it or it is down; for tool bars.
    eButtonFlat = 0,
    eButtonStandard = 1,
    /// Shows by a glyph whether its contents are folded.
    eButtonFolding = 2,
    /// Has a glyph: it opens a list.
    eButtonDropDown = 3,
};

/// A push button: a rectangle with a label or an icon that reports presses to its parent.
///
/// Messages: the name of `setMessage`, queued, on the release inside or as `setCallbackEvents` says. The
/// sender is the button, the key code the modifiers of the last press; with a payload (`setPayload`) it is a
/// data message. A latching button sends the name followed by " on" or " off"; drags are reported with "
/// drag". A callback (`setCallback`) replaces the messages; it gets a `NotifyMsg` with the name, the payload
/// and one of the codes below. The receiver of a message finds the code in the event (`Event::reportCode`),
/// or while it handles the message by `currentReportCode()`.
///
/// Return and space click it while it has the keyboard focus; Tab reaches it when it is a stop of its panel.
class WAINSCOT_API Button
    : public Bindable<ButtonWidget<LightweightString<wchar_t>>, Focusable<Pressable<rect>>> {
public:
    /// The codes of reports.
    static constexpr int codeUp = 1;
    static constexpr int codeDown = 2;
    static constexpr int codeDrag = 4;
    static constexpr int codeRepeat = 4098;
    enum KeyAction { clickAction };
    static constexpr KeyRow<KeyAction> keyTable[] = {{Key::enter, clickAction, "a click"},
                                                     {Key::space, clickAction, "a click"}};
    /// For `setCallbackEvents`.
    enum CallbackEvents : unsigned int { onMouseUp = 1, onMouseDown = 2, onDrag = 4 };
    /// Appended to the name of the message.
    static constexpr LightweightString<char> onSuffix{" on"};
    static constexpr LightweightString<char> offSuffix{" off"};
    static constexpr LightweightString<char> dragSuffix{" drag"};
    /// What it tells others.
    enum Messages { releasedMsg, pressedMsg, onMsg, offMsg, dragMsg, repeatMsg };
    static constexpr MessageInfo messageTable[] = {
        {"released", MessageInfo::ownThenText, {}, MessageInfo::queued, codeUp, "released inside"},
        {"pressed",
         MessageInfo::ownThenText,
         {},
         MessageInfo::queued,
         codeDown,
         "pressed, after `setMessageOnMouseUp(false)`"},
        {"on", MessageInfo::ownThenText, onSuffix.view(), MessageInfo::queued, codeDown,
         "a latching button went down"},
        {"off", MessageInfo::ownThenText, offSuffix.view(), MessageInfo::queued, codeUp,
         "a latching button went up"},
        {"drag", MessageInfo::ownThenText, dragSuffix.view(), MessageInfo::queued, codeDrag,
         "the pointer was dragged with the button down, after `setMessageOnDrag(true)`"},
        {"repeat",
         MessageInfo::ownThenText,
         {},
         MessageInfo::queued,
         codeRepeat,
         "held down for a while, after `setRepeating`, again and again"},
        {"callback", MessageInfo::fixed, {}, MessageInfo::callback, 0, "instead, after `setCallback`"},
        {"message callback",
         MessageInfo::fixed,
         {},
         MessageInfo::callback,
         0,
         "a message has arrived at the button, after `setInnerMessageCallback`"},
    };

    class WAINSCOT_API InitArgs : public GlobCreationInfo {
    public:
        InitArgs(unsigned short w, unsigned short h);
        InitArgs(UIString text, LightweightString<char> messageName, XY<int> const& size);
        InitArgs(UIString text, LightweightString<char> messageName, unsigned short w = 0,
                 unsigned short h = 0);

        UIString label;
        LightweightString<char> message;
        Glib::FontDesc font;
        eButtonStyle style = eButtonStandard;
        bool latching = false;
    };

    /// A width of 0 becomes the width that the label needs.
    explicit Button(InitArgs const& args);
    Button(UIString label, char const* message, unsigned short width, unsigned short height,
           bool opaque = true, Canvas* canvas = nullptr);
    Button(UIString label, LightweightString<char> message, GlobCreationInfo const& info);
    ~Button() override;

    // --- Reporting
    virtual void setMessage(char const* message);
    LightweightString<char> const& getMessage() const { return message_; }
    /// Attached to every message; null = none.
    void setPayload(Qv::Ptr<iObject> payload);
    /// The callback is told instead of the parent, with the same name; null = the parent again. If the
    /// callback has a message name, the button takes that name.
    void setCallback(WidgetCallback const& callback);
    void setCallbackEvents(unsigned int events) { callbackEvents_ = static_cast<unsigned char>(events & 7U); }
    unsigned int getCallbackEvents() const { return callbackEvents_; }
    /// Report on release (true) or on press only.
    void setMessageOnMouseUp(bool onRelease) { callbackEvents_ = onRelease ? onMouseUp : onMouseDown; }
    void setMessageOnDrag(bool report);
    /// From now on clicks go on to the object behind. A held press ends, and nobody is told.
    void setIgnoreMouseClicks(bool ignore);
    bool ignoresMouseClicks() const { return ignoresClicks_; }
    /// Reports a message with a code to the callback, else to the parent.
    void informParent(LightweightString<char> name, unsigned int code);
    /// Sends the message to the parent; without a parent to the nearest object on the screen that this button
    /// overlaps.
    int sendMessageToParent(NotifyMsg const& message);

    // --- State
    button_state getState() const { return state_; }
    bool isDown() const { return state_ == buttonDown; }
    /// Nobody is told, unless a derived class says otherwise.
    virtual void setState(button_state state, eRedrawFlag redraw);
    /// Changes the state as a click does, and reports it with `notify`.
    virtual void switchState(button_state state, bool notify);
    /// A latching button stays down until it is clicked again; it reports presses. `second` is kept for
    /// subclasses that have a second way of latching.
    void setLatching(bool latching, bool second);
    bool isLatching() const { return latching_ != 0; }
    bool isLatchingSecond() const { return latching_ == 2; }
    /// While it is held down it reports `perHalfSecond` times in half a second, the first time after `delay`
    /// half seconds, on the processor clock. Below 1 it does not repeat. Takes effect at once, also while it
    /// is held.
    void setRepeating(int perHalfSecond, double delay);

    // --- Label and look
    void setString(UIString const& label);
    UIString const& getString() const { return label_.text(); }
    /// Shown instead of the label while it is down.
    void setSecondString(UIString const& label);
    void setFont(Glib::FontDesc const& font);
    Glib::FontDesc const& getFont() const { return label_.font(); }
    LightweightString<wchar_t> getWidgetValue() const override;
    void setNewWidgetValue(LightweightString<wchar_t>& label, eRedrawFlag redraw) override;
    /// Sets the style's usual alignment too.
    void setStyle(eButtonStyle style);
    eButtonStyle getStyle() const { return style_; }
    void setAlignment(TextAlignment alignment);
    /// Marks the usual action: its face is the palette's `doIt()`.
    void setDefaultAction(bool isDefault);
    bool isDefaultAction() const { return defaultAction_; }
    /// Text and face of both states.
    void setCols(Colour const& text, Colour const& face);
    /// The label keeps the palette's colour as far as it reads on the face.
    void setFaceColour(Colour const& face);
    void setUpCols(Colour const& text, Colour const& face);
    /// These faces are drawn as they are; a face that was not set for this state is drawn darker while the
    /// button is down.
    void setDownCols(Colour const& text, Colour const& face);
    /// Bare names of icons: while it is down, and while it is up (empty = the first icon).
    void setIcons(LightweightString<wchar_t> const& active, LightweightString<wchar_t> const& inactive);
    /// Draws instead of label and icon.
    void setCustomDrawFn(void (*function)(Button const&));
    /// The size that a label needs: its text, half a button height on each side, and the standard height.
    static XY<int> calcSizeFor(UIString const& label, Glib::FontDesc const& font);
    /// Takes the width that the label needs; the height stays, or becomes the standard one when it is 0.
    void autoResize();

    // Glob
    SizeNeeds sizeNeeds() const override;
    bool react(Event const& event) override;
    void handleLookChange(LookChange changes) override;
    bool isAutoRepeating() const override;
    void draw() override;
    void drawBackground() override;
    void drawBorder() override;
    bool getTooltipDetails(XY<int> const& place, TooltipDetails& details) const override;
    void describe(GlobDescription& description) const override;

protected:
    /// Whether a button that does not latch stays down when it is released.
    virtual bool staysDownAfterRelease() const;
    virtual void drawText();
    virtual void drawIcon();
    /// Where the icon lies, in the canvas' coordinates.
    virtual IntBox calcIconPosition(XY<int> const& iconSize) const;
    Colour getBackCol() const;
    Colour getForeCol() const;
    /// The colour of glyphs that tell what the button does.
    Colour indicatorColour() const;
    /// What is kept free of the label at the right, in pixels.
    virtual int rightMargin() const;
    /// The colour of the edge; null = derived from the face.
    virtual Colour const* borderColour() const;
    bool pressBegan(Event const& event) override;
    void pressMoved(Event const& event) override;
    void pressEnded(PressEnd how) override;

private:
    struct Extras;

    void init(unsigned short width);
    void fitLabel();
    Extras& extras();
    bool isHovered() const;
    /// Down, or shown so while the key of a click is held.
    bool looksDown() const;
    void takeBack();
    void report(Messages which);
    bool reactToTimer(Event const& event);
    bool reactToKey(Event const& event);
    void showKeyPress(std::uint64_t press);
    bool reactToMessage(Event const& event);
    bool isRepeating() const;
    void startRepeating();
    void askForTimer();
    bool hasOwnDownFace() const;
    void drawIndicator();
    ControlLook::Face face() const;
    FittedLabel shownLabel() const;
    /// The room for the label, in pixels.
    int labelRoom() const;
    int leftMargin() const;
    int labelAnchor() const;
    Qv::Ptr<Glib::Image> icon() const;
    bool hasIndicator() const { return style_ == eButtonFolding || style_ == eButtonDropDown; }

    FittedLabel label_;
    LightweightString<char> message_;
    Reporter reporter_;
    std::unique_ptr<Extras> extras_;
    button_state state_ = buttonUp;
    button_state stateBeforePress_ = buttonUp;
    eButtonStyle style_ = eButtonStandard;
    unsigned char alignment_ = eAlignCentre;
    unsigned char latching_ = 0;
    unsigned char callbackEvents_ = onMouseUp;
    bool ignoresClicks_ = false;
    /// Whether the present press was reported.
    bool pressReported_ = false;
    bool defaultAction_ = false;
    /// The key press that made the last click by keys; see `FocusHolders::heldKeyPress`.
    std::uint64_t clickKeyPress_ = 0;
    AutomaticSize automatic_{false, false};
};

static_assert(sizeof(Button) <= 600);

} // namespace wainscot
