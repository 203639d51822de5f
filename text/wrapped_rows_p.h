#pragma once

#include "host/drawing/word_wrapping_text_renderer.h"
#include "text/text_rows_p.h"

#include <cstdint>
#include <vector>

namespace wainscot {

/// Which characters of a document stand in which row when it is wrapped at words. The text is kept in blocks
/// that are wrapped when they are looked at, or bit by bit by `settle`; the rows of the others are estimated.
/// A line that is longer than a block may be looked at before its beginning is wrapped: its blocks begin at
/// good places then, and are put right by `settle`.
class WAINSCOT_API WrappedRows final : public iTextRows {
public:
    /// The document must live as long. Blocks have about so many characters.
    explicit WrappedRows(TextDocument const& document, std::size_t blockLength = 8192);

    /// Wraps all anew. The width is in pixels; at least 1 is taken.
    void setLayout(Qv::Ptr<iFont> font, int width);
    void reset() override;
    void edit(TextEdit const& edit) override;

    std::size_t numRows() const override { return rows_ + (hasEmptyEnd() ? 1 : 0); }
    // These wrap what lies there, which may change `numRows`. Blanks at the end of a wrapped row belong to
    // it.
    std::vector<TextRow> rows(std::size_t first, std::size_t count) override;
    TextRow row(std::size_t index);
    std::size_t rowOf(std::size_t character) override;

    bool isSettled() const override { return unsettled_ == 0; }
    /// Wraps about so many more characters, from the top.
    void settle(std::size_t characters) override;

    /// How many characters were measured so far, to tell the cost.
    std::size_t measured() const { return measured_; }

private:
    enum class State : std::uint8_t {
        estimated,
        /// Wrapped, but the block may not begin or end at a row.
        provisional,
        /// Right, if the block begins at a row.
        settled,
    };
    struct Block {
        std::size_t characters = 0;
        std::uint32_t rows = 0;
        std::uint32_t lineFeeds = 0;
        State state = State::estimated;
        /// Of each row, once it is wrapped: its characters, and whether a line feed is the last of them.
        std::vector<std::uint32_t> lengths;
    };
    /// A block, and the first character and row in it.
    struct Place {
        std::size_t block = 0;
        std::size_t start = 0;
        std::size_t row = 0;
    };
    using Lengths = std::vector<std::uint32_t>;

    /// The text ends with the end of a line, or is empty: then a row without characters comes last.
    bool hasEmptyEnd() const;
    bool isLineStart(std::size_t index) const;
    bool isInWord(std::size_t index) const;
    std::size_t endOf(Place const& place) const { return place.start + blocks_[place.block].characters; }
    void step(bool forward);
    Place const& find(std::size_t Place::*value, std::size_t wanted);

    std::uint32_t estimate(Block const& block) const;
    void append(std::vector<Block>& blocks, std::size_t from, std::size_t to) const;
    std::size_t goodCut(std::wstring_view text) const;
    void exchange(std::size_t first, std::size_t count, std::vector<Block> fresh);
    void change(std::size_t block, Block const& before);
    void unsettle(std::size_t block);

    void wrapWindow(std::size_t start, std::size_t stop, std::size_t size, std::size_t least,
                    Lengths& lengths);
    void wrapNext(std::size_t at, std::size_t before, std::size_t stop, std::size_t size, Lengths& lengths);
    bool beginsRight(Place const& place) const;
    std::size_t rowBefore(Place const& place) const;
    Lengths rowsOf(Place const& place, std::size_t stop);
    void take(Place const& place, Lengths lengths, State state);
    void stretch(Place const& place, std::size_t to);
    bool wrapOpen(Place const& place, bool mayJoin);
    void wrapBlock(Place place, bool mayJoin);
    void balance(std::size_t block);
    std::vector<Block> divided(Lengths const& lengths, State state) const;

    void editBlocks(Place const& place, TextEdit const& edit);
    bool editRows(Place const& place, TextEdit const& edit);

    TextDocument const& document_;
    std::size_t blockLength_;
    Qv::Ptr<iFont> font_;
    Glib::WordWrappingTextRenderer renderer_;
    int width_ = 1;
    double advance_ = 1;
    std::vector<Block> blocks_;
    /// Of all blocks.
    std::size_t rows_ = 0;
    /// How many blocks are not settled, and that none before `firstUnsettled_` is.
    std::size_t unsettled_ = 0;
    std::size_t firstUnsettled_ = 0;
    /// Where it was looked last; the next look is mostly near.
    Place last_;
    std::size_t measured_ = 0;
};

} // namespace wainscot
