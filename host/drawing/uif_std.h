#pragma once

#include "host/drawing/font.h"
#include "host/drawing/palette.h"
#include "host/services/ui_string.h"

namespace wainscot {

/// The standard metrics of the user interface, in logical pixels, already scaled by the user's size
/// preference and never below 1. The scale of the screen is no part of them.
class WAINSCOT_API UifStd {
public:
    /// The measures before scaling; every one is taken as at least 1.
    struct Metrics {
        double buttonHeight = 24;
        double widgetGap = 8;
        double indentWidth = 4;
        double rowGap = 6;
        double border = 4;
        double tableRowHeight = 22;
        double fontSize = 12;
        double titleFontSize = 14;
        double subheadingFontSize = 12;
        double utilityFontSize = 12;
        double cornerRadius = 4;
    };

    static unsigned short getButtonHeight();
    /// The height of a button that is `scale` times as high as the standard one.
    static unsigned short getButtonHeight(float scale);
    static unsigned short getWidgetGap();
    static unsigned short getIndentWidth();
    static unsigned short getRowGap();
    static unsigned short getBorder();
    static unsigned short getTableRowHeight();
    /// The radius of the rounded corners of faces and edges.
    static unsigned short getCornerRadius();

    /// The user's size preference: 1 is the standard size.
    static double getScale();
    /// Kept between 0.5 and 4; what is not a number is refused.
    static void setScale(double scale);
    /// A measure of the standard size in the user's size, rounded.
    static int calcScaledValue(float value);

    /// Whether the user's language is read from right to left, as its language file says: for controls that
    /// have a direction, which are then drawn, and worked with Left and Right, the other way round.
    static bool isRightToLeft();
    /// Overrules the language file, before windows are made: nothing is painted again.
    static void setRightToLeft(bool isRightToLeft);

    static Glib::FontDesc getFont();
    static Glib::FontDesc getTitleFont();
    static Glib::FontDesc getSubheadingFont();
    static Palette getColourScheme();
    /// The width of a text in the standard font.
    static int measure(UIString const& text);

    static Metrics const& metrics();
    /// Replaces the measures; a default-constructed record brings the standard ones back.
    static void setMetrics(Metrics const& metrics);
};

} // namespace wainscot
