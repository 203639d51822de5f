#include "host/drawing/syntax_highlighting_renderer.h"

#include "host/drawing/text_painter_p.h"

#include <algorithm>
#include <limits>

namespace wainscot {
namespace {

bool isWordCharacter(wchar_t c) {
    return (c >= L'a' && c <= L'z') || (c >= L'A' && c <= L'Z') || (c >= L'0' && c <= L'9') || c == L'_' ||
           c >= 0xC0;
}

/// The end of the stretch of word characters, or of others, that begins at `start`.
std::size_t endOfStretch(std::wstring_view text, std::size_t start) {
    std::size_t end = start + 1;
    while (end < text.size() && isWordCharacter(text[end]) == isWordCharacter(text[start])) ++end;
    return end;
}

/// Draws at an exact distance from the start of the line, as in a line of one colour. Gives the width of the
/// stretch.
double draw(CanvasRenderer& renderer, std::wstring_view stretch, Qv::Ptr<iFont> const& font,
            XY<int> const& position, double x, Colour const& colour) {
    RenderTarget const target(renderer);
    TextLine const line(Font::of(*font), stretch);
    TextRunPainter(target, *font, colour, 1.0).add(line, position, x);
    return line.width();
}

} // namespace

SyntaxHighightingRenderer::SyntaxHighightingRenderer(Qv::Ptr<iFont> font)
    : font_(font ? std::move(font) : Glib::loadFont({})) {}

void SyntaxHighightingRenderer::addKeyWord(LightweightString<wchar_t> const& word, Colour const& colour) {
    words_[std::wstring(word.view())] = colour;
}

bool SyntaxHighightingRenderer::isKeyWord(LightweightString<wchar_t> const& word) const {
    return words_.count(std::wstring(word.view())) > 0;
}

void SyntaxHighightingRenderer::render(CanvasRenderer& renderer, LightweightString<wchar_t> const& line,
                                       XY<int> const& position, Colour const& colour) const {
    std::wstring_view const text = line.view();
    int const margin = font_->size();
    XY<int> const low = position - XY<int>(margin, font_->descent() + margin);
    XY<int> const high = position + XY<int>(margin, font_->ascent() + margin);
    if (!renderer.isVisible({low.x, low.y, std::numeric_limits<int>::max(), high.y})) return;
    double x = 0;
    // Stretches of one colour are drawn together; a stretch that cannot be seen costs its width only.
    for (std::size_t start = 0; start < text.size();) {
        std::size_t end = endOfStretch(text, start);
        auto const known = words_.find(std::wstring(text.substr(start, end - start)));
        if (known == words_.end()) {
            while (end < text.size()) {
                std::size_t const next = endOfStretch(text, end);
                if (words_.count(std::wstring(text.substr(end, next - end)))) break;
                end = next;
            }
        }
        std::wstring_view const stretch = text.substr(start, end - start);
        x += draw(renderer, stretch, font_, position, x, known == words_.end() ? colour : known->second);
        start = end;
    }
    auto const length = static_cast<int>(std::min<double>(x, 1 << 30));
    RenderTarget(renderer).painted({low.x, low.y, Coordinate::sum(high.x, length), high.y});
}

} // namespace wainscot
