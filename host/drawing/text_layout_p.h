#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace wainscot {

class Font;

/// One glyph with ink: its face within the font, and its exact place from the start of the text (y upwards).
struct PlacedGlyph {
    std::uint32_t index;
    std::uint32_t face;
    float x;
    float y;
};

/// What the layout of a block needs to know of a line with text of both directions.
struct BlockContext {
    /// Characters that run together.
    struct Stretch {
        std::uint32_t length;
        bool rightToLeft;

        bool operator==(Stretch const&) const = default;
    };

    /// All of the block, in reading order.
    std::vector<Stretch> stretches;
    /// The script of the last letter before the block, as the shaper knows it.
    std::uint32_t script = 0;
    /// The letters beside the block that may join with its own.
    std::wstring before;
    std::wstring after;

    bool operator==(BlockContext const&) const = default;
};

/// A shaped piece of text: where its glyphs and the gaps between its characters lie, in logical pixels
/// that no rounding has touched. Never changes; shared with the cache.
class TextLayout {
public:
    /// Longer texts are cut into blocks.
    static constexpr std::size_t maxLength = 256;

    /// The part of the layout in a stretch of the context. Parts are in reading order, left to right; the
    /// line takes each to its own place.
    struct Part {
        float left;
        float width;
        std::uint32_t firstGlyph;
        std::uint32_t endGlyph;
    };

    float width() const { return width_; }
    std::vector<PlacedGlyph> const& glyphs() const { return glyphs_; }
    std::size_t length() const { return gaps_.size() - 1; }
    /// False for a text that runs from left to right whatever stands beside it.
    bool mayTurn() const { return mayTurn_; }
    /// One for each stretch of the context; none without a context.
    std::vector<Part> const& parts() const { return parts_; }
    /// The gap before character `index`; `length()` gives the end.
    float gap(std::size_t index) const { return gaps_[index]; }
    /// False inside a grapheme cluster.
    bool isStop(std::size_t index) const { return inside_.empty() || !inside_[index]; }
    /// The stop nearest to `x`.
    std::size_t nearestStop(float x) const;
    /// What the layout costs in memory.
    std::size_t bytes() const;

private:
    friend class TextShaper;

    std::vector<PlacedGlyph> glyphs_;
    std::vector<float> gaps_;
    std::vector<Part> parts_;
    /// True for the gaps inside clusters; empty when there are none.
    std::vector<bool> inside_;
    float width_ = 0;
    bool mayTurn_ = false;
};

using TextLayoutPtr = std::shared_ptr<TextLayout const>;

/// A cache of shaped runs: beyond 4 MB the least recently used runs are dropped.
namespace TextLayouts {

/// The layout of a text of at most `TextLayout::maxLength` characters: a whole line, or with a context a
/// block of a line.
TextLayoutPtr get(Font const& font, std::wstring_view text, BlockContext const* context = nullptr);

struct Statistics {
    std::size_t hits = 0;
    std::size_t misses = 0;
    std::size_t bytes = 0;
};
Statistics statistics();
void clear();

} // namespace TextLayouts

/// How long the first block of a text is: the whole of a short one, else a piece that ends after a blank or
/// at least between two grapheme clusters.
std::size_t firstBlock(std::wstring_view text);

/// Walks the blocks of a text in order: `visit(block, start)` is called with each and tells whether to go on.
template <class Visit>
void forEachBlock(std::wstring_view text, Visit visit) {
    for (std::size_t start = 0; start < text.size();) {
        std::size_t const length = firstBlock(text.substr(start));
        if (!visit(text.substr(start, length), start)) return;
        start += length;
    }
}

} // namespace wainscot
