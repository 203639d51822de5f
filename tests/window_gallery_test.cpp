#include "tests/gallery_window.h"

#include "host/drawing/palette.h"

#include <gmock/gmock.h>

using namespace wainscot;
using testing::HasSubstr;

namespace {

/// The gallery's first page in a real window.
class WindowGallery : public GalleryWindow {
protected:
    Palette const dark_ = Palette::standard(eThemeDark);

    void SetUp() override {
        GalleryWindow::SetUp();
        open("globs");
        ASSERT_TRUE(bench_.movePointer(at(nowhere)));
    }

    static constexpr XY<int> nowhere{900, 450};
    std::string const plain_ = "label \"Plain\"";
};

} // namespace

namespace {

/// The keyboard goes from stop to stop; the gallery says where it is.
class WindowTab : public GalleryWindow {
protected:
    /// The stops behind the list of pages up to the list again, where the focus is afterwards.
    std::vector<std::string> circle() {
        constexpr std::size_t most = 120;
        std::vector<std::string> stops;
        auto list = stops.end();
        auto const goesOn = [&] { return stops.empty() || !stops.back().empty(); };
        while (list == stops.end() && stops.size() < most && goesOn()) {
            std::vector<std::string> const some = press({}, keysAtOnce);
            stops.insert(stops.end(), some.begin(), some.end());
            list = std::ranges::find_if(stops, isList);
        }
        if (list == stops.end()) return {};
        auto const beyond = static_cast<std::size_t>(stops.end() - list) - 1;
        EXPECT_TRUE(beyond == 0 || isList(press("shift", beyond).back())) << "the way back";
        stops.erase(list, stops.end());
        return stops;
    }

private:
    static constexpr std::size_t keysAtOnce = 12;

    static bool isList(std::string const& stop) { return stop.starts_with("focus list \"Pages\""); }
    /// Tab so many times in one go, and what got the focus by each.
    std::vector<std::string> press(std::string const& held, std::size_t times) {
        std::vector<std::string> words{"key", "--delay", "4"};
        words.insert(words.end(), times, "Tab");
        if (!held.empty()) {
            words.insert(words.begin(), {"keydown", held});
            words.insert(words.end(), {"keyup", held});
        }
        EXPECT_TRUE(bench_.xdotool(words));
        std::vector<std::string> lines;
        while (lines.size() < times && (lines.empty() || !lines.back().empty()))
            lines.push_back(next("focus "));
        return lines;
    }
};

} // namespace

TEST_F(WindowTab, GoesRoundOnEveryPageAndKeepsItsStopsInSight) {
    std::unique_ptr<ChildProcess> const list = bench_.start({"wainscot-gallery", "--list"});
    ASSERT_EQ(list->waitForExit(), 0);
    std::vector<std::string> const pages = list->lines();
    open(pages.front(), {900, 560}, {"--focus"});
    circle();
    std::vector<std::string> all;
    for (std::string const& page : pages) {
        std::vector<std::string> const stops = circle();
        ASSERT_GE(stops.size(), 5u) << page << ": the messages and the looks";
        EXPECT_THAT(stops, testing::Each(HasSubstr(" in sight "))) << page;
        all.insert(all.end(), stops.begin(), stops.end());
        bench_.key({"ctrl+Next"});
    }
    for (char const* stop : {"button \"Play\"", "checkbox \"Loop\"", "label \"Plain\"", "button \"Paste\""})
        EXPECT_THAT(all, testing::Contains(HasSubstr(stop)));
}

TEST_F(WindowGallery, APressReachesItsWidgetAndItsMessageTheOwner) {
    clickOn(plain_);
    expectLines({"entered  Plain", "focused  Plain", "pressed  Plain", "released  Plain", "clicked  Plain"});
    bench_.key({"Tab"});
    expectLines({"unfocused  Plain", "focused  Destroys itself"});
    bench_.key({"shift+Tab", "space"});
    expectLines({"focused  Plain", "clicked  Plain"});
    bench_.wheel(1);
    expectLines({"wheel  Plain"});
}

TEST_F(WindowGallery, APressIsHeldOutOfTheWindowAndBack) {
    XY<int> const plain = middleOf(plain_);
    pressAt(plain);
    expectLines({"pressed  Plain"});
    bench_.glidePointer(plain, XY<int>(3, 3));
    expectLines({"left  Plain"});
    bench_.releaseButton();
    expectLines({"released  Plain"});
    pressAt(plain);
    bench_.glidePointer(plain, at(nowhere));
    bench_.glidePointer(at(nowhere), plain);
    bench_.releaseButton();
    EXPECT_EQ(next("clicked"), "clicked  Plain") << "the first release was outside";
}

TEST_F(WindowGallery, HandlersDestroyTheirWidgetAndTheWindow) {
    XY<int> const destroysItself = areaOf("label \"Destroys itself\"").middle();
    clickAt(at(destroysItself));
    expectLines({"clicked  (sender has gone)"});
    EXPECT_TRUE(bench_.waitForColour(window_, destroysItself, dark_.childWindow(eChildPanel).getAsLong()))
        << "the page shows where it was";
    clickOn("label \"Destroys the window\"");
    EXPECT_EQ(gallery_->waitForExit(), 0);
}

TEST_F(WindowGallery, TheContentsFollowTheWindowsSizeAndItClosesByItsButton) {
    XY<int> const size = bench_.sizeOf(window_);
    bench_.xdotool({"windowsize", std::to_string(window_), "800", "600"});
    // The bottom edge of the log stays at the same distance from the window's.
    EXPECT_TRUE(
        bench_.waitForColour(window_, XY<int>(500, 600 - 30), dark_.window(eWindowRecessed).getAsLong()));
    EXPECT_NE(bench_.sizeOf(window_), size);
    bench_.minimise(window_);
    bench_.activate(window_);
    EXPECT_TRUE(
        bench_.waitForColour(window_, XY<int>(500, 600 - 30), dark_.window(eWindowRecessed).getAsLong()));
    bench_.requestClose(window_);
    EXPECT_EQ(gallery_->waitForExit(), 0);
}

TEST_F(WindowGallery, AtRestItDoesNotWakeUp) {
    bench_.movePointer(middleOf(plain_));
    expectLines({"entered  Plain"});
    long const before = wakeUpsAtRest();
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
    // It may still be on its way.
    EXPECT_TRUE(waitUntil([&] {
        return bench_.colourAt(at({bench_.sizeOf(window_).x - 4, background.y})) == colour;
    })) << "while the button is held";
    bench_.releaseButton();
}
