#pragma once

#include "host/objects/glob.h"

#include <vector>

namespace wainscot {

/// A parent that records every message that it gets, in order.
class WAINSCOT_API RecordingParent : public Glob {
public:
    struct Message {
        LightweightString<char> name;
        /// Null when it was not a `Glob` or had died. It may have died since.
        Glob* sender;
        Qv::Ptr<iObject> data;
        std::uint32_t modifiers;
    };

    using Glob::Glob;

    int handleMessageEvent(LightweightString<char> name, Glob* sender) override;
    int handleDataMessageEvent(LightweightString<char> name, Glob* sender, Qv::Ptr<iObject> data) override;

    std::vector<Message> const& messages() const { return messages_; }
    /// The names, separated by blanks.
    LightweightString<char> names() const;
    void forgetMessages() { messages_.clear(); }

private:
    std::vector<Message> messages_;
};

} // namespace wainscot
