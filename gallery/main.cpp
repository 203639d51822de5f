#include "driver/script.h"
#include "gallery/focus_echo.h"
#include "gallery/gallery_frame.h"
#include "gallery/options.h"
#include "gallery/random_use.h"

#include "host/base/convert.h"
#include "host/start/host.h"
#include "host/windows/glob_manager.h"

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <thread>

namespace wainscot::gallery {

namespace {

constexpr int wrongUse = 2;

int complain(LightweightString<char> const& problem) {
    std::fprintf(stderr, "wainscot-gallery: %s\n", problem.c_str());
    return wrongUse;
}

int answer(LightweightString<char> const& problem) {
    return problem.empty() ? 0 : complain(problem);
}

/// Uses up one core for as long as it lives.
class BusyThread {
public:
    explicit BusyThread(bool wanted) {
        if (wanted)
            thread_ = std::thread([this] {
                while (!ended_) {
                }
            });
    }
    ~BusyThread() {
        ended_ = true;
        if (thread_.joinable()) thread_.join();
    }
    BusyThread(BusyThread const&) = delete;
    BusyThread& operator=(BusyThread const&) = delete;

private:
    std::atomic<bool> ended_ = false;
    std::thread thread_;
};

HostSettings settingsFor(Options const& options) {
    HostSettings settings;
    settings.name = "wainscot-gallery";
    bool const withoutScreen =
        options.offscreen || options.random > 0 || !options.replay.empty() || !options.shots.empty();
    settings.screen = withoutScreen ? HostSettings::Screen::offscreen : HostSettings::Screen::desktop;
    settings.deviceScale = options.scale;
    return settings;
}

GalleryFrame* openFrame(Options const& options, Page const& page) {
    auto frame = std::make_unique<GalleryFrame>(options.size);
    frame->echoLog(options.echo);
    frame->show(page);
    return GlobManager::instance().realize(frame.get()) ? frame.release() : nullptr;
}

int listPages() {
    for (Page const* const page : pages()) std::printf("%s\n", page->name);
    return 0;
}

/// Opens the page without the list of pages and the log.
Glob* openBare(Options const& options, Page const& page) {
    std::unique_ptr<Glob> root = page.make(options.size, [](LightweightString<wchar_t> const&) {});
    return GlobManager::instance().realize(root.get()) ? root.release() : nullptr;
}

/// Each page in a window of its own, so that none shows what another left behind.
int writeShots(Host& host, Options const& options, LightweightString<char> const& folder) {
    std::error_code failure;
    std::filesystem::create_directories(folder.c_str(), failure);
    if (failure) return complain(LightweightString<char>("the folder \"") + folder + "\" cannot be made");
    for (Page const* const page : pages()) {
        if (!options.page.empty() && options.page != page->name) continue;
        Glob* const frame = options.bare ? openBare(options, *page) : openFrame(options, *page);
        if (!frame) return complain("the window system refuses a window");
        Driver driver(host);
        LightweightString<char> const path = folder + "/" + page->name + ".png";
        LightweightString<char> const problem = driver.snapshot(frame, path);
        if (!problem.empty()) return complain(problem);
        std::printf("%s\n", path.c_str());
        destroy(frame);
    }
    return 0;
}

int runScript(Host& host, Options const& options, GalleryFrame& frame) {
    Driver driver(host);
    driver.settle();
    auto const print = [](LightweightString<char> const& text) { std::fputs(text.c_str(), stdout); };
    auto const messages = [&frame, life = frame.guard()] {
        return life.alive() ? frame.log().text() : LightweightString<char>();
    };
    Script script(driver, print, messages);
    LightweightString<char> const problem = script.runFile(options.script);
    return problem.empty() ? 0 : complain(options.script + ": " + problem);
}

/// Without a screen, pictures of the pages are the next best.
int showWithoutScreen(Host& host, Options const& options) {
    LightweightString<char> const folder = "gallery-pages";
    std::printf("No display can be used (%s): start the gallery in a desktop session, or set DISPLAY. "
                "Its pages are written as pictures instead:\n",
                host.problem().c_str());
    return writeShots(host, options, folder);
}

int run(int argc, char** argv, Options const& options) {
    if (options.scaleGiven) setenv("WAINSCOT_DEVICE_SCALE", StringFromFloat(options.scale).c_str(), 1);
    Host host(argc, argv, settingsFor(options));
    if (!options.shots.empty()) return writeShots(host, options, options.shots);
    if (options.random > 0) return answer(useAtRandom(host, options));
    if (!options.replay.empty()) return answer(replay(host, options));
    if (!host.problem().empty()) return showWithoutScreen(host, options);
    GalleryFrame* const frame =
        openFrame(options, *(options.page.empty() ? pages().front() : findPage(options.page)));
    if (!frame) return complain("the window system refuses a window");
    BusyThread const busy(options.busy);
    std::optional<FocusEcho> focus;
    if (options.focus) focus.emplace(*frame);
    return options.script.empty() ? host.run() : runScript(host, options, *frame);
}

} // namespace

} // namespace wainscot::gallery

int main(int argc, char** argv) {
    using namespace wainscot;
    using namespace wainscot::gallery;
    Options options;
    LightweightString<char> const problem = parseOptions({argv + 1, argv + argc}, options);
    if (!problem.empty()) return complain(problem);
    if (options.help) {
        std::fputs(Options::usage(), stdout);
        return 0;
    }
    if (options.list) return listPages();
    if (!options.shorten.empty()) return answer(shortenFile(argv[0], options));
    if (!options.replay.empty()) {
        LightweightString<char> const fault = takeOptions(options);
        if (!fault.empty()) return complain(fault);
    }
    if (options.light) Palette::setCurrentTheme(eThemeLight);
    return gallery::run(argc, argv, options);
}
