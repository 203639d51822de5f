#pragma once

#include "containers/orientation.h"
#include "foundation/bindable.h"
#include "foundation/press.h"
#include "foundation/repeat_clock.h"
#include "foundation/report.h"
#include "host/messages/handler_ref.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace wainscot {

class Button;

/// A scroll bar: a track with a thumb whose length and place are fractions of the track, and an arrow button
/// at each end. The thumb can be dragged. A left press in the track beside it moves it by its own length,
/// again and again while the button is held. With the preference `trackPressJumps` the thumb jumps to the
/// pointer instead and can be dragged on. The thumb of a resizable bar (a zoom bar) can be dragged at its
/// ends too; with Shift it is moved as a whole. Its value is position and size of the thumb.
///
/// Position 0 is the left end, or the top. Wheel and arrow buttons do not move the thumb: they are reported,
/// and the owner scrolls and sets the thumb. Notches of the wheel are reported as the up and down buttons, on
/// horizontal bars too.
///
/// Messages to the parent are named below; they are queued, with the bar as sender. A listener gets them
/// instead, each as a `NotifyMsg` with a `ScrollBar::Event` as payload.
class WAINSCOT_API ScrollBar : public Bindable<ValWidget<ThumbSettings>, Pressable<StandardPanel>> {
public:
    enum eEventType : std::int32_t {
        thumbMoved = 0,
        thumbReleased = 1,
        upButtonPressed = 2,
        downButtonPressed = 3,
        leftButtonPressed = 4,
        rightButtonPressed = 5,
    };

    static constexpr LightweightString<char> thumbMovedMsg{"ScrollBar::thumbMoved"};
    static constexpr LightweightString<char> thumbReleasedMsg{"ScrollBar::thumbReleased"};
    static constexpr LightweightString<char> upButtonPressedMsg{"ScrollBar::upButtonPressed"};
    static constexpr LightweightString<char> downButtonPressedMsg{"ScrollBar::downButtonPressed"};
    static constexpr LightweightString<char> leftButtonPressedMsg{"ScrollBar::leftButtonPressed"};
    static constexpr LightweightString<char> rightButtonPressedMsg{"ScrollBar::rightButtonPressed"};

    /// What it tells others, in the order of the types.
    static constexpr MessageInfo messageTable[] = {
        {"thumb moved", MessageInfo::fixed, thumbMovedMsg.view(), MessageInfo::queued, thumbMoved,
         "the thumb was dragged, resized or paged"},
        {"thumb released", MessageInfo::fixed, thumbReleasedMsg.view(), MessageInfo::queued, thumbReleased,
         "the end of a drag. A listener is told before `isDragging()` turns false, the parent after it"},
        {"up", MessageInfo::fixed, upButtonPressedMsg.view(), MessageInfo::queued, upButtonPressed,
         "the upper arrow button; a notch of the wheel upwards, on all bars"},
        {"down", MessageInfo::fixed, downButtonPressedMsg.view(), MessageInfo::queued, downButtonPressed,
         "the lower arrow button; a notch of the wheel downwards, on all bars"},
        {"left", MessageInfo::fixed, leftButtonPressedMsg.view(), MessageInfo::queued, leftButtonPressed,
         "the left arrow button"},
        {"right", MessageInfo::fixed, rightButtonPressedMsg.view(), MessageInfo::queued, rightButtonPressed,
         "the right arrow button"},
        {"listener",
         MessageInfo::fixed,
         {},
         MessageInfo::callback,
         0,
         "instead, after `setListener`; the payload is a `ScrollBar::Event`"},
        {"data", MessageInfo::fixed, {}, MessageInfo::callback, 0, "before, where it is bound to data"},
    };

    /// The user's preference for presses beside the thumb, off unless set. Read at each press.
    static constexpr char const* trackPressJumps = "track_press_jumps";

    /// What a listener is told.
    class WAINSCOT_API Event final : public Qv::InternalRefCount {
    public:
        explicit Event(eEventType eventType) : type_(eventType) {}
        eEventType type() const { return type_; }

    private:
        eEventType type_;
    };

    class WAINSCOT_API InitArgs : public GlobCreationInfo {
    public:
        /// A bar of the usual thickness. Its ground is transparent behind the arrow buttons.
        explicit InitArgs(Orientation lie = eVertical, unsigned short length = 0);
        InitArgs(Orientation lie, unsigned short w, unsigned short h);
        InitArgs(Orientation lie, XY<int> const& size);

        Orientation orientation;
        /// Whether the ends of the thumb can be dragged.
        bool resizable = false;
        bool arrowButtons = true;
        ThumbSettings thumb;
        WidgetCallback::Callback listener;
    };

    explicit ScrollBar(InitArgs const& args);
    ~ScrollBar() override;

    /// Whether a message is a scroll bar's.
    static bool isScrollBarMsg(LightweightString<char> const& name);
    /// How thick bars are, in pixels.
    static int thickness();
    /// The least length of a thumb, in pixels; in a shorter track the thumb is as long as the track.
    static int getMinThumbSize();
    /// How far inside its edges a bar of that thickness draws.
    static int laneInset(int thickness);

