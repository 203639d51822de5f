#pragma once

#include "host/drawing/long_text.h"
#include "text/text_rows_p.h"

#include <memory>
#include <optional>
#include <utility>

namespace wainscot {

/// Shows a text in the rows of a box: which rows are in sight, how far they are scrolled, and which place of
/// the text lies where. Places are pixels from the upper-left corner of the room for the text; y counts
/// downwards. It holds only the rows that are seen.
class TextRowsView {
public:
    explicit TextRowsView(TextDocument const& document);

    /// A row that is seen.
    struct Shown {
        TextRow row;
        /// The line of the text to which it belongs, and where it begins in it.
        std::size_t line = 0;
        std::size_t column = 0;
        Glib::LongText text;
        /// Another number for other characters.
        std::uint64_t version = 0;
    };

    // --- Layout
    void setFont(Qv::Ptr<iFont> font);
    void setWrapping(bool wraps);
    bool wraps() const { return wraps_; }
    void setAlignment(TextAlignment alignment);
    /// The room for the text. A new width wraps the text anew.
    void setRoom(int width, int height);
    void edit(TextEdit const& edit);
    void reset();
    /// Settles the rows of about so many more characters.
    void settle(std::size_t characters);
    bool isSettled() const { return rows_->isSettled(); }

    // --- Rows
    int rowHeight() const { return rowHeight_; }
    std::size_t numRows() const { return rows_->numRows(); }
    TextRow row(std::size_t index) { return rows_->rows(index, 1).front(); }
    /// How many rows fit as a whole; at least 1.
    std::size_t numFitting() const;
    /// The row of a gap. Where a line goes on in the next row, `isAtEnd` means the upper one of the two.
    std::size_t rowOf(int gap, bool isAtEnd);
    /// The rows in sight. It must not be kept.
    std::vector<Shown> const& shown();

    // --- Scrolling
    std::size_t topRow();
    std::size_t mostTop() const;
    void setTopRow(std::size_t row);
    int scrollX() const { return scrollX_; }
    int mostScrollX();
    void setScrollX(int x);
    /// The width of the widest row that has been seen since the text was set.
    int contentWidth();
    /// Scrolls by as little as shows a gap.
    void show(int gap, bool isAtEnd);

    // --- Places
    /// Where a gap lies in a row, from the left of the room; scrolled.
    int gapX(int gap, std::size_t row);
    /// The gap of a row nearest to an x in the room.
    int gapAt(std::size_t row, int x);
    /// The row at a y; above and below the room those that are out of sight. Clamped to the rows there are.
    std::size_t rowAt(int y);
    /// Where the left end of a row lies, scrolled.
    int rowX(Shown const& shown);

    /// What is selected of a row, as places in it. The line feed at its end counts as one more.
    static std::pair<std::size_t, std::size_t> selectedPart(TextRow const& row,
                                                            TextSelection const& selection);
    /// The shown rows, from the first number up to the second, that differ from the last call; nothing where
    /// all are as before.
    std::vector<std::pair<int, int>> takeChanged(TextSelection const& selection);

private:
    /// How a row was painted.
    struct Painted {
        std::uint64_t version = 0;
        int x = 0;
        /// What was selected of it.
        std::size_t first = 0;
        std::size_t last = 0;

        friend bool operator==(Painted const&, Painted const&) = default;
    };

    std::unique_ptr<iTextRows> wrapped() const;
    void makeRows();
    /// Brings the shown rows in line with text and scroll.
    void update();
    Shown make(TextRow const& row);
    bool editShown(Shown& shown, TextEdit const& edit);
    /// A row in sight; null for others.
    Shown* find(std::size_t row);

    TextDocument const& document_;
    std::unique_ptr<iTextRows> rows_;
    Qv::Ptr<iFont> font_;
    bool wraps_ = false;
    TextAlignment alignment_ = eAlignLeft;
    int width_ = 0;
    int height_ = 0;
    int rowHeight_ = 1;
    int scrollX_ = 0;
    /// The gap at the beginning of the uppermost row in sight.
    std::size_t top_ = 0;
    /// The number of that row, where it is known.
    std::optional<std::size_t> topRow_;
    std::vector<Shown> shown_;
    bool isOutdated_ = true;
    std::uint64_t versions_ = 0;
    int contentWidth_ = 0;
    std::vector<Painted> painted_;
    /// Whether that is known.
    bool isPainted_ = false;
};

} // namespace wainscot
