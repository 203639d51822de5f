#include "tests/host_fixture.h"

#include "host/drawing/uif_std.h"
#include "host/objects/glob_notices.h"
#include "host/objects/surround.h"

namespace wainscot {
namespace {

using Kind = InputEvent::Kind;

/// A window with an opener, and pop-ups opened from it.
class PopUps : public HostTest {
protected:
    PopUps() {
        noteButtons(*opener_, "opener");
        noteButtons(*outside_, "outside");
    }

    void noteButtons(ProbeGlob& probe, std::string const& name) {
        probe.onReact = [this, name, &probe](Event const& event) {
            if (mouse_down_event(event)) log_.push_back(name + " down");
            if (mouse_up_event(event)) log_.push_back(name + " up");
            if (mouse_move_event(event) && event.heldButtons() != 0) log_.push_back(name + " drag");
            return mouse_event(event) || probe.Glob::react(event);
        };
    }

    /// A pop-up that closes itself when it is asked to, and records that.
    ProbeGlob* makePopUp(std::string const& name, XY<int> size = {100, 80}) {
        auto* popUp = new ProbeGlob(size.x, size.y, nullptr, name);
        popUp->onMessage = [this, name, popUp](LightweightString<char> const& message, Glob* sender) {
            log_.push_back(name + " " + message.c_str() + (sender == popUp ? "" : " from elsewhere"));
            delete popUp;
            return 1;
        };
        noteButtons(*popUp, name);
        return popUp;
    }
    ProbeGlob* show(ProbeGlob* popUp, XY<int> place, Glob* parent = nullptr) {
        PopUpOptions options;
        options.place = place;
        options.parent = parent;
        if (!parent) options.opener = opener_;
        EXPECT_TRUE(manager().openPopUp(popUp, options));
        if (!DispatchScope::isActive()) driver_.settle();
        return popUp;
    }
    ProbeGlob* open(std::string const& name, XY<int> place, Glob* parent = nullptr) {
        return show(makePopUp(name), place, parent);
    }
    /// Presses the opener, which opens the first pop-up there.
    void pressOpener(XY<int> place) {
        opener_->onReact = [this, place](Event const& event) {
            if (mouse_down_event(event)) first_ = open("first", place);
            if (mouse_up_event(event)) log_.push_back("opener up");
            return true;
        };
        opener_->onPressLost = [this] { log_.push_back("opener lost"); };
        driver_.press(opener_);
        log_.clear();
    }
    /// First, second and third pop-up, side by side.
    void openThree() {
        first_ = open("first", {130, 600});
        second_ = open("second", {230, 600}, first_);
        third_ = open("third", {330, 600}, second_);
        log_.clear();
    }
    GlobManager& manager() { return host_->globManager(); }
    PopUpChain& chain() { return manager().popUps(); }

