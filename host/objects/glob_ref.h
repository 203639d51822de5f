#pragma once

#include "host/messages/handler_ref.h"
#include "host/objects/glob.h"

namespace wainscot {

/// Refers to an object of the tree that somebody else owns.
template <class T>
using GlobRef = HandlerRef<T>;

} // namespace wainscot
