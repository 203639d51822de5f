#pragma once

#include "host/base/life.h"

#include <cstddef>
#include <cstdint>

namespace wainscot {

/// What all value servers share, whatever the type of their value.
class WAINSCOT_API ValServerBase {
public:
    /// The two phases of a change, as types of the event. Below the numbers that named notifications get.
    static constexpr int valChangedMsgType = -1;
    static constexpr int preValChangedMsgType = -2;

    ValServerBase() = default;
    ValServerBase(ValServerBase const&) {}
    ValServerBase& operator=(ValServerBase const&) { return *this; }
    virtual ~ValServerBase();

    /// Tells the observers that the value is about to change; the old value is still there.
    virtual void preNotifyValChanged() = 0;
    /// Tells the observers that the value has changed. Nothing happens when there are none.
    virtual void notifyValChanged() = 0;

    /// For guards: whether the server still lives after a call out.
    LifeToken const& life() const { return life_; }

private:
    LifeToken life_;
};

/// Remembers when a server last changed, so that servers can be compared.
class WAINSCOT_API LastValServer {
public:
    /// The number of the last change, counted over all servers of the program; 0 = none yet.
    std::uint64_t lastChange() const { return lastChange_; }
    bool changedAfter(LastValServer const& other) const { return lastChange_ > other.lastChange_; }

protected:
    LastValServer() = default;
    // Being copied is not a change.
    LastValServer(LastValServer const&) {}
    LastValServer& operator=(LastValServer const&) { return *this; }
    ~LastValServer() = default;
    void noteChange();

private:
    std::uint64_t lastChange_ = 0;
};

} // namespace wainscot
