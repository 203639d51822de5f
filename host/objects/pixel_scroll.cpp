#include "host/objects/pixel_scroll.h"

#include "host/drawing/surface.h"
#include "host/objects/tree.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>

namespace wainscot {

namespace {

constexpr double wholePixel = 1e-9;

bool isWhole(double distance) {
    return std::abs(distance - std::round(distance)) < wholePixel;
}

bool isSeenIn(Glob const& glob) {
    return glob.isVisible() && !glob.isHidden();
}

/// Whether a child of `parent` that lies above `from` (null = any) is seen in an area.
bool isCovered(Glob& parent, Glob const* from, IntBox const& area) {
    std::vector<Glob*> meeting;
    Tree::childrenMeeting(parent, area, meeting);
    auto const own = std::ranges::find(meeting, from);
    auto const first = !from ? meeting.begin() : own == meeting.end() ? own : own + 1;
    return std::any_of(first, meeting.end(), [](Glob* child) { return isSeenIn(*child); });
}

/// Rows are copied from that end from which none is overwritten before it is read.
void movePixels(Surface& surface, IntBox const& to, XY<int> by) {
    std::uint32_t* const pixels = surface.pixels();
    auto const stride = static_cast<std::ptrdiff_t>(surface.stride());
    auto const length = static_cast<std::size_t>(to.width()) * sizeof(std::uint32_t);
    for (int i = 0; i < to.height(); ++i) {
        int const row = by.y > 0 ? to.y2 - 1 - i : to.y1 + i;
        std::uint32_t* const target = pixels + row * stride + to.x1;
        std::memmove(target, target - by.y * stride - by.x, length);
    }
}

} // namespace

bool scrollPixels(Glob& glob, IntBox const& area, XY<int> by) {
    Glob* const root = Glob::getRootParent(&glob);
    Surface* const surface = root->canvas()->surface();
    if (!surface || !glob.isShown() || surface->isPaintingHeld() || surface->isMarked()) return false;
    IntBox shown = area.intersection(glob.bounds());
    if (isCovered(glob, nullptr, shown)) return false;
    for (Glob* part = &glob; part; part = part->parent()) {
        if (part->opacity() < 1) return false;
        if (!part->parent()) break;
        shown = shown.translated(part->box().bottomLeft()).intersection(part->parent()->bounds());
        if (isCovered(*part->parent(), part, shown)) return false;
    }
    if (std::abs(by.x) >= shown.width() || std::abs(by.y) >= shown.height()) return false;
    IntBox const onSurface = shown.translated(surface->contentPlace());
    double const scale = surface->scale();
    if (!isWhole(by.x * scale) || !isWhole(by.y * scale) || surface->toPaint().intersects(onSurface))
        return false;
    // Device pixels count downwards.
    XY<int> const way{static_cast<int>(std::lround(by.x * scale)),
                      -static_cast<int>(std::lround(by.y * scale))};
    IntBox const device = surface->deviceBox(onSurface);
    IntBox const to = device.translated(way).intersection(device);
    movePixels(*surface, to, way);
    surface->toPresent().add(onSurface);
    // What has come into sight: beside, above or below what was moved.
    IntBox const seen =
        shown.translated(XY<int>() - glob.screenBox().bottomLeft() + root->screenBox().bottomLeft());
    if (by.x > 0) glob.damage({seen.x1, seen.y1, seen.x1 + by.x, seen.y2});
    if (by.x < 0) glob.damage({seen.x2 + by.x, seen.y1, seen.x2, seen.y2});
    if (by.y > 0) glob.damage({seen.x1, seen.y1, seen.x2, seen.y1 + by.y});
    if (by.y < 0) glob.damage({seen.x1, seen.y2 + by.y, seen.x2, seen.y2});
    return true;
}

} // namespace wainscot
