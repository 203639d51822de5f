#include "tests/gallery_window.h"

#include "containers/scroll_bar.h"
#include "host/drawing/uif_std.h"
#include "host/services/clock.h"

#include <gmock/gmock.h>

#include <cmath>
#include <sstream>

using namespace wainscot;
using namespace std::chrono_literals;

namespace {

/// What the bar or timeline of a line of the log shows: two numbers after a message, or four.
std::vector<double> numbersIn(std::string const& line) {
    std::istringstream words(line);
    std::vector<double> numbers;
    for (std::string word; words >> word;)
        if (word.find_first_not_of("-.0123456789") == std::string::npos) numbers.push_back(std::stod(word));
    return numbers;
}

/// Scroll bars and sliders in a real window, with the pointer and the keys.
class WindowScrolling : public GalleryWindow {
protected:
    /// A flat bar on the screen, and where its thumb is.
    struct Bar {
        Area area;
        int first() const { return area.corner.x + area.size.y + UifStd::getIndentWidth(); }
        int range() const { return area.size.x - 2 * (area.size.y + UifStd::getIndentWidth()); }
        /// A place of the window at a share of the track.
        XY<int> at(double share) const {
            return {first() + static_cast<int>(range() * share), area.middle().y};
        }
    };
    Bar bar(std::string const& name) { return {areaOf("scrollbar \"" + name + "\"")}; }

    void dragTo(XY<int> place) { ASSERT_TRUE(bench_.movePointer(at(place))); }
    std::vector<double> nextOf(std::string const& line) {
        std::vector<double> numbers = numbersIn(next(line));
        numbers.resize(4, std::nan(""));
        return numbers;
    }
    /// Reads lines that begin so until one shows this position.
    bool reaches(std::string const& line, double position) {
        for (std::string text = next(line); !text.empty(); text = next(line))
            if (std::abs(numbersIn(text).at(0) - position) < 0.01) return true;
        return false;
    }

    std::string const moved_ = "  ScrollBar::thumbMoved";
    std::string const released_ = "  ScrollBar::thumbReleased";
};

} // namespace

TEST_F(WindowScrolling, AThumbIsDraggedPastTheWindowsEdgeAndBack) {
    open("scroll");
    Bar const flat = bar("bar");
    // Position 0.2, size 0.3.
    pressAt(at(flat.at(0.35)));
    ASSERT_TRUE(bench_.movePointer({bench_.screenSize().x - 1, 700}));
    EXPECT_TRUE(reaches("bar" + moved_, 0.7));
    ASSERT_TRUE(bench_.movePointer({0, 0}));
    EXPECT_TRUE(reaches("bar" + moved_, 0.0)) << "outside the window";
    dragTo(flat.at(0.55));
    ASSERT_TRUE(bench_.releaseButton());
    std::vector<double> const end = nextOf("bar" + released_);
    EXPECT_GT(end[0], 0.05);
    EXPECT_EQ(end[1], 0.3);
}

TEST_F(WindowScrolling, EscapeTakesADraggedThumbBack) {
    open("scroll");
    Bar const flat = bar("bar");
    pressAt(at(flat.at(0.35)));
    dragTo(flat.at(0.75));
    EXPECT_TRUE(reaches("bar" + moved_, 0.6));
    ASSERT_TRUE(bench_.key({"Escape"}));
    EXPECT_NEAR(nextOf("bar" + moved_)[0], 0.2, 1e-9);
    EXPECT_NEAR(nextOf("bar" + released_)[0], 0.2, 1e-9);
    dragTo(flat.at(0.5));
    ASSERT_TRUE(bench_.releaseButton());
    clickAt(at(flat.at(0.9)));
    EXPECT_NEAR(nextOf("bar" + moved_)[0], 0.5, 1e-9) << "paged from where it was";
}

TEST_F(WindowScrolling, AHeldTrackPagesUntilTheThumbIsUnderThePointer) {
    open("scroll");
    Bar const much = bar("tall much");
    Area const tall = much.area;
    double const began = service_get_msecs();
    // One hundredth a page, from 0.1 on, in a bar that lies the other way.
    int const margin = tall.size.x + UifStd::getIndentWidth();
    int const range = tall.size.y - 2 * margin - ScrollBar::getMinThumbSize();
    XY<int> const target{tall.middle().x,
                         tall.corner.y + margin + ScrollBar::getMinThumbSize() + range * 14 / 99};
    pressAt(at(target));
    std::vector<double> positions{nextOf("tall much" + moved_)[0]};
    positions.push_back(nextOf("tall much" + moved_)[0]);
    EXPECT_GE(service_get_msecs() - began, 300) << "before the first repeat";
    EXPECT_NEAR(positions[0], 0.11, 1e-9);
    EXPECT_NEAR(positions[1], 0.12, 1e-9);
    EXPECT_TRUE(reaches("tall much" + moved_, 0.14));
    letTimePass(400ms);
    ASSERT_TRUE(bench_.releaseButton());
    clickOn("scrollbar \"tall\"");
    EXPECT_FALSE(next("tall" + moved_).empty());
    EXPECT_LE(gallery_->lines().size(), 8u)
        << "it stopped under the pointer, and none came after the release";
}

