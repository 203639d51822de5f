#include "tests/window_bench.h"

#include <gmock/gmock.h>

using namespace wainscot;
using namespace std::chrono_literals;

namespace {

/// Pop-ups of the gallery on a real screen. Places are those of its page, from the window's upper-left
/// corner.
class WindowPopUp : public testing::Test {
protected:
    static constexpr XY<int> openWindow{276, 60};
    static constexpr XY<int> openPopUps{276, 116};
    static constexpr XY<int> nowhere{600, 300};
    static constexpr std::uint32_t faceColour = 0x44474D;

    void SetUp() override {
        ASSERT_EQ(bench_.problem(), "");
        gallery_ = bench_.start(
            {"wainscot-gallery", "--echo", "--desktop", "--page", "windows", "--size", "640x500"});
        window_ = bench_.findWindow("Wainscot gallery");
        ASSERT_NE(window_, 0u) << bench_.errors();
        ASSERT_TRUE(bench_.waitForColour(window_, openPopUps - XY<int>{90, 0}, faceColour));
        ASSERT_TRUE(waitUntil([&] { return bench_.isActive(window_); }));
        // Away from the places of the other windows.
        bench_.xdotool({"windowmove", std::to_string(window_), "20", "60"});
        ASSERT_TRUE(waitUntil([&] { return bench_.placeOf(window_).x < 60; }));
        ASSERT_TRUE(bench_.movePointer(at(nowhere)));
    }
    void TearDown() override {
        if (HasFailure())
            std::printf("unread lines:\n%serrors:\n%s\n", gallery_->unreadLines().c_str(),
                        bench_.errors().c_str());
        bench_.requestClose(window_);
        EXPECT_EQ(gallery_->waitForExit(), 0) << bench_.errors();
    }

    XY<int> at(XY<int> place) { return bench_.placeOf(window_) + place; }
    /// A row of the pop-up of a level, counted from 0; right after another, as they open.
    XY<int> row(int level, int number) { return at({200 + 148 * (level - 1), 140 + 24 * number}); }
    void clickAt(XY<int> place) {
        ASSERT_TRUE(bench_.movePointer(place));
        ASSERT_TRUE(bench_.click());
    }
    void expectLines(std::vector<std::string> const& lines) {
        for (std::string const& line : lines) EXPECT_FALSE(gallery_->waitForLine(line).empty()) << line;
    }
    void openTwo() {
        clickAt(at(openPopUps));
        popUps_[0] = bench_.findWindow("level 1");
        ASSERT_NE(popUps_[0], 0u);
        ASSERT_TRUE(waitUntil([&] { return bench_.isViewable(popUps_[0]); }));
        clickAt(row(1, 0));
        expectLines({"level 1  chosen  Open the next level"});
        popUps_[1] = bench_.findWindow("level 2");
        ASSERT_NE(popUps_[1], 0u);
        ASSERT_TRUE(waitUntil([&] { return bench_.isViewable(popUps_[1]); }));
    }
    /// Nothing but this is heard until something that certainly comes is.
    void expectNothingOf(std::string const& text) {
        for (std::string const& line : gallery_->lines())
            EXPECT_THAT(line, testing::Not(testing::HasSubstr(text)));
    }

    WindowBench bench_;
    std::unique_ptr<ChildProcess> gallery_;
    WindowBench::WindowId window_ = 0;
    WindowBench::WindowId popUps_[2] = {};
};

} // namespace

TEST_F(WindowPopUp, LieWhereTheyWerePutAndTakeNoFocus) {
    openTwo();
    EXPECT_EQ(bench_.placeOf(popUps_[0]) - bench_.placeOf(window_), (XY<int>{179, 127})) << "with its edge";
    EXPECT_EQ(bench_.sizeOf(popUps_[0]), (XY<int>{146, 98}));
    EXPECT_EQ(bench_.placeOf(popUps_[1]) - bench_.placeOf(popUps_[0]), (XY<int>{148, 0}));
    EXPECT_TRUE(bench_.isActive(window_));
    clickAt(row(2, 1));
    expectLines({"level 2  chosen  Choose 1", "level 2  closes", "level 1  closes"});
    expectNothingOf("unfocused");
}

TEST_F(WindowPopUp, APressElsewhereInTheProgramClosesThemAndIsSpent) {
    openTwo();
    clickAt(at(openWindow));
    expectLines({"level 2  closes", "level 1  closes"});
    clickAt(at(openPopUps));
    expectLines({"pressed  Open pop-ups"});
    expectNothingOf("pressed  Open a window");
    WindowBench::WindowId const popUp = bench_.findWindow("level 1");
    ASSERT_NE(popUp, 0u);
    clickAt(at(openPopUps));
    EXPECT_TRUE(waitUntil([&] { return !bench_.isViewable(popUp); }))
        << "the opener heard of it and closed it";
}

