#pragma once

#include "gallery/page.h"

#include "host/drawing/canvas_renderer.h"

namespace wainscot::gallery {

/// A page that only shows: its whole contents are drawn by one function.
class Sheet : public Glob {
public:
    using Draw = void (*)(CanvasRenderer& renderer, IntBox const& area, Palette const& palette);

    Sheet(XY<int> size, Draw contents);
    SizeNeeds sizeNeeds() const override { return usualNeeds(); }
    void draw() override;

private:
    Draw draw_;
};

/// Lays things out from the top of a sheet downwards.
class SheetCursor {
public:
    SheetCursor(CanvasRenderer& renderer, IntBox const& area, Palette const& palette);

    /// A line of small print; what follows stands below it.
    void note(LightweightString<wchar_t> const& text);
    /// Room of that height below what was placed so far.
    IntBox row(int height);
    CanvasRenderer& renderer() { return renderer_; }
    Palette const& palette() const { return palette_; }

private:
    CanvasRenderer& renderer_;
    IntBox area_;
    Palette palette_;
    int top_;
};

} // namespace wainscot::gallery
