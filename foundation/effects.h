#pragma once

#include "host/base/export.h"

#include <utility>

namespace wainscot {

class Glob;

/// What a changed setting of a widget has as its effect; bits, which may be added.
struct Effect {
    enum Bits : unsigned int {
        paint = 1,
        /// Its parts are placed again, and it is painted.
        layout = 2,
        /// What it says about itself: its name, its value, its state.
        name = 4,
        value = 8,
        state = 16,
        /// The size that it needs: what lays it out is told.
        size = 32,
    };
};

/// Brings about the effects of a setting that has changed. It may destroy the widget.
WAINSCOT_API void applyEffects(Glob& widget, unsigned int effects);

/// What setters of widgets do: stores a value with its effects; an equal one has none. False when it was
/// equal.
template <class T, class Value>
bool changeSetting(Glob& widget, T& setting, Value&& value, unsigned int effects) {
    if (setting == value) return false;
    setting = std::forward<Value>(value);
    applyEffects(widget, effects);
    return true;
}

} // namespace wainscot
