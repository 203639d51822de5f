#pragma once

#include "containers/orientation.h"
#include "foundation/bindable.h"
#include "foundation/focusable.h"
#include "foundation/key_table.h"
#include "foundation/report.h"

#include <optional>
#include <string_view>
#include <vector>

namespace wainscot {

class CanvasRenderer;

/// Sets a number within a range: a thumb on a channel, which is dragged. Its value is that number.
///
/// The channel runs from left to right, or from below upwards, from the minimum to the maximum; the minimum
/// may be larger than the maximum. A press on a point of interest takes the thumb there; other presses beside
/// the thumb do nothing. With the keyboard focus, arrow keys `nudge` it, Page Up and Page Down take it a
/// tenth of the range further, Home and End to the ends.
///
/// Messages to the parent, with the slider as sender, are queued unless `setSynchronousMessages` says
/// otherwise. Each change by the user sends "slider " followed by the value with six decimals; the release of
/// the thumb sends "slider_released " and the value. A change by a key, or to a point of interest, sends
/// both. The adaptor is asked first.
class WAINSCOT_API Slider : public Bindable<ValWidget<double>, Focusable<Pressable<Glob>>> {
public:
    enum eEventType { sliderMoved = 0, sliderReleased = 1 };

    /// What it tells others, in the order of the types: queued unless `setSynchronousMessages` says
    /// otherwise.
    static constexpr MessageInfo messageTable[] = {
        {"moved", MessageInfo::textThenValue, "slider ", MessageInfo::queued, sliderMoved,
         "the user has changed the value"},
        {"released", MessageInfo::textThenValue, "slider_released ", MessageInfo::queued, sliderReleased,
         "the thumb was let go; after a change by a key, or to a point of interest, as well"},
        {"callback", MessageInfo::fixed, {}, MessageInfo::callback, 0, "instead, after `setCallback`"},
        {"data", MessageInfo::fixed, {}, MessageInfo::callback, 0, "before, where it is bound to data"},
    };

    enum KeyAction { nudgeUp, nudgeDown, pageUp, pageDown, toMinimum, toMaximum };
    static constexpr KeyRow<KeyAction> keyTable[] = {
        {Key::right, nudgeUp, "a 500th of the range towards the maximum"},
        {Key::up, nudgeUp, "a 500th of the range towards the maximum"},
        {Key::left, nudgeDown, "a 500th of the range towards the minimum"},
        {Key::down, nudgeDown, "a 500th of the range towards the minimum"},
        {Key::pageUp, pageUp, "a tenth of the range towards the maximum"},
        {Key::pageDown, pageDown, "a tenth of the range towards the minimum"},
        {Key::home, toMinimum, "to the minimum"},
        {Key::end, toMaximum, "to the maximum"},
    };

    /// A mark on the channel. A press on it takes the thumb there.
    struct PointOfInterest {
        double value = 0;
        Colour colour;

        friend bool operator==(PointOfInterest const&, PointOfInterest const&) = default;
    };

    class WAINSCOT_API InitArgs : public GlobCreationInfo {
    public:
        /// `length` goes along the channel; across it the slider is as high as a button. A width or height
        /// that is set afterwards counts instead. Without a colour the thumb has the palette's.
        explicit InitArgs(unsigned short length, Orientation lie = eHorizontal);
        InitArgs(Colour const& thumb, unsigned short length, Orientation lie = eHorizontal);

        std::optional<Colour> thumbColour;
        Orientation orientation;
        double minimum = 0;
        double maximum = 1;
        double value = 0;
    };

    explicit Slider(InitArgs const& args);
    ~Slider() override;