    // --- Value. The setters tell nobody. Positions and sizes are fractions of the track.
    double getThumbPos() const { return position_; }
    double getThumbSize() const { return size_; }
    /// Clamped to 0 to 1 - size. False for the present position (within a millionth), and for NaN.
    bool setThumbPos(double position);
    bool setThumbPosDelta(double change) { return setThumbPos(position_ + change); }
    /// Values outside 0 to 1, 0 itself and NaN count as 1; the position is clamped to its new limits. False
    /// for the present size (within a millionth).
    bool setThumbSize(double size);
    ThumbSettings getWidgetValue() const override { return {position_, size_}; }
    /// Size and position together.
    void setNewWidgetValue(ThumbSettings& value, eRedrawFlag redraw) override;
    void handleDataAdaptorChange() override;

    // --- State
    Orientation getOrientation() const { return orientation_; }
    bool isVertical() const { return orientation_ == eVertical; }
    bool isThumbResizable() const { return resizable_; }
    /// Whether the thumb, or one of its ends, is held.
    bool isDragging() const { return dragging_ || resizingEnd_ != 0; }
    /// The listener is told instead of the parent, with the event's type as code; null = the parent again.
    void setListener(WidgetCallback::Callback listener) { reporter_.setCallback(std::move(listener)); }

    // --- Look
    void setThumbCol(Colour const& colour);
    /// The face of the arrow buttons.
    void setButtonCol(Colour const& colour);
    void setPalette(Palette const& palette) override;

    // --- Geometry, in the bar's coordinates
    IntBox getThumbArea() const;
    /// The track, without the arrow buttons.
    IntBox getThumbBgArea() const;
    /// A change of the position by 1, in pixels.
    int getThumbRangePixels() const;
    /// Where the thumb begins and ends along the bar: x, or y, of its lower and its upper edge.
    XY<int> getThumbPixelExtents() const;
    /// Which end of a resizable thumb lies at a place: 1 = the right or lower end, -1 = the other end, 0 =
    /// none.
    int inResizingArea(XY<int> const& place) const;

    // --- Reporting and showing
    void informParent(eEventType type);
    /// Brings arrow buttons, picture and description in line with the thumb.
    void showThumbPosition();
    void redrawThumb();
    /// An arrow button is active while the thumb can move in its direction.
    void updateButtonStates(eRedrawFlag redraw);

    // --- Repeating while the track is pressed, on the processor clock
    void startTimer();
    void stopTimer();

    int handleMouseEvent(wainscot::Event const& event) override;
    int handleTimerEvent() override;
    /// Takes the messages of its arrow buttons.
    int handleMessageEvent(LightweightString<char> name, Glob* sender) override;
    void handleMouseContainment(bool inside) override;
    SizeNeeds sizeNeeds() const override;
    void handleLookChange(LookChange changes) override;
    bool isAutoRepeating() const override;
    MouseCursorID contextCursor(XY<int> const& place) const override;
    void reshape() override;
    void drawBackground() override;
    void describe(GlobDescription& description) const override;

protected:
    bool pressBegan(wainscot::Event const& event) override;
    void pressMoved(wainscot::Event const& event) override;
    void pressEnded(PressEnd how) override;
    void reportUserChange(DataChangeType why) override;

private:
    /// The track without its margins, in which the thumb moves.
    IntBox thumbTrack() const;
    int alongBar(XY<int> const& place) const { return isVertical() ? place.y : place.x; }
    int buttonLength() const;
    void addArrowButtons();
    void layOutButtons();
    void layOutButton(HandlerRef<Button> const& button, XY<int> const& place, int side, bool fits);

    void storeThumb(ThumbSettings const& thumb, eRedrawFlag redraw);
    /// False when the bar has died.
    bool report(eEventType type);

    int turnWheel(int notches);
    /// The position that brings the thumb's middle to a place along the bar, as far as there is room.
    double positionAt(int along) const;
    void jump(XY<int> const& place);
    void page(XY<int> const& place);
    /// False when the bar has died.
    bool pageOnce();
    bool isBeyondThumb() const;
    void keepWay(double leftOut);
    void resizeBy(double change);
    void letGo();
    /// Ends a held drag; only the data is told.
    void dropThumb();
    /// The thumb goes back to where it was at the press.
    void takeBack();
    bool isOnThumb(XY<int> const& place) const;
    /// Brings the look in line with the pointer's place.
    void updateHover();

    double position_ = 0;
    double size_ = 1;
    Orientation orientation_;
    std::int32_t resizingEnd_ = 0;
    bool resizable_;
    /// Of the usual thickness, whatever that is at the time.
    bool usualThickness_ = false;
    bool dragging_ = false;
    bool paging_ = false;
    bool overThumb_ = false;
    /// The pointer at the last press or move.
    XY<int> anchor_;
    ValGesture<ThumbSettings> gesture_;
    double pagingStep_ = 0;
    RepeatClock clock_;
    Reporter reporter_;
    std::optional<Colour> thumbColour_;
    /// At the left or upper end, and at the other end. Null without arrow buttons, and when they have died.
    HandlerRef<Button> firstButton_;
    HandlerRef<Button> lastButton_;
};

} // namespace wainscot
