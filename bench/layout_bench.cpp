#include "bench/driving.h"
#include "bench/widget_grid.h"
#include "buttons/button.h"
#include "foundation/layout/box_layout.h"
#include "foundation/layout/grid_layout.h"
#include "foundation/standard_panel.h"
#include "host/drawing/surface.h"
#include "host/windows/event_loop.h"
#include "host/windows/glob_manager.h"
#include "host/windows/top_level_window.h"

/// Ten thousand buttons on a panel, placed by a layout: for the first time, in another width, again without
/// any change, and after one text has changed.
namespace {

using namespace wainscot;
using namespace wainscot::Measuring;

constexpr int numButtons = WidgetGrid::numWidgets;
constexpr int numInRow = WidgetGrid::numInRow;
constexpr int repetitions = 20;

std::vector<Button*> made;

std::unique_ptr<Button> makeButton(int index) {
    wchar_t label[16];
    std::swprintf(label, 16, L"b%05d", index);
    auto button = std::make_unique<Button>(Button::InitArgs(label, "pressed"));
    made.push_back(button.get());
    return button;
}

std::unique_ptr<Layout> makeGrid() {
    auto grid = std::make_unique<GridLayout>();
    for (int column = 0; column < numInRow; ++column) grid->setColumnStretch(column, 1);
    for (int i = 0; i < numButtons; ++i)
        grid->add(makeButton(i), {.row = i / numInRow, .column = i % numInRow});
    return grid;
}

std::unique_ptr<Layout> makeColumn() {
    auto column = BoxLayout::makeColumn();
    for (int i = 0; i < numButtons; ++i) column->add(makeButton(i));
    return column;
}

std::unique_ptr<Layout> makeRows() {
    auto rows = BoxLayout::makeColumn();
    for (int row = 0; row < numButtons / numInRow; ++row) {
        auto* const next = rows->add(BoxLayout::makeRow());
        for (int i = 0; i < numInRow; ++i) next->add(makeButton(row * numInRow + i), {.stretch = 1});
    }
    return rows;
}

double timeLayout(Layout& layout) {
    double const start = now();
    layout.layOutNow();
    return now() - start;
}

void measure(char const* name, std::unique_ptr<Layout> (*make)()) {
    Report report(name, numButtons);
    std::unique_ptr<Host> const host = makeHost();
    made.clear();
    auto* const panel = new StandardPanel(XY<int>(1000, 800));
    host->globManager().realize(panel, XY<int>(0, 0));
    host->loop().settle();
    Layout* const layout = panel->setLayout(make());
    double const start = now();
    layout->naturalSize();
    std::vector<double> const needs{now() - start};
    std::vector<double> const first{timeLayout(*layout)};
    std::vector<double> width, again, text;
    for (int r = 0; r < repetitions; ++r) {
        int const before = made.front()->width();
        panel->resize(12000 + 500 * r, 800);
        width.push_back(timeLayout(*layout));
        check(made.front()->width() > before, "the buttons do not follow the width");
        layout->changed();
        again.push_back(timeLayout(*layout));
        made[static_cast<std::size_t>(r)]->setString(L"another text");
        text.push_back(timeLayout(*layout));
    }
    report.addRuns("ask_all_ms", needs);
    report.addRuns("first_ms", first);
    report.addRuns("other_width_ms", width);
    report.addRuns("unchanged_ms", again);
    report.addRuns("one_text_ms", text);
    panel->resize(1000, 800);
    host->loop().settle();
    addPicture(report, panel);
    report.print();
    destroy(panel);
}

} // namespace

int main(int count, char** names) {
    return runWorkloads(count, names,
                        {{"grid", [] { measure("layout_grid", makeGrid); }},
                         {"column", [] { measure("layout_column", makeColumn); }},
                         {"rows", [] { measure("layout_rows", makeRows); }}});
}
