#include "bench/driving.h"
#include "bench/widget_grid.h"
#include "foundation/val_server_adaptor.h"
#include "text/vari_box.h"
#include "text/vari_box_parser_basic.h"

#include <array>

/// Ten thousand value boxes: made, painted, stepped, set together and destroyed.
namespace {

using namespace wainscot;
using namespace wainscot::Measuring;

constexpr int repetitions = 3;
constexpr int stepped = 1005;
constexpr int numSteps = 2000;
constexpr int numSettings = 500;
constexpr XY<int> boxSize{76, 30};

using Parser = VariBoxParserBasic<double>;

/// The first forty boxes of the rows 10 to 12, columns 0 to 13.
constexpr std::array<int, 40> inSight = [] {
    std::array<int, 40> indices{};
    for (int i = 0; i < 40; ++i)
        indices[static_cast<std::size_t>(i)] = (10 + i / 14) * WidgetGrid::numInRow + i % 14;
    return indices;
}();

class Values {
public:
    explicit Values(Host& host) : host_(host), grid_(new WidgetGrid(WidgetGrid::fewInSight)) {
        delete makeBox(0);
    }

    VariBox* makeBox(int index) {
        VariBox::InitArgs args({}, boxSize.x);
        args.height = boxSize.y;
        auto* const box = new VariBox(args);
        box->setParser(new Parser(box, displayer_.get(), 0, 1000, 0.1, 1, index % 1000), true);
        return box;
    }
    void fill() {
        boxes_.reserve(WidgetGrid::numWidgets);
        grid_->fill([this](int index) { return boxes_.emplace_back(makeBox(index)); });
    }
    Parser& parser(int index) {
        return static_cast<Parser&>(*boxes_[static_cast<std::size_t>(index)]->getParser());
    }
    VariBox& box(int index) { return *boxes_[static_cast<std::size_t>(index)]; }
    WidgetGrid* grid() { return grid_; }
    /// Microseconds of a call with all its effects.
    template <class Act>
    double time(Act const& act) {
        double const start = now();
        act();
        host_.loop().settle();
        return (now() - start) * 1000;
    }

private:
    Host& host_;
    WidgetGrid* grid_;
    Qv::Ptr<VariBoxPlainDisplayer<double>> displayer_ = Qv::makePtr<VariBoxPlainDisplayer<double>>(1, false);
    std::vector<VariBox*> boxes_;
};

std::vector<double> step(Values& values) {
    double const before = values.parser(stepped).getValue();
    std::vector<double> times;
    for (int i = 0; i < numSteps; ++i)
        times.push_back(values.time([&] {
            if (values.parser(stepped).handleMinorInc()) values.box(stepped).handleNudge();
        }));
    check(values.parser(stepped).getValue() > before + 100, "the box was not stepped");
    return times;
}

std::vector<double> setForty(Values& values) {
    std::vector<double> times;
    for (int i = 0; i < numSettings; ++i)
        times.push_back(values.time([&] {
            for (int const index : inSight) values.parser(index).setValue(i * 1.7 + 0.1 * (index % 10));
        }));
    return times;
}

std::vector<double> setBound(Values& values, ValServer<double>& server) {
    for (int const index : inSight) bindToServer<double>(values.parser(index), server);
    std::vector<double> times;
    for (int i = 0; i < numSettings; ++i) times.push_back(values.time([&] { server = i * 1.9; }));
    check(values.parser(inSight.back()).getValue() == (numSettings - 1) * 1.9, "the server was not followed");
    return times;
}

void benchValues() {
    Report report("W11", WidgetGrid::numWidgets);
    std::unique_ptr<Host> const host = makeHost();
    std::vector<double> create, bytes, firstPaint, destruction;
    Steps steps, forty, bound;
    for (int r = 0; r < repetitions; ++r) {
        ValServer<double> server(0);
        Values values(*host);
        double const before = residentBytes();
        double start = now();
        values.fill();
        create.push_back((now() - start) * 1000 / WidgetGrid::numWidgets);
        // Memory that an earlier run has freed would hide the use.
        if (r == 0) bytes.push_back((residentBytes() - before) / WidgetGrid::numWidgets);
        firstPaint.push_back(values.time([&] { host->globManager().realize(values.grid(), XY<int>(0, 0)); }) /
                             1000);
        steps.add(step(values));
        forty.add(setForty(values));
        bound.add(setBound(values, server));
        if (r + 1 == repetitions) addPicture(report, values.grid());
        start = now();
        destroy(values.grid());
        destruction.push_back((now() - start) * 1000 / WidgetGrid::numWidgets);
        host->loop().settle();
    }
    report.addRuns("create_us_per_widget", create);
    report.addRuns("rss_bytes_per_widget", bytes);
    report.addRuns("first_paint_1200x900_ms", firstPaint);
    steps.addTo(report, "step_repaint_us");
    forty.addTo(report, "forty_repaint_us");
    bound.addTo(report, "forty_bound_repaint_us");
    report.addRuns("destroy_us_per_widget", destruction);
    report.print();
}

} // namespace

int main(int count, char** names) {
    return runWorkloads(count, names, {{"W11", benchValues}});
}
