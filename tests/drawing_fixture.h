#pragma once

#include "host/drawing/canvas_renderer.h"
#include "host/drawing/surface.h"

#include <vector>

namespace wainscot::testing {

/// A window of one canvas, for tests that draw without any widget.
class PaintedWindow : public CanvasClient {
public:
    explicit PaintedWindow(XY<int> size = {200, 100}, double scale = 1.0)
        : surface(size, scale), canvas(*this) {
        place.surface = &surface;
        place.visible = surface.bounds();
        place.mapped = true;
        clear();
    }

    CanvasPlace canvasPlace() const override {
        CanvasPlace now = place;
        now.opacity = canvas.opacity();
        return now;
    }
    void damageAbove(IntBox const& area) override { above.push_back(area); }

    void clear(std::uint32_t pixel = 0xFFFFFFFF) {
        std::fill_n(surface.pixels(), pixelCount(), pixel);
        surface.toPaint().clear();
        surface.toPresent().clear();
        above.clear();
    }
    std::size_t pixelCount() const {
        return static_cast<std::size_t>(surface.deviceSize().x) *
               static_cast<std::size_t>(surface.deviceSize().y);
    }
    /// A device pixel, the top row first.
    std::uint32_t device(int x, int y) const {
        return surface.pixels()[static_cast<std::size_t>(y * surface.stride() + x)];
    }
    std::size_t countOf(std::uint32_t pixel) const {
        return static_cast<std::size_t>(std::count(surface.pixels(), surface.pixels() + pixelCount(), pixel));
    }
    /// The device box of everything that is not `ground`; empty when there is nothing.
    IntBox inkBox(std::uint32_t ground = 0xFFFFFFFF) const {
        IntBox ink;
        for (int y = 0; y < surface.deviceSize().y; ++y)
            for (int x = 0; x < surface.deviceSize().x; ++x)
                if (device(x, y) != ground) ink = ink.unitedWith({x, y, x + 1, y + 1});
        return ink;
    }
    CanvasRenderer renderer() { return CanvasRenderer(&canvas, surface.bounds()); }
    /// Draws as the function says, and brings it to the surface.
    template <class Act>
    void paint(Act act) {
        CanvasRenderer painter = renderer();
        act(painter);
    }
    /// All device pixels.
    std::vector<std::uint32_t> picture() const { return {surface.pixels(), surface.pixels() + pixelCount()}; }
    template <class Primitive>
    void draw(Primitive const& primitive) {
        renderer().renderPrimitive(primitive);
    }

    Surface surface;
    CanvasPlace place;
    Canvas canvas;
    std::vector<IntBox> above;
};

} // namespace wainscot::testing
