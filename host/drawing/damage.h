#pragma once

#include "host/base/box.h"
#include "host/base/export.h"

#include <cstdint>
#include <vector>

namespace wainscot {

/// The part of a surface that must be painted again: at most 16 boxes, merged by least waste.
class WAINSCOT_API Damage {
public:
    static constexpr std::size_t maxBoxes = 16;

    /// Told when there is damage where there was none.
    class Watcher {
    public:
        virtual void damageAdded() = 0;

    protected:
        ~Watcher() = default;
    };
    /// Null for nobody. Not owned.
    void watch(Watcher* watcher) { watcher_ = watcher; }

    /// Adds a box; an empty one, or one that is already covered by another, changes nothing.
    void add(IntBox const& box);
    void clear();
    bool empty() const { return boxes_.empty(); }
    std::vector<IntBox> const& boxes() const { return boxes_; }
    IntBox bounds() const;
    bool intersects(IntBox const& box) const;
    /// Gives the boxes away and is empty afterwards.
    std::vector<IntBox> take();
    /// How often any damage was given away or forgotten, from 1: while it stays, all that was added is still
    /// there.
    static std::uint32_t numTaken();
    /// Something is shown whose damage was not taken in while it was not: counts as one more.
    static void noteShown();

private:
    std::vector<IntBox> boxes_;
    Watcher* watcher_ = nullptr;
};

} // namespace wainscot
