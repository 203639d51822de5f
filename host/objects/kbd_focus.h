#pragma once

#include "host/base/id_stamp.h"

namespace wainscot {

class EventSystem;
class Glob;

/// The holder of the keyboard focus in the active window (in the last active one while none is); while a
/// change of the focus is being told, that of the window in which it changes. Null when there is none.
WAINSCOT_API Glob* get_kbd_focus();
/// Gives the focus of its window to an object: nothing happens when it holds it; else it is stored, the old
/// holder is told, then, if it lives and still holds it, the new one. Null gives the active window's focus to
/// its root. False when refused: not shown, not active, dead, or more than 32 changes inside each other.
WAINSCOT_API bool set_kbd_focus(Glob* glob);
/// Whether a window of the program is the active one.
WAINSCOT_API bool glib_appHasFocus();

/// Whether an object is to show the mark of the focus: it holds it, the application has it, and nothing modal
/// keeps the keys from it.
WAINSCOT_API bool glib_showsKbdFocus(Glob const* glob);

/// What the tree itself does with the focus.
class WAINSCOT_API KbdFocus {
public:
    /// The holder in the window of a root; null when there is none.
    static Glob* holderIn(Glob const& root);
    /// The nearest ancestor that can take keys, so that Tab goes on from near the place; else the root. Null
    /// for a root.
    static Glob* heirOf(Glob const& leaving);
    /// The holder hands it to the root of its window, whether or not that can use it; both are told.
    static void giveUp(Glob& holder);
    /// When the holder is `top` or below it: its heir gets the focus. The holder is not told; the heir is,
    /// when what runs at the moment is done.
    static void leave(Glob& top);
    /// A root is about to become a child: it has no focus of its own any more.
    static void joinTree(Glob& child);
    /// Makes the root the holder of its own window, and nobody is told.
    static void startIn(Glob& root);

    /// Tells who watches for the focus in it, or in what it lies in.
    static void tellWatchers(Glob& holder);

private:
    friend bool set_kbd_focus(Glob* glob);
    static bool change(EventSystem& system, Glob& glob, IdStamp window);
};

} // namespace wainscot
