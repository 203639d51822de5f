#include "host/drawing/canvas_renderer.h"

#include "host/drawing/render_target_p.h"
#include "host/drawing/surface.h"

#include <limits>

namespace wainscot {
namespace {

constexpr int far = std::numeric_limits<int>::max() / 4;
constexpr IntBox everything(-far, -far, far, far);

constinit CanvasRenderer* newest = nullptr;

} // namespace

CanvasRenderer::CanvasRenderer(Canvas* canvas, IntBox const& area)
    : canvas_(canvas), area_(area), clipRect_(everything) {
    static_assert(sizeof clip_ >= sizeof(pixman_region32_t) && alignof(pixman_region32_t) <= 8);
    pixman_region32_init(RenderTarget::clipOf(*this));
    next_ = newest;
    if (next_) next_->previous_ = this;
    newest = this;
    if (!canvas) return;
    CanvasPlace const place = canvas->place();
    if (!place.surface || !place.mapped || !canvas->isMapped()) return;
    surface_ = place.surface;
    origin_ = place.origin;
    visible_ = place.visible;
    opacity_ = place.opacity;
    inVisit_ = PaintPhase::current() != nullptr;
    setUpClip();
}

CanvasRenderer::~CanvasRenderer() {
    flush();
    (previous_ ? previous_->next_ : newest) = next_;
    if (next_) next_->previous_ = previous_;
    pixman_region32_fini(RenderTarget::clipOf(*this));
}

void CanvasRenderer::forget(Canvas const& canvas) {
    for (CanvasRenderer* renderer = newest; renderer; renderer = renderer->next_)
        if (renderer->canvas_ == &canvas) renderer->endDrawing();
}

void CanvasRenderer::forget(Surface const& surface) {
    for (CanvasRenderer* renderer = newest; renderer; renderer = renderer->next_)
        if (renderer->surface_ == &surface) renderer->endDrawing();
}

void CanvasRenderer::endDrawing() {
    canvas_ = nullptr;
    surface_ = nullptr;
    painted_ = {};
}

void CanvasRenderer::setUpClip() {
    if (!surface_) return;
    // Clipped on the canvas, before anything is moved: an area may lie anywhere.
    IntBox const seen = visible_.translated(XY<int>() - origin_).intersection(area_).intersection(clipRect_);
    IntBox const onSurface = seen.isEmpty() ? IntBox() : seen.translated(origin_);
    pixman_region32_t* clip = RenderTarget::clipOf(*this);
    pixman_region32_fini(clip);
    pixman_region32_init(clip);
    auto const add = [&](IntBox const& box) {
        IntBox const device = surface_->deviceBox(box.intersection(onSurface));
        if (!device.isEmpty())
            pixman_region32_union_rect(clip, clip, device.x1, device.y1,
                                       static_cast<unsigned>(device.width()),
                                       static_cast<unsigned>(device.height()));
    };
    // Damage is a few boxes, most of which miss a widget's area: one by one is quick.
    if (inVisit_)
        for (IntBox const& damaged : PaintPhase::current()->damage()) add(damaged);
    else
        add(onSurface);
    if (canvas_->shape()) clipToShape();
}

void CanvasRenderer::clipToShape() {
    std::vector<pixman_box32_t> boxes;
    for (IntBox const& box : canvas_->shape()->boxes()) {
        IntBox const device = surface_->deviceBox(box.translated(origin_));
        if (!device.isEmpty()) boxes.push_back({device.x1, device.y1, device.x2, device.y2});
    }
    pixman_region32_t outline;
    pixman_region32_init_rects(&outline, boxes.data(), static_cast<int>(boxes.size()));
    pixman_region32_t* clip = RenderTarget::clipOf(*this);
    pixman_region32_intersect(clip, clip, &outline);
    pixman_region32_fini(&outline);
}

void CanvasRenderer::setClipRect(IntBox const& clip) {
    clipRect_ = clip.isEmpty() ? IntBox() : clip;
    setUpClip();
}

void CanvasRenderer::clearClipRect() {
    setClipRect(everything);
}

bool CanvasRenderer::isVisible(IntBox const& box) const {
    if (!surface_ || box.isEmpty()) return false;
    return RenderTarget(const_cast<CanvasRenderer&>(*this))
        .isVisible(RenderTarget(const_cast<CanvasRenderer&>(*this)).deviceBox(box));
}

void CanvasRenderer::painted(IntBox const& box) {
    if (inVisit_) return;
    painted_ = painted_.unitedWith(box.intersection(area_).intersection(clipRect_));
}

void CanvasRenderer::addModifiedArea(IntBox const& area) {
    if (surface_ && !inVisit_) painted_ = painted_.unitedWith(area.intersection(area_));
}

void CanvasRenderer::flush() {
    if (!surface_) return;
    IntBox const seen = painted_.intersection(visible_.translated(XY<int>() - origin_));
    painted_ = {};
    if (seen.isEmpty()) return;
    surface_->toPresent().add(seen.translated(origin_));
    canvas_->owner().damageAbove(seen);
}

void CanvasRenderer::renderBoxes(std::span<IntBox const> boxes, Colour const& colour, double opacity) {
    if (!surface_) return;
    RenderTarget const target(*this);
    double const alpha = target.opacity(opacity);
    if (alpha <= 0) return;
    for (IntBox const& box : boxes) {
        if (box.isEmpty()) continue;
        target.fill(target.deviceBox(box), colour, alpha);
        painted(box);
    }
}

void CanvasRenderer::renderPrimitive(Glib::RectDescription const& rect) {
    renderBoxes({&rect.box, 1}, rect.colour, rect.opacity);
}

void CanvasRenderer::renderPrimitive(Glib::TextDescription const& text) {
    if (!surface_ || text.text.empty() || !text.font) return;
    IntBox const line(-far, Coordinate::difference(text.position.y, text.font->descent()), far,
                      Coordinate::sum(text.position.y, text.font->ascent()));
    if (!isVisible(line.inset(-text.font->size()))) return;
    painted(drawText(RenderTarget(*this), text));
}

} // namespace wainscot
