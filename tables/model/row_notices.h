#pragma once

#include "host/messages/notifier.h"
#include "tables/model/row_ranges.h"

#include <functional>

namespace wainscot {

/// What has happened to the rows of a source. Numbers are those after the change, but those of removed rows
/// and the `first` of a move.
struct RowNotice {
    enum class Kind {
        inserted, ///< `count` rows; the first of them is `first`
        removed,  ///< `count` rows; the first of them was `first`
        moved,    ///< `count` rows; the first of them was `first` and is now `target`
        changed,  ///< `count` rows from `first` on have other contents
        reset     ///< everything is new; `count` is the number of rows
    };

    Kind kind = Kind::reset;
    unsigned int first = 0;
    unsigned int count = 0;
    unsigned int target = 0;

    bool operator==(RowNotice const&) const = default;
};

/// The number of a row after the change; nothing when it is gone, and after a reset.
inline std::optional<unsigned int> rowAfter(RowNotice const& notice, unsigned int row) {
    // Differences instead of sums: these have room in 32 bits.
    bool const isInside = row >= notice.first && row - notice.first < notice.count;
    bool const isBehind = row >= notice.first && !isInside;
    switch (notice.kind) {
    case RowNotice::Kind::inserted:
        if (row < notice.first) return row;
        if (notice.count >= maxRows || row >= maxRows - notice.count) return std::nullopt;
        return row + notice.count;
    case RowNotice::Kind::removed:
        if (isInside) return std::nullopt;
        return isBehind ? row - notice.count : row;
    case RowNotice::Kind::moved: {
        if (isInside) return notice.target + (row - notice.first);
        unsigned int const without = isBehind ? row - notice.count : row;
        return without < notice.target ? without : without + notice.count;
    }
    case RowNotice::Kind::changed:
        return row;
    case RowNotice::Kind::reset:
        break;
    }
    return std::nullopt;
}

/// Carries a set of rows through the change; a reset empties it.
WAINSCOT_API void follow(RowRanges& rows, RowNotice const& notice);

/// The source of notices about one set of rows. In a notice listeners may subscribe, end subscriptions, and
/// destroy themselves, each other and this object.
class WAINSCOT_API RowNotices {
public:
    using Listener = std::function<void(RowNotice const&)>;

    /// The listener is told until the answer dies or is ended; the answer may outlive this object.
    [[nodiscard]] NotifierSubscription subscribe(Listener listener);
    /// Tells all listeners in the order of subscribing. All are told although one throws; the first exception
    /// then passes to the caller.
    void tell(RowNotice const& notice);
    std::size_t numListeners() const { return notifier_.numListeners(); }

private:
    Notifier notifier_;
};

} // namespace wainscot
