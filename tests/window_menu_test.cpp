#include "tests/gallery_window.h"

#include "host/drawing/uif_std.h"

#include <gmock/gmock.h>

using namespace wainscot;

namespace {

/// Menus in real pop-up windows, worked with the pointer and the keys.
class WindowMenu : public GalleryWindow {
protected:
    /// Opens the context menu of the page at a place of the window, and waits until it can be seen.
    void openAt(XY<int> place) {
        place_ = place;
        ASSERT_TRUE(bench_.movePointer(at(place)) && bench_.click(3));
    }
    /// The middle of a row of the menu that was opened there.
    XY<int> row(int index) {
        int const high = UifStd::getTableRowHeight();
        return at(place_) + XY<int>{40, UifStd::getIndentWidth() + high / 2 + index * high};
    }
    XY<int> place_;
};

} // namespace

TEST_F(WindowMenu, AnItemIsChosenWithThePointerAndWithTheKeys) {
    open("menus");
    XY<int> const page = areaOf("button \"Pop up\"").middle() - XY<int>{0, 60};
    openAt(page);
    ASSERT_TRUE(waitUntil([&] {
        return bench_.movePointer(row(1) + XY<int>{1, 0}) && bench_.movePointer(row(1)) && bench_.click() &&
               !next("about").empty();
    }));
    ASSERT_TRUE(bench_.click(3));
    ASSERT_TRUE(bench_.key({"Down", "Down", "Return"}));
    EXPECT_EQ(next("about"), "about");
    // Through two sub-menus.
    ASSERT_TRUE(bench_.click(3));
    ASSERT_TRUE(bench_.key({"Down", "Right", "Right", "Up", "Return"}));
    EXPECT_EQ(next("folder"), "folder");
}

TEST_F(WindowMenu, ADropDownIsWorkedWithPressesAndWithKeysAlone) {
    open("drop_downs");
    auto const rates = areaOf("dropdown \"Frame rate\"").middle();
    XY<int> const third =
        rates + XY<int>{0, UifStd::getButtonHeight() / 2 + UifStd::getTableRowHeight() * 5 / 2};
    ASSERT_TRUE(bench_.movePointer(at(rates)) && bench_.click());
    // The second press closes the list, so that a press where its row was chooses nothing there.
    ASSERT_TRUE(bench_.click());
    ASSERT_TRUE(bench_.click());
    ASSERT_TRUE(bench_.movePointer(at(third) + XY<int>{1, 3}) &&
                bench_.movePointer(at(third) + XY<int>{0, 3}));
    ASSERT_TRUE(bench_.click());
    EXPECT_EQ(next("ddMenuBtnMsg"), "ddMenuBtnMsg  25");
    ASSERT_TRUE(bench_.movePointer(at(rates)));
    ASSERT_TRUE(bench_.click() && bench_.click());
    ASSERT_TRUE(bench_.key({"Tab", "F4", "Down", "Return"}));
    EXPECT_EQ(next("ddMenuBtnMsg"), "ddMenuBtnMsg  29.97");
    ASSERT_TRUE(bench_.key({"Up"}));
    EXPECT_EQ(next("ddMenuBtnMsg"), "ddMenuBtnMsg  25");
}
