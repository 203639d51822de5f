#include "host/objects/description_listener.h"

namespace wainscot {

namespace {
constinit DescriptionListener* installedListener = nullptr;
}

DescriptionListener::~DescriptionListener() = default;

DescriptionListener* DescriptionListener::current() {
    return installedListener;
}

void DescriptionListener::install(DescriptionListener* listener) {
    installedListener = listener;
}

} // namespace wainscot
