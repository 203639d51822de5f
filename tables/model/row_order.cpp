#include "tables/model/row_order.h"

#include "host/services/clock.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace wainscot {

namespace {

/// In a table of view rows: the row is not shown.
constexpr unsigned int hidden = 0xFFFFFFFF;
/// More rows than these are not placed one by one.
constexpr unsigned int mostPlaced = 64;

template <class T>
int threeWay(T const& a, T const& b) {
    return a < b ? -1 : b < a ? 1 : 0;
}

int directed(int order, bool descending) {
    if (order == 0) return 0;
    return (order < 0) != descending ? -1 : 1;
}

} // namespace

/// The time for one call of `work`.
class RowOrder::Slice {
public:
    Slice(RowOrder const& order, unsigned int microseconds)
        : order_(order), last_(now()), end_(last_ + microseconds / microsecondsInMs) {}

    /// Asked after each step that may have called out.
    bool isOver() {
        if (++steps_ < stepsToRead_) return false;
        double const time = now();
        stepsToRead_ = time - last_ < quickMs ? std::min(2 * stepsToRead_, mostSteps) : 1;
        last_ = time;
        steps_ = 0;
        return time >= end_;
    }

    /// Asked after each other step. These say nothing about how long calls take.
    bool isOverAfterCopy() {
        if (++copies_ < mostSteps) return false;
        copies_ = 0;
        return now() >= end_;
    }
    /// Steps of another kind follow.
    void expectSlowSteps() { stepsToRead_ = 1; }

private:
    static constexpr double microsecondsInMs = 1000.0;
    /// Steps that take longer together are slow.
    static constexpr double quickMs = 0.05;
    static constexpr int mostSteps = 64;

    double now() const { return order_.clock_ ? order_.clock_() : service_get_msecs(); }

    RowOrder const& order_;
    double last_;
    double end_;
    int steps_ = 0;
    int copies_ = 0;
    int stepsToRead_ = 1;
};

/// An order that is being computed: the rows are gathered with what their keys tell, merged from short runs
/// to long ones, and then listed.
class RowOrder::Sort {
public:
    explicit Sort(RowOrder& order) : order_(order), known_(order.keys_.size()) {
        entries_.reserve(order.numSourceRows_);
        viewRows_.reserve(order.numSourceRows_);
    }

    /// Whether the order is complete.
    bool work(Slice& slice) {
        if (!gather(slice)) return false;
        slice.expectSlowSteps();
        return merge(slice) && list(slice);
    }

    Rows sourceRows_;
    Rows viewRows_;

private:
    /// The first key's number lies beside its row, so that merging reads memory in order.
    struct Entry {
        std::int64_t number;
        unsigned int row;
    };
    /// What one key told of all rows.
    struct Known {
        /// The texts of so many rows lie in one string: a string for all would be copied when it grows.
        static constexpr unsigned int rowsInBlock = 4096;
        struct Block {
            std::string bytes;
            std::vector<std::size_t> ends;
        };

        void add(std::string_view text) {
            if (blocks.empty() || blocks.back().ends.size() == rowsInBlock) {
                blocks.emplace_back();
                blocks.back().ends.reserve(rowsInBlock);
            }
            blocks.back().bytes += text;
            blocks.back().ends.push_back(blocks.back().bytes.size());
        }
        std::string_view text(unsigned int row) const {
            Block const& block = blocks[row / rowsInBlock];
            unsigned int const i = row % rowsInBlock;
            std::size_t const begin = i == 0 ? 0 : block.ends[i - 1];
            return std::string_view(block.bytes).substr(begin, block.ends[i] - begin);
        }

        std::vector<std::int64_t> numbers;
        std::vector<Block> blocks;
    };

    bool gather(Slice& slice);
    void gatherRow(unsigned int row);
    bool merge(Slice& slice);
    bool list(Slice& slice);
    int compare(Entry const& a, Entry const& b);
    int compareFurther(unsigned int a, unsigned int b);
    void beginRuns(std::size_t low);

    RowOrder& order_;
    std::vector<Known> known_;
    unsigned int numGathered_ = 0;
    std::vector<Entry> entries_;
    std::vector<Entry> merged_;
    /// Two neighbouring runs are merged: from `left_` up to `middle_` and from `right_` up to `end_`.
    std::size_t runLength_ = 1;
    std::size_t left_ = 0;
    std::size_t middle_ = 0;
    std::size_t right_ = 0;
    std::size_t end_ = 0;
    /// Whether the left run ends before the right one begins, so that they are only copied.
    bool isInOrder_ = false;
    bool hasRuns_ = false;
};

