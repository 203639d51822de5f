#include "foundation/load_toolkit.h"

#include "buttons/register_makers.h"
#include "foundation/makers.h"
#include "foundation/window_keys.h"
#include "host/base/host_value.h"
#include "host/events/event_system.h"
#include "host/windows/glob_manager.h"
#include "menus/register_makers.h"
#include "text/register_makers.h"

namespace wainscot {

namespace {

constinit HostValue<bool> isLoaded;

} // namespace

void loadToolkit() {
    if (!EventSystem::current() || isLoaded.get()) return;
    isLoaded.set(true);
    if (GlobManager* const windows = GlobManager::current()) windows->setUnusedKeyHandler(WindowKeys::handle);
    Buttons::registerMakers(Registry::instance());
    TextBoxes::registerMakers(Registry::instance());
    Menus::registerMakers(Registry::instance());
}

} // namespace wainscot
