#pragma once

#include "host/base/box.h"
#include "host/base/export.h"
#include "host/base/ptr.h"

#include <vector>

namespace wainscot {

namespace Glib {
class Image;
}

/// An area of logical pixels of any outline: boxes that do not overlap, in the coordinates of a canvas. Never
/// changes.
class WAINSCOT_API iRegion : public Qv::InternalRefCount {
public:
    ~iRegion() override;
    virtual std::vector<IntBox> const& boxes() const = 0;
    virtual IntBox bounds() const = 0;
    bool isEmpty() const { return boxes().empty(); }
    virtual bool contains(XY<int> const& place) const = 0;

private:
    /// The only implementation.
    friend class Region;
    iRegion() = default;
};

/// Which corners of a curved region are round.
enum eCurvedRegionType {
    eCurvedAll = 0,
    eCurvedTop = 1,
    eCurvedBottom = 2,
    eCurvedLeft = 3,
    eCurvedRight = 4,
    eCurvedNone = 5,
};

/// A box from the origin with round corners; a radius beyond half of the box is cut to it. An empty size
/// gives an empty region.
WAINSCOT_API Qv::Ptr<iRegion> makeCurvedRegion(XY<int> const& size, unsigned int radius,
                                               eCurvedRegionType type = eCurvedAll);
/// The intersection of both; a null region stands for everything.
WAINSCOT_API Qv::Ptr<iRegion> region_intersect(Qv::Ptr<iRegion> const& a, Qv::Ptr<iRegion> const& b);
/// True when both cover the same pixels; null equals only null.
WAINSCOT_API bool region_eq(Qv::Ptr<iRegion> const& a, Qv::Ptr<iRegion> const& b);

namespace Glib {

/// Puts a region together from boxes.
class WAINSCOT_API RegionBuilder {
public:
    /// Adds a box, or takes its area out; the steps count in their order.
    RegionBuilder& add(IntBox const& box);
    RegionBuilder& subtract(IntBox const& box);
    Qv::Ptr<iRegion> build() const;

private:
    struct Step {
        IntBox box;
        bool adds;
    };
    std::vector<Step> steps_;
};

} // namespace Glib

/// The pixels of an image that are at least half opaque, its lower-left corner at the origin. Null for null.
WAINSCOT_API Qv::Ptr<iRegion> glib_buildRegionFromImage(Qv::Ptr<Glib::Image> const& image);

} // namespace wainscot
