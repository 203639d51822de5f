#include "bench/measuring.h"
#include "buttons/checkbox_group.h"
#include "buttons/checkbox_radio_set.h"
#include "buttons/radio_set.h"
#include "buttons/standard_buttons.h"
#include "containers/scroll_bar.h"
#include "containers/slider.h"
#include "host/drawing/surface.h"
#include "host/start/host.h"
#include "host/windows/event_loop.h"
#include "host/windows/glob_manager.h"
#include "host/windows/top_level_window.h"

#include <csignal>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string>
#include <sys/poll.h>
#include <sys/wait.h>
#include <unistd.h>

/// How long a program takes until its first window is painted, how much memory it then uses, and how often it
/// wakes up while nobody uses it.
namespace {

using namespace wainscot;
using namespace wainscot::Measuring;

constexpr int numProcesses = 10;
constexpr int restMs = 1500;
constexpr int measuredMs = 5000;

/// What a started program tells about itself after its window is painted.
struct Told {
    double cpuMs = 0;
    double rss = 0;
    double anonymous = 0;
    unsigned long long colours = 0;
    unsigned long long ink = 0;
};

template <class Widget>
void add(Glob& panel, std::unique_ptr<Widget> widget) {
    int const number = static_cast<int>(panel.numChildren());
    panel.addChild(std::move(widget),
                   {CoordinateOrigin::topLeft, {20 + number % 3 * 190, 20 + number / 3 * 90}});
}

/// Twelve widgets of different kinds.
Glob* makePanel() {
    auto* const panel = new rect(600, 400);
    add(*panel, std::make_unique<Button>(L"Import", "import", 120, 24));
    Button::InitArgs latching(L"Loop", "loop", 120, 24);
    latching.latching = true;
    add(*panel, std::make_unique<Button>(latching));
    auto withIcon = std::make_unique<Button>(L"Open", "open", 120, 24);
    withIcon->setIcons(L"folder.png", L"");
    add(*panel, std::move(withIcon));
    add(*panel, Checkbox::make(120, 24, L"Snap", true));
    auto light = Checkbox::make(120, 24, L"Record", true);
    light->setAppearance(Checkbox::redLight);
    add(*panel, std::move(light));
    add(*panel, std::make_unique<PinButton>(Palette()));
    CheckboxRadioSet::InitArgs quality({L"Draft", L"Best"}, 120);
    quality.selected = 1;
    add(*panel, std::make_unique<CheckboxRadioSet>(quality));
    add(*panel, std::make_unique<RadioSet>(RadioSet::InitArgs({L"Fit", L"Fill"}, 120)));
    add(*panel, std::make_unique<CheckboxGroup>(CheckboxGroup::InitArgs(L"Tracks", {L"Video"}, 120)));
    ScrollBar::InitArgs bar(eHorizontal, 160);
    bar.thumb = {0.2, 0.3};
    add(*panel, std::make_unique<ScrollBar>(bar));
    bar.resizable = true;
    add(*panel, std::make_unique<ScrollBar>(bar));
    add(*panel, std::make_unique<Slider>(Slider::InitArgs(160)));
    return panel;
}

/// The measured program: paints its window, tells so, and is then idle until its input ends.
int runProgram(bool isDesktop) {
    HostSettings settings;
    settings.name = "bench";
    settings.screen = isDesktop ? HostSettings::Screen::desktop : HostSettings::Screen::offscreen;
    Host host(0, nullptr, settings);
    if (isDesktop && !host.hasScreen()) return 1;
    Glob* const panel = makePanel();
    host.globManager().realize(panel);
    host.loop().settle();
    SystemClock const clock;
    double const cpu = static_cast<double>(clock.processor()) * 1000 / iClock::processorPerSecond;
    std::puts("painted");
    std::fflush(stdout);
    double const rss = residentBytes();
    double const anonymous = anonymousBytes();
    Surface const& surface = host.globManager().windowOf(panel)->surface();
    Picture const picture = look(surface.pixels(), static_cast<std::size_t>(surface.stride()) *
                                                       static_cast<std::size_t>(surface.deviceSize().y));
    std::printf("%.3f %.0f %.0f %zu %zu\n", cpu, rss, anonymous, picture.colours, picture.inkPermille);
    std::fflush(stdout);
    // Ended from outside. Without a screen nothing can happen any more, and this returns at once.
    return host.run();
}

/// Sleeps and wake-ups of all threads of a process.
long wakeUps(pid_t process) {
    std::string const command =
        "cat /proc/" + std::to_string(process) + "/task/*/status | sed -n 's/^voluntary_ctxt_switches:.//p'";
    FILE* const pipe = popen(command.c_str(), "r");
    long sum = 0;
    long count = 0;
    while (pipe && std::fscanf(pipe, "%ld", &count) == 1) sum += count;
    if (pipe) pclose(pipe);
    return sum;
}

void rest(int milliseconds) {
    poll(nullptr, 0, milliseconds);
}

/// A started program, at the other end of a pipe.
class Program {
public:
    explicit Program(char const* kind) {
        int ends[2];
        check(pipe(ends) == 0, "no pipe");
        pid_ = fork();
        if (pid_ == 0) {
            dup2(ends[1], STDOUT_FILENO);
            close(ends[0]);
            close(ends[1]);
            execl("/proc/self/exe", "bench", "--program", kind, static_cast<char*>(nullptr));
            _exit(127);
        }
        close(ends[1]);
        output_ = fdopen(ends[0], "r");
    }
    ~Program() {
        kill(pid_, SIGTERM);
        waitpid(pid_, nullptr, 0);
        std::fclose(output_);
    }
    Program(Program const&) = delete;
    Program& operator=(Program const&) = delete;