TEST_F(WindowPopUp, APressOnAnotherProgramClosesThemAndIsSpent) {
    auto const other =
        bench_.start({"desktop-probe", WindowBench::besideTests("../lib/libwainscot-desktop.so"), "--size",
                      "120", "60", "--place", "860", "40"});
    WindowBench::WindowId const otherWindow = bench_.findWindow("probe");
    ASSERT_NE(otherWindow, 0u);
    ASSERT_FALSE(other->waitForLine("activated").empty());
    bench_.activate(window_);
    ASSERT_TRUE(waitUntil([&] { return bench_.isActive(window_); }));
    ASSERT_FALSE(other->waitForLine("deactivated").empty());
    openTwo();
    XY<int> const onOther = bench_.placeOf(otherWindow) + XY<int>{60, 30};
    clickAt(onOther);
    expectLines({"level 2  closes", "level 1  closes"});
    EXPECT_TRUE(bench_.isActive(window_)) << "the other program was not told";
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
    auto const other =
        bench_.start({"desktop-probe", WindowBench::besideTests("../lib/libwainscot-desktop.so"), "--size",
                      "120", "60", "--place", "860", "40"});
    WindowBench::WindowId const otherWindow = bench_.findWindow("probe");
    ASSERT_FALSE(other->waitForLine("activated").empty());
    bench_.activate(window_);
    ASSERT_TRUE(waitUntil([&] { return bench_.isActive(window_); }));
    ASSERT_FALSE(other->waitForLine("deactivated").empty());
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
    bench_.movePointer(at(openPopUps));
    bench_.pressButton();
    ASSERT_NE(bench_.findWindow("level 1"), 0u);
    bench_.glidePointer(at(openPopUps), row(1, 2));
    bench_.releaseButton();
    expectLines({"level 1  chosen  Choose 2", "level 1  closes"});
}

TEST_F(WindowPopUp, AModalWindowKeepsItsOwnerAndGoesWithIt) {
    constexpr XY<int> openModal{276, 88};
    clickAt(at(openModal));
    WindowBench::WindowId const modal = bench_.findWindow("Modal window");
    ASSERT_NE(modal, 0u);
    ASSERT_TRUE(waitUntil([&] { return bench_.isActive(modal); }));
    clickAt(at(openWindow));
    EXPECT_TRUE(waitUntil([&] { return bench_.isActive(modal); })) << "the press brought it back";
    XY<int> const middle = bench_.sizeOf(modal);
    clickAt(bench_.placeOf(modal) + XY<int>{middle.x / 2, middle.y / 2});
    expectLines({"Modal window  pressed"});
    expectNothingOf("pressed  Open a window");
    ASSERT_TRUE(waitUntil([&] { return bench_.isActive(window_); }));
    clickAt(at(openWindow));
    expectLines({"clicked  Open a window"});
    WindowBench::WindowId const second = bench_.findWindow("Another window");
    ASSERT_NE(second, 0u);
    bench_.requestClose(second);
    expectLines({"Another window  poot"});
}

TEST_F(WindowPopUp, HaveTransparentRoomForTheirShadowWhereThereIsACompositor) {
    EXPECT_EQ(bench_.depthOf(window_), 24);
    bench_.pretendCompositor();
    clickAt(at(openPopUps));
    WindowBench::WindowId const popUp = bench_.findWindow("level 1");
    ASSERT_NE(popUp, 0u);
    EXPECT_EQ(bench_.depthOf(popUp), 32);
    EXPECT_EQ(bench_.sizeOf(popUp), (XY<int>{162, 114})) << "1 of frame and 8 of shadow round it";
    ASSERT_TRUE(waitUntil([&] { return bench_.isViewable(popUp); }));
    clickAt(row(1, 1));
    expectLines({"level 1  chosen  Choose 1", "level 1  closes"});
}

TEST_F(WindowPopUp, TheScaleChangesWhileTheProgramRuns) {
    constexpr XY<int> otherScale{276, 228};
    clickAt(at(otherScale));
    EXPECT_TRUE(waitUntil([&] { return bench_.sizeOf(window_).x == 1280; })) << bench_.sizeOf(window_).x;
    EXPECT_TRUE(bench_.waitForColour(window_, XY<int>{2 * 186, 2 * 116}, faceColour));
    bench_.xdotool({"windowmove", std::to_string(window_), "-300", "60"});
    ASSERT_TRUE(waitUntil([&] { return bench_.placeOf(window_).x < 0; }));
    clickAt(at({2 * otherScale.x, 2 * otherScale.y}));
    EXPECT_TRUE(waitUntil([&] { return bench_.sizeOf(window_).x == 640; }));
    bench_.xdotool({"windowmove", std::to_string(window_), "20", "60"});
    EXPECT_TRUE(bench_.waitForColour(window_, XY<int>{186, 116}, faceColour));
}