void RowOrder::Sort::gatherRow(unsigned int row) {
    viewRows_.push_back(hidden);
    bool const isShown = order_.isShown(row);
    Entry entry{0, row};
    for (std::size_t i = 0; i < known_.size(); ++i) {
        Key const& key = order_.keys_[i];
        std::int64_t number = 0;
        if (key.number) {
            if (isShown) order_.thrown_.run([&] { number = key.number(row); });
            // The complement turns the order round.
            if (i == 0)
                entry.number = key.descending ? ~number : number;
            else
                known_[i].numbers.push_back(number);
        }
        if (!key.text) continue;
        std::string text;
        if (isShown) order_.thrown_.run([&] { text = key.text(row); });
        known_[i].add(text);
    }
    if (isShown) entries_.push_back(entry);
}

bool RowOrder::Sort::gather(Slice& slice) {
    while (numGathered_ < order_.numSourceRows_) {
        gatherRow(numGathered_++);
        if (slice.isOver()) return false;
    }
    return true;
}

int RowOrder::Sort::compareFurther(unsigned int a, unsigned int b) {
    for (std::size_t i = 0; i < known_.size(); ++i) {
        Key const& key = order_.keys_[i];
        Known const& known = known_[i];
        int answer = 0;
        if (!known.numbers.empty()) answer = threeWay(known.numbers[a], known.numbers[b]);
        if (answer == 0 && key.text) answer = known.text(a).compare(known.text(b));
        if (answer == 0 && key.compare) order_.thrown_.run([&] { answer = key.compare(a, b); });
        if (answer != 0) return directed(answer, key.descending);
    }
    return 0;
}

inline int RowOrder::Sort::compare(Entry const& a, Entry const& b) {
    if (a.number != b.number) return a.number < b.number ? -1 : 1;
    return compareFurther(a.row, b.row);
}

void RowOrder::Sort::beginRuns(std::size_t low) {
    std::size_t const size = entries_.size();
    left_ = low;
    middle_ = right_ = low + std::min(runLength_, size - low);
    end_ = right_ + std::min(runLength_, size - right_);
    isInOrder_ = right_ == end_ || left_ == right_ || compare(entries_[right_ - 1], entries_[right_]) <= 0;
    hasRuns_ = true;
}

bool RowOrder::Sort::merge(Slice& slice) {
    merged_.reserve(entries_.size());
    while (runLength_ < entries_.size()) {
        if (!hasRuns_) beginRuns(0);
        while (merged_.size() < entries_.size()) {
            bool const begins = left_ == middle_ && right_ == end_;
            if (begins) beginRuns(end_);
            bool const compares = left_ < middle_ && right_ < end_ && !isInOrder_;
            bool const takesLeft =
                compares ? compare(entries_[left_], entries_[right_]) <= 0 : left_ < middle_;
            merged_.push_back(entries_[takesLeft ? left_++ : right_++]);
            if (begins || compares ? slice.isOver() : slice.isOverAfterCopy()) return false;
        }
        std::swap(entries_, merged_);
        merged_.clear();
        hasRuns_ = false;
        runLength_ *= 2;
    }
    return true;
}

bool RowOrder::Sort::list(Slice& slice) {
    sourceRows_.reserve(entries_.size());
    while (sourceRows_.size() < entries_.size()) {
        unsigned int const row = entries_[sourceRows_.size()].row;
        viewRows_[row] = static_cast<unsigned int>(sourceRows_.size());
        sourceRows_.push_back(row);
        if (slice.isOverAfterCopy()) return false;
    }
    return true;
}

RowOrder::RowOrder(unsigned int numSourceRows) : numSourceRows_(std::min(numSourceRows, maxRows)) {}
RowOrder::~RowOrder() = default;

void RowOrder::begin() {
    sort_.reset();
    thrown_ = {};
    isStale_ = true;
}

void RowOrder::setKeys(std::vector<Key> keys) {
    keys_ = std::move(keys);
    begin();
}

void RowOrder::setFilter(Filter filter) {
    filter_ = std::move(filter);
    begin();
}

void RowOrder::showAll() {
    showsAll_ = true;
    sourceRows_ = {};
    viewRows_ = {};
}

bool RowOrder::work(unsigned int budgetMicroseconds) {
    if (!isStale_) return true;
    if (keys_.empty() && !filter_) {
        showAll();
    } else {
        Slice slice(*this, budgetMicroseconds);
        try {
            if (!sort_) sort_ = std::make_unique<Sort>(*this);
            if (!sort_->work(slice)) return false;
        } catch (...) {
            // Out of memory or no clock: half a step cannot be continued.
            sort_.reset();
            throw;
        }
        sourceRows_ = std::move(sort_->sourceRows_);
        viewRows_ = std::move(sort_->viewRows_);
        showsAll_ = false;
        sort_.reset();
    }
    isStale_ = false;
    thrown_.rethrow();
    return true;
}

