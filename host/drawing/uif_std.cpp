#include "host/drawing/uif_std.h"

#include "host/base/host_value.h"
#include "host/services/text_ids.h"

#include <cmath>
#include <limits>
#include <optional>

namespace wainscot {
namespace {

struct Measures {
    UifStd::Metrics metrics;
    double userScale = 1.0;
    /// Nothing = the language file has not been asked.
    std::optional<bool> isRightToLeft;
};

constinit HostValue<Measures> measures;

unsigned short scaled(double measure) {
    double const value = std::round(measure * measures.get().userScale);
    if (!(value >= 1)) return 1;
    return static_cast<unsigned short>(std::min<double>(value, std::numeric_limits<short>::max()));
}

} // namespace

unsigned short UifStd::getButtonHeight() {
    return scaled(measures.get().metrics.buttonHeight);
}

unsigned short UifStd::getButtonHeight(float scale) {
    return scaled(measures.get().metrics.buttonHeight * static_cast<double>(scale));
}

unsigned short UifStd::getWidgetGap() {
    return scaled(measures.get().metrics.widgetGap);
}

unsigned short UifStd::getIndentWidth() {
    return scaled(measures.get().metrics.indentWidth);
}

unsigned short UifStd::getRowGap() {
    return scaled(measures.get().metrics.rowGap);
}

unsigned short UifStd::getBorder() {
    return scaled(measures.get().metrics.border);
}

unsigned short UifStd::getTableRowHeight() {
    return scaled(measures.get().metrics.tableRowHeight);
}

unsigned short UifStd::getCornerRadius() {
    return scaled(measures.get().metrics.cornerRadius);
}

double UifStd::getScale() {
    return measures.get().userScale;
}

void UifStd::setScale(double scale) {
    if (std::isfinite(scale)) measures.edit().userScale = std::clamp(scale, 0.5, 4.0);
}

int UifStd::calcScaledValue(float value) {
    double const result = std::round(static_cast<double>(value) * measures.get().userScale);
    if (!(std::abs(result) < std::numeric_limits<int>::max())) return 0;
    return static_cast<int>(result);
}

bool UifStd::isRightToLeft() {
    if (!measures.get().isRightToLeft)
        setRightToLeft(resourceStrW(TextId::readingDirection) == LightweightString<wchar_t>(L"rtl"));
    return *measures.get().isRightToLeft;
}

void UifStd::setRightToLeft(bool isRightToLeft) {
    measures.edit().isRightToLeft = isRightToLeft;
}

Glib::FontDesc UifStd::getFont() {
    return {Glib::getDefaultFontName(), scaled(measures.get().metrics.fontSize), Glib::eFontRegular};
}

Glib::FontDesc UifStd::getTitleFont() {
    return {Glib::getDefaultFontName(), scaled(measures.get().metrics.titleFontSize), Glib::eFontBold};
}

Glib::FontDesc UifStd::getSubheadingFont() {
    return {Glib::getDefaultFontName(), scaled(measures.get().metrics.subheadingFontSize), Glib::eFontBold};
}

Palette UifStd::getColourScheme() {
    return {};
}

int UifStd::measure(UIString const& text) {
    return Glib::loadFont(getFont())->textWidth(text.text());
}

UifStd::Metrics const& UifStd::metrics() {
    return measures.get().metrics;
}

void UifStd::setMetrics(Metrics const& metrics) {
    measures.edit().metrics = metrics;
}

} // namespace wainscot
