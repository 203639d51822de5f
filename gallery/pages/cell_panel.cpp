#include "gallery/pages/cell_panel.h"

#include "gallery/caption.h"

namespace wainscot::gallery {

CellPanel::CellPanel(XY<int> size, LogLine log) : StandardPanel(size), log_(std::move(log)) {
    setTabGoesOn(true);
}

int CellPanel::handleMessageEvent(LightweightString<char> name, Glob* sender) {
    if (name == pootMsg) return 0;
    auto* const button = dynamic_cast<Button*>(sender);
    say((button ? button->getWidgetValue() + L"  sends  " : LightweightString<wchar_t>()) + fromUTF8(name));
    // A click takes no focus by itself; here Tab is to go on from the button that was clicked.
    if (button) setTabStopFocus(*button);
    return 1;
}

int CellPanel::cell(int column) {
    int const margin = 2 * UifStd::getIndentWidth();
    return margin + column * (buttonSize().x + margin);
}

int CellPanel::rowTop(int row) {
    int const margin = 2 * UifStd::getIndentWidth();
    return margin + row * (buttonSize().y + margin);
}

Glob* CellPanel::addNote(LightweightString<wchar_t> const& text, int column, int row) {
    auto note = std::make_unique<Caption>(text, Caption::Kind::note);
    // Nearer to the row below, to which it belongs.
    int const down = rowTop(row + 1) - note->height() - UifStd::getIndentWidth();
    return addChild(std::move(note), UserTopLeft(cell(column), down));
}

} // namespace wainscot::gallery
