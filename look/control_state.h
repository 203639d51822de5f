#pragma once

namespace wainscot {

/// What a control shows of its state. The keyboard focus is no part of it: its mark lies over everything
/// else.
struct ControlState {
    /// It can be used.
    bool isActive = true;
    /// The pointer is on it.
    bool isHovered = false;
    /// It is held down.
    bool isPressed = false;
    /// It is latched, ticked or the chosen one of several.
    bool isChosen = false;
    /// It does what is usually wanted.
    bool isDefault = false;
};

} // namespace wainscot
