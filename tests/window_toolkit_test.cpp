#include "tests/gallery_window.h"

#include <cstdlib>

using namespace wainscot;
using namespace std::chrono_literals;

namespace {

/// The milliseconds that a line of the log names.
int millisecondsIn(std::string const& line) {
    std::size_t const at = line.find("after ");
    return at == std::string::npos ? -1 : std::atoi(line.c_str() + at + 6);
}

/// What the widgets of the gallery do in a real window.
class WindowToolkit : public GalleryWindow {
protected:
    /// Holds the repeating box until it has reported six times.
    void expectRepeats(bool isBusy) {
        auto const used = gallery_->processorTime();
        pressAt(middleOf("text \"Hold: counts after 0.3 s, then every 0.1 s\""));
        int const first = millisecondsIn(next("repeat 1 "));
        int const sixth = millisecondsIn(next("repeat 6 "));
        auto const usedNow = gallery_->processorTime();
        ASSERT_TRUE(bench_.releaseButton());
        EXPECT_LE((usedNow - used).count(), isBusy ? patience.count() : sixth / 3)
            << "it sleeps between the repeats";
        // Never early. How late it may be is measured by hand on a machine at rest; here others work, too.
        EXPECT_GE(first, 300);
        EXPECT_LE(first, 6000);
        // Both are rounded.
        EXPECT_GE(sixth - first, 499);
        EXPECT_LE(sixth - first, 12000);
        std::printf("first repeat after %d ms, the next five after %d ms each\n", first, (sixth - first) / 5);
    }

    std::string const apply_ = "button \"Apply\"";
};

} // namespace

TEST_F(WindowToolkit, ButtonsAreClickedTabbedToAndPressedByKeys) {
    open("buttons");
    clickOn(apply_);
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
    Area const apply = areaOf(apply_);
    XY<int> const outside = at(apply.middle() + XY<int>{0, 100});
    XY<int> const face = at(apply.corner + XY<int>{10, 15});
    pressAt(at(apply.middle()));
    ASSERT_TRUE(bench_.movePointer(outside));
    ASSERT_TRUE(bench_.releaseButton());
    clickOn("button \"Press\"");
    EXPECT_FALSE(next("Press  sends  pressed").empty());
    expectNothingOf("Apply");
    pressAt(at(apply.middle()));
    // As the button beside it, which is down from the start.
    std::uint32_t const down = bench_.colourAt(at(areaOf("button \"Down\"").corner + XY<int>{10, 15}));
    EXPECT_TRUE(bench_.waitForColour(face, down));
    ASSERT_TRUE(bench_.movePointer(outside));
    EXPECT_TRUE(waitUntil([&] { return bench_.colourAt(face) != down; }));
    ASSERT_TRUE(bench_.movePointer(at(apply.middle())));
    EXPECT_TRUE(bench_.waitForColour(face, down));
    ASSERT_TRUE(bench_.releaseButton());
    EXPECT_FALSE(next("Apply  sends  clicked").empty());
}

TEST_F(WindowToolkit, AHeldRepeaterKeepsItsTimes) {
    open("pointer");
    expectRepeats(false);
    long const before = wakeUpsAtRest();
    letTimePass(1000ms);
    EXPECT_LE(gallery_->wakeUps() - before, 2) << "it sleeps again";
}

TEST_F(WindowToolkit, ABusyThreadDoesNotHurryIt) {
    open("pointer", {1000, 700}, {"--busy"});
    expectRepeats(true);
}

TEST_F(WindowToolkit, AHeldButtonReportsUntilItIsReleased) {
    open("buttons");
    pressAt(middleOf("button \"Hold\""));
    for (int i = 0; i < 3; ++i) EXPECT_FALSE(next("Hold  sends  held").empty());
    ASSERT_TRUE(bench_.releaseButton());
    EXPECT_FALSE(next("Hold  sends  held").empty());
}

