#include "host/start/desktop_loader_p.h"

#include "host/backends/desktop/desktop_module.h"

#include <dlfcn.h>

#include <string>

namespace wainscot {

namespace {

constexpr char const* moduleName = "libwainscot-desktop.so";

/// The folder of the library that holds this code, with a slash; empty when it cannot be told.
std::string ownFolder() {
    Dl_info info{};
    if (dladdr(reinterpret_cast<void const*>(&loadDesktopBackend), &info) == 0 || !info.dli_fname) return {};
    std::string const path = info.dli_fname;
    return path.substr(0, path.rfind('/') + 1);
}

void* openModule() {
    std::string const own = ownFolder();
    for (std::string const& folder : {own, own + "wainscot/"})
        if (void* module = dlopen((folder + moduleName).c_str(), RTLD_NOW | RTLD_LOCAL)) return module;
    return nullptr;
}

} // namespace

std::unique_ptr<Backend> loadDesktopBackend(LightweightString<char>& problem) {
    // The module stays open: libraries below it keep state that does not survive being unloaded.
    void* const module = openModule();
    if (!module) {
        char const* const reason = dlerror();
        problem =
            LightweightString<char>("the desktop module cannot be opened: ") + (reason ? reason : moduleName);
        return nullptr;
    }
    auto const create = reinterpret_cast<CreateDesktopBackend>(dlsym(module, createDesktopBackendName));
    if (!create) {
        problem = "the desktop module is not usable";
        return nullptr;
    }
    return std::unique_ptr<Backend>(create(problem));
}

} // namespace wainscot
