#include "host/drawing/render_target_p.h"
#include "host/drawing/scaled_images_p.h"

namespace wainscot {
namespace {

/// A mask of one alpha for all pixels; null for opaque.
pixman_image_t* uniformMask(double alpha) {
    if (alpha >= 1.0) return nullptr;
    pixman_color_t const colour = pixmanColour(Colour(), alpha);
    return pixman_image_create_solid_fill(&colour);
}

} // namespace

void CanvasRenderer::renderPrimitive(Glib::ImageDescription const& image) {
    if (!surface_ || !image.image) return;
    RenderTarget const target(*this);
    double const alpha = target.opacity(image.opacity);
    IntBox const box = image.calcBounds();
    IntBox const device = target.deviceBox(box);
    if (alpha <= 0 || !target.isVisible(device)) return;
    pixman_image_t* source = image.image->scaled().at(*image.image, device.size());
    if (!source) return;
    RenderTarget::Clipped const clipped(target);
    pixman_image_t* mask = uniformMask(alpha);
    pixman_image_composite32(PIXMAN_OP_OVER, source, mask, target.image(), 0, 0, 0, 0, device.x1, device.y1,
                             device.width(), device.height());
    if (mask) pixman_image_unref(mask);
    painted(box);
}

} // namespace wainscot