TEST_F(WindowToolkit, WhatIsHeldEndsWhenTheReleaseGoesElsewhere) {
    open("buttons");
    XY<int> const hold = middleOf("button \"Hold\"");
    for (bool const minimises : {false, true}) {
        SCOPED_TRACE(minimises ? "minimised" : "another window");
        pressAt(hold);
        EXPECT_FALSE(next("Hold  sends  held").empty());
        std::unique_ptr<ChildProcess> other;
        if (minimises) {
            bench_.minimise(window_);
        } else {
            other = bench_.start({"desktop-probe", WindowBench::besideTests("../lib/libwainscot-desktop.so"),
                                  "--place", "700", "100"});
            ASSERT_FALSE(other->waitForLine("activated").empty());
        }
        ASSERT_TRUE(waitUntil([&] { return !bench_.isActive(window_); }));
        ASSERT_TRUE(bench_.releaseButton());
        bench_.activate(window_);
        ASSERT_TRUE(waitUntil([&] { return bench_.isActive(window_) && bench_.isViewable(window_); }));
        clickOn(apply_);
        EXPECT_FALSE(next("Apply  sends  clicked").empty()) << "the next press is heard";
        std::size_t const before = gallery_->lines().size();
        letTimePass(700ms);
        EXPECT_EQ(gallery_->lines().size(), before) << "nothing repeats";
    }
}

TEST_F(WindowToolkit, ClosingByThePanelsOwnButton) {
    open("panel");
    // Three panels have one; the last in the page lies at the left.
    clickOn("button \"Close\"");
    EXPECT_FALSE(next("A dialogue with a long title  closes").empty());
}

TEST_F(WindowToolkit, ATipComesWhereThePointerRestsAndGoesWithAPress) {
    open("pointer");
    Area const arrow = areaOf("label \"arrow\"");
    XY<int> const shape = at(arrow.middle());
    XY<int> const below = shape + XY<int>{6, 36};
    std::uint32_t const without = bench_.colourAt(below);
    ASSERT_TRUE(bench_.movePointer(shape));
    EXPECT_TRUE(waitUntil([&] { return bench_.colourAt(below) != without; }));
    EXPECT_TRUE(bench_.isActive(window_)) << "it takes no focus";
    ASSERT_TRUE(bench_.click());
    EXPECT_TRUE(bench_.waitForColour(below, without));
}

TEST_F(WindowToolkit, ADragCrossesTheWindowAndNamesWhatItCarries) {
    open("dragging");
    XY<int> const clip = middleOf("label \"Interview\"");
    pressAt(clip);
    ASSERT_TRUE(bench_.glidePointer(clip, middleOf("text \"Takes clips, and files from other programs\"")));
    ASSERT_TRUE(bench_.releaseButton());
    EXPECT_FALSE(next("dropped  Interview").empty());
    EXPECT_FALSE(next("Interview  was taken").empty());
    pressAt(clip);
    ASSERT_TRUE(bench_.glidePointer(clip, middleOf("text \"Takes markers, and files\"")));
    ASSERT_TRUE(bench_.key({"Escape"}));
    EXPECT_FALSE(next("Interview  came back").empty());
    ASSERT_TRUE(bench_.releaseButton());
}

TEST_F(WindowToolkit, ChoicesAreMadeByClicksAndByKeysAlone) {
    open("choices");
    clickOn("checkbox \"Snap\"");
    EXPECT_FALSE(next("Snap  sends  Checkbox TICKED").empty());
    clickOn("radiobutton \"30 fps\"");
    expectLines({"25 fps  sends  rate off", "30 fps  sends  rate on"});
    clickOn("radiobutton \"Fill\"");
    EXPECT_FALSE(next("radio_set_message  Fill").empty());
    clickOn("radiobutton \"Stereo\"");
    clickOn("radiobutton \"Mono\"");
    ASSERT_TRUE(bench_.movePointer(at({990, 690})));
    // The click on a button of the page had made it the current stop.
    ASSERT_TRUE(bench_.key({"Right"}));
    expectLines({"30 fps  sends  rate off", "60 fps  sends  rate on"});
    ASSERT_TRUE(bench_.key({"Tab", "Tab", "space"}));
    EXPECT_FALSE(next("CheckboxGroupClicked  Titles on").empty());
    ASSERT_TRUE(bench_.key({"Tab", "Tab", "Tab", "Up", "Left"}));
    expectLines({"CRSChanged  Preview", "CRSChanged  Draft"});
}
