#include "host/drawing/uif_std.h"
#include "tests/gallery_window.h"

#include <gmock/gmock.h>

using namespace wainscot;
using namespace std::chrono_literals;

namespace {

/// Pop-ups of the gallery on a real screen.
class WindowPopUp : public GalleryWindow {
protected:
    void SetUp() override {
        GalleryWindow::SetUp();
        open("windows", {640, 500});
        // Away from the places of the other windows.
        bench_.xdotool({"windowmove", std::to_string(window_), "20", "60"});
        ASSERT_TRUE(bench_.settle());
        openPopUps_ = areaOf("button \"Open pop-ups\"");
        openWindow_ = areaOf("button \"Open a window\"").middle();
        ASSERT_TRUE(bench_.movePointer(at({600, 300})));
    }
    void TearDown() override {
        GalleryWindow::TearDown();
        bench_.requestClose(window_);
        EXPECT_EQ(gallery_->waitForExit(), 0) << bench_.errors();
    }

    /// Left of the opener's label, where its face is plain.
    XY<int> openersFace() const { return openPopUps_.corner + XY<int>{10, openPopUps_.size.y / 2}; }
    XY<int> opener() { return at(openPopUps_.middle()); }
    /// A row of the pop-up of a level, counted from 0; right after another, as they open.
    XY<int> row(int level, int number) {
        return at(openPopUps_.corner +
                  XY<int>{20 + (144 + gap_) * (level - 1), openPopUps_.size.y + 12 + 24 * number});
    }
    void openTwo() {
        clickAt(opener());
        popUps_[0] = bench_.findWindow("level 1");
        ASSERT_NE(popUps_[0], 0u);
        clickAt(row(1, 0));
        expectLines({"level 1  chosen  Open the next level"});
        popUps_[1] = bench_.findWindow("level 2");
        ASSERT_NE(popUps_[1], 0u);
    }
    /// Another program with a window; this one is the active one again.
    std::unique_ptr<ChildProcess> startOther() {
        auto other = bench_.start({"desktop-probe", WindowBench::besideTests("../lib/libwainscot-desktop.so"),
                                   "--size", "120", "60", "--place", "860", "40"});
        EXPECT_FALSE(other->waitForLine("activated").empty());
        bench_.activate(window_);
        EXPECT_TRUE(waitUntil([&] { return bench_.isActive(window_); }));
        EXPECT_FALSE(other->waitForLine("deactivated").empty());
        return other;
    }

    std::uint32_t const faceColour = Palette::standard(eThemeDark).button().getAsLong();
    int const gap_ = static_cast<int>(UifStd::Metrics().widgetGap);
    Area openPopUps_;
    XY<int> openWindow_;
    WindowBench::WindowId popUps_[2] = {};
};

} // namespace

TEST_F(WindowPopUp, LieWhereTheyWerePutAndTakeNoFocus) {
    openTwo();
    EXPECT_EQ(bench_.placeOf(popUps_[0]) - bench_.placeOf(window_),
              (openPopUps_.corner + XY<int>{-1, openPopUps_.size.y - 1}))
        << "with its edge";
    EXPECT_EQ(bench_.sizeOf(popUps_[0]), (XY<int>{146, 98}));
    EXPECT_EQ(bench_.placeOf(popUps_[1]) - bench_.placeOf(popUps_[0]), (XY<int>{144 + gap_, 0}));
    EXPECT_TRUE(bench_.isActive(window_));
    clickAt(row(2, 1));
    expectLines({"level 2  chosen  Choose 1", "level 2  closes", "level 1  closes"});
    expectNothingOf("unfocused");
}

TEST_F(WindowPopUp, APressElsewhereInTheProgramClosesThemAndIsSpent) {
    openTwo();
    clickAt(at(openWindow_));
    expectLines({"level 2  closes", "level 1  closes"});
    clickAt(opener());
    expectLines({"pressed  Open pop-ups"});
    expectNothingOf("pressed  Open a window");
    WindowBench::WindowId const popUp = bench_.findWindow("level 1");
    ASSERT_NE(popUp, 0u);
    clickAt(opener());
    EXPECT_TRUE(waitUntil([&] { return !bench_.isViewable(popUp); }))
        << "the opener heard of it and closed it";
}

TEST_F(WindowPopUp, APressOnAnotherProgramClosesThemAndIsSpent) {
    auto const other = startOther();
    WindowBench::WindowId const otherWindow = bench_.findWindow("probe");
    ASSERT_NE(otherWindow, 0u);
    openTwo();
    XY<int> const onOther = bench_.placeOf(otherWindow) + XY<int>{60, 30};
    clickAt(onOther);
    expectLines({"level 2  closes", "level 1  closes"});
    EXPECT_TRUE(bench_.isActive(window_)) << "the other program was not told";
    // A busy program holds the pointer until it has seen the release.
    ASSERT_TRUE(bench_.waitForFreePointer());
    clickAt(onOther);
    EXPECT_FALSE(other->waitForLine("pressed").empty());
    EXPECT_FALSE(other->waitForLine("released").empty());
    other->send("quit");
    other->waitForExit();
    int presses = 0;
    for (std::string const& line : other->lines()) presses += line.rfind("pressed", 0) == 0;
    EXPECT_EQ(presses, 1);
}

