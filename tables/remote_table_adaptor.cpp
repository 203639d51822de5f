#include "tables/remote_table_adaptor.h"

#include "tables/model/adaptor_failure_p.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace wainscot {

RemoteTableAdaptor::RemoteTableAdaptor(unsigned int numRows)
    : numRows_(std::min(numRows, maxRows)), timer_([this] { askNow(); }) {}

RemoteTableAdaptor::~RemoteTableAdaptor() = default;

void RemoteTableAdaptor::forgetAll() {
    pages_.clear();
    uses_.clear();
    wanted_.clear();
    asked_.clear();
}

void RemoteTableAdaptor::setNumRows(unsigned int numRows) {
    numRows_ = std::min(numRows, maxRows);
    forgetAll();
    if (table_) table_.get()->dataChanged();
}

void RemoteTableAdaptor::forgetRows() {
    forgetAll();
    if (table_) table_.get()->dataChanged({RowNotice::Kind::changed, 0, numRows_});
}

RemoteTableAdaptor::Page const* RemoteTableAdaptor::find(unsigned int row) const {
    auto const found = pages_.find(row / rowsInPage);
    if (found == pages_.end()) return nullptr;
    uses_.splice(uses_.begin(), uses_, found->second.use);
    return &found->second;
}

bool RemoteTableAdaptor::isHere(unsigned int row) const {
    auto const found = pages_.find(row / rowsInPage);
    return found != pages_.end() && found->second.here[row % rowsInPage];
}

iTableAdaptor::Text RemoteTableAdaptor::getFieldText(XY<int> const& cell) const {
    auto const row = static_cast<unsigned int>(cell.y);
    Page const* const page = find(row);
    if (!page || !page->here[row % rowsInPage]) return askLater(row), Text();
    RowTexts const& texts = page->rows[row % rowsInPage];
    auto const column = static_cast<std::size_t>(cell.x);
    return column < texts.size() ? texts[column] : Text();
}

iTableAdaptor::Text RemoteTableAdaptor::getGhostText(XY<int> const& cell) const {
    return isHere(static_cast<unsigned int>(cell.y)) ? Text() : Text(L"\u2026");
}

void RemoteTableAdaptor::askLater(unsigned int row) const {
    if (asked_.contains(row)) return;
    wanted_.add({row, row + 1});
    if (!timer_.isRunning()) timer_.start(0);
}

RowRange RemoteTableAdaptor::rowsInSight() const {
    if (!table_) return {0, numRows_};
    RowHeights::Visible const rows = table_.get()->getVisibleRows();
    double const end = std::clamp(std::ceil(rows.last) + 1, 0.0, static_cast<double>(numRows_));
    return {static_cast<unsigned int>(std::clamp(rows.first, 0.0, end)), static_cast<unsigned int>(end)};
}

bool RemoteTableAdaptor::isMissing(unsigned int page, RowRange inSight) const {
    unsigned int const begin = page * rowsInPage;
    auto const wanted = wanted_.firstFrom(std::max(begin, inSight.first));
    return wanted && *wanted < std::min(begin + rowsInPage, inSight.end) && !asked_.contains(*wanted);
}

void RemoteTableAdaptor::askNow() {
    // What is sought through, copied or measured is read as well; only what a person sees is worth a request.
    RowRange const inSight = rowsInSight();
    std::vector<RowRange> missing;
    while (auto const wanted = wanted_.firstFrom(inSight.first)) {
        unsigned int const page = *wanted / rowsInPage;
        if (*wanted >= inSight.end) break;
        RowRange const rows = rowsFrom(page * rowsInPage, std::min(rowsInPage, numRows_ - page * rowsInPage));
        if (isMissing(page, inSight)) {
            if (!missing.empty() && missing.back().end == rows.first)
                missing.back().end = rows.end;
            else
                missing.push_back(rows);
        }
        wanted_.remove(rows);
    }
    wanted_.clear();
    for (RowRange const rows : missing) asked_.add(rows);
    LifeGuard const life(life_);
    for (RowRange const rows : missing) {
        try {
            requestRows(rows);
        } catch (...) {
            noteAdaptorFailure("RemoteTableAdaptor");
            if (life.alive()) rowsHaveFailed(rows);
        }
        if (!life.alive()) return;
    }
}

RemoteTableAdaptor::Page& RemoteTableAdaptor::make(unsigned int number) {
    auto const [found, isNew] = pages_.try_emplace(number);
    if (isNew)
        found->second.use = uses_.insert(uses_.begin(), number);
    else
        uses_.splice(uses_.begin(), uses_, found->second.use);
    return found->second;
}

void RemoteTableAdaptor::dropOldPages() {
    RowRange const inSight = table_ ? rowsInSight() : RowRange();
    // The two at the edges are in sight in part only.
    unsigned int const most = std::max(numKept_, inSight.count() + 2 * rowsInPage) / rowsInPage;
    while (pages_.size() > most) {
        unsigned int const page = uses_.back();
        if (page * rowsInPage < inSight.end && (page + 1) * rowsInPage > inSight.first) {
            uses_.splice(uses_.begin(), uses_, std::prev(uses_.end()));
            continue;
        }
        pages_.erase(page);
        uses_.pop_back();
    }
}

void RemoteTableAdaptor::rowsHaveCome(unsigned int first, std::vector<RowTexts> rows) {
    if (first >= numRows_) return;
    rows.resize(std::min(rows.size(), static_cast<std::size_t>(numRows_ - first)));
    for (std::size_t i = 0; i < rows.size(); ++i) {
        unsigned int const row = first + static_cast<unsigned int>(i);
        Page& page = make(row / rowsInPage);
        page.rows[row % rowsInPage] = std::move(rows[i]);
        page.here.set(row % rowsInPage);
        if (row % rowsInPage == 0) dropOldPages();
    }
    RowRange const come = rowsFrom(first, static_cast<unsigned int>(rows.size()));
    asked_.remove(come);
    dropOldPages();
    if (table_) table_.get()->dataChanged({RowNotice::Kind::changed, come.first, come.count()});
}

void RemoteTableAdaptor::rowsHaveFailed(RowRange rows) {
    asked_.remove(rows);
}

} // namespace wainscot
