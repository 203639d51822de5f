#pragma once

#include "host/messages/callback.h"
#include "host/messages/notify_msg.h"

namespace wainscot {

class MenuItem;
class NotifierBase;

/// Something that a menu item does: it can stand among the callbacks of the item and is called when the item
/// is chosen. The notification has the name of the callback and, where the item has options, a
/// `MenuData::Change`.
class WAINSCOT_API MenuItemAction : public iCallbackBase<int, NotifyMsg> {
public:
    ~MenuItemAction() override;

    /// Brings the item up to date with what it stands for: its option, its mark, whether it is active. A menu
    /// asks before it shows the item, after a choice, and when `source` has changed. Does nothing here. Only
    /// the first callback of an item is asked.
    virtual void showIn(MenuItem& item) const;
    /// Who notifies when that changes; null, as here, when nobody does.
    virtual NotifierBase* source() const;
};

} // namespace wainscot
