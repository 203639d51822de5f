#pragma once

#include "host/drawing/canvas_renderer.h"
#include "host/drawing/palette.h"

namespace wainscot {

/// How faces that can be pressed look, in one place for all buttons.
namespace ButtonLook {

struct Face {
    IntBox box;
    /// The colour of the face at rest.
    Colour colour;
    bool isDown = false;
    bool isHovered = false;
    bool isActive = true;
    /// The edge, where it is not to be derived from the face.
    Colour const* edge = nullptr;
    /// While it is down: the colour is that of this state, and drawn as it is.
    bool isDownColour = false;
};

/// Whether faces have round corners and a light from above, or are square and flat.
WAINSCOT_API bool isCurved();
/// Reads the choice of the user ("curved_buttons") anew.
WAINSCOT_API void readPreferences();

/// The colour in which a face shows its state.
WAINSCOT_API Colour faceColour(Face const& face, Palette const& palette);
/// The usual colour of the face of a thumb, which is to stand out from its track.
WAINSCOT_API Colour thumbColour(Palette const& palette);
WAINSCOT_API void drawFace(CanvasRenderer& renderer, Face const& face, Palette const& palette);
WAINSCOT_API void drawEdge(CanvasRenderer& renderer, Face const& face, Palette const& palette);
/// The mark of a face that stays down until it is pressed again.
WAINSCOT_API void drawLatchMark(CanvasRenderer& renderer, Face const& face, Palette const& palette);

} // namespace ButtonLook
} // namespace wainscot
