#pragma once

#include "host/base/export.h"

#include <cstdint>

namespace wainscot {

class Event;

/// One handler being run. While any exists, memory of the dead is kept; the outermost one frees it.
/// Gives handlers the modifiers of the event that is being dispatched.
class WAINSCOT_API DispatchScope {
public:
    /// Without an event the modifiers stay those of the dispatch around it.
    DispatchScope();
    explicit DispatchScope(Event const& event);
    ~DispatchScope();
    DispatchScope(DispatchScope const&) = delete;
    DispatchScope& operator=(DispatchScope const&) = delete;

    static bool isActive();

    using Free = void (*)(void* object);
    /// Frees an object at once outside dispatch, else when the outermost scope has ended. In the order of
    /// calling.
    static void freeWhenUnwound(Free free, void* object);

private:
    std::uint32_t outerModifiers_;
    int outerCode_;
};

/// Modifiers of the event being dispatched; a message carries those that held when it was sent. 0 outside
/// dispatch.
WAINSCOT_API std::uint32_t currentModifiers();

/// The report code of the message being dispatched (`Event::reportCode`): a handler that gets only name and
/// sender tells by it a repeat from a click. 0 outside dispatch, and in other events.
WAINSCOT_API int currentReportCode();

/// Reports the exception being handled.
WAINSCOT_API void reportHandlerException(char const* where);

/// Runs one handler: an exception is reported as happening in `where` and goes no further; the answer is then
/// false.
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
