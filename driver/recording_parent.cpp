#include "driver/recording_parent.h"

#include "host/events/dispatch_scope.h"

namespace wainscot {

int RecordingParent::handleMessageEvent(LightweightString<char> name, Glob* sender) {
    messages_.push_back({std::move(name), sender, {}, currentModifiers()});
    return 1;
}

int RecordingParent::handleDataMessageEvent(LightweightString<char> name, Glob* sender,
                                            Qv::Ptr<iObject> data) {
    messages_.push_back({std::move(name), sender, std::move(data), currentModifiers()});
    return 1;
}

LightweightString<char> RecordingParent::names() const {
    LightweightString<char> names;
    for (Message const& message : messages_) {
        if (!names.empty()) names += " ";
        names += message.name;
    }
    return names;
}

} // namespace wainscot
