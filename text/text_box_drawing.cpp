#include "host/drawing/canvas_renderer.h"
#include "host/services/text_ids.h"
#include "text/text_box.h"
#include "text/text_line_view_p.h"

namespace wainscot {

IntBox TextBox::textArea() const {
    auto const [left, right] = margins();
    // The caret at the end of a text that fills the box stands in the margin.
    return {left, 1, std::max<int>(width() - right + 1, left), height() - 1};
}

void TextBox::drawText(CanvasRenderer& renderer) {
    IntBox const box = canvasArea();
    IntBox const area = textArea().translated(box.bottomLeft());
    int const baseline = getFontYOffset(height(), getFontPtr());
    Colour const hint = isActive() ? getPalette().text(eTextSecondary) : getTextColour();
    if (isDataMixed() && !isEditing()) {
        renderer.setClipRect(area);
        renderer.renderPrimitive(Glib::TextDescription(UIString(TextId::severalValues).text(),
                                                       {area.x1, box.y1 + baseline}, getFontPtr(), hint));
        return renderer.clearClipRect();
    }
    Palette const& palette = getPalette();
    TextLineView::Colours const colours{showsGhost() ? hint : shownTextColour(), getSelectedTextColour(),
                                        palette.selection(eSelectionActive)};
    line_->draw(renderer, box.bottomLeft(), area, baseline, document().selection(), colours);
}

} // namespace wainscot
