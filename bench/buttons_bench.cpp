#include "bench/widget_grid.h"
#include "buttons/button.h"
#include "foundation/tab_order_manager.h"
#include "host/drawing/surface.h"
#include "host/events/event.h"
#include "host/events/key_codes.h"
#include "host/objects/kbd_focus.h"
#include "host/windows/event_loop.h"
#include "host/windows/glob_manager.h"
#include "host/windows/top_level_window.h"

#include <string>

/// Ten thousand buttons on one panel: made, shown, pressed, stepped through with Tab, destroyed.
namespace {

using namespace wainscot;
using namespace wainscot::Measuring;

constexpr int repetitions = 3;
constexpr int numButtons = WidgetGrid::numWidgets;
constexpr std::size_t pressedButton = 1005;
constexpr int numChanges = 10000;

std::vector<Button*> made;

Button* makeButton(int index) {
    wchar_t label[16];
    std::swprintf(label, 16, L"b%05d", index);
    if (index == 0) made.clear();
    made.push_back(new Button(label, "pressed", WidgetGrid::widgetSize.x, WidgetGrid::widgetSize.y));
    return made.back();
}

/// Presses and releases one button: two steps.
std::vector<double> toggle(Host& host, WidgetGrid& grid) {
    Button* const button = made[pressedButton];
    XY<int> const place = button->screenBox().centre();
    XY<int> const inFace = button->screenBox().topRight() + XY<int>(-6, -6);
    timeInput(host, pointerInput(InputEvent::Kind::pointerMoved, place));
    std::vector<double> times;
    for (int change = 0; change < numChanges; ++change) {
        std::uint32_t const before = pixelAt(host, &grid, inFace);
        bool const goesDown = change % 2 == 0;
        times.push_back(timeInput(host, pointerInput(goesDown ? InputEvent::Kind::pointerPressed
                                                              : InputEvent::Kind::pointerReleased,
                                                     place)));
        check(button->isDown() == goesDown, "the button did not change");
        check(pixelAt(host, &grid, inFace) != before, "the change is not to be seen");
    }
    check(grid.numMessages == numChanges / 2, "a message is missing");
    return times;
}

void benchButtons() {
    Report report("W1", numButtons);
    GridFigures const few = measureGrid(WidgetGrid::fewInSight, report, makeButton, toggle);
    measureGrid(WidgetGrid::allInSight, report, makeButton, toggle).addTo(report, few);
    report.print();
}

/// A grid that Tab goes through.
class StopGrid final : public WidgetGrid {
public:
    explicit StopGrid(XY<int> size) : WidgetGrid(size) {
        fill(makeButton);
        for (Button* button : made) stops_.addTabStop(*button);
    }
    bool react(Event const& event) override {
        if (event.kind() != EventKind::keyPress || event.keyCode() != Key::tab) return rect::react(event);
        stops_.incrementTabStop();
        return true;
    }

private:
    TabOrderManager stops_{false};
};

void benchTab() {
    Report report("W9", numButtons);
    std::unique_ptr<Host> const host = makeHost();
    auto* const grid = new StopGrid(WidgetGrid::allInSight);
    host->globManager().realize(grid, XY<int>(0, 0));
    made.front()->setTabStopFocus();
    host->loop().settle();
    std::vector<double> presses;
    for (int i = 1; i <= numButtons; ++i) {
        presses.push_back(timeInput(*host, keyInput(Key::tab)));
        check(get_kbd_focus() == made[static_cast<std::size_t>(i % numButtons)], "Tab went astray");
    }
    addPicture(report, grid);
    report.addSteps("press_repaint_us", presses);
    std::vector<double> alone;
    std::vector<double> repaint;
    Surface& surface = GlobManager::instance().windowOf(grid)->surface();
    for (int r = 0; r < repetitions; ++r) {
        surface.holdPainting();
        double const start = now();
        for (int i = 0; i < numButtons; ++i) host->loop().inject(keyInput(Key::tab));
        host->loop().settle();
        alone.push_back((now() - start) * 1000 / numButtons);
        check(get_kbd_focus() == made.front(), "Tab went astray");
        surface.releasePainting();
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
    auto* const grid = new WidgetGrid(WidgetGrid::fewInSight);
    grid->fill(makeButton);
    host->globManager().realize(grid);
    host->loop().settle();
    std::vector<double> times;
    for (int i = 0; i < numChanges; ++i) {
        int const column = i % 15;
        int const row = i / 15 % 25;
        Button* const button = made[static_cast<std::size_t>(row * WidgetGrid::numInRow + column)];
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

} // namespace

int main(int count, char** names) {
    return runWorkloads(count, names,
                        {{"W1", benchButtons}, {"W9", benchTab}, {"desktop", benchDamage, false}});
}
