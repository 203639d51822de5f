#include "tests/host_fixture.h"

#include "host/drawing/canvas_renderer.h"
#include "host/drawing/path.h"
#include "host/drawing/shapes.h"
#include "host/objects/inset.h"
#include "host/objects/painting_p.h"
#include "host/objects/surround.h"

#include <map>
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
    /// A pixel of the window, when everything has been painted.
    std::uint32_t at(int x, int y) {
        driver_.settle();
        return driver_.pixel(root_, {x, y});
    }
    /// The colours at some places: red, green, blue, the line of a surround, the ground of the window.
    std::string look(std::initializer_list<XY<int>> places) {
        std::string seen;
        std::map<std::uint32_t, char> const letters = {{red.getAsLong(), 'R'},
                                                       {green.getAsLong(), 'G'},
                                                       {blue.getAsLong(), 'B'},
                                                       {root_->getPalette().separator().getAsLong(), '|'},
                                                       {root_->getCol().getAsLong(), '.'}};
        for (auto const [x, y] : places) {
            auto const letter = letters.find(at(x, y));
            seen += letter == letters.end() ? '?' : letter->second;
        }
        return seen;
    }
};

TEST_F(Paint, OnlyWhatMeetsTheDamageIsVisitedOnceAndInOrder) {
    std::vector<ProbeGlob*> tiles;
    for (int i = 0; i < 400; ++i)
        tiles.push_back(
            coloured(root_, IntBox::sized({i % 20 * 20, i / 20 * 15}, {18, 13}), i % 2 ? red : green));
    // Lies over many tiles, and over many cells of the grid.
    ProbeGlob* const above = coloured(root_, {0, 0, 390, 13}, blue);
    std::uint64_t before = 0;
    auto const visitedFor = [&](std::initializer_list<std::size_t> damaged) {
        driver_.settle();
        before = Painting::numDrawn();
        for (std::size_t const tile : damaged) tiles[tile]->makeDirty();
        driver_.settle();
        return Painting::numDrawn() - before;
    };
    EXPECT_EQ(visitedFor({137}), 2u) << "the root and the tile";
    EXPECT_EQ(tiles[137]->drawn, 2);
    EXPECT_EQ(tiles[138]->drawn, 1);
    EXPECT_THAT(nativeOf(root_)->lastPresented(), ElementsAre(tiles[137]->box()));
    EXPECT_FALSE(tiles[137]->isDirty());
    EXPECT_EQ(visitedFor({0, 19, 399}), 5u) << "the root, three tiles and what lies above two of them";
    EXPECT_EQ(above->drawn, 2);
    EXPECT_EQ(look({{5, 5}, {385, 5}}), "BB") << "the later child lies above";
    root_->makeDirty();
    delete tiles[200];
    driver_.settle();
    EXPECT_EQ(Painting::numDrawn() - before, 5u + 1 + 400) << "all but the one that has gone";
    delete above;
    delete tiles[1];
    EXPECT_EQ(look({{25, 5}, {5, 5}}), ".G") << "the grid follows removals";
    root_->setWidgetPos(tiles[0], {20, 0});
    EXPECT_EQ(look({{25, 5}, {5, 5}}), "G.") << "and moves";
}

TEST_F(Paint, ChildrenAreClippedToTheirParentsAndLaterSiblingsLieAbove) {
    ProbeGlob* const parent = coloured(root_, IntBox(100, 100, 200, 200), red);
    ProbeGlob* const child = coloured(parent, IntBox(50, 50, 150, 150), green);
    ProbeGlob* const sibling = coloured(root_, IntBox(180, 100, 220, 140), blue);
    EXPECT_EQ(look({{149, 149}, {150, 150}, {199, 199}, {200, 200}, {190, 110}}), "RGG.B");
    parent->moveToTop();
    EXPECT_EQ(look({{190, 110}}), "R");
    parent->moveToBottom();
    child->setOpacity(0.5);
    EXPECT_EQ(look({{190, 110}}), "B");
    EXPECT_NEAR(static_cast<int>(at(160, 160) >> 16), 128, 2);
    child->setOpacity(0);
    sibling->unmapCanvas();
    EXPECT_EQ(look({{160, 160}, {210, 110}}), "R.");
}