TEST_F(WindowPopUp, EscapeClosesTheLast) {
    openTwo();
    bench_.key({"Escape"});
    expectLines({"level 2  closes"});
    EXPECT_TRUE(bench_.isViewable(popUps_[0]));
    bench_.key({"Escape"});
    expectLines({"level 1  closes"});
}

TEST_F(WindowPopUp, DeactivationAndMovingTheWindowCloseAll) {
    auto const other = startOther();
    WindowBench::WindowId const otherWindow = bench_.findWindow("probe");
    openTwo();
    bench_.activate(otherWindow);
    expectLines({"level 2  closes", "level 1  closes"});
    bench_.activate(window_);
    ASSERT_TRUE(waitUntil([&] { return bench_.isActive(window_); }));
    other->send("quit");
    other->waitForExit();
    openTwo();
    bench_.xdotool({"windowmove", std::to_string(window_), "10", "60"});
    expectLines({"level 2  closes", "level 1  closes"});
}

TEST_F(WindowPopUp, APressIsDraggedOntoAPopUpAndLetGoThere) {
    bench_.movePointer(opener());
    bench_.pressButton();
    ASSERT_NE(bench_.findWindow("level 1"), 0u);
    bench_.glidePointer(opener(), row(1, 2));
    bench_.releaseButton();
    expectLines({"level 1  chosen  Choose 2", "level 1  closes"});
}

TEST_F(WindowPopUp, AModalWindowKeepsItsOwnerAndGoesWithIt) {
    clickOn("button \"Open a modal window\"");
    WindowBench::WindowId const modal = bench_.findWindow("Modal window");
    ASSERT_NE(modal, 0u);
    ASSERT_TRUE(waitUntil([&] { return bench_.isActive(modal); }));
    clickAt(at(openWindow_));
    EXPECT_TRUE(waitUntil([&] { return bench_.isActive(modal); })) << "the press brought it back";
    XY<int> const middle = bench_.sizeOf(modal);
    clickAt(bench_.placeOf(modal) + XY<int>{middle.x / 2, middle.y / 2});
    expectLines({"Modal window  poot"});
    expectNothingOf("pressed  Open a window");
    ASSERT_TRUE(waitUntil([&] { return bench_.isActive(window_); }));
    clickAt(at(openWindow_));
    expectLines({"clicked  Open a window"});
    WindowBench::WindowId const second = bench_.findWindow("Another window");
    ASSERT_NE(second, 0u);
    bench_.requestClose(second);
    expectLines({"Another window  poot"});
}

TEST_F(WindowPopUp, HaveTransparentRoomForTheirShadowWhereThereIsACompositor) {
    EXPECT_EQ(bench_.depthOf(window_), 24);
    bench_.pretendCompositor();
    clickAt(opener());
    WindowBench::WindowId const popUp = bench_.findWindow("level 1");
    ASSERT_NE(popUp, 0u);
    EXPECT_EQ(bench_.depthOf(popUp), 32);
    EXPECT_EQ(bench_.sizeOf(popUp), (XY<int>{146 + 4 * gap_, 98 + 4 * gap_}))
        << "with frame and shadow round it";
    clickAt(row(1, 1));
    expectLines({"level 1  chosen  Choose 1", "level 1  closes"});
}

TEST_F(WindowPopUp, TheScaleChangesWhileTheProgramRuns) {
    XY<int> const otherScale = areaOf("button \"Other scale\"").middle();
    XY<int> const face = openersFace();
    clickAt(at(otherScale));
    // Twice its size would be larger than the screen.
    EXPECT_TRUE(waitUntil([&] {
        XY<int> const end = bench_.placeOf(window_) + bench_.sizeOf(window_);
        return bench_.sizeOf(window_).x > 900 && bench_.placeOf(window_).x >= 0 &&
               bench_.placeOf(window_).y > 0 && end.x <= 1024 && end.y <= 768;
    })) << bench_.sizeOf(window_).x;
    EXPECT_TRUE(bench_.waitForColour(window_, face + face, faceColour));
    bench_.xdotool({"windowmove", std::to_string(window_), "-300", "60"});
    ASSERT_TRUE(waitUntil([&] { return bench_.placeOf(window_).x < 0; }));
    clickAt(at({2 * otherScale.x, 2 * otherScale.y}));
    EXPECT_TRUE(waitUntil([&] { return bench_.sizeOf(window_).x <= 512; }));
    bench_.xdotool({"windowmove", std::to_string(window_), "20", "60"});
    EXPECT_TRUE(bench_.waitForColour(window_, face, faceColour));
}
