#include "text/text_line_view_p.h"

#include "host/drawing/canvas_renderer.h"

#include <algorithm>

namespace wainscot {

void TextLineView::show(LightweightString<wchar_t> const& text, std::size_t length) {
    shown_.setText(text);
    length_ = length;
}

void TextLineView::edit(TextEdit const& edit, LightweightString<wchar_t> const& inserted) {
    shown_.replace(edit.index, edit.removed, inserted);
    length_ = length_ - edit.removed + inserted.size();
}

void TextLineView::place(int width, int leftMargin, int rightMargin, TextAlignment alignment, int cursor) {
    int const room = width - leftMargin - rightMargin;
    // How far a long text reaches does not matter where it begins at the left.
    int const text = alignment == eAlignLeft ? shown_.widthUpTo(room + scroll_ + 1) : textWidth();
    origin_ = alignment == eAlignRight    ? width - rightMargin - text
              : alignment == eAlignCentre ? (width - text) / 2
                                          : leftMargin;
    if (room > text) {
        scroll_ = 0;
        return;
    }
    int const left = leftMargin + scroll_;
    int const right = left + room;
    int const caret = gapX(cursor) + origin_;
    int const end = origin_ + text;
    if (caret < left)
        scroll_ -= left - caret;
    else if (caret > right)
        scroll_ += caret - right;
    else if (left > origin_ && right > end)
        scroll_ -= right - end;
    else if (left < origin_ && right < end)
        scroll_ += origin_ - left;
}

int TextLineView::indexAt(int displayX) const {
    int const x = std::max(displayX + scroll_ - origin_, 0);
    return static_cast<int>(std::min(shown_.indexAt(x), length_));
}

std::vector<IntBox> TextLineView::selectedParts(TextSelection const& selection, int x,
                                                IntBox const& clip) const {
    std::vector<IntBox> parts;
    auto const first = static_cast<std::size_t>(selection.first());
    auto const last = static_cast<std::size_t>(selection.last());
    for (auto const [left, right] : shown_.spans(first, last, clip.x1 - x, clip.x2 - x))
        parts.emplace_back(left + x, clip.y1, right + x, clip.y2);
    return parts;
}

void TextLineView::draw(CanvasRenderer& renderer, XY<int> const& box, IntBox const& clip, int baseline,
                        TextSelection const& selection, Colours const& colours) const {
    XY<int> const place{box.x + origin_ - scroll_, box.y + baseline};
    renderer.setClipRect(clip);
    shown_.draw(renderer, place, colours.text);
    if (!selection.isEmpty())
        for (IntBox const& part : selectedParts(selection, place.x, clip)) {
            renderer.setClipRect(part);
            renderer.renderPrimitive(Glib::RectDescription(part, colours.selection));
            shown_.draw(renderer, place, colours.selectedText);
        }
    renderer.clearClipRect();
}

} // namespace wainscot