unsigned int RowOrder::numRows() const {
    return showsAll_ ? numSourceRows_ : static_cast<unsigned int>(sourceRows_.size());
}

std::optional<unsigned int> RowOrder::sourceRow(unsigned int viewRow) const {
    if (viewRow >= numRows()) return std::nullopt;
    return showsAll_ ? viewRow : sourceRows_[viewRow];
}

std::optional<unsigned int> RowOrder::viewRow(unsigned int sourceRow) const {
    if (sourceRow >= numSourceRows_) return std::nullopt;
    if (showsAll_) return sourceRow;
    if (viewRows_[sourceRow] == hidden) return std::nullopt;
    return viewRows_[sourceRow];
}

bool RowOrder::isShown(unsigned int row) {
    bool answer = true;
    if (filter_) thrown_.run([&] { answer = filter_(row); });
    return answer;
}

int RowOrder::compare(unsigned int a, unsigned int b) {
    for (Key const& key : keys_) {
        int answer = 0;
        thrown_.run([&] {
            if (key.number) answer = threeWay(key.number(a), key.number(b));
            if (answer == 0 && key.text) answer = key.text(a).compare(key.text(b));
            if (answer == 0 && key.compare) answer = key.compare(a, b);
        });
        if (answer != 0) return directed(answer, key.descending);
    }
    return 0;
}

bool RowOrder::comesBefore(unsigned int a, unsigned int b) {
    int const answer = compare(a, b);
    return answer != 0 ? answer < 0 : a < b;
}

void RowOrder::apply(RowNotice const& notice) {
    unsigned int const before = numSourceRows_;
    // Rows that the source cannot have are left out of the notice.
    RowNotice real = notice;
    RowRange const named = rowsFrom(notice.first, notice.count);
    switch (real.kind) {
    case RowNotice::Kind::inserted:
        real.first = std::min(real.first, before);
        real.count = std::min(real.count, maxRows - before);
        numSourceRows_ += real.count;
        break;
    case RowNotice::Kind::reset:
        numSourceRows_ = std::min(real.count, maxRows);
        break;
    default:
        if (named.first >= before) return;
        real.count = std::min(named.end, before) - named.first;
        if (real.kind == RowNotice::Kind::removed) numSourceRows_ -= real.count;
        real.target = std::min(real.target, before - real.count);
    }
    if (!showsAll_ && real.kind != RowNotice::Kind::changed) renumber(real);
    if (isStale_) begin();
    if (isStale_ || showsAll_) return;
    if (real.kind == RowNotice::Kind::removed) return;
    if (real.kind == RowNotice::Kind::reset || real.count > mostPlaced) {
        begin();
        return;
    }
    unsigned int const first = real.kind == RowNotice::Kind::moved ? real.target : real.first;
    RowRange const rows = rowsFrom(first, real.count);
    if (!standsWell(rows)) place(rows);
    thrown_.rethrow();
}

void RowOrder::renumber(RowNotice const& notice) {
    if (notice.kind == RowNotice::Kind::inserted) {
        for (unsigned int& row : sourceRows_)
            if (row >= notice.first) row += notice.count;
        viewRows_.insert(viewRows_.begin() + notice.first, notice.count, hidden);
        return;
    }
    if (notice.kind == RowNotice::Kind::removed && notice.count <= mostPlaced) {
        RowRange const gone = rowsFrom(notice.first, notice.count);
        std::vector<std::size_t> left;
        for (unsigned int row = gone.first; row < gone.end; ++row)
            if (viewRows_[row] != hidden) left.push_back(viewRows_[row]);
        std::ranges::sort(left);
        takeOut(left);
        for (unsigned int& row : sourceRows_)
            if (row >= gone.end) row -= gone.count();
        viewRows_.erase(viewRows_.begin() + gone.first, viewRows_.begin() + gone.end);
        shiftViewRows(left, {});
        return;
    }
    Rows kept;
    kept.reserve(sourceRows_.size());
    for (unsigned int const row : sourceRows_) {
        // After a reset the old rows stand for the new ones until there is an order.
        std::optional<unsigned int> const after =
            notice.kind == RowNotice::Kind::reset ? row : rowAfter(notice, row);
        if (after && *after < numSourceRows_) kept.push_back(*after);
    }
    sourceRows_ = std::move(kept);
    noteViewRows();
}

