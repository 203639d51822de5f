#include "tests/panel_fixture.h"

#include "text/text_box.h"

#include "host/objects/description.h"
#include "host/objects/tooltip_details.h"
#include "host/services/text_ids.h"
#include "host/windows/look.h"

namespace wainscot {
namespace {

using enum StandardPanel::StandardWidgetFlags;
using namespace PanelMetrics;
using PanelTitles = PanelTest;

TEST_F(PanelTitles, ATitleThatIsCutHasATip) {
    StandardPanel* panel = addTo(root_, new StandardPanel({120, 80}));
    TooltipDetails details;
    XY<int> const onTitle{60, 80 - panel->calcSize(spacingButton) / 2};
    panel->setTitle(L"Short");
    EXPECT_FALSE(panel->getTooltipDetails(onTitle, details));
    panel->setTitle(L"A title that is much too long for it");
    ASSERT_TRUE(panel->getTooltipDetails(onTitle, details));
    EXPECT_EQ(details.text.text(), L"A title that is much too long for it");
    EXPECT_FALSE(panel->getTooltipDetails({60, 10}, details));
    root_->removeWidget(panel);
    EXPECT_EQ(panel, nullptr);
    EXPECT_EQ(root_->numChildren(), 0u);
}

TEST_F(PanelTitles, TheTitleBringsTheStripAndKnowsItsResource) {
    ProbePanel* const panel = add(Border::sunken);
    Glob* const child = panel->addChild(new ProbeGlob(20, 20), UserTopLeft(0, 0));
    panel->setTitle(TextId::settings, eRedrawYes);
    EXPECT_EQ(panel->getTitleResId(), TextId::settings);
    EXPECT_EQ(panel->getTitleW(), resourceStrW(TextId::settings));
    EXPECT_EQ(fromTopRight(child).y, edge + B + 2 * I) << "it made way";
    EXPECT_EQ(Driver::describe(*panel).name, panel->getTitleW());
    driver_.settle();
    EXPECT_EQ(driver_.pixel(panel, {150, 150 - 2 * edge - B}),
              panel->getColoursForWidgets().separator().getAsLong() & 0xFFFFFF);
    Glib::FontDesc const large({}, 30);
    int const before = panel->calcTitleWidth(L"Wide");
    panel->setTitle(L"Other", large);
    EXPECT_EQ(panel->getTitleResId(), 999999u);
    EXPECT_GT(panel->calcTitleWidth(L"Wide"), before);
    panel->setTitle(L"Other", large);
    EXPECT_THAT(panel->log, ElementsAre("title", "title")) << "an equal one is no change";
    panel->setTitle(L"");
    EXPECT_EQ(fromTopRight(child).y, edge);
    panel->setMovable(true);
    dragIn(panel, {20, 140}, {30, -20});
    EXPECT_EQ(panel->box().bottomLeft(), XY<int>(100, 100)) << "there is nothing to take it by";
}

TEST_F(PanelTitles, AnEditableTitleReportsToTheParent) {
    ProbePanel* const panel = add(Border::window, closeWidget);
    panel->setTitle(L"Reel");
    settle();
    panel->log.clear();
    panel->setEditableTitle(true);
    auto* made = dynamic_cast<TextBox*>(panel->getTitleWidget());
    ASSERT_TRUE(made);
    EXPECT_TRUE(panel->isStandardWidget(made));
    EXPECT_EQ(made->getText(), L"Reel");
    EXPECT_EQ(made->size(), XY<int>(200 - 2 * edge - 2 * I - B, B));
    EXPECT_EQ(made->box().y2, panel->height() - edge);
    panel->resize(250, 150);
    EXPECT_EQ(made->width(), panel->calcMaxTitleWidgetWidth());
    EXPECT_THAT(panel->log, ElementsAre("titlesize", "titlesize"));
    settle();

    driver_.click(made);
    driver_.key(Key::end);
    driver_.type(L" 2");
    driver_.key(Key::enter);
    EXPECT_EQ(sent(), "StdPanelTitleTyped StdPanelTitleTyped StdPanelTitleChanged");
    EXPECT_EQ(root_->messages()[0].sender, panel);
    EXPECT_EQ(panel->getTitleW(), L"Reel 2");
    panel->setTitle(L"Set");
    EXPECT_EQ(made->getText(), L"Set");
    Look::setSize(1.5);
    EXPECT_EQ(made->getFont(), panel->getTitleFont()) << "with the size of all texts";
    Look::setSize(1);

    panel->setEditableTitle(false);
    EXPECT_EQ(panel->getTitleWidget(), nullptr);
    EXPECT_EQ(panel->getStandardWidgetFlags(), closeWidget);
    panel->handleTitleEdited();
    panel->setEditableTitle(true);
    driver_.click(panel->getTitleWidget());
    driver_.type(L"Bye");
    panel->dieAt = "title";
    driver_.key(Key::enter);
    EXPECT_EQ(ProbePanel::died, 1);
}

} // namespace
} // namespace wainscot
