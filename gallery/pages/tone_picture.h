#pragma once

#include "host/drawing/canvas_renderer.h"
#include "host/objects/glob.h"

#include <array>

namespace wainscot::gallery {

/// What a colour correction does: its curves, and a ramp of tones that has gone through them.
class TonePicture final : public Glob {
public:
    enum Channel : std::size_t { red, green, blue, all };
    static constexpr std::size_t numChannels = 4;
    static constexpr std::size_t numTones = 10;

    TonePicture();

    /// How much a channel is raised at a tone, from -1 to 1.
    void setOffset(std::size_t channel, std::size_t tone, double offset);
    Colour colourOf(std::size_t channel) const;

    SizeNeeds sizeNeeds() const override;
    void draw() override;
    void describe(GlobDescription& description) const override;

private:
    /// The output of a channel at an input from 0 to 1.
    double outputAt(std::size_t channel, double input) const;
    void drawCurve(CanvasRenderer& renderer, IntBox const& area, std::size_t channel) const;
    void drawRamp(CanvasRenderer& renderer, IntBox const& area) const;

    std::array<std::array<double, numTones>, numChannels> offsets_{};
};

} // namespace wainscot::gallery
