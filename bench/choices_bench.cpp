#include "bench/widget_grid.h"
#include "buttons/checkbox_radio_set.h"
#include "buttons/radio_button.h"
#include "host/events/key_codes.h"
#include "host/windows/event_loop.h"
#include "host/windows/glob_manager.h"

#include <string>

/// Ten thousand checkboxes: made, shown, ticked, destroyed; and sets of a thousand members of which arrow
/// keys choose one after the other.
namespace {

using namespace wainscot;
using namespace wainscot::Measuring;

constexpr std::size_t tickedBox = 1005;
constexpr int numChanges = 10000;
constexpr int numMembers = 1000;

std::vector<Checkbox*> made;

Checkbox* makeCheckbox(int index) {
    wchar_t label[16];
    std::swprintf(label, 16, L"b%05d", index);
    if (index == 0) made.clear();
    made.push_back(new Checkbox(
        Checkbox::InitArgs(label, index % 3 == 0, WidgetGrid::widgetSize.x, WidgetGrid::widgetSize.y)));
    return made.back();
}

/// Presses toggle; the releases between them are not counted.
std::vector<double> toggle(Host& host, WidgetGrid& grid) {
    Checkbox* const box = made[tickedBox];
    XY<int> const place = box->screenBox().bottomLeft() + box->getTickExtents().centre();
    timeInput(host, pointerInput(InputEvent::Kind::pointerMoved, place));
    std::vector<double> times;
    for (int change = 0; change < numChanges; ++change) {
        bool const before = box->isTicked();
        std::uint32_t const pixel = pixelAt(host, &grid, place);
        times.push_back(timeInput(host, pointerInput(InputEvent::Kind::pointerPressed, place)));
        check(box->isTicked() != before, "the checkbox did not change");
        check(pixelAt(host, &grid, place) != pixel, "the tick is not to be seen");
        timeInput(host, pointerInput(InputEvent::Kind::pointerReleased, place));
    }
    check(grid.numMessages == numChanges, "a message is missing");
    return times;
}

void benchCheckboxes() {
    Report report("checkboxes", WidgetGrid::numWidgets);
    GridFigures const few = measureGrid(WidgetGrid::fewInSight, report, makeCheckbox, toggle);
    measureGrid(WidgetGrid::allInSight, report, makeCheckbox, toggle).addTo(report, few);
    report.print();
}

/// Holds down an arrow key on a set that is wholly in sight, five times round.
template <class IsChosen>
void stepThrough(Report& report, Host& host, Glob* root, Glob* first, IsChosen isChosen) {
    host.globManager().realize(root, XY<int>(0, 0));
    first->claimKbdFocus();
    host.loop().settle();
    std::vector<double> times;
    for (int i = 1; i <= 5 * numMembers; ++i) {
        times.push_back(timeInput(host, keyInput(Key::right)));
        check(isChosen(i % numMembers), "another one was chosen");
    }
    report.addSteps("step_repaint_us", times);
    addPicture(report, root);
    report.print();
    destroy(root);
}

void benchRadioButtons() {
    Report report("radio buttons", numMembers);
    std::unique_ptr<Host> const host = makeHost();
    radio_set set;
    auto* const grid = new WidgetGrid({8000, 350});
    for (int i = 0; i < numMembers; ++i)
        grid->addWidget(new radio_button(std::to_wstring(i).c_str(), "r", &set, 76, 34), i % 100 * 80,
                        i / 100 * 35);
    set.set_current(0, true);
    stepThrough(report, *host, grid, set.member(0), [&](int i) { return set.getCurrent() == i; });
}

void benchCheckboxSet() {
    Report report("checkbox set", numMembers);
    std::unique_ptr<Host> const host = makeHost();
    CheckboxRadioSet::InitArgs args({}, 8000, 350);
    for (int i = 0; i < numMembers; ++i) args.labels.push_back(std::to_wstring(i).c_str());
    args.columns = 100;
    args.selected = 0;
    args.opaque = true;
    auto* const grid = new WidgetGrid({8000, 350});
    auto* const set = new CheckboxRadioSet(args);
    grid->addWidget(set, 0, 0);
    stepThrough(report, *host, grid, set->getCheckbox(0), [&](int i) { return set->getSelectedItem() == i; });
}

} // namespace

int main(int count, char** names) {
    return runWorkloads(
        count, names,
        {{"checkboxes", benchCheckboxes}, {"radio", benchRadioButtons}, {"set", benchCheckboxSet}});
}
