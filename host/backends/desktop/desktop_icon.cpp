#include "host/backends/desktop/desktop_icon_p.h"

#include <SDL_surface.h>
#include <SDL_video.h>

#include <cstdint>
#include <cstdlib>
#include <vector>

namespace wainscot {

namespace {

constexpr int side = 48;
constexpr std::uint32_t frameColour = 0xFF8A5A2B;
constexpr std::uint32_t panelColour = 0xFFD9A566;
constexpr std::uint32_t edgeColour = 0xFF4A2E14;

/// Two panels in a frame.
std::uint32_t colourAt(int x, int y) {
    constexpr int edge = 2, frame = 8, middle = side / 2;
    bool const onEdge = x < edge || y < edge || x >= side - edge || y >= side - edge;
    bool const onCorner = (x < edge || x >= side - edge) && (y < edge || y >= side - edge);
    if (onCorner) return 0;
    if (onEdge) return edgeColour;
    bool const onFrame = x < frame || y < frame || x >= side - frame || y >= side - frame ||
                         std::abs(2 * x + 1 - 2 * middle) < frame;
    return onFrame ? frameColour : panelColour;
}

} // namespace

void setWindowIcon(SDL_Window* window) {
    std::vector<std::uint32_t> pixels;
    for (int i = 0; i < side * side; ++i) pixels.push_back(colourAt(i % side, i / side));
    SDL_Surface* const icon =
        SDL_CreateRGBSurfaceWithFormatFrom(pixels.data(), side, side, 32, side * 4, SDL_PIXELFORMAT_ARGB8888);
    if (!icon) return;
    SDL_SetWindowIcon(window, icon);
    SDL_FreeSurface(icon);
}

} // namespace wainscot
