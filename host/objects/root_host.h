#pragma once

#include "host/base/export.h"

#include <vector>

namespace wainscot {

class Glob;

/// What the tree tells the window manager, which keeps its roots in windows.
class WAINSCOT_API iRootHost {
public:
    virtual ~iRootHost();
    /// The root's size was changed by the program.
    virtual void rootResized(Glob& root) = 0;
    /// The root's place was changed by the program.
    virtual void rootMoved(Glob& root) = 0;
    virtual void rootVisibilityChanged(Glob& root) = 0;
    /// The root is being detached: its window has to go.
    virtual void rootDying(Glob& root) = 0;
    /// What is drawn round the root has changed.
    virtual void rootSurroundChanged(Glob& root) = 0;
    /// The root's window is to come to the front, and with `activate` to become the active one.
    virtual void rootToTop(Glob& root, bool activate) = 0;
    /// The root's window is to lie wholly on one monitor.
    virtual void constrainRoot(Glob& root) = 0;
    /// Whether a modal object keeps input from the object.
    virtual bool isBlocked(Glob const& glob) const = 0;
    /// All roots, oldest window first.
    virtual std::vector<Glob*> roots() const = 0;
    /// The root of the next window after a root's window; null gives the first root, the last root gives
    /// null.
    virtual Glob* rootAfter(Glob const* root) const = 0;

    static iRootHost* current();
    static void install(iRootHost* host);
};

} // namespace wainscot
