#pragma once

#include "buttons/button.h"
#include "host/messages/notifier.h"
#include "host/objects/widget_position.h"

#include <functional>

namespace wainscot {

/// What all drop-down buttons share, whatever they open. A press opens a pop-up next to the button; a second
/// press closes it, and so do the pop-up itself and all that closes pop-ups. The button owns the pop-up:
/// when it dies, is disabled or hidden, the pop-up goes with it.
///
/// A derived class makes the pop-up, and hears what it sends. A pop-up that closes itself calls `menu_poot`
/// on the button.
class WAINSCOT_API DropDownButtonBase : public Button {
public:
    enum eMode : unsigned char {
        /// The button goes up when it is released, and the pop-up stays.
        eGoesUp,
        /// The button stays down while the pop-up is open, and going up closes it. It reports presses only.
        eStaysDown,
    };
    enum OpenAction { openAction };
    static constexpr KeyRow<OpenAction> openKeyTable[] = {
        {Key::alt | Key::down, openAction, "opens it, or closes it"},
        {Key::alt | Key::up, openAction, "opens it, or closes it"},
        {Key::function(4), openAction, "opens it, or closes it"}};

    explicit DropDownButtonBase(Button::InitArgs const& args, eMode mode = eGoesUp);
    ~DropDownButtonBase() override;

    /// Where the pop-up opens: at which side of the button, and how it is aligned with that side.
    void setDropDownPlace(WidgetRelativity side, WidgetAlignment alignment);
    eMode getMode() const { return mode_; }
    /// Called before the pop-up is made, so that the owner can prepare what it shows.
    void setAppearing(std::function<void()> prepare) { prepare_ = std::move(prepare); }

    bool isDropDownOpen() const { return static_cast<bool>(popUp_); }
    /// The open pop-up; null when there is none.
    Glob* getDropDown() const { return popUp_.get(); }
    /// Opens the pop-up. False when it is open already, when there is nothing to be opened, or when the
    /// button or the pop-up has died meanwhile.
    bool displayDropDown();
    /// Closes an open pop-up, and does nothing else.
    void handleSecondClick();
    /// Opens the pop-up as a key does.
    void openByKey();
    /// Closes an open pop-up, and shows the button as it is when it is not pressed.
    void removeMenuFromScreen();

    /// The size that a label needs beside the arrow.
    static XY<int> calcSizeFor(UIString const& label, Glib::FontDesc const& font);
    static int calcWidthFor(UIString const& label, Glib::FontDesc const& font);

    void switchState(button_state state, bool notify) override;
    bool react(Event const& event) override;
    void setActive(bool active, eRedrawFlag redraw = eRedrawYes) override;
    void setVisible(bool visible) override;
    void handleDetached() override;
    /// Losing the focus closes the pop-up.
    void handleKbdFocus() override;
    SizeNeeds sizeNeeds() const override;
    void describe(GlobDescription& description) const override;

protected:
    /// Makes the pop-up, which then belongs to the button; null = there is nothing to be opened.
    virtual Glob* makeDropDown() = 0;
    /// The pop-up, or something in it, has sent a message. True closes it. Here: false.
    virtual bool handleDropDownMessage(Event const& message);
    /// The wheel was turned over the button: below 1 means down. Does nothing here.
    virtual void handleMouseWheelDelta(int delta);
    /// Calls the function of `setAppearing`. Anything may be destroyed in it.
    virtual void informParentOfImminentAppearance();
    /// The box next to which the pop-up opens, in root coordinates: that of the button.
    virtual IntBox dropDownAnchor() const;
    /// The object whose presses reach it while the pop-up is open: the button.
    virtual Glob* dropDownOpener();
    /// The most height for a list, so that it has room on one side of the button; `wanted` (0 = any) where
    /// neither side has room for a few rows.
    unsigned short heightForList(unsigned short wanted) const;
    /// Shows a pop-up and takes it over. False when it is refused, or when one of the two has died.
    bool displayWidget(Glob* popUp);

    virtual void drawDropDownButtonArrow();
    /// The line between label and arrow.
    virtual void drawDropDownButtonSeparator();
    virtual void drawDropDownButtonText();

    void drawText() override;
    int rightMargin() const override;
    bool staysDownAfterRelease() const override;
    void pressMoved(Event const& event) override;
    void pressEnded(PressEnd how) override;

private:
    bool reactToMessage(Event const& event);
    /// From now on no pop-up is open.
    Glob* forgetDropDown();
    void showReleased();
    IntBox arrowBox() const;

    std::function<void()> prepare_;
    HandlerRef<Glob> popUp_;
    NotifierSubscription deletionWatch_;
    WidgetRelativity side_ = WidgetRelativity::below;
    WidgetAlignment alignment_ = WidgetAlignment::start;
    eMode mode_;
};

} // namespace wainscot
