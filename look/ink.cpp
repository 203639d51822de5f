#include "look/ink.h"

namespace wainscot::ControlLook {

namespace {

constexpr double weakenedShare = 0.45;
// A little more than is promised: what is shown is rounded.
constexpr double activeContrast = 4.6;
constexpr double inactiveContrast = 2.6;

} // namespace

Colour textColour(ControlState const& state, Palette const& palette) {
    if (!state.isActive) return palette.text(eTextDisabled);
    return palette.text(state.isDefault ? eTextSelected : eTextEnabled);
}

Colour inkOn(Colour const& ink, Colour const& ground, bool isActive) {
    return Palette::readable(ink, ground, isActive ? activeContrast : inactiveContrast);
}

Colour weakened(Colour const& colour, Colour const& ground) {
    return Colour::mix(colour, ground, weakenedShare);
}

bool isDark(Colour const& ground) {
    return ground.brightness() < 0.5;
}

} // namespace wainscot::ControlLook
