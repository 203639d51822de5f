#include "host/drawing/canvas_renderer.h"
#include "host/services/text_ids.h"
#include "look/field.h"
#include "look/ink.h"
#include "text/text_box.h"
#include "text/text_line_view_p.h"

namespace wainscot {

IntBox TextBox::textArea() const {
    IntBox const box = canvasArea();
    auto const [left, right] = margins();
    // The caret at the end of a text that fills the box stands in the margin.
    return {box.x1 + left, box.y1 + 1, std::max(box.x2 - right + 1, box.x1 + left), box.y2 - 1};
}

Colour TextBox::shownTextColour() const {
    return getTextColour();
}

void TextBox::draw() {
    drawBackground();
    CanvasRenderer renderer(canvas(), canvasArea());
    drawText(renderer);
    drawFocusMark();
}

void TextBox::drawBackground() {
    CanvasRenderer renderer(canvas(), canvasArea());
    bool const isInUse = takesInput();
    renderer.renderPrimitive(Glib::RectDescription(canvasArea(), getPalette().window(eWindowNormal)));
    ControlLook::drawField(renderer, canvasArea(),
                           {.isActive = isInUse, .isHovered = isInUse && containsPointer()}, getPalette());
}

void TextBox::drawText(CanvasRenderer& renderer) {
    IntBox const box = canvasArea();
    int const baseline = getFontYOffset(height(), getFontPtr());
    Colour const hint = isActive() ? getPalette().text(eTextSecondary) : getTextColour();
    if (isDataMixed() && !isEditing_) {
        renderer.setClipRect(textArea());
        renderer.renderPrimitive(Glib::TextDescription(
            UIString(TextId::severalValues).text(), {textArea().x1, box.y1 + baseline}, getFontPtr(), hint));
        return renderer.clearClipRect();
    }
    Palette const& palette = getPalette();
    TextLineView::Colours const colours{showsGhost_ ? hint : shownTextColour(), getSelectedTextColour(),
                                        palette.selection(eSelectionActive)};
    line_->draw(renderer, box.bottomLeft(), textArea(), baseline, document().selection(), colours);
}

} // namespace wainscot
