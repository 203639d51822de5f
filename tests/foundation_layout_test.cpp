#include "tests/host_fixture.h"

#include "buttons/button.h"
#include "foundation/form_layout.h"
#include "foundation/layout/box_layout.h"
#include "foundation/standard_panel.h"

namespace wainscot {
namespace {

class LayoutTest : public HostTest {
protected:
    StandardPanel* openPanel(int width = 400, int height = 300) {
        auto* panel = new StandardPanel(XY<int>{width, height});
        EXPECT_TRUE(host_->globManager().realize(panel));
        return panel;
    }
};

TEST_F(LayoutTest, aFormPlacesLabelsAndControlsAndRelatesThem) {
    StandardPanel* const panel = openPanel(400, 300);
    auto* const form = panel->setLayout(std::make_unique<FormLayout>());
    auto* const first = form->addRow(L"Name", std::make_unique<Button>(Button::InitArgs(L"Choose", "a")));
    auto* const second =
        form->addRow(L"A longer name", std::make_unique<Button>(Button::InitArgs(L"Choose", "b")));
    driver_.settle();
    int const gap = UifStd::getWidgetGap();
    int const labels = Label(L"A longer name").width();
    int const height = UifStd::getButtonHeight();
    EXPECT_EQ(form->labelOf(1)->box(),
              IntBox::sized({gap, 300 - gap - 2 * height - UifStd::getRowGap()}, {labels, height}));
    EXPECT_EQ(first->box(), makeBox({gap + labels + gap, 300 - gap - height}, {400 - gap, 300 - gap}));
    EXPECT_EQ(second->box().x1, first->box().x1);
    EXPECT_EQ(first->getLabelledBy(), form->labelOf(0));
    EXPECT_EQ(form->numLayouts(), 1u);
}

} // namespace
} // namespace wainscot
