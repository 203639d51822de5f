#include "tests/host_fixture.h"

#include "host/messages/notify_msg.h"
#include "host/objects/description.h"
#include "host/objects/tooltip_details.h"
#include "host/windows/drag_drop_manager.h"

namespace wainscot {
namespace {

using Text = LightweightString<wchar_t>;

/// Has a tip of its own for each half, and takes text.
class HalvesGlob : public ProbeGlob {
public:
    using ProbeGlob::ProbeGlob;

    bool getTooltipDetails(XY<int> const& place, TooltipDetails& details) const override {
        if (!halves) return ProbeGlob::getTooltipDetails(place, details);
        bool const left = place.x < width() / 2;
        details.text = UIString(left ? L"left" : L"right");
        details.area = left ? IntBox(0, 0, width() / 2, height()) : IntBox(width() / 2, 0, width(), height());
        return true;
    }
    std::optional<IntBox> textCaret() const override { return caret; }
    int handleDataMessageEvent(LightweightString<char> name, Glob*, Qv::Ptr<iObject> data) override {
        if (name != compoundTextInputMsg) return 0;
        typed = typed + *unwrapData<LightweightString<wchar_t>>(data);
        return 1;
    }

    bool halves = false;
    std::optional<IntBox> caret;
    LightweightString<wchar_t> typed;
};

class Notes : public OneWindowTest {
protected:
    Notes() { driver_.moveTo({5, 5}); }

    /// The text of the note that is shown; "" when none is.
    std::wstring note() {
        driver_.settle();
        Glob* const found = driver_.find(Role::note, L"");
        return found ? std::wstring(Driver::describe(*found).name.c_str()) : std::wstring();
    }
    void rest(int ms = 700) {
        moveIn(probe_, 10, 10);
        driver_.advance(ms);
    }
    void compose(wchar_t const* text, int caret) {
        inject({.kind = InputEvent::Kind::composing, .amount = caret, .text = text});
    }

