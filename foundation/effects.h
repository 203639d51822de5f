#pragma once

#include "host/base/export.h"

#include <utility>

namespace wainscot {

class Glob;

/// The effects of a changed setting of a widget; bits, which may be added.
struct Effect {
    enum Bits : unsigned int {
        paint = 1,
        /// The parts are placed again, and the widget is painted.
        layout = 2,
        /// The description changes: name, value or state.
        name = 4,
        value = 8,
        state = 16,
        /// The size that it needs: what lays it out is told.
        size = 32,
    };
};

/// Brings about the effects of a setting that has changed. It may destroy the widget.
WAINSCOT_API void applyEffects(Glob& widget, unsigned int effects);

/// For setters of widgets: stores a value and brings about its effects. An equal value has none: false.
template <class T, class Value>
bool changeSetting(Glob& widget, T& setting, Value&& value, unsigned int effects) {
    if (setting == value) return false;
    setting = std::forward<Value>(value);
    applyEffects(widget, effects);
    return true;
}

} // namespace wainscot
