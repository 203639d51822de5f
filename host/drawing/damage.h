#pragma once

#include "host/base/box.h"
#include "host/base/export.h"

#include <vector>

namespace wainscot {

/// The part of a surface that must be painted again: at most 16 boxes, merged by least waste.
class WAINSCOT_API Damage {
public:
    static constexpr std::size_t maxBoxes = 16;

    /// Adds a box; an empty one, or one that is already covered by another, changes nothing.
    void add(IntBox const& box);
    void clear() { boxes_.clear(); }
    bool empty() const { return boxes_.empty(); }
    std::vector<IntBox> const& boxes() const { return boxes_; }
    IntBox bounds() const;
    bool intersects(IntBox const& box) const;
    /// Gives the boxes away and is empty afterwards.
    std::vector<IntBox> take();

private:
    std::vector<IntBox> boxes_;
};

} // namespace wainscot
