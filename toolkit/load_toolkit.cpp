#include "foundation/load_toolkit.h"

#include "buttons/register_makers.h"
#include "foundation/makers.h"
#include "foundation/window_keys.h"
#include "host/events/event_system.h"
#include "host/windows/glob_manager.h"

namespace wainscot {

namespace {

constinit std::uint64_t loadedFor = 0;

} // namespace

void loadToolkit() {
    EventSystem const* const system = EventSystem::current();
    if (!system || system->number() == loadedFor) return;
    loadedFor = system->number();
    if (GlobManager* const windows = GlobManager::current()) windows->setUnusedKeyHandler(WindowKeys::handle);
    Buttons::registerMakers(Registry::instance());
}

} // namespace wainscot
