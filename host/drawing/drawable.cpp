#include "host/drawing/drawable.h"

#include "host/base/diagnostics.h"
#include "host/drawing/canvas.h"
#include "host/drawing/surface.h"

#include <algorithm>

namespace wainscot {
namespace {

constinit int holds = 0;
constinit Drawable::Painter* installed = nullptr;

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

void Drawable::restoreHoldCount(int count) {
    holds = std::max(0, count);
}

void Drawable::clearPendingRedraws() {
    if (installed) installed->dropPending();
}

void Drawable::update() {
    if (installed && holds == 0 && !PaintPhase::current()) installed->paintPending();
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