    bool waitUntilPainted() {
        char line[64];
        return std::fgets(line, sizeof line, output_) && std::strcmp(line, "painted\n") == 0;
    }
    Told told() {
        Told told;
        check(std::fscanf(output_, "%lf %lf %lf %llu %llu", &told.cpuMs, &told.rss, &told.anonymous,
                          &told.colours, &told.ink) == 5,
              "the program told nothing");
        return told;
    }
    pid_t pid() const { return pid_; }

private:
    pid_t pid_;
    FILE* output_;
};

void benchStartUp(char const* kind) {
    bool const isDesktop = std::strcmp(kind, "desktop") == 0;
    Report report(isDesktop ? "W10 desktop" : "W10", 12);
    std::vector<double> startUps, cpu, rss, anonymous, wakes;
    Told told;
    for (int i = 0; i < numProcesses; ++i) {
        double const start = now();
        Program program(kind);
        check(program.waitUntilPainted(), "the program did not paint");
        startUps.push_back(now() - start);
        told = program.told();
        cpu.push_back(told.cpuMs);
        rss.push_back(told.rss / 1e6);
        anonymous.push_back(told.anonymous / 1e6);
        // This takes five seconds, so only one process is watched.
        if (!isDesktop || i > 0) continue;
        rest(restMs);
        long const before = wakeUps(program.pid());
        rest(measuredMs);
        check(before > 0, "the program has ended");
        wakes.push_back(static_cast<double>(wakeUps(program.pid()) - before) * 1000.0 / measuredMs);
    }
    report.addSteps("startup_ms", startUps);
    report.addRuns("startup_cpu_ms", cpu);
    report.addRuns("rss_mb", rss);
    report.addRuns("rss_anon_mb", anonymous);
    if (isDesktop) report.addRuns("idle_wakeups_per_s", wakes);
    report.addPicture({static_cast<std::size_t>(told.colours), static_cast<std::size_t>(told.ink)});
    report.print();
}

} // namespace

/// Without arguments in memory; "desktop" with a real window.
int main(int count, char** words) {
    if (count == 3 && std::strcmp(words[1], "--program") == 0)
        return runProgram(std::strcmp(words[2], "desktop") == 0);
    limitTime();
    benchStartUp(count > 1 && std::strcmp(words[1], "desktop") == 0 ? "desktop" : "memory");
    return exitCode();
}
