#include "host/backends/desktop/desktop_pixels_p.h"

#include <cstring>

namespace wainscot {

namespace {

/// The window's pixels can be copied as they are: four bytes with the colours where ours are. What the fourth
/// byte holds does not matter to an opaque window.
bool hasOurFormat(SDL_PixelFormat const& format) {
    return format.BytesPerPixel == 4 && format.Rmask == 0x00FF0000 && format.Gmask == 0x0000FF00 &&
           format.Bmask == 0x000000FF;
}

void copyRows(Surface const& surface, SDL_Rect const& rect, SDL_Surface& target) {
    auto const width = static_cast<std::size_t>(rect.w);
    for (int y = rect.y; y < rect.y + rect.h; ++y) {
        auto const* from = surface.pixels() + static_cast<std::ptrdiff_t>(y) * surface.stride() + rect.x;
        auto* to = static_cast<char*>(target.pixels) + static_cast<std::ptrdiff_t>(y) * target.pitch +
                   static_cast<std::ptrdiff_t>(rect.x) * 4;
        std::memcpy(to, from, width * sizeof(std::uint32_t));
    }
}

void convertRows(Surface const& surface, SDL_Rect const& rect, SDL_Surface& target) {
    auto const* from = surface.pixels() + static_cast<std::ptrdiff_t>(rect.y) * surface.stride() + rect.x;
    auto* to = static_cast<char*>(target.pixels) + static_cast<std::ptrdiff_t>(rect.y) * target.pitch +
               static_cast<std::ptrdiff_t>(rect.x) * target.format->BytesPerPixel;
    SDL_ConvertPixels(rect.w, rect.h, SDL_PIXELFORMAT_ARGB8888, from, surface.stride() * 4,
                      target.format->format, to, target.pitch);
}

/// At some scales no logical size gives the window's device size, which is then a pixel larger; the surface's
/// edge is continued, so that no seam shows. More than that is a window that has grown and will be painted
/// anew.
void continueEdges(Surface const& surface, SDL_Rect& rect, SDL_Surface& target) {
    int const missingColumns = target.w - surface.deviceSize().x;
    int const missingRows = target.h - surface.deviceSize().y;
    int const most = static_cast<int>(surface.scale());
    int const bytes = target.format->BytesPerPixel;
    auto* const pixels = static_cast<char*>(target.pixels);
    if (missingColumns > 0 && missingColumns <= most && rect.x + rect.w == surface.deviceSize().x) {
        for (int y = rect.y; y < rect.y + rect.h; ++y) {
            char* const edge = pixels + static_cast<std::ptrdiff_t>(y) * target.pitch +
                               static_cast<std::ptrdiff_t>(rect.x + rect.w - 1) * bytes;
            for (int i = 1; i <= missingColumns; ++i)
                std::memcpy(edge + static_cast<std::ptrdiff_t>(i) * bytes, edge,
                            static_cast<std::size_t>(bytes));
        }
        rect.w += missingColumns;
    }
    if (missingRows > 0 && missingRows <= most && rect.y + rect.h == surface.deviceSize().y) {
        char* const edge = pixels + static_cast<std::ptrdiff_t>(rect.y + rect.h - 1) * target.pitch +
                           static_cast<std::ptrdiff_t>(rect.x) * bytes;
        for (int i = 1; i <= missingRows; ++i)
            std::memcpy(edge + static_cast<std::ptrdiff_t>(i) * target.pitch, edge,
                        static_cast<std::size_t>(rect.w * bytes));
        rect.h += missingRows;
    }
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
