#include "look/ink.h"

namespace wainscot::ControlLook {

namespace {

constexpr double weakenedShare = 0.45;

} // namespace

Colour textColour(ControlState const& state, Palette const& palette) {
    if (!state.isActive) return palette.text(eTextDisabled);
    return palette.text(state.isDefault ? eTextSelected : eTextEnabled);
}

Colour inkOn(Colour const& chosen, Colour const& ground) {
    return Palette::readable(chosen, ground);
}

Colour weakened(Colour const& colour, Colour const& ground) {
    return Colour::mix(colour, ground, weakenedShare);
}

bool isDark(Colour const& ground) {
    return ground.brightness() < 0.5;
}

} // namespace wainscot::ControlLook
