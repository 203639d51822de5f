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

    /// Told of the first damage after there was none.
    class Watcher {
    public:
        /// Damage has been added after there was none.
        virtual void damageAdded() = 0;

    protected:
        ~Watcher() = default;
    };
    /// Null for nobody. Not owned.
    void watch(Watcher* watcher) { watcher_ = watcher; }

    /// Adds a box; an empty or already covered box changes nothing.
    void add(IntBox const& box);
    void clear();
    bool empty() const { return boxes_.empty(); }
    std::vector<IntBox> const& boxes() const { return boxes_; }
    IntBox bounds() const;
    bool intersects(IntBox const& box) const;
    /// Gives the boxes away and is empty afterwards.
    std::vector<IntBox> take();
    /// How often damage was taken or forgotten, counted from 1, over all surfaces. While the number stays,
    /// all added damage is still there.
    static std::uint32_t numTaken();
    /// To be called when something hidden is shown: its damage was not added while it was hidden, so that the
    /// number above changes.
    static void noteShown();

private:
    std::vector<IntBox> boxes_;
    Watcher* watcher_ = nullptr;
};

} // namespace wainscot
