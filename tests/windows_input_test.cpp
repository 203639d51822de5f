#include "tests/host_fixture.h"

#include "host/events/key_names.h"
#include "host/events/keybinding_manager.h"
#include "host/messages/notify_msg.h"
#include "host/services/command_map.h"

namespace wainscot {
namespace {

using Input = OneWindowTest;

TEST_F(Input, TheReleaseGoesToThePressedWidgetWhereverThePointerIs) {
    auto* const probe = addTo(root_, new ProbeGlob(60, 40, &log_, "a"), BottomLeft(10, 10));
    auto* const other = addTo(root_, new ProbeGlob(60, 40, &log_, "b"), BottomLeft(100, 10));
    driver_.moveTo({0, 0});
    probe->noteMouse();
    other->noteMouse();
    driver_.moveTo({115, 115});
    driver_.press();
    driver_.moveTo({230, 130});
    driver_.moveTo({-50, 90});
    driver_.release();
    EXPECT_THAT(takeLog(), ElementsAre("a entered", "a move 5,5", "a down 5,5", "a move 120,20", "a left",
                                       "a move -160,-20", "a up -160,-20"));
    driver_.moveTo({230, 130});
    EXPECT_THAT(log_, ElementsAre("b entered", "b move 30,20")) << "free again after the release";
}

TEST_F(Input, CaptureEndsWithTheDeathOrHidingOfItsHolderAndNobodyElseGetsTheRelease) {
    auto* const below = addTo(root_, new ProbeGlob(300, 200, &log_, "below"));
    below->noteMouse();
    for (bool hide : {true, false}) {
        auto* const probe = addTo(root_, new ProbeGlob(60, 40, &log_, "a"), BottomLeft(10, 10));
        probe->noteMouse();
        driver_.press(probe);
        log_.clear();
        if (hide)
            probe->setVisible(false);
        else
            delete probe;
        EXPECT_EQ(EventSystem::live().pointer.captureHolder(), nullptr);
        driver_.moveTo({150, 150});
        driver_.release();
        EXPECT_THAT(log_, testing::Not(testing::Contains(testing::HasSubstr("up"))));
        EXPECT_THAT(log_, testing::Not(testing::Contains(testing::HasSubstr("move"))));
        if (hide) delete probe;
        driver_.moveTo({300, 250});
    }
}

TEST_F(Input, UnconsumedInputGoesUpAndTheConsumerIsCaptured) {
    auto* const panel = addTo(root_, new ProbeGlob(200, 150, &log_, "panel"));
    auto* const label = addTo(panel, new ProbeGlob(50, 50, &log_, "label"));
    driver_.moveTo({0, 0});
    panel->noteMouse();
    label->noteMouse(false);
    driver_.press(label);
    EXPECT_TRUE(EventSystem::live().pointer.isCapturedBy(panel));
    delete label;
    driver_.release();
    EXPECT_THAT(log_, testing::Contains("label down 25,25"));
    EXPECT_EQ(log_.back(), "panel up 25,25") << "the panel hears the release although the label has gone";
}

TEST_F(Input, ContainmentIsToldFromTheOutsideInAndFollowsTheTree) {
    auto* const outer = addTo(root_, new ProbeGlob(200, 150, &log_, "outer"), BottomLeft(10, 10));
    auto* const inner = addTo(outer, new ProbeGlob(50, 50, &log_, "inner"), BottomLeft(10, 10));
    driver_.moveTo({130, 130});
    EXPECT_THAT(takeLog(), ElementsAre("outer entered", "inner entered"));
    driver_.moveTo({250, 200});
    EXPECT_THAT(log_, ElementsAre("inner left"));
    EXPECT_TRUE(outer->containsPointer());
    log_.clear();
    outer->setWidgetPos(inner, {120, 80});
    driver_.settle();
    EXPECT_THAT(takeLog(), ElementsAre("inner entered")) << "the widget came to the pointer";
    inject({.kind = InputEvent::Kind::pointerLeft});
    EXPECT_THAT(log_, ElementsAre("inner left", "outer left"));
}

TEST_F(Input, HiddenWidgetsGetNothingAndInactiveOnesThePointerOnly) {
    auto* const hidden = addTo(root_, new ProbeGlob(60, 40, &log_, "hidden"), BottomLeft(10, 10));
    auto* const inactive = addTo(root_, new ProbeGlob(60, 40, &log_, "inactive"), BottomLeft(100, 10));
    driver_.moveTo({0, 0});
    hidden->setVisible(false);
    inactive->setActive(false);
    hidden->noteMouse();
    inactive->noteMouse();
    driver_.clickAt({120, 120});
    EXPECT_THAT(log_, IsEmpty());
    EXPECT_FALSE(driver_.click(hidden));
    driver_.click(inactive);
    EXPECT_THAT(log_, testing::Contains("inactive down 30,20"));
    expectDiagnostic("keyboard focus refused");
    auto const loose = std::make_unique<ProbeGlob>();
    for (ProbeGlob* probe : {hidden, inactive, loose.get()}) EXPECT_FALSE(set_kbd_focus(probe));
    Event press(EventKind::leftPress, {120, 120}, hidden);
    log_.clear();
    event_send(&press);
    driver_.settle();
    EXPECT_THAT(log_, IsEmpty()) << "posted input for the unshown is dropped";
}

TEST_F(Input, AWheelGestureStaysWhereItBegan) {
    auto* const first = addTo(root_, new ProbeGlob(60, 40, &log_, "first"), BottomLeft(0, 0));
    auto* const second = addTo(root_, new ProbeGlob(60, 40, &log_, "second"), BottomLeft(0, 100));
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
    root_->setWidgetPos(first, {200, 0});
    root_->setWidgetPos(second, {0, 0});
    driver_.wheelAt(place, -250);
    driver_.wheelAt(place + XY<int>{8, 8}, 1);
    EXPECT_THAT(wheeled, ElementsAre(first, first, first));
    wheeled.clear();
    virtualClock().advance(499);
    driver_.wheelAt(place, 2);
    virtualClock().advance(500);
    driver_.wheelAt(place, -5000);
    EXPECT_THAT(wheeled, ElementsAre(first, second));
    EXPECT_EQ(notches, -100) << "a broken device is bounded";
    wheeled.clear();
    root_->setWidgetPos(first, {0, 0});
    root_->setWidgetPos(second, {200, 0});
    driver_.wheelAt({place.x + 20, place.y}, 1);
    EXPECT_THAT(wheeled, ElementsAre(first)) << "moving the pointer ends it";
}

TEST_F(Input, ClicksChordsAndModifiersAreTold) {
    auto* const probe = addTo(root_, new ProbeGlob);
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

TEST_F(Input, FurtherButtonsBelongToThePressAndChangeNoCapture) {
    auto* const panel = addTo(root_, new ProbeGlob(200, 150, &log_, "panel"));
    auto* const button = addTo(panel, new ProbeGlob(50, 50, &log_, "button"));
    panel->noteMouse();
    button->onReact = [&](Event const& event) {
        if (mouse_right_event(event)) button->note(mouse_down_event(event) ? "right down" : "right up");
        return mouse_event(event) && !mouse_right_event(event);
    };
    driver_.press(button);
    log_.clear();
    driver_.press(Driver::Button::right);
    EXPECT_TRUE(EventSystem::live().pointer.isCapturedBy(button));
    driver_.release();
    EXPECT_TRUE(EventSystem::live().pointer.isCapturedBy(button)) << "until the last release";
    driver_.release(Driver::Button::right);
    EXPECT_EQ(takeLog(), (Lines{"button right down", "button right up"})) << "and the panel hears nothing";
    EXPECT_TRUE(driver_.chord(button));
    EXPECT_EQ(EventSystem::live().pointer.captureHolder(), nullptr);
}

TEST_F(Input, APressThatIsLostEndsOnceAndChoosesNothing) {
    auto const report = [&](InputEvent::Kind kind) {
        inject({.kind = kind, .window = nativeOf(root_)->id()});
    };
    std::vector<std::function<void()>> const ends{[&] { deactivate(); },
                                                  [&] {
                                                      report(InputEvent::Kind::windowHidden);
                                                      report(InputEvent::Kind::windowShown);
                                                  },
                                                  [&] {
                                                      root_->setVisible(false);
                                                      root_->setVisible(true);
                                                  },
                                                  [&] { report(InputEvent::Kind::pressLost); }};
    for (auto const& end : ends) {
        auto* const probe = addTo(root_, new ProbeGlob(60, 40, &log_, "a"), BottomLeft(10, 10));
        probe->noteMouse();
        probe->onPressLost = [probe] { probe->note("lost"); };
        driver_.press(probe);
        log_.clear();
        end();
        EXPECT_THAT(takeLog(), testing::Contains("a lost").Times(1));
        EXPECT_EQ(EventSystem::live().pointer.heldButtons, 0);
        driver_.release();
        driver_.moveTo(root_->globXYToScreenXY({30, 20}));
        EXPECT_THAT(takeLog(), testing::Not(testing::Contains(testing::AnyOf("a lost", "a up 30,20"))));
        activate(root_);
        delete probe;
    }
}

TEST_F(Input, WhatIsHandedDownComesBackAsAnAnswer) {
    auto* const panel = addTo(root_, new ProbeGlob(200, 150));
    auto* const between = addTo(panel, new ProbeGlob(100, 100));
    auto* const child = addTo(between, new ProbeGlob(50, 50));
    int asked = 0;
    bool copies = false;
    panel->onReact = [&](Event const& event) {
        if (!mouse_wheel_event(event)) return false;
        ++asked;
        Event const copy = event;
        EXPECT_FALSE(child->handleEvent(copies ? copy : event));
        return panel->Glob::react(event);
    };
    between->onReact = [&](Event const& event) {
        return mouse_wheel_event(event) && child->handleEvent(event) ? true : between->Glob::react(event);
    };
    for (bool const copy : {false, true}) {
        copies = copy;
        driver_.wheelAt(panel->globXYToScreenXY({150, 120}), 1);
        virtualClock().advance(600);
    }
    EXPECT_EQ(asked, 2) << "once for each event";
}

TEST_F(Input, ASidewaysWheelIsAKindOfItsOwn) {
    auto* const probe = addTo(root_, new ProbeGlob);
    std::vector<int> kinds;
    probe->onReact = [&](Event const& event) {
        if (mouse_side_wheel_event(event) && !mouse_wheel_event(event)) kinds.push_back(event.amount());
        if (mouse_zoom_event(event)) kinds.push_back(100 * event.amount());
        return true;
    };
    EXPECT_TRUE(driver_.sideWheel(probe, -2));
    EXPECT_TRUE(driver_.zoom(probe, 3));
    EXPECT_THAT(kinds, ElementsAre(-2, 300));
}

TEST_F(Input, TheNextKeyGoesWhereAClickHasLed) {
    auto* const probe = addTo(root_, new ProbeGlob(60, 40));
    ProbeGlob* second = nullptr;
    probe->onReact = [&](Event const& event) {
        if (mouse_up_event(event)) {
            second = new ProbeGlob(100, 80, &log_, "second");
            second->onReact = [this, &second](Event const& key) {
                if (isKeyPressEvent(key)) second->note("key");
                return true;
            };
            host_->globManager().realize(second, XY<int>{600, 100});
        }
        return mouse_event(event);
    };
    // All at once, as a fast hand does it.
    driver_.press(probe);
    host_->loop().inject({.kind = InputEvent::Kind::pointerReleased,
                          .button = InputEvent::Button::left,
                          .place = probe->screenBox().centre()});
    host_->loop().inject({.kind = InputEvent::Kind::keyPressed, .keyCode = 'a'});
    driver_.settle();
    EXPECT_EQ(takeLog(), Lines{"second key"});
    EXPECT_TRUE(driver_.activate(root_));
    EXPECT_EQ(host_->globManager().activeWindow()->rootStamp(), root_->idStamp());
    driver_.activate(second);
    delete second;
    driver_.key('b');
    EXPECT_EQ(host_->globManager().activeWindow()->rootStamp(), root_->idStamp());
    EXPECT_TRUE(glib_appHasFocus());
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
    auto* const panel = addTo(root_, new ProbeGlob(200, 150, &log_, "panel"));
    auto* const field = addTo(panel, new ProbeGlob(50, 50, &log_, "field"));
    auto* const high = addTo(panel, new ProbeGlob(1, 1, &log_, "high"));
    auto* const low = addTo(panel, new ProbeGlob(1, 1, &log_, "low"));
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
    log_.clear();
    driver_.key('A');
    EXPECT_THAT(takeLog(), ElementsAre("high asked", "low asked", "field key offered", "panel key offered"));
    highConsumes = true;
    driver_.key('A');
    EXPECT_THAT(takeLog(), ElementsAre("high asked"));
    highConsumes = false;
    EXPECT_TRUE(getEventInterceptStack().pop(lowEntry));
    EXPECT_FALSE(getEventInterceptStack().pop(lowEntry));
    delete high;
    driver_.key('A');
    EXPECT_THAT(log_, ElementsAre("field key offered", "panel key offered"));
}

TEST_F(Input, EachWindowKeepsItsFocus) {
    RecordingParent* const left = openWindow(200, 200, {0, 0});
    auto* const inLeft = addTo(left, new ProbeGlob(50, 50, &log_, "left"));
    EXPECT_EQ(get_kbd_focus(), left) << "a new window's holder is its root";
    EXPECT_TRUE(inLeft->claimKbdFocus());
    RecordingParent* const right = openWindow(200, 200, {300, 0});
    auto* const inRight = addTo(right, new ProbeGlob(50, 50, &log_, "right"));
    EXPECT_EQ(get_kbd_focus(), right);
    log_.clear();
    EXPECT_TRUE(set_kbd_focus(inRight));
    EXPECT_THAT(takeLog(), ElementsAre("right gained"));
    activate(left);
    EXPECT_EQ(get_kbd_focus(), inLeft);
    EXPECT_THAT(log_, IsEmpty()) << "switching windows tells nobody";
    int keys = 0;
    inLeft->onReact = [&](Event const& event) { return isKeyPressEvent(event) && ++keys > 0; };
    inRight->onIntercept = [&](Event const&) { return true; };
    getEventInterceptStack().push(inRight, 1536);
    driver_.key('A');
    EXPECT_EQ(keys, 1) << "entries of another window are not asked";
    auto* const second = addTo(right, new ProbeGlob(50, 50, &log_, "second"));
    EXPECT_TRUE(set_kbd_focus(second));
    EXPECT_THAT(log_, ElementsAre("right lost", "second gained"))
        << "told rightly in the window that is not active";
    EXPECT_EQ(get_kbd_focus(), inLeft);
    deactivate();
    EXPECT_FALSE(glib_appHasFocus());
    EXPECT_EQ(get_kbd_focus(), inLeft) << "losing activation is not losing the focus";
    delete left;
    activate(right);
    EXPECT_TRUE(glib_appHasFocus());
    EXPECT_EQ(get_kbd_focus(), second);
}

TEST_F(Input, TheFocusLeavesWhatDiesHidesOrIsDisabled) {
    auto* const panel = addTo(root_, new ProbeGlob(200, 150, &log_, "panel"));
    auto* const field = addTo(panel, new ProbeGlob(50, 50, &log_, "field"));
    set_kbd_focus(field);
    log_.clear();
    panel->setVisible(false);
    EXPECT_EQ(get_kbd_focus(), root_);
    EXPECT_THAT(log_, IsEmpty()) << "the hidden are not told";
    panel->setVisible(true);
    set_kbd_focus(field);
    log_.clear();
    field->setActive(false);
    EXPECT_EQ(get_kbd_focus(), panel) << "so that Tab goes on from there";
    field->setActive(true);
    set_kbd_focus(field);
    std::unique_ptr<Glob> const taken = root_->takeWidget(panel);
    EXPECT_EQ(get_kbd_focus(), root_);
    root_->addChild(taken.get());
    set_kbd_focus(field);
    delete field;
    EXPECT_EQ(get_kbd_focus(), panel);
    const_cast<std::unique_ptr<Glob>&>(taken).release();
}

TEST_F(Input, NestedChangesOfTheFocusAreBoundedAndTheLastOneHolds) {
    expectDiagnostic("keyboard focus refused");
    auto* const a = addTo(root_, new ProbeGlob);
    auto* const b = addTo(root_, new ProbeGlob);
    auto* const c = addTo(root_, new ProbeGlob);
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
    for (bool wanted : {false, true}) {
        ProbeGlob* const probe = wanted ? new List : new ProbeGlob;
        root_->addChild(probe);
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
    auto* const probe = addTo(root_, new ProbeGlob);
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
    auto* const probe = addTo(root_, new ProbeGlob);
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
