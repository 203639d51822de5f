#include "buttons/custom_border_button.h"

#include "foundation/effects.h"

namespace wainscot {

void CustomBorderButton::setCustomBorderColour(Colour const& colour) {
    setCustomBorderColours(colour, colour);
}

void CustomBorderButton::setCustomBorderColours(Colour const& up, Colour const& down) {
    changeSetting(*this, up_, up, Effect::paint);
    changeSetting(*this, down_, down, Effect::paint);
    setUseCustomBorderColour(true);
}

void CustomBorderButton::setUseCustomBorderColour(bool use) {
    changeSetting(*this, use_, use, Effect::paint);
}

Colour const* CustomBorderButton::borderColour() const {
    std::optional<Colour> const& colour = isDown() ? down_ : up_;
    return use_ && colour ? &*colour : nullptr;
}

} // namespace wainscot
