#include "host/drawing/canvas.h"

#include "host/drawing/canvas_renderer.h"
#include "host/drawing/surface.h"

#include <unordered_map>
#include <unordered_set>

namespace wainscot {
namespace {

constinit PaintPhase* innermost = nullptr;

/// The sharers of canvases. Few canvases are shared, so that this lies outside them. Lives for ever, as
/// canvases may.
using Sharers = std::unordered_map<Canvas const*, std::unordered_set<CanvasClient*>>;

Sharers& sharers() {
    static auto& known = *new Sharers;
    return known;
}

} // namespace

CanvasClient::~CanvasClient() = default;

void CanvasClient::sharedCanvasDying(Canvas const&) {}

Canvas::~Canvas() {
    dismissSharers();
    CanvasRenderer::forget(*this);
}

void Canvas::share(CanvasClient& sharer) {
    sharers()[this].insert(&sharer);
    shared_ = true;
}

void Canvas::unshare(CanvasClient& sharer) {
    if (!shared_) return;
    auto const found = sharers().find(this);
    found->second.erase(&sharer);
    if (!found->second.empty()) return;
    sharers().erase(found);
    shared_ = false;
}

void Canvas::dismissSharers() {
    if (!shared_) return;
    shared_ = false;
    auto const told = sharers().extract(this);
    for (CanvasClient* sharer : told.mapped()) sharer->sharedCanvasDying(*this);
}

CanvasPlace Canvas::place() const {
    PaintPhase const* phase = PaintPhase::current();
    return phase && phase->canvas() == this ? phase->place() : owner_->canvasPlace();
}

void Canvas::damage(IntBox const& area) const {
    if (area.isEmpty()) return;
    CanvasPlace const at = place();
    if (!at.surface || !at.mapped) return;
    // Clipped before it is moved: an area may lie anywhere, the moved one must not overflow.
    IntBox const visible = at.visible.translated(XY<int>() - at.origin);
    IntBox const seen = area.intersection(visible);
    if (!seen.isEmpty()) at.surface->toPaint().add(seen.translated(at.origin));
}

void Canvas::shape(Qv::Ptr<iRegion> region) {
    if (region_eq(region, shape_)) return;
    shape_ = std::move(region);
    CanvasPlace const at = place();
    if (at.surface) damage(at.visible.translated(XY<int>() - at.origin));
}

void glib_reshapecanvas(Canvas* canvas, Qv::Ptr<iRegion> region) {
    if (canvas) canvas->shape(std::move(region));
}

PaintPhase::PaintPhase(std::vector<IntBox> const& damage) : damage_(damage), outer_(innermost) {
    innermost = this;
}

PaintPhase::~PaintPhase() {
    innermost = outer_;
}

PaintPhase* PaintPhase::current() {
    return innermost;
}

void PaintPhase::enter(Canvas const* canvas, CanvasPlace const& place) {
    canvas_ = canvas;
    place_ = place;
}

} // namespace wainscot
