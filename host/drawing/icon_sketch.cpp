#include "host/drawing/icon_sketch_p.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace wainscot {

namespace {

void addStop(cairo_pattern_t* pattern, double place, Colour const& colour) {
    cairo_pattern_add_color_stop_rgb(pattern, place, colour.red(), colour.green(), colour.blue());
}

} // namespace

IconSketch::IconSketch(XY<int> size, std::span<std::uint32_t> pixels)
    : picture_(cairo_image_surface_create_for_data(reinterpret_cast<unsigned char*>(pixels.data()),
                                                   CAIRO_FORMAT_ARGB32, size.x, size.y, size.x * 4)),
      path_(cairo_create(picture_)), extent_(std::min(size.x, size.y)),
      hairline_(std::max(1.0, std::round(extent_ / 20.0))), bar_(std::max(1.0, std::round(extent_ / 9.0))) {
    cairo_translate(path_, std::floor((size.x - extent_) / 2), std::floor((size.y - extent_) / 2));
    cairo_set_line_join(path_, CAIRO_LINE_JOIN_ROUND);
    cairo_set_fill_rule(path_, CAIRO_FILL_RULE_EVEN_ODD);
}

IconSketch::~IconSketch() {
    cairo_destroy(path_);
    cairo_surface_finish(picture_);
    cairo_surface_destroy(picture_);
}

void IconSketch::turn(int quarters) {
    cairo_translate(path_, extent_ / 2, extent_ / 2);
    cairo_rotate(path_, quarters * std::numbers::pi / 2);
    cairo_translate(path_, -extent_ / 2, -extent_ / 2);
}

void IconSketch::polygon(std::span<Point const> points, bool sharp) {
    for (Point const& point : points)
        if (sharp)
            cairo_line_to(path_, std::round(point.x * extent_), std::round(point.y * extent_));
        else
            cairo_line_to(path_, point.x * extent_, point.y * extent_);
    cairo_close_path(path_);
    cairo_new_sub_path(path_);
}

void IconSketch::line(std::span<Point const> points) {
    double const offset = static_cast<int>(bar_) % 2 ? 0.5 : 0.0;
    for (Point const& point : points)
        cairo_line_to(path_, std::round(point.x * extent_ - offset) + offset,
                      std::round(point.y * extent_ - offset) + offset);
    cairo_new_sub_path(path_);
}

void IconSketch::circle(double radius) {
    cairo_new_sub_path(path_);
    cairo_arc(path_, extent_ / 2, extent_ / 2, radius * extent_, 0, 2 * std::numbers::pi);
    cairo_close_path(path_);
    cairo_new_sub_path(path_);
}

void IconSketch::star(int points, double outer, double inner, double flat) {
    int const steps = points * 2;
    double const half = std::numbers::pi / steps * flat;
    for (int i = 0; i < steps; ++i) {
        double const radius = (i % 2 ? inner : outer) * extent_;
        double const angle = std::numbers::pi * (2.0 * i / steps - 0.5);
        for (double const side : {-half, half})
            cairo_line_to(path_, extent_ / 2 + radius * std::cos(angle + side),
                          extent_ / 2 + radius * std::sin(angle + side));
    }
    cairo_close_path(path_);
    cairo_new_sub_path(path_);
}

void IconSketch::fill(Colour const& upper, Colour const& lower, bool keep) {
    cairo_pattern_t* const pattern = cairo_pattern_create_linear(0, 0, 0, extent_);
    addStop(pattern, 0.1, upper);
    addStop(pattern, 0.9, lower);
    cairo_set_source(path_, pattern);
    cairo_fill_preserve(path_);
    cairo_pattern_destroy(pattern);
    finish(keep);
}

void IconSketch::glow(Colour const& middle, Colour const& rim) {
    cairo_pattern_t* const pattern = cairo_pattern_create_radial(
        extent_ * 0.46, extent_ * 0.44, 0, extent_ * 0.5, extent_ * 0.5, extent_ * 0.42);
    addStop(pattern, 0.0, middle);
    addStop(pattern, 0.85, rim);
    cairo_set_source(path_, pattern);
    cairo_fill(path_);
    cairo_pattern_destroy(pattern);
}

void IconSketch::stroke(Colour const& colour, double thickness, bool keep) {
    setColour(colour);
    cairo_set_line_width(path_, thickness);
    cairo_stroke_preserve(path_);
    finish(keep);
}

void IconSketch::setColour(Colour const& colour) {
    cairo_set_source_rgb(path_, colour.red(), colour.green(), colour.blue());
}

void IconSketch::finish(bool keep) {
    if (!keep) cairo_new_path(path_);
}

} // namespace wainscot
