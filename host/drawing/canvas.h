#pragma once

#include "host/base/box.h"
#include "host/base/export.h"
#include "host/base/life.h"
#include "host/drawing/font.h"
#include "host/drawing/region.h"

#include <vector>

namespace wainscot {

class Canvas;
class Surface;

/// Where a canvas lies at the moment.
struct CanvasPlace {
    /// The pixels under it; null while the canvas belongs to no window.
    Surface* surface = nullptr;
    /// The owner's lower-left corner on the surface.
    XY<int> origin;
    /// The part that may be painted, on the surface: the owner's box, clipped to all its ancestors.
    IntBox visible;
    /// False below a hidden ancestor or an unmapped canvas.
    bool mapped = false;
    /// The owner's opacity times that of its ancestors.
    float opacity = 1.0F;
};

/// The owner of a canvas: it tells where the canvas lies and what lies above it.
class WAINSCOT_API CanvasClient {
public:
    virtual ~CanvasClient();
    /// Where its canvas lies now.
    virtual CanvasPlace canvasPlace() const = 0;
    /// Damages whatever is painted later than this client and meets `area` (in canvas coordinates).
    virtual void damageAbove(IntBox const& area) = 0;
    /// The shared canvas on which this client draws is dying: it must draw elsewhere. Does nothing here.
    virtual void sharedCanvasDying(Canvas const& canvas);
};

/// Where an owner draws: a light handle without pixels, which need not be attached to a surface. Coordinates
/// of a canvas are relative to its owner's lower-left corner.
class WAINSCOT_API Canvas {
public:
    explicit Canvas(CanvasClient& owner) : owner_(&owner) {}
    ~Canvas();
    Canvas(Canvas const&) = delete;
    Canvas& operator=(Canvas const&) = delete;

    CanvasClient& owner() const { return *owner_; }
    /// Where the canvas lies now, in a painting visit as that visit knows it.
    CanvasPlace place() const;

    /// The surface of the window, set on the canvas of a window's root only.
    Surface* surface() const { return surface_; }
    void attach(Surface* surface) { surface_ = surface; }

    bool isMapped() const { return mapped_; }
    void setMapped(bool mapped) { mapped_ = mapped; }
    /// 0 (invisible) to 1 (opaque).
    float opacity() const { return opacity_; }
    void setOpacity(float opacity) { opacity_ = opacity; }

    /// The outline of what is drawn on the canvas, in its coordinates; null for the whole box. Damages the
    /// canvas when it changes.
    void shape(Qv::Ptr<iRegion> region);
    Qv::Ptr<iRegion> const& shape() const { return shape_; }
    /// The shared font for a description; never null.
    Qv::Ptr<iFont> createFont(Glib::FontDesc const& desc) const { return Glib::loadFont(desc); }

    /// Damages an area (canvas coordinates) so that it is painted again; nothing while unattached or hidden.
    void damage(IntBox const& area) const;

    /// From now on `sharer` draws here too, and is told when the canvas dies.
    void share(CanvasClient& sharer);
    void unshare(CanvasClient& sharer);
    bool isShared() const { return shared_; }
    /// Tells all sharers to draw elsewhere; afterwards it has no sharers.
    void dismissSharers();

    LifeToken const& life() const { return life_; }

private:
    CanvasClient* owner_;
    Surface* surface_ = nullptr;
    Qv::Ptr<iRegion> shape_;
    float opacity_ = 1.0F;
    bool mapped_ = true;
    bool shared_ = false;
    LifeToken life_;
};

/// Gives a canvas its outline; does nothing for null.
WAINSCOT_API void glib_reshapecanvas(Canvas* canvas, Qv::Ptr<iRegion> region);

/// The painting visit that is under way, if any: what a renderer must clip to. Set by the walk through the
/// tree, for one canvas at a time.
class WAINSCOT_API PaintPhase {
public:
    explicit PaintPhase(std::vector<IntBox> const& damage);
    ~PaintPhase();
    PaintPhase(PaintPhase const&) = delete;
    PaintPhase& operator=(PaintPhase const&) = delete;

    /// The innermost visit; null outside.
    static PaintPhase* current();
    /// The damaged boxes on the surface.
    std::vector<IntBox> const& damage() const { return damage_; }
    /// Sets the canvas that is being drawn and its place, so that the place need not be looked up.
    void enter(Canvas const* canvas, CanvasPlace const& place);
    Canvas const* canvas() const { return canvas_; }
    CanvasPlace const& place() const { return place_; }

private:
    std::vector<IntBox> const& damage_;
    PaintPhase* outer_;
    Canvas const* canvas_ = nullptr;
    CanvasPlace place_;
};

} // namespace wainscot
