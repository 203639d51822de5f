#include "tests/controls.h"
#include "tests/widget_fixture.h"

#include "host/events/event.h"
#include "host/objects/glob_notices.h"
#include "host/services/preferences.h"

#include <climits>
#include <limits>

namespace wainscot {
namespace {

constexpr double noNumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

/// Bars of 24 pixels with margins of 4, so that thumbs are at least 16 long.
class ScrollBars : public WidgetTest {
protected:
    ScrollBar* add(Orientation orientation, ThumbSettings thumb, bool resizable = false,
                   bool arrows = false) {
        return show(newBar(orientation, thumb, resizable, arrows));
    }
    /// Records the types of all reports instead of sending them.
    void listen(ScrollBar* bar) {
        bar->setListener(makeCallback<int, NotifyMsg>([this](NotifyMsg const& message) {
            auto const* const event = dynamic_cast<ScrollBar::Event const*>(message.payload().get());
            heard_.push_back(event ? static_cast<int>(event->type()) : -1);
            auto const handler = onReport_;
            if (handler) handler();
            return 1;
        }));
    }
    /// What was sent since it was last asked, without the prefix.
    std::string sent() {
        std::string names;
        for (auto const& message : root_->messages()) {
            EXPECT_TRUE(ScrollBar::isScrollBarMsg(message.name));
            names += (names.empty() ? "" : " ") + std::string(message.name.c_str()).substr(11);
        }
        root_->forgetMessages();
        return names;
    }

