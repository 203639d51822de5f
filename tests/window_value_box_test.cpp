#include "tests/gallery_window.h"

#include <gmock/gmock.h>

namespace wainscot {
namespace {

/// Value boxes in a real window, dragged past the edge of the screen.
class WindowValueBox : public GalleryWindow {
protected:
    void moveBy(int pixels) {
        ASSERT_TRUE(bench_.xdotool({"mousemove_relative", "--", std::to_string(pixels), "0"}));
    }
    void expectOf(std::string const& box, std::string const& value) {
        std::string const changed = box + "  varibox_ValueChanged  " + value;
        EXPECT_EQ(next(changed), changed);
        std::string const complete = box + "  varibox_ChangeComplete";
        EXPECT_EQ(next(complete), complete + "  " + value);
    }
};

TEST_F(WindowValueBox, ADragHasNoEndAtTheScreensEdgeAndTheKeysGoOn) {
    open("value_boxes");
    XY<int> const place = middleOf("numberbox \"timecode\"");
    pressAt(place);
    // Frame 1510 at first; 30 steps for each of these ways, on a screen that is 1024 pixels wide.
    for (int i = 0; i < 20; ++i) moveBy(90);
    ASSERT_TRUE(bench_.releaseButton());
    expectOf("timecode", "00:01:24:10");
    // The pointer is back on the box.
    ASSERT_TRUE(bench_.wheel(1));
    expectOf("timecode", "00:01:24:11");
    pressAt(place);
    moveBy(30);
    EXPECT_FALSE(next("timecode  varibox_ValueChanged  00:01:24:21").empty());
    ASSERT_TRUE(bench_.key({"Escape"}));
    expectOf("timecode", "00:01:24:11");
    ASSERT_TRUE(bench_.releaseButton());
    ASSERT_TRUE(bench_.key({"7", "2", "Return"}));
    expectOf("timecode", "00:00:02:22");
    ASSERT_TRUE(bench_.key({"Prior"}));
    expectOf("timecode", "00:00:03:22");
}

} // namespace
} // namespace wainscot
