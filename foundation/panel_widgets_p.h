#pragma once

#include "foundation/standard_panel_p.h"

namespace wainscot {

/// The standard widgets of a panel, and those in its status area.
class PanelWidgets {
public:
    /// The flags that ask for a title box.
    static constexpr int editableFlags = StandardPanel::editableTitle | StandardPanel::editableTitleToo;

    static void add(StandardPanel& panel, int flags);
    static void remove(StandardPanel& panel, int flags, bool redraw);
    /// Whether it is one of them, or the title box.
    static bool isOne(StandardPanel const& panel, Glob const* widget);
    /// Null when there is none.
    static Glob* get(StandardPanel const& panel, StandardWidget which);
    static void position(StandardPanel& panel);
    /// How much of the title strip they take.
    static int chainWidth(StandardPanel const& panel);
    static void recolour(StandardPanel& panel);
    /// They were made for the metrics of their time; their proportions stay.
    static void resizeToMetrics(StandardPanel& panel);
    /// What a message of one of them does when no handler consumed it. False when it is none of theirs.
    static bool reactTo(StandardPanel& panel, Glob const* sender);
    /// Lets the settings or latch button show it, where it is asked for.
    static void showSizeState(StandardPanel& panel, size_state state);

    /// Null when refused.
    static Glob* addStatus(StandardPanel& panel, Glob* widget, unsigned short width);
    static bool hasStatus(StandardPanel const& panel);

private:
    using Slot = StandardPanel::Extras::Slot;

    static Slot slotOf(StandardWidget which);
    static void makeMissing(StandardPanel& panel);
    static void removeOne(StandardPanel& panel, StandardWidget which, bool redraw);
};

} // namespace wainscot