    // --- Value. The setters tell nobody. NaN is ignored, or refused with false, and counted in the
    // diagnostics.
    /// The value is clamped to the new range. Both ends must be finite.
    bool setValueRange(double minimum, double maximum);
    double getMinimum() const { return minimum_; }
    double getMaximum() const { return maximum_; }
    /// The value is clamped to the range.
    void setPosition(double value);
    double getWidgetValue() const override { return value_; }
    void setNewWidgetValue(double& value, eRedrawFlag redraw) override;
    void handleDataAdaptorChange() override;
    /// Changes the value as the user does, with all reports. False when it stays as it is.
    bool changePosition(double value);
    /// By a 500th of the range towards the maximum, or towards the minimum.
    bool nudge(bool up);

    // --- Pixels along the channel, from the left or lower edge
    double v2x(double value) const;
    double x2v(double x) const;
    double getStartX() const { return startX_; }
    double getEndX() const { return endX_; }
    /// Whether `x2v` rounds to thousandths when pixels are further apart than that.
    void setRounding(bool rounds) { rounds_ = rounds; }
    /// In the slider's coordinates; empty while the thumb is not shown.
    IntBox getThumbArea() const;

    // --- Points of interest; NaN is not kept
    void setPointOfInterest(double value);
    std::optional<double> getPointOfInterest() const { return pointOfInterest_; }
    void removePointOfInterest();
    void setPointsOfInterest(std::vector<PointOfInterest> points);
    std::vector<PointOfInterest> const& getPointsOfInterest() const { return points_; }

    // --- State and look
    void setOrientation(Orientation orientation);
    Orientation getOrientation() const { return orientation_; }
    /// Without a thumb it only shows its channel, and cannot be dragged.
    void setThumbVisibility(bool visible);
    void setThumbColour(Colour const& colour);
    /// Whether messages are delivered before the change goes on, instead of being queued.
    void setSynchronousMessages(bool synchronous) { synchronous_ = synchronous; }
    bool isThumbHeld() const { return gesture_.isHeld(); }

    void informParent(eEventType type);
    /// The callback is told instead of the parent, with the same name and the type as code; null = the parent
    /// again.
    void setCallback(WidgetCallback const& callback) { reporter_.setCallback(callback.getCallback()); }

    SizeNeeds sizeNeeds() const override;
    bool react(Event const& event) override;
    void handleLookChange(LookChange changes) override;
    void reshape() override;
    void drawBackground() override;
    void describe(GlobDescription& description) const override;

protected:
    bool pressBegan(Event const& event) override;
    void pressMoved(Event const& event) override;
    void pressEnded(PressEnd how) override;
    void handleDataMixed(bool mixed, eRedrawFlag redraw) override;
    void reportUserChange(DataChangeType why) override;

private:
    bool isVertical() const { return orientation_ == eVertical; }
    int alongChannel(XY<int> const& place) const { return isVertical() ? place.y : place.x; }
    double clamped(double value) const;
    double valueAt(double x) const;
    void recalculateStartAndEnd();
    void storeValue(double value, eRedrawFlag redraw);

    bool reactToKey(Event const& event);
    bool pressPointOfInterest(int x);
    void pickUpThumb(int x);
    void setSliderFromPixelPos(double x);
    /// Ends a held drag; only the data is told.
    void dropThumb();

    void drawChannel(CanvasRenderer& renderer);
    /// A colour as it is shown: weaker while it is inactive.
    Colour shownColour(Colour const& colour) const;
    void drawPoint(CanvasRenderer& renderer, double value, Colour const& colour);
    IntBox alongBox(int from, int to, int margin) const;

    double startX_ = 0;
    double endX_ = 0;
    double minimum_ = 0;
    double maximum_ = 1;
    double value_ = 0;
    ValGesture<double> gesture_;
    std::optional<double> pointOfInterest_;
    std::vector<PointOfInterest> points_;
    std::optional<Colour> thumbColour_;
    Reporter reporter_;
    Orientation orientation_;
    /// From the thumb's place to the pointer when it was picked up.
    int grip_ = 0;
    bool thumbVisible_ = true;
    bool rounds_ = false;
    bool synchronous_ = false;
    /// As high as a button across the channel, whatever that is at the time.
    bool standardHeight_ = false;
};

} // namespace wainscot
