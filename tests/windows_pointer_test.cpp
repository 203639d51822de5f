#include "tests/host_fixture.h"

#include "host/events/keybinding_manager.h"
#include "host/objects/drag_drop_item.h"
#include "host/services/clipboard.h"
#include "host/services/command_map.h"
#include "host/windows/drag_drop_manager.h"

namespace wainscot {
namespace {

/// Wants something of the pointer or the keyboard that plain objects do not.
class WishfulGlob : public ProbeGlob {
public:
    using ProbeGlob::ProbeGlob;

    MouseCursorID contextCursor(XY<int> const& place) const override {
        return place.x < width() / 2 ? leftCursor : rightCursor;
    }
    bool wantsFullMotion() const override { return fullMotion; }
    bool wantsUnboundedMotion() const override { return unbounded; }
    std::optional<IntBox> textCaret() const override { return caret; }

    MouseCursorID leftCursor = textCursor;
    MouseCursorID rightCursor = inheritCursor;
    bool fullMotion = false;
    bool unbounded = false;
    std::optional<IntBox> caret;
};

class Pointer : public OneWindowTest {
protected:
    OffscreenBackend& screen() { return *host_->offscreen(); }
    template <class T>
    T* add(Glob* parent, T* child, int x, int y) {
        addTo(parent, child, BottomLeft(x, y));
        driver_.settle();
        return child;
    }
};

TEST_F(Pointer, TheShapeIsThatOfTheInnermostObjectThatHasAWish) {
    auto* const outer = add(root_, new WishfulGlob(100, 100), 10, 10);
    auto* const inner = add(outer, new WishfulGlob(40, 40), 40, 10);
    outer->rightCursor = crossCursor;
    moveIn(inner, 5, 5);
    EXPECT_EQ(screen().cursor(), textCursor);
    moveIn(inner, 35, 5);
    EXPECT_EQ(screen().cursor(), crossCursor) << "left to the parent";
    delete inner;
    driver_.settle();
    outer->rightCursor = inheritCursor;
    moveIn(outer, 70, 70);
    EXPECT_EQ(screen().cursor(), arrowCursor);
    setDefaultMouseCursor(waitCursor);
    driver_.settle();
    EXPECT_EQ(screen().cursor(), waitCursor) << "at once, without a move";
    setDefaultMouseCursor(inheritCursor);
    driver_.settle();
    EXPECT_EQ(screen().cursor(), arrowCursor);
}

TEST_F(Pointer, TheShapeStaysThatOfWhoeverHoldsThePointer) {
    auto* const held = add(root_, new WishfulGlob(60, 40), 10, 10);
    auto* const other = add(root_, new WishfulGlob(60, 40), 200, 10);
    held->leftCursor = held->rightCursor = sizeHorizontalCursor;
    held->onReact = [](Event const& event) { return mouse_event(event); };
    driver_.press(held);
    moveIn(other, 10, 10);
    EXPECT_EQ(screen().cursor(), sizeHorizontalCursor);
    driver_.release();
    EXPECT_EQ(screen().cursor(), textCursor);
}

TEST_F(Pointer, FullAndUnboundedMotionHoldFromPressToReleaseOrDeath) {
    for (bool dies : {false, true}) {
        auto* const probe = add(root_, new WishfulGlob(60, 40), 10, 10);
        probe->onReact = [](Event const& event) { return mouse_event(event); };
        probe->fullMotion = probe->unbounded = true;
        driver_.moveTo(probe);
        XY<int> const pressed = glib_getMousePos();
        EXPECT_FALSE(screen().fullMotion());
        driver_.press();
        EXPECT_TRUE(screen().fullMotion() && screen().unboundedMotion());
        driver_.moveTo({5000, -5000});
        if (dies)
            delete probe;
        else
            driver_.release();
        driver_.settle();
        EXPECT_FALSE(screen().fullMotion() || screen().unboundedMotion());
        EXPECT_EQ(glib_getMousePos(), pressed) << "the pointer is back where it was locked";
        if (dies) driver_.release();
        if (!dies) delete probe;
    }
}

TEST_F(Pointer, EscapeTakesBackWhatThePressBegan) {
    auto* const probe = add(root_, new ProbeGlob(60, 40, &log_), 10, 10);
    probe->noteMouse();
    probe->onPressLost = [probe] { probe->note("lost"); };
    moveIn(probe, 5, 6);
    driver_.press();
    moveIn(probe, 40, 20);
    log_.clear();
    driver_.key(Key::escape);
    EXPECT_THAT(log_, ElementsAre("lost")) << "and nothing is chosen";
    driver_.release();
    EXPECT_THAT(log_, ElementsAre("lost")) << "the real release is nobody's";
    // Without a held button Escape is a key like any other.
    log_.clear();
    int escapes = 0;
    probe->onReact = [&](Event const& event) { return event.keyCode() == Key::escape && ++escapes > 0; };
    ASSERT_TRUE(probe->claimKbdFocus());
    driver_.key(Key::escape);
    EXPECT_EQ(escapes, 2) << "press and release";
}

TEST_F(Pointer, UnboundedMotionEntersNothingOnItsWay) {
    auto* const probe = add(root_, new WishfulGlob(60, 40, &log_, "probe"), 10, 10);
    add(root_, new ProbeGlob(60, 40, &log_, "other"), 200, 10);
    probe->onReact = [](Event const& event) { return mouse_event(event); };
    probe->unbounded = true;
    driver_.press(probe);
    driver_.moveTo(root_->globXYToScreenXY({220, 20}));
    log_.clear();
    driver_.release();
    EXPECT_TRUE(probe->containsPointer());
    EXPECT_THAT(log_, testing::Not(testing::Contains("other entered")));
}

TEST_F(Pointer, EscapePutsBackWhatWasMoved) {
    auto* const moving = add(root_, new Glob(60, 40), 100, 10);
    moving->setMovable(true);
    driver_.press(moving);
    moving->startMoving();
    driver_.moveTo(root_->globXYToScreenXY({300, 200}));
    EXPECT_NE(moving->box().bottomLeft(), (XY<int>{100, 10}));
    driver_.key(Key::escape);
    EXPECT_EQ(moving->box().bottomLeft(), (XY<int>{100, 10}));
    EXPECT_FALSE(moving->isMoving());
    driver_.release();
}

TEST_F(Pointer, TransportKeysComeBeforeTheFocusButNotBeforeText) {
    auto* const probe = add(root_, new WishfulGlob(60, 40), 10, 10);
    int keys = 0;
    probe->onReact = [&](Event const& event) { return isKeyPressEvent(event) && ++keys > 0; };
    ASSERT_TRUE(probe->claimKbdFocus());
    int plays = 0;
    CommandRegistrar const play(
        "play", L"Play", [&](Cmd::Context const&) { ++plays; }, CommandRegistrar::Kind::transport);
    KeybindingManager::instance().assignKey(Key::space, "play");
    driver_.key(Key::space);
    EXPECT_EQ(plays, 1);
    EXPECT_EQ(keys, 0);
    probe->caret = IntBox(0, 0, 1, 10);
    driver_.key(Key::space);
    EXPECT_EQ(plays, 1) << "text is being entered";
    EXPECT_EQ(keys, 1);
}

TEST_F(Pointer, UnwantedClipboardKeysBecomeMessagesToTheFocusAndItsAncestors) {
    auto* const table = add(root_, new ProbeGlob(200, 100, &log_, "table"), 10, 10);
    auto* const cell = add(table, new ProbeGlob(50, 20, &log_, "cell"), 0, 0);
    cell->onMessage = [](auto const&, Glob*) { return 0; };
    ASSERT_TRUE(cell->claimKbdFocus());
    log_.clear();
    driver_.key(Key::ctrl | 'C');
    EXPECT_THAT(takeLog(), ElementsAre("cell message WindowsClipboard::copyText",
                                       "table message WindowsClipboard::copyText"));
    cell->onReact = [](Event const& event) { return isKeyPressEvent(event); };
    driver_.key(Key::ctrl | 'V');
    EXPECT_THAT(log_, IsEmpty()) << "who takes the key itself gets no message";
}

TEST_F(Pointer, MouseListenersHearOfEverythingFirstAndConsumeNothing) {
    auto* const probe = add(root_, new ProbeGlob(60, 40), 10, 10);
    probe->onReact = [&](Event const& event) {
        if (mouse_down_event(event)) log_.push_back("widget");
        return mouse_event(event);
    };
    driver_.moveTo(probe);
    Glib::MouseListener listener = Glib::addMouseListener([&](Event const& event) {
        log_.push_back(mouse_down_event(event) ? "down" : mouse_up_event(event) ? "up" : "other");
    });
    driver_.press();
    driver_.release();
    driver_.wheelAt(glib_getMousePos(), 2);
    EXPECT_THAT(log_, ElementsAre("down", "widget", "up", "other"));
    Glib::MouseListener const killer = Glib::addMouseListener([&](Event const&) {
        listener.end();
        destroy(probe);
    });
    driver_.press();
    driver_.release();
    EXPECT_EQ(log_.size(), 5u) << "one ends the other";
    EXPECT_EQ(ProbeGlob::alive, 0);
}

TEST_F(Pointer, TheClipboardKeepsAnyText) {
    LightweightString<wchar_t> const text = L"a\r\nb\t\u05D0\U0001F600\u0301";
    EXPECT_TRUE(WindowsClipboard::addText(text));
    EXPECT_TRUE(WindowsClipboard::addSelection(L"other"));
    EXPECT_EQ(WindowsClipboard::getText(), text);
    EXPECT_EQ(WindowsClipboard::getSelection(), LightweightString<wchar_t>(L"other"));
    EXPECT_TRUE(WindowsClipboard::addText(LightweightString<wchar_t>(L"a\0b", 3)));
    EXPECT_EQ(WindowsClipboard::getText(), LightweightString<wchar_t>(L"a\uFFFDb"));
    EXPECT_TRUE(WindowsClipboard::addText(L""));
    EXPECT_TRUE(WindowsClipboard::getText().empty());
}

/// Takes items of one type on its right half.
class DropGlob : public ProbeGlob {
public:
    using ProbeGlob::ProbeGlob;

