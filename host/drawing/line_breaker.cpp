#include "host/drawing/line_breaker_p.h"

#include "host/drawing/bidi_levels_p.h"
#include "host/drawing/font_p.h"
#include "host/drawing/text_boundaries_p.h"

#include <algorithm>

namespace wainscot {
namespace {

bool endsLine(wchar_t c) {
    return c == L'\n' || c == 0x2028 || c == 0x2029;
}

/// A blank at which a line may end; no-break spaces hold their words together.
bool isGap(wchar_t c) {
    return TextBoundaries::isBlank(c) && c != 0xA0 && !endsLine(c);
}

} // namespace

std::vector<LineBreaker::Line> LineBreaker::breakLines() {
    for (std::size_t i = 0; i < spans_.size(); ++i) addSpan(i);
    endLine(true);
    return std::move(lines_);
}

void LineBreaker::addSpan(std::size_t index) {
    std::wstring_view const text = spans_[index].text;
    for (std::size_t at = 0; at < text.size();) {
        if (endsLine(text[at])) {
            endLine(true);
            ++at;
            continue;
        }
        std::size_t const start = at;
        while (at < text.size() && !isGap(text[at]) && !endsLine(text[at])) ++at;
        std::size_t const length = at - start;
        while (at < text.size() && isGap(text[at])) ++at;
        addWord(index, start, length, at - start - length);
    }
}

void LineBreaker::addWord(std::size_t span, std::size_t start, std::size_t length, std::size_t blanks) {
    Font const& font = Font::of(*spans_[span].font);
    std::wstring_view const text = spans_[span].text;
    double const width = font.exactWidth(text.substr(start, length));
    double wanted = width;
    // Text that follows without a blank in other spans stays with it, unless no line could hold it all.
    if (!wordIsOpen_ && blanks == 0 && start + length == text.size() && isLimited()) {
        double const whole = width + continuationWidth(span + 1);
        if (fits(whole)) wanted = whole;
    }
    if (isLimited() && !fits(x_ + wanted) && !line_.fragments.empty()) endLine(false);
    if (isLimited() && !fits(width))
        cutWord(span, start, length);
    else
        addPiece(span, start, length, width);
    if (length > 0) line_.width = x_;
    if (blanks > 0)
        addPiece(span, start + length, blanks, font.exactWidth(text.substr(start + length, blanks)));
    wordIsOpen_ = blanks == 0;
}

/// The width of the rest of a word, which goes on in the spans from `span` on; measured only until it does
/// not fit.
double LineBreaker::continuationWidth(std::size_t span) const {
    double width = 0;
    for (; span < spans_.size() && fits(width); ++span) {
        std::wstring_view const text = spans_[span].text;
        auto const end =
            std::find_if(text.begin(), text.end(), [](wchar_t c) { return isGap(c) || endsLine(c); });
        width += Font::of(*spans_[span].font)
                     .exactWidth(text.substr(0, static_cast<std::size_t>(end - text.begin())));
        if (end != text.end()) break;
    }
    return width;
}

/// Joins neighbouring pieces of one span, so that a line has few fragments.
void LineBreaker::addPiece(std::size_t span, std::size_t start, std::size_t length, double width) {
    if (length == 0) return;
    Fragment* last = line_.fragments.empty() ? nullptr : &line_.fragments.back();
    if (last && last->span == span && last->start + last->length == start) {
        last->length += length;
        last->width += width;
    } else {
        line_.fragments.push_back({span, start, length, x_, width});
    }
    x_ += width;
    line_.ascent = std::max(line_.ascent, spans_[span].font->ascent());
    line_.descent = std::max(line_.descent, spans_[span].font->descent());
}

/// How much of a block fits on the line, found in one layout.
std::size_t LineBreaker::fittingPlain(Font const& font, std::wstring_view piece) const {
    TextLayoutPtr const layout = TextLayouts::get(font, piece);
    std::size_t fitting = 0;
    for (std::size_t i = 1; i <= piece.size(); ++i)
        if (layout->isStop(i) && fits(x_ + static_cast<double>(layout->gap(i)))) fitting = i;
    return fitting;
}

/// The same when the gaps do not run from left to right: each beginning is laid out by itself.
std::size_t LineBreaker::fittingTurned(Font const& font, std::wstring_view piece) const {
    std::size_t low = 0;
    std::size_t high = piece.size();
    while (low < high) {
        std::size_t const middle = (low + high + 1) / 2;
        if (fits(x_ + font.blockWidth(piece.substr(0, middle))))
            low = middle;
        else
            high = middle - 1;
    }
    while (!TextBoundaries::isStop(piece, low)) --low;
    return low;
}

void LineBreaker::cutWord(std::size_t span, std::size_t start, std::size_t length) {
    Font const& font = Font::of(*spans_[span].font);
    std::wstring_view const word = spans_[span].text.substr(start, length);
    for (std::size_t at = 0; at < word.size();) {
        std::wstring_view const piece = word.substr(at, firstBlock(word.substr(at)));
        std::size_t fitting = Bidi::mayTurn(piece) ? fittingTurned(font, piece) : fittingPlain(font, piece);
        if (fitting == 0 && x_ == 0) fitting = TextBoundaries::nextStop(piece, 0);
        addPiece(span, start + at, fitting, font.blockWidth(piece.substr(0, fitting)));
        line_.width = x_;
        at += fitting;
        if (fitting < piece.size()) endLine(false);
    }
}

void LineBreaker::endLine(bool endsParagraph) {
    line_.endsParagraph = endsParagraph;
    if (line_.ascent == 0 && !spans_.empty()) {
        line_.ascent = spans_[0].font->ascent();
        line_.descent = spans_[0].font->descent();
    }
    lines_.push_back(std::move(line_));
    line_ = {};
    x_ = 0;
    wordIsOpen_ = false;
}

} // namespace wainscot
