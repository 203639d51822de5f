#include "bench/driving.h"
#include "menus/model/drop_down_menu_data.h"

#include <string>

/// The items of long menus.
namespace {

using namespace wainscot;
using namespace wainscot::Measuring;
using Text = LightweightString<wchar_t>;

constexpr int repetitions = 9;
constexpr std::size_t numBuilt = 10'000;

constexpr Text prefix{L"Menu item "};

/// Every tenth one is the header of a group, every fourth of these compressed.
MenuItemType typeAt(std::size_t index) {
    return index % 10 != 0 ? eGroupedMenuItem : index % 40 == 0 ? eCompressedGroupItem : eExpandedGroupItem;
}

template <class Act>
double timeOf(Act const& act) {
    double const start = now();
    act();
    return now() - start;
}

/// Simple items with a message each.
void benchBuilding() {
    std::unique_ptr<Host> const host = makeHost();
    Report report("menu_items", static_cast<long>(numBuilt));
    std::vector<double> building, copying, destroying;
    double const before = residentBytes();
    double bytes = 0;
    for (int r = 0; r < repetitions; ++r) {
        auto data = std::make_unique<MenuData>();
        building.push_back(timeOf([&] {
            WidgetCallback const chosen("chosen");
            for (std::size_t i = 0; i < numBuilt; ++i)
                data->addItem(MenuItem(prefix + Qv::WStringFromInteger(i), chosen));
        }));
        if (r == 0) bytes = (residentBytes() - before) / double(numBuilt);
        std::unique_ptr<MenuData> copy;
        copying.push_back(timeOf([&] { copy = std::make_unique<MenuData>(*data); }));
        check(copy->findItem(Text(L"Menu item 9999")) == numBuilt - 1, "the last item is not found");
        copy.reset();
        destroying.push_back(timeOf([&] { data.reset(); }));
    }
    report.addRuns("build_ms", building);
    report.addRuns("copy_ms", copying);
    report.addRuns("destroy_ms", destroying);
    report.add("rss_bytes_per_item", bytes);
    report.print();
}

/// Where the items of the longest menu stand.
void benchIndices() {
    std::unique_ptr<Host> const host = makeHost();
    Report report("menu_indices", static_cast<long>(MenuData::maxItems));
    std::vector<double> asking, folding, removing;
    for (int r = 0; r < repetitions; ++r) {
        DropDownMenuData data;
        for (std::size_t i = 0; i < MenuData::maxItems; ++i)
            data.addItem(MenuItem(L"item", WidgetCallback("chosen"), typeAt(i)));
        std::size_t right = 0;
        auto const ask = [&] {
            for (unsigned short i = 0; i < MenuData::maxItems; ++i)
                right += data.logicalToPhysical(data.physicalToLogical(i)) == i + (i % 10 == 0) &&
                         data.physicalToVisible(i) <= i;
        };
        asking.push_back(timeOf(ask));
        check(right == MenuData::maxItems, "an item stands elsewhere");
        folding.push_back(timeOf([&] {
            for (unsigned short i = 0; i < MenuData::maxItems - 10; i = static_cast<unsigned short>(i + 10))
                data.getItem(i).setType(eExpandedGroupItem);
            check(data.physicalToVisible(MenuData::maxItems - 1) == MenuData::maxItems - 1, "still folded");
        }));
        auto const isOdd = [&, index = 0](MenuItem const&) mutable { return index++ % 2 == 1; };
        removing.push_back(timeOf([&] { data.removeItemsIf(isOdd); }));
        check(data.numItems() == MenuData::maxItems / 2 + 1, "another number of items is left");
    }
    report.addRuns("ask_all_ms", asking);
    report.addRuns("expand_all_ms", folding);
    report.addRuns("remove_half_ms", removing);
    report.print();
}

} // namespace

/// Without arguments all groups; else those named: items, indices.
int main(int count, char** names) {
    return runWorkloads(count, names, {{"items", benchBuilding}, {"indices", benchIndices}});
}
