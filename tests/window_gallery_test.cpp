#include "tests/window_bench.h"

#include <gmock/gmock.h>

#include <utility>

using namespace wainscot;
using testing::HasSubstr;

namespace {

/// The gallery in a real window, with a real pointer and real keys. Places in the page are those of the
/// labels of its first page, from the window's upper-left corner.
class WindowGallery : public testing::Test {
protected:
    static constexpr XY<int> plain{250, 96};
    static constexpr XY<int> destroysItself{400, 96};
    static constexpr XY<int> destroysTheWindow{696, 200};
    static constexpr XY<int> nowhere{900, 300};

    void SetUp() override {
        ASSERT_EQ(bench_.problem(), "");
        gallery_ = bench_.start({"wainscot-gallery", "--echo", "--desktop"});
        window_ = bench_.findWindow("Wainscot gallery");
        ASSERT_NE(window_, 0u) << bench_.errors();
        ASSERT_TRUE(bench_.waitForColour(window_, destroysItself + XY<int>(-70, 0), faceColour));
        ASSERT_TRUE(bench_.movePointer(at(nowhere)));
    }
    void TearDown() override {
        if (HasFailure())
            std::printf("unread lines:\n%serrors:\n%s\n", gallery_->unreadLines().c_str(),
                        bench_.errors().c_str());
    }

    XY<int> at(XY<int> place) { return bench_.placeOf(window_) + place; }
    void expectLines(std::vector<std::string> const& lines) {
        for (std::string const& line : lines) EXPECT_FALSE(gallery_->waitForLine(line).empty()) << line;
    }
    static constexpr std::uint32_t faceColour = 0x44474D;

    WindowBench bench_;
    std::unique_ptr<ChildProcess> gallery_;
    WindowBench::WindowId window_ = 0;
};

} // namespace

TEST_F(WindowGallery, APressReachesItsWidgetAndItsMessageTheOwner) {
    bench_.movePointer(at(plain));
    bench_.click();
    expectLines({"entered  Plain", "focused  Plain", "pressed  Plain", "released  Plain", "clicked  Plain"});
    bench_.key({"Tab"});
    expectLines({"unfocused  Plain", "focused  Destroys itself"});
    bench_.key({"shift+Tab", "space"});
    expectLines({"focused  Plain", "clicked  Plain"});
    bench_.wheel(1);
    expectLines({"wheel  Plain"});
}

TEST_F(WindowGallery, APressIsHeldOutOfTheWindowAndBack) {
    bench_.movePointer(at(plain));
    bench_.pressButton();
    expectLines({"pressed  Plain"});
    bench_.glidePointer(at(plain), XY<int>(3, 3));
    expectLines({"left  Plain"});
    bench_.releaseButton();
    expectLines({"released  Plain"});
    bench_.movePointer(at(plain));
    bench_.pressButton();
    bench_.glidePointer(at(plain), at(nowhere));
    bench_.glidePointer(at(nowhere), at(plain));
    bench_.releaseButton();
    std::string const click = gallery_->waitForLine("clicked");
    EXPECT_EQ(click, "clicked  Plain") << "the first release was outside";
}

TEST_F(WindowGallery, HandlersDestroyTheirWidgetAndTheWindow) {
    bench_.movePointer(at(destroysItself));
    bench_.click();
    expectLines({"clicked  (sender has gone)"});
    EXPECT_TRUE(bench_.waitForColour(window_, destroysItself, 0x313337)) << "the page shows where it was";
    bench_.movePointer(at(destroysTheWindow));
    bench_.click();
    EXPECT_EQ(gallery_->waitForExit(), 0);
}

TEST_F(WindowGallery, TheContentsFollowTheWindowsSizeAndItClosesByItsButton) {
    XY<int> const size = bench_.sizeOf(window_);
    bench_.xdotool({"windowsize", std::to_string(window_), "800", "600"});
    // The bottom edge of the log stays at the same distance from the window's.
    EXPECT_TRUE(bench_.waitForColour(window_, XY<int>(500, 600 - 100), 0x1C1D20));
    EXPECT_NE(bench_.sizeOf(window_), size);
    bench_.minimise(window_);
    bench_.activate(window_);
    EXPECT_TRUE(bench_.waitForColour(window_, XY<int>(500, 600 - 100), 0x1C1D20));
    bench_.requestClose(window_);
    EXPECT_EQ(gallery_->waitForExit(), 0);
}

TEST_F(WindowGallery, AtRestItDoesNotWakeUp) {
    bench_.movePointer(at(plain));
    expectLines({"entered  Plain"});
    // Whatever the window manager still has to say is over when nothing was heard for a while.
    long before = gallery_->wakeUps();
    auto const isQuiet = [&] {
        letTimePass(std::chrono::milliseconds(500));
        long const earlier = std::exchange(before, gallery_->wakeUps());
        return earlier == before;
    };
    EXPECT_TRUE(waitUntil(isQuiet));
    letTimePass(std::chrono::seconds(3));
    EXPECT_EQ(gallery_->wakeUps(), before);
}

TEST_F(WindowGallery, TheContentsFollowWhileTheEdgeIsDragged) {
    constexpr XY<int> background{4, 200};
    std::uint32_t const colour = bench_.colourAt(at(background));
    XY<int> const size = bench_.sizeOf(window_);
    std::optional<XY<int>> const corner = bench_.grabCorner(window_);
    ASSERT_TRUE(corner);
    bench_.glidePointer(*corner, *corner - XY<int>{200, 150});
    ASSERT_TRUE(waitUntil([&] { return bench_.sizeOf(window_).x <= size.x - 150; }));
    EXPECT_TRUE(bench_.waitForColour(window_, {bench_.sizeOf(window_).x - 4, background.y}, colour))
        << "while the button is held";
    bench_.releaseButton();
}