    bool canAccept(DragDropItem const& item, XY<int> const& place, eDropReason) override {
        if (onAsked) onAsked();
        return item.type() == LightweightString<char>("clip") && place.x >= width() / 2;
    }
    bool acceptDrop(DragDropItem& item, XY<int> const& place, eDropReason) override {
        note("drop " + std::string(item.type().c_str()) + " " + std::to_string(place.x));
        return takes;
    }
    MouseCursorID getDropCursor(DragDropItem const&, XY<int> const&) const override { return dropCursor; }
    void handleDragHover(DragDropItem const&, XY<int> const&, bool inside) override {
        note(inside ? "hover" : "out");
    }
    void handleMouseContainment(bool) override {}
    void handleDragEnd(DragDropItem&, bool taken) override { note(taken ? "taken" : "not taken"); }

    bool takes = true;
    MouseCursorID dropCursor = inheritCursor;
    std::function<void()> onAsked;
};

class Dragging : public Pointer {
protected:
    /// Drags an item out of the source. Gives the window of both, which is new.
    RecordingParent* open() {
        RecordingParent* const window = openWindow();
        source_ = add(window, new DropGlob(60, 40, &log_, "source"), 10, 10);
        target_ = add(window, new DropGlob(100, 40, &log_, "target"), 200, 10);
        source_->onReact = [this](Event const& event) {
            bool const begins = mouse_move_event(event) && event.heldButtons() != 0;
            if (begins)
                DragDropManager::instance().beginDrag(
                    Qv::Ptr<DragDropItem>(new DragDropItem("clip", L"Clip")), source_);
            return mouse_event(event);
        };
        driver_.press(source_);
        moveIn(source_, 35, 25);
        log_.clear();
        return window;
    }
    bool isDragging() const { return DragDropManager::instance().isDragging(); }

