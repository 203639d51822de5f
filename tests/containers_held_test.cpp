#include "tests/host_fixture.h"

#include "buttons/button.h"
#include "containers/scroll_bar.h"
#include "containers/slider.h"
#include "foundation/val_server_adaptor.h"
#include "host/events/event.h"
#include "host/objects/drag_drop_item.h"
#include "host/objects/glob_notices.h"
#include "host/windows/drag_drop_manager.h"

#include <gmock/gmock.h>

#include <climits>
#include <cmath>
#include <stdexcept>

namespace wainscot {
namespace {

using testing::ElementsAre;

/// Thumbs that are held while something else happens.
class HeldThumbs : public HostTest {
protected:
    static constexpr int middle = 12;

    HeldThumbs() : root_(openWindow(500, 400)) {}

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
    std::string sent() {
        driver_.settle();
        std::string names = root_->names().c_str();
        root_->forgetMessages();
        return names;
    }

    RecordingParent* root_;
};

/// Records how it is told of changes, and answers as the test says.
template <class T>
class Data final : public ValAdaptorBase<T> {
public:
    T getDataValue() const override { return T(); }
    bool requestSetNewDataValue(T const& value, DataChangeType why) override {
        whys.push_back(static_cast<int>(why));
        if (onAsk) onAsk();
        if (accepts) last = value;
        return accepts;
    }
    std::vector<int> whys;
    bool accepts = true;
    T last{};
    std::function<void()> onAsk;
};

TEST_F(HeldThumbs, TheReleaseOfAnotherButtonEndsNothing) {
    ScrollBar* const bar = addBar({0.25, 0.25});
    Slider* const slider = addSlider(0.5);
    for (auto const second : {Driver::Button::right, Driver::Button::middle}) {
        bar->setThumbPos(0.25);
        pressAt(bar, 70);
        driver_.press(second);
        driver_.release(second);
        moveIn(bar, 90);
        EXPECT_NEAR(bar->getThumbPos(), 0.35, 1e-9);
        driver_.release();
        EXPECT_FALSE(bar->isDragging());
        slider->setPosition(0.5);
        pressAt(slider, 104);
        driver_.press(second);
        driver_.release(second);
        moveIn(slider, 124);
        EXPECT_NEAR(slider->getWidgetValue(), 0.6, 1e-9);
        driver_.release();
        EXPECT_FALSE(slider->isThumbHeld());
    }
}

TEST_F(HeldThumbs, DataThatHearsOfAStartHearsOfTheEnd) {
    expectDiagnostic("message not handled");
    for (int how = 0; how < 4; ++how) {
        Glob* const ground = add(new Glob(400, 300), 0);
        auto const end = [&](Glob* glob) {
            if (how == 0) glob->setActive(false);
            if (how == 1) glob->setVisible(false);
            if (how == 2) ground->setVisible(false);
            if (how == 3) root_->addChild(glob, BottomLeft(0, 0));
            driver_.settle();
            ground->setVisible(true);
        };
        ScrollBar* const bar = addBar({0.25, 0.25});
        Slider* const slider = addSlider(0.5);
        ground->addChild(bar, BottomLeft(0, 0));
        ground->addChild(slider, BottomLeft(0, 100));
        auto const ofBar = Qv::makePtr<Data<ThumbSettings>>();
        auto const ofSlider = Qv::makePtr<Data<double>>();
        bar->setDataAdaptor(ofBar);
        slider->setDataAdaptor(ofSlider);
        driver_.settle();
        pressAt(bar, 70);
        moveIn(bar, 90);
        end(bar);
        EXPECT_FALSE(bar->isDragging()) << how;
        driver_.release();
        EXPECT_THAT(ofBar->whys, ElementsAre(0, 2)) << how;
        pressAt(slider, 104);
        moveIn(slider, 124);
        end(slider);
        EXPECT_FALSE(slider->isThumbHeld()) << how;
        driver_.release();
        EXPECT_THAT(ofSlider->whys, ElementsAre(0, 2)) << how;
        destroy(bar);
        destroy(slider);
        destroy(ground);
    }
}

TEST_F(HeldThumbs, WhatTheDataRefusesIsNotReported) {
    ScrollBar* const bar = addBar({0.25, 0.25});
    auto const ofBar = Qv::makePtr<Data<ThumbSettings>>();
    bar->setDataAdaptor(ofBar);
    Slider* const slider = addSlider(0.5);
    auto const ofSlider = Qv::makePtr<Data<double>>();
    slider->setDataAdaptor(ofSlider);
    pressAt(bar, 70);
    moveIn(bar, 80);
    EXPECT_EQ(sent(), "ScrollBar::thumbMoved");
    ofBar->accepts = false;
    moveIn(bar, 100);
    EXPECT_EQ(bar->getThumbPos(), ofBar->last.position) << "what was taken last";
    EXPECT_EQ(sent(), "");
    driver_.key(Key::escape);
    EXPECT_EQ(bar->getThumbPos(), ofBar->last.position) << "that was refused, too";
    driver_.release();
    EXPECT_EQ(sent(), "ScrollBar::thumbReleased");
    pressAt(slider, 104);
    moveIn(slider, 124);
    ofSlider->accepts = false;
    moveIn(slider, 144);
    driver_.release();
    EXPECT_NEAR(slider->getWidgetValue(), 0.6, 1e-9);
    EXPECT_EQ(slider->getWidgetValue(), ofSlider->last);
    EXPECT_EQ(sent(), "slider 0.600000 slider_released 0.600000");
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
        if (fails) throw std::runtime_error("no");
        return true;
    }
    bool fails = false;

private:
    double snapped(double value) const { return std::round(value / step_) * step_; }
    double step_;
};

TEST_F(HeldThumbs, WhatTheDataMakesOfAValueIsReported) {
    expectDiagnostic("exception in handler");
    ValServer<ThumbSettings> thumb({0.2, 0.25});
    ValServer<double> value(0.5);
    auto const thumbSteps = Qv::makePtr<Steps<ThumbSettings>>(0.2);
    auto const valueSteps = Qv::makePtr<Steps<double>>(0.1);
    thumb.setGuard(thumbSteps);
    value.setGuard(valueSteps);
    ScrollBar* const bar = addBar({});
    Slider* const slider = addSlider(0);
    bindToServer(*bar, thumb);
    bindToServer(*slider, value);
    pressAt(bar, 60);
    moveIn(bar, 110);
    EXPECT_NEAR(bar->getThumbPos(), 0.4, 1e-9);
    EXPECT_EQ(sent(), "ScrollBar::thumbMoved");
    for (int x = 111; x <= 150; ++x) moveIn(bar, x);
    EXPECT_NEAR(bar->getThumbPos(), 0.6, 1e-9) << "small steps add up";
    EXPECT_EQ(sent(), "ScrollBar::thumbMoved");
    driver_.key(Key::escape);
    EXPECT_EQ(sent(), "ScrollBar::thumbMoved ScrollBar::thumbReleased");
    driver_.release();
    pressAt(bar, 180);
    driver_.release();
    EXPECT_NEAR(bar->getThumbPos(), 0.4, 1e-9) << "a page of 0.25";
    EXPECT_EQ(sent(), "ScrollBar::thumbMoved");
    pressAt(slider, 104);
    moveIn(slider, 108);
    EXPECT_EQ(sent(), "") << "it has not moved";
    moveIn(slider, 118);
    driver_.release();
    EXPECT_EQ(sent(), "slider 0.600000 slider_released 0.600000");
    EXPECT_TRUE(slider->changePosition(0.87));
    EXPECT_FALSE(slider->nudge(true));
    EXPECT_EQ(sent(), "slider 0.900000 slider_released 0.900000");

    // What an observer throws keeps nobody from being told.
    struct Thrower : ValClient<double> {
        void handleNotification(NotifierEvent<double> const& event) override {
            if (event.type == ValServerBase::valChangedMsgType) throw std::runtime_error("observer");
        }
    } thrower;
    ValServer<double> shared(0.2);
    thrower.attach(shared);
    bindToServer(*slider, shared);
    Slider* const second = add(new Slider(Slider::InitArgs(100)), 200);
    bindToServer(*second, shared);
    set_kbd_focus(slider);
    driver_.key(Key::end);
    EXPECT_EQ(sent(), "slider 1.000000 slider_released 1.000000");
    EXPECT_EQ(second->getWidgetValue(), 1.0);
    bindToServer(*slider, value);

    // A guard that throws leaves everything in step.
    thumbSteps->fails = valueSteps->fails = true;
    pressAt(bar, 95);
    moveIn(bar, 145);
    driver_.release();
    pressAt(slider, 184);
    moveIn(slider, 104);
    driver_.release();
    EXPECT_FALSE(bar->isDragging() || slider->isThumbHeld());
    EXPECT_EQ(bar->getWidgetValue(), thumb.value());
    EXPECT_EQ(slider->getWidgetValue(), value.value());
}

TEST_F(HeldThumbs, ALostPressTakesBackWhatWasDragged) {
    Slider* const slider = addSlider(0.5);
    pressAt(slider, 104);
    moveIn(slider, 150);
    EXPECT_GT(slider->getWidgetValue(), 0.6);
    sent();
    deactivate();
    EXPECT_EQ(slider->getWidgetValue(), 0.5);
    EXPECT_EQ(sent(), "slider 0.500000 slider_released 0.500000");
    driver_.release();
    EXPECT_EQ(sent(), "");
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
    sent();
}

TEST_F(HeldThumbs, DataMayDisableTheBarInItsRequest) {
    ScrollBar* const bar = addBar({0.25, 0.25});
    auto const data = Qv::makePtr<Data<ThumbSettings>>();
    bar->setDataAdaptor(data);
    data->onAsk = [bar] { bar->setActive(false); };
    pressAt(bar, 70);
    moveIn(bar, 90);
    driver_.release();
    EXPECT_EQ(sent(), "") << "what was under way has ended";
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
            auto const data = Qv::makePtr<Data<double>>();
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
    auto const first = Qv::makePtr<Data<double>>();
    auto const second = Qv::makePtr<Data<double>>();
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

TEST_F(HeldThumbs, ADragThatBeginsEndsWhatIsHeld) {
    Slider* const slider = addSlider(0.5);
    pressAt(slider, 104);
    ASSERT_TRUE(DragDropManager::instance().beginDrag(Qv::Ptr<DragDropItem>(new DragDropItem("x")), slider));
    EXPECT_FALSE(slider->isThumbHeld());
    driver_.release();
    auto* const button = add(new Button(L"clip", "clip", 80, 24), 200);
    driver_.press(button);
    ASSERT_TRUE(DragDropManager::instance().beginDrag(Qv::Ptr<DragDropItem>(new DragDropItem("x")), button));
    driver_.release();
    EXPECT_FALSE(button->isDown());
    sent();
    driver_.click(button);
    EXPECT_EQ(sent(), "clip");
}

TEST_F(HeldThumbs, APressAfterALostReleaseBeginsAnew) {
    ScrollBar* const bar = addBar({0.25, 0.25});
    Slider* const slider = addSlider(0.5);
    pressAt(bar, 70);
    moveIn(slider, 104);
    InputEvent press;
    press.kind = InputEvent::Kind::pointerPressed;
    press.button = InputEvent::Button::left;
    press.place = slider->globXYToScreenXY({104, middle});
    host_->loop().inject(press);
    driver_.settle();
    EXPECT_FALSE(bar->isDragging());
    EXPECT_TRUE(slider->isThumbHeld());
    driver_.release();
    EXPECT_FALSE(slider->isThumbHeld());
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
        sent();
        bar->setThumbPos(0);
        driver_.advance(3000);
        EXPECT_EQ(bar->getThumbPos(), 0) << how;
        EXPECT_EQ(sent(), "") << how;
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
    EXPECT_EQ(sent(), "ScrollBar::thumbMoved");
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
