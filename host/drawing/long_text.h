#pragma once

#include "host/drawing/canvas_renderer.h"

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace wainscot {
class BidiLine;
}

namespace wainscot::Glib {

/// One line of text of any length that is measured and drawn while it is edited. The text is kept in blocks
/// with their widths, so that the cost of a change does not depend on the length of the line. Only a line
/// with text from right to left is ordered as a whole: there a change costs a pass over the line.
class WAINSCOT_API LongText {
public:
    LongText() = default;
    explicit LongText(Qv::Ptr<iFont> font) : font_(std::move(font)) {}

    /// Sets the font; all of the text is measured again.
    void setFont(Qv::Ptr<iFont> font);
    Qv::Ptr<iFont> const& font() const { return font_; }

    void setText(std::wstring_view text);
    /// Replaces `count` characters from `index` on; both are clamped to the text.
    void replace(std::size_t index, std::size_t count, std::wstring_view text);
    std::size_t length() const { return length_; }
    /// A part of the text; clamped to it.
    std::wstring substr(std::size_t index, std::size_t count) const;

    /// The width of all the text, rounded; cut to 2^30.
    int width() const;
    /// The x of the gap before character `index`, from the left end of the text.
    int gapX(std::size_t index) const;
    /// The gap nearest to `x`, never inside a grapheme cluster.
    std::size_t indexAt(int x) const;

    /// Draws the text with its left end on the baseline at `position`; costs only the blocks that can be
    /// seen.
    void draw(CanvasRenderer& renderer, XY<int> const& position, Colour const& colour) const;

private:
    struct Block {
        std::wstring text;
        double width;
    };
    /// A place in the text: a block, and where it begins.
    struct Place {
        std::size_t block = 0;
        std::size_t start = 0;
    };

    Place placeOf(std::size_t index) const;
    double measure(std::wstring_view piece);
    std::vector<Block> cut(std::wstring_view text, std::size_t target);
    /// Replaces `count` blocks by others.
    void exchange(std::size_t first, std::size_t count, std::vector<Block> fresh);
    void sumFrom(std::size_t block);
    /// `added` blocks stand where `removed` ones stood before.
    void order(std::size_t first, std::size_t removed, std::size_t added);

    Qv::Ptr<iFont> font_;
    std::vector<Block> blocks_;
    /// Where each block begins: in characters and in pixels.
    std::vector<std::size_t> starts_;
    std::vector<double> lefts_;
    std::size_t length_ = 0;
    double width_ = 0;
    /// How many blocks may make the line run from right to left, in whole or in part.
    std::size_t turning_ = 0;
    /// Where the line stands then; shared by copies.
    std::shared_ptr<BidiLine const> line_;
};

} // namespace wainscot::Glib
