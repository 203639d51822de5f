#pragma once

#include "bench/driving.h"
#include "foundation/rect.h"
#include "host/base/convert.h"
#include "host/windows/event_loop.h"
#include "host/windows/glob_manager.h"

#include <vector>

namespace wainscot::Measuring {

/// A ground with thousands of small widgets in rows of a hundred, each of them in a cell of 80 x 35.
class WidgetGrid : public rect {
public:
    static constexpr int numWidgets = 10000;
    static constexpr int numInRow = 100;
    static constexpr XY<int> spacing{80, 35};
    static constexpr XY<int> widgetSize{76, 34};
    static constexpr XY<int> allInSight{numInRow * spacing.x, numWidgets / numInRow* spacing.y};
    static constexpr XY<int> fewInSight{1200, 900};

    explicit WidgetGrid(XY<int> size) : rect(toSize16(size.x), toSize16(size.y)) {}

    /// `make` gives the widget of an index.
    template <class Make>
    void fill(Make make) {
        for (int i = 0; i < numWidgets; ++i) {
            XY<int> const place{i % numInRow * spacing.x, height() - i / numInRow * spacing.y - widgetSize.y};
            addWidget(make(i), place.x, place.y);
        }
    }
    int handleMessageEvent(LightweightString<char>, Glob*) override {
        ++numMessages;
        return 1;
    }

    int numMessages = 0;
};

/// What it costs to have thousands of widgets.
struct GridFigures {
    std::vector<double> bytes, create, firstPaint, destroy;
    Steps toggle;

    void addTo(Report& report, GridFigures const& few) const {
        report.addRuns("rss_bytes_per_widget", few.bytes);
        report.addRuns("first_paint_1200x900_ms", few.firstPaint);
        few.toggle.addTo(report, "toggle_repaint_1200x900_us");
        report.addRuns("create_us_per_widget", create);
        report.addRuns("first_paint_ms", firstPaint);
        toggle.addTo(report, "toggle_repaint_us");
        report.addRuns("destroy_us_per_widget", destroy);
    }
};

/// Makes, shows, uses and destroys a grid, three times. `toggle` gives the times of its steps.
template <class Make, class Toggle>
GridFigures measureGrid(XY<int> size, Report& report, Make make, Toggle toggle) {
    std::unique_ptr<Host> const host = makeHost();
    GridFigures figures;
    for (int r = 0; r < 3; ++r) {
        auto* const grid = new WidgetGrid(size);
        double const before = residentBytes();
        double start = now();
        grid->fill(make);
        figures.create.push_back((now() - start) * 1000 / WidgetGrid::numWidgets);
        // Memory that an earlier run has freed would hide the use.
        if (r == 0) figures.bytes.push_back((residentBytes() - before) / WidgetGrid::numWidgets);
        start = now();
        host->globManager().realize(grid, XY<int>(0, 0));
        host->loop().settle();
        figures.firstPaint.push_back(now() - start);
        figures.toggle.add(toggle(*host, *grid));
        if (r == 2 && size == WidgetGrid::allInSight) addPicture(report, grid);
        start = now();
        destroy(grid);
        figures.destroy.push_back((now() - start) * 1000 / WidgetGrid::numWidgets);
        host->loop().settle();
    }
    return figures;
}

} // namespace wainscot::Measuring
