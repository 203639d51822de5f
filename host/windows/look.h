#pragma once

#include "host/drawing/palette.h"
#include "host/drawing/uif_std.h"
#include "host/objects/look_change.h"

namespace wainscot {

/// Changes of how everything looks, while the program runs. Each tells every object of every window
/// what it was (`Glob::handleLookChange`, parents before children), lays all windows out again and paints
/// them.
namespace Look {
WAINSCOT_API void setTheme(eTheme theme);
/// The user's size preference (`UifStd::setScale`).
WAINSCOT_API void setSize(double scale);
WAINSCOT_API void setMetrics(UifStd::Metrics const& metrics);
/// Device pixels in a logical pixel. What the window system says is overruled.
WAINSCOT_API void setDeviceScale(double scale);
/// The scale in force; 1 without a live host.
WAINSCOT_API double deviceScale();
/// For a change that was made elsewhere.
WAINSCOT_API void broadcast(LookChange changes = LookChange::all);
} // namespace Look

} // namespace wainscot
