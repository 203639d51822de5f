#include "host/drawing/drawable.h"

#include "host/base/diagnostics.h"
#include "host/drawing/canvas.h"
#include "host/drawing/surface.h"

#include <algorithm>
#include <map>

namespace wainscot {
namespace {

constinit int holds = 0;
constinit Drawable::Painter* installed = nullptr;

/// By their numbers. Lives for ever, as its entries may.
std::map<std::uint64_t, LightweightString<char>>& lasting() {
    static auto& known = *new std::map<std::uint64_t, LightweightString<char>>;
    return known;
}
constinit std::uint64_t lastHold = 0;

} // namespace

Drawable::Painter::~Painter() = default;

void Drawable::disableRedraws() {
    ++holds;
}

void Drawable::enableRedraws() {
    if (holds == 0) {
        Diagnostics::count("redraw hold", "enableRedraws without a hold");
        return;
    }
    --holds;
}

int Drawable::holdCount() {
    return holds;
}

bool Drawable::isHeld() {
    return holds > 0 || !lasting().empty();
}

std::vector<LightweightString<char>> Drawable::lastingHolds() {
    std::vector<LightweightString<char>> purposes;
    for (auto const& [number, purpose] : lasting()) purposes.push_back(purpose);
    return purposes;
}

LastingRedrawHold::LastingRedrawHold(LightweightString<char> purpose) : number_(++lastHold) {
    lasting().emplace(number_, std::move(purpose));
}

LastingRedrawHold::~LastingRedrawHold() {
    lasting().erase(number_);
}

void Drawable::restoreHoldCount(int count) {
    holds = std::max(0, count);
}

void Drawable::clearPendingRedraws() {
    if (installed) installed->dropPending();
}

void Drawable::update() {
    if (installed && !isHeld() && !PaintPhase::current()) installed->paintPending();
}

void Drawable::setPainter(Painter* painter) {
    installed = painter;
}

void refresh_off() {
    Drawable::disableRedraws();
}

void refresh_on() {
    Drawable::enableRedraws();
}

namespace Glib {

UpdateDeferrer::UpdateDeferrer(Canvas* canvas) {
    if (!canvas) return;
    surface_ = canvas->place().surface;
    if (!surface_) return;
    guard_ = LifeGuard(surface_->life());
    surface_->holdPainting();
}

UpdateDeferrer::~UpdateDeferrer() {
    if (surface_ && guard_.alive()) surface_->releasePainting();
}

} // namespace Glib
} // namespace wainscot
