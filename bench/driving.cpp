#include "bench/driving.h"

#include "buttons/button.h"
#include "host/backends/offscreen/offscreen_backend.h"
#include "host/drawing/surface.h"
#include "host/windows/event_loop.h"
#include "host/windows/glob_manager.h"
#include "host/windows/top_level_window.h"

#include <cstdio>
#include <cstring>
#include <sys/wait.h>
#include <unistd.h>

namespace wainscot::Measuring {

namespace {

constexpr IntBox hugeMonitor(0, 0, Surface::maxDeviceExtent, Surface::maxDeviceExtent);

} // namespace

std::unique_ptr<Host> makeHost(HostSettings::Screen screen) {
    HostSettings settings;
    settings.name = "bench";
    settings.screen = screen;
    auto host = std::make_unique<Host>(0, nullptr, settings);
    // No window is opened larger than its monitor.
    if (OffscreenBackend* const offscreen = host->offscreen()) offscreen->setMonitors({hugeMonitor});
    auto* const warm = new rect(100, 100);
    warm->addWidget(new Button(L"warm", "warm", 76, 34), 0, 0);
    host->globManager().realize(warm);
    host->loop().settle();
    destroy(warm);
    host->loop().settle();
    return host;
}

InputEvent pointerInput(InputEvent::Kind kind, XY<int> place) {
    InputEvent input;
    input.kind = kind;
    input.place = place;
    input.button =
        kind == InputEvent::Kind::pointerMoved ? InputEvent::Button::none : InputEvent::Button::left;
    return input;
}

InputEvent keyInput(std::uint32_t keyCode) {
    InputEvent input;
    input.kind = InputEvent::Kind::keyPressed;
    input.keyCode = keyCode;
    return input;
}

double timeInput(Host& host, InputEvent input) {
    double const start = now();
    host.loop().inject(std::move(input));
    do host.loop().turn();
    while (!host.loop().isIdle());
    return (now() - start) * 1000;
}

std::uint32_t pixelAt(Host& host, Glob const* inWindow, XY<int> place) {
    auto* const window = host.offscreen()->window(GlobManager::instance().windowOf(inWindow)->native().id());
    return window->pixelAt(place - window->place());
}

void addPicture(Report& report, Glob* root) {
    Surface& surface = GlobManager::instance().windowOf(root)->surface();
    report.addPicture(look(surface.pixels(), static_cast<std::size_t>(surface.stride()) *
                                                 static_cast<std::size_t>(surface.deviceSize().y)));
}

void Steps::add(std::vector<double> const& times) {
    medians.push_back(median(times));
    p95.push_back(percentile(times, 95));
    maxima.push_back(percentile(times, 100));
}

void Steps::addTo(Report& report, std::string const& metric) const {
    report.addRuns(metric, medians);
    report.addRuns(metric + "_p95", p95);
    report.addRuns(metric + "_max", maxima);
}

namespace {

void runApart(Workload const& workload) {
    pid_t const child = fork();
    if (child == 0) {
        limitTime();
        workload.run();
        std::fflush(stdout);
        _exit(exitCode());
    }
    int status = 0;
    check(child > 0 && waitpid(child, &status, 0) == child && status == 0, "a workload failed");
}

} // namespace

int runWorkloads(int count, char** names, std::vector<Workload> const& workloads) {
    for (Workload const& workload : workloads) {
        bool isWanted = count < 2 && workload.usually;
        for (int i = 1; i < count; ++i) isWanted |= std::strcmp(names[i], workload.name) == 0;
        if (isWanted) runApart(workload);
    }
    return exitCode();
}

} // namespace wainscot::Measuring
