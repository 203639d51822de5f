#include "gallery/pages/level_meter.h"

#include "host/base/convert.h"
#include "host/drawing/canvas_renderer.h"
#include "host/drawing/shapes.h"
#include "host/drawing/uif_std.h"
#include "host/objects/description.h"

#include <algorithm>
#include <cmath>

namespace wainscot::gallery {

namespace {

/// The levels from which on it is nearly too loud, and too loud.
constexpr double warm = -18;
constexpr double hot = -6;
constexpr Colour calmColour = Colour::fromLong(0x3FA35B);
constexpr Colour warmColour = Colour::fromLong(0xC9A227);
constexpr Colour hotColour = Colour::fromLong(0xD1493F);

struct Zone {
    double from;
    double to;
    Colour colour;
};
constexpr Zone zones[] = {
    {LevelMeter::silence, warm, calmColour}, {warm, hot, warmColour}, {hot, 0, hotColour}};

Colour colourAt(double level) {
    return level > hot ? hotColour : level > warm ? warmColour : calmColour;
}

} // namespace

LevelMeter::LevelMeter() : Glob(1, 1) {}

SizeNeeds LevelMeter::sizeNeeds() const {
    int const thick = UifStd::getWidgetGap() * 3 / 2;
    int const unit = UifStd::getButtonHeight();
    return {.natural = {thick, 4 * unit}, .minimum = {thick, 2 * unit}};
}

int LevelMeter::heightOf(double level) const {
    double const share = (std::clamp(level, silence, 0.0) - silence) / -silence;
    return static_cast<int>(std::lround(share * std::max(height() - 2, 0)));
}

void LevelMeter::setLevel(double level) {
    double const wanted = std::clamp(std::isnan(level) ? silence : level, silence, 0.0);
    double const peak = std::max(wanted, peak_ - fallPerStep);
    if (wanted == level_ && peak == peak_) return;
    level_ = wanted;
    peak_ = std::max(peak, silence);
    makeDirty();
    describeChanged(DescriptionChange::value);
}

void LevelMeter::draw() {
    IntBox const area = canvasArea();
    CanvasRenderer renderer(canvas(), area);
    Palette const& palette = getPalette();
    Glib::drawRoundedRect(renderer, palette.window(eWindowRecessed), palette.separator(), area, 1,
                          UifStd::getCornerRadius() / 2);
    IntBox const inner = area.inset(1);
    int const top = heightOf(level_);
    for (Zone const& zone : zones) {
        int const from = heightOf(zone.from);
        int const to = std::min(heightOf(zone.to), top);
        if (to > from)
            renderer.renderPrimitive(
                Glib::RectDescription({inner.x1, inner.y1 + from, inner.x2, inner.y1 + to}, zone.colour));
    }
    int const peak = heightOf(peak_);
    if (peak_ > silence && peak > 0)
        renderer.renderPrimitive(Glib::RectDescription(
            {inner.x1, inner.y1 + peak - 1, inner.x2, inner.y1 + peak}, colourAt(peak_)));
}

void LevelMeter::describe(GlobDescription& description) const {
    Glob::describe(description);
    description.role = Role::progress;
    description.name = fromUTF8(name());
    description.value = Qv::WStringFromInteger(static_cast<int>(std::lround(level_))) + L" dB";
    description.number = NumberValue{level_, silence, 0, 0};
}

} // namespace wainscot::gallery
