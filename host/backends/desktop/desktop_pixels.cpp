#include "host/backends/desktop/desktop_pixels_p.h"

#include <cstring>

namespace wainscot {

namespace {

/// Whether pixels can be copied as they are: four bytes, with the colours in the same order. The fourth byte
/// does not matter in an opaque window.
bool hasOurFormat(SDL_PixelFormat const& format) {
    return format.BytesPerPixel == 4 && format.Rmask == 0x00FF0000 && format.Gmask == 0x0000FF00 &&
           format.Bmask == 0x000000FF;
}

char* pixelOf(SDL_Surface& target, int x, int y) {
    return static_cast<char*>(target.pixels) + static_cast<std::ptrdiff_t>(y) * target.pitch +
           static_cast<std::ptrdiff_t>(x) * target.format->BytesPerPixel;
}

void copyRows(Surface const& surface, SDL_Rect const& rect, SDL_Surface& target) {
    auto const width = static_cast<std::size_t>(rect.w);
    for (int y = rect.y; y < rect.y + rect.h; ++y) {
        auto const* from = surface.pixels() + static_cast<std::ptrdiff_t>(y) * surface.stride() + rect.x;
        std::memcpy(pixelOf(target, rect.x, y), from, width * sizeof(std::uint32_t));
    }
}

void convertRows(Surface const& surface, SDL_Rect const& rect, SDL_Surface& target) {
    auto const* from = surface.pixels() + static_cast<std::ptrdiff_t>(rect.y) * surface.stride() + rect.x;
    SDL_ConvertPixels(rect.w, rect.h, SDL_PIXELFORMAT_ARGB8888, from, surface.stride() * 4,
                      target.format->format, pixelOf(target, rect.x, rect.y), target.pitch);
}

/// Repeats the last column of the rectangle beside it, which makes it wider.
void continueToTheRight(SDL_Rect& rect, int columns, SDL_Surface& target) {
    std::size_t const bytes = target.format->BytesPerPixel;
    for (int y = rect.y; y < rect.y + rect.h; ++y)
        for (int x = rect.x + rect.w; x < rect.x + rect.w + columns; ++x)
            std::memcpy(pixelOf(target, x, y), pixelOf(target, rect.x + rect.w - 1, y), bytes);
    rect.w += columns;
}

/// Repeats the last row of the rectangle below it, which makes it taller.
void continueDown(SDL_Rect& rect, int rows, SDL_Surface& target) {
    std::size_t const bytes = static_cast<std::size_t>(rect.w) * target.format->BytesPerPixel;
    for (int y = rect.y + rect.h; y < rect.y + rect.h + rows; ++y)
        std::memcpy(pixelOf(target, rect.x, y), pixelOf(target, rect.x, rect.y + rect.h - 1), bytes);
    rect.h += rows;
}

/// At some scales no logical size gives the window's device size, which is then a pixel larger: the surface's
/// edge is repeated, so that no seam shows. A larger difference comes from a window that has grown and will
/// be painted again.
void continueEdges(Surface const& surface, SDL_Rect& rect, SDL_Surface& target) {
    XY<int> const missing = XY<int>{target.w, target.h} - surface.deviceSize();
    int const most = static_cast<int>(surface.scale());
    if (missing.x > 0 && missing.x <= most && rect.x + rect.w == surface.deviceSize().x)
        continueToTheRight(rect, missing.x, target);
    if (missing.y > 0 && missing.y <= most && rect.y + rect.h == surface.deviceSize().y)
        continueDown(rect, missing.y, target);
}

} // namespace

void copyBoxes(Surface const& surface, std::vector<IntBox> const& boxes, SDL_Surface& target,
               std::vector<SDL_Rect>& changed) {
    if (SDL_LockSurface(&target) != 0) return;
    IntBox const common = IntBox(0, 0, target.w, target.h).intersection({{0, 0}, surface.deviceSize()});
    for (IntBox const& box : boxes) {
        IntBox const part = surface.deviceBox(box).intersection(common);
        if (part.isEmpty()) continue;
        SDL_Rect rect{part.x1, part.y1, part.width(), part.height()};
        if (hasOurFormat(*target.format))
            copyRows(surface, rect, target);
        else
            convertRows(surface, rect, target);
        continueEdges(surface, rect, target);
        changed.push_back(rect);
    }
    SDL_UnlockSurface(&target);
}

} // namespace wainscot