    RecordingParent* window_ = openWindow(400, 300, {100, 500});
    ProbeGlob* opener_ = addTo(window_, new ProbeGlob(60, 20, &log_, "opener"), BottomLeft(20, 200));
    ProbeGlob* outside_ = addTo(window_, new ProbeGlob(60, 20, &log_, "outside"), BottomLeft(300, 20));
    ProbeGlob* first_ = nullptr;
    ProbeGlob* second_ = nullptr;
    ProbeGlob* third_ = nullptr;
};

Lines const allClosed{"third poot", "second poot", "first poot"};

TEST_F(PopUps, AreAboveAllNeverActiveAndTakeNoFocus) {
    opener_->claimKbdFocus();
    log_.clear();
    ProbeGlob* const popUp = open("menu", {130, 600});
    OffscreenWindow const* const native = nativeOf(popUp);
    EXPECT_EQ(native->kind(), NativeWindowSettings::Kind::popUp);
    EXPECT_TRUE(native->keepsAbove());
    EXPECT_EQ(native->owner(), nativeOf(window_)->id());
    EXPECT_TRUE(manager().isPopUp(popUp));
    EXPECT_EQ(popUp->screenBox(), IntBox(130, 600, 230, 680));
    EXPECT_EQ(manager().activeWindow()->rootStamp(), window_->idStamp());
    EXPECT_EQ(get_kbd_focus(), opener_);
    EXPECT_TRUE(glib_appHasFocus());
    EXPECT_EQ(takeLog(), Lines{}) << "nobody is told of any change of the focus";
    EXPECT_TRUE(host_->offscreen()->outsidePresses());
    // The window comes to the front below its pop-ups.
    window_->popToTop();
    EXPECT_EQ(&manager().windowAt({150, 650})->root(), popUp);
    destroy(popUp);
    driver_.settle();
    EXPECT_FALSE(host_->offscreen()->outsidePresses());
    EXPECT_FALSE(chain().isOpen());
}

TEST_F(PopUps, APressOutsideClosesTheWholeChainAndIsSpent) {
    openThree();
    EXPECT_EQ(chain().parentOf(third_), second_);
    EXPECT_EQ(chain().opener(), opener_);
    driver_.click(outside_);
    EXPECT_EQ(takeLog(), (Lines{"outside entered", "third poot", "second poot", "first poot"}));
    EXPECT_EQ(EventSystem::live().pointer.heldButtons, 0);
    driver_.click(outside_);
    EXPECT_EQ(takeLog(), (Lines{"outside down", "outside up"})) << "the next press is an ordinary one";
}

TEST_F(PopUps, APressOnAnotherProgramsWindowClosesToo) {
    openThree();
    driver_.clickAt({1500, 50});
    EXPECT_EQ(takeLog(), allClosed);
    // Its release may never be reported: the next press counts nevertheless.
    first_ = open("first", {130, 600});
    log_.clear();
    inject({.kind = Kind::pointerPressed, .button = InputEvent::Button::left, .place = {1500, 50}});
    EXPECT_EQ(takeLog(), Lines{"first poot"});
    driver_.press(outside_);
    EXPECT_EQ(takeLog(), (Lines{"outside entered", "outside down"}));
    driver_.release();
}

TEST_F(PopUps, APressOnAPopUpClosesNothing) {
    openThree();
    driver_.clickAt({140, 620});
    EXPECT_EQ(takeLog(), (Lines{"first down", "first up"}));
    EXPECT_EQ(chain().size(), 3u);
    chain().closeBehind(*first_);
    EXPECT_EQ(takeLog(), (Lines{"third poot", "second poot"}));
    EXPECT_EQ(chain().last(), first_);
    // What an object in it has opened closes, except by that object's press.
    auto* const inner = addTo(first_, new ProbeGlob(20, 20, nullptr, "inner"), BottomLeft(70, 50));
    PopUpOptions options;
    options.place = XY<int>(330, 600);
    options.opener = inner;
    ASSERT_TRUE(manager().openPopUp(makePopUp("own"), options));
    driver_.click(inner);
    EXPECT_EQ(chain().size(), 2U);
    driver_.clickAt({140, 620});
    EXPECT_EQ(chain().last(), first_);
}

TEST_F(PopUps, TheOpenersPressReachesItFirst) {
    openThree();
    driver_.moveTo({125, 710});
    log_.clear();
    driver_.clickAt({125, 710});
    EXPECT_EQ(takeLog(), (Lines{"opener down", "third poot", "second poot", "first poot", "opener up"}));
    // One that closes its pop-up itself, and one that opens another by the same press.
    ProbeGlob* popUp = open("menu", {130, 600});
    log_.clear();
    opener_->onReact = [&](Event const& event) {
        if (mouse_down_event(event)) delete std::exchange(popUp, nullptr);
        return true;
    };
    driver_.clickAt({125, 710});
    EXPECT_EQ(takeLog(), Lines{});
    open("old", {130, 600});
    log_.clear();
    opener_->onReact = [&](Event const& event) {
        if (mouse_down_event(event)) popUp = open("new", {130, 600});
        return true;
    };
    driver_.clickAt({125, 710});
    EXPECT_EQ(takeLog(), Lines{"old poot"});
    EXPECT_EQ(chain().last(), popUp);
}

TEST_F(PopUps, EscapeClosesTheLastUnlessAPopUpConsumesIt) {
    Lines offered;
    IdStamp const below = getEventInterceptStack().push(outside_, PopUpChain::lowestPriority);
    outside_->onIntercept = [&](Event const&) {
        offered.push_back("outside");
        return true;
    };
    RecordingParent* const other = openWindow(200, 100, {1000, 100});
    auto* const unasked = addTo(other, new ProbeGlob);
    unasked->onIntercept = [&](Event const&) { return offered.push_back("other window"), false; };
    getEventInterceptStack().push(unasked, 2000);
    activate(window_);
    openThree();
    for (ProbeGlob* popUp : {first_, second_, third_})
        popUp->onIntercept = [&offered, popUp, this](Event const& event) {
            if (isKeyPressEvent(event)) offered.push_back(popUp == first_ ? "first" : "later");
            return popUp == first_ && event.keyCode() == 'x';
        };
    driver_.key('x');
    EXPECT_EQ(offered, (Lines{"later", "later", "first"})) << "none of a window that is not active";
    driver_.key(Key::escape);
    EXPECT_EQ(takeLog(), Lines{"third poot"});
    EXPECT_EQ(chain().last(), second_);
    driver_.key(Key::escape);
    driver_.key(Key::escape);
    EXPECT_EQ(takeLog(), (Lines{"second poot", "first poot"}));
    offered.clear();
    driver_.key(Key::escape);
    EXPECT_EQ(offered.front(), "outside");
    getEventInterceptStack().pop(below);
}

TEST_F(PopUps, DeactivationAndChangesOfTheOwnersWindowCloseAll) {
    OffscreenBackend& screen = *host_->offscreen();
    std::vector<std::pair<char const*, std::function<void()>>> const causes{
        {"another program", [&] { screen.deactivateAll(); }},
        {"moved", [&] { window_->setScreenPos(XY<int>(window_->box().x1 + 5, 500)); }},
        {"moved by the person", [&] { nativeOf(window_)->moveTo(XY<int>(150, 510)); }},
        {"resized", [&] { driver_.resizeWindow(window_, XY<int>(450, 310)); }},
        {"hidden", [&] { window_->setVisible(false); }},
        {"another window of ours", [&] { openWindow(50, 50, XY<int>(1000, 0)); }},
        {"minimised",
         [&] { host_->loop().inject({.kind = Kind::windowHidden, .window = nativeOf(window_)->id()}); }},
    };
    for (auto const& [name, act] : causes) {
        window_->setVisible(true);
        activate(window_);
        openThree();
        act();
        driver_.settle();
        EXPECT_EQ(takeLog(), allClosed) << name;
    }
    openThree();
    destroy(window_);
    driver_.settle();
    EXPECT_EQ(takeLog(), allClosed) << "destroyed";
}

TEST_F(PopUps, OpenOnlyWhileTheApplicationIsActive) {
    expectDiagnostic("pop-up refused");
    deactivate();
    std::unique_ptr<ProbeGlob> popUp(makePopUp("menu"));
    EXPECT_FALSE(manager().openPopUp(popUp.get(), {}));
    EXPECT_FALSE(chain().isOpen());
    expectDiagnostic("window refused");
    EXPECT_FALSE(manager().openPopUp(opener_, {})) << "a child";
    activate(window_);
    EXPECT_FALSE(manager().openPopUp(window_, {})) << "it has a window";
    host_->offscreen()->refuseWindows(true);
    Diagnostics::setSink([](char const*) {});
    EXPECT_FALSE(manager().openPopUp(popUp.get(), {}));
    EXPECT_FALSE(chain().isOpen());
}

TEST_F(PopUps, APinnedOneHasLeftTheChain) {
    openThree();
    manager().pinPopUp(first_);
    EXPECT_FALSE(chain().isOpen());
    driver_.click(outside_);
    driver_.key(Key::escape);
    deactivate();
    for (Glob* popUp : {first_, second_, third_}) EXPECT_TRUE(is_good_glob_ptr(popUp));
    EXPECT_EQ(takeLog(), (Lines{"outside entered", "outside down", "outside up"}));
    destroy(window_);
    driver_.settle();
    EXPECT_FALSE(is_good_glob_ptr(first_)) << "it goes with the window to which it belongs";
}

TEST_F(PopUps, APinnedSubMenuOutlivesItsParent) {
    openThree();
    manager().pinPopUp(second_);
    driver_.click(outside_);
    driver_.settle();
    EXPECT_EQ(takeLog(), (Lines{"outside entered", "first poot"}));
    EXPECT_TRUE(is_good_glob_ptr(second_) && is_good_glob_ptr(third_));
}

TEST_F(PopUps, OneOpenedFromAnEarlierOneReplacesThoseBehindIt) {
    openThree();
    ProbeGlob* const other = open("other", {230, 500}, first_);
    EXPECT_EQ(takeLog(), (Lines{"third poot", "second poot"}));
    EXPECT_EQ(chain().parentOf(other), first_);
    // An opener inside a pop-up continues the chain without being told which.
    auto* const row = addTo(first_, new ProbeGlob(50, 20));
    ProbeGlob* const fromRow = makePopUp("from row");
    PopUpOptions options;
    options.opener = row;
    EXPECT_TRUE(manager().openPopUp(fromRow, options));
    EXPECT_EQ(takeLog(), Lines{"other poot"});
    EXPECT_EQ(chain().parentOf(fromRow), first_);
    open("new chain", {130, 500});
    EXPECT_EQ(takeLog(), (Lines{"from row poot", "first poot"}));
    EXPECT_EQ(chain().size(), 1u);
}

TEST_F(PopUps, APressCanBeDraggedFromTheOpenerOntoAPopUpAndLetGoThere) {
    pressOpener({120, 600});
    driver_.moveTo({150, 650});
    driver_.moveTo({152, 640});
    EXPECT_EQ(takeLog(), (Lines{"first drag", "opener left", "first drag"}));
    EXPECT_TRUE(first_->containsPointer());
    driver_.moveTo({150, 590});
    EXPECT_EQ(takeLog(), Lines{"first drag"}) << "its last, outside of its box";
    EXPECT_FALSE(first_->containsPointer());
    driver_.moveTo({150, 650});
    driver_.release();
    EXPECT_EQ(takeLog(), (Lines{"first drag", "opener lost", "first up"})) << "one choice";
    EXPECT_EQ(EventSystem::live().pointer.captureHolder(), nullptr);
}

TEST_F(PopUps, EscapeTakesBackAPressThatWasDraggedOntoAPopUp) {
    pressOpener({120, 600});
    driver_.moveTo({150, 650});
    log_.clear();
    driver_.key(Key::escape);
    driver_.moveTo({152, 640});
    driver_.release();
    EXPECT_EQ(takeLog(), Lines{"opener lost"}) << "nothing is chosen in it";
    driver_.moveTo({150, 650});
    EXPECT_TRUE(first_->containsPointer());
    delete first_;
}

TEST_F(PopUps, AWindowThatDiesUnderAHeldButtonLeavesThePointerFree) {
    for (bool const isSpent : {true, false}) {
        RecordingParent* const doomed = openWindow(100, 100, {1000, 100});
        activate(window_);
        if (isSpent) open("first", {130, 600});
        driver_.moveTo({1050, 150});
        driver_.press();
        delete doomed;
        driver_.settle();
        log_.clear();
        driver_.moveTo(outside_);
        driver_.press();
        EXPECT_EQ(takeLog(), (Lines{"outside entered", "outside down"})) << isSpent;
        driver_.release();
        driver_.moveTo({1050, 150});
    }
    delete window_;
    EXPECT_FALSE(glib_appHasFocus());
}

TEST_F(PopUps, OneMayBeOpenedOrPutIntoAWindowWhileItIsBeingOpened) {
    expectDiagnostic("window refused");
    for (bool const isChild : {false, true}) {
        first_ = open("first", {130, 600});
        auto* const next = makePopUp("next");
        first_->onMessage = [&](auto const&, Glob*) {
            if (isChild)
                addTo(window_, next);
            else
                EXPECT_TRUE(manager().openPopUp(next, {}));
            delete first_;
            return 1;
        };
        EXPECT_NE(manager().openPopUp(next, {}), isChild);
        driver_.settle();
        EXPECT_EQ(chain().size(), isChild ? 0u : 1u);
        EXPECT_EQ(manager().numWindows(), isChild ? 1u : 2u);
        delete next;
        driver_.settle();
        EXPECT_FALSE(chain().isOpen());
    }
}

TEST_F(PopUps, AClickWithATremblingHandChoosesNothingInAPopUpUnderIt) {
    pressOpener({100, 680});
    XY<int> const centre = opener_->screenBox().centre();
    driver_.moveTo(centre + XY<int>{1, 1});
    driver_.release();
    EXPECT_EQ(takeLog(), (Lines{"opener left", "opener up"}));
}

TEST_F(PopUps, ADragThatBeganElsewhereStaysWithItsHolder) {
    driver_.press(outside_);
    open("first", {130, 600});
    log_.clear();
    driver_.moveTo({150, 650});
    driver_.release();
    EXPECT_EQ(takeLog(), (Lines{"outside drag", "outside left", "outside up"}));
}

TEST_F(PopUps, TheDeathOfOneClosesThoseBehindIt) {
    openThree();
    delete first_;
    EXPECT_EQ(takeLog(), Lines{}) << "nobody is called while it dies";
    driver_.settle();
    EXPECT_EQ(takeLog(), (Lines{"third poot", "second poot"}));
    ProbeGlob* const deaf = open("deaf", {130, 600});
    deaf->onMessage = [](LightweightString<char> const&, Glob*) { return 0; };
    driver_.key(Key::escape);
    EXPECT_FALSE(is_good_glob_ptr(deaf)) << "one that does not handle \"poot\" is destroyed";
}

TEST_F(PopUps, TheStraightWayToASubMenuDisturbsNobodyOnIt) {
    auto* const menu = makePopUp("menu", {100, 200});
    menu->onReact = [&](Event const& event) {
        if (mouse_move_event(event)) log_.push_back("menu move");
        return true;
    };
    show(menu, {130, 500});
    ProbeGlob* const sub = open("sub", {230, 500}, menu);
    driver_.moveTo({150, 650});
    log_.clear();
    for (int i = 1; i <= 7; ++i) driver_.moveTo({150 + 10 * i, 650 - 12 * i});
    EXPECT_EQ(takeLog(), Lines{}) << "towards it, inside the triangle";
    EXPECT_TRUE(menu->containsPointer());
    driver_.moveTo({240, 560});
    EXPECT_TRUE(sub->containsPointer());
    EXPECT_FALSE(menu->containsPointer());
    EXPECT_EQ(takeLog(), Lines{});
    driver_.moveTo({150, 650});
    log_.clear();
    driver_.moveTo({150, 620});
    EXPECT_EQ(takeLog(), Lines{"menu move"})
        << "straight down brings it no nearer to the near edge's triangle";
    driver_.moveTo({170, 600});
    EXPECT_EQ(takeLog(), Lines{});
    driver_.advance(299);
    EXPECT_EQ(takeLog(), Lines{}) << "it rests on its way";
    driver_.advance(1);
    EXPECT_EQ(takeLog(), Lines{"menu move"});
    EXPECT_EQ(glib_getMousePos(), (XY<int>{170, 600}));
    for (int i = 1; i <= 5; ++i) {
        driver_.moveTo({170 + 2 * i, 600 - i});
        driver_.advance(70);
    }
    EXPECT_EQ(takeLog(), Lines{"menu move"}) << "nobody is kept waiting by a slow hand";
    driver_.moveTo({195, 590});
    driver_.moveTo({194, 590});
    EXPECT_EQ(takeLog(), Lines{"menu move"}) << "it turned round";
}

TEST_F(PopUps, TheirSurroundIsPaintedRoundThem) {
    ProbeGlob* const popUp = makePopUp("menu");
    popUp->setCol(Colour(1, 0, 0), false);
    popUp->addSurround(Surround({WidgetSurround::Style::line, 2}));
    popUp->addShadow(12, 0.5, Surround::allEdges & ~Surround::bottom);
    show(popUp, {130, 600});
    OffscreenWindow* const native = nativeOf(popUp);
    EXPECT_TRUE(native->isTranslucent());
    EXPECT_EQ(native->place(), (XY<int>{116, 598})) << "14 on the left, the frame alone below";
    EXPECT_EQ(native->size(), (XY<int>{128, 96}));
    EXPECT_EQ(popUp->screenBox(), IntBox(130, 600, 230, 680)) << "the pop-up itself is where it was put";
    EXPECT_EQ(driver_.pixel(popUp, {0, 0}), 0xFF0000u);
    EXPECT_EQ(driver_.pixel(popUp, {99, 79}), 0xFF0000u);
    std::uint32_t const line = popUp->getPalette().separator().getAsLong() & 0xFFFFFF;
    EXPECT_EQ(driver_.pixel(popUp, {-1, 40}), line);
    EXPECT_EQ(driver_.pixel(popUp, {50, -2}), line);
    std::uint32_t const shade = native->pixelAt({13 - 4, 20}) >> 24;
    EXPECT_GT(shade, 0u);
    EXPECT_LT(shade, 255u);
    EXPECT_EQ(native->pixelAt({0, 95}) >> 24, 0u) << "nothing in the corner";
    // What happens in the room round it is no input of the pop-up.
    driver_.clickAt({120, 640});
    EXPECT_EQ(takeLog(), Lines{"menu poot"});
}

TEST_F(PopUps, WithoutACompositorTheyHaveAnOpaqueEdge) {
    host_->offscreen()->setComposited(false);
    ProbeGlob* const popUp = makePopUp("menu");
    popUp->addShadow(12, 0.5, 13);
    show(popUp, {130, 600});
    OffscreenWindow* const native = nativeOf(popUp);
    EXPECT_FALSE(native->isTranslucent());
    EXPECT_EQ(native->size(), (XY<int>{102, 81})) << "no edge where no shadow was wanted";
    for (XY<int> const place : {XY<int>{0, 40}, {101, 40}, {50, 80}})
        EXPECT_EQ(native->pixelAt(place) >> 24, 255u) << place.x;
    popUp->removeSurround();
    popUp->resize(50, 40);
    driver_.settle();
    EXPECT_EQ(native->size(), (XY<int>{50, 40}));
    EXPECT_EQ(native->place(), (XY<int>{130, 600}));
    ProbeGlob* const atEdge = makePopUp("at edge");
    atEdge->addShadow(12, 0.5, 15);
    show(atEdge, {0, 600});
    EXPECT_EQ(nativeOf(atEdge)->place().x, 0) << "its edge lies on the screen, too";
    delete atEdge;
}

} // namespace
} // namespace wainscot
