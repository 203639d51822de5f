#pragma once

#include "host/base/export.h"

#include <cstdint>

namespace wainscot {

class Event;

/// One handler that is running. While any scope exists, the memory of destroyed objects is kept; the
/// outermost scope frees it. A handler gets the modifiers of its event from it.
class WAINSCOT_API DispatchScope {
public:
    /// Without an event the modifiers are those of the scope around it.
    DispatchScope();
    explicit DispatchScope(Event const& event);
    ~DispatchScope();
    DispatchScope(DispatchScope const&) = delete;
    DispatchScope& operator=(DispatchScope const&) = delete;

    /// Whether any handler is running.
    static bool isActive();

    using Free = void (*)(void* object);
    /// Outside all scopes frees an object at once, else when the outermost scope ends, in the order of the
    /// calls.
    static void freeWhenUnwound(Free free, void* object);

private:
    std::uint32_t outerModifiers_;
    int outerCode_;
};

/// Modifiers of the event that is being dispatched; a message has the modifiers of its sending. 0 outside
/// dispatch.
WAINSCOT_API std::uint32_t currentModifiers();

/// The report code of the message that is being dispatched (`Event::reportCode`). By it a handler that gets
/// only name and sender tells a repeat from a click. 0 outside dispatch and for other events.
WAINSCOT_API int currentReportCode();

/// Reports the exception being handled.
WAINSCOT_API void reportHandlerException(char const* where);

/// Runs one handler. An exception is caught and reported as one in `where`; the answer is then false.
template <class Handler>
bool runHandler(char const* where, Handler handler) {
    try {
        handler();
        return true;
    } catch (...) {
        reportHandlerException(where);
        return false;
    }
}

} // namespace wainscot