    DropGlob* source_ = nullptr;
    DropGlob* target_ = nullptr;
};

TEST_F(Dragging, TheItemGoesFromHoverToDropAndTheSourceHearsOfIt) {
    open();
    EXPECT_TRUE(isDragging());
    EXPECT_EQ(DragDropManager::instance().getCurrentItem()->label(), LightweightString<wchar_t>(L"Clip"));
    EXPECT_EQ(DragDropManager::instance().getDestinationUnder(target_->globXYToScreenXY({90, 5})), target_);
    EXPECT_EQ(DragDropManager::instance().getDestinationUnder(target_->globXYToScreenXY({9, 5})), nullptr);
    EXPECT_EQ(screen().cursor(), forbiddenCursor);
    moveIn(target_, 10, 10);
    EXPECT_THAT(log_, IsEmpty()) << "not wanted on the left half";
    moveIn(target_, 60, 10);
    EXPECT_EQ(screen().cursor(), handCursor);
    target_->dropCursor = crossCursor;
    moveIn(target_, 70, 10);
    EXPECT_EQ(screen().cursor(), crossCursor);
    driver_.release();
    EXPECT_THAT(log_, ElementsAre("target hover", "target hover", "target out", "target drop clip 70",
                                  "source taken"));
    EXPECT_FALSE(isDragging());
    EXPECT_EQ(screen().cursor(), arrowCursor);
}

TEST_F(Dragging, WhatIsNotTakenGoesBackAndTheReleaseAfterItDropsNothing) {
    std::pair<std::function<void()>, Lines> const ends[] = {
        {[&] { deactivate(); }, {"target out", "source not taken"}},
        {[&] { driver_.key(Key::escape); }, {"target out", "source not taken"}},
        {[&] { driver_.release(); }, {"target out", "target drop clip 60", "source not taken"}},
    };
    for (auto const& [end, told] : ends) {
        open();
        target_->takes = false;
        moveIn(target_, 60, 10);
        log_.clear();
        end();
        EXPECT_EQ(takeLog(), told);
        driver_.release();
        EXPECT_THAT(log_, IsEmpty());
    }
}

TEST_F(Dragging, OnlyOneAtATimeAndOnlyWhileAButtonIsHeld) {
    open();
    EXPECT_FALSE(DragDropManager::instance().beginDrag(Qv::Ptr<DragDropItem>(new DragDropItem("x")), nullptr))
        << "one at a time";
    DragDropManager::instance().cancel();
    driver_.release();
    EXPECT_FALSE(DragDropManager::instance().beginDrag(Qv::Ptr<DragDropItem>(new DragDropItem("x")), nullptr))
        << "nothing is held";
}

TEST_F(Dragging, TheMoveInWhichItEndsGoesNowhereElse) {
    open();
    target_->onAsked = [this] {
        DragDropManager::instance().cancel();
        EventSystem::live().pointer.capture(target_);
    };
    for (DropGlob* const glob : {source_, target_}) glob->noteMouse();
    moveIn(target_, 60, 10);
    EXPECT_THAT(takeLog(), ElementsAre("source not taken"));
    EXPECT_FALSE(isDragging());
    driver_.release();
}

TEST_F(Dragging, SomethingModalKeepsItemsFromWhatItBlocks) {
    RecordingParent* const window = open();
    auto* const strip = add(window, new DropGlob(60, 40, &log_, "strip"), 10, 100);
    ASSERT_TRUE(host_->globManager().addModalGlob(strip, window));
    driver_.settle();
    moveIn(target_, 60, 10);
    EXPECT_EQ(screen().cursor(), forbiddenCursor);
    driver_.release();
    EXPECT_THAT(log_, ElementsAre("source not taken"));
    EXPECT_FALSE(isDragging());
    EXPECT_FALSE(DragDropManager::instance().dropFiles({L"/a"}, target_->globXYToScreenXY({60, 10})));
}

TEST_F(Dragging, FilesFromOutsideArriveAsAnItem) {
    class FileTaker : public Glob {
    public:
        using Glob::Glob;
        bool canAccept(DragDropItem const& item, XY<int> const&, eDropReason) override {
            return item.type() == DroppedFiles::filesType;
        }
        bool acceptDrop(DragDropItem& item, XY<int> const&, eDropReason) override {
            paths = dynamic_cast<DroppedFiles&>(item).paths();
            return true;
        }
        void handleDragHover(DragDropItem const&, XY<int> const&, bool inside) override { marked = inside; }
        std::vector<LightweightString<wchar_t>> paths;
        bool marked = false;
    };
    auto* const taker = add(root_, new FileTaker(100, 100), 0, 0);
    InputEvent event;
    event.window = nativeOf(root_)->id();
    event.place = taker->globXYToScreenXY({5, 5});
    event.kind = InputEvent::Kind::filesDragged;
    for (bool const over : {true, false, true}) {
        event.window = over ? nativeOf(root_)->id() : 0;
        inject(event);
        DragDropManager::instance().cancel();
        EXPECT_EQ(taker->marked, over) << "it is not ours to cancel";
        EXPECT_FALSE(isDragging());
    }
    event.kind = InputEvent::Kind::filesDropped;
    event.files = {L"/a/b.mov", L"/c d"};
    inject(event);
    EXPECT_THAT(taker->paths, ElementsAre(L"/a/b.mov", L"/c d"));
    EXPECT_FALSE(taker->marked);
    event.place = {3000, 3000};
    inject(event);
}

} // namespace
} // namespace wainscot
