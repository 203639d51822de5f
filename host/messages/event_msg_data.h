#pragma once

#include "host/messages/notify_msg.h"

namespace wainscot {

/// A record as the payload of a message; `unwrapData<T>` gives it.
template <class T>
using EventMsgData = WrappedData<T>;

} // namespace wainscot
