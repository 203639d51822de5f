#include "host/drawing/long_text.h"

#include "host/drawing/bidi_line_p.h"
#include "host/drawing/font_p.h"
#include "host/drawing/text_boundaries_p.h"
#include "host/drawing/text_painter_p.h"

#include <algorithm>
#include <cmath>

namespace wainscot::Glib {
namespace {

/// Blocks from an edit leave room for more text, so that typing does not cut them again and again.
constexpr std::size_t roomyLength = TextLayout::maxLength / 2;
/// An edited block that is shorter is joined with the next one.
constexpr std::size_t shortLength = 32;

int rounded(double x) {
    constexpr double most = 1 << 30;
    return static_cast<int>(std::lround(std::clamp(x, -most, most)));
}

/// The length of the next block of about `target` characters: after a blank, or between clusters.
std::size_t nextLength(std::wstring_view text, std::size_t target) {
    if (target >= TextLayout::maxLength || text.size() <= TextLayout::maxLength) return firstBlock(text);
    std::size_t const most = target + target / 2;
    for (std::size_t cut = target; cut < most; ++cut)
        if (TextBoundaries::isBlank(text[cut - 1]) && TextBoundaries::isStop(text, cut)) return cut;
    for (std::size_t cut = target; cut < most; ++cut)
        if (TextBoundaries::isStop(text, cut)) return cut;
    return target;
}

} // namespace

/// The width of a block that runs from left to right only. Other blocks are counted and measured with their
/// line.
double LongText::measure(std::wstring_view piece) {
    std::optional<double> const width = font_ ? Font::of(*font_).plainWidth(piece) : std::nullopt;
    if (!width && Bidi::mayTurn(piece)) ++turning_;
    return width.value_or(0);
}

std::vector<LongText::Block> LongText::cut(std::wstring_view text, std::size_t target) {
    std::vector<Block> blocks;
    for (std::size_t start = 0; start < text.size();) {
        std::wstring_view const piece = text.substr(start, nextLength(text.substr(start), target));
        blocks.push_back({std::wstring(piece), measure(piece)});
        start += piece.size();
    }
    return blocks;
}

void LongText::sumFrom(std::size_t block) {
    starts_.resize(blocks_.size());
    lefts_.resize(blocks_.size());
    std::size_t start = block == 0 ? 0 : starts_[block - 1] + blocks_[block - 1].text.size();
    double left = block == 0 ? 0 : lefts_[block - 1] + blocks_[block - 1].width;
    for (; block < blocks_.size(); ++block) {
        starts_[block] = start;
        lefts_[block] = left;
        start += blocks_[block].text.size();
        left += blocks_[block].width;
    }
    length_ = start;
    width_ = left;
}

/// Orders a line with text from right to left again, after blocks were exchanged.
void LongText::order(std::size_t first, std::size_t removed, std::size_t added) {
    if (turning_ == 0 || !font_) return line_.reset();
    std::vector<BidiBlockPtr> known;
    if (line_) {
        known = line_->blocks();
        auto const at = known.begin() + static_cast<std::ptrdiff_t>(first);
        known.insert(known.erase(at, at + static_cast<std::ptrdiff_t>(removed)), added, nullptr);
    }
    std::vector<std::size_t> lengths;
    std::wstring text;
    text.reserve(length_);
    for (Block const& block : blocks_) {
        lengths.push_back(block.text.size());
        text += block.text;
    }
    line_ = std::make_shared<BidiLine const>(Font::of(*font_), std::move(text), lengths, known);
    width_ = line_->width();
}

void LongText::setText(std::wstring_view text) {
    turning_ = 0;
    line_.reset();
    blocks_ = cut(text, TextLayout::maxLength);
    sumFrom(0);
    order(0, 0, 0);
}

void LongText::setFont(Qv::Ptr<iFont> font) {
    if (font == font_) return;
    line_.reset();
    font_ = std::move(font);
    turning_ = 0;
    for (Block& block : blocks_) block.width = measure(block.text);
    sumFrom(0);
    order(0, 0, 0);
}

LongText::Place LongText::placeOf(std::size_t index) const {
    if (starts_.empty()) return {};
    auto const after = std::upper_bound(starts_.begin(), starts_.end(), index);
    auto const block = static_cast<std::size_t>(after - starts_.begin() - 1);
    return {block, starts_[block]};
}

void LongText::replace(std::size_t index, std::size_t count, std::wstring_view text) {
    index = std::min(index, length_);
    count = std::min(count, length_ - index);
    if (count == 0 && text.empty()) return;
    if (blocks_.empty()) return setText(text);
    Place const first = placeOf(index);
    std::size_t const end = index + count;
    std::size_t last = placeOf(end).block;
    std::size_t from = first.block;
    // At the seam of two blocks a new character may belong to the cluster at its other side.
    if (index == first.start && from > 0) --from;
    if (end >= starts_[last] + blocks_[last].text.size() && last + 1 < blocks_.size()) ++last;

    std::wstring merged;
    for (std::size_t i = from; i <= last; ++i) merged += blocks_[i].text;
    merged.replace(index - starts_[from], count, text);
    if (merged.size() < shortLength && last + 1 < blocks_.size()) merged += blocks_[++last].text;

    exchange(from, last + 1 - from, cut(merged, roomyLength));
}

void LongText::exchange(std::size_t first, std::size_t count, std::vector<Block> fresh) {
    auto const at = blocks_.begin() + static_cast<std::ptrdiff_t>(first);
    auto const end = at + static_cast<std::ptrdiff_t>(count);
    if (turning_ > 0)
        turning_ -= static_cast<std::size_t>(
            std::count_if(at, end, [](Block const& block) { return Bidi::mayTurn(block.text); }));
    std::size_t const added = fresh.size();
    auto const kept = static_cast<std::ptrdiff_t>(std::min(added, count));
    std::move(fresh.begin(), fresh.begin() + kept, at);
    if (added > count)
        blocks_.insert(end, std::make_move_iterator(fresh.begin() + kept),
                       std::make_move_iterator(fresh.end()));
    else
        blocks_.erase(at + kept, end);
    sumFrom(first);
    order(first, count, added);
}

std::wstring LongText::substr(std::size_t index, std::size_t count) const {
    index = std::min(index, length_);
    count = std::min(count, length_ - index);
    std::wstring part;
    part.reserve(count);
    for (Place at = placeOf(index); part.size() < count; ++at.block) {
        std::size_t const skipped = index + part.size() - starts_[at.block];
        part += blocks_[at.block].text.substr(skipped, count - part.size());
    }
    return part;
}

int LongText::width() const {
    return rounded(width_);
}

int LongText::gapX(std::size_t index) const {
    if (blocks_.empty() || !font_) return 0;
    index = std::min(index, length_);
    if (line_) return rounded(line_->gap(index));
    Place const at = placeOf(index);
    TextLayoutPtr const layout = TextLayouts::get(Font::of(*font_), blocks_[at.block].text);
    return rounded(lefts_[at.block] + static_cast<double>(layout->gap(index - at.start)));
}

std::size_t LongText::indexAt(int x) const {
    if (blocks_.empty() || !font_) return 0;
    if (line_) return line_->nearestStop(x);
    auto const after = std::upper_bound(lefts_.begin(), lefts_.end(), static_cast<double>(x));
    std::size_t const block =
        after == lefts_.begin() ? 0 : static_cast<std::size_t>(after - lefts_.begin() - 1);
    TextLayoutPtr const layout = TextLayouts::get(Font::of(*font_), blocks_[block].text);
    return starts_[block] + layout->nearestStop(static_cast<float>(x - lefts_[block]));
}

void LongText::draw(CanvasRenderer& renderer, XY<int> const& position, Colour const& colour) const {
    if (!renderer.isDrawing() || blocks_.empty() || !font_) return;
    RenderTarget const target(renderer);
    IntBox const seen = target.visibleBox();
    int const margin = font_->size();
    IntBox const line(seen.x1, Coordinate::difference(position.y, font_->descent() + margin), seen.x2,
                      Coordinate::sum(position.y, font_->ascent() + margin));
    if (!renderer.isVisible(line)) return;
    auto const leftmost = static_cast<double>(seen.x1) - margin - position.x;
    auto const rightmost = static_cast<double>(seen.x2) + margin - position.x;
    TextRunPainter painter(target, *font_, colour, 1.0);
    if (line_) {
        line_->forEachVisible(leftmost, rightmost, [&](std::span<PlacedGlyph const> glyphs, double x) {
            painter.add(glyphs, position, x);
        });
        return target.painted(line);
    }
    auto const after = std::upper_bound(lefts_.begin(), lefts_.end(), leftmost);
    std::size_t block = after == lefts_.begin() ? 0 : static_cast<std::size_t>(after - lefts_.begin() - 1);
    for (; block < blocks_.size() && lefts_[block] <= rightmost; ++block)
        if (lefts_[block] + blocks_[block].width >= leftmost)
            painter.add(TextLayouts::get(Font::of(*font_), blocks_[block].text)->glyphs(), position,
                        lefts_[block]);
    target.painted(line);
}

} // namespace wainscot::Glib
