#include "host/objects/description_listener.h"

#include "host/base/host_value.h"

namespace wainscot {

namespace {
constinit HostValue<DescriptionListener*> installedListener;
}

DescriptionListener::~DescriptionListener() = default;

DescriptionListener* DescriptionListener::current() {
    return installedListener.get();
}

void DescriptionListener::install(DescriptionListener* listener) {
    installedListener.set(listener);
}

} // namespace wainscot
