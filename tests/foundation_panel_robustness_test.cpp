#include "tests/host_fixture.h"

#include "buttons/button.h"
#include "foundation/standard_panel.h"
#include "host/drawing/uif_std.h"
#include "host/windows/look.h"

namespace wainscot {
namespace {

class RoughPanels : public HostTest {
protected:
    RoughPanels() : root_(openWindow(400, 300)) {}
    RecordingParent* root_;
};

TEST_F(RoughPanels, AnySizeTitleAndBorderIsLaidOutAndDrawn) {
    LightweightString<wchar_t> const titles[] = {L"", L"\x01\n\x7f", std::wstring(1000000, L'W').c_str()};
    for (auto const& title : titles) {
        for (unsigned short const side : std::initializer_list<unsigned short>{0, 1, 9, 65535}) {
            for (int kind = Border::none; kind <= Border::group; ++kind) {
                auto const type = static_cast<Border::eType>(kind);
                auto* const panel = new StandardPanel(
                    StandardPanel::InitArgs(side, side, side % 2 == 0 ? Border(type) : Border(type, 65535)));
                panel->addStandardWidgets(0x9F);
                panel->setTitle(title);
                panel->set_radius(kind * 1e6);
                root_->addChild(panel, BottomLeft(0, 0));
                auto* const status = new Button(L"s", "s", 0, 0);
                panel->addStatusWidget(status, 40);
                driver_.settle();
                IntBox const area = panel->getUserArea();
                EXPECT_GE(area.width(), 0);
                EXPECT_GE(area.height(), 0);
                EXPECT_GE(panel->calcMaxTitleWidgetWidth(), 0);
                XY<int> const size = panel->size();
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