    std::vector<int> heard_;
    std::function<void()> onReport_;
};

TEST_F(ScrollBars, PositionAndSizeAreKeptWithinTheTrack) {
    expectDiagnostic("no number");
    ScrollBar* const bar = add(eHorizontal, {0.5, 0.25});
    EXPECT_TRUE(bar->setThumbPos(2)) << "the wish differs";
    EXPECT_EQ(bar->getThumbPos(), 0.75);
    EXPECT_TRUE(bar->setThumbPos(2)) << "it still does, though nothing moves";
    EXPECT_FALSE(bar->setThumbPos(0.7500005));
    EXPECT_FALSE(bar->setThumbPos(noNumber));
    EXPECT_TRUE(bar->setThumbPos(-infinity));
    EXPECT_EQ(bar->getThumbPos(), 0.0);
    EXPECT_TRUE(bar->setThumbPos(infinity));
    EXPECT_TRUE(bar->setThumbSize(0.5)) << "and the position follows";
    EXPECT_EQ(bar->getWidgetValue(), (ThumbSettings{0.5, 0.5}));
    EXPECT_FALSE(bar->setThumbSize(0.5000005));
    for (double const full : {0.0, 2.0, 1.0, -0.5, noNumber, infinity}) {
        bar->setThumbSize(0.5);
        EXPECT_TRUE(bar->setThumbSize(full)) << full;
        EXPECT_EQ(bar->getWidgetValue(), (ThumbSettings{0, 1})) << full;
        EXPECT_EQ(bar->getThumbArea(), IntBox(4, 4, 204, 20)) << full;
    }
    ThumbSettings wild{7, 0.25};
    bar->setNewWidgetValue(wild, eRedrawYes);
    EXPECT_EQ(wild, (ThumbSettings{0.75, 0.25})) << "what was made of it is handed back";
    EXPECT_EQ(sent(), "");
    EXPECT_FALSE(ScrollBar::isScrollBarMsg("Scroll"));
}

TEST_F(ScrollBars, TheThumbLiesInProportionAndASmallOneGoesAllTheWay) {
    ScrollBar* const flat = add(eHorizontal, {0.25, 0.3});
    EXPECT_EQ(flat->getThumbRangePixels(), 200);
    EXPECT_EQ(flat->getThumbArea(), IntBox(54, 4, 114, 20));
    ScrollBar* const tall = add(eVertical, {0.25, 0.3});
    EXPECT_EQ(tall->getThumbArea(), IntBox(4, 94, 20, 154));
    EXPECT_EQ(tall->getThumbPixelExtents(), (XY<int>{94, 154}));
    for (ScrollBar* const bar : {flat, tall}) {
        bar->setThumbSize(0.01);
        bar->setThumbPos(0);
        EXPECT_EQ(bar->getThumbPixelExtents(), (bar == flat ? XY<int>{4, 20} : XY<int>{188, 204}));
        bar->setThumbPos(0.99);
        EXPECT_EQ(bar->getThumbPixelExtents(), (bar == flat ? XY<int>{188, 204} : XY<int>{4, 20}));
    }
    for (double const length : {0, 3, 9, 15, 23, 24}) {
        flat->resize(length, 24);
        IntBox const thumb = flat->getThumbArea();
        EXPECT_LE(thumb.width(), flat->getThumbRangePixels()) << length;
        EXPECT_GE(thumb.width(), 0) << length;
    }
    flat->resize(200, ScrollBar::thickness());
    EXPECT_GE(flat->getThumbArea().height(), ScrollBar::thickness() / 2) << "wide margins leave a thumb";
    EXPECT_GE(flat->getThumbArea().width(), ScrollBar::thickness() / 2);
}

TEST_F(ScrollBars, DraggingMovesTheThumbUnderThePointer) {
    ScrollBar* const flat = add(eHorizontal, {0.25, 0.25});
    for (auto const button : {Driver::Button::left, Driver::Button::right}) {
        flat->setThumbPos(0.25);
        pressAt(flat, 60, 10, button);
        EXPECT_EQ(sent(), "");
        EXPECT_TRUE(flat->isDragging());
        moveIn(flat, 80, 40);
        EXPECT_DOUBLE_EQ(flat->getThumbPos(), 0.35);
        moveIn(flat, 80, 50);
        EXPECT_EQ(sent(), "thumbMoved") << "nothing for a move across the bar";
        moveIn(flat, 390, 10);
        EXPECT_EQ(flat->getThumbPos(), 0.75);
        driver_.release(button);
        EXPECT_EQ(sent(), "thumbMoved thumbReleased");
        EXPECT_FALSE(flat->isDragging());
        moveIn(flat, 100, 10);
        EXPECT_EQ(flat->getThumbPos(), 0.75) << "let go";
    }
    ScrollBar* const tall = add(eVertical, {0.25, 0.25});
    pressAt(tall, 10, 120);
    moveIn(tall, 10, 100);
    EXPECT_DOUBLE_EQ(tall->getThumbPos(), 0.35) << "down is further";
    driver_.release();
}

TEST_F(ScrollBars, PagingRepeatsOnTheProcessorClockUntilTheThumbIsThere) {
    ScrollBar* const bar = add(eHorizontal, {0, 0.1});
    listen(bar);
    pressAt(bar, 100, 10);
    EXPECT_DOUBLE_EQ(bar->getThumbPos(), 0.1);
    driver_.advance(300);
    EXPECT_DOUBLE_EQ(bar->getThumbPos(), 0.1) << "more than 0.3 s";
    driver_.advance(2);
    EXPECT_DOUBLE_EQ(bar->getThumbPos(), 0.2);
    driver_.advance(99);
    EXPECT_DOUBLE_EQ(bar->getThumbPos(), 0.2);
    driver_.advance(3);
    EXPECT_DOUBLE_EQ(bar->getThumbPos(), 0.3);
    driver_.advance(2000);
    EXPECT_DOUBLE_EQ(bar->getThumbPos(), 0.4) << "under the pointer now";
    moveIn(bar, 130, 10);
    driver_.advance(200);
    EXPECT_DOUBLE_EQ(bar->getThumbPos(), 0.6) << "the pointer has gone on";
    driver_.release();
    EXPECT_EQ(EventSystem::live().timers.size(), 0u);
    EXPECT_EQ(heard_, std::vector<int>(6, 0)) << "no release is reported";
    pressAt(bar, 10, 10);
    EXPECT_DOUBLE_EQ(bar->getThumbPos(), 0.5);
    driver_.key(Key::escape);
    driver_.advance(1000);
    EXPECT_DOUBLE_EQ(bar->getThumbPos(), 0.5);
    driver_.release();

    ScrollBar* const tall = add(eVertical, {0.5, 0.1});
    for (auto const& [y, place] : {std::pair{200, 0.4}, std::pair{10, 0.5}}) {
        pressAt(tall, 10, y);
        EXPECT_DOUBLE_EQ(tall->getThumbPos(), place);
        driver_.release();
    }
}

TEST_F(ScrollBars, APressInTheTrackTakesTheThumbWhereTheUserPrefersThat) {
    prefs().setPreference(ScrollBar::trackPressJumps, true);
    for (Orientation const orientation : {eHorizontal, eVertical}) {
        for (double const size : {0.25, 0.01}) {
            ScrollBar* const bar = add(orientation, {0, size}, true);
            auto const put = [&](int along) {
                moveIn(bar, orientation == eHorizontal ? along : 12,
                       orientation == eHorizontal ? 12 : 208 - along);
            };
            auto const middle = [&] {
                XY<int> const extents = bar->getThumbPixelExtents();
                int const along = (extents.x + extents.y) / 2;
                return orientation == eHorizontal ? along : 208 - along;
            };
            put(124);
            driver_.press();
            EXPECT_NEAR(middle(), 124, 1);
            EXPECT_EQ(sent(), "thumbMoved");
            driver_.advance(1000);
            EXPECT_EQ(sent(), "") << "nothing repeats";
            put(144);
            EXPECT_NEAR(middle(), 144, 2) << "and on with the pointer";
            driver_.release();
            EXPECT_EQ(sent(), "thumbMoved thumbReleased");
            EXPECT_EQ(bar->getThumbSize(), size);

            bar->setThumbPos(0.05);
            put(124);
            driver_.press();
            driver_.key(Key::escape);
            EXPECT_EQ(bar->getThumbPos(), 0.05) << "back to where it was before the press";
            EXPECT_EQ(sent(), "thumbMoved thumbMoved thumbReleased");
            driver_.release();
            put(203);
            driver_.press();
            EXPECT_EQ(bar->getThumbPos(), 1 - size);
            driver_.release();
            destroy(bar);
            driver_.settle();
            sent();
        }
    }
    ScrollBar* const bar = add(eHorizontal, {0, 0.25});
    auto const adaptor = Qv::makePtr<TestData<ThumbSettings>>();
    bar->setDataAdaptor(adaptor);
    pressAt(bar, 104, 10);
    moveIn(bar, 124, 10);
    driver_.release();
    EXPECT_THAT(adaptor->whys, ElementsAre(0, 1, 2)) << "all one change";
    pressAt(bar, 10, 10, Driver::Button::right);
    driver_.release(Driver::Button::right);
    EXPECT_NEAR(bar->getThumbPos(), 0.475, 1e-9) << "only the left button";
}

TEST_F(ScrollBars, PressesGoOnWhereThereIsNoWayToGo) {
    auto* const parent = show(new ProbeGlob(300, 200), 0, 0);
    ScrollBar* const bar = addTo(parent, newBar(eHorizontal, {0, 1}));
    int passed = 0;
    parent->onReact = [&](Event const& event) {
        if (mouse_down_event(event)) ++passed;
        return true;
    };
    driver_.settle();
    driver_.click(bar);
    EXPECT_EQ(passed, 1);
}

TEST_F(ScrollBars, TheWheelReportsButtonsForEachNotch) {
    for (Orientation const orientation : {eHorizontal, eVertical}) {
        ScrollBar* const bar = add(orientation, {0, 1});
        bar->setActive(false);
        driver_.wheel(bar, 1);
        EXPECT_EQ(sent(), "upButtonPressed");
        driver_.wheel(bar, -3);
        EXPECT_EQ(sent(), "downButtonPressed downButtonPressed downButtonPressed");
        driver_.sideWheel(bar, 1);
        EXPECT_EQ(sent(), orientation == eHorizontal ? "downButtonPressed" : "") << "only along the bar";
        root_->removeWidget(*std::make_unique<Glob*>(bar));
    }
}

TEST_F(ScrollBars, AnArrowThatIsSlidOffKeepsThePressWhateverElseIsPressed) {
    ScrollBar* const bar = add(eHorizontal, {0, 0.5}, true, true);
    pressAt(bar, 195, 10);
    moveIn(bar, 60, 10);
    driver_.press(Driver::Button::right);
    driver_.release();
    EXPECT_EQ(EventSystem::live().timers.size(), 0u);
    moveIn(bar, 90, 10);
    driver_.release(Driver::Button::right);
    EXPECT_EQ(bar->getThumbPos(), 0);
    EXPECT_FALSE(bar->isDragging());
}

TEST_F(ScrollBars, ArrowButtonsReportAndRepeatWhileThereIsAWayToGo) {
    for (Orientation const orientation : {eHorizontal, eVertical}) {
        ScrollBar* const bar = add(orientation, {0, 0.5}, false, true);
        bool const flat = orientation == eHorizontal;
        EXPECT_EQ(bar->getThumbRangePixels(), 152);
        pressAt(bar, flat ? 195 : 10, flat ? 10 : 10);
        EXPECT_EQ(sent(), flat ? "rightButtonPressed" : "downButtonPressed");
        driver_.advance(305);
        EXPECT_EQ(sent(), flat ? "rightButtonPressed" : "downButtonPressed");
        driver_.release();
        pressAt(bar, flat ? 5 : 10, flat ? 10 : 200);
        EXPECT_EQ(sent(), "") << "nothing lies before the beginning";
        driver_.release();
        bar->setThumbPos(0.5);
        driver_.press();
        EXPECT_EQ(sent(), flat ? "leftButtonPressed" : "upButtonPressed");
        driver_.release();
        bar->resize(flat ? 60 : 24, flat ? 24 : 60);
        EXPECT_EQ(bar->getThumbRangePixels(), 52) << "no room for arrows";
        destroy(bar);
    }
}

TEST_F(ScrollBars, TheEndsOfAResizableThumbCanBeDragged) {
    ScrollBar* const fixed = add(eHorizontal, {0.25, 0.5});
    EXPECT_EQ(fixed->inResizingArea({150, 10}), 0);
    ScrollBar* const bar = add(eHorizontal, {0.25, 0.5}, true);
    EXPECT_THAT((std::vector<int>{bar->inResizingArea({53, 10}), bar->inResizingArea({54, 10}),
                                  bar->inResizingArea({62, 10}), bar->inResizingArea({63, 10}),
                                  bar->inResizingArea({145, 10}), bar->inResizingArea({146, 10}),
                                  bar->inResizingArea({154, 10})}),
                ElementsAre(0, -1, -1, 0, 0, 1, 0));
    ScrollBar* const tall = add(eVertical, {0.25, 0.5}, true);
    EXPECT_EQ(tall->inResizingArea({10, 55}), 1) << "the lower end is the far one";
    EXPECT_EQ(tall->inResizingArea({10, 150}), -1);
    destroy(tall);
    driver_.settle();

    pressAt(bar, 150, 10);
    moveIn(bar, 170, 10);
    EXPECT_NEAR(bar->getThumbPos(), 0.15, 1e-9);
    EXPECT_NEAR(bar->getThumbSize(), 0.7, 1e-9) << "both ends go apart";
    moveIn(bar, 190, 10);
    moveIn(bar, 200, 10);
    EXPECT_NEAR(bar->getThumbPos(), 0.0, 1e-9);
    EXPECT_GT(bar->getThumbSize(), 0.9);
    sent();
    moveIn(bar, 20, 10);
    EXPECT_GT(bar->getThumbSize(), 0.9) << "an end does not pass the middle";
    EXPECT_EQ(sent(), "thumbMoved") << "reported all the same";
    driver_.release();
    EXPECT_EQ(sent(), "thumbReleased");

    ThumbSettings thumb{0.25, 0.5};
    bar->setNewWidgetValue(thumb, eRedrawYes);
    pressAt(bar, 56, 10);
    moveIn(bar, 76, 10);
    EXPECT_NEAR(bar->getThumbPos(), 0.35, 1e-9);
    EXPECT_NEAR(bar->getThumbSize(), 0.3, 1e-9);
    driver_.release();
}

TEST_F(ScrollBars, ABarThatItsFirstPageDisablesTurnsNoOther) {
    ScrollBar* const bar = add(eHorizontal, {0.25, 0.25});
    listen(bar);
    onReport_ = [&] { bar->setActive(false); };
    pressAt(bar, 200, 10);
    EXPECT_EQ(EventSystem::live().timers.size(), 0u) << "disabled by the first page: no second one";
    driver_.release();
    EXPECT_THAT(heard_, ElementsAre(0));
}

TEST_F(ScrollBars, TheReleaseIsReportedBeforeTheDragEndsAndTheHandlerMaySetTheBar) {
    ScrollBar* const bar = add(eHorizontal, {0.25, 0.25});
    listen(bar);
    bool wasDragging = false;
    onReport_ = [&] {
        if (heard_.back() != ScrollBar::thumbReleased) return;
        wasDragging = bar->isDragging();
        bar->setThumbPos(0.1);
        bar->setActive(false);
    };
    pressAt(bar, 70, 10);
    driver_.release();
    EXPECT_TRUE(wasDragging);
    EXPECT_FALSE(bar->isDragging());
    EXPECT_EQ(bar->getThumbPos(), 0.1);
    EXPECT_THAT(heard_, ElementsAre(1));
    EXPECT_EQ(sent(), "") << "the listener hears it instead of the parent";
}

TEST_F(ScrollBars, ArrowButtonsMayDie) {
    for (int victim = 0; victim < 2; ++victim) {
        ScrollBar* const bar = add(eHorizontal, {0.25, 0.25}, false, true);
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

TEST_F(ScrollBars, DataMayDisableTheBarInItsRequest) {
    ScrollBar* const bar = add(eHorizontal, {0.25, 0.25});
    auto const data = Qv::makePtr<TestData<ThumbSettings>>();
    bar->setDataAdaptor(data);
    data->onAsk = [bar] { bar->setActive(false); };
    pressAt(bar, 70);
    moveIn(bar, 90, midY);
    driver_.release();
    EXPECT_EQ(told(), "") << "what was under way has ended";
    EXPECT_FALSE(bar->isDragging());
}

TEST_F(ScrollBars, EscapeKeepsASizeThatTheOwnerHasSet) {
    ScrollBar* const bar = add(eHorizontal, {0.25, 0.5});
    pressAt(bar, 90);
    moveIn(bar, 100, midY);
    bar->setThumbSize(0.25);
    driver_.key(Key::escape);
    EXPECT_EQ(bar->getWidgetValue(), (ThumbSettings{0.25, 0.25}));
    driver_.release();
}

TEST_F(ScrollBars, NothingPagesByItselfWhenThePressHasGone) {
    expectDiagnostic("message not handled");
    for (int how = 0; how < 3; ++how) {
        ScrollBar* const bar = add(eHorizontal, {0, 0.1});
        Glob* const other = show(new Glob(300, 100), 20, 200);
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

TEST_F(ScrollBars, ATrackPressBeyondTheEndOfTheWayReportsOnce) {
    ScrollBar* const bar = add(eHorizontal, {0.9, 0.1});
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

TEST_F(ScrollBars, AZoomBarMadeShortNeverFillsItsTrack) {
    ScrollBar* const bar = add(eHorizontal, {0.35, 0.35}, true);
    int const end = bar->getThumbPixelExtents().y - 3;
    pressAt(bar, end);
    moveIn(bar, end - 14, midY);
    moveIn(bar, end - 35, midY);
    EXPECT_LT(bar->getThumbSize(), 0.3);
    EXPECT_GT(bar->getThumbSize(), 1e-7);
    driver_.release();
    bar->setThumbPos(0.2);
    bar->setThumbSize(0.05);
    XY<int> const thumb = bar->getThumbPixelExtents();
    moveIn(bar, thumb.x + 8, midY);
    driver_.holdModifiers(Key::shift);
    driver_.press();
    driver_.holdModifiers(0);
    moveIn(bar, thumb.x + 28, midY);
    EXPECT_NEAR(bar->getThumbPos(), 0.3, 1e-9) << "all ends, and moved all the same";
    EXPECT_NEAR(bar->getThumbSize(), 0.05, 1e-9);
    driver_.release();
}

TEST_F(ScrollBars, WhoeverHearsOfTheFocusOrOfAMoveMayDestroyTheBar) {
    for (bool const byFocus : {true, false}) {
        auto* const probe = new ProbeGlob(400, 300);
        ASSERT_TRUE(host_->globManager().realize(probe, XY<int>{600, 100}));
        auto* const bar = newBar(eHorizontal, {0.25, 0.25}, false, true);
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

TEST_F(ScrollBars, AThumbThatItsOwnerMovesAwayIsNoLongerLit) {
    ScrollBar* const bar = add(eHorizontal, {0.25, 0.25});
    driver_.moveTo({490, 390});
    driver_.settle();
    std::uint32_t const rest = driver_.pixel(bar, {76, midY});
    moveIn(bar, 64, midY);
    driver_.settle();
    EXPECT_NE(driver_.pixel(bar, {76, midY}), rest);
    bar->setThumbPos(0.32);
    driver_.settle();
    EXPECT_EQ(driver_.pixel(bar, {76, midY}), rest);
}

TEST_F(ScrollBars, BrokenWheelsDoNotHoldUpTheProgram) {
    ScrollBar* const bar = add(eHorizontal, {0.25, 0.25});
    for (int const notches : {INT_MIN, INT_MAX}) {
        Event event(EventKind::mouseWheel);
        event.setAmount(notches);
        bar->handleMouseEvent(event);
        driver_.settle();
        EXPECT_EQ(root_->messages().size(), 100u);
        root_->forgetMessages();
    }
}

} // namespace
} // namespace wainscot
