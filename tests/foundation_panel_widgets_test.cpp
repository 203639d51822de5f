#include "tests/panel_fixture.h"

#include "host/objects/description.h"
#include "host/services/text_ids.h"
#include "host/windows/look.h"

namespace wainscot {
namespace {

using enum StandardPanel::StandardWidgetFlags;
using namespace PanelMetrics;
using PanelStandardWidgets = PanelTest;

TEST_F(PanelStandardWidgets, TheChainRunsFromTheCornerWithoutGaps) {
    ProbePanel* const panel = add(Border::window, settingsWidget | pinWidget);
    Glob* const pin = panel->getStandardWidget(StandardWidget::pin);
    Glob* const settings = panel->getStandardWidget(StandardWidget::settings);
    EXPECT_EQ(fromTopRight(pin), XY<int>(edge, edge));
    EXPECT_EQ(fromTopRight(settings), XY<int>(edge + B, edge));

    panel->addStandardWidgets(closeWidget | sizeWidget | doItWidget);
    EXPECT_EQ(panel->getStandardWidget(StandardWidget::pin), pin) << "made once";
    EXPECT_EQ(panel->numChildren(), 5u);
    EXPECT_EQ(fromTopRight(panel->getStandardWidget(StandardWidget::close)), XY<int>(edge, edge));
    EXPECT_EQ(fromTopRight(panel->getStandardWidget(StandardWidget::size)), XY<int>(edge + B, edge));
    EXPECT_EQ(fromTopRight(pin), XY<int>(edge + 2 * B, edge));
    EXPECT_EQ(fromTopRight(settings), XY<int>(edge + 3 * B, edge));
    Glob* const doIt = panel->getStandardWidget(StandardWidget::doIt);
    EXPECT_EQ(doIt->box().x2, panel->width() - edge);
    EXPECT_EQ(doIt->box().y1, edge);
    EXPECT_EQ(panel->calcMaxTitleWidgetWidth(), 200 - 2 * edge - 2 * I - 4 * B);

    panel->resize(300, 200);
    EXPECT_EQ(fromTopRight(settings), XY<int>(edge + 3 * B, edge)) << "they follow the corner";
    panel->removeStandardWidgets(closeWidget | sizeWidget);
    EXPECT_EQ(fromTopRight(pin), XY<int>(edge, edge));
    panel->setBorder(Border(Border::line));
    EXPECT_EQ(fromTopRight(pin), XY<int>(1, 1));
    EXPECT_EQ(doIt->box().y1, 1);
    EXPECT_EQ(Driver::describe(*pin).name, resourceStrW(TextId::keepOpen)) << "an icon has a name, too";
    EXPECT_TRUE(panel->isStandardWidget(doIt));
    EXPECT_FALSE(panel->isStandardWidget(panel));
    EXPECT_FALSE(panel->isStandardWidget(nullptr));

    Look::setSize(2.0);
    EXPECT_EQ(pin->size(), XY<int>(2 * B, 2 * B));
    Look::setSize(1.0);
}

TEST_F(PanelStandardWidgets, TheOptionSlotHoldsWhatCameFirst) {
    ProbePanel* const both = add(Border::window, settingsWidget | latchWidget);
    EXPECT_NE(both->getStandardWidget(StandardWidget::settings), nullptr);
    EXPECT_EQ(both->getStandardWidget(StandardWidget::latch), nullptr);
    ProbePanel* const panel = add(Border::window, latchWidget);
    Glob* const latch = panel->getStandardWidget(StandardWidget::latch);
    panel->addStandardWidgets(settingsWidget);
    EXPECT_EQ(panel->getStandardWidget(StandardWidget::latch), latch);
    EXPECT_EQ(panel->numChildren(), 1u);
    panel->removeStandardWidgets(settingsWidget);
    EXPECT_EQ(panel->getStandardWidget(StandardWidget::latch), latch) << "it is no settings button";

    auto* const state = dynamic_cast<iStateButton*>(latch);
    panel->setSizeFlag(sizeMinimised);
    EXPECT_TRUE(state->isDown());
    panel->setSizeFlag(static_cast<size_state>(2));
    EXPECT_FALSE(state->isDown());
    EXPECT_THAT(panel->log, IsEmpty()) << "nobody is told";
    // A widget that went by itself can be asked for again.
    delete latch;
    panel->addStandardWidgets(0);
    EXPECT_NE(panel->getStandardWidget(StandardWidget::latch), nullptr);
}

TEST_F(PanelStandardWidgets, ThePinTellsItsPanelTheOpposite) {
    ProbePanel* const panel = add(Border::window, pinWidget);
    driver_.click(panel->getStandardWidget(StandardWidget::pin));
    EXPECT_TRUE(panel->isPinned());
    driver_.click(panel->getStandardWidget(StandardWidget::pin));
    EXPECT_FALSE(panel->isPinned());
    panel->handlePinned(true);
    EXPECT_THAT(panel->log, ElementsAre("message pin on", "stays", "message pin off", "closes", "stays"));
    panel->answers["message"] = 1;
    panel->log.clear();
    driver_.click(panel->getStandardWidget(StandardWidget::pin));
    EXPECT_THAT(panel->log, ElementsAre("message pin on"));
}

TEST_F(PanelStandardWidgets, APinnedPopUpStaysOpenUntilItIsReleased) {
    auto* const panel = new ProbePanel(StandardPanel::InitArgs(120, 80, Border(Border::window)));
    panel->addStandardWidgets(pinWidget | closeWidget);
    PopUpOptions options;
    options.place = XY<int>(200, 200);
    ASSERT_TRUE(host_->globManager().openPopUp(panel, options));
    driver_.settle();
    driver_.click(panel->getStandardWidget(StandardWidget::pin));
    driver_.clickAt(root_->globXYToScreenXY({5, 5}));
    EXPECT_EQ(ProbePanel::died, 0);
    driver_.click(panel->getStandardWidget(StandardWidget::pin));
    driver_.clickAt(root_->globXYToScreenXY({5, 5}));
    EXPECT_EQ(ProbePanel::died, 1) << "it is a pop-up like others again";
}

TEST_F(PanelStandardWidgets, EachOfItsWidgetsMayDestroyIt) {
    struct Case {
        StandardWidget which;
        int flag;
        char const* heard;
    };
    Case const cases[] = {
        {StandardWidget::close, closeWidget, "message poot"},
        {StandardWidget::close, closeWidget, "poot"},
        {StandardWidget::size, sizeWidget, "message freeze_flip"},
        {StandardWidget::size, sizeWidget, "flip"},
        {StandardWidget::pin, pinWidget, "message pin on"},
        {StandardWidget::pin, pinWidget, "stays"},
        {StandardWidget::settings, settingsWidget, "message settings on"},
        {StandardWidget::latch, latchWidget, "message option on"},
        {StandardWidget::doIt, doItWidget, "message do_it"},
    };
    for (Case const& c : cases)
        expectDeath(c.heard, c.flag,
                    [&](ProbePanel* panel) { driver_.click(panel->getStandardWidget(c.which)); });
}

TEST_F(PanelStandardWidgets, AWidgetMayBeRemovedInItsOwnMessage) {
    class Remover : public ProbePanel {
    public:
        using ProbePanel::ProbePanel;
        int handleMessageEvent(LightweightString<char>, Glob*) override {
            removeStandardWidgets(0x1F | latchWidget);
            return 1;
        }
    };
    auto* const panel = new Remover(StandardPanel::InitArgs(200, 150, Border(Border::window)));
    root_->addChild(panel, BottomLeft(100, 100));
    for (StandardWidget const which : {StandardWidget::close, StandardWidget::pin, StandardWidget::doIt}) {
        panel->addStandardWidgets(0x1F);
        driver_.settle();
        driver_.click(panel->getStandardWidget(which));
        EXPECT_EQ(panel->numChildren(), 0u);
        EXPECT_EQ(panel->getStandardWidgetFlags(), 0);
    }
}

TEST_F(PanelStandardWidgets, StatusWidgetsStandInARowBelowTheUserArea) {
    ProbePanel* const panel = add();
    EXPECT_EQ(panel->addStatusWidget(nullptr, 5), nullptr);
    expectDiagnostic("tree operation refused");
    Glob* const first = panel->addStatusWidget(new ProbeGlob(30, 20), 50);
    Glob* const second = panel->addStatusWidget(new ProbeGlob(30, 20), 0);
    EXPECT_EQ(first->box(), IntBox(edge + I, edge + 2, edge + I + 50, edge + 22));
    EXPECT_EQ(second->box().x1, first->box().x2 + UifStd::getWidgetGap());
    EXPECT_EQ(second->width(), 30);
    EXPECT_EQ(panel->getUserArea().y1, edge + B + I);
    EXPECT_FALSE(panel->isStandardWidget(first));
    delete first;
    delete second;
    EXPECT_EQ(panel->getUserArea().y1, edge);
}

TEST_F(PanelStandardWidgets, ColoursReachTheStandardWidgets) {
    ProbePanel* const panel = add(Border::window, closeWidget);
    Glob* const close = panel->getStandardWidget(StandardWidget::close);
    Palette const blue(Colour(0, 0, 0.5));
    panel->setPalette(blue);
    EXPECT_EQ(close->getPalette(), blue);
    panel->setcol(Colour(0.9, 0.9, 0.4), true);
    EXPECT_EQ(close->getPalette().window(eWindowNormal), Colour(0.9, 0.9, 0.4));
    panel->addStandardWidgets(pinWidget);
    EXPECT_EQ(panel->getStandardWidget(StandardWidget::pin)->getPalette(), panel->getColoursForWidgets());
    panel->addStandardWidgets(editableTitle);
    panel->setPalette(Palette(Colour::fromLong(0xF0E0D0)));
    EXPECT_EQ(panel->getTitleWidget()->getPalette(), panel->getColoursForWidgets());
    panel->setCol(Colour::fromLong(0x102030));
    EXPECT_EQ(panel->getTitleWidget()->getPalette(), panel->getColoursForWidgets());
}

} // namespace
} // namespace wainscot
