#pragma once

#include "text/text_document.h"

#include <vector>

namespace wainscot {

/// The characters that stand in one row of a box. A line feed at the end is not among them.
struct TextRow {
    std::size_t start = 0;
    std::size_t length = 0;
    /// Whether the line ends here; else it goes on in the next row.
    bool endsLine = true;

    std::size_t end() const { return start + length; }
    /// Where the next row begins.
    std::size_t next() const { return end() + (endsLine ? 1 : 0); }
    friend bool operator==(TextRow const&, TextRow const&) = default;
};

/// Says which characters of a text stand in which row. There is always one row at least. Rows that do not
/// exist = the last one.
class iTextRows {
public:
    virtual ~iTextRows() = default;
    /// The text has changed so.
    virtual void edit(TextEdit const& edit) = 0;
    /// It is another text.
    virtual void reset() = 0;
    /// May be an estimate until `isSettled`.
    virtual std::size_t numRows() const = 0;
    /// Rows one after the other, as far as there are any.
    virtual std::vector<TextRow> rows(std::size_t first, std::size_t count) = 0;
    /// The row in which a gap stands; where a line goes on, the lower one of the two.
    virtual std::size_t rowOf(std::size_t gap) = 0;
    virtual bool isSettled() const = 0;
    /// Settles about so many more characters.
    virtual void settle(std::size_t characters) = 0;
};

/// Each line is one row.
class LineRows final : public iTextRows {
public:
    explicit LineRows(TextDocument const& document) : document_(document) {}

    void edit(TextEdit const&) override {}
    void reset() override {}
    std::size_t numRows() const override { return document_.numLines(); }
    std::vector<TextRow> rows(std::size_t first, std::size_t count) override;
    std::size_t rowOf(std::size_t gap) override { return document_.lineOf(gap); }
    bool isSettled() const override { return true; }
    void settle(std::size_t) override {}

private:
    TextDocument const& document_;
};

} // namespace wainscot
