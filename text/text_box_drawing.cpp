#include "host/drawing/canvas_renderer.h"
#include "host/services/text_ids.h"
#include "look/field.h"
#include "look/ink.h"
#include "text/text_box.h"
#include "text/text_line_view_p.h"

namespace wainscot {

IntBox TextBox::textArea() const {
    auto const [left, right] = margins();
    // The caret at the end of a text that fills the box stands in the margin.
    return {left, 1, std::max<int>(width() - right + 1, left), height() - 1};
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
    drawBehindCorners(renderer);
    ControlLook::drawField(renderer, canvasArea(),
                           {.isActive = isInUse, .isHovered = isInUse && containsPointer()}, getPalette());
}

/// The ground of the window, in the corners that the field leaves free.
void TextBox::drawBehindCorners(CanvasRenderer& renderer) {
    IntBox const box = canvasArea();
    int const radius = std::min<int>(UifStd::getCornerRadius(), std::min(width(), height()));
    IntBox const corners[] = {{box.x1, box.y1, box.x1 + radius, box.y1 + radius},
                              {box.x2 - radius, box.y1, box.x2, box.y1 + radius},
                              {box.x1, box.y2 - radius, box.x1 + radius, box.y2},
                              {box.x2 - radius, box.y2 - radius, box.x2, box.y2}};
    renderer.renderBoxes(corners, getPalette().window(eWindowNormal));
}

void TextBox::drawText(CanvasRenderer& renderer) {
    IntBox const box = canvasArea();
    IntBox const area = textArea().translated(box.bottomLeft());
    int const baseline = getFontYOffset(height(), getFontPtr());
    Colour const hint = isActive() ? getPalette().text(eTextSecondary) : getTextColour();
    if (isDataMixed() && !isEditing_) {
        renderer.setClipRect(area);
        renderer.renderPrimitive(Glib::TextDescription(UIString(TextId::severalValues).text(),
                                                       {area.x1, box.y1 + baseline}, getFontPtr(), hint));
        return renderer.clearClipRect();
    }
    Palette const& palette = getPalette();
    TextLineView::Colours const colours{showsGhost_ ? hint : shownTextColour(), getSelectedTextColour(),
                                        palette.selection(eSelectionActive)};
    line_->draw(renderer, box.bottomLeft(), area, baseline, document().selection(), colours);
}

} // namespace wainscot
