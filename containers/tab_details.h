#pragma once

#include "host/messages/event_msg_data.h"

namespace wainscot {

/// Which tab a message of a tabbed dialogue is about; its payload (`unwrapData<TabDetails>`).
struct TabDetails {
    LightweightString<wchar_t> name;
    unsigned short index = 0;

    friend bool operator==(TabDetails const&, TabDetails const&) = default;
};

} // namespace wainscot
