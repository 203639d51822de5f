#include "host/backends/desktop/desktop_module.h"

#include "host/backends/desktop/desktop_backend_p.h"
#include "host/base/export.h"

extern "C" WAINSCOT_API wainscot::Backend*
wainscotCreateDesktopBackend(wainscot::LightweightString<char>& problem);

wainscot::Backend* wainscotCreateDesktopBackend(wainscot::LightweightString<char>& problem) {
    return wainscot::DesktopBackend::open(problem).release();
}
