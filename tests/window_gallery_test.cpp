#include "tests/window_bench.h"

#include <gmock/gmock.h>

using namespace wainscot;
using namespace std::chrono_literals;

namespace {

/// The gallery in a real window: everything from the X server to the widgets and back.
class WindowGallery : public testing::Test {
protected:
    /// The middle of the label "Plain" on the page of plain objects, from the upper-left corner of the
    /// contents.
    static constexpr XY<int> plain{252, 96};
    /// A place on the window's own background.
    static constexpr XY<int> background{4, 200};

    void SetUp() override {
        ASSERT_EQ(bench_.problem(), "");
        gallery_ =
            bench_.start({"wainscot-gallery", "--desktop", "--page", "globs", "--size", "800x500", "--echo"});
        window_ = bench_.findWindow("Wainscot gallery");
        ASSERT_NE(window_, 0u) << bench_.errors();
        ASSERT_TRUE(waitUntil([this] {
            return bench_.isActive(window_) && colourIn(plain) != colourIn({0, 0});
        })) << bench_.errors();
    }
    void TearDown() override {
        if (HasFailure() && gallery_)
            std::printf("unread lines of the gallery:\n%serrors:\n%s\n", gallery_->unreadLines().c_str(),
                        bench_.errors().c_str());
        bench_.requestClose(window_);
        EXPECT_EQ(gallery_->waitForExit(), 0)
            << "closing the last window ends the program: " << bench_.errors();
    }

    XY<int> onScreen(XY<int> place) { return bench_.placeOf(window_) + place; }
    std::uint32_t colourIn(XY<int> place) { return bench_.colourAt(onScreen(place)); }
    /// Expects these lines of the log in this order, other lines between them allowed.
    void expectLines(std::vector<std::string> const& lines) {
        for (std::string const& line : lines) EXPECT_EQ(gallery_->waitForLine(line), line);
    }

    WindowBench bench_;
    std::unique_ptr<ChildProcess> gallery_;
    WindowBench::WindowId window_ = 0;
};

} // namespace

TEST_F(WindowGallery, APressThatIsDraggedOutAndBackClicks) {
    ASSERT_TRUE(bench_.movePointer(onScreen(plain)));
    expectLines({"entered  Plain"});
    std::uint32_t const hovered = colourIn(plain + XY<int>{40, 0});
    ASSERT_TRUE(bench_.pressButton());
    expectLines({"pressed  Plain"});
    EXPECT_TRUE(waitUntil([&] { return colourIn(plain + XY<int>{40, 0}) != hovered; })) << "it looks pressed";
    ASSERT_TRUE(bench_.movePointer(onScreen({-30, 300})));
    expectLines({"left  Plain"});
    ASSERT_TRUE(bench_.movePointer(onScreen(plain)));
    expectLines({"entered  Plain"});
    ASSERT_TRUE(bench_.releaseButton());
    expectLines({"released  Plain", "clicked  Plain"});
}

TEST_F(WindowGallery, AReleaseOutsideDoesNotClick) {
    ASSERT_TRUE(bench_.movePointer(onScreen(plain)));
    ASSERT_TRUE(bench_.pressButton());
    expectLines({"pressed  Plain"});
    ASSERT_TRUE(bench_.movePointer(onScreen({820, 300})));
    ASSERT_TRUE(bench_.releaseButton());
    expectLines({"released  Plain"});
    // What a press brings about is done before the next one is looked at.
    ASSERT_TRUE(bench_.movePointer(onScreen(plain)));
    ASSERT_TRUE(bench_.pressButton());
    expectLines({"pressed  Plain"});
    for (std::string const& line : gallery_->lines()) EXPECT_NE(line, "clicked  Plain");
    ASSERT_TRUE(bench_.releaseButton());
}

TEST_F(WindowGallery, KeysReachTheFocusedObject) {
    ASSERT_TRUE(bench_.movePointer(onScreen(plain)));
    ASSERT_TRUE(bench_.click());
    expectLines({"focused  Plain", "clicked  Plain"});
    ASSERT_TRUE(bench_.key({"Return", "Tab"}));
    expectLines({"clicked  Plain", "unfocused  Plain", "focused  Destroys itself"});
    ASSERT_TRUE(bench_.key({"shift+Tab", "space"}));
    expectLines({"focused  Plain", "clicked  Plain"});
}

TEST_F(WindowGallery, ContentsFollowWhileTheEdgeIsDragged) {
    std::uint32_t const colour = colourIn(background);
    XY<int> const corner = onScreen({800, 503});
    ASSERT_TRUE(bench_.movePointer(corner));
    ASSERT_TRUE(bench_.pressButton());
    ASSERT_TRUE(bench_.glidePointer(corner, corner + XY<int>{60, 40}));
    ASSERT_TRUE(waitUntil([this] { return bench_.sizeOf(window_).x >= 850; }));
    int const width = bench_.sizeOf(window_).x;
    EXPECT_TRUE(bench_.waitForColour(window_, {width - 4, 200}, colour)) << "while the button is held";
    ASSERT_TRUE(bench_.releaseButton());
}

TEST_F(WindowGallery, MinimisedAndRestored) {
    std::uint32_t const colour = colourIn(plain + XY<int>{40, 0});
    bench_.minimise(window_);
    ASSERT_TRUE(waitUntil([this] { return !bench_.isViewable(window_); }));
    bench_.activate(window_);
    EXPECT_TRUE(bench_.waitForColour(window_, plain + XY<int>{40, 0}, colour));
    EXPECT_TRUE(waitUntil([this] { return bench_.isActive(window_); }));
}

TEST_F(WindowGallery, SleepsWhileNothingHappens) {
    ASSERT_TRUE(bench_.movePointer(onScreen(plain)));
    expectLines({"entered  Plain"});
    letTimePass(700ms);
    long const wakeUps = gallery_->wakeUps();
    letTimePass(2000ms);
    EXPECT_EQ(gallery_->wakeUps(), wakeUps);
}
