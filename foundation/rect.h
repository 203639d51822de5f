#pragma once

#include "foundation/menu_glob.h"

namespace wainscot {

/// A coloured body with square or round corners.
class WAINSCOT_API rect : public MenuGlob {
public:
    explicit rect(GlobCreationInfo const& info);
    rect(unsigned short width, unsigned short height, Palette const& palette = Palette(), bool opaque = true,
         Canvas* canvas = nullptr);
    /// From saved settings; besides those of `Glob`: "radius".
    rect(configb const& settings, unsigned short width, unsigned short height);

    /// The colour of the body; the palette's window colour until it is set.
    virtual void setcol(Colour const& colour, bool redraw);
    Colour getcol() const { return getCol(); }
    /// The radius of the corners in pixels, 0 = square; negative values and NaN count as 0.
    void set_radius(double radius);
    double get_radius() const { return radius_; }

    /// Fills the body, if the object is opaque.
    void drawBackground() override;

private:
    float radius_ = 0.0F;
};

} // namespace wainscot
