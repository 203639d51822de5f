#pragma once

#include "host/base/export.h"

namespace wainscot {

/// Reports handlers that keep the user waiting. The loop watches each handler by the clock in force. A
/// handler that takes longer than the limit without life support is counted, and logged when it has ended.
/// User-interface thread only.
namespace SystemWatchdog {

/// Milliseconds that one handler may take.
inline constexpr double standardLimit = 5000.0;

/// Begins a bracket round work that takes long. Brackets may be nested; the time inside them does not count.
WAINSCOT_API void beginLifeSupport();
/// Ends the innermost bracket; one too many is counted in the diagnostics.
WAINSCOT_API void endLifeSupport();
WAINSCOT_API bool isOnLifeSupport();

/// Life support for a scope, which may be left by an exception.
class WAINSCOT_API LifeSupport {
public:
    LifeSupport() { beginLifeSupport(); }
    ~LifeSupport() { endLifeSupport(); }
    LifeSupport(LifeSupport const&) = delete;
    LifeSupport& operator=(LifeSupport const&) = delete;
};

/// One handler being run: the loop's part.
class WAINSCOT_API Watch {
public:
    /// `where` says what is handled; it must outlive this object.
    explicit Watch(char const* where);
    ~Watch();
    Watch(Watch const&) = delete;
    Watch& operator=(Watch const&) = delete;

private:
    char const* where_;
    double start_;
    double supportedBefore_;
};

/// Sets the limit in milliseconds; with 0 or less nothing is reported. A new host has the standard limit.
WAINSCOT_API void setLimit(double msecs);

} // namespace SystemWatchdog
} // namespace wainscot
