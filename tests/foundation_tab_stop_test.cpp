#include "foundation/glob_tab_stop.h"
#include "foundation/tab_order_geometry.h"
#include "host/objects/kbd_focus.h"
#include "tests/host_fixture.h"

namespace wainscot {
namespace {

constexpr unsigned int noTabStop = TabOrderManager::noTabStop;

/// A widget that is a stop itself.
class StopGlob : public ProbeGlob, public TabOrderable {
public:
    using ProbeGlob::ProbeGlob;
    bool isTabStopActive() override { return isShown(); }
};

/// What a panel is, and what a control that is a panel is: names of the bases must not get into each other's
/// way.
class StopPanel : public ProbeGlob, public TabOrderManager, public TabOrderable {
public:
    StopPanel() : ProbeGlob(100, 50), TabOrderManager(false) {}
    using TabOrderable::isTabStopFocus;
    using TabOrderable::setTabStopFocus;
    bool isTabStopActive() override { return isActive() && isShown() && !bounds().isEmpty(); }
};

using GlobTabStopTest = OneWindowTest;

TEST_F(GlobTabStopTest, PanelsMayBeStopsOfPanels) {
    auto* const outer = root_->addChild(std::make_unique<StopPanel>());
    auto* const inner = outer->addChild(std::make_unique<StopPanel>());
    EXPECT_TRUE(outer->addTabStop(*inner));
    EXPECT_EQ(inner->incrementTabStop(), noTabStop) << "it has no stops of its own";
    EXPECT_EQ(outer->incrementTabStop(), 0u);
    EXPECT_TRUE(inner->isTabStopFocus());
    delete outer;
}

TEST_F(GlobTabStopTest, GivesTheWidgetTheKeyboardFocus) {
    auto* const slider = root_->addChild(std::make_unique<ProbeGlob>(60, 20, &log_, "slider"));
    auto* const table = root_->addChild(std::make_unique<ProbeGlob>(60, 20, &log_, "table"));
    slider->onReact = [&](Event const& event) {
        if (isKeyPressEvent(event)) log_.push_back("key " + std::to_string(event.keyCode()));
        return false;
    };
    GlobTabStop first(*slider), second(*table);
    TabOrderManager manager(false);
    manager.addTabStop(first);
    manager.addTabStop(second);
    EXPECT_EQ(manager.incrementTabStop(), 0u);
    driver_.key(Key::left);
    EXPECT_EQ(manager.incrementTabStop(), 1u);
    EXPECT_EQ(log_, (std::vector<std::string>{"slider gained", "key " + std::to_string(int(Key::left)),
                                              "slider lost", "table gained"}));
    // Again on the same one: its own loss does not take the focus away.
    EXPECT_TRUE(second.setTabStopFocus());
    EXPECT_EQ(get_kbd_focus(), table);
    second.relinquishTabStopFocus();
    EXPECT_EQ(get_kbd_focus(), root_);
}

TEST_F(GlobTabStopTest, IsActiveOnlyWhileTheWidgetIs) {
    auto* const slider = root_->addChild(std::make_unique<ProbeGlob>());
    GlobTabStop stop(*slider);
    TabOrderManager manager(false);
    manager.addTabStop(stop);
    slider->setActive(false);
    EXPECT_EQ(manager.incrementTabStop(), noTabStop);
    slider->setActive(true);
    slider->setVisible(false);
    EXPECT_EQ(manager.incrementTabStop(), noTabStop);
    slider->setVisible(true);
    EXPECT_EQ(manager.incrementTabStop(), 0u);
    delete slider;
    EXPECT_EQ(stop.widget(), nullptr);
    EXPECT_EQ(manager.numTabStops(), 0u);
    EXPECT_EQ(manager.getCurrentTabStopIndex(), noTabStop);
    EXPECT_FALSE(stop.isTabStopActive());
}

/// A panel that keeps the keyboard focus and passes keys on.
TEST_F(GlobTabStopTest, PassesKeysOnOnce) {
    auto* const panel = root_->addChild(std::make_unique<ProbeGlob>(200, 100));
    auto* slider = panel->addChild(std::make_unique<ProbeGlob>());
    auto stop = std::make_unique<GlobTabStop>(*slider);
    TabOrderManager manager(false);
    manager.addTabStop(*stop);
    int seen = 0, passed = 0;
    bool consumes = false;
    panel->onReact = [&](Event const& event) {
        if (!isKeyPressEvent(event)) return false;
        bool const taken = stop && stop->passKey(event);
        passed += taken;
        return taken;
    };
    slider->onReact = [&](Event const& event) {
        seen += isKeyPressEvent(event);
        return consumes || slider->Glob::react(event);
    };
    set_kbd_focus(panel);
    driver_.key(Key::left);
    EXPECT_EQ(seen, 0) << "it is not the current stop";
    manager.setTabStopFocus(0);
    set_kbd_focus(panel);
    driver_.key(Key::left);
    consumes = true;
    driver_.key(Key::left);
    EXPECT_EQ(seen, 2);
    EXPECT_EQ(passed, 1);
    // With the focus it has had the key already.
    slider->claimKbdFocus();
    consumes = false;
    driver_.key(Key::left);
    EXPECT_EQ(seen, 3);
    set_kbd_focus(panel);
    slider->onReact = [&](Event const&) {
        stop.reset();
        delete std::exchange(slider, nullptr);
        return true;
    };
    driver_.key(Key::left);
    EXPECT_EQ(passed, 2);
}

class TabOrderGeometryTest : public HostTest {
protected:
    StopGlob* place(int x, int y, int width = 60, int height = 20) {
        auto* const glob = new StopGlob(width, height);
        if (!root) root = openWindow(600, 400);
        root->addWidget(glob, x, y);
        manager.addTabStop(*glob);
        return glob;
    }
    std::vector<unsigned int> orders() {
        std::vector<unsigned int> all;
        for (unsigned int i = 0; i < manager.numTabStops(); ++i) all.push_back(manager.getTabStopTabOrder(i));
        return all;
    }

