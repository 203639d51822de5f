#include "text/text_line_view_p.h"

#include "host/drawing/canvas_renderer.h"

#include <algorithm>

namespace wainscot {

namespace {

/// An edit may change the shape of so many characters before it.
constexpr int shapedTogether = 8;

} // namespace

void TextLineView::setFont(Qv::Ptr<iFont> font) {
    shown_.setFont(std::move(font));
    isOther_ = true;
}

void TextLineView::show(LightweightString<wchar_t> const& text, std::size_t length) {
    shown_.setText(text);
    length_ = length;
    isOther_ = true;
}

void TextLineView::edit(TextEdit const& edit, LightweightString<wchar_t> const& inserted) {
    shown_.replace(edit.index, edit.removed, inserted);
    length_ = length_ - edit.removed + inserted.size();
    auto const index = static_cast<int>(edit.index);
    editedFrom_ = editedFrom_ < 0 ? index : std::min(editedFrom_, index);
}

/// The gaps between which two selections differ.
std::optional<std::pair<int, int>> TextLineView::differing(TextSelection const& a, TextSelection const& b) {
    if (a.isEmpty() && b.isEmpty()) return std::nullopt;
    if (a.isEmpty()) return std::pair(b.first(), b.last());
    if (b.isEmpty()) return std::pair(a.first(), a.last());
    bool const beginAlike = a.first() == b.first();
    bool const endAlike = a.last() == b.last();
    if (beginAlike && endAlike) return std::nullopt;
    if (beginAlike) return std::minmax(a.last(), b.last());
    if (endAlike) return std::minmax(a.first(), b.first());
    return std::pair(std::min(a.first(), b.first()), std::max(a.last(), b.last()));
}

/// Letters may reach beyond their gaps.
TextLineView::Extent TextLineView::between(int from, int to) const {
    int const overhang = shown_.font()->size() / 2;
    return {displayX(from) - overhang, displayX(to) + overhang};
}

std::optional<TextLineView::Extent> TextLineView::takeChanged(int width, TextSelection const& selection) {
    Painted const before = std::exchange(painted_, {origin_, scroll_, selection});
    int const edited = std::exchange(editedFrom_, -1);
    auto const selected = differing(before.selection, selection);
    bool const isEdited = edited >= 0;
    bool const moved = before.origin != origin_ || before.scroll != scroll_;
    bool const all = moved || !shown_.runsLeftToRight() || (isEdited && selected);
    if (std::exchange(isOther_, false) || ((isEdited || selected || moved) && all)) return Extent{0, width};
    if (isEdited) return Extent{between(std::max(edited - shapedTogether, 0), edited).left, width};
    if (selected) return between(selected->first, selected->second);
    return std::nullopt;
}

void TextLineView::place(int width, int leftMargin, int rightMargin, TextAlignment alignment, int cursor) {
    int const room = width - leftMargin - rightMargin;
    int const text = textWidth();
    origin_ = alignment == eAlignRight    ? width - rightMargin - text
              : alignment == eAlignCentre ? (width - text) / 2
                                          : leftMargin;
    if (room > text) {
        scroll_ = 0;
        return;
    }
    int const caret = gapX(cursor) + origin_;
    scroll_ = std::clamp(scroll_, caret - leftMargin - room, caret - leftMargin);
    // An end of the text does not stay inside while there is more at the other side.
    int const left = leftMargin + scroll_;
    int const right = left + room;
    int const end = origin_ + text;
    if (left > origin_ && right > end)
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
