#include "host/drawing/uif_std.h"

#include <cmath>
#include <limits>

namespace wainscot {
namespace {

constinit UifStd::Metrics current = {};
constinit double userScale = 1.0;

unsigned short scaled(double measure) {
    double const value = std::round(measure * userScale);
    if (!(value >= 1)) return 1;
    return static_cast<unsigned short>(std::min<double>(value, std::numeric_limits<short>::max()));
}

} // namespace

unsigned short UifStd::getButtonHeight() {
    return scaled(current.buttonHeight);
}

unsigned short UifStd::getButtonHeight(float scale) {
    return scaled(current.buttonHeight * static_cast<double>(scale));
}

unsigned short UifStd::getWidgetGap() {
    return scaled(current.widgetGap);
}

unsigned short UifStd::getIndentWidth() {
    return scaled(current.indentWidth);
}

unsigned short UifStd::getRowGap() {
    return scaled(current.rowGap);
}

unsigned short UifStd::getBorder() {
    return scaled(current.border);
}

unsigned short UifStd::getTableRowHeight() {
    return scaled(current.tableRowHeight);
}

unsigned short UifStd::getCornerRadius() {
    return scaled(current.cornerRadius);
}

double UifStd::getScale() {
    return userScale;
}

void UifStd::setScale(double scale) {
    if (std::isfinite(scale)) userScale = std::clamp(scale, 0.5, 4.0);
}

int UifStd::calcScaledValue(float value) {
    double const result = std::round(static_cast<double>(value) * userScale);
    if (!(std::abs(result) < std::numeric_limits<int>::max())) return 0;
    return static_cast<int>(result);
}

Glib::FontDesc UifStd::getFont() {
    return {Glib::getDefaultFontName(), scaled(current.fontSize), Glib::eFontRegular};
}

Glib::FontDesc UifStd::getTitleFont() {
    return {Glib::getDefaultFontName(), scaled(current.titleFontSize), Glib::eFontBold};
}

Glib::FontDesc UifStd::getSubheadingFont() {
    return {Glib::getDefaultFontName(), scaled(current.subheadingFontSize), Glib::eFontBold};
}

Palette UifStd::getColourScheme() {
    return {};
}

int UifStd::measure(UIString const& text) {
    return Glib::loadFont(getFont())->textWidth(text.text());
}

UifStd::Metrics const& UifStd::metrics() {
    return current;
}

void UifStd::setMetrics(Metrics const& metrics) {
    current = metrics;
}

} // namespace wainscot