    RecordingParent* root = nullptr;
    TabOrderManager manager{false};
};

using Indices = std::vector<unsigned int>;

TEST_F(TabOrderGeometryTest, ReadsRowsThenColumns) {
    place(100, 200);
    place(10, 203); // a little higher, but in the same row
    place(200, 150);
    place(10, 150);
    EXPECT_EQ(TabOrderGeometry::readingOrder(manager), (Indices{1, 0, 3, 2}));
    EXPECT_EQ(TabOrderGeometry::readingOrder(manager, eReadingDirection::rightToLeft), (Indices{0, 1, 2, 3}));
    TabOrderGeometry::arrange(manager);
    EXPECT_EQ(orders(), (Indices{1, 0, 3, 2}));
}

TEST_F(TabOrderGeometryTest, TallOneBesideTwoRows) {
    place(150, 100);        // lower right
    place(80, 100);         // lower left
    place(150, 150);        // upper right
    place(80, 150);         // upper left
    place(10, 100, 60, 80); // tall, left of all
    GlobTabStop const* const companion = new GlobTabStop(*root->addWidget(new ProbeGlob(), 10, 10));
    manager.addTabStop(const_cast<GlobTabStop&>(*companion), 0);
    struct Unseen : TabOrderable {
        bool isTabStopActive() override { return true; }
    } unseen;
    manager.addTabStop(unseen, 0);
    EXPECT_EQ(TabOrderGeometry::readingOrder(manager), (Indices{4, 3, 2, 1, 0, 5}));
    TabOrderGeometry::arrange(manager);
    EXPECT_EQ(orders(), (Indices{4, 3, 2, 1, 0, 5, 6})) << "what is not on the screen comes last";
    delete companion;
}

TEST_F(TabOrderGeometryTest, ReportsTheFewestThatDisagree) {
    for (int i = 0; i < 6; ++i) place(10, 300 - 40 * i);
    EXPECT_TRUE(TabOrderGeometry::misplacedStops(manager).empty());
    EXPECT_EQ(TabOrderGeometry::report(manager), 0u);
    manager.setTabOrder(1u, 9);
    EXPECT_EQ(TabOrderGeometry::misplacedStops(manager), (Indices{1}));
    expectDiagnostic("tab order disagrees with the screen");
    EXPECT_EQ(TabOrderGeometry::report(manager), 1u);
    EXPECT_EQ(Diagnostics::countOf("tab order disagrees with the screen"), 1u);
    TabOrderGeometry::widgetOf(manager.getTabStopObject(1))->setVisible(false);
    EXPECT_EQ(TabOrderGeometry::report(manager), 0u);
}

} // namespace
} // namespace wainscot
