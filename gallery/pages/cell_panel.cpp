#include "gallery/pages/cell_panel.h"

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
    LayoutOptions options;
    // Nearer to the row below, to which it belongs.
    options.vertical = LayoutAlign::end;
    return grid_->add(std::make_unique<Label>(UIString(text), Label::Part::secondary),
                      {.row = row, .column = column, .columns = columns}, options);
}

} // namespace wainscot::gallery
