#include "tests/gallery_window.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <utility>

namespace wainscot {

void GalleryWindow::SetUp() {
    ASSERT_EQ(bench_.problem(), "");
}

void GalleryWindow::TearDown() {
    if (HasFailure() && gallery_)
        std::printf("unread lines:\n%serrors:\n%s\n", gallery_->unreadLines().c_str(),
                    bench_.errors().c_str());
}

void GalleryWindow::open(std::string const& page, XY<int> size, std::vector<std::string> const& more) {
    page_ = page;
    size_ = std::to_string(size.x) + "x" + std::to_string(size.y);
    std::vector<std::string> words{"wainscot-gallery", "--echo", "--desktop", "--page", page_,
                                   "--size",           size_};
    words.insert(words.end(), more.begin(), more.end());
    gallery_ = bench_.start(words);
    window_ = bench_.findWindow("Wainscot gallery");
    ASSERT_NE(window_, 0u) << bench_.errors();
    ASSERT_TRUE(waitUntil([&] { return bench_.isActive(window_); }));
    // The heading of the list of pages: ground and letters.
    Area const heading = areaOf("label \"Wainscot\"");
    ASSERT_TRUE(waitUntil([&] {
        std::uint32_t const ground = bench_.colourAt(at(heading.corner - XY<int>{2, 0}));
        for (int x = 0; x < heading.size.x; ++x)
            if (bench_.colourAt(at(heading.corner + XY<int>{x, heading.size.y / 2})) != ground) return true;
        return false;
    })) << "painted";
}

GalleryWindow::Area GalleryWindow::areaOf(std::string const& widget) {
    std::string const script = testing::TempDir() + "/place-" + std::to_string(::getpid());
    std::ofstream(script) << "place " << widget << "\n";
    auto const layout = bench_.start(
        {"wainscot-gallery", "--offscreen", "--page", page_, "--size", size_, "--script", script});
    std::istringstream line(layout->waitForLine("place "));
    EXPECT_EQ(layout->waitForExit(), 0) << widget << ": " << bench_.errors();
    std::filesystem::remove(script);
    std::string word;
    Area area;
    line >> word >> area.corner.x >> area.corner.y >> area.size.x >> area.size.y;
    EXPECT_FALSE(line.fail()) << widget << " is not on the page";
    return area;
}

void GalleryWindow::clickAt(XY<int> place) {
    ASSERT_TRUE(bench_.movePointer(place));
    ASSERT_TRUE(bench_.click());
}

void GalleryWindow::pressAt(XY<int> place) {
    ASSERT_TRUE(bench_.movePointer(place));
    ASSERT_TRUE(bench_.pressButton());
}

void GalleryWindow::expectLines(std::vector<std::string> const& lines) {
    for (std::string const& line : lines) EXPECT_FALSE(next(line).empty()) << line;
}

void GalleryWindow::expectNothingOf(std::string const& text) {
    for (std::string const& line : gallery_->lines())
        EXPECT_THAT(line, testing::Not(testing::HasSubstr(text)));
}

long GalleryWindow::wakeUpsAtRest() {
    long before = gallery_->wakeUps();
    // What the window manager still has to say, and the end of a press.
    EXPECT_TRUE(waitUntil([&] {
        letTimePass(std::chrono::milliseconds(500));
        long const earlier = std::exchange(before, gallery_->wakeUps());
        return earlier == before;
    }));
    return before;
}

} // namespace wainscot
