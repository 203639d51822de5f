#include "bench/driving.h"
#include "host/windows/event_loop.h"
#include "host/windows/glob_manager.h"
#include "menus/drop_down_menu_button.h"
#include "menus/model/drop_down_menu_data.h"
#include "menus/model/sub_menu_creator.h"

#include <string>

/// The items of long menus.
namespace {

using namespace wainscot;
using namespace wainscot::Measuring;
using Text = LightweightString<wchar_t>;

constexpr int repetitions = 9;
constexpr std::size_t numBuilt = 10'000;

constexpr unsigned short screenHeight = 1050;

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

/// A window from which menus are opened.
class Desk {
public:
    Desk() : host_(makeHost()), root_(new Glob(200, 100)) {
        host_->globManager().realize(root_, XY<int>(0, 0));
        host_->loop().settle();
    }
    Host& host() { return *host_; }
    Glob* root() { return root_; }
    /// Milliseconds until the menu is painted.
    double open(Menu* menu) {
        return timeOf([&] {
            check(menu->openAt(XY<int>(100, 900)), "the menu has not opened");
            host_->loop().settle();
        });
    }
    double key(std::uint32_t code) { return timeInput(*host_, keyInput(code)); }

private:
    std::unique_ptr<Host> host_;
    Glob* root_;
};

Qv::Ptr<MenuData> numbered() {
    auto data = Qv::makePtr<MenuData>();
    WidgetCallback const chosen("chosen");
    for (std::size_t i = 0; i < numBuilt; ++i)
        data->addItem(MenuItem(prefix + Qv::WStringFromInteger(i), chosen));
    return data;
}

/// A long menu: built, popped up, walked through and closed.
void benchMenu() {
    constexpr int numMoves = 500;
    Report report("W4", static_cast<long>(numBuilt));
    Desk desk;
    Steps moves;
    std::vector<double> building, opening, closing;
    for (int r = 0; r < repetitions; ++r) {
        Qv::Ptr<MenuData> data;
        building.push_back(timeOf([&] { data = numbered(); }));
        Menu* menu = nullptr;
        double const making = timeOf([&] {
            Menu::InitArgs args(data, desk.root());
            // The screen without a display is higher than any other.
            args.maxHeight = screenHeight;
            menu = new Menu(args);
        });
        opening.push_back(making + desk.open(menu));
        std::vector<double> times;
        for (int i = 0; i < numMoves; ++i) times.push_back(desk.key(Key::down));
        moves.add(times);
        check(menu->getHighlightedItem() == numMoves - 1, "another item is highlighted");
        if (r + 1 == repetitions) addPicture(report, menu);
        closing.push_back(desk.key(Key::escape) / 1000);
        check(!is_good_glob_ptr(menu), "the menu is still open");
    }
    report.addRuns("build_ms", building);
    report.addRuns("popup_first_paint_ms", opening);
    moves.addTo(report, "move_us");
    report.addRuns("close_ms", closing);
    report.print();
}

/// A group of half the items, folded and unfolded.
void benchFolding() {
    Report report("menu_fold", static_cast<long>(numBuilt));
    Desk desk;
    std::vector<double> folding, unfolding;
    for (int r = 0; r < repetitions; ++r) {
        Qv::Ptr<MenuData> const data = numbered();
        data->getItem(0).setType(eExpandedGroupItem);
        for (unsigned short i = 1; i < numBuilt; ++i) data->getItem(i).setType(eGroupedMenuItem);
        data->getItem(numBuilt / 2).setType(eExpandedGroupItem);
        auto* const menu = new Menu(data, desk.root());
        desk.open(menu);
        XY<int> const header = menu->visibleItems().front().box.centre() + menu->screenBox().bottomLeft();
        auto const flip = [&] {
            timeInput(desk.host(), pointerInput(InputEvent::Kind::pointerMoved, header));
            InputEvent press = pointerInput(InputEvent::Kind::pointerPressed, header);
            press.button = InputEvent::Button::left;
            InputEvent release = press;
            release.kind = InputEvent::Kind::pointerReleased;
            return (timeInput(desk.host(), press) + timeInput(desk.host(), release)) / 1000;
        };
        std::size_t const before = menu->numNonHiddenItems();
        folding.push_back(flip());
        check(menu->numNonHiddenItems() < before, "nothing was folded");
        unfolding.push_back(flip());
        check(menu->numNonHiddenItems() == before, "nothing was unfolded");
        desk.key(Key::escape);
    }
    report.addRuns("fold_ms", folding);
    report.addRuns("unfold_ms", unfolding);
    report.print();
}

/// A menu whose first item opens one of the same kind.
Qv::Ptr<MenuData> cascade() {
    MenuItem more(L"More", makeSubMenuCreator([](Glob&) { return cascade(); }));
    return Qv::makePtr<MenuData>(std::vector<MenuItem>{more, MenuItem(L"One"), MenuItem(L"Two")});
}

void benchCascade() {
    constexpr int depth = 10;
    Report report("menu_cascade", depth);
    Desk desk;
    std::vector<double> opening, closing;
    for (int r = 0; r < repetitions; ++r) {
        auto* const menu = new Menu(cascade(), desk.root());
        desk.open(menu);
        desk.key(Key::down);
        double time = 0;
        for (int i = 1; i < depth; ++i) time += desk.key(Key::right) / 1000;
        opening.push_back(time);
        int levels = 0;
        for (Menu* level = menu; level; level = dynamic_cast<Menu*>(level->getSubMenu())) ++levels;
        check(levels == depth, "another number of menus is open");
        closing.push_back(timeOf([&] {
            delete menu;
            desk.host().loop().settle();
        }));
    }
    report.addRuns("open_ms", opening);
    report.addRuns("close_ms", closing);
    report.print();
}

/// A long drop-down, opened and closed; then stepped through by the wheel, painted each time.
void benchDropDown() {
    constexpr int numSteps = 1000;
    Report report("drop_down", static_cast<long>(numBuilt));
    Desk desk;
    Qv::Ptr<MenuData> const source = numbered();
    auto const items = source->items();
    auto const data = Qv::makePtr<DropDownMenuData>(std::vector<MenuItem>(items.begin(), items.end()));
    DropDownMenuButton::InitArgs args(data, 150, 24);
    args.maxHeight = screenHeight;
    auto* const button = new DropDownMenuButton(args);
    desk.root()->addChild(button, BottomLeft(10, 10));
    desk.host().loop().settle();
    button->claimKbdFocus();
    std::vector<double> opening, closing;
    Steps steps;
    for (int r = 0; r < repetitions; ++r) {
        opening.push_back(desk.key(Key::function(4)) / 1000);
        check(button->isDropDownOpen(), "the list has not opened");
        closing.push_back(desk.key(Key::escape) / 1000);
        check(!button->isDropDownOpen(), "the list is still open");
        data->setSelectedItemPhysical(0, true);
        timeInput(desk.host(), pointerInput(InputEvent::Kind::pointerMoved, button->screenBox().centre()));
        std::vector<double> times;
        for (int i = 0; i < numSteps; ++i) {
            InputEvent turn = pointerInput(InputEvent::Kind::wheel, button->screenBox().centre());
            turn.amount = -1;
            times.push_back(timeInput(desk.host(), turn));
        }
        steps.add(times);
        check(button->getSelectedItem() == numSteps, "another item is selected");
    }
    addPicture(report, desk.root());
    report.addRuns("open_ms", opening);
    report.addRuns("close_ms", closing);
    steps.addTo(report, "wheel_step_us");
    report.print();
}

} // namespace

/// Without arguments all groups; else those named: items, indices, W4, fold, cascade, drop_down.
int main(int count, char** names) {
    return runWorkloads(count, names,
                        {{"items", benchBuilding},
                         {"indices", benchIndices},
                         {"W4", benchMenu},
                         {"fold", benchFolding},
                         {"cascade", benchCascade},
                         {"drop_down", benchDropDown}});
}
