#include "tests/window_bench.h"

#include <gmock/gmock.h>

#include <cstdlib>

using namespace wainscot;
using namespace std::chrono_literals;
using testing::HasSubstr;

namespace {

/// The milliseconds that a line of the log names.
int millisecondsIn(std::string const& line) {
    std::size_t const at = line.find("after ");
    return at == std::string::npos ? -1 : std::atoi(line.c_str() + at + 6);
}

/// The gallery in a real window, used with the real pointer and keys.
class WindowToolkit : public testing::Test {
protected:
    void SetUp() override { ASSERT_EQ(bench_.problem(), ""); }
    void TearDown() override {
        if (HasFailure() && gallery_)
            std::printf("unread lines:\n%serrors:\n%s\n", gallery_->unreadLines().c_str(),
                        bench_.errors().c_str());
    }

    void open(std::string const& page, std::vector<std::string> const& more = {}) {
        std::vector<std::string> words{"wainscot-gallery", "--echo",  "--desktop", "--page", page,
                                       "--size",           "1000x700"};
        words.insert(words.end(), more.begin(), more.end());
        gallery_ = bench_.start(words);
        window_ = bench_.findWindow("Wainscot gallery");
        ASSERT_NE(window_, 0u);
        ASSERT_TRUE(waitUntil([&] { return bench_.isActive(window_); }));
        ASSERT_TRUE(bench_.waitForColour(window_, {4, 4}, bench_.colourAt(inWindow(4, 4))));
    }
    /// Holds the repeating box until it has reported six times.
    void expectRepeats() {
        ASSERT_TRUE(bench_.movePointer(inWindow(repeatBox.x, repeatBox.y)));
        ASSERT_TRUE(bench_.pressButton());
        int const first = millisecondsIn(next("repeat 1 "));
        int const sixth = millisecondsIn(next("repeat 6 "));
        ASSERT_TRUE(bench_.releaseButton());
        // Never early. How late it may be is measured by hand on a machine at rest; here others work, too.
        EXPECT_GE(first, 300);
        EXPECT_LE(first, 6000);
        EXPECT_GE(sixth - first, 500);
        EXPECT_LE(sixth - first, 12000);
        std::printf("first repeat after %d ms, the next five after %d ms each\n", first, (sixth - first) / 5);
    }
    XY<int> inWindow(int x, int y) { return bench_.placeOf(window_) + XY<int>{x, y}; }
    void clickAt(int x, int y) {
        ASSERT_TRUE(bench_.movePointer(inWindow(x, y)));
        ASSERT_TRUE(bench_.click());
    }
    std::string next(std::string_view line) { return gallery_->waitForLine(line); }

    // Places in a window of that size, from its upper left corner.
    static constexpr XY<int> apply{240, 72};
    static constexpr XY<int> press{372, 144};
    static constexpr XY<int> hold{636, 144};
    static constexpr XY<int> repeatBox{370, 320};

    WindowBench bench_;
    std::unique_ptr<ChildProcess> gallery_;
    WindowBench::WindowId window_ = 0;
};

} // namespace

TEST_F(WindowToolkit, ButtonsAreClickedTabbedToAndPressedByKeys) {
    open("buttons");
    clickAt(apply.x, apply.y);
    EXPECT_FALSE(next("Apply  sends  clicked").empty());
    ASSERT_TRUE(bench_.key({"space"}));
    EXPECT_FALSE(next("Apply  sends  clicked").empty()) << "the click made it the current stop";
    ASSERT_TRUE(bench_.key({"Tab", "Return"}));
    EXPECT_FALSE(next("Down  sends  clicked").empty());
    ASSERT_TRUE(bench_.key({"Tab", "space"}));
    EXPECT_FALSE(next("OK  sends  do_it").empty()) << "the disabled one is passed by";
    ASSERT_TRUE(bench_.key({"shift+Tab", "shift+Tab", "space"}));
    EXPECT_FALSE(next("Apply  sends  clicked").empty());
}

