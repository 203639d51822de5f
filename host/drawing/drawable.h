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
        /// Paints pending damage, or forgets it.
        virtual void paintPending() = 0;
        virtual void dropPending() = 0;
    };

    /// Begins and ends a hold. The loop ends holds that a handler leaves behind.
    static void disableRedraws();
    static void enableRedraws();
    /// How many holds handlers have; `LastingRedrawHold` does not count.
    static int holdCount();
    /// Whether any hold exists, lasting or not.
    static bool isHeld();
    /// The purposes of all lasting holds, oldest first.
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

/// Holds back all painting for as long as it lives, also from one handler to a later handler: while data is
/// loaded, for example. All other holds that a handler leaves behind count as forgotten and end with the
/// handler. `purpose` says in diagnostics what the hold is for.
class WAINSCOT_API LastingRedrawHold {
public:
    explicit LastingRedrawHold(LightweightString<char> purpose);
    ~LastingRedrawHold();
    LastingRedrawHold(LastingRedrawHold const&) = delete;
    LastingRedrawHold& operator=(LastingRedrawHold const&) = delete;

private:
    std::uint64_t number_;
};

/// Short for `Drawable::disableRedraws()` and `Drawable::enableRedraws()`.
WAINSCOT_API void refresh_off();
WAINSCOT_API void refresh_on();

namespace Glib {

/// Defers updates of a canvas's window for a scope, round a change of several steps. Survives the death of
/// the canvas and of its window.
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