TEST_F(WindowScrolling, TheWheelIsReportedAndBelongsToTheBarUnderThePointer) {
    open("scroll");
    Bar const flat = bar("bar");
    ASSERT_TRUE(bench_.movePointer(at(flat.at(0.8))));
    ASSERT_TRUE(bench_.wheel(-2));
    EXPECT_NEAR(nextOf("bar  ScrollBar::downButtonPressed")[0], 0.25, 1e-9);
    EXPECT_NEAR(nextOf("bar  ScrollBar::downButtonPressed")[0], 0.3, 1e-9);
    ASSERT_TRUE(bench_.wheel(1));
    EXPECT_NEAR(nextOf("bar  ScrollBar::upButtonPressed")[0], 0.25, 1e-9);
    letTimePass(600ms);
    ASSERT_TRUE(bench_.movePointer(middleOf("slider \"slider\"")));
    ASSERT_TRUE(bench_.wheel(2));
    clickAt(at(flat.at(0.9)));
    EXPECT_NEAR(nextOf("bar" + moved_)[0], 0.55, 1e-9);
    expectNothingOf("slider");
}

TEST_F(WindowScrolling, BothEndsOfAZoomBarAreDragged) {
    open("scroll");
    Bar const zoom = bar("zoom");
    // Position 0.3, size 0.4: both ends go apart about the middle.
    XY<int> const right = zoom.at(0.7) - XY<int>{4, 0};
    pressAt(at(right));
    dragTo(right + XY<int>{zoom.range() / 10, 0});
    std::vector<double> thumb = nextOf("zoom" + moved_);
    EXPECT_NEAR(thumb[0], 0.2, 0.01);
    EXPECT_NEAR(thumb[1], 0.6, 0.01);
    ASSERT_TRUE(bench_.releaseButton());
    EXPECT_NEAR(nextOf("zoom" + released_)[1], 0.6, 0.01);
    XY<int> const left = zoom.at(0.2) + XY<int>{4, 0};
    pressAt(at(left));
    dragTo(left + XY<int>{zoom.range() / 5, 0});
    thumb = nextOf("zoom" + moved_);
    EXPECT_NEAR(thumb[0], 0.4, 0.02);
    EXPECT_NEAR(thumb[1], 0.2, 0.02);
    ASSERT_TRUE(bench_.key({"Escape"}));
    EXPECT_NEAR(nextOf("zoom" + released_)[1], 0.6, 0.01) << "taken back";
    ASSERT_TRUE(bench_.releaseButton());
}

TEST_F(WindowScrolling, ASliderIsWorkedByKeysAlone) {
    open("scroll");
    ASSERT_TRUE(bench_.key({"Tab", "Right"}));
    expectLines({"slider  slider 0.402000", "slider  slider_released 0.402000"});
    ASSERT_TRUE(bench_.key({"Down", "Left"}));
    expectLines({"slider  slider 0.400000", "slider  slider 0.398000"});
    ASSERT_TRUE(bench_.key({"End", "Right", "Home", "Left", "Up"}));
    expectLines({"slider  slider 1.000000", "slider  slider 0.000000", "slider  slider 0.002000"});
    ASSERT_TRUE(bench_.key({"Tab", "Up"}));
    EXPECT_FALSE(next("marked  slider 0.802000").empty());
    ASSERT_TRUE(bench_.key({"shift+Tab", "Up"}));
    EXPECT_FALSE(next("slider  slider 0.004000").empty());
}

TEST_F(WindowScrolling, ATimelineIsScrolledAndZoomedByBarsAndWheel) {
    open("timeline");
    Bar const times = bar("times");
    XY<int> const drawing = middleOf("drawing \"Timeline\"");
    ASSERT_TRUE(bench_.movePointer(drawing));
    ASSERT_TRUE(bench_.wheel(-2));
    EXPECT_EQ(nextOf("wheel")[2], 1);
    EXPECT_EQ(nextOf("wheel")[2], 2) << "down by tracks";
    ASSERT_TRUE(bench_.xdotool({"keydown", "shift"}));
    ASSERT_TRUE(bench_.wheel(-1));
    EXPECT_EQ(nextOf("wheel")[0], 12) << "and along the times";
    ASSERT_TRUE(bench_.xdotool({"keyup", "shift", "keydown", "ctrl"}));
    ASSERT_TRUE(bench_.wheel(1));
    std::vector<double> const zoomed = nextOf("wheel");
    EXPECT_EQ(zoomed[1], 96);
    EXPECT_GT(zoomed[0], 12) << "about the pointer";
    ASSERT_TRUE(bench_.xdotool({"keyup", "ctrl"}));
    // The thumb is small now; its nearer end.
    clickAt(at({times.area.corner.x + times.area.size.x - times.area.size.y / 2, times.area.middle().y}));
    EXPECT_NEAR(nextOf("ScrollBar::rightButtonPressed")[0], zoomed[0] + 9.6, 0.01);
    clickAt(at(times.at(0.5)));
    EXPECT_NEAR(nextOf("ScrollBar::thumbMoved")[0], zoomed[0] + 9.6 + 96, 0.01) << "a page";
}
