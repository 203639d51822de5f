#include "host/drawing/bidi_line_p.h"

#include "host/drawing/text_boundaries_p.h"
#include "host/drawing/text_shaper_p.h"

#include <algorithm>
#include <cmath>

namespace wainscot {
namespace {

/// Blocks of longer lines are not cached when they are measured, so that they drive nothing else out of the
/// cache.
constexpr std::size_t keptLength = 16 * TextLayout::maxLength;

/// How far beside a block letters are looked for that may join with its own; marks may stand between them.
constexpr std::size_t joiningReach = 5;

/// Characters below never join with others.
constexpr wchar_t firstJoining = 0x300;

std::vector<std::size_t> blockLengths(std::wstring_view text) {
    std::vector<std::size_t> lengths;
    forEachBlock(text, [&](std::wstring_view block, std::size_t) {
        lengths.push_back(block.size());
        return true;
    });
    return lengths;
}

bool mayJoin(std::wstring_view text, std::size_t index) {
    return index > 0 && index < text.size() && text[index - 1] >= firstJoining &&
           text[index] >= firstJoining && !TextBoundaries::isBlank(text[index - 1]) &&
           !TextBoundaries::isBlank(text[index]);
}

std::wstring joiningBefore(std::wstring_view text, std::size_t index) {
    if (!mayJoin(text, index)) return {};
    std::size_t const length = std::min(index, joiningReach);
    return std::wstring(text.substr(index - length, length));
}

std::wstring joiningAfter(std::wstring_view text, std::size_t index) {
    return mayJoin(text, index) ? std::wstring(text.substr(index, joiningReach)) : std::wstring();
}

hb_script_t scriptOf(wchar_t c) {
    return TextShaper::scriptOf(TextBoundaries::shapedAs(static_cast<std::uint32_t>(c)));
}

/// The script that goes on behind a block.
std::uint32_t scriptAfter(std::wstring_view block, std::uint32_t before) {
    for (std::size_t i = block.size(); i > 0; --i) {
        hb_script_t const script = scriptOf(block[i - 1]);
        if (!TextShaper::takesPartInAnyScript(script)) return script;
    }
    return before;
}

/// The runs of a line, block by block.
class RunCutter {
public:
    explicit RunCutter(std::vector<BidiLevels::Run> const& runs) : runs_(runs) {}

