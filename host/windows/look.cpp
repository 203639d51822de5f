#include "host/windows/look.h"

#include "host/windows/glob_manager.h"

namespace wainscot {

void Look::broadcast() {
    if (GlobManager* windows = GlobManager::current()) windows->lookChanged();
}

void Look::setTheme(eTheme theme) {
    if (theme == Palette::currentTheme()) return;
    Palette::setCurrentTheme(theme);
    broadcast();
}

void Look::setSize(double scale) {
    double const before = UifStd::getScale();
    UifStd::setScale(scale);
    if (UifStd::getScale() != before) broadcast();
}

void Look::setMetrics(UifStd::Metrics const& metrics) {
    UifStd::setMetrics(metrics);
    broadcast();
}

void Look::setDeviceScale(double scale) {
    if (GlobManager* windows = GlobManager::current()) windows->setDeviceScale(scale);
}

} // namespace wainscot
