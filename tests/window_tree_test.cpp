#include "tests/gallery_window.h"

namespace wainscot {
namespace {

/// A tree in a real window, worked with the pointer and the keys.
class WindowTree : public GalleryWindow {};

TEST_F(WindowTree, ItemsAreOpenedAndDragged) {
    open("tree");
    XY<int> const from = middleOf("treeitem \"Notes\"");
    XY<int> const to = middleOf("treeitem \"Music\"");
    pressAt(from);
    EXPECT_FALSE(next("tree_selected  Notes").empty());
    ASSERT_TRUE(bench_.glidePointer(from, to));
    ASSERT_TRUE(bench_.releaseButton());
    EXPECT_FALSE(next("tree_dropped").empty());
    ASSERT_TRUE(bench_.key({"Home", "Left", "Down", "Right", "Right"}));
    EXPECT_FALSE(next("tree_expanded  Music").empty());
    EXPECT_FALSE(next("tree_selected  Monday").empty());
}

} // namespace
} // namespace wainscot
