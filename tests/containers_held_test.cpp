#include "tests/widget_fixture.h"

#include "containers/scroll_bar.h"
#include "containers/slider.h"
#include "foundation/val_server_adaptor.h"
#include "host/events/event.h"
#include "host/objects/glob_notices.h"

#include <climits>
#include <cmath>

namespace wainscot {
namespace {

/// Thumbs that are held while something else happens.
class HeldThumbs : public WidgetTest {
protected:
    static constexpr int middle = 12;

    /// A flat bar with a track of 200 pixels from 4 on.
    ScrollBar* addBar(ThumbSettings thumb, bool resizable = false, bool arrows = false) {
        ScrollBar::InitArgs args(eHorizontal, 208);
        args.thumb = thumb;
        args.resizable = resizable;
        args.arrowButtons = arrows;
        return add(new ScrollBar(args), 20);
    }
    /// A flat slider with a channel of 200 pixels from 4 on.
    Slider* addSlider(double value) {
        Slider::InitArgs args(Colour(0.4, 0.5, 0.6), 204);
        args.value = value;
        return add(new Slider(args), 120);
    }
    template <class W>
    W* add(W* widget, int y) {
        root_->addChild(widget, BottomLeft(20, y));
        driver_.settle();
        return widget;
    }
    void moveIn(Glob* glob, int x) { driver_.moveTo(glob->globXYToScreenXY({x, middle})); }
    void pressAt(Glob* glob, int x) {
        moveIn(glob, x);
        driver_.press();
    }
};

TEST_F(HeldThumbs, WhatTheDataRefusesIsNotReported) {
    ScrollBar* const bar = addBar({0.25, 0.25});
    auto const ofBar = Qv::makePtr<TestData<ThumbSettings>>();
    bar->setDataAdaptor(ofBar);
    Slider* const slider = addSlider(0.5);
    auto const ofSlider = Qv::makePtr<TestData<double>>();
    slider->setDataAdaptor(ofSlider);
    pressAt(bar, 70);
    moveIn(bar, 80);
    EXPECT_EQ(told(), "ScrollBar::thumbMoved");
    ofBar->accepts = false;
    moveIn(bar, 100);
    EXPECT_EQ(bar->getThumbPos(), ofBar->value.position) << "what was taken last";
    EXPECT_EQ(told(), "");
    driver_.key(Key::escape);
    EXPECT_EQ(bar->getThumbPos(), ofBar->value.position) << "that was refused, too";
    driver_.release();
    EXPECT_EQ(told(), "ScrollBar::thumbReleased");
    pressAt(slider, 104);
    moveIn(slider, 124);
    ofSlider->accepts = false;
    moveIn(slider, 144);
    driver_.release();
    EXPECT_NEAR(slider->getWidgetValue(), 0.6, 1e-9);
    EXPECT_EQ(slider->getWidgetValue(), ofSlider->value);
    EXPECT_EQ(told(), "slider 0.600000 slider_released 0.600000");
}

/// A server whose guard takes multiples of a step only.
template <class T>
class Steps final : public iValGuard<T>, public Qv::InternalRefCount {
public:
    explicit Steps(double step) : step_(step) {}
    bool requestValChange(ValServer<T>*, T& value) override {
        if constexpr (std::is_same_v<T, double>)
            value = snapped(value);
        else
            value.position = snapped(value.position);
        return true;
    }

private:
    double snapped(double value) const { return std::round(value / step_) * step_; }
    double step_;
};

TEST_F(HeldThumbs, WhatTheDataMakesOfAValueIsReported) {
    ValServer<ThumbSettings> thumb({0.2, 0.25});
    ValServer<double> value(0.5);
    thumb.setGuard(Qv::makePtr<Steps<ThumbSettings>>(0.2));
    value.setGuard(Qv::makePtr<Steps<double>>(0.1));
    ScrollBar* const bar = addBar({});
    Slider* const slider = addSlider(0);
    bindToServer(*bar, thumb);
    bindToServer(*slider, value);
    pressAt(bar, 60);
    moveIn(bar, 110);
    EXPECT_NEAR(bar->getThumbPos(), 0.4, 1e-9);
    EXPECT_EQ(told(), "ScrollBar::thumbMoved");
    for (int x = 111; x <= 150; ++x) moveIn(bar, x);
    EXPECT_NEAR(bar->getThumbPos(), 0.6, 1e-9) << "small steps add up";
    EXPECT_EQ(told(), "ScrollBar::thumbMoved");
    driver_.key(Key::escape);
    EXPECT_EQ(told(), "ScrollBar::thumbMoved ScrollBar::thumbReleased");
    driver_.release();
    pressAt(bar, 180);
    driver_.release();
    EXPECT_NEAR(bar->getThumbPos(), 0.4, 1e-9) << "a page of 0.25";
    EXPECT_EQ(told(), "ScrollBar::thumbMoved");
    pressAt(slider, 104);
    moveIn(slider, 108);
    EXPECT_EQ(told(), "") << "it has not moved";
    moveIn(slider, 118);
    driver_.release();
    EXPECT_EQ(told(), "slider 0.600000 slider_released 0.600000");
    EXPECT_TRUE(slider->changePosition(0.87));
    EXPECT_FALSE(slider->nudge(true));
    EXPECT_EQ(told(), "slider 0.900000 slider_released 0.900000");
}

TEST_F(HeldThumbs, ArrowButtonsMayDie) {
    for (int victim = 0; victim < 2; ++victim) {
        ScrollBar* const bar = addBar({0.25, 0.25}, false, true);
        destroy(victim == 0 ? bar->firstChild() : bar->lastChild());
        bar->setThumbPos(0.5);
        bar->setPalette(Palette());
        bar->setButtonCol(Colour(0.2, 0.3, 0.4));
        bar->resize(180, 24);
        driver_.settle();
        driver_.click(bar);
        destroy(bar);
    }
    told();
}

TEST_F(HeldThumbs, DataMayDisableTheBarInItsRequest) {
    ScrollBar* const bar = addBar({0.25, 0.25});
    auto const data = Qv::makePtr<TestData<ThumbSettings>>();
    bar->setDataAdaptor(data);
    data->onAsk = [bar] { bar->setActive(false); };
    pressAt(bar, 70);
    moveIn(bar, 90);
    driver_.release();
    EXPECT_EQ(told(), "") << "what was under way has ended";
    EXPECT_FALSE(bar->isDragging());
}

TEST_F(HeldThumbs, DataMayDestroyAnythingWhenWhatIsHeldIsMovedOrTakenOut) {
    expectDiagnostic("keyboard focus refused");
    expectDiagnostic("tree operation refused");
    expectDiagnostic("message not handled");
    for (int victim = 0; victim < 5; ++victim) {
        for (bool const moves : {true, false}) {
            Glob* const from = add(new Glob(300, 100), 0);
            Glob* const to = add(new Glob(300, 100), 200);
            Slider* const slider = addSlider(0.5);
            from->addChild(slider, BottomLeft(10, 10));
            driver_.settle();
            auto const data = Qv::makePtr<TestData<double>>();
            slider->setDataAdaptor(data);
            pressAt(slider, 104);
            moveIn(slider, 124);
            data->onAsk = [&] {
                if (victim == 0) destroy(slider);
                if (victim == 1) destroy(from);
                if (victim == 2) destroy(to);
                if (victim == 3) root_->addChild(slider, BottomLeft(0, 0));
                if (victim == 4) slider->claimKbdFocus();
            };
            std::unique_ptr<Glob> taken;
            if (moves)
                to->addChild(slider, BottomLeft(0, 0));
            else
                taken = from->takeWidget(slider);
            data->onAsk = {};
            EXPECT_THAT(data->whys, ElementsAre(0, 2));
            EXPECT_EQ(is_good_glob_ptr(slider), victim != 0 && !(moves && victim == 2)) << victim;
            EXPECT_FALSE(taken && get_kbd_focus() == slider);
            driver_.release();
            taken.reset();
            for (Glob* const glob : {static_cast<Glob*>(slider), from, to}) destroy(glob);
            driver_.settle();
        }
    }
}

TEST_F(HeldThumbs, AnotherAdaptorHearsNothingOfAnEarlierStart) {
    Slider* const slider = addSlider(0.5);
    auto const first = Qv::makePtr<TestData<double>>();
    auto const second = Qv::makePtr<TestData<double>>();
    slider->setDataAdaptor(first);
    pressAt(slider, 104);
    moveIn(slider, 124);
    slider->setDataAdaptor(second);
    moveIn(slider, 134);
    slider->claimKbdFocus();
    driver_.key(Key::right);
    driver_.release();
    EXPECT_THAT(first->whys, ElementsAre(0, 2));
    EXPECT_THAT(second->whys, ElementsAre(0, 2)) << "a key does nothing to what is held";
}

TEST_F(HeldThumbs, EscapeKeepsASizeThatTheOwnerHasSet) {
    ScrollBar* const bar = addBar({0.25, 0.5});
    pressAt(bar, 90);
    moveIn(bar, 100);
    bar->setThumbSize(0.25);
    driver_.key(Key::escape);
    EXPECT_EQ(bar->getWidgetValue(), (ThumbSettings{0.25, 0.25}));
    driver_.release();
}

TEST_F(HeldThumbs, NothingPagesByItselfWhenThePressHasGone) {
    expectDiagnostic("message not handled");
    for (int how = 0; how < 3; ++how) {
        ScrollBar* const bar = addBar({0, 0.1});
        Glob* const other = add(new Glob(300, 100), 200);
        pressAt(bar, 180);
        if (how == 0) other->addChild(bar, BottomLeft(20, 20));
        if (how == 1) root_->setVisible(false);
        if (how == 2) bar->setThumbSize(1);
        root_->setVisible(true);
        driver_.advance(500);
        told();
        bar->setThumbPos(0);
        driver_.advance(3000);
        EXPECT_EQ(bar->getThumbPos(), 0) << how;
        EXPECT_EQ(told(), "") << how;
        driver_.release();
        destroy(bar);
        destroy(other);
        driver_.settle();
    }
}

TEST_F(HeldThumbs, ATrackPressBeyondTheEndOfTheWayReportsOnce) {
    ScrollBar* const bar = addBar({0.9, 0.1});
    pressAt(bar, 206);
    driver_.advance(3000);
    EXPECT_EQ(told(), "ScrollBar::thumbMoved");
    driver_.release();
    // The margin beside the thumb belongs to it.
    driver_.moveTo(bar->globXYToScreenXY({190, 1}));
    driver_.press();
    EXPECT_TRUE(bar->isDragging());
    driver_.release();
}

TEST_F(HeldThumbs, AZoomBarMadeShortNeverFillsItsTrack) {
    ScrollBar* const bar = addBar({0.35, 0.35}, true);
    int const end = bar->getThumbPixelExtents().y - 3;
    pressAt(bar, end);
    moveIn(bar, end - 14);
    moveIn(bar, end - 35);
    EXPECT_LT(bar->getThumbSize(), 0.3);
    EXPECT_GT(bar->getThumbSize(), 1e-7);
    driver_.release();
    bar->setThumbPos(0.2);
    bar->setThumbSize(0.05);
    XY<int> const thumb = bar->getThumbPixelExtents();
    moveIn(bar, thumb.x + 8);
    driver_.holdModifiers(Key::shift);
    driver_.press();
    driver_.holdModifiers(0);
    moveIn(bar, thumb.x + 28);
    EXPECT_NEAR(bar->getThumbPos(), 0.3, 1e-9) << "all ends, and moved all the same";
    EXPECT_NEAR(bar->getThumbSize(), 0.05, 1e-9);
    driver_.release();
}

TEST_F(HeldThumbs, WhoeverHearsOfTheFocusOrOfAMoveMayDestroyTheBar) {
    for (bool const byFocus : {true, false}) {
        auto* const probe = new ProbeGlob(400, 300);
        ASSERT_TRUE(host_->globManager().realize(probe, XY<int>{600, 100}));
        ScrollBar::InitArgs args(eHorizontal, 208);
        args.thumb = {0.25, 0.25};
        auto* const bar = new ScrollBar(args);
        probe->addChild(bar, BottomLeft(20, 20));
        host_->globManager().rootToTop(*probe, true);
        driver_.settle();
        auto const kill = [&] {
            if (is_good_glob_ptr(bar)) destroy(bar);
        };
        bar->claimKbdFocus();
        probe->onFocus = kill;
        NotifierSubscription watch;
        if (!byFocus)
            watch = GlobNotices::watchMoves(*bar->firstChild()->nextSibling(),
                                            makeCallback<int, NotifyMsg>([&](NotifyMsg const&) {
                                                kill();
                                                return 0;
                                            }));
        if (byFocus)
            bar->setActive(false);
        else
            bar->resize(300, 30);
        EXPECT_FALSE(is_good_glob_ptr(bar)) << byFocus;
        watch = {};
        destroy(probe);
        driver_.settle();
    }
}

TEST_F(HeldThumbs, AThumbThatItsOwnerMovesAwayIsNoLongerLit) {
    ScrollBar* const bar = addBar({0.25, 0.25});
    driver_.moveTo({490, 390});
    driver_.settle();
    std::uint32_t const rest = driver_.pixel(bar, {76, middle});
    moveIn(bar, 64);
    driver_.settle();
    EXPECT_NE(driver_.pixel(bar, {76, middle}), rest);
    bar->setThumbPos(0.32);
    driver_.settle();
    EXPECT_EQ(driver_.pixel(bar, {76, middle}), rest);
}

TEST_F(HeldThumbs, BrokenWheelsDoNotHoldUpTheProgram) {
    ScrollBar* const bar = addBar({0.25, 0.25});
    for (int const notches : {INT_MIN, INT_MAX}) {
        Event event(EventKind::mouseWheel);
        event.setAmount(notches);
        bar->handleMouseEvent(event);
        driver_.settle();
        EXPECT_EQ(root_->messages().size(), 100u);
        root_->forgetMessages();
    }
}

TEST_F(HeldThumbs, DraggedValuesComeOutRound) {
    Slider* const slider = addSlider(0);
    slider->setRounding(true);
    for (auto const& [low, high] : {std::pair{0.0, 1.0}, {-1.0, 1.0}, {0.0, 100.0}, {-60.0, 12.0}}) {
        slider->setValueRange(low, high);
        for (int x = 1; x < 199; ++x) {
            double const exact = low + (high - low) * (x + 1) / 200;
            double const round = std::round(exact * 1000) / 1000;
            if (std::abs(exact - round) > 1e-9) continue;
            EXPECT_NEAR(slider->x2v(4 + x), round, 1e-9) << low << " to " << high;
        }
    }
    slider->setValueRange(-1e307, 1e307);
    EXPECT_TRUE(std::isfinite(slider->x2v(60)));
}

TEST_F(HeldThumbs, ThinSlidersAreHeldAndPagesGoATenth) {
    Slider* const slider = addSlider(0.5);
    slider->claimKbdFocus();
    driver_.key(Key::pageUp);
    EXPECT_NEAR(slider->getWidgetValue(), 0.6, 1e-9);
    driver_.key(Key::pageDown);
    driver_.key(Key::pageDown);
    EXPECT_NEAR(slider->getWidgetValue(), 0.4, 1e-9);
    for (int const height : {1, 2, 5, 6}) {
        slider->resize(204, height);
        EXPECT_FALSE(slider->getThumbArea().isEmpty()) << height;
        EXPECT_TRUE(slider->bounds().contains(slider->getThumbArea())) << height;
    }
}

} // namespace
} // namespace wainscot
