// Keys in whole windows: panes; unused Tab, Return and Escape; controls that are disabled with their panel,
// or removed while a handler runs.

#include "buttons/bool_radio_set.h"
#include "buttons/radio_set.h"
#include "containers/slider.h"
#include "foundation/glob_tab_stop.h"
#include "foundation/val_server_adaptor.h"
#include "host/base/convert.h"
#include "host/events/key_codes.h"
#include "host/objects/description.h"
#include "host/objects/glob_notices.h"
#include "host/windows/glob_manager.h"
#include "tests/widget_fixture.h"

namespace wainscot {
namespace {

constexpr std::uint32_t f6 = Key::function(6);

/// Panels side by side, with buttons named after letters.
class WindowKeysTest : public WidgetTest {
protected:
    StandardPanel* pane(char const* letters) {
        return fill(show(new StandardPanel(120, 100), 130 * panes_++), letters);
    }
    StandardPanel* fill(StandardPanel* panel, char const* letters) {
        for (int y = 10; *letters; ++letters, y += 30) panel->addTabStop(*button(panel, *letters, y));
        return panel;
    }
    Button* button(Glob* parent, char letter, int y) {
        LightweightString<char> const name = std::string(1, letter).c_str();
        auto* const made = new Button(fromUTF8(name), name, 60, 24);
        return addTo(parent, made, BottomLeft(10, y));
    }
    /// The holders of the focus after each of these keys.
    std::string walk(std::vector<std::uint32_t> const& keys) {
        std::string way;
        for (std::uint32_t const key : keys) {
            driver_.key(key);
            auto const* const holder = dynamic_cast<Button*>(get_kbd_focus());
            way += holder ? holder->getMessage().c_str() : "-";
        }
        return way;
    }

private:
    int panes_ = 0;
};

TEST_F(WindowKeysTest, PanesAreEnteredAndLeft) {
    StandardPanel* const left = pane("ab");
    StandardPanel* const right = pane("cd");
    StandardPanel* const inner = fill(addTo(left, new StandardPanel(100, 20)), "e");
    EXPECT_EQ(walk({Key::tab, Key::tab, Key::tab}), "aba") << "a panel keeps Tab";
    EXPECT_EQ(walk({Key::tab, f6, f6, Key::tab, f6, f6}), "becdbe") << "F6 goes back to where one was";
    EXPECT_EQ(walk({f6 | Key::shift, f6 | Key::shift}), "bd");
    EXPECT_EQ(walk({Key::escape, Key::tab, Key::tab, Key::escape, Key::shiftTab}), "dbaad");
    for (StandardPanel* panel : {left, right, inner}) panel->setTabGoesOn(true);
    left->setTabStopFocus(0);
    inner->setTabStopFocus(0);
    EXPECT_EQ(walk({Key::tab, Key::tab, Key::tab}), "cda") << "whatever stop the panel round it remembers";
    set_kbd_focus(root_);
    std::uint32_t const tab = Key::tab, back = Key::shiftTab;
    EXPECT_EQ(walk({tab, tab, tab, tab, tab, tab}), "abecda");
    EXPECT_EQ(walk({back, back, back, back, back}), "dceba");
    left->setActive(false);
    EXPECT_EQ(walk({tab, tab, tab}), "cdc") << "what is inactive has no panes";
}

TEST_F(WindowKeysTest, ReturnPressesTheDefaultButtonAndEscapeClosesModalWindows) {
    for (std::uint32_t const key : {Key::enter, Key::escape, std::uint32_t('x')})
        EXPECT_FALSE(host_->globManager().handleUnusedKey(*root_, Event(EventKind::keyPress, key))) << key;
    struct Dialogue : StandardPanel {
        Dialogue() : StandardPanel(120, 80) {}
        int handleMessageEvent(LightweightString<char> name, Glob*) override {
            heard += name.c_str();
            return name != pootMsg;
        }
        std::string heard;
    };
    openWindow(100, 100, {600, 100});
    activate(root_);
    auto* const modal = new Dialogue;
    auto* const yes = button(modal, 'y', 10);
    yes->setDefaultAction(true);
    button(modal, 'n', 40);
    ASSERT_TRUE(host_->globManager().addModalGlob(modal, root_));
    driver_.settle();
    driver_.key(Key::enter);
    EXPECT_EQ(modal->heard, "y");
    yes->setActive(false);
    driver_.key(Key::enter);
    EXPECT_EQ(modal->heard, "y") << "it cannot be pressed";
    modal->addStandardWidgets(StandardPanel::doItWidget);
    driver_.key(Key::enter);
    EXPECT_EQ(modal->heard, "ydo_it");
    HandlerRef<Glob> const ref(modal);
    driver_.key(Key::escape);
    EXPECT_EQ(ref.get(), nullptr);
    EXPECT_EQ(&host_->globManager().activeWindow()->root(), root_) << "its owner";
}

TEST_F(WindowKeysTest, WhatLiesInAnInactivePanelIsInactive) {
    expectDiagnostic("keyboard focus refused");
    StandardPanel* const outer = pane("");
    StandardPanel* const inner = fill(addTo(outer, new StandardPanel(100, 80)), "ab");
    auto* const a = dynamic_cast<Button*>(driver_.button(L"a"));
    auto* const b = dynamic_cast<Button*>(driver_.button(L"b"));
    b->setActive(false);
    set_kbd_focus(a);
    driver_.press(a);
    outer->setActive(false);
    EXPECT_FALSE(a->isDown()) << "a press ends";
    driver_.release();
    EXPECT_EQ(get_kbd_focus(), root_) << "the focus goes on";
    EXPECT_FALSE(a->isActive() || a->isTabStopActive() || set_kbd_focus(a));
    EXPECT_TRUE(a->isActiveItself());
    EXPECT_EQ(Driver::describe(*a).states & GlobDescription::enabled, 0u);
    driver_.click(a);
    EXPECT_EQ(walk({Key::tab, f6, Key::enter}), "---");
    EXPECT_EQ(inner->numChildren(), 2u);
    // A control that comes in is inactive, one that is taken out is not.
    Button* const c = button(inner, 'c', 5);
    EXPECT_FALSE(c->isActive());
    std::unique_ptr<Glob> const taken = inner->takeWidget(c);
    EXPECT_TRUE(taken->isActive());
    outer->setActive(true);
    EXPECT_TRUE(a->isActive());
    EXPECT_FALSE(b->isActive());
    driver_.key(Key::tab);
    EXPECT_EQ(get_kbd_focus(), a);
}

TEST_F(WindowKeysTest, AFocusIsGivenUpInItsOwnWindow) {
    RecordingParent* const other = openWindow(200, 100, {600, 100});
    auto* const panel = addTo(other, new StandardPanel(100, 80));
    Button* const held = button(panel, 'a', 10);
    panel->addTabStop(*held);
    panel->setTabStopFocus(*held);
    activate(root_);
    held->relinquishTabStopFocus();
    EXPECT_EQ(KbdFocus::holderIn(*other), panel);
    panel->setTabStopFocus(*held);
    activate(other);
    int told = 0;
    auto const watch = GlobNotices::watchFocus(
        *panel, makeCallback<int, NotifyMsg>([&](NotifyMsg const&) { return ++told; }));
    held->setVisible(false);
    EXPECT_EQ(get_kbd_focus(), panel);
    driver_.settle();
    EXPECT_EQ(told, 1) << "the heir hears of it";
    held->setVisible(true);
    panel->setTabStopFocus(*held);
    // Its parent cannot take it.
    panel->setVisible(false);
    EXPECT_EQ(KbdFocus::holderIn(*other), other);
}

TEST_F(WindowKeysTest, OnlyWhatIsInAWindowIsAStop) {
    StandardPanel* const panel = pane("ab");
    auto const loose = std::make_unique<Button>(L"loose", "loose", 60, 24);
    panel->addTabStop(*loose, 1);
    EXPECT_FALSE(loose->isShown() || loose->isTabStopActive() || canvas_is_mapped_to_root(loose->canvas()));
    EXPECT_EQ(walk({Key::tab, Key::tab, Key::tab}), "aba");
    RecordingParent* const other = openWindow(200, 100, {600, 100});
    activate(root_);
    EXPECT_TRUE(driver_.button(L"b")->reparentTo(other));
    EXPECT_EQ(walk({Key::tab}), "a") << "it is no stop here any more";
}

/// A form that is built anew in a handler: all that was removed is out of everything at once.
TEST_F(WindowKeysTest, WhatIsRemovedInAHandlerIsGoneAtOnce) {
    StandardPanel* const panel = pane("abc");
    ValServer<double> server(0.25);
    auto* slider = addTo(panel, new Slider(Slider::InitArgs(100)), BottomLeft(10, 70));
    slider->setDataAdaptor(Qv::makePtr<ValServerAdaptor<double>>(server));
    GlobTabStop sliderStop(*slider);
    panel->addTabStop(sliderStop);
    int asked = 0;
    auto* const outside = button(root_, 'x', 200);
    outside->setCallback(calling([&](NotifyMsg const&) {
        std::vector<Glob*> old;
        panel->getChildren(old);
        auto* const stop = dynamic_cast<Button*>(old.front());
        for (Glob* child : old) {
            Glob* removed = child;
            panel->removeWidget(removed);
            EXPECT_FALSE(child->isShown());
        }
        EXPECT_EQ(panel->numTabStops(), 0u);
        EXPECT_FALSE(stop->setTabStopFocus() || stop->isTabStopActive());
        EXPECT_FALSE(slider->getDataAdaptor()->getWidget()) << "the data knows it no more";
        server = 0.75;
        EXPECT_EQ(slider->getWidgetValue(), 0);
        fill(panel, "de");
        ++asked;
    }));
    driver_.click(outside);
    EXPECT_EQ(asked, 1);
    EXPECT_EQ(walk({Key::tab, Key::tab, Key::tab}), "ded");
}

TEST_F(WindowKeysTest, KeysShowAndScrollWhatTheyReach) {
    struct Scroller : Glob {
        Scroller() : Glob(100, 40) {}
        XY<int> handleBringIntoView(IntBox const& area) override {
            wanted.push_back(area);
            return {0, 40 - area.y2};
        }
        std::vector<IntBox> wanted;
    };
    auto* const outer = show(new Scroller);
    auto* const inner = addTo(outer, new Scroller, BottomLeft(0, 5));
    StandardPanel* const panel = fill(addTo(inner, new StandardPanel(100, 90)), "ab");
    set_kbd_focus(panel);
    EXPECT_EQ(walk({Key::tab, Key::tab}), "ab");
    ASSERT_EQ(inner->wanted.size(), 2u);
    EXPECT_EQ(inner->wanted[1], IntBox(10, 40, 70, 64));
    EXPECT_EQ(outer->wanted[1], IntBox(10, 21, 70, 45)) << "as the inner one has moved it";
    Button* const x = button(root_, 'x', 200);
    set_kbd_focus(x);
    driver_.settle();
    std::uint32_t const rest = driver_.pixel(x, {5, 12});
    driver_.keyDown(Key::space);
    EXPECT_FALSE(x->isDown()) << "the click is done";
    EXPECT_NE(driver_.pixel(x, {5, 12}), rest) << "while the key is held it is shown";
    deactivate();
    driver_.keyUp(Key::space);
    activate(root_);
    EXPECT_EQ(driver_.pixel(x, {5, 12}), rest) << "the release went elsewhere";
}

TEST_F(WindowKeysTest, APressGivesASliderTheKeys) {
    StandardPanel* const panel = pane("a");
    auto* const slider = addTo(panel, new Slider(Slider::InitArgs(100)), BottomLeft(10, 60));
    GlobTabStop stop(*slider);
    panel->addTabStop(stop);
    EXPECT_EQ(walk({Key::tab}), "a");
    driver_.click(slider);
    EXPECT_EQ(get_kbd_focus(), slider);
    EXPECT_TRUE(stop.isTabStopFocus()) << "the next Tab goes on from there";
    EXPECT_EQ(walk({Key::tab}), "a");
}

TEST_F(WindowKeysTest, ArrowsWorkInAPair) {
    StandardPanel* const panel = pane("");
    BoolRadioSet pair;
    auto* const yes = addTo(panel, new Checkbox(Checkbox::InitArgs(L"yes")), BottomLeft(10, 10));
    auto* const no = addTo(panel, new Checkbox(Checkbox::InitArgs(L"no")), BottomLeft(10, 50));
    pair.setWidgets(yes, no, true);
    panel->addTabStop(*yes);
    panel->addTabStop(*no);
    set_kbd_focus(panel);
    driver_.key(Key::tab);
    bool const before = pair.getWidgetValue();
    driver_.key(Key::down);
    EXPECT_NE(pair.getWidgetValue(), before);
    EXPECT_EQ(get_kbd_focus(), pair.getWidgetValue() ? yes : no);
}

} // namespace
} // namespace wainscot
