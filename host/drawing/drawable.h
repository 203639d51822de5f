#pragma once

#include "host/base/life.h"
#include "host/base/lightweight_string.h"

#include <cstdint>
#include <vector>

namespace wainscot {

class Canvas;
class Surface;

/// Global scheduling of repaints. Holds nest; they delay painting, never damage.
class WAINSCOT_API Drawable {
public:
    /// What brings pending damage to the screen.
    class WAINSCOT_API Painter {
    public:
        virtual ~Painter();
        virtual void paintPending() = 0;
        virtual void dropPending() = 0;
    };

    static void disableRedraws();
    static void enableRedraws();
    /// Holds of handlers; those of `LastingRedrawHold` do not count.
    static int holdCount();
    /// Any hold exists, lasting ones too.
    static bool isHeld();
    /// What the lasting holds that exist were made for, oldest first.
    static std::vector<LightweightString<char>> lastingHolds();
    /// Brings the count back to what it was; used by the loop after each handler.
    static void restoreHoldCount(int count);

    /// Forgets pending damage without painting it.
    static void clearPendingRedraws();
    /// Paints pending damage now, unless a hold exists or a painting visit is running.
    static void update();

    /// Installed by the window manager; null when there is none.
    static void setPainter(Painter* painter);
};

/// Holds back all painting for a scope, and unwinds exactly once.
class RedrawHold {
public:
    RedrawHold() { Drawable::disableRedraws(); }
    ~RedrawHold() { Drawable::enableRedraws(); }
    RedrawHold(RedrawHold const&) = delete;
    RedrawHold& operator=(RedrawHold const&) = delete;
};

/// Holds back all painting for as long as it lives, which may be from one handler to a later one: while data
/// is loaded, say. Whoever wants that owns it; a hold that a handler makes without one is taken to be
/// forgotten, and ends with the handler. `purpose` tells whose it is, for diagnostics.
class WAINSCOT_API LastingRedrawHold {
public:
    explicit LastingRedrawHold(LightweightString<char> purpose);
    ~LastingRedrawHold();
    LastingRedrawHold(LastingRedrawHold const&) = delete;
    LastingRedrawHold& operator=(LastingRedrawHold const&) = delete;

private:
    std::uint64_t number_;
};

WAINSCOT_API void refresh_off();
WAINSCOT_API void refresh_on();

namespace Glib {

/// Defers updates of the window that a canvas lies in, for a scope; made round every multi-step change of
/// appearance. Survives the death of the canvas and of its window.
class WAINSCOT_API UpdateDeferrer {
public:
    explicit UpdateDeferrer(Canvas* canvas);
    ~UpdateDeferrer();
    UpdateDeferrer(UpdateDeferrer const&) = delete;
    UpdateDeferrer& operator=(UpdateDeferrer const&) = delete;

private:
    Surface* surface_ = nullptr;
    LifeGuard guard_{nullptr, IdStamp()};
};

} // namespace Glib
} // namespace wainscot
