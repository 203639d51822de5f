#include "bench/measuring.h"
#include "buttons/button.h"
#include "foundation/tab_order_manager.h"
#include "host/backends/offscreen/offscreen_backend.h"
#include "host/drawing/surface.h"
#include "host/events/event.h"
#include "host/events/key_codes.h"
#include "host/objects/kbd_focus.h"
#include "host/start/host.h"

#include <cstring>
#include <functional>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

/// Ten thousand buttons on one panel: made, shown, pressed, stepped through with Tab, destroyed.
namespace {

using namespace wainscot;
using namespace wainscot::Measuring;

constexpr int repetitions = 3;
constexpr int numButtons = 10000;
constexpr int numInRow = 100;
constexpr XY<int> spacing{80, 35};
constexpr XY<int> buttonSize{76, 34};
constexpr XY<int> allInSight{numInRow * spacing.x, numButtons / numInRow* spacing.y};
constexpr XY<int> fewInSight{1200, 900};
constexpr int pressedButton = 1005;
constexpr int numChanges = 10000;

/// A ground with buttons that Tab goes through.
class ButtonGrid final : public rect {
public:
    explicit ButtonGrid(XY<int> size)
        : rect(static_cast<unsigned short>(size.x), static_cast<unsigned short>(size.y)) {}

    void fill(int count) {
        for (int i = 0; i < count; ++i) {
            wchar_t label[16];
            std::swprintf(label, 16, L"b%05d", i);
            auto* const button = new Button(label, "pressed", buttonSize.x, buttonSize.y);
            XY<int> const place{i % numInRow * spacing.x, height() - i / numInRow * spacing.y - buttonSize.y};
            addWidget(button, place.x, place.y);
            buttons.push_back(button);
        }
    }
    void makeStops() {
        for (Button* button : buttons) stops.addTabStop(*button);
    }
    bool react(Event const& event) override {
        if (event.kind() != EventKind::keyPress || event.keyCode() != Key::tab) return rect::react(event);
        stops.incrementTabStop();
        return true;
    }
    int handleMessageEvent(LightweightString<char> name, Glob* sender) override {
        if (name == "pressed") ++numMessages;
        return rect::handleMessageEvent(name, sender) | 1;
    }

