#include "buttons/custom_border_button.h"

namespace wainscot {

void CustomBorderButton::setCustomBorderColour(Colour const& colour) {
    setCustomBorderColours(colour, colour);
}

void CustomBorderButton::setCustomBorderColours(Colour const& up, Colour const& down) {
    up_ = up;
    down_ = down;
    setUseCustomBorderColour(true);
}

void CustomBorderButton::setUseCustomBorderColour(bool use) {
    use_ = use;
    makeDirty();
}

Colour const* CustomBorderButton::borderColour() const {
    std::optional<Colour> const& colour = isDown() ? down_ : up_;
    return use_ && colour ? &*colour : nullptr;
}

} // namespace wainscot
