#pragma once

#include "host/messages/callback.h"
#include "host/messages/notify_msg.h"

namespace wainscot {

/// Something that a menu item does: it can stand among the callbacks of the item and is called when the item
/// is chosen. The notification has the name of the callback and, where the item has options, a
/// `MenuData::Change`.
class WAINSCOT_API MenuItemAction : public iCallbackBase<int, NotifyMsg> {
public:
    ~MenuItemAction() override;
};

} // namespace wainscot
