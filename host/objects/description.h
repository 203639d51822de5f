#pragma once

#include "host/base/box.h"
#include "host/base/lightweight_string.h"

#include <cstdint>
#include <vector>

namespace wainscot {

/// What a widget says about itself to drivers, scripts and assistive tools.
struct GlobDescription {
    enum State : std::uint32_t {
        visible = 1,
        enabled = 2,
        focused = 4,
        focusable = 8,
        pressed = 16,
        checked = 32,
        expanded = 64,
        selected = 128,
        editable = 256,
        /// Its value stands for several that differ.
        mixed = 512,
        /// Return presses it while nothing else has use for that key.
        isDefault = 1024,
    };

    /// What kind of thing it is: "panel", "button", "textbox" ...
    LightweightString<char> role;
    /// What a person would call it: its label.
    LightweightString<wchar_t> name;
    LightweightString<wchar_t> value;
    std::uint32_t states = 0;
    /// Root coordinates.
    IntBox box;
    /// What can be done with it: "press", "type" ...
    std::vector<LightweightString<char>> actions;
};

/// What has changed in a description.
enum class DescriptionChange : std::uint8_t { name, value, state, place, children };

} // namespace wainscot
