#pragma once

#include "buttons/button.h"

#include <optional>

namespace wainscot {

/// A button whose edge can have colours of its own.
class WAINSCOT_API CustomBorderButton : public Button {
public:
    using Button::Button;

    /// The same colour in both states, and its use is turned on.
    void setCustomBorderColour(Colour const& colour);
    /// One for each state, and their use is turned on.
    void setCustomBorderColours(Colour const& up, Colour const& down);
    /// Whether they are used; without any having been set the edge stays the usual one.
    void setUseCustomBorderColour(bool use);
    bool usesCustomBorderColour() const { return use_; }

protected:
    Colour const* borderColour() const override;

private:
    std::optional<Colour> up_;
    std::optional<Colour> down_;
    bool use_ = false;
};

} // namespace wainscot
