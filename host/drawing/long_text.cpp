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
/// Longer texts are not copied into the blocks at their ends, but bring blocks of their own.
constexpr std::size_t longLength = 4 * TextLayout::maxLength;

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

/// The last of `count` blocks that `isNotBehind`; the first when all are.
template <class IsNotBehind>
std::size_t lastBlock(std::size_t count, IsNotBehind isNotBehind) {
    std::size_t first = 0;
    for (std::size_t behind = count; first + 1 < behind;) {
        std::size_t const middle = first + (behind - first) / 2;
        (isNotBehind(middle) ? first : behind) = middle;
    }
    return first;
}

/// Puts `fresh` in the place of `count` elements.
template <class Element>
void exchangeIn(std::vector<Element>& all, std::size_t first, std::size_t count, std::vector<Element> fresh) {
    auto const at = all.begin() + static_cast<std::ptrdiff_t>(first);
    auto const end = at + static_cast<std::ptrdiff_t>(count);
    auto const kept = static_cast<std::ptrdiff_t>(std::min(fresh.size(), count));
    std::move(fresh.begin(), fresh.begin() + kept, at);
    if (fresh.size() > count)
        all.insert(end, std::make_move_iterator(fresh.begin() + kept), std::make_move_iterator(fresh.end()));
    else
        all.erase(at + kept, end);
}

} // namespace

std::size_t LongText::blockOf(std::size_t index) const {
    return lastBlock(blocks_.size(), [&](std::size_t block) { return place(block).start <= index; });
}

std::size_t LongText::blockAt(double x) const {
    while (measured_ < blocks_.size() && place(measured_).left <= x) measureBefore(measured_ + 1);
    return lastBlock(measured_, [&](std::size_t block) { return place(block).left <= x; });
}

/// Blocks that may turn their line are measured with it.
void LongText::measureBefore(std::size_t block) const {
    for (; measured_ < block; ++measured_) {
        Block const& next = blocks_[measured_];
        if (next.width < 0) next.width = font_ ? Font::of(*font_).plainWidth(next.text).value_or(0) : 0;
        double const right = place(measured_).left + next.width;
        places_[measured_ + 1].left = measured_ + 1 < settled_ ? right : right - shift_.left;
    }
}

void LongText::cut(std::vector<Block>& blocks, Text const& text, std::size_t target) {
    for (std::size_t start = 0; start < text.size();) {
        std::wstring_view const rest = text.view().substr(start);
        blocks.push_back({text, rest.substr(0, nextLength(rest, target))});
        start += blocks.back().text.size();
    }
}

std::size_t LongText::countTurning(std::span<Block const> blocks) {
    return static_cast<std::size_t>(
        std::ranges::count_if(blocks, [](Block const& block) { return Bidi::mayTurn(block.text); }));
}

/// Afterwards that many places need no shift.
void LongText::settle(std::size_t places) {
    if (settled_ == places_.size()) shift_ = {};
    if (shift_.start == 0 && shift_.left == 0) settled_ = places;
    Place const back{0 - shift_.start, -shift_.left};
    for (; settled_ < places; ++settled_) places_[settled_] = sum(places_[settled_], shift_);
    for (; settled_ > places; --settled_) places_[settled_ - 1] = sum(places_[settled_ - 1], back);
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
    text.reserve(length());
    for (Block const& block : blocks_) {
        lengths.push_back(block.text.size());
        text += block.text;
    }
    line_ = std::make_shared<BidiLine const>(Font::of(*font_), std::move(text), lengths, known);
}

void LongText::share(Text const& text) {
    line_.reset();
    std::vector<Block> blocks;
    cut(blocks, text, TextLayout::maxLength);
    measured_ = 0;
    exchange(0, blocks_.size(), std::move(blocks));
}

void LongText::setFont(Qv::Ptr<iFont> font) {
    if (font == font_) return;
    line_.reset();
    font_ = std::move(font);
    for (Block& block : blocks_) block.width = -1;
    measured_ = 0;
    order(0, 0, 0);
}

void LongText::replace(std::size_t index, std::size_t count, std::wstring_view text) {
    replaceBy(index, count, text, text.size() > longLength ? Text(text) : Text());
}

void LongText::replaceBy(std::size_t index, std::size_t count, std::wstring_view text, Text const& whole) {
    index = std::min(index, length());
    count = std::min(count, length() - index);
    if (count == 0 && text.empty()) return;
    if (blocks_.empty()) return share(whole.empty() ? Text(text) : whole);
    Edit const edit = editAt(index, count, text.size());
    std::vector<Block> fresh;
    if (text.size() > longLength)
        fresh = blocksOfLong(edit, whole);
    else
        cut(fresh, joined(edit.before, text, edit.after), roomyLength);
    exchange(edit.first, edit.count, std::move(fresh));
}

