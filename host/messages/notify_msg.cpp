#include "host/messages/notify_msg.h"

#include "host/base/convert.h"

namespace wainscot {

NotifyMsg::NotifyMsg(LightweightString<wchar_t> const& name, int code) : name_(toUTF8(name)), code_(code) {}

} // namespace wainscot