TEST_F(Paint, HoldsDelayPaintingButLoseNoDamage) {
    ProbeGlob* const tile = coloured(root_, IntBox(10, 10, 50, 50), red);
    driver_.settle();
    {
        RedrawHold const outer;
        { RedrawHold const inner; }
        tile->setCol(green, true);
        Drawable::update();
        host_->loop().turn();
        EXPECT_EQ(tile->drawn, 1);
        EXPECT_TRUE(host_->loop().isIdle()) << "held damage is no reason to spin";
    }
    Drawable::update();
    EXPECT_EQ(tile->drawn, 2) << "painted at once";
    EXPECT_EQ(driver_.pixel(root_, {20, 20}), 0x00FF00u);
    tile->setCol(blue, true);
    Drawable::clearPendingRedraws();
    EXPECT_EQ(at(20, 20), 0x00FF00u);
    tile->makeDirty();
    EXPECT_EQ(at(20, 20), 0x0000FFu) << "what was dropped is damaged anew";
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
    coloured(tile, IntBox(0, 0, 10, 10), green);
    coloured(root_, IntBox(50, 50, 90, 90), green);
    driver_.settle();
    {
        CanvasRenderer renderer(tile->canvas(), tile->canvasArea());
        renderer.renderPrimitive(Glib::RectDescription(tile->bounds(), blue));
        renderer.addModifiedArea(tile->bounds());
    }
    EXPECT_EQ(driver_.pixel(root_, {30, 30}), 0x0000FFu);
    EXPECT_EQ(look({{30, 30}, {65, 65}, {15, 15}, {55, 55}}), "BGGG") << "clipped to its box";
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
    EXPECT_EQ(look({{20, 20}, {90, 90}, {70, 70}}), "BGR");
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
    auto const placeOf = [](Glob const* glob) { return XY<int>(glob->getX(), glob->getY()); };
    EXPECT_EQ(placeOf(caret), XY<int>(25, 25));
    EXPECT_EQ(placeOf(middle), XY<int>(20, 20));
    EXPECT_EQ(placeOf(owner), XY<int>(100, 100));
    EXPECT_EQ(look({{125, 125}, {128, 134}, {130, 125}}), "BBR") << "clipped to its own box";
    caret->setVisible(false);
    EXPECT_EQ(look({{125, 125}}), "R") << "what lies below comes back";
}

TEST_F(Paint, SurroundsLieOutsideTheBoxAndComeAndGoWithIt) {
    ProbeGlob* const tile = coloured(root_, IntBox(100, 100, 150, 150), red);
    coloured(root_, IntBox(152, 100, 180, 150), green);
    EXPECT_FALSE(tile->hasSurround());
    root_->setWidgetBorderStyle(tile, {WidgetSurround::Style::line, 3});
    EXPECT_TRUE(tile->hasSurround());
    // The later sibling lies above it.
    EXPECT_EQ(look({{98, 120}, {97, 97}, {151, 120}, {96, 120}, {152, 120}}), "|||.G");
    root_->setWidgetPos(tile, {200, 200});
    EXPECT_EQ(look({{98, 120}, {198, 220}}), ".|");
    tile->addSurround(Surround({WidgetSurround::Style::line, 2}, Surround::left));
    tile->addShadow(9, 0.5);
    EXPECT_EQ(look({{199, 220}, {220, 195}, {220, 180}}), "|?.") << "the shadow falls down";
    tile->addShadow(0, 0);
    EXPECT_EQ(look({{199, 220}, {220, 195}}), "|.");
    tile->setVisible(false);
    EXPECT_EQ(look({{199, 220}}), ".");
    tile->setVisible(true);
    EXPECT_EQ(look({{199, 220}}), "|");
    tile->removeSurround();
    EXPECT_EQ(look({{199, 220}, {220, 220}}), ".R");
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
        auto const light = [&](int x, int y) { return Colour::fromLong(at(x, y)).brightness(); };
        double const recessed = getIndentBoxColour(ground).brightness();
        EXPECT_TRUE(light(120, 129) < recessed && light(100, 115) < recessed) << "above and left is shade";
        EXPECT_TRUE(light(120, 100) > recessed && light(139, 115) > recessed) << "below and right is light";
        Colour const within = fill ? getIndentBoxColour(ground) : green;
        EXPECT_EQ(at(101, 101), within.getAsLong());
        EXPECT_EQ(at(138, 128), within.getAsLong());
        EXPECT_EQ(look({{99, 115}, {140, 115}, {120, 99}, {120, 130}}), "....");
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
    OffscreenWindow* const window = nativeOf(root);
    ProbeGlob* const corner = coloured(root, IntBox(0, 0, 20, 20), red);
    root->setWidgetDetails({corner, TopRight(0, 0), {}});
    auto const shownAt = [&](int x, int y) {
        driver_.settle();
        return window->pixelAt({x, y}) & 0xFFFFFF;
    };
    EXPECT_EQ(shownAt(190, 90), 0xFF0000u);
    driver_.resizeWindow(root, {300, 150});
    EXPECT_EQ(root->size(), XY<int>(300, 150));
    EXPECT_EQ(shownAt(290, 140), 0xFF0000u);
    EXPECT_EQ(XY<int>(root->oldWidth(), root->oldHeight()), XY<int>(200, 100));
    root->setMinSize(80, 60);
    root->resize(120, 80);
    EXPECT_EQ(shownAt(110, 70), 0xFF0000u);
    EXPECT_EQ(window->size(), XY<int>(120, 80));
    EXPECT_EQ(window->minSize(), XY<int>(80, 60));
    window->moveTo({5, 7});
    driver_.settle();
    EXPECT_EQ(root->screenBox().bottomLeft(), XY<int>(5, 7));
    root->setScreenPos({50, 60});
    driver_.settle();
    EXPECT_EQ(window->place(), XY<int>(50, 60));
    InputEvent hidden;
    hidden.kind = InputEvent::Kind::windowHidden;
    hidden.window = window->id();
    inject(hidden);
    std::uint64_t const presented = window->numPresented();
    corner->setCol(blue, true);
    EXPECT_TRUE(driver_.settle()) << "a hidden window has nothing to paint";
    EXPECT_EQ(window->numPresented(), presented);
    hidden.kind = InputEvent::Kind::windowShown;
    inject(hidden);
    EXPECT_EQ(shownAt(110, 70), 0x0000FFu);
}

