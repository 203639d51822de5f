#include "tests/gallery_window.h"

namespace wainscot {
namespace {

/// A table in a real window, worked with the pointer.
class WindowTable : public GalleryWindow {
protected:
    XY<int> cell(Area const& heading, int x, int row) {
        return at({x, heading.corner.y + heading.size.y + rowHeight * row + rowHeight / 2});
    }
    static constexpr int rowHeight = 22;
};

TEST_F(WindowTable, EdgesAreDraggedAndRowsPickedWithShift) {
    open("table");
    Area const clip = areaOf("heading \"Clip\"");
    int const right = clip.corner.x + clip.size.x;
    clickAt(cell(clip, right + 20, 1));
    EXPECT_FALSE(next("MDCCurRowChanged  row 2  column 3").empty()) << "behind the edge is the next column";
    XY<int> const edge = at({right - 1, clip.middle().y});
    pressAt(edge);
    ASSERT_TRUE(bench_.glidePointer(edge, edge + XY<int>{60, 0}));
    ASSERT_TRUE(bench_.releaseButton());
    clickAt(cell(clip, right + 20, 3));
    EXPECT_FALSE(next("MDCCurRowChanged  row 4  column 2").empty()) << "the column is wider now";
    ASSERT_TRUE(bench_.xdotool({"keydown", "shift"}));
    clickAt(cell(clip, right + 20, 8));
    ASSERT_TRUE(bench_.xdotool({"keyup", "shift"}));
    EXPECT_FALSE(next("MDCTagsChanged  row 9  column 2  tags 6").empty());
}

} // namespace
} // namespace wainscot
