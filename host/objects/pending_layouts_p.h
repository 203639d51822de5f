#pragma once

#include "host/base/export.h"

namespace wainscot {

/// The objects that are to lay out their children before the next painting (`Glob::askForLayout`).
class WAINSCOT_API PendingLayouts {
public:
    static bool any();
    /// Has all of them do it, parents before children, and those that are asked for meanwhile as well. An
    /// object that asks again and again is left alone after `maxTimes`, and counted in the diagnostics.
    static void doAll();
    static constexpr int maxTimes = 16;
};

} // namespace wainscot
