#pragma once

#include "host/base/xy.h"
#include "host/drawing/colour.h"

#include <cairo.h>
#include <cstdint>
#include <span>

namespace wainscot {

/// Draws the shapes of one icon into pixels. Places are shares of the icon's square, y downwards; straight
/// edges are brought onto device pixels.
class IconSketch {
public:
    struct Point {
        double x;
        double y;
    };

    /// The square is centred when the picture is not square.
    IconSketch(XY<int> size, std::span<std::uint32_t> pixels);
    ~IconSketch();
    IconSketch(IconSketch const&) = delete;
    IconSketch& operator=(IconSketch const&) = delete;

    /// The thickness of an edge line, in device pixels.
    double hairline() const { return hairline_; }
    /// The thickness of a line that is a shape by itself.
    double bar() const { return bar_; }
    /// Turns what follows by quarters, clockwise.
    void turn(int quarters);

    /// Add to the path: a closed polygon, its corners on pixel edges where `sharp`; an open line for a stroke
    /// of `bar()`; a circle; a star or cogwheel, which goes from one radius to the other and back `points`
    /// times, staying on each for that share of the way.
    void polygon(std::span<Point const> points, bool sharp = true);
    void line(std::span<Point const> points);
    void circle(double radius);
    void star(int points, double outer, double inner, double flat = 0.0);

    /// Draw the path: filled from the upper colour to the lower colour, or as a line. With `keep` the path
    /// stays.
    void fill(Colour const& upper, Colour const& lower, bool keep = false);
    void stroke(Colour const& colour, double thickness, bool keep = false);
    /// Fills the path with light that is brightest near its middle.
    void glow(Colour const& middle, Colour const& rim);

private:
    void setColour(Colour const& colour);
    void finish(bool keep);

    cairo_surface_t* picture_;
    cairo_t* path_;
    double extent_;
    double hairline_;
    double bar_;
};

} // namespace wainscot