    std::vector<Button*> buttons;
    TabOrderManager stops{false};
    int numMessages = 0;
};

std::unique_ptr<Host> makeHost(HostSettings::Screen screen = HostSettings::Screen::offscreen) {
    HostSettings settings;
    settings.name = "bench";
    settings.screen = screen;
    auto host = std::make_unique<Host>(0, nullptr, settings);
    // Theme and fonts are there before anything is measured.
    auto* const warm = new ButtonGrid({100, 100});
    warm->fill(1);
    host->globManager().realize(warm);
    host->loop().settle();
    destroy(warm);
    host->loop().settle();
    return host;
}

Surface& surfaceOf(Glob* root) {
    return GlobManager::instance().windowOf(root)->surface();
}

void addPicture(Report& report, Glob* root) {
    Surface& surface = surfaceOf(root);
    report.addPicture(look(surface.pixels(), static_cast<std::size_t>(surface.stride()) *
                                                 static_cast<std::size_t>(surface.deviceSize().y)));
}

struct ButtonFigures {
    std::vector<double> bytes, create, firstPaint, destroy;
    /// The median, 95th percentile and maximum of each run.
    std::vector<double> toggle, toggleP95, toggleMax;
};

InputEvent pointerInput(InputEvent::Kind kind, Glob const* target) {
    InputEvent input;
    input.kind = kind;
    input.place = target->screenBox().centre();
    input.button =
        kind == InputEvent::Kind::pointerMoved ? InputEvent::Button::none : InputEvent::Button::left;
    return input;
}

/// One piece of input and all that the loop owes for it, in microseconds.
double timeInput(Host& host, InputEvent input) {
    double const start = now();
    host.loop().inject(std::move(input));
    do host.loop().turn();
    while (!host.loop().isIdle());
    return (now() - start) * 1000;
}

std::vector<double> toggle(Host& host, ButtonGrid& grid) {
    Button* const button = grid.buttons[pressedButton];
    timeInput(host, pointerInput(InputEvent::Kind::pointerMoved, button));
    XY<int> const inFace = button->screenBox().topRight() + XY<int>(-6, -6);
    auto* const window = host.offscreen()->window(GlobManager::instance().windowOf(&grid)->native().id());
    std::vector<double> times;
    for (int change = 0; change < numChanges; ++change) {
        std::uint32_t const before = window->pixelAt(inFace - window->place());
        bool const goesDown = change % 2 == 0;
        times.push_back(timeInput(host, pointerInput(goesDown ? InputEvent::Kind::pointerPressed
                                                              : InputEvent::Kind::pointerReleased,
                                                     button)));
        check(button->isDown() == goesDown, "the button did not change");
        check(window->pixelAt(inFace - window->place()) != before, "the change is not to be seen");
    }
    check(grid.numMessages == numChanges / 2, "a message is missing");
    return times;
}

ButtonFigures measureButtons(XY<int> size, Report& report) {
    std::unique_ptr<Host> const host = makeHost();
    ButtonFigures figures;
    for (int r = 0; r < repetitions; ++r) {
        auto* const grid = new ButtonGrid(size);
        grid->buttons.reserve(numButtons);
        double const before = residentBytes();
        double start = now();
        grid->fill(numButtons);
        figures.create.push_back((now() - start) * 1000 / numButtons);
        // What was freed by an earlier run would hide what is taken.
        if (r == 0) figures.bytes.push_back((residentBytes() - before) / numButtons);
        start = now();
        host->globManager().realize(grid, XY<int>(0, 0));
        host->loop().settle();
        figures.firstPaint.push_back(now() - start);
        std::vector<double> const times = toggle(*host, *grid);
        figures.toggle.push_back(median(times));
        figures.toggleP95.push_back(percentile(times, 95));
        figures.toggleMax.push_back(percentile(times, 100));
        if (r == repetitions - 1 && size == allInSight) addPicture(report, grid);
        start = now();
        destroy(grid);
        figures.destroy.push_back((now() - start) * 1000 / numButtons);
        host->loop().settle();
    }
    return figures;
}

void addToggle(Report& report, std::string const& name, ButtonFigures const& figures) {
    report.addRuns(name, figures.toggle);
    report.addRuns(name + "_p95", figures.toggleP95);
    report.addRuns(name + "_max", figures.toggleMax);
}

void benchButtons() {
    Report report("W1", numButtons);
    ButtonFigures const few = measureButtons(fewInSight, report);
    report.addRuns("rss_bytes_per_widget", few.bytes);
    report.addRuns("first_paint_1200x900_ms", few.firstPaint);
    addToggle(report, "toggle_repaint_1200x900_us", few);
    ButtonFigures const all = measureButtons(allInSight, report);
    report.addRuns("create_us_per_widget", all.create);
    report.addRuns("first_paint_ms", all.firstPaint);
    addToggle(report, "toggle_repaint_us", all);
    report.addRuns("destroy_us_per_widget", all.destroy);
    report.print();
}

InputEvent tabInput() {
    InputEvent input;
    input.kind = InputEvent::Kind::keyPressed;
    input.keyCode = Key::tab;
    return input;
}

void benchTab() {
    Report report("W9", numButtons);
    std::unique_ptr<Host> const host = makeHost();
    auto* const grid = new ButtonGrid(allInSight);
    grid->fill(numButtons);
    grid->makeStops();
    host->globManager().realize(grid, XY<int>(0, 0));
    grid->buttons.front()->setTabStopFocus();
    host->loop().settle();
    std::vector<double> presses;
    for (int i = 1; i <= numButtons; ++i) {
        presses.push_back(timeInput(*host, tabInput()));
        check(get_kbd_focus() == grid->buttons[static_cast<std::size_t>(i % numButtons)], "Tab went astray");
    }
    addPicture(report, grid);
    report.addSteps("press_repaint_us", presses);
    std::vector<double> alone;
    std::vector<double> repaint;
    for (int r = 0; r < repetitions; ++r) {
        surfaceOf(grid).holdPainting();
        double const start = now();
        for (int i = 0; i < numButtons; ++i) host->loop().inject(tabInput());
        host->loop().settle();
        alone.push_back((now() - start) * 1000 / numButtons);
        check(get_kbd_focus() == grid->buttons.front(), "Tab went astray");
        surfaceOf(grid).releasePainting();
        double const restart = now();
        host->loop().settle();
        repaint.push_back(now() - restart);
    }
    report.addRuns("press_alone_us", alone);
    report.addRuns("repaint_at_end_ms", repaint);
    report.print();
    destroy(grid);
}

/// How many damage rectangles a window brings to the screen in a second: one button after the other.
void benchDamage() {
    Report report("damage", numButtons);
    std::unique_ptr<Host> const host = makeHost(HostSettings::Screen::desktop);
    check(host->hasScreen(), host->problem().c_str());
    if (!host->hasScreen()) return;
    auto* const grid = new ButtonGrid(fewInSight);
    grid->fill(numButtons);
    host->globManager().realize(grid);
    host->loop().settle();
    std::vector<double> times;
    for (int i = 0; i < numChanges; ++i) {
        int const column = i % 15;
        int const row = i / 15 % 25;
        Button* const button = grid->buttons[static_cast<std::size_t>(row * numInRow + column)];
        double const start = now();
        button->setState(button->isDown() ? buttonUp : buttonDown, eRedrawYes);
        host->loop().turn();
        times.push_back((now() - start) * 1000);
    }
    report.add("rectangles_per_s", 1e6 / median(times));
    report.addSteps("rectangle_us", times);
    addPicture(report, grid);
    report.print();
    destroy(grid);
}

/// In a process of its own: memory that one workload has freed would hide what the next one takes.
void runApart(std::function<void()> const& workload) {
    pid_t const child = fork();
    if (child == 0) {
        limitTime();
        workload();
        std::fflush(stdout);
        _exit(exitCode());
    }
    int status = 0;
    check(child > 0 && waitpid(child, &status, 0) == child && status == 0, "a workload failed");
}

} // namespace

/// Without arguments all workloads without a screen; else those named: W1, W9, desktop.
int main(int count, char** names) {
    auto const isWanted = [&](char const* group, bool usually) {
        for (int i = 1; i < count; ++i)
            if (std::strcmp(names[i], group) == 0) return true;
        return count < 2 && usually;
    };
    if (isWanted("W1", true)) runApart(benchButtons);
    if (isWanted("W9", true)) runApart(benchTab);
    if (isWanted("desktop", false)) runApart(benchDamage);
    return exitCode();
}
