#include "tests/controls.h"
#include "tests/sent_notifications.h"

#include "host/services/preferences.h"

namespace wainscot {
namespace {

class ContainerNotifications : public SentNotifications {
protected:
    ScrollBar& bar() { return *static_cast<ScrollBar*>(widget_); }
    Slider& slider() { return *static_cast<Slider*>(widget_); }
    void dropListeners() override {
        if (auto* const scrollBar = dynamic_cast<ScrollBar*>(widget_)) {
            scrollBar->setListener({});
            scrollBar->setDataAdaptor({});
        } else {
            slider().setDataAdaptor({});
            slider().setCallback(WidgetCallback(""));
        }
    }

    void moveTo(int x) { driver_.moveTo(widget_->globXYToScreenXY({x, widget_->height() / 2})); }
    void pressAt(int x) {
        moveTo(x);
        driver_.press();
    }
    /// The widget may be gone after each report.
    void dragFrom(int x) {
        XY<int> const way = widget_->globXYToScreenXY({x + 20, widget_->height() / 2});
        pressAt(x);
        driver_.moveTo(way);
    }
    /// The act of a row, with the listener, or the data, attached.
    std::function<void()> listening(std::function<void()> act) {
        return [this, act] {
            bar().setListener(reaction());
            act();
        };
    }
    std::function<void()> bound(std::function<void()> act) {
        return [this, act] {
            if (auto* const scrollBar = dynamic_cast<ScrollBar*>(widget_))
                bind<ThumbSettings>(*scrollBar);
            else
                bind<double>(slider());
            act();
        };
    }
    std::function<void()> synchronous(std::function<void()> act) {
        return [this, act] {
            slider().setSynchronousMessages(true);
            act();
        };
    }
};

} // namespace

TEST_F(ContainerNotifications, OfScrollBars) {
    constexpr char const* moved = "ScrollBar::thumbMoved";
    // A track of 152 pixels from 28 on: the thumb goes from 66 to 142.
    auto const drag = [this] { dragFrom(100); };
    auto const resize = [this] { dragFrom(138); };
    auto const page = [this] { pressAt(170); };
    auto const repeat = [this] {
        bar().setThumbSize(0.1);
        pressAt(170);
        driver_.advance(2000);
    };
    auto const jump = [this] {
        prefs().setPreference(ScrollBar::trackPressJumps, true);
        pressAt(150);
        prefs().setPreference(ScrollBar::trackPressJumps, false);
    };
    auto const release = [this] {
        pressAt(100);
        driver_.release();
    };
    auto const takeBack = [this] {
        pressAt(100);
        bar().setThumbPos(0.1);
        driver_.key(Key::escape);
    };
    auto const arrow = [this] { pressAt(widget_->width() - 8); };
    auto const wheel = [this](int notches) { return [this, notches] { driver_.wheel(widget_, notches); }; };
    runAll<ScrollBar>(
        {
            {"thumb moved", moved, drag},
            {"thumb moved", moved, resize},
            {"thumb moved", moved, page},
            {"thumb moved", moved, repeat, 1},
            {"thumb moved", moved, jump},
            {"thumb released", "ScrollBar::thumbReleased", release},
            {"thumb moved", moved, takeBack},
            {"right", "ScrollBar::rightButtonPressed", arrow},
            {"left", "ScrollBar::leftButtonPressed", [this] { pressAt(8); }},
            {"up", "ScrollBar::upButtonPressed", wheel(1)},
            {"down", "ScrollBar::downButtonPressed", wheel(-1)},
            {"listener", "", listening(drag)},
            {"listener", "", listening(resize)},
            {"listener", "", listening(page)},
            {"listener", "", listening(repeat), 2},
            {"listener", "", listening(jump)},
            {"listener", "", listening(release)},
            {"listener", "", listening(takeBack)},
            {"listener", "", listening(takeBack), 1},
            {"listener", "", listening(arrow)},
            {"listener", "", listening(wheel(-3)), 1},
            {"data", "", bound(drag)},
            {"data", "", bound(resize)},
            {"data", "", bound(page)},
            {"data", "", bound(repeat), 1},
            {"data", "", bound(jump)},
            {"data", "", bound(takeBack)},
        },
        [] {
            return newBar(eHorizontal, {0.25, 0.5}, true, true);
        });
}

TEST_F(ContainerNotifications, OfSliders) {
    // The channel takes 200 pixels.
    int const margin = UifStd::getIndentWidth();
    auto const move = [this, margin] { dragFrom(margin + 100); };
    auto const release = [this, margin] {
        pressAt(margin + 100);
        driver_.release();
    };
    auto const moveAndRelease = [this, move] {
        move();
        driver_.release();
    };
    auto const key = [this] {
        slider().claimKbdFocus();
        driver_.key(Key::end);
    };
    auto const point = [this, margin] {
        slider().setPointOfInterest(0.25);
        pressAt(margin + 50);
    };
    auto const takeBack = [this, margin] {
        pressAt(margin + 100);
        slider().setPosition(0.7);
        driver_.key(Key::escape);
    };
    constexpr char const* still = "slider_released 0.500000";
    runAll<Slider>(
        {
            {"moved", "slider 0.600000", move},
            {"moved", "slider 0.600000", synchronous(move)},
            {"released", still, release},
            {"released", still, synchronous(release)},
            {"moved", "slider 1.000000", key},
            {"moved", "slider 1.000000", synchronous(key)},
            {"released", "slider_released 1.000000", synchronous(key)},
            {"moved", "slider 0.250000", point},
            {"moved", "slider 0.250000", synchronous(point)},
            {"released", "slider_released 0.250000", synchronous(point)},
            {"moved", "slider 0.500000", takeBack},
            {"moved", "slider 0.500000", synchronous(takeBack)},
            {"released", still, synchronous(takeBack)},
            {"callback", "",
             [this, move] {
                 slider().setCallback(WidgetCallback(reaction(), ""));
                 move();
             }},
            {"data", "", bound(move)},
            {"data", "", bound(moveAndRelease), 1},
            {"data", "", bound(key)},
            {"data", "", bound(point)},
            {"data", "", bound(takeBack)},
        },
        [] { return newSlider(0.5); });
}

} // namespace wainscot