    /// Called with the blocks in reading order.
    void cut(std::size_t start, std::size_t length, std::vector<std::uint8_t>& levels,
             std::vector<BlockContext::Stretch>& stretches) {
        std::size_t const end = start + length;
        while (start < end) {
            BidiLevels::Run const& run = runs_[next_];
            std::size_t const last = std::min(end, run.end);
            levels.push_back(run.level);
            stretches.push_back({static_cast<std::uint32_t>(last - start), run.isRightToLeft()});
            if (last == run.end) ++next_;
            start = last;
        }
    }

private:
    std::vector<BidiLevels::Run> const& runs_;
    std::size_t next_ = 0;
};

/// Whether a block is laid out the same without its line.
bool standsAlone(std::wstring_view block, BlockContext const& context) {
    bool const scriptMatters =
        context.script != HB_SCRIPT_LATIN && TextShaper::takesPartInAnyScript(scriptOf(block[0]));
    return context.stretches.size() == 1 && !context.stretches[0].rightToLeft && context.before.empty() &&
           context.after.empty() && !scriptMatters && !Bidi::mayTurn(block);
}

bool isSame(BlockContext const* a, BlockContext const* b) {
    return a && b ? *a == *b : a == b;
}

} // namespace

BidiLine::BidiLine(Font const& font, std::wstring_view text) : font_(font), text_(text) {
    measure(blockLengths(text_), {});
    place();
}

BidiLine::BidiLine(Font const& font, std::wstring text, std::vector<std::size_t> const& lengths,
                   std::vector<BidiBlockPtr> const& known)
    : font_(font), text_(std::move(text)) {
    measure(lengths, known);
    place();
}

void BidiLine::measure(std::vector<std::size_t> const& lengths, std::vector<BidiBlockPtr> const& known) {
    BidiLevels const levels(text_);
    rightToLeft_ = levels.isRightToLeft();
    RunCutter cutter(levels.runs());
    std::uint32_t script = HB_SCRIPT_LATIN;
    std::size_t start = 0;
    for (std::size_t i = 0; i < lengths.size(); start += lengths[i++]) {
        std::wstring_view const block = std::wstring_view(text_).substr(start, lengths[i]);
        auto context = std::make_unique<BlockContext>();
        std::vector<std::uint8_t> own;
        cutter.cut(start, block.size(), own, context->stretches);
        context->script = script;
        context->before = joiningBefore(text_, start);
        context->after = joiningAfter(text_, start + block.size());
        script = scriptAfter(block, script);
        if (standsAlone(block, *context)) context.reset();
        starts_.push_back(start);
        blocks_.push_back(measured(start, block.size(), std::move(own), std::move(context),
                                   i < known.size() ? known[i] : nullptr));
    }
}

BidiBlockPtr BidiLine::measured(std::size_t start, std::size_t length, std::vector<std::uint8_t> levels,
                                std::unique_ptr<BlockContext> context, BidiBlockPtr const& known) const {
    bool const isKnown = known && isSame(known->context.get(), context.get());
    if (isKnown && known->levels == levels) return known;
    std::vector<float> widths;
    std::wstring_view const text = std::wstring_view(text_).substr(start, length);
    if (isKnown) {
        widths = known->widths;
    } else if (!context) {
        widths.push_back(static_cast<float>(font_.blockWidth(text)));
    } else {
        TextLayoutPtr const layout = text_.size() <= keptLength
                                         ? TextLayouts::get(font_, text, context.get())
                                         : TextShaper(font_, text, context.get()).shape();
        for (TextLayout::Part const& part : layout->parts()) widths.push_back(part.width);
    }
    return std::make_shared<BidiBlock>(length, std::move(context), std::move(levels), std::move(widths));
}

void BidiLine::place() {
    std::vector<std::uint8_t> levels;
    for (std::size_t i = 0; i < blocks_.size(); ++i) {
        BidiBlock const& block = *blocks_[i];
        std::size_t start = starts_[i];
        for (std::size_t k = 0; k < block.levels.size(); ++k) {
            parts_.push_back(
                {start, 0, block.widths[k], static_cast<std::uint32_t>(i), static_cast<std::uint32_t>(k)});
            levels.push_back(block.levels[k]);
            start += block.context ? block.context->stretches[k].length : block.length;
        }
    }
    fromLeft_ = BidiLevels::fromLeftToRight(levels);
    for (std::int32_t const i : fromLeft_) {
        Part& part = parts_[static_cast<std::size_t>(i)];
        part.left = width_;
        width_ += static_cast<double>(part.width);
    }
}

std::wstring_view BidiLine::textOf(std::size_t block) const {
    return std::wstring_view(text_).substr(starts_[block], blocks_[block]->length);
}

TextLayoutPtr BidiLine::layoutOf(std::size_t block) const {
    return TextLayouts::get(font_, textOf(block), blocks_[block]->context.get());
}

BidiLine::Piece BidiLine::Layouts::pieceOf(Part const& part) {
    if (!layout_ || block_ != part.block) layout_ = line_.layoutOf(part.block);
    block_ = part.block;
    if (layout_->parts().empty())
        return {layout_.get(), 0, 0, static_cast<std::uint32_t>(layout_->glyphs().size())};
    TextLayout::Part const& place = layout_->parts()[part.index];
    return {layout_.get(), place.left, place.firstGlyph, place.endGlyph};
}

std::size_t BidiLine::endOf(std::size_t part) const {
    return part + 1 < parts_.size() ? parts_[part + 1].start : text_.size();
}

std::size_t BidiLine::firstEndingAfter(double x) const {
    auto const first = std::partition_point(fromLeft_.begin(), fromLeft_.end(), [&](std::int32_t i) {
        Part const& part = parts_[static_cast<std::size_t>(i)];
        return part.left + static_cast<double>(part.width) < x;
    });
    return static_cast<std::size_t>(first - fromLeft_.begin());
}

double BidiLine::gap(std::size_t index) const {
    if (index >= text_.size()) return rightToLeft_ ? 0 : width_;
    auto const after = std::upper_bound(parts_.begin(), parts_.end(), index,
                                        [](std::size_t i, Part const& part) { return i < part.start; });
    Part const& part = *(after - 1);
    Layouts layouts(*this);
    return gapInPart(part, layouts.pieceOf(part), index);
}

double BidiLine::gapInPart(Part const& part, Piece const& piece, std::size_t index) const {
    return part.left + static_cast<double>(piece.layout->gap(index - starts_[part.block]) - piece.left);
}

BidiLine::Extent BidiLine::extent(std::size_t part, std::size_t first, std::size_t last,
                                  Layouts& layouts) const {
    Part const& place = parts_[part];
    Extent all{place.left, place.left + static_cast<double>(place.width)};
    bool const rightToLeft = blocks_[place.block]->levels[place.index] & 1;
    // The gap behind the last character may stand elsewhere.
    if (first > place.start)
        (rightToLeft ? all.right : all.left) = gapInPart(place, layouts.pieceOf(place), first);
    if (last < endOf(part))
        (rightToLeft ? all.left : all.right) = gapInPart(place, layouts.pieceOf(place), last);
    return all;
}

void BidiLine::Nearest::take(std::size_t other, double away) {
    if (away > distance || (away == distance && other > index)) return;
    index = other;
    distance = away;
}

void BidiLine::searchPart(std::size_t part, double x, Layouts& layouts, Nearest& nearest) const {
    Part const& place = parts_[part];
    Piece const piece = layouts.pieceOf(place);
    std::size_t const start = starts_[place.block];
    for (std::size_t i = place.start; i < endOf(part); ++i) {
        if (!piece.layout->isStop(i - start)) continue;
        nearest.take(i, std::abs(gapInPart(place, piece, i) - x));
    }
}

std::size_t BidiLine::nearestStop(double x) const {
    Layouts layouts(*this);
    Nearest nearest{text_.size(), std::abs((rightToLeft_ ? 0 : width_) - x)};
    std::size_t const middle = firstEndingAfter(x);
    // The gap at the end of a part may belong to a part elsewhere, so its neighbours count too.
    for (std::size_t i = middle; i < fromLeft_.size(); ++i) {
        auto const part = static_cast<std::size_t>(fromLeft_[i]);
        if (parts_[part].left - x > nearest.distance) break;
        searchPart(part, x, layouts, nearest);
    }
    for (std::size_t i = middle; i > 0; --i) {
        auto const part = static_cast<std::size_t>(fromLeft_[i - 1]);
        if (x - parts_[part].left - static_cast<double>(parts_[part].width) > nearest.distance) break;
        searchPart(part, x, layouts, nearest);
    }
    return nearest.index;
}

} // namespace wainscot
