#pragma once

#include "bench/measuring.h"
#include "host/objects/glob.h"
#include "host/start/host.h"
#include "host/windows/input_event.h"

#include <functional>
#include <memory>
#include <vector>

namespace wainscot::Measuring {

/// A program whose theme and fonts are loaded already.
std::unique_ptr<Host> makeHost(HostSettings::Screen screen = HostSettings::Screen::offscreen);

InputEvent pointerInput(InputEvent::Kind kind, XY<int> place);
InputEvent keyInput(std::uint32_t keyCode);
/// The time for one piece of input with all its effects, in microseconds.
double timeInput(Host& host, InputEvent input);

/// The colour of the offscreen screen at a place.
std::uint32_t pixelAt(Host& host, Glob const* inWindow, XY<int> place);
void addPicture(Report& report, Glob* root);

/// Times one step again and again.
struct Steps {
    /// Notes median, 95th percentile and maximum of a run.
    void add(std::vector<double> const& times);
    void addTo(Report& report, std::string const& metric) const;

    std::vector<double> medians, p95, maxima;
};

struct Workload {
    char const* name;
    void (*run)();
    /// Whether it runs when none is named.
    bool usually = true;
};
/// Runs the named workloads, each in a process of its own: memory that one has freed would hide the use of
/// the next. Gives the exit code.
int runWorkloads(int count, char** names, std::vector<Workload> const& workloads);

} // namespace wainscot::Measuring
