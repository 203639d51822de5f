#pragma once

#include "host/base/export.h"
#include "host/base/lightweight_string.h"

namespace wainscot {

class Backend;

/// What the desktop module exports; looked up by its name `wainscotCreateDesktopBackend`.
/// Gives a new backend that the caller owns, or null with the reason in `problem`
/// (no display, no X server answering, no window system library).
using CreateDesktopBackend = Backend* (*)(LightweightString<char>& problem);

inline constexpr char const* createDesktopBackendName = "wainscotCreateDesktopBackend";

} // namespace wainscot
