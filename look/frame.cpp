#include "look/frame.h"

#include "look/ink.h"

namespace wainscot::ControlLook {

namespace {

// Shares of white and black. Light grounds have little room above them, dark ones little below.
constexpr double lightOnDark = 0.12;
constexpr double lightOnLight = 0.75;
constexpr double shadeOnDark = 0.5;
constexpr double shadeOnLight = 0.24;
constexpr double dimLightShare = 0.25;
constexpr double dimShadeShare = 0.5;

} // namespace

FrameColours frameColours(Colour const& ground, Palette const& palette) {
    bool const dark = isDark(ground);
    Colour const light = Colour::mix(Colour(1, 1, 1), ground, dark ? lightOnDark : lightOnLight);
    Colour const shade = Colour::mix(Colour(), ground, dark ? shadeOnDark : shadeOnLight);
    return {light, shade, Colour::mix(light, ground, dimLightShare),
            Colour::mix(shade, ground, dimShadeShare), palette.separator()};
}

} // namespace wainscot::ControlLook
