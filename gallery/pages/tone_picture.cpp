#include "gallery/pages/tone_picture.h"

#include "host/drawing/uif_std.h"
#include "host/objects/description.h"
#include "look/ink.h"

#include <algorithm>
#include <cmath>

namespace wainscot::gallery {

namespace {

constexpr int numSteps = 64;
constexpr int heightInButtons = 9;
constexpr int rampInButtons = 2;
constexpr double rampShare = 1.0 / 3;
constexpr Colour channelColours[] = {{0.95, 0.3, 0.3}, {0.3, 0.8, 0.35}, {0.35, 0.55, 1}};

} // namespace

TonePicture::TonePicture() : Glob(1, 1) {
    setName("picture");
}

Colour TonePicture::colourOf(std::size_t channel) const {
    Palette const& palette = getPalette();
    if (channel == all) return palette.text(eTextEnabled);
    return ControlLook::inkOn(channelColours[channel], palette.window(eWindowRecessed));
}

void TonePicture::setOffset(std::size_t channel, std::size_t tone, double offset) {
    if (std::exchange(offsets_[channel][tone], offset) != offset) makeDirty();
}

double TonePicture::outputAt(std::size_t channel, double input) const {
    double const place = input * (numTones - 1);
    auto const tone = std::min(static_cast<std::size_t>(place), numTones - 2);
    double const share = place - static_cast<double>(tone);
    auto const offsetOf = [&](std::size_t which) {
        auto const& offsets = offsets_[which];
        return std::lerp(offsets[tone], offsets[tone + 1], share);
    };
    double const offset = offsetOf(all) + (channel == all ? 0 : offsetOf(channel));
    return std::clamp(input + offset, 0.0, 1.0);
}

SizeNeeds TonePicture::sizeNeeds() const {
    int const button = UifStd::getButtonHeight();
    SizeNeeds needs;
    needs.natural = {-1, heightInButtons * button};
    needs.minimum = {4 * button, heightInButtons * button};
    return needs;
}

void TonePicture::draw() {
    CanvasRenderer renderer(canvas(), canvasArea());
    IntBox const box = canvasArea();
    renderer.renderPrimitive(Glib::RectDescription(box, getPalette().window(eWindowRecessed)));
    int const ramp = std::min(rampInButtons * UifStd::getButtonHeight(), box.height());
    drawRamp(renderer, {box.x1, box.y1, box.x2, box.y1 + ramp});
    for (std::size_t channel = 0; channel < numChannels; ++channel)
        drawCurve(renderer, IntBox(box.x1, box.y1 + ramp, box.x2, box.y2).inset(UifStd::getBorder()),
                  channel);
}

void TonePicture::drawCurve(CanvasRenderer& renderer, IntBox const& area, std::size_t channel) const {
    auto const pointAt = [&](int step) {
        double const input = static_cast<double>(step) / numSteps;
        double const output = outputAt(channel, input);
        return XY<int>{area.x1 + static_cast<int>(std::lround(input * (area.width() - 1))),
                       area.y1 + static_cast<int>(std::lround(output * (area.height() - 1)))};
    };
    Colour const ink = colourOf(channel);
    for (int step = 0; step < numSteps; ++step)
        renderer.renderPrimitive(Glib::LineDescription(pointAt(step), pointAt(step + 1), ink));
}

/// Grey tones, and below them skin and sky.
void TonePicture::drawRamp(CanvasRenderer& renderer, IntBox const& area) const {
    constexpr Colour tints[] = {{0.55, 0.75, 1}, {1, 0.78, 0.66}, {1, 1, 1}};
    auto const edge = [](int from, int length, double share) {
        return from + static_cast<int>(std::lround(length * share));
    };
    for (int row = 0; row < 3; ++row) {
        for (int step = 0; step < numSteps; ++step) {
            double const input = (step + 0.5) / numSteps;
            Colour const& tint = tints[row];
            Colour const shown(outputAt(red, input * tint.red()), outputAt(green, input * tint.green()),
                               outputAt(blue, input * tint.blue()));
            IntBox const cell{edge(area.x1, area.width(), static_cast<double>(step) / numSteps),
                              edge(area.y1, area.height(), row * rampShare),
                              edge(area.x1, area.width(), (step + 1.0) / numSteps),
                              edge(area.y1, area.height(), (row + 1) * rampShare)};
            renderer.renderPrimitive(Glib::RectDescription(cell, shown));
        }
    }
}

void TonePicture::describe(GlobDescription& description) const {
    Glob::describe(description);
    description.role = Role::image;
}

} // namespace wainscot::gallery
