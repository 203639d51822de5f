#pragma once

#include "host/objects/glob.h"

namespace wainscot {

/// Delivers an event to an object and, while it is not consumed and is of a kind that goes up, to its
/// ancestors. True = consumed. A widget that dies while it is asked has consumed it. Exceptions pass to the
/// caller. `consumer`, unless null, gets the object that consumed it; null when there is none, or when it has
/// died.
WAINSCOT_API bool dispatchUpwards(Glob* target, Event const& event, Glob** consumer = nullptr);

/// The same without the ancestors.
WAINSCOT_API bool dispatchTo(Glob* target, Event const& event);

} // namespace wainscot
