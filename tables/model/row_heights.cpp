#include "tables/model/row_heights.h"

#include "tables/model/row_ranges.h"

#include <algorithm>
#include <utility>

namespace wainscot {

namespace {

constexpr std::size_t rowsInBlock = 1024;

unsigned int numOwnIn(std::vector<unsigned short> const& heights, std::size_t first, std::size_t end) {
    auto const at = [&](std::size_t i) { return heights.begin() + static_cast<std::ptrdiff_t>(i); };
    return static_cast<unsigned int>(end - first) -
           static_cast<unsigned int>(std::count(at(first), at(end), static_cast<unsigned short>(0)));
}

} // namespace

void RowHeights::reset(unsigned int count, unsigned short defaultHeight) {
    reset(count, defaultHeight, nullptr);
}

void RowHeights::reset(unsigned int count, unsigned short defaultHeight, HeightOf heightOf) {
    RowHeights made;
    made.heightOf_ = std::move(heightOf);
    made.count_ = std::min(count, maxRows);
    made.defaultHeight_ = std::max<unsigned short>(defaultHeight, 1);
    if (made.heightOf_) made.changed(0, made.count_);
    *this = std::move(made);
}

void RowHeights::setDefaultHeight(unsigned short height) {
    defaultHeight_ = std::max<unsigned short>(height, 1);
    addUpFrom(0);
}

std::vector<unsigned short> RowHeights::asked(unsigned int first, unsigned int count) const {
    std::vector<unsigned short> answers;
    answers.reserve(count);
    for (unsigned int i = 0; i < count; ++i) answers.push_back(heightOf_(first + i));
    return answers;
}

void RowHeights::changed(unsigned int first, unsigned int count) {
    if (!heightOf_ || first >= count_) return;
    count = std::min(count, count_ - first);
    std::vector<unsigned short> const answers = asked(first, count);
    unsigned int const numAnswered = numOwnIn(answers, 0, answers.size());
    bool const hadNone = own_.empty();
    if (hadNone && numAnswered == 0) return;
    if (hadNone)
        own_.resize(count_);
    else
        numOwn_ -= numOwnIn(own_, first, std::size_t{first} + count);
    numOwn_ += numAnswered;
    std::copy(answers.begin(), answers.end(), own_.begin() + static_cast<std::ptrdiff_t>(first));
    addUpFrom(hadNone ? 0 : first);
}

void RowHeights::inserted(unsigned int first, unsigned int count) {
    first = std::min(first, count_);
    count = std::min(count, maxRows - count_);
    if (heightOf_) {
        std::vector<unsigned short> const answers = asked(first, count);
        unsigned int const numAnswered = numOwnIn(answers, 0, answers.size());
        if (own_.empty() && numAnswered > 0) own_.resize(count_);
        if (!own_.empty() || numAnswered > 0)
            own_.insert(own_.begin() + static_cast<std::ptrdiff_t>(first), answers.begin(), answers.end());
        numOwn_ += numAnswered;
    }
    count_ += count;
    addUpFrom(first);
}

void RowHeights::removed(unsigned int first, unsigned int count) {
    if (first >= count_) return;
    count = std::min(count, count_ - first);
    if (!own_.empty()) {
        numOwn_ -= numOwnIn(own_, first, std::size_t{first} + count);
        auto const begin = own_.begin() + static_cast<std::ptrdiff_t>(first);
        own_.erase(begin, begin + static_cast<std::ptrdiff_t>(count));
    }
    count_ -= count;
    addUpFrom(first);
}

std::int64_t RowHeights::sum(std::size_t first, std::size_t end) const {
    // Two sums of 32 bits, which hold those of a block: compilers add many rows at once.
    unsigned int height = 0;
    unsigned int numDefault = 0;
    unsigned short const* const own = own_.data();
    for (std::size_t row = first; row < end; ++row) {
        height += own[row];
        numDefault += own[row] == 0 ? 1 : 0;
    }
    return std::int64_t{height} + std::int64_t{numDefault} * defaultHeight_;
}

void RowHeights::addUpFrom(unsigned int row) {
    // Blocks before that of `row` are kept, unless there were none before.
    std::size_t const numBlocks = (own_.size() + rowsInBlock - 1) / rowsInBlock;
    std::size_t const from = tops_.empty() ? 0 : std::min(row / rowsInBlock, tops_.size() - 1);
    tops_.resize(numBlocks + 1);
    for (std::size_t block = std::min(from, numBlocks); block < numBlocks; ++block) {
        std::size_t const first = block * rowsInBlock;
        tops_[block + 1] = tops_[block] + sum(first, std::min(first + rowsInBlock, own_.size()));
    }
}

unsigned short RowHeights::heightOf(unsigned int row) const {
    return row < own_.size() ? resolved(own_[row]) : defaultHeight_;
}

std::int64_t RowHeights::topOf(unsigned int row) const {
    row = std::min(row, count_);
    if (own_.empty()) return std::int64_t{row} * defaultHeight_;
    std::size_t const block = row / rowsInBlock;
    // From the nearer end of the block.
    std::size_t const first = block * rowsInBlock;
    std::size_t const end = std::min(first + rowsInBlock, own_.size());
    if (row - first <= rowsInBlock / 2 || block + 1 >= tops_.size()) return tops_[block] + sum(first, row);
    return tops_[block + 1] - sum(row, end);
}

std::optional<unsigned int> RowHeights::rowAt(std::int64_t pixel) const {
    if (pixel < 0 || pixel >= total()) return std::nullopt;
    if (own_.empty()) return static_cast<unsigned int>(pixel / defaultHeight_);
    auto const behind = std::upper_bound(tops_.begin(), tops_.end(), pixel);
    auto const block = static_cast<std::size_t>(behind - tops_.begin()) - 1;
    std::size_t row = block * rowsInBlock;
    for (std::int64_t bottom = tops_[block] + resolved(own_[row]); bottom <= pixel;
         bottom += resolved(own_[row]))
        ++row;
    return static_cast<unsigned int>(row);
}

RowHeights::Visible RowHeights::visibleRows(std::int64_t top, std::int64_t height) const {
    std::int64_t const bottom = top + std::max<std::int64_t>(height, 0);
    if (!isVariable()) {
        double const each = defaultHeight_;
        return {static_cast<double>(top) / each, static_cast<double>(bottom) / each};
    }
    // The place of a pixel in the given row, counted back from the row's bottom edge.
    auto const placeIn = [this](unsigned int row, std::int64_t pixel) {
        auto const back = static_cast<double>(topOf(row) + heightOf(row) - pixel);
        return row + 1.0 - back / heightOf(row);
    };
    double const rows = count_;
    if (top >= total()) return {rows, rows};
    double const first = placeIn(rowAt(std::max<std::int64_t>(top, 0)).value(), top);
    if (bottom > total()) return {first, rows};
    return {first, placeIn(rowAt(std::max<std::int64_t>(bottom - 1, 0)).value(), bottom)};
}

} // namespace wainscot
