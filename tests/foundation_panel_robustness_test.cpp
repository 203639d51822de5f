#include "tests/host_fixture.h"

#include "buttons/button.h"
#include "foundation/standard_panel.h"
#include "host/drawing/uif_std.h"
#include "host/windows/look.h"

namespace wainscot {
namespace {

using RoughPanels = OneWindowTest;

TEST_F(RoughPanels, AnySizeTitleAndBorderIsLaidOutAndDrawn) {
    expectDiagnostic("message not handled");
    int const chain = 2 * StandardPanel::calcSize(spacingIndent) + 4 * StandardPanel::calcSize(spacingButton);
    XY<int> const sizes[] = {{0, 0}, {1, 1}, {3, 200}, {200, 3}, {9, 9}, {65535, 65535}};
    LightweightString<wchar_t> const titles[] = {L"", L"Title", L"\x01\n\x7f",
                                                 std::wstring(100000, L'W').c_str()};
    for (auto const& title : titles) {
        for (XY<int> const size : sizes) {
            for (int kind = Border::none; kind <= Border::group; ++kind) {
                auto const type = static_cast<Border::eType>(kind);
                bool const isHuge = size.x == 9 || size.x == 65535;
                auto* const panel =
                    addTo(root_, new StandardPanel(StandardPanel::InitArgs(
                                     static_cast<unsigned short>(size.x), static_cast<unsigned short>(size.y),
                                     isHuge ? Border(type, 65535) : Border(type))));
                panel->addStandardWidgets(0x1F | StandardPanel::latchWidget | StandardPanel::editableTitle);
                panel->setTitle(title);
                panel->set_radius(kind * 1e6);
                panel->setMovable(true);
                panel->setResizable(true);
                panel->addStatusWidget(new Button(L"s", "s", 0, 0), 40);
                driver_.settle();
                IntBox const area = panel->getUserArea();
                EXPECT_GE(area.width(), 0);
                EXPECT_GE(area.height(), 0);
                EXPECT_TRUE(panel->bounds().contains(area)) << size.x << " " << kind;
                EXPECT_EQ(panel->calcMaxTitleWidgetWidth(),
                          std::max(0, size.x - 2 * panel->getBorder().getSize() - chain));
                driver_.clickAt(panel->globXYToScreenXY({0, 0}));
                EXPECT_EQ(panel->size(), size);
                panel->setMinimised(true);
                driver_.settle();
                panel->setMinimised(false);
                driver_.settle();
                EXPECT_EQ(panel->size(), size);
                destroy(panel);
            }
        }
    }
}

TEST_F(RoughPanels, EachStandardWidgetMayGoWhileItIsPressed) {
    using enum StandardWidget;
    for (StandardWidget const which : {close, size, pin, settings, doIt}) {
        for (bool whole : {false, true}) {
            auto* const panel = new StandardPanel(200, 150);
            panel->addStandardWidgets(0x1F);
            root_->addChild(panel, BottomLeft(20, 20));
            driver_.settle();
            expectDiagnostic("message not handled");
            driver_.press(panel->getStandardWidget(which));
            if (whole)
                destroy(panel);
            else
                panel->removeStandardWidgets(0x1F);
            driver_.settle();
            driver_.release();
            driver_.settle();
            if (!whole) {
                EXPECT_EQ(panel->numChildren(), 0u);
                destroy(panel);
            }
        }
    }
}

TEST_F(RoughPanels, AMinimisedPanelStaysAsTallAsItsStrip) {
    auto* const panel = new StandardPanel(200, 150);
    panel->setTitle(L"Reel");
    panel->setBorderStyle(Border::window);
    root_->addChild(panel, BottomLeft(20, 20));
    panel->setMinimised(true);
    panel->setBorderStyle(Border::none);
    driver_.settle();
    EXPECT_EQ(panel->height(), panel->getTitleBar().height());
    EXPECT_EQ(panel->height(), StandardPanel::calcSize(spacingButton));
    panel->setBorderStyle(Border::window);
    EXPECT_EQ(panel->height(), panel->getTitleBar().height());
    EXPECT_GT(panel->height(), StandardPanel::calcSize(spacingButton));
    panel->setTitle(L"");
    EXPECT_FALSE(panel->isMinimised()) << "nothing would be left of it";
    EXPECT_EQ(panel->height(), 150);
}

} // namespace
} // namespace wainscot
