#include "tests/host_fixture.h"

#include "host/drawing/uif_std.h"
#include "host/windows/modal_flash_p.h"
#include "host/windows/modality_p.h"

namespace wainscot {
namespace {

/// A main window, a second one, and a modal dialog over the first.
class Modal : public HostTest {
protected:
    ProbeGlob* probeIn(Glob& parent, std::string const& name) {
        auto* const probe = addTo(&parent, new ProbeGlob(60, 30, nullptr, name), BottomLeft(10, 10));
        hear(*probe, name);
        return probe;
    }
    void hear(ProbeGlob& probe, std::string const& name) {
        probe.onReact = [this, name, &probe](Event const& event) {
            if (mouse_down_event(event)) log_.push_back(name + " down");
            if (isKeyPressEvent(event)) log_.push_back(name + " key");
            if (mouse_wheel_event(event)) log_.push_back(name + " wheel");
            return !isMessageEvent(event) || probe.Glob::react(event);
        };
    }
    void openDialog() {
        dialog_ = new RecordingParent(200, 100);
        inDialog_ = probeIn(*dialog_, "dialog");
        ASSERT_TRUE(manager().addModalGlob(dialog_, main_));
        driver_.settle();
        inDialog_->claimKbdFocus();
        log_.clear();
    }
    ProbeGlob* openPopUp(std::string const& name, XY<int> place, Glob* parent = nullptr) {
        auto* const popUp = new ProbeGlob(80, 60);
        hear(*popUp, name);
        PopUpOptions options;
        options.place = place;
        options.opener = inDialog_;
        options.parent = parent;
        EXPECT_TRUE(manager().openPopUp(popUp, options));
        return popUp;
    }
    void useAll() {
        for (ProbeGlob* probe : {inMain_, inOther_}) {
            driver_.click(probe);
            driver_.wheel(probe, 1);
        }
        driver_.key('a');
    }
    GlobManager& manager() { return host_->globManager(); }

