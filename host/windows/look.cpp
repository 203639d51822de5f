#include "host/windows/look.h"

#include "host/windows/glob_manager.h"

namespace wainscot {

void Look::broadcast(LookChange changes) {
    if (GlobManager* windows = GlobManager::current()) windows->lookChanged(changes);
}

void Look::setTheme(eTheme theme) {
    if (theme == Palette::currentTheme()) return;
    Palette::setCurrentTheme(theme);
    broadcast(LookChange::theme);
}

void Look::setSize(double scale) {
    double const before = UifStd::getScale();
    UifStd::setScale(scale);
    if (UifStd::getScale() != before) broadcast(LookChange::textSize);
}

void Look::setMetrics(UifStd::Metrics const& metrics) {
    UifStd::setMetrics(metrics);
    broadcast(LookChange::metrics);
}

void Look::setDeviceScale(double scale) {
    if (GlobManager* windows = GlobManager::current()) windows->setDeviceScale(scale);
}

double Look::deviceScale() {
    GlobManager const* const windows = GlobManager::current();
    return windows ? windows->deviceScale() : 1.0;
}

} // namespace wainscot