TEST_F(WindowToolkit, SlidingOffReleasesAndBackPressesAgain) {
    open("buttons");
    ASSERT_TRUE(bench_.movePointer(inWindow(apply.x, apply.y)));
    ASSERT_TRUE(bench_.pressButton());
    XY<int> const face = inWindow(apply.x - 50, apply.y + 3);
    ASSERT_TRUE(bench_.movePointer(inWindow(apply.x, apply.y + 100)));
    ASSERT_TRUE(bench_.releaseButton());
    clickAt(press.x, press.y);
    EXPECT_FALSE(next("Press  sends  pressed").empty());
    for (std::string const& line : gallery_->lines())
        EXPECT_THAT(line, testing::Not(HasSubstr("Apply"))) << "released outside";
    ASSERT_TRUE(bench_.movePointer(inWindow(apply.x, apply.y)));
    ASSERT_TRUE(bench_.pressButton());
    std::uint32_t const down = bench_.colourAt(face);
    ASSERT_TRUE(bench_.movePointer(inWindow(apply.x, apply.y + 100)));
    EXPECT_TRUE(waitUntil([&] { return bench_.colourAt(face) != down; }));
    ASSERT_TRUE(bench_.movePointer(inWindow(apply.x, apply.y)));
    EXPECT_TRUE(bench_.waitForColour(face, down));
    ASSERT_TRUE(bench_.releaseButton());
    EXPECT_FALSE(next("Apply  sends  clicked").empty());
}

TEST_F(WindowToolkit, AHeldRepeaterKeepsItsTimes) {
    open("pointer");
    expectRepeats();
    letTimePass(300ms);
    long const before = gallery_->wakeUps();
    letTimePass(1000ms);
    EXPECT_LE(gallery_->wakeUps() - before, 2) << "it sleeps again";
}

TEST_F(WindowToolkit, ABusyThreadDoesNotHurryIt) {
    open("pointer", {"--busy"});
    expectRepeats();
}

TEST_F(WindowToolkit, AHeldButtonReportsUntilItIsReleased) {
    open("buttons");
    ASSERT_TRUE(bench_.movePointer(inWindow(hold.x, hold.y)));
    ASSERT_TRUE(bench_.pressButton());
    for (int i = 0; i < 3; ++i) EXPECT_FALSE(next("Hold  sends  held").empty());
    ASSERT_TRUE(bench_.releaseButton());
    EXPECT_FALSE(next("Hold  sends  held").empty());
}

TEST_F(WindowToolkit, ClosingByThePanelsOwnButton) {
    open("panel");
    clickAt(424, 250);
    EXPECT_FALSE(next("Floating  closes").empty());
}

TEST_F(WindowToolkit, ATipComesWhereThePointerRestsAndGoesWithAPress) {
    open("pointer");
    XY<int> const shape = inWindow(240, 42);
    XY<int> const below = shape + XY<int>{6, 26};
    XY<int> const face = inWindow(190, 42);
    ASSERT_TRUE(waitUntil([&] { return bench_.colourAt(face) != bench_.colourAt(below); })) << "painted";
    std::uint32_t const without = bench_.colourAt(below);
    ASSERT_TRUE(bench_.movePointer(shape));
    EXPECT_TRUE(waitUntil([&] { return bench_.colourAt(below) != without; }));
    EXPECT_TRUE(bench_.isActive(window_)) << "it takes no focus";
    ASSERT_TRUE(bench_.click());
    EXPECT_TRUE(bench_.waitForColour(below, without));
}

TEST_F(WindowToolkit, ADragCrossesTheWindowAndNamesWhatItCarries) {
    open("dragging");
    ASSERT_TRUE(bench_.movePointer(inWindow(240, 42)));
    ASSERT_TRUE(bench_.pressButton());
    ASSERT_TRUE(bench_.glidePointer(inWindow(240, 42), inWindow(300, 200)));
    ASSERT_TRUE(bench_.releaseButton());
    EXPECT_FALSE(next("dropped  Interview").empty());
    EXPECT_FALSE(next("Interview  was taken").empty());
    ASSERT_TRUE(bench_.movePointer(inWindow(240, 42)));
    ASSERT_TRUE(bench_.pressButton());
    ASSERT_TRUE(bench_.glidePointer(inWindow(240, 42), inWindow(700, 200)));
    ASSERT_TRUE(bench_.key({"Escape"}));
    EXPECT_FALSE(next("Interview  came back").empty());
    ASSERT_TRUE(bench_.releaseButton());
}
