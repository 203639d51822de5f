#pragma once

#include "host/drawing/colour.h"
#include "host/drawing/font.h"
#include "host/drawing/image.h"

/// What a `CanvasRenderer` draws: plain values in the coordinates of the canvas. Opacities go from 0 to 1.
namespace wainscot::Glib {

/// A filled box of one colour.
struct RectDescription {
    IntBox box;
    Colour colour;
    double opacity = 1.0;

    RectDescription() = default;
    RectDescription(IntBox const& area, Colour const& fill, double alpha = 1.0)
        : box(area), colour(fill), opacity(alpha) {}
};

/// A straight line. A horizontal or vertical line covers whole pixels, from the smaller coordinate up to, not
/// including, the larger one; it is `width` thick upwards or to the right. Other lines run between the two
/// points and are smooth while antialiasing is on.
struct LineDescription {
    XY<int> from;
    XY<int> to;
    Colour colour;
    unsigned short width = 1;
    double opacity = 1.0;

    LineDescription() = default;
    LineDescription(XY<int> const& start, XY<int> const& end, Colour const& ink, unsigned short thickness = 1,
                    double alpha = 1.0)
        : from(start), to(end), colour(ink), width(thickness), opacity(alpha) {}
};

/// One line of text. `position` lies on the baseline: the left end, the right end or the middle of the text,
/// by the alignment.
struct WAINSCOT_API TextDescription {
    LightweightString<wchar_t> text;
    XY<int> position;
    Qv::Ptr<iFont> font;
    Colour colour;
    TextAlignment alignment = eAlignLeft;
    double opacity = 1.0;

    TextDescription() = default;
    TextDescription(LightweightString<wchar_t> string, XY<int> const& at, FontDesc const& fontDesc,
                    Colour const& ink, TextAlignment align = eAlignLeft, double alpha = 1.0);
    /// With a loaded font.
    TextDescription(LightweightString<wchar_t> string, XY<int> const& at, Qv::Ptr<iFont> loadedFont,
                    Colour const& ink, TextAlignment align = eAlignLeft, double alpha = 1.0);

    /// The line box that the text covers when its position is `at`: its measured width, from the descent to
    /// the ascent of the font. Empty for an empty text.
    IntBox calcBounds(XY<int> const& at) const;
    IntBox calcBounds() const { return calcBounds(position); }
    /// The same for a width that is known already.
    IntBox boundsOfWidth(XY<int> const& at, int width) const;
};

/// A picture with its lower-left corner at `position`, one logical pixel for each of its own unless `size`
/// says otherwise.
struct ImageDescription {
    Qv::Ptr<Image> image;
    XY<int> position;
    XY<int> size;
    double opacity = 1.0;

    ImageDescription() = default;
    ImageDescription(Qv::Ptr<Image> picture, XY<int> const& at, double alpha = 1.0)
        : image(std::move(picture)), position(at), size(image ? image->size() : XY<int>()), opacity(alpha) {}
    ImageDescription(Qv::Ptr<Image> picture, IntBox const& box, double alpha = 1.0)
        : image(std::move(picture)), position(box.bottomLeft()), size(box.size()), opacity(alpha) {}

    IntBox calcBounds() const { return IntBox::sized(position, size); }
};

/// An ellipse that fills a box: filled, or only its edge when `edgeWidth` is not 0.
struct EllipseDescription {
    IntBox box;
    Colour colour;
    unsigned short edgeWidth = 0;
    double opacity = 1.0;

    EllipseDescription() = default;
    EllipseDescription(IntBox const& area, Colour const& ink, unsigned short edge = 0, double alpha = 1.0)
        : box(area), colour(ink), edgeWidth(edge), opacity(alpha) {}
};

} // namespace wainscot::Glib
