#include "tests/host_fixture.h"

#include "host/base/configb.h"
#include "host/objects/glob_notices.h"

namespace wainscot {
namespace {

class Placing : public OneWindowTest {
protected:
    static XY<int> cornerOf(Glob const* glob) { return glob->box().bottomLeft(); }
};

TEST_F(Placing, CornersAndEdgesHoldWhenTheParentIsResized) {
    struct Framed : RecordingParent {
        using RecordingParent::RecordingParent;
        IntBox getUserArea() const override { return {10, 20, width() - 30, height() - 40}; }
    };
    struct {
        WidgetPosition position;
        XY<int> at200x100, at300x200;
    } const cases[] = {
        {TopLeft(3, 4), {3, 76}, {3, 176}},
        {TopRight(3, 4), {157, 76}, {257, 176}},
        {BottomLeft(3, 4), {3, 4}, {3, 4}},
        {BottomRight(3, 4), {157, 4}, {257, 4}},
        {Centre(3, 4), {83, 44}, {133, 94}},
        {LeftCentre(3, 4), {3, 44}, {3, 94}},
        {RightCentre(3, 4), {157, 44}, {257, 94}},
        {UserTopLeft(3, 4), {13, 36}, {13, 136}},
        {UserTopRight(3, 4), {127, 36}, {227, 136}},
        {UserBottomLeft(3, 4), {13, 24}, {13, 24}},
        {UserBottomRight(3, 4), {127, 24}, {227, 24}},
    };
    auto* const parent = new Framed(200, 100);
    host_->globManager().realize(parent);
    for (auto const& c : cases) {
        auto* const child = new Glob(40, 20);
        parent->resize(200, 100);
        parent->addChild(child, c.position);
        EXPECT_EQ(cornerOf(child), c.at200x100);
        EXPECT_EQ(parent->getAbsRect({child, c.position, {}}).bottomLeft(), c.at200x100);
        parent->resize(300, 200);
        EXPECT_EQ(cornerOf(child), c.at300x200);
        parent->calcAbsoluteWidgetPositions();
        parent->resize(200, 100);
        EXPECT_EQ(cornerOf(child), c.at300x200) << "made absolute";
        delete child;
    }
}

TEST_F(Placing, SiblingsFollowEachOtherInAnyOrderAndRingsEnd) {
    auto* const first = addTo(root_, new Glob(100, 50), BottomLeft(50, 50));
    auto* const second = addTo(root_, new Glob(40, 20), Above(5, first, WidgetAlignment::end));
    auto* const third = addTo(root_, new Glob(20, 10), LeftOf(5, second, WidgetAlignment::centre));
    EXPECT_EQ(cornerOf(second), XY<int>(110, 105));
    EXPECT_EQ(cornerOf(third), XY<int>(85, 110));
    first->moveToTop();
    root_->setWidgetDetails({first, TopLeft(0, 0), {}});
    root_->positionChildWidgets();
    EXPECT_EQ(cornerOf(first), XY<int>(0, 250));
    EXPECT_EQ(cornerOf(second), XY<int>(60, 305));
    EXPECT_EQ(cornerOf(third), XY<int>(35, 310)) << "a chain whose first link comes last";
    EXPECT_NE(root_->addWidgetRelative(new Glob(10, 10), first, 3, WidgetRelativity::below), nullptr);
    EXPECT_EQ(cornerOf(root_->lastChild()), XY<int>(0, 237));
    root_->setWidgetDetails({first, RightOf(1, third), {}});
    driver_.resizeWindow(root_, {410, 310});
    EXPECT_EQ(root_->numChildren(), 4u) << "a ring of siblings ends";
    XY<int> const before = cornerOf(third);
    delete second;
    root_->positionChildWidgets();
    EXPECT_EQ(cornerOf(third), before) << "without its sibling it stays";
}

TEST_F(Placing, MovesAndChangesOfSizeAreNoticed) {
    auto* const probe = addTo(root_, new ProbeGlob, TopRight(0, 0));
    int moves = 0;
    auto const watch = GlobNotices::watchMoves(
        *probe, makeCallback<int, NotifyMsg>([&](NotifyMsg const&) { return ++moves; }));
    for (int i = 0; i < 2; ++i) root_->resize(500, 300);
    EXPECT_EQ(moves, 1);
    probe->resize(61, 40);
    EXPECT_EQ(moves, 2);
    root_->setWidgetPos(probe, {1, 1});
    EXPECT_EQ(moves, 3);
    EXPECT_EQ(probe->screenXYToGlobXY({111, 121}), XY<int>(10, 20));
    EXPECT_EQ(probe->globXYToScreenXY({10, 20}), XY<int>(111, 121));
}

TEST_F(Placing, DraggedObjectsFollowThePointerUntilTheRelease) {
    auto* const panel = addTo(root_, new ProbeGlob(300, 200), BottomLeft(10, 10));
    auto* const probe = addTo(panel, new ProbeGlob, BottomLeft(20, 20));
    probe->moveWhenPressed();
    driver_.press(probe);
    driver_.moveTo({probe->screenBox().centre() + XY<int>(30, 40)});
    EXPECT_TRUE(probe->isMoving());
    EXPECT_EQ(cornerOf(probe), XY<int>(50, 60));
    driver_.release();
    EXPECT_FALSE(probe->isMoving());
    driver_.moveTo({0, 0});
    EXPECT_EQ(cornerOf(probe), XY<int>(50, 60));
}

TEST_F(Placing, WalkersGoInTheirOrderAndEndWhenTold) {
    auto const add = [](Glob* parent, char const* name) {
        Glob* const glob = parent->addChild(new Glob(10, 10));
        glob->setName(name);
        return glob;
    };
    Glob *const a = add(root_, "a"), *const b = add(root_, "b"), *const c = add(root_, "c");
    Glob* const b1 = add(b, "b1");
    add(b, "b2");
    root_->setName("root");
    using Walk = void (Glob::*)(Glob::Visitor const&);
    struct {
        Glob* from;
        Walk walk;
        char const* names;
    } const walks[] = {{root_, &Glob::visitChildren, "a b c "},
                       {root_, &Glob::visitSubtree, "root a b b1 b2 c "},
                       {root_, &Glob::visitPostOrder, "a b1 b2 b c "},
                       {b1, &Glob::visitAncestors, "b root "},
                       {b, &Glob::visitSiblings, "a c "},
                       {c, &Glob::visitOlderSiblings, "a b "},
                       {a, &Glob::visitYoungerSiblings, "b c "}};
    std::string names;
    auto const collect = [&](Glob& glob) {
        names += std::string(glob.name()) + " ";
        return glob.name() != "c";
    };
    for (auto const& [from, walk, expected] : walks) {
        names.clear();
        (from->*walk)(collect);
        EXPECT_EQ(names, expected);
    }
    names.clear();
    root_->visitChildren([&](Glob& glob) {
        if (&glob == a) delete b;
        return collect(glob);
    });
    EXPECT_EQ(names, "a c ") << "the dead are skipped";
    EXPECT_EQ(root_->getWidget(static_cast<unsigned short>(1)), c);
    EXPECT_EQ(root_->getWidget(static_cast<unsigned short>(2)), nullptr);
    EXPECT_EQ(host_->globManager().find("c"), c);
    EXPECT_EQ(host_->globManager().find("b1"), nullptr);
}

TEST_F(Placing, TheNearestIsFoundAcrossWindows) {
    destroy(root_);
    RecordingParent* const first = openWindow(200, 200, {0, 0});
    RecordingParent* const second = openWindow(100, 100, {300, 0});
    auto* const asking = addTo(first, new Glob(20, 20), BottomLeft(180, 10));
    auto* const near = addTo(second, new Glob(20, 20), BottomLeft(0, 10));
    auto* const overlapping = addTo(first, new Glob(20, 20), BottomLeft(170, 5));
    EXPECT_EQ(glob_pseudo_distance(asking, near), 100.0);
    EXPECT_EQ(glob_pseudo_distance(asking, overlapping), -10.0);
    EXPECT_EQ(asking->findNearestGlob([](Glob*) { return true; }), overlapping);
    EXPECT_EQ(
        asking->findNearestGlob([](Glob* glob) { return glob->parent() && glob->screenBox().x1 >= 300; }),
        near);
    EXPECT_EQ(asking->findNearestGlob(nullptr), nullptr);
    EXPECT_EQ(walk_all_root_globs(nullptr), first);
    EXPECT_EQ(walk_all_root_globs(first), second);
    EXPECT_EQ(walk_all_root_globs(second), nullptr);
    EXPECT_EQ(walk_all_root_globs(near), nullptr);
}

TEST_F(Placing, SavedSettingsAndCreationRecordsMakeTheSameObject) {
    configb settings;
    EXPECT_TRUE(settings.isEmpty());
    settings.set("name", "saved");
    settings.set("x", 12);
    settings.set("y", -3);
    settings.set("active", false);
    settings.set("visible", 7);
    int number = 5;
    EXPECT_FALSE(settings.in("name", number));
    EXPECT_EQ(number, 5);
    Glob const saved(settings, 30, 40);
    EXPECT_EQ(saved.name(), "saved");
    EXPECT_EQ(cornerOf(&saved), XY<int>(12, -3));
    EXPECT_FALSE(saved.isActive());
    EXPECT_TRUE(saved.isVisible()) << "a value of another type is not taken";
    GlobCreationInfo info(30, 40);
    info.name = "made";
    info.opaque = false;
    Glob const made(GlobCreationInfo(info, 50, 60));
    EXPECT_EQ(made.size(), XY<int>(50, 60));
    EXPECT_EQ(made.name(), "made");
    EXPECT_FALSE(made.isOpaque());
}

} // namespace
} // namespace wainscot