/// `added` characters come in the place of `count` others.
LongText::Edit LongText::editAt(std::size_t index, std::size_t count, std::size_t added) const {
    std::size_t const end = index + count;
    std::size_t first = blockOf(index);
    std::size_t stop = blockOf(end) + 1;
    // At the seam of two blocks a new character may belong to the cluster at its other side.
    if (index == place(first).start && first > 0) --first;
    if (end == place(stop).start && stop < blocks_.size()) ++stop;
    std::size_t const start = place(first).start;
    std::size_t const left = place(stop).start - start - count + added;
    if (left < shortLength && stop < blocks_.size()) ++stop;
    return {first, stop - first, {start, index}, {end, place(stop).start}};
}

/// Only its first and its last block meet others.
std::vector<LongText::Block> LongText::blocksOfLong(Edit const& edit, Text const& text) const {
    std::vector<Block> own;
    cut(own, text, TextLayout::maxLength);
    std::vector<Block> blocks;
    blocks.reserve(own.size() + 4);
    cut(blocks, joined(edit.before, own.front().text, {}), roomyLength);
    blocks.insert(blocks.end(), own.begin() + 1, own.end() - 1);
    cut(blocks, joined({}, own.back().text, edit.after), roomyLength);
    return blocks;
}

void LongText::exchange(std::size_t first, std::size_t count, std::vector<Block> fresh) {
    settle(first + count + 1);
    Place const before = places_[first + count];
    std::size_t const knownBehind = measured_ - std::min(measured_, first + count);
    std::size_t const added = fresh.size();
    std::vector<Place> ends(added, places_[first]);
    for (std::size_t i = 0; i < added; ++i)
        ends[i].start = (i == 0 ? places_[first] : ends[i - 1]).start + fresh[i].text.size();
    if (turning_ > 0) turning_ -= countTurning(std::span(blocks_).subspan(first, count));
    turning_ += countTurning(fresh);
    exchangeIn(places_, first + 1, count, std::move(ends));
    exchangeIn(blocks_, first, count, std::move(fresh));

    settled_ = first + added + 1;
    shift_.start += places_[first + added].start - before.start;
    measured_ = std::min(measured_, first);
    if (knownBehind > 0) {
        measureBefore(first + added);
        shift_.left += places_[first + added].left - before.left;
        measured_ += knownBehind;
    }
    order(first, count, added);
}

template <class String>
void LongText::append(String& string, Range range) const {
    for (std::size_t block = blockOf(range.from); range.from < range.to; ++block) {
        std::wstring_view const text = blocks_[block].text;
        std::size_t const skipped = range.from - place(block).start;
        std::size_t const taken = std::min(text.size() - skipped, range.to - range.from);
        string.append(text.substr(skipped, taken));
        range.from += taken;
    }
}

LongText::Text LongText::joined(Range before, std::wstring_view text, Range after) const {
    Text all;
    all.reserve(before.to - before.from + text.size() + after.to - after.from);
    append(all, before);
    all.append(text);
    append(all, after);
    return all;
}

std::wstring LongText::substr(std::size_t index, std::size_t count) const {
    index = std::min(index, length());
    count = std::min(count, length() - index);
    std::wstring part;
    part.reserve(count);
    append(part, {index, index + count});
    return part;
}

int LongText::width() const {
    if (line_) return rounded(line_->width());
    measureBefore(blocks_.size());
    return rounded(end().left);
}

double LongText::exactGap(std::size_t index) const {
    if (line_) return line_->gap(index);
    std::size_t const block = blockOf(index);
    measureBefore(block);
    Place const at = place(block);
    TextLayoutPtr const layout = TextLayouts::get(Font::of(*font_), blocks_[block].text);
    return at.left + static_cast<double>(layout->gap(index - at.start));
}

int LongText::gapX(std::size_t index) const {
    return blocks_.empty() || !font_ ? 0 : rounded(exactGap(std::min(index, length())));
}

std::size_t LongText::indexAt(int x) const {
    if (blocks_.empty() || !font_) return 0;
    if (line_) return line_->nearestStop(x);
    std::size_t const block = blockAt(x);
    Place const at = place(block);
    TextLayoutPtr const layout = TextLayouts::get(Font::of(*font_), blocks_[block].text);
    return at.start + layout->nearestStop(static_cast<float>(x - at.left));
}

std::vector<LongText::Span> LongText::spans(std::size_t from, std::size_t to, int left, int right) const {
    to = std::min(to, length());
    if (from >= to || left >= right || !font_) return {};
    std::vector<Span> found;
    auto const add = [&](double x1, double x2) {
        Span const span{std::max(rounded(x1), left), std::min(rounded(x2), right)};
        if (span.left >= span.right) return;
        if (!found.empty() && span.left <= found.back().right)
            found.back().right = span.right;
        else
            found.push_back(span);
    };
    if (line_) {
        line_->forEachCovered(from, to, left, right, add);
    } else {
        // What lies farther to the right is not measured for this.
        std::size_t const last = place(blockAt(right) + 1).start;
        add(from <= last ? exactGap(from) : right, to <= last ? exactGap(to) : right);
    }
    return found;
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
    std::size_t const last = blockAt(rightmost);
    for (std::size_t block = blockAt(leftmost); block <= last; ++block)
        painter.add(TextLayouts::get(Font::of(*font_), blocks_[block].text)->glyphs(), position,
                    place(block).left);
    target.painted(line);
}

} // namespace wainscot::Glib
