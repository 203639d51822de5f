#pragma once

#include "host/drawing/canvas_renderer.h"
#include "host/drawing/palette.h"
#include "look/control_state.h"

/// What is dragged along something: scroll bars and sliders.
namespace wainscot::ControlLook {

/// The ground on which a thumb lies.
WAINSCOT_API Colour laneColour(Palette const& palette);
WAINSCOT_API void drawLane(CanvasRenderer& renderer, IntBox const& lane, Palette const& palette);

/// A thumb with round ends in its lane. It is drawn slimmer than `box`, in which it can be held.
struct Thumb {
    IntBox box;
    /// Null = the usual one, 3:1 against the lane.
    Colour const* colour = nullptr;
    ControlState state;
    bool isUpright = false;
    /// Lines across both ends, where it can be taken by them.
    bool hasGrips = false;
};
WAINSCOT_API void drawThumb(CanvasRenderer& renderer, Thumb const& thumb, Palette const& palette);

/// How thick the channel of a slider is.
WAINSCOT_API int channelThickness();
/// The channel of a slider, filled with the accent in the part `filled`.
WAINSCOT_API void drawChannel(CanvasRenderer& renderer, IntBox const& channel, IntBox const& filled,
                              ControlState const& state, Palette const& palette);
/// What is held of a slider; its edge has the colour of the ground, so that it stands out from every filling.
/// A colour of null = the usual one.
WAINSCOT_API void drawKnob(CanvasRenderer& renderer, IntBox const& box, Colour const* colour,
                           ControlState const& state, Palette const& palette);

} // namespace wainscot::ControlLook
