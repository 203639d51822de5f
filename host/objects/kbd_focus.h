#pragma once

#include "host/base/id_stamp.h"

namespace wainscot {

class EventSystem;
class Glob;

/// The holder of the keyboard focus in the active window, or in the last active one while none is. While a
/// change of the focus is being told: the holder in the window of that change. Null when there is none.
WAINSCOT_API Glob* get_kbd_focus();
/// Gives an object the focus of its window. The change is stored, the old holder is told, then the new
/// holder, if it lives and still holds the focus. Nothing happens when the object holds the focus already.
/// Null gives the active window's focus to its root. False for an object that is not shown, inactive or dead,
/// and when more than 32 changes are nested.
WAINSCOT_API bool set_kbd_focus(Glob* glob);
/// Whether a window of the program is the active one.
WAINSCOT_API bool glib_appHasFocus();

/// Whether an object shows the mark of the focus: it holds the focus, a window of the program is active, and
/// no modal object keeps keys from it.
WAINSCOT_API bool glib_showsKbdFocus(Glob const* glob);

/// What the tree itself does with the focus.
class WAINSCOT_API KbdFocus {
public:
    /// The holder in the window of a root; null when there is none.
    static Glob* holderIn(Glob const& root);
    /// The nearest ancestor that can take keys, so that Tab goes on near that place; else the root. Null for
    /// a root.
    static Glob* heirOf(Glob const& leaving);
    /// The holder hands the focus to the root of its window, whether the root can use it or not; both are
    /// told.
    static void giveUp(Glob& holder);
    /// When the holder is `top` or a descendant of it, its heir gets the focus. Both are told after the
    /// running handler, the holder only if it still lives.
    static void leave(Glob& top);
    /// A root is about to become a child: it is no longer a window with a focus of its own.
    static void joinTree(Glob& child);
    /// Makes the root the holder of its own window, and nobody is told.
    static void startIn(Glob& root);

    /// Tells the watchers of the focus in the holder and in its ancestors.
    static void tellWatchers(Glob& holder);

private:
    friend bool set_kbd_focus(Glob* glob);
    static bool change(EventSystem& system, Glob& glob, IdStamp window);
};

} // namespace wainscot
