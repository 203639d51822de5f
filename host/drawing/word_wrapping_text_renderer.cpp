#include "host/drawing/word_wrapping_text_renderer.h"

#include "host/drawing/line_breaker_p.h"
#include "host/drawing/text_boundaries_p.h"
#include "host/drawing/text_painter_p.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace wainscot::Glib {
namespace {

WordWrappingTextRenderer::Line lineFrom(LineBreaker::Line const& broken, std::wstring_view text) {
    if (broken.fragments.empty()) return {text.size(), 0, 0};
    LineBreaker::Fragment const& first = broken.fragments.front();
    LineBreaker::Fragment const& last = broken.fragments.back();
    std::size_t length = last.start + last.length - first.start;
    while (!broken.endsParagraph && length > 0 && TextBoundaries::isBlank(text[first.start + length - 1]))
        --length;
    double const width = broken.endsParagraph ? last.x + last.width : broken.width;
    constexpr double most = 1 << 30;
    return {first.start, length, static_cast<int>(std::lround(std::min(width, most)))};
}

} // namespace

WordWrappingTextRenderer::WordWrappingTextRenderer(Qv::Ptr<iFont> font, int width)
    : font_(font ? std::move(font) : loadFont({})), width_(width) {}

std::size_t WordWrappingTextRenderer::analyse(LightweightString<wchar_t> const& text) {
    text_ = text;
    lines_.clear();
    for (LineBreaker::Line const& broken : LineBreaker({{text_.view(), font_}}, width_).breakLines())
        lines_.push_back(lineFrom(broken, text_.view()));
    return lines_.size();
}

XY<int> WordWrappingTextRenderer::size() const {
    int widest = 0;
    for (Line const& line : lines_) widest = std::max(widest, line.width);
    auto const height = static_cast<std::int64_t>(lines_.size()) * font_->lineHeight();
    return {widest, static_cast<int>(std::min<std::int64_t>(height, std::numeric_limits<int>::max()))};
}

LightweightString<wchar_t> WordWrappingTextRenderer::lineAt(std::size_t index) const {
    return text_.substr(lines_[index].start, lines_[index].length);
}

void WordWrappingTextRenderer::processString(
    LightweightString<wchar_t> const& text,
    std::function<bool(LightweightString<wchar_t> const& line, std::size_t index)> const& visit) {
    analyse(text);
    for (std::size_t i = 0; i < lines_.size(); ++i)
        if (!visit(lineAt(i), i)) return;
}

void WordWrappingTextRenderer::renderString(CanvasRenderer& renderer, LightweightString<wchar_t> const& text,
                                            IntBox const& area, Colour const& colour,
                                            TextAlignment alignment) {
    if (lines_.empty() || !(text == text_)) analyse(text);
    if (!renderer.isDrawing()) return;
    int const x = alignment == eAlignRight ? area.x2 : alignment == eAlignCentre ? area.centre().x : area.x1;
    // Only the lines that can be seen are visited.
    std::int64_t const height = font_->lineHeight();
    IntBox const seen = RenderTarget(renderer).visibleBox();
    std::int64_t const above = std::max<std::int64_t>(0, std::int64_t(area.y2) - seen.y2 - height) / height;
    std::int64_t const lowest = std::max(area.y1, Coordinate::difference(seen.y1, font_->lineHeight()));
    std::int64_t top = area.y2 - above * height;
    for (auto i = static_cast<std::size_t>(above); i < lines_.size() && top - height >= lowest;
         ++i, top -= height)
        if (lines_[i].length > 0)
            renderer.renderPrimitive(TextDescription(lineAt(i), {x, static_cast<int>(top - font_->ascent())},
                                                     font_, colour, alignment));
}

} // namespace wainscot::Glib
