#pragma once

#include "host/drawing/canvas.h"
#include "host/drawing/colour.h"

namespace wainscot {

/// Draws text and boxes on a canvas at once, in its colour and its font.
class WAINSCOT_API Pen {
public:
    /// `colour` is copied; null stands for black. A face name of null or "" is the default face. `height` is
    /// the font's size, 0 the standard one; `style` its style bits.
    Pen(Canvas* canvas, Colour const* colour, char const* fontName, int height, int style);

    void set_colour(Colour const& colour) { colour_ = colour; }
    void set_font(char const* fontName);
    void set_font_height(int height);
    Qv::Ptr<iFont> const& font() const { return font_; }

    /// With the left end on the baseline at `position`.
    void writeTextAt(LightweightString<wchar_t> const& text, XY<int> const& position);
    void write_text_at_xy(LightweightString<wchar_t> const& text, int x, int y) { writeTextAt(text, {x, y}); }
    void draw_filled_box(IntBox const& box);

    /// Width and line height of a text.
    XY<int> measure(LightweightString<wchar_t> const& text) const;
    int text_width(LightweightString<wchar_t> const& text) const { return measure(text).x; }
    /// The baseline above the bottom of a box of that height.
    int getFontYOffset(int height) const;

private:
    void load();

    Canvas* canvas_;
    LifeGuard guard_{nullptr, IdStamp()};
    Colour colour_;
    Glib::FontDesc desc_;
    Qv::Ptr<iFont> font_;
};

} // namespace wainscot