TEST_F(Paint, SizesOfEveryKindAreSurvived) {
    ProbeGlob* const probe = coloured(root_, IntBox(0, 0, 10, 10), red);
    std::pair<double, int> const sizes[] = {{0, 0},      {-5, 0},          {1e300, 65535}, {std::nan(""), 0},
                                            {12.49, 12}, {65535.4, 65535}, {0.5, 1},       {70000, 65535}};
    for (auto const& [wanted, given] : sizes) {
        probe->resize(wanted, 3.4);
        driver_.settle();
        EXPECT_EQ(probe->size(), XY<int>(given, 3)) << wanted;
        probe->resize(2.5, wanted);
        driver_.settle();
        EXPECT_EQ(probe->size(), XY<int>(3, given)) << wanted;
    }
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

/// Random trees and random changes: after some of them, painting the damage gives the same pixels as painting
/// everything. Known damage is not added again, as long as it is still to be painted where it lies then.
TEST_F(Paint, DamageGivesTheSamePixelsAsAFullRepaint) {
    std::mt19937 random(11);
    auto const below = [&](int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); };
    auto const anyPlace = [&] { return XY<int>(below(180) - 20, below(130) - 20); };
    auto const anyColour = [&] { return Colour(below(256) / 255.0, below(256) / 255.0, below(256) / 255.0); };
    RecordingParent* const root = openWindow(200, 150);
    Surface& surface = host_->globManager().windowOf(root)->surface();
    auto const pixels = [&] {
        driver_.settle();
        return std::vector(surface.pixels(), surface.pixels() + surface.stride() * surface.deviceSize().y);
    };
    std::vector<Glob*> globs;
    auto const any = [&] { return globs.empty() ? root : globs[random() % globs.size()]; };
    for (int step = 0; step < 1800; ++step) {
        Glob* const some = any();
        int const what = below(11);
        if (what < 2)
            globs.push_back(coloured(globs.size() % 3 ? some : root,
                                     IntBox::sized(anyPlace(), {below(90), below(90)}), anyColour()));
        if (what == 2) some->setCol(anyColour(), true);
        if (what == 3) some->makeDirty();
        if (what == 4) below(2) ? some->moveToTop() : some->moveToBottom();
        if (some == root) continue;
        if (what == 5) some->parent()->setWidgetPos(some, anyPlace());
        if (what == 6) some->resize(below(100), below(100));
        if (what == 7) some->setVisible(!some->isVisible());
        if (what == 8) {
            if (below(2)) some->addShadow(below(3) * 6, 0.6);
            some->setOpacity(below(3) / 2.0);
            below(2) ? some->unmapCanvas() : some->mapCanvas();
        }
        if (what == 9) {
            // Into another parent, or below a sibling; a third of them share their parent's canvas.
            Glob* const other = any();
            if (other->mayTake(some)) other->addChild(some);
            some->parent()->addWidget(some, 5, 5, {}, {}, some->parent()->firstChild());
            auto* const sharer = new Glob(20, 20, Palette(), true, other->canvas());
            sharer->setCol(anyColour(), false);
            globs.push_back(addTo(some, sharer, BottomLeft(2, 2)));
        }
        if (what == 10 && below(3) == 0) {
            delete some;
            std::erase_if(globs, [](Glob* glob) { return !is_good_glob_ptr(glob); });
        }
        if (below(3)) continue;
        std::vector<std::uint32_t> const partly = pixels();
        surface.toPaint().add(surface.bounds());
        ASSERT_EQ(partly, pixels()) << "step " << step;
    }
}

} // namespace
} // namespace wainscot
