#pragma once

#include "gallery/page.h"

#include "host/drawing/canvas_renderer.h"

namespace wainscot::gallery {

/// Lays things out from the top of a sheet downwards.
class SheetCursor {
public:
    SheetCursor(CanvasRenderer& renderer, IntBox const& area, Palette const& palette);

    /// A line of text, nearer to what follows than to what is above.
    void note(LightweightString<wchar_t> const& text);
    /// Room of that height below what was placed so far.
    IntBox row(int height);
    /// How much of the height has been used.
    int usedHeight() const { return area_.y2 - top_; }
    IntBox const& area() const { return area_; }
    CanvasRenderer& renderer() { return renderer_; }
    Palette const& palette() const { return palette_; }

private:
    CanvasRenderer& renderer_;
    IntBox area_;
    Palette palette_;
    int top_;
};

/// A page that only shows: its whole contents are drawn by one function. How high it must be is known when it
/// has been drawn.
class Sheet : public Glob {
public:
    using Draw = void (*)(SheetCursor& cursor);

    Sheet(XY<int> size, Draw contents);
    SizeNeeds sizeNeeds() const override;
    void draw() override;

private:
    Draw draw_;
    int neededHeight_ = 0;
};

} // namespace wainscot::gallery