    HalvesGlob* probe_ = addTo(root_, new HalvesGlob(60, 40), BottomLeft(50, 50));
};

TEST_F(Notes, ATipComesWhenThePointerRestsAndGoesWhenItLeaves) {
    probe_->setContextString(L"What it does", L"Ctrl+D");
    rest(590);
    EXPECT_EQ(note(), L"");
    driver_.advance(20);
    EXPECT_EQ(note(), L"What it does");
    Glob* const shown = driver_.find(Role::note, L"");
    EXPECT_TRUE(driver_.painted(shown));
    EXPECT_EQ(Driver::describe(*shown).value, Text(L"Ctrl+D"));
    EXPECT_FALSE(shown->screenBox().contains(glib_getMousePos())) << "the pointer does not cover it";
    EXPECT_EQ(get_kbd_focus(), root_);
    moveIn(probe_, 20, 20);
    EXPECT_EQ(note(), L"What it does") << "still the same thing";
    moveIn(root_, 200, 200);
    EXPECT_EQ(note(), L"");
    moveIn(probe_, 10, 10);
    driver_.advance(100);
    EXPECT_EQ(note(), L"What it does") << "sooner while tips are being read";
}

TEST_F(Notes, PressKeyWheelAndDeactivationSendATipAway) {
    probe_->setContextString(L"tip");
    for (int how = 0; how < 5; ++how) {
        activate(root_);
        moveIn(root_, 200, 200);
        rest();
        ASSERT_EQ(note(), L"tip");
        if (how == 0) driver_.clickAt(glib_getMousePos());
        if (how == 1) driver_.key('x');
        if (how == 2) driver_.wheelAt(glib_getMousePos(), 1);
        if (how == 3) deactivate();
        if (how == 4) destroy(probe_);
        EXPECT_EQ(note(), L"") << how;
        driver_.advance(2000);
        EXPECT_EQ(note(), L"") << "not again over the same thing " << how;
    }
}

TEST_F(Notes, ATipBelongsToAPartAndCutsAtItsEdges) {
    probe_->halves = true;
    rest();
    EXPECT_EQ(note(), L"left");
    moveIn(probe_, 50, 10);
    EXPECT_EQ(note(), L"");
    driver_.advance(100);
    EXPECT_EQ(note(), L"right");
    // A tip at the lower right corner of the screen lies on the screen.
    root_->setScreenPos({1850, 0});
    driver_.settle();
    moveIn(probe_, 12, 2);
    driver_.advance(1000);
    ASSERT_EQ(note(), L"left");
    EXPECT_TRUE(IntBox(0, 0, 1920, 1080).contains(driver_.find(Role::note, L"")->screenBox()));
    destroy(root_);
    EXPECT_EQ(note(), L"") << "goes with its window";
}

TEST_F(Notes, NothingIsDueWithoutATip) {
    moveIn(probe_, 10, 10);
    EXPECT_EQ(EventSystem::live().timers.size(), 0u);
    probe_->setContextString(L"tip");
    moveIn(probe_, 11, 10);
    EXPECT_EQ(EventSystem::live().timers.size(), 1u);
    driver_.advance(700);
    EXPECT_EQ(EventSystem::live().timers.size(), 0u);
}

TEST_F(Notes, ComposedTextAppearsAtTheCaretBeforeItIsFinished) {
    ASSERT_TRUE(probe_->claimKbdFocus());
    compose(L"ni", 2);
    EXPECT_EQ(note(), L"") << "nobody takes text";
    probe_->caret = IntBox(10, 5, 11, 25);
    driver_.settle();
    EXPECT_EQ(host_->offscreen()->textCaret(),
              std::optional<IntBox>(IntBox(10, 5, 11, 25).translated(probe_->globXYToScreenXY({0, 0}))));
    compose(L"ni", 2);
    EXPECT_EQ(note(), L"ni");
    EXPECT_TRUE(driver_.find(Role::note, L"")->screenBox().intersects(probe_->screenBox()));
    compose(L"nih", 3);
    EXPECT_EQ(note(), L"nih");
    InputEvent const done{.kind = InputEvent::Kind::composedText, .text = L"\u4F60"};
    inject(done);
    EXPECT_EQ(note(), L"");
    EXPECT_EQ(probe_->typed, Text(L"\u4F60"));
    compose(L"x", 1);
    ASSERT_TRUE(root_->claimKbdFocus());
    driver_.settle();
    EXPECT_EQ(note(), L"") << "the focus has gone elsewhere";
    EXPECT_FALSE(host_->offscreen()->textCaret());
    // Nobody has to take it: that is allowed.
    inject(done);
}

TEST_F(Notes, WhatIsDraggedIsNamedBesideThePointer) {
    probe_->onReact = [&](Event const& event) {
        if (mouse_move_event(event) && event.heldButtons() != 0)
            DragDropManager::instance().beginDrag(Qv::Ptr<DragDropItem>(new DragDropItem("clip", L"Clip 1")),
                                                  probe_);
        return mouse_event(event);
    };
    driver_.press(probe_);
    moveIn(probe_, 5, 5);
    moveIn(root_, 200, 200);
    EXPECT_EQ(note(), L"Clip 1");
    XY<int> const before = driver_.find(Role::note, L"")->screenBox().bottomLeft();
    moveIn(root_, 210, 190);
    EXPECT_EQ(driver_.find(Role::note, L"")->screenBox().bottomLeft(), before + (XY<int>{10, -10}));
    driver_.key(Key::escape);
    EXPECT_EQ(note(), L"");
    driver_.release();
}

TEST_F(Notes, ATipThatIsAwaitedDoesNotComeOverOtherPrograms) {
    probe_->setContextString(L"tip");
    moveIn(probe_, 10, 10);
    deactivate();
    EXPECT_EQ(EventSystem::live().timers.size(), 0u);
    driver_.advance(2000);
    EXPECT_EQ(note(), L"");
}

TEST_F(Notes, WhatChangesElsewhereDoesNotKeepATipAway) {
    probe_->setContextString(L"tip");
    auto* const runner = addTo(root_, new ProbeGlob(5, 5), BottomLeft(200, 200));
    moveIn(probe_, 10, 10);
    for (int i = 0; i < 8; ++i) {
        root_->setWidgetPos(runner, {200 + i, 200});
        driver_.advance(100);
    }
    EXPECT_EQ(note(), L"tip");
}

TEST_F(Notes, ATipThatTheWindowSystemRefusesIsNotTriedAgain) {
    probe_->setContextString(L"tip");
    host_->offscreen()->refuseWindows(true);
    rest();
    EXPECT_EQ(note(), L"");
    EXPECT_EQ(EventSystem::live().timers.size(), 0u);
    host_->offscreen()->refuseWindows(false);
}

TEST_F(Notes, ACompositionStaysWithItsCaretAndItsHolder) {
    auto* const next = addTo(root_, new HalvesGlob(60, 40), BottomLeft(200, 50));
    probe_->caret = next->caret = IntBox(10, 5, 11, 25);
    ASSERT_TRUE(probe_->claimKbdFocus());
    compose(L"ni", 2);
    ASSERT_EQ(note(), L"ni");
    XY<int> const before = driver_.find(Role::note, L"")->screenBox().bottomLeft();
    root_->setScreenPos({140, 120});
    driver_.settle();
    ASSERT_EQ(note(), L"ni");
    EXPECT_EQ(driver_.find(Role::note, L"")->screenBox().bottomLeft(), before + (XY<int>{40, 20}));
    ASSERT_TRUE(next->claimKbdFocus());
    EXPECT_EQ(note(), L"") << "it was not meant for the next one";
    compose(L"ni", 2);
    ASSERT_EQ(note(), L"ni");
    host_->offscreen()->deactivateAll();
    EXPECT_EQ(note(), L"") << "another program has the keys";
}

} // namespace
} // namespace wainscot
