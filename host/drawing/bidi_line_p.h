#pragma once

#include "host/drawing/bidi_levels_p.h"
#include "host/drawing/font_p.h"

#include <algorithm>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace wainscot {

/// The measures of a block of a line. They depend on its text and its context only; shared.
struct BidiBlock {
    std::size_t length;
    /// Null when the block is laid out as if it stood alone, from left to right.
    std::unique_ptr<BlockContext const> context;
    /// The embedding levels of its parts, in reading order, and their widths.
    std::vector<std::uint8_t> levels;
    std::vector<float> widths;
};

using BidiBlockPtr = std::shared_ptr<BidiBlock const>;

/// A line of more than one block that has text of both directions or runs from right to left: ordered as a
/// whole, shaped block by block. Never changes. Places are exact, from the left end of the line.
class BidiLine {
public:
    BidiLine(Font const& font, std::wstring_view text);
    /// For a line that was measured before: `lengths` are the lengths of the blocks, `known` what is still
    /// known of each block; null = nothing.
    BidiLine(Font const& font, std::wstring text, std::vector<std::size_t> const& lengths,
             std::vector<BidiBlockPtr> const& known);

    double width() const { return width_; }
    /// The gap before character `index`; the length of the text gives the end.
    double gap(std::size_t index) const;
    /// The stop nearest to `x`.
    std::size_t nearestStop(double x) const;
    std::vector<BidiBlockPtr> const& blocks() const { return blocks_; }

    /// Calls `visit(glyphs, x)` with the glyphs that may be seen between two places; their places are
    /// relative to `x`.
    template <class Visit>
    void forEachVisible(double left, double right, Visit visit) const {
        Layouts layouts(*this);
        for (std::size_t i = firstEndingAfter(left); i < fromLeft_.size(); ++i) {
            Part const& part = parts_[static_cast<std::size_t>(fromLeft_[i])];
            if (part.left > right) return;
            Piece const piece = layouts.pieceOf(part);
            visit(piece.glyphs(), part.left - piece.left);
        }
    }

    /// Calls `visit(left, right)` with what the characters from `from` up to `to` cover between two places,
    /// from left to right, part by part.
    template <class Visit>
    void forEachCovered(std::size_t from, std::size_t to, double left, double right, Visit visit) const {
        Layouts layouts(*this);
        for (std::size_t i = firstEndingAfter(left); i < fromLeft_.size(); ++i) {
            auto const part = static_cast<std::size_t>(fromLeft_[i]);
            if (parts_[part].left > right) return;
            std::size_t const first = std::max(from, parts_[part].start);
            std::size_t const last = std::min(to, endOf(part));
            if (first >= last) continue;
            Extent const covered = extent(part, first, last, layouts);
            visit(covered.left, covered.right);
        }
    }

private:
    /// Places on the line.
    struct Extent {
        double left;
        double right;
    };
    /// Characters of one block and one level.
    struct Part {
        std::size_t start;
        double left;
        float width;
        std::uint32_t block;
        /// Among the parts of the block.
        std::uint32_t index;
    };
    /// Where a part lies in the layout of its block.
    struct Piece {
        TextLayout const* layout;
        float left;
        std::uint32_t firstGlyph;
        std::uint32_t endGlyph;

        std::span<PlacedGlyph const> glyphs() const {
            return {layout->glyphs().begin() + firstGlyph, layout->glyphs().begin() + endGlyph};
        }
    };
    /// Finds pieces; neighbours are mostly of one block.
    class Layouts {
    public:
        explicit Layouts(BidiLine const& line) : line_(line) {}
        Piece pieceOf(Part const& part);

    private:
        BidiLine const& line_;
        TextLayoutPtr layout_;
        std::uint32_t block_ = 0;
    };
    /// The nearest stop found so far.
    struct Nearest {
        std::size_t index;
        double distance;

        void take(std::size_t other, double away);
    };

    void measure(std::vector<std::size_t> const& lengths, std::vector<BidiBlockPtr> const& known);
    BidiBlockPtr measured(std::size_t start, std::size_t length, std::vector<std::uint8_t> levels,
                          std::unique_ptr<BlockContext> context, BidiBlockPtr const& known) const;
    void place();
    std::wstring_view textOf(std::size_t block) const;
    TextLayoutPtr layoutOf(std::size_t block) const;
    std::size_t endOf(std::size_t part) const;
    double gapInPart(Part const& part, Piece const& piece, std::size_t index) const;
    /// What characters of a part cover.
    Extent extent(std::size_t part, std::size_t first, std::size_t last, Layouts& layouts) const;
    std::size_t firstEndingAfter(double x) const;
    void searchPart(std::size_t part, double x, Layouts& layouts, Nearest& nearest) const;

    Font const& font_;
    std::wstring text_;
    bool rightToLeft_ = false;
    std::vector<BidiBlockPtr> blocks_;
    std::vector<std::size_t> starts_;
    /// In reading order.
    std::vector<Part> parts_;
    /// The indices of the parts as they stand from left to right.
    std::vector<std::int32_t> fromLeft_;
    double width_ = 0;
};

} // namespace wainscot
