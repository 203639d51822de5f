#include "look/track.h"

#include "host/drawing/shapes.h"
#include "host/drawing/uif_std.h"
#include "look/face.h"
#include "look/ink.h"

#include <algorithm>

namespace wainscot::ControlLook {

namespace {

/// What a lane on a light ground has of black; on a dark one it is a recessed ground.
constexpr double laneShade = 0.08;
/// A thumb is slimmer than the box in which it can be held by this share on each side.
constexpr int slimShare = 5;
/// What the filling of a channel has of the accent as an ink; the rest is the accent as a face.
constexpr double fillShare = 0.5;
/// What a thumb that answers has of the other colour.
constexpr double hoverShare = 0.4;
constexpr double pressShare = 0.8;
/// The lines at each end of a thumb, and how far inside they are; shorter thumbs have none.
constexpr int gripLines = 2;
constexpr int gripInset = 4;
constexpr int leastGripped = 24;

unsigned int roundEnds(IntBox const& box) {
    return isCurved() ? static_cast<unsigned>(std::max(0, std::min(box.width(), box.height()) / 2)) : 0;
}

Colour answering(Colour const& colour, ControlState const& state, Palette const& palette) {
    double const share = state.isPressed ? pressShare : state.isHovered ? hoverShare : 0.0;
    // What has the colour of marks already answers with the accent.
    Colour const& marks = palette.mark(eMarkNormal);
    Colour const& other = colour == marks ? palette.mark(eMarkAccent) : marks;
    return share > 0.0 ? Colour::mix(other, colour, share) : colour;
}

Colour colourOf(Thumb const& thumb, Palette const& palette) {
    Colour const& own = thumb.colour ? *thumb.colour : palette.mark(eMarkEdge);
    if (!thumb.state.isActive) return weakened(own, laneColour(palette));
    return answering(own, thumb.state, palette);
}

void drawGrips(CanvasRenderer& renderer, IntBox const& thumb, bool isUpright, Palette const& palette) {
    int const across = isUpright ? thumb.width() : thumb.height();
    int const along = isUpright ? thumb.height() : thumb.width();
    if (along >= leastGripped)
        Glib::drawGripLines(renderer, laneColour(palette), thumb, isUpright, gripInset, across / 4,
                            gripLines);
}

} // namespace

Colour laneColour(Palette const& palette) {
    Colour const& ground = palette.window(eWindowNormal);
    return isDark(ground) ? palette.window(eWindowRecessed) : Colour::mix(Colour(), ground, laneShade);
}

void drawLane(CanvasRenderer& renderer, IntBox const& lane, Palette const& palette) {
    Glib::drawRoundedRectFilled(renderer, laneColour(palette), lane, roundEnds(lane));
}

void drawThumb(CanvasRenderer& renderer, Thumb const& thumb, Palette const& palette) {
    int const slimmer = std::min(thumb.box.width(), thumb.box.height()) / slimShare;
    IntBox const box = thumb.box.inset(slimmer);
    Glib::drawRoundedRectFilled(renderer, colourOf(thumb, palette), thumb.box, roundEnds(box), 1.0, slimmer);
    if (thumb.hasGrips) drawGrips(renderer, box, thumb.isUpright, palette);
}

int channelThickness() {
    return UifStd::getIndentWidth();
}

void drawChannel(CanvasRenderer& renderer, IntBox const& channel, IntBox const& filled,
                 ControlState const& state, Palette const& palette) {
    Colour const& ground = palette.window(eWindowNormal);
    Colour const line = weakened(palette.mark(eMarkEdge), ground);
    unsigned int const radius = roundEnds(channel);
    Glib::drawRoundedRectFilled(renderer, state.isActive ? line : weakened(line, ground), channel, radius);
    if (filled.isEmpty()) return;
    Colour const accent =
        state.isActive ? Colour::mix(palette.mark(eMarkAccent), palette.doIt(), fillShare) : line;
    Glib::drawRoundedRectFilled(renderer, accent, filled, radius);
}

void drawKnob(CanvasRenderer& renderer, IntBox const& box, Colour const* colour, ControlState const& state,
              Palette const& palette) {
    Colour const& ground = palette.window(eWindowNormal);
    Colour const own = colour ? *colour : palette.mark(eMarkNormal);
    Colour const fill = state.isActive ? answering(own, state, palette) : weakened(own, ground);
    Glib::drawRoundedRect(renderer, fill, ground, box, 1, cornerRadius());
}

} // namespace wainscot::ControlLook
