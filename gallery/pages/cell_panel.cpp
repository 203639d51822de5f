#include "gallery/pages/cell_panel.h"

#include "foundation/layout/box_layout.h"

namespace wainscot::gallery {

CellPanel::CellPanel(XY<int> size, LogLine log) : StandardPanel(size), log_(std::move(log)) {
    setTabGoesOn(true);
    auto grid = std::make_unique<GridLayout>();
    grid_ = grid.get();
    grid->setEqualColumns(true);
    setLayout(std::move(grid));
}

int CellPanel::handleMessageEvent(LightweightString<char> name, Glob* sender) {
    if (name == pootMsg) return 0;
    auto* const button = dynamic_cast<Button*>(sender);
    say((button ? button->getWidgetValue() + L"  sends  " : LightweightString<wchar_t>()) + fromUTF8(name));
    // A click takes no focus by itself; here Tab is to go on from the button that was clicked.
    if (button) setTabStopFocus(*button);
    return 1;
}

Label* CellPanel::addNote(LightweightString<wchar_t> const& text, int column, int row, int columns) {
    BoxLayout* const box =
        grid_->add(BoxLayout::makeColumn(), {.row = row, .column = column, .columns = columns},
                   {.vertical = LayoutAlign::end});
    // One gap more than below: it belongs to what comes below.
    box->addSpace(0);
    return box->add(std::make_unique<Label>(UIString(text), Label::Part::secondary),
                    {.minimum = {4, -1}, .unit = LayoutUnit::buttonHeight});
}

} // namespace wainscot::gallery