/// Takes the rows at these places, in rising order, out of the order.
void RowOrder::takeOut(std::vector<std::size_t> const& places) {
    for (std::size_t i = 0; i < places.size(); ++i) {
        auto const next = i + 1 < places.size() ? places[i + 1] : sourceRows_.size();
        auto const from = sourceRows_.begin() + static_cast<std::ptrdiff_t>(places[i] + 1);
        std::move(from, sourceRows_.begin() + static_cast<std::ptrdiff_t>(next),
                  from - static_cast<std::ptrdiff_t>(i + 1));
    }
    sourceRows_.resize(sourceRows_.size() - places.size());
}

/// The view rows move by those before them that have left (by where they were) and joined (by their places
/// among those that stay); both in rising order. One pass in order is many times quicker than to note every
/// row anew.
void RowOrder::shiftViewRows(std::vector<std::size_t> const& left, std::vector<std::size_t> const& joined) {
    if (left.size() <= 1 && joined.size() <= 1) {
        // No branches: such a pass is the quickest that there is.
        unsigned int const leftAt = left.empty() ? hidden : static_cast<unsigned int>(left[0]);
        unsigned int const joinedAt = joined.empty() ? hidden : static_cast<unsigned int>(joined[0]);
        for (unsigned int& at : viewRows_) {
            unsigned int const stays = at - static_cast<unsigned int>(at > leftAt);
            unsigned int const after = stays + static_cast<unsigned int>(stays >= joinedAt);
            at = at == hidden ? hidden : after;
        }
        return;
    }
    auto const countUpTo = [](std::vector<std::size_t> const& places, std::size_t at) {
        return static_cast<std::size_t>(std::ranges::upper_bound(places, at) - places.begin());
    };
    for (unsigned int& at : viewRows_) {
        if (at == hidden) continue;
        std::size_t const stays = at - countUpTo(left, at);
        at = static_cast<unsigned int>(stays + countUpTo(joined, stays));
    }
}

void RowOrder::noteViewRows() {
    viewRows_.assign(numSourceRows_, hidden);
    for (std::size_t i = 0; i < sourceRows_.size(); ++i)
        viewRows_[sourceRows_[i]] = static_cast<unsigned int>(i);
}

bool RowOrder::standsWell(RowRange changed) {
    for (unsigned int row = changed.first; row < changed.end; ++row) {
        unsigned int const at = viewRows_[row];
        if (isShown(row) != (at != hidden)) return false;
        if (at == hidden) continue;
        if (at > 0 && !comesBefore(sourceRows_[at - 1], row)) return false;
        if (at + 1 < sourceRows_.size() && !comesBefore(row, sourceRows_[at + 1])) return false;
    }
    return true;
}

std::size_t RowOrder::placeAmong(Rows const& sorted, unsigned int row) {
    std::size_t low = 0;
    std::size_t high = sorted.size();
    while (low < high) {
        std::size_t const middle = low + (high - low) / 2;
        if (comesBefore(sorted[middle], row))
            low = middle + 1;
        else
            high = middle;
    }
    return low;
}

void RowOrder::place(RowRange rows) {
    // The standard algorithms would trust comparisons that may contradict themselves.
    Rows placed;
    std::vector<std::size_t> left;
    for (unsigned int row = rows.first; row < rows.end; ++row) {
        if (isShown(row))
            placed.insert(placed.begin() + static_cast<std::ptrdiff_t>(placeAmong(placed, row)), row);
        if (viewRows_[row] != hidden) left.push_back(viewRows_[row]);
    }
    std::ranges::sort(left);
    takeOut(left);
    // Where they go, counted among the rows that stay.
    std::vector<std::size_t> joined;
    for (unsigned int const row : placed)
        joined.push_back(std::max(joined.empty() ? 0 : joined.back(), placeAmong(sourceRows_, row)));
    std::size_t end = sourceRows_.size();
    sourceRows_.resize(end + placed.size());
    for (std::size_t i = placed.size(); i-- > 0;) {
        auto const from = sourceRows_.begin() + static_cast<std::ptrdiff_t>(joined[i]);
        auto const behind = sourceRows_.begin() + static_cast<std::ptrdiff_t>(end);
        std::move_backward(from, behind, behind + static_cast<std::ptrdiff_t>(i + 1));
        *(from + static_cast<std::ptrdiff_t>(i)) = placed[i];
        end = joined[i];
    }
    shiftViewRows(left, joined);
    for (unsigned int row = rows.first; row < rows.end; ++row) viewRows_[row] = hidden;
    for (std::size_t i = 0; i < placed.size(); ++i)
        viewRows_[placed[i]] = static_cast<unsigned int>(joined[i] + i);
}

} // namespace wainscot
