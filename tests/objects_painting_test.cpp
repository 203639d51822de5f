#include "tests/host_fixture.h"

#include "host/drawing/canvas_renderer.h"
#include "host/drawing/path.h"
#include "host/drawing/shapes.h"
#include "host/objects/inset.h"
#include "host/objects/painting_p.h"
#include "host/objects/surround.h"

#include <random>

namespace wainscot {
namespace {

Colour const red(1, 0, 0);
Colour const green(0, 1, 0);
Colour const blue(0, 0, 1);

class Paint : public OneWindowTest {
protected:
    ProbeGlob* coloured(Glob* parent, IntBox const& box, Colour const& colour) {
        auto* const probe = new ProbeGlob(box.width(), box.height());
        probe->setCol(colour, false);
        parent->addChild(probe, BottomLeft(box.x1, box.y1));
        return probe;
    }
    Surface& surfaceOf(Glob* root) { return host_->globManager().windowOf(root)->surface(); }
    /// A pixel of the window, when everything has been painted.
    std::uint32_t at(int x, int y) {
        driver_.settle();
        return driver_.pixel(root_, {x, y});
    }
};

TEST_F(Paint, OnlyWhatMeetsTheDamageIsVisited) {
    std::vector<ProbeGlob*> tiles;
    for (int i = 0; i < 400; ++i)
        tiles.push_back(
            coloured(root_, IntBox::sized({i % 20 * 20, i / 20 * 15}, {18, 13}), i % 2 ? red : green));
    driver_.settle();
    std::uint64_t const before = Painting::numDrawn();
    tiles[137]->makeDirty();
    driver_.settle();
    EXPECT_EQ(Painting::numDrawn() - before, 2u) << "the root and the tile";
    EXPECT_EQ(tiles[137]->drawn, 2);
    EXPECT_EQ(tiles[138]->drawn, 1);
    EXPECT_THAT(nativeOf(root_)->lastPresented(), ElementsAre(tiles[137]->box()));
    EXPECT_FALSE(tiles[137]->isDirty());
    delete tiles[1];
    EXPECT_EQ(at(25, 5), root_->getCol().getAsLong()) << "the grid follows removals";
    root_->setWidgetPos(tiles[0], {20, 0});
    EXPECT_EQ(at(25, 5), 0x00FF00u) << "and moves";
    EXPECT_EQ(at(5, 5), root_->getCol().getAsLong());
}

/// Known damage is not added again, as long as it is still to be painted.
TEST_F(Paint, WhatIsDamagedTwiceIsPaintedWhereItIsThen) {
    ProbeGlob* const panel = coloured(root_, IntBox(100, 100, 300, 250), red);
    ProbeGlob* const child = coloured(panel, IntBox(10, 10, 60, 60), green);
    using Deed = std::function<void()>;
    Deed const deeds[] = {
        [&] { Drawable::clearPendingRedraws(); },
        [&] { panel->setVisible(false), panel->setVisible(true); },
        [&] { panel->unmapCanvas(), child->makeDirty(), panel->mapCanvas(); },
        [&] {
            root_->setWidgetPos(panel, {80 + panel->getX() % 7, 90});
        },
        [&] {
            panel->setWidgetPos(child, {30, 20}), panel->setWidgetPos(child, {10, 10});
        },
        [&] { panel->resize(150, 150), panel->resize(200, 150); },
        [&] { child->resize(20, 20), child->resize(50, 50); },
        [&] { root_->addChild(panel->takeWidget(child)), panel->addChild(child, BottomLeft(10, 10)); },
        [&] { panel->moveToBottom(), child->moveToTop(); },
    };
    for (std::size_t i = 0; i < std::size(deeds); ++i) {
        driver_.settle();
        panel->makeDirty();
        child->makeDirty();
        deeds[i]();
        child->setCol(i % 2 ? green : blue, true);
        XY<int> const place = panel->box().bottomLeft() + XY<int>{30, 30};
        EXPECT_EQ(at(place.x, place.y), i % 2 ? 0x00FF00u : 0x0000FFu) << i;
        EXPECT_EQ(at(place.x + 100, place.y), 0xFF0000u) << i;
    }
}

TEST_F(Paint, SeveralDamagedPlacesVisitEachChildOnceAndInOrder) {
    std::vector<ProbeGlob*> tiles;
    for (int i = 0; i < 400; ++i)
        tiles.push_back(coloured(root_, IntBox::sized({i % 20 * 20, i / 20 * 15}, {18, 13}), red));
    // Lies over many tiles, and over many cells of the grid.
    ProbeGlob* const above = coloured(root_, {0, 0, 390, 13}, blue);
    driver_.settle();
    std::uint64_t const before = Painting::numDrawn();
    tiles[0]->makeDirty();
    tiles[19]->makeDirty();
    tiles[399]->makeDirty();
    driver_.settle();
    EXPECT_EQ(Painting::numDrawn() - before, 5u) << "the root, three tiles and what lies above two of them";
    EXPECT_EQ(above->drawn, 2);
    EXPECT_EQ(at(5, 5), 0x0000FFu) << "the later child lies above";
    EXPECT_EQ(at(385, 5), 0x0000FFu);
    root_->makeDirty();
    delete tiles[200];
    driver_.settle();
    EXPECT_EQ(Painting::numDrawn() - before, 5u + 1 + 400) << "all but the one that has gone";
}

TEST_F(Paint, ChildrenAreClippedToTheirParentsAndLaterSiblingsLieAbove) {
    ProbeGlob* const parent = coloured(root_, IntBox(100, 100, 200, 200), red);
    ProbeGlob* const child = coloured(parent, IntBox(50, 50, 150, 150), green);
    ProbeGlob* const sibling = coloured(root_, IntBox(180, 100, 220, 140), blue);
    EXPECT_EQ(at(149, 149), 0xFF0000u);
    EXPECT_EQ(at(150, 150), 0x00FF00u);
    EXPECT_EQ(at(199, 199), 0x00FF00u);
    EXPECT_EQ(at(200, 200), root_->getCol().getAsLong()) << "clipped";
    EXPECT_EQ(at(190, 110), 0x0000FFu);
    parent->moveToTop();
    EXPECT_EQ(at(190, 110), 0xFF0000u);
    parent->moveToBottom();
    child->setOpacity(0.5);
    EXPECT_EQ(at(190, 110), 0x0000FFu);
    EXPECT_NEAR(static_cast<int>(at(160, 160) >> 16), 128, 2);
    child->setOpacity(0);
    sibling->unmapCanvas();
    EXPECT_EQ(at(160, 160), 0xFF0000u);
    EXPECT_EQ(at(210, 110), root_->getCol().getAsLong());
}

TEST_F(Paint, HoldsDelayPaintingButLoseNoDamage) {
    ProbeGlob* const tile = coloured(root_, IntBox(10, 10, 50, 50), red);
    driver_.settle();
    int const drawn = tile->drawn;
    {
        RedrawHold const outer;
        {
            RedrawHold const inner;
            tile->setCol(green, true);
        }
        Drawable::update();
        host_->loop().turn();
        EXPECT_EQ(tile->drawn, drawn);
        EXPECT_TRUE(host_->loop().isIdle()) << "held damage is no reason to spin";
    }
    Drawable::update();
    EXPECT_EQ(tile->drawn, drawn + 1) << "painted at once";
    EXPECT_EQ(driver_.pixel(root_, {20, 20}), 0x00FF00u);
    tile->setCol(blue, true);
    Drawable::clearPendingRedraws();
    EXPECT_EQ(at(20, 20), 0x00FF00u);
}

TEST_F(Paint, ADeferrerOutlivesItsCanvasAndWindow) {
    ProbeGlob* const tile = coloured(root_, IntBox(10, 10, 50, 50), red);
    driver_.settle();
    RecordingParent* const other = openWindow(100, 100, {600, 100});
    ProbeGlob* const elsewhere = coloured(other, IntBox(10, 10, 50, 50), red);
    driver_.settle();
    {
        Glib::UpdateDeferrer const deferrer(tile->canvas());
        Glib::UpdateDeferrer const onNothing(nullptr);
        { Glib::UpdateDeferrer const inner(tile->canvas()); }
        tile->setCol(green, true);
        elsewhere->setCol(green, true);
        EXPECT_EQ(at(20, 20), 0xFF0000u);
        EXPECT_EQ(driver_.pixel(other, {20, 20}), 0x00FF00u) << "another window is not held";
        delete root_;
    }
    driver_.settle();
}

TEST_F(Paint, DrawingOutsideAVisitShowsAtOnceAndRepaintsWhatLiesAbove) {
    ProbeGlob* const tile = coloured(root_, IntBox(10, 10, 60, 60), red);
    ProbeGlob* const child = coloured(tile, IntBox(0, 0, 10, 10), green);
    ProbeGlob* const above = coloured(root_, IntBox(50, 50, 90, 90), green);
    driver_.settle();
    int const childDrawn = child->drawn;
    int const aboveDrawn = above->drawn;
    {
        CanvasRenderer renderer(tile->canvas(), tile->canvasArea());
        renderer.renderPrimitive(Glib::RectDescription(tile->bounds(), blue));
        renderer.addModifiedArea(tile->bounds());
    }
    EXPECT_EQ(driver_.pixel(root_, {30, 30}), 0x0000FFu);
    EXPECT_EQ(driver_.pixel(root_, {65, 65}), 0x00FF00u) << "clipped to its box";
    int const tileDrawn = tile->drawn;
    EXPECT_EQ(at(15, 15), 0x00FF00u);
    EXPECT_EQ(at(55, 55), 0x00FF00u);
    EXPECT_GT(child->drawn, childDrawn);
    EXPECT_GT(above->drawn, aboveDrawn);
    EXPECT_GE(tile->drawn, tileDrawn);
    EXPECT_EQ(nativeOf(root_)->pixelAt({30, 30}) & 0xFFFFFF, 0x0000FFu) << "it reached the screen";
    tile->makeDirty();
    EXPECT_EQ(at(30, 30), 0xFF0000u) << "the next drawing overwrites it";
    tile->setVisible(false);
    CanvasRenderer hidden(tile->canvas(), tile->bounds());
    EXPECT_FALSE(hidden.isDrawing());
    Glob loose(20, 20);
    CanvasRenderer nowhere(loose.canvas(), loose.bounds());
    nowhere.renderPrimitive(Glib::RectDescription(loose.bounds(), blue));
    EXPECT_FALSE(nowhere.isDrawing());
}

TEST_F(Paint, DrawWidgetsPutsTheRestOfADrawingAboveTheChildren) {
    expectDiagnostic("children drawn outside draw()");
    ProbeGlob* const parent = coloured(root_, IntBox(0, 0, 100, 100), red);
    ProbeGlob* const child = coloured(parent, IntBox(0, 0, 100, 100), green);
    ProbeGlob* const grandchild = coloured(child, IntBox(60, 60, 80, 80), red);
    parent->onDraw = [&] {
        parent->Glob::draw();
        parent->drawWidgets();
        CanvasRenderer renderer(parent->canvas(), parent->canvasArea());
        renderer.renderPrimitive(Glib::RectDescription(IntBox(0, 0, 50, 50), blue));
    };
    EXPECT_EQ(at(20, 20), 0x0000FFu);
    EXPECT_EQ(at(90, 90), 0x00FF00u);
    EXPECT_EQ(at(70, 70), 0xFF0000u);
    EXPECT_EQ(child->drawn, 1) << "and only once";
    EXPECT_EQ(grandchild->drawn, 1);
    parent->drawWidgets();
    EXPECT_EQ(child->drawn, 1);
}

TEST_F(Paint, AChildThatSharesACanvasDrawsInItsOwnersCoordinates) {
    ProbeGlob* const owner = coloured(root_, IntBox(100, 100, 200, 200), red);
    auto* const middle =
        addTo(owner, new Glob(50, 50, Palette(), false, owner->canvas()), BottomLeft(20, 20));
    struct Sharing : Glob {
        using Glob::Glob;
        void draw() override {
            CanvasRenderer renderer(canvas(), canvasArea());
            renderer.renderPrimitive(Glib::RectDescription(canvasArea().inset(-30), blue));
        }
    };
    auto* const caret = addTo(middle, new Sharing(4, 10, Palette(), true, owner->canvas()), BottomLeft(5, 5));
    driver_.settle();
    EXPECT_FALSE(caret->ownsCanvas());
    EXPECT_EQ(XY<int>(caret->getX(), caret->getY()), XY<int>(25, 25));
    EXPECT_EQ(XY<int>(middle->getX(), middle->getY()), XY<int>(20, 20));
    EXPECT_EQ(XY<int>(owner->getX(), owner->getY()), XY<int>(100, 100));
    EXPECT_EQ(at(125, 125), 0x0000FFu);
    EXPECT_EQ(at(128, 134), 0x0000FFu);
    EXPECT_EQ(at(130, 125), 0xFF0000u) << "clipped to its own box";
    caret->setVisible(false);
    EXPECT_EQ(at(125, 125), 0xFF0000u) << "what lies below comes back";
}

TEST_F(Paint, SurroundsLieOutsideTheBoxAndComeAndGoWithIt) {
    ProbeGlob* const tile = coloured(root_, IntBox(100, 100, 150, 150), red);
    ProbeGlob* const above = coloured(root_, IntBox(152, 100, 180, 150), green);
    driver_.settle();
    std::uint32_t const ground = root_->getCol().getAsLong();
    std::uint32_t const line = tile->getPalette().separator().getAsLong();
    EXPECT_FALSE(tile->hasSurround());
    root_->setWidgetBorderStyle(tile, {WidgetSurround::Style::line, 3});
    driver_.settle();
    EXPECT_TRUE(tile->hasSurround());
    EXPECT_EQ(at(98, 120), line);
    EXPECT_EQ(at(97, 97), line);
    EXPECT_EQ(at(96, 120), ground);
    EXPECT_EQ(at(151, 120), line);
    EXPECT_EQ(at(152, 120), 0x00FF00u) << "below the later sibling";
    root_->setWidgetPos(tile, {200, 200});
    EXPECT_EQ(at(98, 120), ground);
    EXPECT_EQ(at(198, 220), line);
    tile->addSurround(Surround({WidgetSurround::Style::line, 2}, Surround::left));
    tile->addShadow(9, 0.5);
    EXPECT_EQ(at(199, 220), line);
    EXPECT_NE(at(220, 195), ground) << "the shadow falls down";
    EXPECT_NE(at(220, 195), line);
    EXPECT_EQ(at(220, 180), ground);
    tile->addShadow(0, 0);
    EXPECT_EQ(at(220, 195), ground);
    tile->setVisible(false);
    EXPECT_EQ(at(199, 220), ground);
    tile->setVisible(true);
    tile->removeSurround();
    EXPECT_EQ(at(199, 220), ground);
    EXPECT_EQ(at(220, 220), 0xFF0000u);
    EXPECT_FALSE(above->hasSurround());
}

TEST_F(Paint, AnInsetIsSunkenWithinTheBoxAndLeavesTheRestAlone) {
    Colour const ground(0.5, 0.5, 0.5);
    for (bool const fill : {true, false}) {
        ProbeGlob* const probe = coloured(root_, IntBox(100, 100, 140, 130), green);
        probe->onDraw = [probe, &ground, fill] {
            probe->drawBackground();
            drawInset(probe, ground, fill);
        };
        driver_.settle();
        auto const brightness = [&](int x, int y) { return Colour::fromLong(at(x, y)).brightness(); };
        double const recessed = getIndentBoxColour(ground).brightness();
        EXPECT_LT(brightness(120, 129), recessed) << "the upper edge lies in the shade";
        EXPECT_LT(brightness(100, 115), recessed);
        EXPECT_GT(brightness(120, 100), recessed) << "the lower one in the light";
        EXPECT_GT(brightness(139, 115), recessed);
        Colour const within = fill ? getIndentBoxColour(ground) : green;
        EXPECT_EQ(at(101, 101), within.getAsLong());
        EXPECT_EQ(at(138, 128), within.getAsLong());
        for (XY<int> const outside :
             {XY<int>(99, 115), XY<int>(140, 115), XY<int>(120, 99), XY<int>(120, 130)})
            EXPECT_EQ(at(outside.x, outside.y), root_->getCol().getAsLong());
        destroy(probe);
        driver_.settle();
        drawInset(probe, ground, fill);
    }
    drawInset(nullptr, ground, true);
    EXPECT_EQ(at(120, 115), root_->getCol().getAsLong()) << "nothing is drawn for the dead";
}

TEST_F(Paint, TheRootCanvasIsThatOfTheActiveWindowUntilItGoes) {
    destroy(root_);
    EXPECT_EQ(glib_rootcanvas(), nullptr);
    RecordingParent* const left = openWindow(200, 200, {0, 0});
    EXPECT_EQ(glib_rootcanvas(), left->canvas());
    RecordingParent* const right = openWindow(200, 200, {300, 0});
    EXPECT_EQ(glib_rootcanvas(), right->canvas()) << "a new window becomes the active one";
    activate(left);
    EXPECT_EQ(glib_rootcanvas(), left->canvas());
    deactivate();
    EXPECT_EQ(glib_rootcanvas(), left->canvas()) << "the last active one while none is";
    right->setCanBeIt(false);
    activate(right);
    EXPECT_EQ(glib_rootcanvas(), left->canvas());
    {
        DispatchScope const keepsTheMemory;
        destroy(left);
        EXPECT_EQ(glib_rootcanvas(), nullptr) << "at once, not with the memory";
    }
    delete right;
    EXPECT_EQ(glib_rootcanvas(), nullptr);
}

TEST_F(Paint, AWindowFollowsItsRootAndTheOtherWayRound) {
    RecordingParent* const root = openWindow(200, 100);
    ProbeGlob* const corner = coloured(root, IntBox(0, 0, 20, 20), red);
    root->setWidgetDetails({corner, TopRight(0, 0), {}});
    driver_.settle();
    EXPECT_EQ(driver_.pixel(root, {190, 90}), 0xFF0000u);
    driver_.resizeWindow(root, {300, 150});
    EXPECT_EQ(root->size(), XY<int>(300, 150));
    EXPECT_EQ(driver_.pixel(root, {290, 140}), 0xFF0000u);
    EXPECT_EQ(XY<int>(root->oldWidth(), root->oldHeight()), XY<int>(200, 100));
    root->setMinSize(80, 60);
    root->resize(120, 80);
    driver_.settle();
    EXPECT_EQ(nativeOf(root)->size(), XY<int>(120, 80));
    EXPECT_EQ(nativeOf(root)->minSize(), XY<int>(80, 60));
    EXPECT_EQ(nativeOf(root)->pixelAt({110, 70}) & 0xFFFFFF, 0xFF0000u);
    nativeOf(root)->moveTo({5, 7});
    driver_.settle();
    EXPECT_EQ(root->screenBox().bottomLeft(), XY<int>(5, 7));
    root->setScreenPos({50, 60});
    driver_.settle();
    EXPECT_EQ(nativeOf(root)->place(), XY<int>(50, 60));
    InputEvent hidden;
    hidden.kind = InputEvent::Kind::windowHidden;
    hidden.window = nativeOf(root)->id();
    inject(hidden);
    std::uint64_t const presented = nativeOf(root)->numPresented();
    corner->setCol(blue, true);
    EXPECT_TRUE(driver_.settle()) << "a hidden window has nothing to paint";
    EXPECT_EQ(nativeOf(root)->numPresented(), presented);
    hidden.kind = InputEvent::Kind::windowShown;
    inject(hidden);
    EXPECT_EQ(nativeOf(root)->pixelAt({110, 70}) & 0xFFFFFF, 0x0000FFu);
}

TEST_F(Paint, SizesOfEveryKindAreSurvived) {
    ProbeGlob* const probe = coloured(root_, IntBox(0, 0, 10, 10), red);
    std::vector<std::pair<double, int>> const sizes = {{0.0, 0},          {-5.0, 0},       {1e300, 65535},
                                                       {std::nan(""), 0}, {12.49, 12},     {65535.4, 65535},
                                                       {0.5, 1},          {70000.0, 65535}};
    for (auto const& [wanted, given] : sizes) {
        probe->resize(wanted, wanted);
        driver_.settle();
        EXPECT_EQ(probe->size(), XY<int>(given, given)) << wanted;
    }
    probe->resize(2.5, 3.4);
    EXPECT_EQ(probe->size(), XY<int>(3, 3));
    root_->setWidgetPos(probe, {2147483647, -2147483647});
    driver_.settle();
    for (XY<int> size : {XY<int>(0, 0), XY<int>(-3, 10), XY<int>(70000, 5)}) {
        driver_.resizeWindow(root_, size);
        EXPECT_TRUE(is_good_glob_ptr(root_));
    }
    auto* const empty = new Glob(0, 0);
    EXPECT_TRUE(host_->globManager().realize(empty));
    driver_.settle();
}

/// Random trees and random changes: after each, painting the damage gives the same pixels as painting
/// everything.
TEST_F(Paint, DamageGivesTheSamePixelsAsAFullRepaint) {
    std::mt19937 random(11);
    auto const below = [&](int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); };
    RecordingParent* const root = openWindow(200, 150);
    std::vector<Glob*> globs;
    for (int step = 0; step < 600; ++step) {
        Glob* const some =
            globs.empty() ? root : globs[static_cast<std::size_t>(below(static_cast<int>(globs.size())))];
        switch (below(10)) {
        case 0:
        case 1: {
            Colour const colour(below(256) / 255.0, below(256) / 255.0, below(256) / 255.0);
            IntBox const box = IntBox::sized({below(180) - 20, below(130) - 20}, {below(90), below(90)});
            globs.push_back(coloured(globs.size() % 3 ? some : root, box, colour));
            break;
        }
        case 2:
            if (some->parent()) some->parent()->setWidgetPos(some, {below(180) - 20, below(130) - 20});
            break;
        case 3:
            if (some != root) some->resize(below(100), below(100));
            break;
        case 4:
            if (some != root) some->setVisible(!some->isVisible());
            break;
        case 5:
            if (below(2))
                some->moveToTop();
            else
                some->moveToBottom();
            break;
        case 6:
            if (some != root && below(2)) some->addShadow(below(3) * 6, 0.6);
            if (some != root) some->setOpacity(below(3) / 2.0);
            break;
        case 7:
            if (some != root && below(2))
                some->unmapCanvas();
            else
                some->mapCanvas();
            break;
        case 8: {
            // Into another parent, or below a sibling; a third of them share their parent's canvas.
            Glob* const other =
                globs.empty() ? root : globs[static_cast<std::size_t>(below(100)) % globs.size()];
            if (some != root && other->mayTake(some)) other->addChild(some);
            if (some->parent()) some->parent()->addWidget(some, 5, 5, {}, {}, some->parent()->firstChild());
            auto* const sharer = new Glob(20, 20, Palette(), true, other->canvas());
            sharer->setCol(Colour(below(256) / 255.0, 0.5, 0.2), false);
            globs.push_back(addTo(some, sharer, BottomLeft(2, 2)));
            break;
        }
        default:
            if (some != root && below(3) == 0) {
                delete some;
                std::erase_if(globs, [](Glob* glob) { return !is_good_glob_ptr(glob); });
            }
        }
        driver_.settle();
        Surface& surface = surfaceOf(root);
        auto const count = static_cast<std::size_t>(surface.stride() * surface.deviceSize().y);
        std::vector<std::uint32_t> const partly(surface.pixels(), surface.pixels() + count);
        surface.toPaint().add(surface.bounds());
        driver_.settle();
        std::vector<std::uint32_t> const whole(surface.pixels(), surface.pixels() + count);
        ASSERT_EQ(partly, whole) << "step " << step;
    }
}

} // namespace
} // namespace wainscot
