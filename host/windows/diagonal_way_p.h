#pragma once

#include "host/base/box.h"
#include "host/base/export.h"

#include <optional>

namespace wainscot {

/// Watches the pointer on its way from a menu to the sub-menu that stands beside it. The straight way crosses
/// other rows; while every move brings the pointer nearer to the sub-menu inside the triangle from where it
/// set out to the sub-menu's near edge, those rows shall hear nothing of it.
class WAINSCOT_API DiagonalWay {
public:
    /// No way takes longer, in milliseconds.
    static constexpr double longest = 300.0;

    /// Whether a move to `place` is to be held back. `from` is the last place that was delivered, `target`
    /// the sub-menu's box, `now` in milliseconds. An answer of false ends the way.
    bool holdsBack(XY<int> from, XY<int> place, IntBox const& target, double now);
    void end() { began_.reset(); }
    bool isUnderWay() const { return began_.has_value(); }
    /// When a way that began at that time is over although the pointer rests; nothing while none is under
    /// way.
    std::optional<double> deadline() const;

private:
    std::optional<double> began_;
    long long lastDistance_ = 0;
};

} // namespace wainscot
