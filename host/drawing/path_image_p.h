#pragma once

#include "host/drawing/render_target_p.h"

#include <cairo.h>

namespace wainscot {

/// The path library's view of the pixels that a renderer draws into, with its clip, for one scope.
/// Coordinates are device pixels, y downwards.
class PathImage {
public:
    explicit PathImage(RenderTarget const& target, bool antialias = true);
    ~PathImage();
    PathImage(PathImage const&) = delete;
    PathImage& operator=(PathImage const&) = delete;

    cairo_t* get() const { return path_; }
    void setColour(Colour const& colour, double alpha) {
        cairo_set_source_rgba(path_, colour.red(), colour.green(), colour.blue(), alpha);
    }

private:
    cairo_surface_t* image_;
    cairo_t* path_;
};

void drawSlantedLine(RenderTarget const& target, Glib::LineDescription const& line, bool antialias);
void drawEllipse(RenderTarget const& target, Glib::EllipseDescription const& ellipse, bool antialias);

} // namespace wainscot
