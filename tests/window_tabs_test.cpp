#include "tests/gallery_window.h"

namespace wainscot {
namespace {

/// Tabs in a real window.
class WindowTabs : public GalleryWindow {};

TEST_F(WindowTabs, AreWorkedWithThePointerAndTheKeys) {
    open("tabs");
    pressAt(middleOf("tab \"Blur\""));
    ASSERT_TRUE(bench_.releaseButton());
    EXPECT_FALSE(next("PageRequired  Blur").empty());
    EXPECT_FALSE(next("PageChanged  Blur").empty());
    ASSERT_TRUE(bench_.key({"ctrl+Next"}));
    EXPECT_FALSE(next("PageChanged  Grain").empty());
    ASSERT_TRUE(bench_.key({"ctrl+shift+Tab"}));
    EXPECT_FALSE(next("PageChanged  Blur").empty());
}

} // namespace
} // namespace wainscot
