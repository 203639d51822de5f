#pragma once

#include "host/base/box.h"
#include "host/base/export.h"

#include <optional>

namespace wainscot {

/// Watches the pointer on its way from a menu to the sub-menu that stands beside it. The straight way crosses
/// other rows. These hear nothing while each move brings the pointer nearer to the sub-menu, within the
/// triangle between the starting place and the sub-menu's near edge.
class WAINSCOT_API DiagonalWay {
public:
    /// The longest time for a way, in milliseconds.
    static constexpr double longest = 300.0;

    /// Whether a move to `place` is to be held back. `from` is the last place that was delivered, `target`
    /// the sub-menu's box, `now` in milliseconds. An answer of false ends the way.
    bool holdsBack(XY<int> from, XY<int> place, IntBox const& target, double now);
    void end() { began_.reset(); }
    bool isUnderWay() const { return began_.has_value(); }
    /// When the present way ends at the latest, although the pointer rests; nothing when there is no way.
    std::optional<double> deadline() const;

private:
    std::optional<double> began_;
    long long lastDistance_ = 0;
};

} // namespace wainscot
