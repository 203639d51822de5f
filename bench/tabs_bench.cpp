#include "bench/driving.h"
#include "containers/lazy_tabbed_dialogue.h"
#include "host/base/convert.h"
#include "host/windows/event_loop.h"
#include "host/windows/glob_manager.h"
#include "text/text_box.h"

/// Selecting among a thousand tabs, and opening a dialogue of heavy pages.
namespace {

using namespace wainscot;
using namespace wainscot::Measuring;

constexpr int numTabs = 1000;
constexpr int numSelections = 2000;
constexpr int numHeavyPages = 50;
constexpr int numBoxes = 400;
constexpr int repetitions = 3;
/// Leads through all tabs.
constexpr int stride = 377;

UIString nameOf(int index) {
    return UIString(L"Scene " + Qv::WStringFromInteger(index));
}

void benchSelecting() {
    Report report("select", numTabs);
    std::unique_ptr<Host> const host = makeHost();
    Steps steps;
    for (int r = 0; r < repetitions; ++r) {
        auto* const dialogue = new TabbedDialogue(800, 600);
        for (int i = 0; i < numTabs; ++i) dialogue->createStandardPage(nameOf(i));
        host->globManager().realize(dialogue, XY<int>(0, 0));
        host->loop().settle();
        std::vector<double> times;
        for (int i = 1; i <= numSelections; ++i) {
            double const start = now();
            dialogue->selectPage(static_cast<unsigned short>(i * stride % numTabs));
            host->loop().settle();
            times.push_back((now() - start) * 1000);
        }
        steps.add(times);
        if (r + 1 == repetitions) addPicture(report, dialogue);
        destroy(dialogue);
        host->loop().settle();
    }
    steps.addTo(report, "select_repaint_us");
    report.print();
}

/// Each page is a form of text boxes.
class HeavyPages final : public LazyTabbedDialogue {
public:
    HeavyPages() : LazyTabbedDialogue(InitArgs(800, 600), nameOf(0)) {
        for (int i = 0; i < numHeavyPages; ++i) addTab(nameOf(i));
    }
    int numBuilt = 0;

protected:
    Glob* makePage(unsigned short) override {
        return std::make_unique<StandardTabPage>(getMaxPageSize(), getPalette()).release();
    }
    void buildPage(LightweightString<wchar_t> const&) override {
        ++numBuilt;
        for (int i = 0; i < numBoxes; ++i)
            getCurrentPage()->addWidget(new TextBox(TextBox::InitArgs(70, 24, Qv::WStringFromInteger(i))),
                                        i % 10 * 75, i / 10 * 26);
    }
};

void benchOpening() {
    Report report("lazy", numHeavyPages);
    std::unique_ptr<Host> const host = makeHost();
    std::vector<double> opening;
    for (int r = 0; r < repetitions; ++r) {
        double const start = now();
        auto* const dialogue = new HeavyPages;
        host->globManager().realize(dialogue, XY<int>(0, 0));
        host->loop().settle();
        opening.push_back(now() - start);
        check(dialogue->numBuilt == 1, "more than one page was built");
        if (r + 1 == repetitions) addPicture(report, dialogue);
        destroy(dialogue);
        host->loop().settle();
    }
    report.addRuns("open_first_paint_ms", opening);
    report.print();
}

} // namespace

/// Without arguments both groups; else those named: select, lazy.
int main(int count, char** names) {
    return runWorkloads(count, names, {{"select", benchSelecting}, {"lazy", benchOpening}});
}
