#include "bench/driving.h"
#include "host/base/convert.h"
#include "host/windows/event_loop.h"
#include "host/windows/glob_manager.h"
#include "tables/tree_view.h"

/// A thousand branches of a thousand leaves: opened, closed and scrolled.
namespace {

using namespace wainscot;
using namespace wainscot::Measuring;

constexpr unsigned int numBranches = 1000;
constexpr unsigned int numLeaves = 1000;
constexpr unsigned int numRows = numBranches + numBranches * numLeaves;
constexpr unsigned short rowHeight = 24;
constexpr int numScrollSteps = 2000;
constexpr int numToggles = 50;
constexpr int repetitions = 3;

class Source : public iTreeViewAdaptor {
public:
    static Item branch(unsigned int index) {
        return {L"Branch " + Qv::WStringFromInteger(static_cast<int>(index)), Item::branch};
    }
    static Item leaf(Item const& parent, unsigned int index) {
        return {L"Leaf " + parent.name.substr(Text(L"Branch ").size()) + L"." +
                    Qv::WStringFromInteger(static_cast<int>(index)),
                0};
    }
};

/// Names are made when they are seen.
class Counting final : public Source {
public:
    Children listChildren(Item const* parent) override {
        Children children;
        children.count = parent ? numLeaves : numBranches;
        children.areLeaves = parent != nullptr;
        return children;
    }
    Item getChild(Item const* parent, unsigned int index) const override {
        return parent ? leaf(*parent, index) : branch(index);
    }
};

/// All names are given when a branch is opened.
class Listing final : public Source {
public:
    Children listChildren(Item const* parent) override {
        Children children;
        unsigned int const count = parent ? numLeaves : numBranches;
        children.items.reserve(count);
        for (unsigned int i = 0; i < count; ++i)
            children.items.push_back(parent ? leaf(*parent, i) : branch(i));
        return children;
    }
};

template <class Adaptor>
void benchTree(char const* name) {
    Report report(name, numRows);
    std::unique_ptr<Host> const host = makeHost();
    std::vector<double> expanding, collapsingFirst, expandingFirst, growth;
    Steps scrolling;
    auto const time = [&](auto const& act) {
        double const start = now();
        act();
        host->loop().settle();
        return now() - start;
    };
    for (int r = 0; r < repetitions; ++r) {
        Adaptor source;
        TreeView::InitArgs args(600, 900);
        args.adaptor = &source;
        auto* const tree = new TreeView(args);
        tree->setRowHeight(rowHeight);
        host->globManager().realize(tree, XY<int>(0, 0));
        host->loop().settle();
        double const before = residentBytes();
        expanding.push_back(time([&] { tree->expandAll(); }));
        check(tree->numRows() == numRows, "not all branches are open");
        if (r == 0) growth.push_back((residentBytes() - before) / (1024 * 1024));
        std::vector<double> collapses, expansions;
        for (int i = 0; i < numToggles; ++i) {
            collapses.push_back(time([&] { tree->toggleBranchExpansion(0); }));
            check(tree->numRows() == numRows - numLeaves, "the first branch is not closed");
            expansions.push_back(time([&] { tree->toggleBranchExpansion(0); }));
        }
        std::ranges::sort(collapses);
        std::ranges::sort(expansions);
        collapsingFirst.push_back(collapses[numToggles / 2]);
        expandingFirst.push_back(expansions[numToggles / 2]);
        std::vector<double> steps;
        for (int i = 1; i <= numScrollSteps; ++i)
            steps.push_back(1000 * time([&] { tree->setWindowTop(std::int64_t{i} * rowHeight); }));
        scrolling.add(steps);
        if (r + 1 == repetitions) addPicture(report, tree);
        destroy(tree);
        host->loop().settle();
    }
    report.addRuns("expand_all_ms", expanding);
    report.addRuns("collapse_first_ms", collapsingFirst);
    report.addRuns("expand_first_ms", expandingFirst);
    scrolling.addTo(report, "scroll_step_us");
    report.addRuns("rss_growth_mb", growth);
    report.print();
}

} // namespace

/// Without arguments all groups; else those named: W3, listed.
int main(int count, char** names) {
    return runWorkloads(
        count, names,
        {{"W3", [] { benchTree<Counting>("W3"); }}, {"listed", [] { benchTree<Listing>("listed"); }}});
}
