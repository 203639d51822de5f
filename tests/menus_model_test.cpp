#include "tests/widget_fixture.h"

#include "buttons/checkbox.h"
#include "foundation/val_server_adaptor.h"
#include "host/events/keybinding_manager.h"
#include "host/services/text_ids.h"
#include "host/windows/look.h"
#include "menus/model/drop_down_menu_data.h"
#include "menus/model/list_view_widget.h"
#include "menus/model/menu_change.h"
#include "menus/model/param_items.h"
#include "menus/model/sub_menu_creator.h"

namespace wainscot {
namespace {

using Text = LightweightString<wchar_t>;

constexpr unsigned short none = MenuData::none;

std::string narrow(Text const& text) {
    return toUTF8(text).c_str();
}

std::string labels(std::span<MenuItem const> items) {
    std::string all;
    for (MenuItem const& item : items) all += (all.empty() ? "" : ",") + narrow(item.label());
    return all;
}

/// An item for each letter: "s" simple, "g" grouped, "E" and "C" headers of expanded and compressed groups;
/// "x" is an inactive simple one, "!" a command.
std::vector<MenuItem> itemsOf(std::string_view letters) {
    std::vector<MenuItem> items;
    for (char const c : letters) {
        MenuItem item{UIString(Text(1, static_cast<wchar_t>(c)))};
        item.setType(c == 'g'   ? eGroupedMenuItem
                     : c == 'E' ? eExpandedGroupItem
                     : c == 'C' ? eCompressedGroupItem
                                : eSimpleMenuItem);
        item.setActive(c != 'x');
        if (c == '!') item.setFlags(item.getFlags() | MenuItemFlag::command);
        items.push_back(item);
    }
    return items;
}

TEST(MenuItem, LabelsHaveParts) {
    struct {
        Text label;
        char const *shown, *right, *drawnRight, *options;
    } const table[] = {
        {L"Open||Ctrl+O", "Open", "Ctrl+O", "Ctrl+O", ""},
        {L"A|B", "A", "", "", ""},
        {L"A|B||C", "A", "C", "C", ""},
        {L"Size||[Small] [Large]", "Size", "[Small] [Large]", "", "Small,Large"},
        {L"Size|| x [ a]  y [b ]z ", "Size", " x [ a]  y [b ]z ", "x y z", "a,b"},
        {L"Key||Ctrl+[", "Key", "Ctrl+[", "Ctrl+[", ""},
        {L"A||[a]b[c", "A", "[a]b[c", "b[c", "a"},
        {L"A||[a||[b]]", "A", "[a||[b]]", "]", "a||[b"},
    };
    for (auto const& row : table) {
        MenuItem const item(row.label);
        EXPECT_EQ(narrow(item.getDisplayString()), row.shown) << narrow(row.label);
        EXPECT_EQ(narrow(item.getRightAlignedText()), row.right) << narrow(row.label);
        EXPECT_EQ(narrow(item.getShownRightAlignedText()), row.drawnRight) << narrow(row.label);
        EXPECT_EQ(labels(item.options()), row.options) << narrow(row.label);
        for (MenuItem const& option : item.options()) EXPECT_EQ(option.getFlags(), MenuItemFlag::active);
        MenuItem const plain = MenuItem::plain(row.label);
        EXPECT_EQ(plain.getDisplayString(), row.label);
        EXPECT_TRUE(plain.getRightAlignedText().empty() && !plain.hasOptions());
    }
    EXPECT_EQ(MenuItem(L"A||[]]").options().size(), 1u);
    EXPECT_FALSE(MenuItem(L"A||[a]", WidgetCallback("x"), eExpandedGroupItem).hasOptions());
    MenuItem const both(L"A||[b]", WidgetCallback("x"), {UIString(L" a ")}, eResStrEllipsis);
    EXPECT_EQ(labels(both.options()), "a...,b...");
    EXPECT_EQ(MenuItem(L"Open||F2", WidgetCallback("x"), eSimpleMenuItem, eResStrEllipsis).label(),
              L"Open...||F2");
    MenuItem renamed = MenuItem::plain(L"a");
    renamed.label(Text(L"<b>|</b>"));
    EXPECT_EQ(renamed.getDisplayString(), L"<b>|</b>");
    EXPECT_EQ(renamed.formattedLabel(), nullptr);
}

TEST(MenuItem, TypesAreWrittenAndRead) {
    char const* const texts[] = {"SimpleMenuItem", "GroupedMenuItem", "ExpandedGroupItem",
                                 "CompressedGroupItem", ""};
    for (unsigned int type = 0; type < 5; ++type) {
        EXPECT_EQ(MenuItemTypeToString(static_cast<MenuItemType>(type)), texts[type]);
        EXPECT_EQ(StringToMenuItemType(texts[type]), type % 4);
    }
    EXPECT_EQ(StringToMenuItemType("groupedMenuItem"), eSimpleMenuItem);
}

TEST(MenuItem, IdsTellItemsApart) {
    MenuItem a(L"x"), b(L"x"), copy = a;
    copy.label(Text(L"y"));
    EXPECT_TRUE(a == copy && a != b && a.hasId(copy.id()) && !a.hasId("0" + copy.id()));
    b.id(a.id());
    EXPECT_TRUE(a == b && b == a);
    b.id("");
    copy.id({"a\0b", 3});
    EXPECT_TRUE(b != a && copy.hasId("a"));
    char const* const absent = nullptr;
    copy.id(absent);
    EXPECT_TRUE(copy == b);
}

TEST(MenuItem, OptionsAreSteppedThrough) {
    MenuItem item(L"A||[a][b][c]");
    item.incCurOption();
    MenuItem copy = item;
    copy.incCurOption();
    EXPECT_EQ(item.currentOption()->label(), L"b");
    for (unsigned int const from : {2u, 3u, 0xFFFFFFFFu}) {
        item.setCurOption(from);
        EXPECT_EQ(item.currentOption() == nullptr, from > 2);
        item.incCurOption();
        EXPECT_EQ(item.getCurOption(), 0u);
    }
    copy.setOptions({});
    copy.incCurOption();
    EXPECT_EQ(copy.getCurOption(), 2u);
}

class Menus : public WidgetTest {
protected:
    WidgetCallback noting(char const* what, std::function<void()> act = {}) {
        return calling([this, what, act](NotifyMsg const& message) {
            std::string line = what;
            if (auto const change = message.payload().cast<MenuData::Change>())
                line += " " + std::to_string(change->item()) + "/" + std::to_string(change->option());
            log_.push_back(line);
            if (act) act();
        });
    }
};

TEST_F(Menus, ItemsLookAsTheSchemeOfNowSays) {
    MenuItem item(L"<b>bold</b>||F2");
    EXPECT_EQ(item.getFlags(), 3u);
    auto const shown = item.formattedLabel();
    ASSERT_NE(shown, nullptr);
    EXPECT_EQ((*shown)[0].spans.size(), 1u);
    EXPECT_EQ(item.formattedLabel(), shown);
    Look::setTheme(eThemeLight);
    EXPECT_NE(item.formattedLabel(), shown);
    EXPECT_EQ(item.getTextColour(), UifStd::getColourScheme().text(eTextEnabled));
    MenuItem copy = item;
    copy.setColours(Colour(1, 0, 0), Colour());
    EXPECT_EQ((*copy.formattedLabel())[0].spans[0].colour, Colour(1, 0, 0));
    EXPECT_EQ(item.getTextColour(), MenuItem::getDefaultColour());
    KeybindingManager::instance().setDefaultKeys("open", {Key::ctrl | 'O'});
    item.setCommand("open");
    EXPECT_EQ(item.getIncidentalText(), L"Ctrl+O");
    item.setCommand("other");
    EXPECT_EQ(item.getIncidentalText(), L"");
}

TEST_F(Menus, IndicesCountWhatTheySay) {
    struct {
        std::string letters, rows, logical, lastInGroup;
        unsigned short numSelectable;
    } const table[] = {
        {"", "", "", "", 0},
        {"Cggs", "0001", "0012", "2---", 3},
        {"sEgxCgs", "0123445", "0112334", "-2--5--", 4},
        {"gCE", "012", "011", "---", 1},
        {"CsgEg", "01123", "00122", "---4-", 3},
    };
    for (auto const& row : table) {
        SCOPED_TRACE(row.letters);
        MenuData const data(itemsOf(row.letters));
        std::string rows, logical, lasts;
        auto const digit = [](unsigned short index) { return index == none ? '-' : char('0' + index); };
        auto const end = static_cast<unsigned short>(row.letters.size());
        for (unsigned short p = 0; p < end; ++p) {
            rows += digit(data.physicalToVisible(p));
            logical += digit(data.physicalToLogical(p));
            lasts += digit(data.getLastInGroup(p));
            bool const isHeader = row.letters[p] < 'a';
            EXPECT_EQ(data.isGroupStart(p), isHeader);
            EXPECT_TRUE(isHeader || data.logicalToPhysical(data.physicalToLogical(p)) == p);
            bool const isHidden = p > 0 && rows[p] == rows[p - 1u];
            EXPECT_EQ(data.rows().isHidden(p), isHidden);
            EXPECT_TRUE(isHidden || data.rows().itemOfRow(data.physicalToVisible(p)) == p);
        }
        EXPECT_EQ(rows, row.rows);
        EXPECT_EQ(logical, row.logical);
        EXPECT_EQ(lasts, row.lastInGroup);
        EXPECT_EQ(data.numSelectableItems(), row.numSelectable);
        EXPECT_TRUE(data.physicalToVisible(end) == none && data.physicalToLogical(end) == none &&
                    data.logicalToPhysical(end) == none && data.getLastInGroup(end) == none);
        EXPECT_FALSE(data.isSelectable(end) || data.isGroupStart(end) || data.rows().isHidden(end));
    }
}

TEST_F(Menus, IndicesFollowFoldingAndEditing) {
    MenuData data(itemsOf("Eggs"));
    EXPECT_EQ(data.physicalToVisible(3), 3);
    MenuItem& header = data.getItem(0);
    header.setType(eCompressedGroupItem);
    EXPECT_EQ(data.physicalToVisible(3), 1);
    header = itemsOf("s")[0];
    EXPECT_EQ(data.physicalToLogical(3), 3);
    EXPECT_TRUE(data.removeItems(0, 2));
    EXPECT_EQ(data.logicalToPhysical(1), 1);
    EXPECT_TRUE(data.insertItem(1, itemsOf("E")[0]));
    EXPECT_TRUE(data.insertItem(3, itemsOf("s")[0]) && data.removeItem(3) && data.removeItems(9, 0));
    EXPECT_EQ(labels(data.items()), "g,E,s");
    EXPECT_EQ(data.physicalToLogical(2), 1);
    EXPECT_EQ(data.findItem(Text(L"E")), 1);
    EXPECT_EQ(data.findItem(data.getItem(2).id()), 2);
    EXPECT_EQ(data.findItem(Text(L"e")), none);
    expectDiagnostic("menu index refused");
    EXPECT_FALSE(data.removeItems(2, 2) || data.removeItem(3) || data.insertItem(4, MenuItem()));
    EXPECT_EQ(Diagnostics::countOf("menu index refused"), 3u);
    EXPECT_EQ(data.numItems(), 3u);
}

TEST_F(Menus, ListsHaveUpTo65535Items) {
    std::vector<MenuItem> items = itemsOf(std::string(MenuData::maxItems, 'g'));
    for (std::size_t p = 0; p < items.size(); p += 5) items[p].setType(eCompressedGroupItem);
    DropDownMenuData data(items);
    for (unsigned short p = 0; p < none; ++p) {
        EXPECT_EQ(data.physicalToVisible(p), p / 5);
        EXPECT_EQ(data.logicalToPhysical(data.physicalToLogical(p)), p + (p % 5 == 0));
    }
    expectDiagnostic("menu too long");
    EXPECT_FALSE(data.addItem(MenuItem()) || data.insertItem(0, MenuItem()));
    items.emplace_back();
    EXPECT_FALSE(data.setItems(items));
    EXPECT_TRUE(MenuData(items).isEmpty());
    EXPECT_EQ(data.numItems(), MenuData::maxItems);

    unsigned short const last = data.logicalToPhysical(0x7FFF);
    EXPECT_TRUE(data.setSelectedItemPhysical(last, false));
    EXPECT_EQ(data.getSelectedItemPhysical(), last);
    expectDiagnostic("menu index refused");
    EXPECT_FALSE(data.setSelectedItemPhysical(static_cast<unsigned short>(last + 1), false));
    EXPECT_EQ(data.getSelectedItem(), 0x7FFF);
    EXPECT_EQ(data.removeItemsIf([](MenuItem const& item) { return !item.isHeader(); }), 52428u);
    EXPECT_EQ(data.rows().numRows(), 13107u);
}

TEST_F(Menus, ChoosingTellsWhoeverIsLeft) {
    auto* const owner = show(new RecordingParent(10, 10));
    auto* const sender = show(new Glob(10, 10));
    auto data = std::make_unique<MenuData>(itemsOf("ss"));
    MenuItem& item = data->getItem(0);
    item.setCallback(WidgetCallback("gone"));
    item.setCallback(WidgetCallback("first"));
    item.addCallback(noting("called"));
    item.addCallback(WidgetCallback("last"));
    EXPECT_TRUE(data->issueCallback(0, owner, sender));
    driver_.settle();
    EXPECT_EQ(owner->names(), "first last");
    EXPECT_EQ(owner->messages()[0].sender, sender);
    EXPECT_EQ(owner->messages()[0].data, nullptr);
    EXPECT_TRUE(data->issueCallback(0, nullptr, nullptr) && data->issueCallback(1, owner, nullptr));

    // With options, and data that dies before the message has come.
    item.setOptions({MenuItem(L"a"), MenuItem(L"b")});
    item.setCurOption(70'000);
    data->issueCallback(0, owner, sender);
    EXPECT_THAT(takeLog(), ElementsAre("called", "called", "called 0/65535"));
    destroy(sender);
    driver_.settle();
    ASSERT_EQ(owner->messages().size(), 4u);
    auto const change = owner->messages()[2].data.cast<MenuData::Change>();
    ASSERT_TRUE(change);
    EXPECT_EQ(change->data(), nullptr);
    EXPECT_EQ(owner->messages()[2].sender, nullptr);
    EXPECT_EQ(MenuData::Change(0, 0, change.get()).data(), static_cast<iObject*>(change.get()));

    // The first call destroys the list and the owner, and throws; the second one still comes.
    item.setCallback(noting("destroys", [&] {
        data.reset();
        destroy(owner);
        throw std::runtime_error("no more");
    }));
    item.addCallback(WidgetCallback("dropped"));
    item.addCallback(noting("still called"));
    item.setOptions({});
    EXPECT_THROW(data->issueCallback(0, owner, owner), std::runtime_error);
    EXPECT_THAT(takeLog(), ElementsAre("destroys", "still called"));
    expectDiagnostic("menu index refused");
    EXPECT_FALSE(MenuData().issueCallback(0, root_, nullptr));
}

/// Calls the test at both notifications of a server.
struct Watcher final : ValClient<int> {
    explicit Watcher(std::function<void(NotifierEvent<int> const&)> function) : act(std::move(function)) {}
    void handleNotification(NotifierEvent<int> const& event) override { act(event); }
    std::function<void(NotifierEvent<int> const&)> act;
};

TEST_F(Menus, SelectingInADropDown) {
    auto data = std::make_unique<DropDownMenuData>(itemsOf("Esxg!E"));
    EXPECT_EQ(data->getSelectedItemNameW(), L"s");
    Watcher watcher([&](auto const& event) {
        log_.push_back((event.type == ValServerBase::preValChangedMsgType ? "pre " : "post ") +
                       std::to_string(event.value));
    });
    watcher.attach(*data);
    for (unsigned short p = 0; p < 6; ++p) data->getItem(p).setCallback(noting("call"));
    auto const select = [&](unsigned short p, bool notify) {
        bool const taken = data->setSelectedItemPhysical(p, notify);
        std::string line = taken ? "" : "refused ";
        for (std::string const& heard : takeLog()) line += heard + ", ";
        return line + narrow(data->getSelectedItemNameW()) + std::to_string(data->getSelectedItem());
    };
    expectDiagnostic("menu index refused");
    EXPECT_EQ(select(3, false), "g2");
    EXPECT_EQ(select(2, true), "pre 2, post 1, call, x1");
    EXPECT_EQ(select(4, true), "call, x1") << "a command";
    EXPECT_EQ(select(4, false), "refused x1");
    EXPECT_EQ(select(0, false), "s0") << "of a header the next";
    EXPECT_EQ(select(5, true), "refused s0") << "there is none behind it";
    data->clearSelection(true);
    EXPECT_THAT(takeLog(), ElementsAre("pre 0", "post -1"));
    EXPECT_EQ(data->getSelectedItemPhysical(), none);
    *data = 40'000;
    EXPECT_EQ(data->getSelectedItemNameW(), L"");

    takeLog();
    watcher.act = [&](auto const&) { data->setItems(itemsOf("g")); };
    EXPECT_EQ(select(1, true), "call, g0") << "its own, though another item stands there now";
    data->getItem(0).setCallback(noting("call"));
    watcher.act = [&](auto const&) { data.reset(); };
    EXPECT_TRUE(data->setSelectedItemPhysical(0, true));
    EXPECT_THAT(takeLog(), IsEmpty());
}

TEST_F(Menus, SubMenusAreMadeOrNot) {
    using SubMenu = MenuItem::SubMenu;
    auto* const menu = show(new Glob(10, 10));
    auto data = std::make_unique<MenuData>();
    auto const create = [&](std::function<SubMenu(Glob&)> const& make) {
        data->setItems({MenuItem(L"more", makeSubMenuCreator(make))});
        EXPECT_EQ(data->getItem(0).getFlags(), 19u);
        return data->getItem(0).createSubMenu(*menu);
    };
    expectDiagnostic("sub-menu not made");
    expectDiagnostic("exception in handler");
    EXPECT_FALSE(create([](Glob&) { return SubMenu(); }));
    EXPECT_FALSE(create([](Glob&) -> SubMenu { throw std::runtime_error("none"); }));
    EXPECT_FALSE(create([](Glob&) {
        auto* const dead = new Glob(1, 1);
        destroy(dead);
        return SubMenu{{}, dead};
    }));
    EXPECT_FALSE(MenuItem(L"x").createSubMenu(*menu));
    EXPECT_EQ(Diagnostics::countOf("sub-menu not made"), 4u);
    EXPECT_EQ(Diagnostics::countOf("exception in handler"), 1u);
    auto const made = create([&](Glob&) {
        data->clear();
        return SubMenu{{}, new Glob(1, 1)};
    });
    EXPECT_TRUE(is_good_glob_ptr(made.widget));
    destroy(made.widget);
    EXPECT_FALSE(create([](Glob& asking) {
        destroy(&asking);
        return SubMenu{{}, new Glob(1, 1)};
    })) << "and the widget has gone with the menu";
}

TEST_F(Menus, ParametersAreEditedThroughTheirItems) {
    using namespace GenericParam;
    auto const loop = Qv::makePtr<BoolParam>(L"Loop");
    auto const size = Qv::makePtr<MultiParam>(L"Size", std::vector<UIString>{L"Small", L"[L|"}, 1,
                                              eHintPlainText | eHintClosesMenu);
    auto const speed = Qv::makePtr<ChoiceParam>(L"Speed", std::vector<UIString>{L"x1", L"x2"});
    auto const bake = Qv::makePtr<ActionParam>(L"Bake");
    auto const asParam = [](auto const& param) { return Qv::Ptr<iParam>(param); };
    bake->setActive(false);
    expectDiagnostic("parameter without an item");
    MenuData data(makeItems(
        {{UIString(), {asParam(loop)}}, {L"More", {asParam(size), {}, asParam(speed), asParam(bake)}}}));
    EXPECT_EQ(labels(data.items()), "Loop,More,Size,Speed,Bake");
    EXPECT_EQ(data.getLastInGroup(1), 4);
    EXPECT_EQ(data.getItem(2).currentOption()->getDisplayString(), L"[L|");
    EXPECT_EQ(data.getItem(2).currentOption()->getFlags(), 5u);
    EXPECT_EQ(data.getItem(0).currentOption()->label(), resourceStrW(TextId::off));
    EXPECT_EQ(data.getItem(4).getFlags(), 34u);

    int changes = 0;
    auto const count = [&](NotifyMsg const&) { return ++changes; };
    NotifierSubscription const heard =
        loop->subscribe(BoolParam::valueChangedMsg, makeCallback<int, NotifyMsg>(count));
    data.issueCallback(0, nullptr, nullptr);
    EXPECT_TRUE(loop->value());
    auto pause = std::make_unique<NotifyWithDisable::Pause>(*loop);
    data.issueCallback(0, nullptr, nullptr);
    EXPECT_FALSE(loop->value());
    EXPECT_EQ(changes, 1);
    pause.reset();
    expectDiagnostic("notification enabled twice");
    loop->enableNotification();
    loop->setValue(true);
    EXPECT_EQ(changes, 2);
    data.getItem(2).incCurOption();
    data.issueCallback(2, nullptr, nullptr);
    EXPECT_EQ(size->value(), 0u);
    data.getItem(2).setCurOption(9);
    data.issueCallback(2, nullptr, nullptr);
    EXPECT_EQ(size->value(), 0u) << "there is no such value";
    data.getItem(3).createSubMenu(*root_).items->issueCallback(1, nullptr, nullptr);
    EXPECT_EQ(speed->value(), 1u);
    data.issueCallback(4, nullptr, nullptr);
    EXPECT_EQ(bake->value(), 0u);
    bake->setActive(true);
    data.issueCallback(4, nullptr, nullptr);
    EXPECT_EQ(bake->value(), 1u);
}

TEST_F(Menus, ParametersAreSetFromTexts) {
    using namespace GenericParam;
    BoolParam loop(L"Loop", true);
    MultiParam size(L"Size", {L"Small", L"1"}, 1);
    std::string values;
    for (wchar_t const* const text : {L"yes", L"0", L"true", L"Small", L"1", L"2", L"-1"}) {
        values += loop.setValueFromString(text) ? " b" : " ";
        values += std::to_string(loop.value()) + (size.setValueFromString(text) ? "s" : "");
        values += std::to_string(size.value());
    }
    EXPECT_EQ(values, " 11 b0s0 b10 1s0 b1s1 11 11");
    expectDiagnostic("parameter value refused");
    EXPECT_FALSE(size.setValue(2));
    ActionParam bake(L"Bake");
    EXPECT_TRUE(bake.setValueFromString(L"") && bake.value() == 1);
}

TEST_F(Menus, AParameterMayGoBeforeItsWidget) {
    auto param = Qv::makePtr<GenericParam::BoolParam>(L"Loop");
    auto* const box = show(new Checkbox(Checkbox::InitArgs(L"Loop")));
    bindToServer<bool>(*box, param->server());
    auto const die = makeCallback<int, NotifyMsg>([&](NotifyMsg const&) { return param.reset(), 1; });
    NotifierSubscription const heard = param->subscribe("", die);
    pressAt(box, 5);
    driver_.release();
    EXPECT_FALSE(param);
}

TEST_F(Menus, AListAsksItsAdaptor) {
    struct List final : ListViewWidget {
        void showItems(std::vector<MenuItem> items, eRedrawFlag) override { shown += labels(items); }
        std::string shown;
    };
    struct Adaptor final : ListViewAdaptorBase {
        std::vector<MenuItem> getItems() const override { return itemsOf("sE"); }
        bool requestItemSelect(unsigned int) override { return list.reset(), false; }
        std::unique_ptr<List> list = std::make_unique<List>();
    };
    auto const adaptor = Qv::makePtr<Adaptor>();
    List other, &list = *adaptor->list;
    EXPECT_TRUE(list.requestItemSelect(0));
    other.setListViewAdaptor(adaptor);
    list.setListViewAdaptor(adaptor);
    adaptor->forceWidgetUpdate(eRedrawYes);
    EXPECT_EQ(list.shown + other.shown, "s,E");
    EXPECT_FALSE(list.requestItemSelect(0));
    EXPECT_EQ(adaptor->getWidget(), nullptr);
    adaptor->forceWidgetUpdate(eRedrawYes);
}

} // namespace
} // namespace wainscot
