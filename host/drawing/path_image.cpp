#include "host/drawing/path_image_p.h"

#include <numbers>

namespace wainscot {

PathImage::PathImage(RenderTarget const& target, bool antialias)
    : image_(cairo_image_surface_create_for_data(
          reinterpret_cast<unsigned char*>(target.surface().pixels()), CAIRO_FORMAT_ARGB32,
          target.surface().deviceSize().x, target.surface().deviceSize().y, target.surface().stride() * 4)),
      path_(cairo_create(image_)) {
    int count = 0;
    pixman_box32_t const* boxes = pixman_region32_rectangles(target.clip(), &count);
    for (int i = 0; i < count; ++i)
        cairo_rectangle(path_, boxes[i].x1, boxes[i].y1, boxes[i].x2 - boxes[i].x1,
                        boxes[i].y2 - boxes[i].y1);
    cairo_clip(path_);
    cairo_set_antialias(path_, antialias ? CAIRO_ANTIALIAS_DEFAULT : CAIRO_ANTIALIAS_NONE);
}

PathImage::~PathImage() {
    cairo_destroy(path_);
    cairo_surface_destroy(image_);
}

void drawSlantedLine(RenderTarget const& target, Glib::LineDescription const& line, bool antialias) {
    XY<int> const from = target.onSurface(line.from);
    XY<int> const to = target.onSurface(line.to);
    double const scale = target.scale();
    double const height = target.surface().deviceSize().y;
    PathImage image(target, antialias);
    image.setColour(line.colour, target.opacity(line.opacity));
    cairo_set_line_width(image.get(), deviceThickness(line.width, scale));
    cairo_move_to(image.get(), from.x * scale, height - from.y * scale);
    cairo_line_to(image.get(), to.x * scale, height - to.y * scale);
    cairo_stroke(image.get());
}

void drawEllipse(RenderTarget const& target, Glib::EllipseDescription const& ellipse, bool antialias) {
    IntBox const box = target.deviceBox(ellipse.box);
    if (!target.isVisible(box)) return;
    int const edge =
        std::min(deviceThickness(ellipse.edgeWidth, target.scale()), std::min(box.width(), box.height()) / 2);
    PathImage image(target, antialias);
    image.setColour(ellipse.colour, target.opacity(ellipse.opacity));
    auto const addArc = [&](double inset) {
        double const radiusX = box.width() / 2.0 - inset;
        double const radiusY = box.height() / 2.0 - inset;
        if (radiusX <= 0 || radiusY <= 0) return;
        cairo_save(image.get());
        cairo_translate(image.get(), (box.x1 + box.x2) / 2.0, (box.y1 + box.y2) / 2.0);
        cairo_scale(image.get(), radiusX, radiusY);
        cairo_new_sub_path(image.get());
        cairo_arc(image.get(), 0, 0, 1, 0, 2 * std::numbers::pi);
        cairo_restore(image.get());
    };
    addArc(0);
    // The edge is what lies between two ellipses, so that it stays inside the box and equally thick.
    cairo_set_fill_rule(image.get(), CAIRO_FILL_RULE_EVEN_ODD);
    if (ellipse.edgeWidth > 0) addArc(edge);
    cairo_fill(image.get());
}

} // namespace wainscot
