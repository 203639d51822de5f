#pragma once

#include "foundation/standard_panel_p.h"

namespace wainscot {

class CanvasRenderer;

/// The title of a panel: its text, the strip in which it stands, and the box in which the user edits it.
class PanelTitle {
public:
    /// A font of null is the standard one.
    static void store(StandardPanel& panel, UIString const& title, Glib::FontDesc const* font,
                      eRedrawFlag redraw);
    static bool isEmpty(StandardPanel const& panel);
    static UIString text(StandardPanel const& panel);
    static Glib::FontDesc font(StandardPanel const& panel);
    static int widthOf(StandardPanel const& panel, UIString const& title);

    /// The text has changed: shows it and tells of it.
    static void changed(StandardPanel& panel, eRedrawFlag redraw);
    /// The user has typed in the box; has ended editing.
    static void typed(StandardPanel& panel);
    static void edited(StandardPanel& panel);

    /// Null when there is none.
    static Glob* box(StandardPanel const& panel);
    /// Makes the title box, unless there is one or no maker is registered.
    static void makeBox(StandardPanel& panel);
    static void removeBox(StandardPanel& panel, bool redraw);
    /// Gives the box the place between the left edge and the standard widgets.
    static void resizeBox(StandardPanel& panel);

    // In the panel's coordinates.
    /// The coloured part of the strip; empty without one.
    static IntBox bar(StandardPanel const& panel);
    static int barHeight(StandardPanel const& panel);
    /// The place of the title.
    static IntBox row(StandardPanel const& panel);
    static int rowWidth(StandardPanel const& panel);

    static void draw(StandardPanel& panel, CanvasRenderer& renderer);
    /// The full text, over a title that was cut to fit. False elsewhere.
    static bool tipAt(StandardPanel const& panel, XY<int> const& place, TooltipDetails& details);

private:
    static LightweightString<wchar_t> fitted(StandardPanel const& panel, bool* wasCut = nullptr);
    static void tellParent(StandardPanel& panel, StandardPanel::Messages which);
};

} // namespace wainscot
