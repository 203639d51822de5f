#include "host/drawing/canvas_renderer.h"
#include "host/services/text_ids.h"
#include "text/multi_line_text_box.h"
#include "text/text_rows_view_p.h"

#include <algorithm>

namespace wainscot {

namespace {

/// While the rows of a box are drawn.
class Drawing {
public:
    Drawing(CanvasRenderer*& place, CanvasRenderer& renderer) : place_(place) { place_ = &renderer; }
    ~Drawing() {
        place_->clearClipRect();
        place_ = nullptr;
    }
    Drawing(Drawing const&) = delete;
    Drawing& operator=(Drawing const&) = delete;

private:
    CanvasRenderer*& place_;
};

} // namespace

void MultiLineTextBox::drawHint(CanvasRenderer& renderer, Text const& text) {
    IntBox const area = textArea().translated(canvasArea().bottomLeft());
    Colour const ink = isActive() ? getPalette().text(eTextSecondary) : getTextColour();
    int const baseline = area.y2 - getFontPtr()->ascent();
    renderer.setClipRect(area);
    renderer.renderPrimitive(Glib::TextDescription(text, {area.x1, baseline}, getFontPtr(), ink));
    renderer.clearClipRect();
}

void MultiLineTextBox::drawText(CanvasRenderer& renderer) {
    if (isDataMixed() && !isEditing()) return drawHint(renderer, UIString(TextId::severalValues).text());
    if (isGhostLabelVisible()) return drawHint(renderer, getGhostLabel().text());
    IntBox const area = textArea().translated(canvasArea().bottomLeft());
    int const descent = getFontPtr()->descent();
    Drawing const drawing(renderer_, renderer);
    int bottom = area.y2;
    // An overrider of `drawLine` may change the text, and with it how many rows there are.
    for (drawn_ = 0; drawn_ < view_->shown().size(); ++drawn_) {
        bottom -= view_->rowHeight();
        rowBox_ = IntBox(area.x1, bottom, area.x2, bottom + view_->rowHeight()).intersection(area);
        renderer.clearClipRect();
        // The uppermost pixels of a row look like dirt.
        bool const isSliver = rowBox_.height() < view_->rowHeight() / 2;
        if (isSliver || !renderer.isVisible(rowBox_)) continue;
        drawLine(recordOf(drawn_), {area.x1 + view_->rowX(view_->shown()[drawn_]), bottom + descent});
    }
}

MultiLineTextBox::SubStringRec MultiLineTextBox::recordOf(std::size_t index) const {
    TextRowsView::Shown const& shown = view_->shown()[index];
    SubStringRec record;
    record.line = static_cast<unsigned int>(shown.line);
    record.start = static_cast<int>(shown.column);
    record.length = static_cast<int>(shown.row.length);
    auto const [first, last] = TextRowsView::selectedPart(shown.row, document().selection());
    if (first == last) return record;
    auto const end = std::min(last, shown.row.length);
    record.isLineEndSelected = last > end;
    if (first < end)
        record.selection = {static_cast<int>(shown.column + first), static_cast<int>(shown.column + end)};
    return record;
}

void MultiLineTextBox::drawLine(SubStringRec const& row, XY<int> const& place) {
    drawCharacters(row, {row.start, row.start + row.length}, place, shownTextColour());
}

void MultiLineTextBox::drawRowIn(IntBox const& box, XY<int> const& place, Colour const& colour) {
    renderer_->setClipRect(box);
    view_->shown()[drawn_].text.draw(*renderer_, place, colour);
}

/// What characters of the row cover, from one place in it to another.
std::vector<IntBox> MultiLineTextBox::boxesOf(int from, int to, XY<int> const& place) const {
    std::vector<IntBox> boxes;
    auto const spans =
        view_->shown()[drawn_].text.spans(static_cast<std::size_t>(from), static_cast<std::size_t>(to),
                                          rowBox_.x1 - place.x, rowBox_.x2 - place.x);
    for (auto const [left, right] : spans)
        boxes.emplace_back(place.x + left, rowBox_.y1, place.x + right, rowBox_.y2);
    return boxes;
}

void MultiLineTextBox::drawGround(Colour const& colour) {
    if (!renderer_) return;
    renderer_->setClipRect(rowBox_);
    renderer_->renderPrimitive(Glib::RectDescription(rowBox_, colour));
}

void MultiLineTextBox::drawCharacters(SubStringRec const& row, NumRange<int, Unordered> const& range,
                                      XY<int> const& place, Colour const& colour) {
    if (!renderer_ || drawn_ >= view_->shown().size()) return;
    auto const clamped = [&](std::int64_t column) {
        return static_cast<int>(std::clamp<std::int64_t>(column - row.start, 0, row.length));
    };
    int const from = clamped(std::min(range.start(), range.end()));
    int const to = clamped(std::max(range.start(), range.end()));
    bool const isWhole = from == 0 && to == row.length;
    // Letters may reach beyond their gaps.
    if (isWhole)
        drawRowIn(rowBox_, place, colour);
    else
        for (IntBox const& box : boxesOf(from, to, place)) drawRowIn(box, place, colour);
    Palette const& palette = getPalette();
    Colour const& ground = palette.selection(isEditing() ? eSelectionActive : eSelectionInactive);
    Colour const ink = isEditing() ? getSelectedTextColour() : colour;
    if (row.selection.start() >= 0) {
        int const first = std::max(from, clamped(row.selection.start()));
        int const last = std::min(to, clamped(row.selection.end()));
        if (first < last)
            for (IntBox const& box : boxesOf(first, last, place)) {
                renderer_->setClipRect(box);
                renderer_->renderPrimitive(Glib::RectDescription(box, ground));
                drawRowIn(box, place, ink);
            }
    }
    if (!row.isLineEndSelected || to < row.length) return;
    int const x = place.x + view_->shown()[drawn_].text.width();
    // The line feed looks as a blank would.
    IntBox const end =
        IntBox(x, rowBox_.y1, x + getFontPtr()->textWidth(L" "), rowBox_.y2).intersection(rowBox_);
    renderer_->setClipRect(rowBox_);
    if (end.width() > 0) renderer_->renderPrimitive(Glib::RectDescription(end, ground));
}

} // namespace wainscot
