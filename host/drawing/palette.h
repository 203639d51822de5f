#pragma once

#include "host/base/ptr.h"
#include "host/drawing/colour.h"

namespace wainscot {

/// The colour schemes that the toolkit brings.
enum eTheme { eThemeDark = 0, eThemeLight = 1 };

/// How text looks by the state of what it belongs to.
enum eTextAppearance {
    eTextEnabled = 0,
    eTextDisabled = 1,
    /// On the ground of the focused selection, and on faces of the accent (`doIt()`).
    eTextSelected = 2,
    /// Hints, captions and other text that stands back, still readable.
    eTextSecondary = 3,
};

/// The grounds of a window, by their part in it.
enum eWindowShade {
    /// The ground of windows and panels.
    eWindowNormal = 0,
    /// Recessed: text boxes, lists, tracks.
    eWindowRecessed = 1,
    /// Raised: title bars, column headers, menus.
    eWindowRaised = 2,
    /// Every second row of a list.
    eWindowAlternate = 3,
};

enum eSelectionAppearance {
    /// In the widget that has the keyboard focus.
    eSelectionActive = 0,
    eSelectionInactive = 1,
};

/// What kind of child a palette or ground is for.
enum eChildWindowType { eChildPanel = 0, eChildText = 1, eChildPopup = 2 };

/// Lines and marks that carry meaning: at least 3:1 against the grounds on which they stand.
enum eMarkAppearance {
    /// Ticks, arrows, handles.
    eMarkNormal = 0,
    /// The outline of something that takes input.
    eMarkEdge = 1,
    /// The frame that shows where the keyboard focus is.
    eMarkFocus = 2,
    /// What is chosen or on, and links: the one accent, as an ink. At least 4.5:1.
    eMarkAccent = 3,
    /// What is wrong or missing, as an ink. At least 4.5:1.
    eMarkWarning = 4,
};

class PaletteData;

/// The colours of a widget, by role. A handle on shared data that never changes: copying is cheap.
///
/// A default-constructed palette, and those derived from it, follow the current theme; one made from colours
/// keeps them. User-interface thread only.
class WAINSCOT_API Palette {
public:
    /// The standard colours of whatever theme is current when a colour is asked.
    Palette() noexcept;
    /// Everything derived from one ground; text is light or dark, whichever reads better on it.
    explicit Palette(Colour const& ground);
    /// Enabled text in `text`, faces and grounds derived from `ground`.
    Palette(Colour const& text, Colour const& ground);
    Palette(Palette const&) noexcept;
    Palette(Palette&&) noexcept;
    Palette& operator=(Palette const&) noexcept;
    Palette& operator=(Palette&&) noexcept;
    ~Palette();

    /// The fixed colours of one theme.
    static Palette standard(eTheme theme);
    static eTheme currentTheme();
    /// What default-constructed palettes show from now on. Repainting is the caller's affair.
    static void setCurrentTheme(eTheme theme);

    /// The face of buttons.
    Colour const& button() const;
    Colour const& text(eTextAppearance appearance) const;
    Colour const& window(eWindowShade shade) const;
    Colour const& selection(eSelectionAppearance appearance) const;
    Colour const& mark(eMarkAppearance appearance) const;
    Colour const& headingText() const;
    Colour const& subheadingText() const;
    /// The face of the control that does the default action: the accent. Text on it is `text(eTextSelected)`.
    Colour const& doIt() const;
    Colour const& warning() const;
    Colour const& childWindow(eChildWindowType type) const;
    /// The line between two areas of one ground; decoration only.
    Colour const& separator() const;

    /// A colour, brightened (above 1) or darkened (below 1) against the palette's ground: on a light ground
    /// the sense is turned round, so that above 1 always stands out more.
    Colour scale(Colour const& colour, double factor) const;
    bool isDark() const;
    /// An ink as near to `colour` as stands out from `ground` by `ratio`, of those between it and black or
    /// white. 4.5 is reached on every ground.
    static Colour readable(Colour const& colour, Colour const& ground, double ratio = 4.5);

    /// For a child of that kind: its ground becomes `window(eWindowNormal)`.
    Palette makeChildPalette(eChildWindowType type = eChildPanel) const;
    /// For a window of its own (a pop-up, a dialog).
    Palette makeWindowPalette() const;
    /// For something that shows or edits text on a recessed ground.
    Palette makeTextPalette() const;

    /// True when both answer every role alike.
    friend WAINSCOT_API bool operator==(Palette const& a, Palette const& b);

private:
    explicit Palette(Qv::Ptr<PaletteData const> data) noexcept;
    PaletteData const& data() const;

    /// Null stands for the standard of the current theme.
    Qv::Ptr<PaletteData const> data_;
};

static_assert(sizeof(Palette) == sizeof(void*));

} // namespace wainscot
