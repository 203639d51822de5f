#pragma once

#include "host/drawing/canvas_renderer.h"
#include "host/drawing/palette.h"
#include "look/control_state.h"

/// How faces that can be pressed look, in one place for all controls.
namespace wainscot::ControlLook {

struct Face {
    IntBox box;
    /// The colour of the face at rest.
    Colour colour;
    ControlState state;
    /// The edge, where it is not to be derived from the face.
    Colour const* edge = nullptr;
    /// The colour is that of this very state, and drawn as it is.
    bool isColourOfState = false;
};

/// Whether corners are round, or everything is square and flat.
WAINSCOT_API bool isCurved();
/// Reads the choice of the user ("curved_buttons") anew.
WAINSCOT_API void readPreferences();
/// The radius of the corners of faces; 0 where the user wants them square.
WAINSCOT_API unsigned int cornerRadius();

/// The colour in which a face shows its state.
WAINSCOT_API Colour faceColour(Face const& face, Palette const& palette);
/// The edge round it: while it can be used, at least 3:1 against the palette's window.
WAINSCOT_API Colour edgeColour(Face const& face, Palette const& palette);
/// Face and mark of the chosen; without the edge.
WAINSCOT_API void drawFace(CanvasRenderer& renderer, Face const& face, Palette const& palette);
WAINSCOT_API void drawEdge(CanvasRenderer& renderer, Face const& face, Palette const& palette);

} // namespace wainscot::ControlLook
