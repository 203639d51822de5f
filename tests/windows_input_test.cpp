#include "tests/host_fixture.h"

#include "host/events/key_names.h"
#include "host/events/keybinding_manager.h"
#include "host/messages/notify_msg.h"
#include "host/services/command_map.h"

#include <gmock/gmock.h>

namespace wainscot {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class Input : public HostTest {
protected:
    using Log = std::vector<std::string>;

    /// Writes each mouse event with its place in the widget.
    static void recordMouse(ProbeGlob* probe, bool consume = true) {
        probe->onReact = [probe, consume](Event const& event) {
            if (!mouse_event(event)) return false;
            XY<int> const at = eventXYToGlobXY(event, *probe);
            char const* what = mouse_down_event(event)    ? "down"
                               : mouse_up_event(event)    ? "up"
                               : mouse_wheel_event(event) ? "wheel"
                                                          : "move";
            probe->note(std::string(what) + " " + std::to_string(at.x) + "," + std::to_string(at.y));
            return consume;
        };
    }
};

TEST_F(Input, TheReleaseGoesToThePressedWidgetWhereverThePointerIs) {
    Log log;
    RecordingParent* const root = openWindow();
    auto* const probe = new ProbeGlob(60, 40, &log, "a");
    auto* const other = new ProbeGlob(60, 40, &log, "b");
    root->addChild(probe, BottomLeft(10, 10));
    root->addChild(other, BottomLeft(100, 10));
    driver_.moveTo({0, 0});
    recordMouse(probe);
    recordMouse(other);
    driver_.moveTo({115, 115});
    driver_.press();
    driver_.moveTo({230, 130});
    driver_.moveTo({-50, 90});
    driver_.release();
    EXPECT_THAT(log, ElementsAre("a entered", "a move 5,5", "a down 5,5", "a move 120,20", "a left",
                                 "a move -160,-20", "a up -160,-20"));
    log.clear();
    driver_.moveTo({230, 130});
    EXPECT_THAT(log, ElementsAre("b entered", "b move 30,20")) << "free again after the release";
}

TEST_F(Input, CaptureEndsWithTheDeathOrHidingOfItsHolderAndNobodyElseGetsTheRelease) {
    Log log;
    RecordingParent* const root = openWindow();
    auto* const below = new ProbeGlob(300, 200, &log, "below");
    root->addChild(below);
    recordMouse(below);
    for (bool hide : {true, false}) {
        auto* const probe = new ProbeGlob(60, 40, &log, "a");
        root->addChild(probe, BottomLeft(10, 10));
        recordMouse(probe);
        driver_.press(probe);
        log.clear();
        if (hide)
            probe->setVisible(false);
        else
            delete probe;
        EXPECT_EQ(EventSystem::live().pointer.captureHolder(), nullptr);
        driver_.moveTo({150, 150});
        driver_.release();
        EXPECT_THAT(log, testing::Not(testing::Contains(testing::HasSubstr("up"))));
        EXPECT_THAT(log, testing::Not(testing::Contains(testing::HasSubstr("move"))));
        if (hide) delete probe;
        driver_.moveTo({300, 250});
    }
}

TEST_F(Input, UnconsumedInputGoesUpAndTheConsumerIsCaptured) {
    Log log;
    RecordingParent* const root = openWindow();
    auto* const panel = new ProbeGlob(200, 150, &log, "panel");
    auto* const label = new ProbeGlob(50, 50, &log, "label");
    root->addChild(panel);
    panel->addChild(label);
    driver_.moveTo({0, 0});
    recordMouse(panel);
    recordMouse(label, false);
    driver_.press(label);
    EXPECT_TRUE(EventSystem::live().pointer.isCapturedBy(panel));
    delete label;
    driver_.release();
    EXPECT_THAT(log, testing::Contains("label down 25,25"));
    EXPECT_EQ(log.back(), "panel up 25,25") << "the panel hears the release although the label has gone";
}

TEST_F(Input, ContainmentIsToldFromTheOutsideInAndFollowsTheTree) {
    Log log;
    RecordingParent* const root = openWindow();
    auto* const outer = new ProbeGlob(200, 150, &log, "outer");
    auto* const inner = new ProbeGlob(50, 50, &log, "inner");
    root->addChild(outer, BottomLeft(10, 10));
    outer->addChild(inner, BottomLeft(10, 10));
    driver_.moveTo({130, 130});
    EXPECT_THAT(log, ElementsAre("outer entered", "inner entered"));
    log.clear();
    driver_.moveTo({250, 200});
    EXPECT_THAT(log, ElementsAre("inner left"));
    EXPECT_TRUE(outer->containsPointer());
    log.clear();
    outer->setWidgetPos(inner, {120, 80});
    driver_.settle();
    EXPECT_THAT(log, ElementsAre("inner entered")) << "the widget came to the pointer";
    log.clear();
    InputEvent gone;
    gone.kind = InputEvent::Kind::pointerLeft;
    host_->loop().inject(gone);
    driver_.settle();
    EXPECT_THAT(log, ElementsAre("inner left", "outer left"));
}

TEST_F(Input, HiddenWidgetsGetNothingAndInactiveOnesThePointerOnly) {
    Log log;
    RecordingParent* const root = openWindow();
    auto* const hidden = new ProbeGlob(60, 40, &log, "hidden");
    auto* const inactive = new ProbeGlob(60, 40, &log, "inactive");
    root->addChild(hidden, BottomLeft(10, 10));
    root->addChild(inactive, BottomLeft(100, 10));
    driver_.moveTo({0, 0});
    hidden->setVisible(false);
    inactive->setActive(false);
    recordMouse(hidden);
    recordMouse(inactive);
    driver_.clickAt({120, 120});
    EXPECT_THAT(log, IsEmpty());
    EXPECT_FALSE(driver_.click(hidden));
    driver_.click(inactive);
    EXPECT_THAT(log, testing::Contains("inactive down 30,20"));
    expectDiagnostic("keyboard focus refused");
    EXPECT_FALSE(set_kbd_focus(hidden));
    EXPECT_FALSE(set_kbd_focus(inactive));
    Event press(EventKind::leftPress, {120, 120}, hidden);
    log.clear();
    event_send(&press);
    driver_.settle();
    EXPECT_THAT(log, IsEmpty()) << "posted input for the unshown is dropped";
}

TEST_F(Input, AWheelGestureStaysWhereItBegan) {
    Log log;
    RecordingParent* const root = openWindow();
    auto* const first = new ProbeGlob(60, 40, &log, "first");
    auto* const second = new ProbeGlob(60, 40, &log, "second");
    root->addChild(first, BottomLeft(0, 0));
    root->addChild(second, BottomLeft(0, 100));
    driver_.moveTo({300, 300});
    int notches = 0;
    std::vector<ProbeGlob*> wheeled;
    for (ProbeGlob* probe : {first, second}) {
        probe->onReact = [&, probe](Event const& event) {
            if (!mouse_wheel_event(event)) return false;
            wheeled.push_back(probe);
            notches = event.amount();
            return true;
        };
    }
    XY<int> const place{120, 120};
    driver_.wheelAt(place, 1);
    root->setWidgetPos(first, {200, 0});
    root->setWidgetPos(second, {0, 0});
    driver_.wheelAt(place, -250);
    driver_.wheelAt({place.x + 8, place.y}, 1);
    EXPECT_THAT(wheeled, ElementsAre(first, first, first));
    wheeled.clear();
    virtualClock().advance(499);
    driver_.wheelAt(place, 2);
    virtualClock().advance(501);
    driver_.wheelAt(place, -5000);
    EXPECT_THAT(wheeled, ElementsAre(first, second));
    EXPECT_EQ(notches, -100) << "a broken device is bounded";
    wheeled.clear();
    root->setWidgetPos(first, {0, 0});
    root->setWidgetPos(second, {200, 0});
    driver_.wheelAt({place.x + 20, place.y}, 1);
    EXPECT_THAT(wheeled, ElementsAre(first)) << "moving the pointer ends it";
}

TEST_F(Input, ClicksChordsAndModifiersAreTold) {
    RecordingParent* const root = openWindow();
    auto* const probe = new ProbeGlob;
    root->addChild(probe);
    bool doubled = false, chord = false, plain = false, late = false;
    probe->onReact = [&](Event const& event) {
        if (!mouse_event(event)) return false;
        doubled = mouse_double_click_event(event);
        chord = mouse_chord_event(event);
        late = eventWasChordEvent(event);
        plain = isPlainEvent(event);
        EXPECT_EQ(currentModifiers(), event.modifiers());
        return true;
    };
    driver_.moveTo(probe);
    driver_.press();
    EXPECT_TRUE(plain);
    driver_.release();
    driver_.press(InputEvent::Button::left, 2);
    EXPECT_TRUE(doubled);
    driver_.press(InputEvent::Button::right);
    EXPECT_TRUE(chord);
    driver_.release(InputEvent::Button::right);
    EXPECT_FALSE(chord);
    EXPECT_TRUE(late);
    driver_.release();
    EXPECT_TRUE(late);
    driver_.holdModifiers(Key::shift);
    driver_.press();
    EXPECT_FALSE(plain);
    EXPECT_FALSE(late);
    driver_.release();
    driver_.holdModifiers(0);
    EXPECT_EQ(currentModifiers(), 0u);
}

TEST_F(Input, PostedEventsKeepTheirNumbers) {
    Event const press(EventKind::leftPress, XY<int>());
    EXPECT_EQ(press.kind(), 290);
    EXPECT_TRUE(mouse_down_event(press) && mouse_left_event(press) && !mouse_up_event(press));
    Event const release(EventKind::leftRelease, XY<int>());
    EXPECT_EQ(release.kind(), 289);
    EXPECT_TRUE(mouse_up_event(release) && !mouse_down_event(release));
    Event const message(EventKind::message);
    EXPECT_EQ(message.kind(), 0x4001);
    EXPECT_TRUE(isMessageEvent(message) && !mouse_up_event(message) && !mouse_event(message));
    EXPECT_EQ(EventKind::keyPress, 512);
    EXPECT_EQ(EventKind::keyRelease, 1024);
    EXPECT_EQ(EventKind::timer, 4096);
}

// Keys and focus

TEST_F(Input, KeysGoToTheInterceptStackThenToTheFocusThenUp) {
    Log log;
    RecordingParent* const root = openWindow();
    auto* const panel = new ProbeGlob(200, 150, &log, "panel");
    auto* const field = new ProbeGlob(50, 50, &log, "field");
    auto* const high = new ProbeGlob(1, 1, &log, "high");
    auto* const low = new ProbeGlob(1, 1, &log, "low");
    root->addChild(panel);
    for (ProbeGlob* glob : {field, high, low}) panel->addChild(glob);
    auto const onKey = [](ProbeGlob* probe, bool consume) {
        probe->onReact = [probe, consume](Event const& event) {
            if (!isKeyPressEvent(event)) return false;
            probe->note(event.wasOffered() ? "key offered" : "key");
            return consume;
        };
    };
    onKey(field, false);
    onKey(panel, true);
    bool highConsumes = false;
    high->onIntercept = [&](Event const& event) {
        if (isKeyPressEvent(event)) high->note("asked");
        return highConsumes;
    };
    low->onIntercept = [&](Event const& event) {
        if (isKeyPressEvent(event)) low->note("asked");
        return false;
    };
    IdStamp const lowEntry = getEventInterceptStack().push(low, 100);
    getEventInterceptStack().push(high, 1536);
    set_kbd_focus(field);
    log.clear();
    driver_.key('A');
    EXPECT_THAT(log, ElementsAre("high asked", "low asked", "field key offered", "panel key offered"));
    log.clear();
    highConsumes = true;
    driver_.key('A');
    EXPECT_THAT(log, ElementsAre("high asked"));
    log.clear();
    highConsumes = false;
    EXPECT_TRUE(getEventInterceptStack().pop(lowEntry));
    EXPECT_FALSE(getEventInterceptStack().pop(lowEntry));
    delete high;
    driver_.key('A');
    EXPECT_THAT(log, ElementsAre("field key offered", "panel key offered"));
}

TEST_F(Input, EachWindowKeepsItsFocus) {
    Log log;
    RecordingParent* const left = openWindow(200, 200, {0, 0});
    auto* const inLeft = new ProbeGlob(50, 50, &log, "left");
    left->addChild(inLeft);
    EXPECT_EQ(get_kbd_focus(), left) << "a new window's holder is its root";
    EXPECT_TRUE(inLeft->claimKbdFocus());
    RecordingParent* const right = openWindow(200, 200, {300, 0});
    auto* const inRight = new ProbeGlob(50, 50, &log, "right");
    right->addChild(inRight);
    EXPECT_EQ(get_kbd_focus(), right);
    log.clear();
    EXPECT_TRUE(set_kbd_focus(inRight));
    EXPECT_THAT(log, ElementsAre("right gained"));
    log.clear();
    host_->offscreen()->activate(nativeOf(left)->id());
    driver_.settle();
    EXPECT_EQ(get_kbd_focus(), inLeft);
    EXPECT_THAT(log, IsEmpty()) << "switching windows tells nobody";
    int keys = 0;
    inLeft->onReact = [&](Event const& event) { return isKeyPressEvent(event) && ++keys > 0; };
    inRight->onIntercept = [&](Event const&) { return true; };
    getEventInterceptStack().push(inRight, 1536);
    driver_.key('A');
    EXPECT_EQ(keys, 1) << "entries of another window are not asked";
    auto* const second = new ProbeGlob(50, 50, &log, "second");
    right->addChild(second);
    EXPECT_TRUE(set_kbd_focus(second));
    EXPECT_THAT(log, ElementsAre("right lost", "second gained"))
        << "told rightly in the window that is not active";
    EXPECT_EQ(get_kbd_focus(), inLeft);
    host_->offscreen()->deactivateAll();
    driver_.settle();
    EXPECT_FALSE(glib_appHasFocus());
    EXPECT_EQ(get_kbd_focus(), inLeft) << "losing activation is not losing the focus";
    delete left;
    host_->offscreen()->activate(nativeOf(right)->id());
    driver_.settle();
    EXPECT_TRUE(glib_appHasFocus());
    EXPECT_EQ(get_kbd_focus(), second);
}

TEST_F(Input, TheFocusLeavesWhatDiesHidesOrIsDisabled) {
    Log log;
    RecordingParent* const root = openWindow();
    auto* const panel = new ProbeGlob(200, 150, &log, "panel");
    auto* const field = new ProbeGlob(50, 50, &log, "field");
    root->addChild(panel);
    panel->addChild(field);
    set_kbd_focus(field);
    log.clear();
    panel->setVisible(false);
    EXPECT_EQ(get_kbd_focus(), root);
    EXPECT_THAT(log, IsEmpty()) << "the hidden are not told";
    panel->setVisible(true);
    set_kbd_focus(field);
    log.clear();
    field->setActive(false);
    EXPECT_EQ(get_kbd_focus(), panel) << "so that Tab goes on from there";
    field->setActive(true);
    set_kbd_focus(field);
    std::unique_ptr<Glob> const taken = root->takeWidget(panel);
    EXPECT_EQ(get_kbd_focus(), root);
    root->addChild(taken.get());
    set_kbd_focus(field);
    delete field;
    EXPECT_EQ(get_kbd_focus(), panel);
    const_cast<std::unique_ptr<Glob>&>(taken).release();
}

TEST_F(Input, NestedChangesOfTheFocusAreBoundedAndTheLastOneHolds) {
    expectDiagnostic("keyboard focus refused");
    RecordingParent* const root = openWindow();
    auto* const a = new ProbeGlob;
    auto* const b = new ProbeGlob;
    auto* const c = new ProbeGlob;
    for (ProbeGlob* glob : {a, b, c}) root->addChild(glob);
    set_kbd_focus(a);
    int told = 0;
    a->onFocus = [&] { set_kbd_focus(c); };
    b->onFocus = [&] { ++told; };
    set_kbd_focus(b);
    EXPECT_EQ(get_kbd_focus(), c);
    EXPECT_EQ(told, 1) << "told by the change to c only: it never came to hold it for good";
    a->onFocus = [&] { set_kbd_focus(b); };
    b->onFocus = [&] { set_kbd_focus(a); };
    set_kbd_focus(a);
    EXPECT_GE(Diagnostics::countOf("keyboard focus refused"), 1u);
    a->onFocus = b->onFocus = nullptr;
}

TEST_F(Input, HeldKeysRepeatButReturnAndSpaceOnlyWhereWanted) {
    struct List : ProbeGlob {
        bool repeatsReturnAndSpace() const override { return true; }
    };
    RecordingParent* const root = openWindow();
    for (bool wanted : {false, true}) {
        ProbeGlob* const probe = wanted ? new List : new ProbeGlob;
        root->addChild(probe);
        int presses = 0, repeats = 0;
        probe->onReact = [&](Event const& event) {
            if (!isKeyPressEvent(event)) return false;
            ++presses;
            repeats += event.isRepeat();
            return true;
        };
        set_kbd_focus(probe);
        for (std::uint32_t code : {Key::down, Key::space, Key::enter}) {
            driver_.keyDown(code);
            driver_.keyDown(code, true);
            driver_.keyUp(code);
        }
        EXPECT_EQ(presses, wanted ? 6 : 4);
        EXPECT_EQ(repeats, wanted ? 3 : 1);
        delete probe;
    }
}

TEST_F(Input, KeysThatNobodyWantsRunTheirCommands) {
    RecordingParent* const root = openWindow();
    auto* const probe = new ProbeGlob;
    root->addChild(probe);
    set_kbd_focus(probe);
    int runs = 0;
    CommandRegistrar const command("test.run", UIString(L"Run"), [&](Cmd::Context const&) { ++runs; });
    KeybindingManager::instance().setDefaultKeys("test.run", {Key::ctrl | 'R'});
    KeybindingManager::instance().setDefaultKeys("test.unknown", {Key::ctrl | 'U'});
    driver_.key(Key::ctrl | 'R');
    driver_.key(Key::ctrl | 'U');
    EXPECT_EQ(runs, 1) << "at the press only";
    probe->onReact = [](Event const& event) { return isKeyPressEvent(event); };
    driver_.key(Key::ctrl | 'R');
    EXPECT_EQ(runs, 1) << "a widget wanted it";
}

TEST_F(Input, TextThatNoKeyCodeHoldsComesAsComposedText) {
    RecordingParent* const root = openWindow();
    auto* const probe = new ProbeGlob;
    root->addChild(probe);
    LightweightString<wchar_t> text;
    probe->onReact = [&](Event const& event) {
        if (isKeyPressEvent(event)) text += static_cast<wchar_t>(event.keyCode());
        if (event.message() == compoundTextInputMsg)
            text += LightweightString<wchar_t>(L"[") + *unwrapData<LightweightString<wchar_t>>(event.data()) +
                    L"]";
        return true;
    };
    set_kbd_focus(probe);
    driver_.type(L"a\u00e9\u4e2d\U00100041");
    EXPECT_EQ(text, L"a\u00e9\u4e2d[\U00100041]");
}

TEST(KeyNames, GoBothWays) {
    std::vector<std::pair<std::uint32_t, char const*>> const names = {
        {Key::shiftTab, "Shift+Tab"},
        {Key::ctrl | 'A', "Ctrl+A"},
        {Key::ctrl | Key::alt | Key::del, "Ctrl+Alt+Delete"},
        {Key::f1 + 4, "F5"},
        {Key::f12 | Key::meta, "Meta+F12"},
        {'+', "+"},
        {Key::ctrl | '+', "Ctrl++"},
        {0xE9, "\xC3\xA9"},
        {Key::pageUp, "Page Up"},
        {Key::space, "Space"}};
    for (auto const& [code, name] : names) {
        EXPECT_EQ(keyToString(code), name);
        EXPECT_EQ(keyFromString(name), code) << name;
    }
    EXPECT_EQ(keyFromString("ctrl+shift+pageup"), Key::ctrl | Key::shift | Key::pageUp);
    EXPECT_EQ(keyFromString("Ctrl+a"), Key::ctrl | 'A');
    for (char const* bad : {"", "Ctrl+", "Hyper+A", "F13", "ab", "Ctrl+Ctrl"})
        EXPECT_FALSE(keyFromString(bad)) << bad;
}

} // namespace
} // namespace wainscot
