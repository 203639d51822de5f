#include "host/objects/root_host.h"

namespace wainscot {

namespace {
constinit iRootHost* installedHost = nullptr;
}

iRootHost::~iRootHost() = default;

iRootHost* iRootHost::current() {
    return installedHost;
}

void iRootHost::install(iRootHost* host) {
    installedHost = host;
}

} // namespace wainscot
