#include "host/drawing/html_layout_p.h"

#include <algorithm>

namespace wainscot {

HTMLRenderer::Layout::Layout(Paragraphs const& text, Glib::FontDesc const& wantedFont, int wantedWidth)
    : font(wantedFont), width(wantedWidth), overhang(Glib::loadFont(wantedFont)->lineHeight()) {
    // Half a line between paragraphs.
    int const gap = overhang / 2;
    std::int64_t top = 0;
    for (Paragraph const& paragraph : text) {
        std::vector<LineBreaker::Span> parts;
        for (Span const& span : paragraph.spans)
            parts.push_back(
                {span.text.view(), Glib::loadFont({font.name, font.size, font.style | span.style})});
        for (LineBreaker::Line& broken : LineBreaker(parts, width).breakLines()) {
            widest = std::max(widest, broken.width);
            lines.push_back({static_cast<std::uint32_t>(spans.size()), top, std::move(broken)});
            top = lines.back().bottom();
        }
        spans.push_back(std::move(parts));
        top += gap;
    }
}

std::span<HTMLRenderer::Layout::Line const> HTMLRenderer::Layout::linesBelow(std::int64_t height) const {
    auto const first = std::partition_point(lines.begin(), lines.end(),
                                            [&](Line const& line) { return line.bottom() <= height; });
    return {first, lines.end()};
}

std::span<LineBreaker::Fragment const> HTMLRenderer::Layout::fragmentsFrom(Line const& line, double x) {
    std::vector<LineBreaker::Fragment> const& fragments = line.broken.fragments;
    auto const first = std::partition_point(fragments.begin(), fragments.end(), [&](auto const& fragment) {
        return fragment.x + fragment.width <= x;
    });
    return {first, fragments.end()};
}

HTMLRenderer::Paragraphs::Paragraphs(std::vector<Paragraph> list) : list_(std::move(list)) {}
HTMLRenderer::Paragraphs::~Paragraphs() = default;

HTMLRenderer::Layout const& HTMLRenderer::Paragraphs::layout(Glib::FontDesc const& font, int width) const {
    std::unique_ptr<Layout>& kept = width < 1 ? unwrapped_ : wrapped_;
    int const wanted = std::max(width, 0);
    if (!kept || kept->width != wanted || !(kept->font == font))
        kept = std::make_unique<Layout>(*this, font, wanted);
    return *kept;
}

} // namespace wainscot
