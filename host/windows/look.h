#pragma once

#include "host/drawing/palette.h"
#include "host/drawing/uif_std.h"
#include "host/objects/look_change.h"

namespace wainscot {

/// Changes of the look while the program runs. Each function tells every object in every window what has
/// changed (`Glob::handleLookChange`, parents before children), lays out all windows again and paints them.
namespace Look {
/// The theme (`Palette::setCurrentTheme`).
WAINSCOT_API void setTheme(eTheme theme);
/// The user's size preference (`UifStd::setScale`).
WAINSCOT_API void setSize(double scale);
WAINSCOT_API void setMetrics(UifStd::Metrics const& metrics);
/// Device pixels in a logical pixel. Counts instead of the window system's value.
WAINSCOT_API void setDeviceScale(double scale);
/// The scale in force; 1 without a live host.
WAINSCOT_API double deviceScale();
/// Tells of a change that was made elsewhere.
WAINSCOT_API void broadcast(LookChange changes = LookChange::all);
} // namespace Look

} // namespace wainscot
