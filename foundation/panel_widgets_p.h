#pragma once

#include "foundation/standard_panel_p.h"

namespace wainscot {

/// The standard widgets of a panel, and the widgets in its status area.
class PanelWidgets {
public:
    /// The flags that ask for a title box.
    static constexpr int editableFlags = StandardPanel::editableTitle | StandardPanel::editableTitleToo;

    static void add(StandardPanel& panel, int flags);
    static void remove(StandardPanel& panel, int flags, bool redraw);
    /// Whether a widget is a standard widget or the title box.
    static bool isOne(StandardPanel const& panel, Glob const* widget);
    /// Null when there is none.
    static Glob* get(StandardPanel const& panel, StandardWidget which);
    static void position(StandardPanel& panel);
    /// The width that they take of the title strip.
    static int chainWidth(StandardPanel const& panel);
    static void recolour(StandardPanel& panel);
    /// Fits them to changed metrics; their proportions stay.
    static void resizeToMetrics(StandardPanel& panel);
    /// Carries out a message of a standard widget that no handler consumed. False for other messages.
    static bool reactTo(StandardPanel& panel, Glob const* sender);
    /// Lets the settings or latch button show the size state, if there is one.
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
