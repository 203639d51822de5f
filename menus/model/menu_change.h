#pragma once

#include "host/messages/event_handler.h"
#include "host/messages/handler_ref.h"
#include "menus/model/menu_data.h"

namespace wainscot {

/// What an item with options sends when it is chosen.
class WAINSCOT_API MenuData::Change : public Qv::InternalRefCount {
public:
    /// Counted data is shared; an event handler stays whose it is.
    Change(unsigned short item, unsigned short option, iObject* data);
    ~Change() override;

    unsigned short item() const { return item_; }
    /// The item's current option at the time. It may lie beyond the options.
    unsigned short option() const { return option_; }
    /// The caller's data; null when there is none, or when it has died.
    iObject* data() const;

private:
    friend class MenuData;
    /// The data for a notification that may be kept.
    Qv::Ptr<iObject> payload() const;

    unsigned short item_;
    unsigned short option_;
    Qv::Ptr<iObject> counted_;
    HandlerRef<> handler_;
};

} // namespace wainscot
