#pragma once

#include "host/base/lightweight_string.h"
#include "host/drawing/canvas_renderer.h"

#include <concepts>
#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace wainscot {
class BidiLine;
}

namespace wainscot::Glib {

/// One line of text of any length that is measured and drawn while it is edited. The text is kept in blocks,
/// so that the cost of a change does not depend on the length of the line. Blocks are measured when their
/// place is first asked for. Only a line with text from right to left is ordered as a whole: there a change
/// costs a pass over the line.
class WAINSCOT_API LongText {
public:
    LongText() = default;
    explicit LongText(Qv::Ptr<iFont> font) : font_(std::move(font)) {}

    /// Sets the font; all of the text is measured again.
    void setFont(Qv::Ptr<iFont> font);
    Qv::Ptr<iFont> const& font() const { return font_; }

    void setText(std::wstring_view text) { share(Text(text)); }
    /// The same without a copy: the characters are shared.
    template <std::same_as<LightweightString<wchar_t>> Shared>
    void setText(Shared const& text) {
        share(text);
    }
    /// Replaces `count` characters from `index` on; both are clamped to the text.
    void replace(std::size_t index, std::size_t count, std::wstring_view text);
    /// The same; the characters of a long text are shared.
    template <std::same_as<LightweightString<wchar_t>> Shared>
    void replace(std::size_t index, std::size_t count, Shared const& text) {
        replaceBy(index, count, text.view(), text);
    }
    std::size_t length() const { return end().start; }
    /// A part of the text; clamped to it.
    std::wstring substr(std::size_t index, std::size_t count) const;

    /// The width of all the text, rounded; cut to 2^30.
    int width() const;
    /// The same, but `most` where the text is wider: it is measured no further than that.
    int widthUpTo(int most) const;
    /// Whether all of it runs from left to right, so that an edit moves nothing before it.
    bool runsLeftToRight() const { return turning_ == 0; }
    /// The x of the gap before character `index`, from the left end of the text.
    int gapX(std::size_t index) const;
    /// The gap nearest to `x`, never inside a grapheme cluster.
    std::size_t indexAt(int x) const;

    /// Pixels from the left end of the text.
    struct Span {
        int left;
        int right;

        bool operator==(Span const&) const = default;
    };
    /// What the characters from `from` up to `to` cover between `left` and `right`, from left to right and
    /// cut to the two. Its other ends agree with `gapX`. One span where all of the text runs from left to
    /// right; spans that touch are one.
    std::vector<Span> spans(std::size_t from, std::size_t to, int left, int right) const;

    /// Draws the text with its left end on the baseline at `position`; costs only the blocks that can be
    /// seen.
    void draw(CanvasRenderer& renderer, XY<int> const& position, Colour const& colour) const;

private:
    using Text = LightweightString<wchar_t>;

    struct Block {
        /// What holds the characters; blocks share it until they are edited.
        Text source;
        std::wstring_view text;
        /// Negative until it is known.
        mutable double width = -1;
    };
    /// Where a block begins: in characters and in pixels.
    struct Place {
        std::size_t start = 0;
        double left = 0;
    };

    /// Characters from one index to another.
    struct Range {
        std::size_t from = 0;
        std::size_t to = 0;
    };
    /// The blocks that an edit exchanges, and which of their characters stay at either side of it.
    struct Edit {
        std::size_t first;
        std::size_t count;
        Range before;
        Range after;
    };

    static Place sum(Place const& place, Place const& shift) {
        return {place.start + shift.start, place.left + shift.left};
    }
    /// Where a block begins; its left is right once the blocks before it are measured.
    Place place(std::size_t block) const {
        return block < settled_ ? places_[block] : sum(places_[block], shift_);
    }
    Place end() const { return place(blocks_.size()); }
    /// The last block that does not begin behind a character.
    std::size_t blockOf(std::size_t index) const;
    /// The same for an x; measures no further than it must.
    std::size_t blockAt(double x) const;
    void measureBefore(std::size_t block) const;
    double exactGap(std::size_t index) const;

    static void cut(std::vector<Block>& blocks, Text const& text, std::size_t target);
    void share(Text const& text);
    /// `whole` holds the text, unless that is short.
    void replaceBy(std::size_t index, std::size_t count, std::wstring_view text, Text const& whole);
    Edit editAt(std::size_t index, std::size_t count, std::size_t added) const;
    template <class String>
    void append(String& string, Range range) const;
    Text joined(Range before, std::wstring_view text, Range after) const;
    std::vector<Block> blocksOfLong(Edit const& edit, Text const& text) const;
    /// Replaces `count` blocks by others.
    void exchange(std::size_t first, std::size_t count, std::vector<Block> fresh);
    void settle(std::size_t places);
    static std::size_t countTurning(std::span<Block const> blocks);
    /// `added` blocks stand where `removed` ones stood before.
    void order(std::size_t first, std::size_t removed, std::size_t added);

    Qv::Ptr<iFont> font_;
    std::vector<Block> blocks_;
    /// Where each block begins and the last one ends. To all but the first `settled_` ones `shift_` is still
    /// to be added: an edit changes the places behind it, and the next one is mostly near it.
    mutable std::vector<Place> places_{1};
    std::size_t settled_ = 1;
    Place shift_;
    /// How many blocks are measured, so that the next place is known too.
    mutable std::size_t measured_ = 0;
    /// How many blocks may make the line run from right to left, in whole or in part.
    std::size_t turning_ = 0;
    /// Where the line stands then; shared by copies.
    std::shared_ptr<BidiLine const> line_;
};

} // namespace wainscot::Glib
