#pragma once

#include "buttons/button.h"

#include <optional>

namespace wainscot {

/// A button whose edge can have colours of its own.
class WAINSCOT_API CustomBorderButton : public Button {
public:
    using Button::Button;

    /// Sets one colour for both states, and turns its use on.
    void setCustomBorderColour(Colour const& colour);
    /// Sets a colour for each state, and turns their use on.
    void setCustomBorderColours(Colour const& up, Colour const& down);
    /// Whether the colours are used. Without colours the edge is the usual one.
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