    RecordingParent* other_ = openWindow(200, 100, {1000, 100});
    RecordingParent* main_ = openWindow(400, 300, {100, 500});
    RecordingParent* dialog_ = nullptr;
    ProbeGlob* inMain_ = probeIn(*main_, "main");
    ProbeGlob* inOther_ = probeIn(*other_, "other");
    ProbeGlob* inDialog_ = nullptr;
};

TEST_F(Modal, KeepsInputFromAllOtherWindows) {
    openDialog();
    EXPECT_EQ(nativeOf(dialog_)->owner(), nativeOf(main_)->id());
    EXPECT_EQ(dialog_->screenBox().centre(), main_->screenBox().centre());
    useAll();
    EXPECT_EQ(takeLog(), Lines{"dialog key"});
    EXPECT_FALSE(inMain_->containsPointer());
    driver_.click(inDialog_);
    EXPECT_EQ(takeLog(), Lines{"dialog down"});
    delete dialog_;
    driver_.settle();
    host_->offscreen()->activate(nativeOf(main_)->id());
    driver_.click(inMain_);
    EXPECT_EQ(takeLog(), Lines{"main down"}) << "its death has ended it";
}

TEST_F(Modal, APressElsewhereBringsItToTheFrontAndKeysGoToIt) {
    openDialog();
    // The window manager lets a person choose another window.
    activate(other_);
    driver_.settle();
    EXPECT_EQ(manager().activeWindow()->rootStamp(), dialog_->idStamp());
    inMain_->claimKbdFocus();
    driver_.click(inMain_);
    EXPECT_EQ(&manager().foremost()->root(), dialog_);
    driver_.key('a');
    EXPECT_EQ(takeLog(), Lines{"dialog key"});
    EXPECT_TRUE(driver_.closeWindow(main_));
    EXPECT_TRUE(is_good_glob_ptr(main_)) << "it cannot be closed behind the dialog";
    EXPECT_TRUE(main_->messages().empty());
}

TEST_F(Modal, TheWindowManagerKnowsItAndARefusedPressMakesItFlash) {
    activate(main_);
    ASSERT_TRUE(inMain_->claimKbdFocus());
    auto* const strip = addTo(main_, new ProbeGlob(20, 20));
    EXPECT_TRUE(glib_showsKbdFocus(inMain_));
    ASSERT_TRUE(manager().addModalGlob(strip, main_));
    EXPECT_FALSE(glib_showsKbdFocus(inMain_)) << "no mark on what is blocked";
    delete strip;
    EXPECT_TRUE(glib_showsKbdFocus(inMain_));
    openDialog();
    EXPECT_TRUE(nativeOf(dialog_)->isModal());
    EXPECT_GE(nativeOf(dialog_)->minSize().y, std::min(dialog_->height(), 2 * UifStd::getButtonHeight()));
    EXPECT_FALSE(nativeOf(main_)->isModal());
    auto* const palette = new RecordingParent(50, 40);
    ASSERT_TRUE(manager().realizeOwned(palette, dialog_));
    EXPECT_EQ(nativeOf(palette)->owner(), nativeOf(dialog_)->id());
    EXPECT_FALSE(nativeOf(palette)->isModal());
    std::uint32_t const plain = driver_.pixel(dialog_, {0, 0});
    activate(main_);
    driver_.advance(1000);
    driver_.click(inMain_);
    EXPECT_NE(driver_.pixel(dialog_, {0, 0}), plain);
    driver_.advance(ModalFlash::interval);
    EXPECT_EQ(driver_.pixel(dialog_, {0, 0}), plain);
    driver_.advance(1000);
    EXPECT_EQ(driver_.pixel(dialog_, {0, 0}), plain);
    EXPECT_EQ(EventSystem::live().timers.size(), 0u);
    driver_.click(inMain_);
    manager().unsetModalContextGlob(dialog_);
    EXPECT_FALSE(nativeOf(dialog_)->isModal());
}

TEST_F(Modal, InterceptEntriesOfRefusedWindowsAreNotAsked) {
    openDialog();
    int asked = 0;
    for (ProbeGlob* probe : {inMain_, inOther_, inDialog_}) {
        probe->onIntercept = [&, probe](Event const&) {
            return asked += probe == inDialog_ ? 100 : 1, false;
        };
        getEventInterceptStack().push(probe, 10);
    }
    driver_.keyDown('a');
    EXPECT_EQ(asked, 100);
}

TEST_F(Modal, PopUpsAndContextsBelongToTheChain) {
    openDialog();
    openPopUp("sub", {580, 200}, openPopUp("menu", {500, 200}));
    driver_.settle();
    driver_.clickAt({510, 210});
    driver_.clickAt({590, 210});
    EXPECT_EQ(takeLog(), (Lines{"menu down", "sub down"})) << "a sub-menu is no loser of its parent's";
    manager().popUps().closeAll();
    // A window that was given the dialog as its context.
    manager().setModalContextGlob(other_, dialog_);
    driver_.click(inOther_);
    EXPECT_EQ(takeLog(), Lines{"other down"});
    manager().unsetModalContextGlob(other_);
    driver_.click(inOther_);
    EXPECT_EQ(takeLog(), Lines{});
}

TEST_F(Modal, OneOpenedFromAMenuBelongsToTheWindowBehindIt) {
    auto* const menu = new ProbeGlob(80, 60);
    PopUpOptions options;
    options.opener = inMain_;
    ASSERT_TRUE(manager().openPopUp(menu, options));
    menu->onMessage = [menu](LightweightString<char> const&, Glob*) { return delete menu, 1; };
    dialog_ = new RecordingParent(200, 100);
    ASSERT_TRUE(manager().addModalGlob(dialog_, menu));
    driver_.settle();
    EXPECT_FALSE(is_good_glob_ptr(menu)) << "a modal object closes the pop-ups";
    EXPECT_EQ(nativeOf(dialog_)->owner(), nativeOf(main_)->id());
    EXPECT_EQ(manager().modality().blockerOf(*main_), dialog_);
}

TEST_F(Modal, TheLatestOfSeveralCountsFirst) {
    openDialog();
    auto* const second = new RecordingParent(100, 60);
    ProbeGlob* const inSecond = probeIn(*second, "second");
    ASSERT_TRUE(manager().addModalGlob(second, dialog_));
    driver_.settle();
    driver_.click(inMain_);
    EXPECT_EQ(manager().modality().blockerOf(*main_), second);
    EXPECT_EQ(manager().modality().blockerOf(*dialog_), second);
    driver_.moveTo({310, 610});
    driver_.press();
    driver_.release();
    EXPECT_EQ(takeLog(), Lines{}) << "the first dialog is refused as well";
    driver_.click(inSecond);
    EXPECT_EQ(takeLog(), Lines{"second down"});
    delete main_;
    driver_.settle();
    EXPECT_FALSE(is_good_glob_ptr(dialog_)) << "a dialog goes with the window that it belongs to";
    EXPECT_FALSE(is_good_glob_ptr(second));
    driver_.click(inOther_);
    EXPECT_EQ(takeLog(), Lines{"other down"});
}

TEST_F(Modal, AChildKeepsInputFromTheRestOfItsWindowOnly) {
    auto* const panel = addTo(main_, new ProbeGlob(100, 100), BottomLeft(200, 100));
    ProbeGlob* const inPanel = probeIn(*panel, "panel");
    inMain_->claimKbdFocus();
    ASSERT_TRUE(manager().addModalGlob(panel, main_));
    driver_.click(inMain_);
    driver_.click(inPanel);
    driver_.click(inOther_);
    EXPECT_EQ(takeLog(), (Lines{"panel down", "other down"}));
    activate(main_);
    hear(*panel, "panel itself");
    driver_.key('a');
    EXPECT_EQ(takeLog(), Lines{"panel itself key"});
    inPanel->claimKbdFocus();
    driver_.key('a');
    EXPECT_EQ(takeLog(), Lines{"panel key"});
    panel->setVisible(false);
    driver_.click(inMain_);
    EXPECT_EQ(takeLog(), Lines{"main down"}) << "a hidden one keeps nobody from anything";
    panel->setVisible(true);
    manager().unsetModalContextGlob(panel);
    driver_.click(inMain_);
    EXPECT_EQ(takeLog(), Lines{"main down"});
}

TEST_F(Modal, RingsOfContextsAndDeadObjectsDoNoHarm) {
    manager().setModalContextGlob(main_, other_);
    manager().setModalContextGlob(other_, main_);
    openDialog();
    EXPECT_EQ(manager().modality().blockerOf(*main_), dialog_);
    manager().setModalContextGlob(main_, nullptr);
    expectDiagnostic("modal object refused");
    EXPECT_FALSE(manager().addModalGlob(nullptr, main_));
    inDialog_->onReact = [this](Event const& event) {
        if (mouse_down_event(event)) delete dialog_;
        return true;
    };
    driver_.click(inDialog_);
    EXPECT_EQ(manager().modality().blockerOf(*main_), nullptr);
    openDialog();
    manager().unsetModalContextGlob(dialog_);
    manager().addModalGlob(inMain_, inDialog_);
    delete dialog_;
    EXPECT_EQ(manager().modality().blockerOf(*main_), inMain_);
    delete inMain_;
    EXPECT_EQ(manager().modality().blockerOf(*main_), nullptr);
}

} // namespace
} // namespace wainscot
