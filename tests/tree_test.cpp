#include "tests/sent_notifications.h"
#include "tests/widget_fixture.h"

#include "buttons/button.h"
#include "driver/consistency.h"
#include "host/base/convert.h"
#include "host/objects/drag_drop_item.h"
#include "host/windows/drag_drop_manager.h"
#include "menus/model/menu_item.h"
#include "tables/tree_view.h"

#include <map>
#include <random>

namespace wainscot {
namespace {

using Text = LightweightString<wchar_t>;

/// "a" holds "a1", "a2" and so on down to `depth`; letters are branches at the top.
class Letters final : public iTreeViewAdaptor {
public:
    Letters() {
        for (wchar_t const letter : std::wstring(L"abcdef")) children[L""].push_back(Text(1, letter));
        for (Text const& name : children[L""])
            for (int i = 1; i <= 3; ++i) children[name].push_back(name + Qv::WStringFromInteger(i));
        children[L"a2"] = {L"a21", L"a22"};
    }
    Children listChildren(Item const* parent) override {
        if (auto const act = onList) act();
        Children listed;
        listed.isPending = isPending;
        if (isPending && parent) return listed;
        for (Text const& name : children[parent ? parent->name : Text()])
            listed.items.push_back(itemOf(name));
        return listed;
    }
    Item itemOf(Text const& name) const {
        return {name, static_cast<std::uint8_t>(children.count(name) ? Item::branch : 0)};
    }
    bool canTag(Item const& item) const override { return item.name != untaggable; }
    bool canRename(Item const&) const override { return true; }
    bool rename(Item const& item, Text const& name) override {
        if (name == L"no") return false;
        for (auto& [parent, names] : children) std::ranges::replace(names, item.name, name);
        if (auto const own = children.extract(item.name)) children[name] = own.mapped();
        return true;
    }
    std::vector<MenuItem> getMenuItems(std::vector<Item> const& items) override {
        offered.clear();
        for (Item const& item : items) offered.push_back(item.name);
        return {MenuItem(L"Delete")};
    }
    LightweightString<char> getDragType(Item const&) const override { return "letter"; }
    Qv::Ptr<DragDropItem> createDragDropItem(Item const& item, XY<int> const&) override {
        return Qv::Ptr<DragDropItem>(new DragDropItem("letter", item.name));
    }
    bool canAcceptDrop(Text const& target, DragDropItem const*, Glob::eDropReason) override {
        return children.count(target) != 0;
    }
    bool acceptDrop(Text const& target, DragDropItem* item, Glob::eDropReason) override {
        dropped = item->label() + L" on " + target;
        if (auto const act = onDrop) act();
        return true;
    }
    bool canInsertDrop(Text const&, Text const&, DragDropItem const*) override { return inserts; }
    bool insertDrop(Text const& parent, Text const& before, DragDropItem* item) override {
        dropped = item->label() + L" in " + parent + L" before " + before;
        return true;
    }

    std::map<Text, std::vector<Text>> children;
    std::vector<Text> offered;
    Text untaggable;
    Text dropped;
    bool inserts = false;
    bool isPending = false;
    std::function<void()> onList;
    std::function<void()> onDrop;
};

class Trees : public WidgetTest {
protected:
    static constexpr int line = 22;

    TreeView* make(iTreeViewAdaptor& adaptor, unsigned int options = 0) {
        TreeView::InitArgs args(200, toSize16(5 * line));
        args.adaptor = &adaptor;
        args.options = options;
        tree_ = show(new TreeView(args), 20, 20);
        events_.clear();
        subscription_ = tree_->addListener([this](TreeView::eEventType type) {
            events_ += std::to_string(type) + " ";
            if (auto const act = onEvent_) act(type);
        });
        tree_->claimKbdFocus();
        driver_.settle();
        return tree_;
    }
    std::string events() {
        driver_.settle();
        return std::exchange(events_, {});
    }
    /// The names of all rows.
    std::string rows() const {
        std::string names;
        for (unsigned int row = 0; row < tree_->numRows(); ++row)
            names += std::string(toUTF8(tree_->getRow(row).item.name).c_str()) + " ";
        return names;
    }
    std::string tagged() const {
        std::string names;
        for (TreeItem const& item : tree_->getTaggedItems())
            names += std::string(toUTF8(item.name).c_str()) + " ";
        return names;
    }
    std::string selected() const { return toUTF8(tree_->getSelectedItem().value_or(L"-")).c_str(); }
    XY<int> placeOf(Text const& name, TreeView::eBoundsType part = TreeView::eLabelBounds) {
        int const row = tree_->findItem(name);
        IntBox const box = row < 0 ? IntBox() : tree_->getItemBounds(static_cast<unsigned int>(row), part);
        return box.centre() + tree_->screenBox().bottomLeft();
    }
    void click(Text const& name, std::uint32_t modifiers = 0) {
        driver_.holdModifiers(modifiers);
        driver_.clickAt(placeOf(name));
        driver_.holdModifiers(0);
        driver_.advance(1000);
    }
    void keys(std::initializer_list<std::uint32_t> codes) {
        for (std::uint32_t const code : codes) driver_.key(code);
    }

    // They outlive the tree.
    Letters letters_;
    TreeView* tree_ = nullptr;
    NotifierSubscription subscription_;
    std::string events_;
    std::function<void(TreeView::eEventType)> onEvent_;
};

TEST_F(Trees, BranchesOpenCloseAndRememberWhatWasOpen) {
    make(letters_);
    EXPECT_EQ(rows(), "a b c d e f ");
    driver_.clickAt(placeOf(L"a", TreeView::eExpanderBounds));
    EXPECT_EQ(rows(), "a a1 a2 a3 b c d e f ");
    EXPECT_EQ(selected(), "-") << "the expander selects nothing";
    EXPECT_TRUE(tree_->expand(L"a2"));
    EXPECT_FALSE(tree_->expand(L"a2"));
    EXPECT_EQ(events(), "11 11 ");
    EXPECT_EQ(tree_->findItemByName(L"a22")->depth, 2);
    EXPECT_EQ(tree_->findItemByName(L"a22")->parentName, L"a2");
    tree_->setSelectedItem(L"a21");
    EXPECT_TRUE(tree_->collapse(L"a"));
    EXPECT_EQ(rows(), "a b c d e f ");
    EXPECT_EQ(events(), "12 13 ");
    EXPECT_TRUE(tree_->expand(L"a"));
    EXPECT_EQ(rows(), "a a1 a2 a21 a22 a3 b c d e f ") << "the branch inside is open again";
    EXPECT_EQ(events(), "11 ");
    EXPECT_EQ(selected(), "a21");
    // The last row: its new rows are shown, but it stays in sight itself.
    tree_->setWindowTop(1 << 30);
    EXPECT_FALSE(tree_->isVisible(L"a"));
    for (int i = 4; i <= 20; ++i) letters_.children[L"f"].push_back(L"f" + Qv::WStringFromInteger(i));
    EXPECT_TRUE(tree_->expand(L"f"));
    EXPECT_EQ(tree_->getWindowTop(), tree_->findItem(L"f") * line);
    EXPECT_TRUE(tree_->isFullyVisible(static_cast<unsigned int>(tree_->findItem(L"f4"))));
    tree_->setWindowTop(tree_->findItem(L"c") * line - 3 * line);
    EXPECT_TRUE(tree_->expand(L"c"));
    EXPECT_EQ(tree_->getWindowTop(), tree_->findItem(L"c3") * line - 4 * line) << "no further than needed";
    EXPECT_EQ(Consistency(driver_).fault(), "");
}

TEST_F(Trees, KeysGoEverywhere) {
    make(letters_);
    keys({Key::down});
    EXPECT_EQ(selected(), "a");
    keys({Key::right, Key::right});
    EXPECT_EQ(selected(), "a1");
    EXPECT_EQ(events(), "1 11 1 ");
    keys({Key::down, Key::shift | '*', Key::end});
    EXPECT_EQ(rows(), "a a1 a2 a21 a22 a3 b c d e f ");
    EXPECT_EQ(selected(), "f");
    EXPECT_TRUE(tree_->isFullyVisible(10));
    keys({Key::home, Key::pageDown});
    EXPECT_EQ(selected(), "a22");
    keys({Key::left});
    EXPECT_EQ(selected(), "a2") << "out of the branch";
    keys({Key::left, Key::left, '-'});
    EXPECT_EQ(rows(), "a b c d e f ");
    driver_.advance(3000);
    driver_.type(L"D");
    EXPECT_EQ(selected(), "d");
    keys({'+'});
    EXPECT_TRUE(tree_->isExpanded(L"d")) << "no name goes on so";
    driver_.advance(3000);
    driver_.type(L"d2");
    EXPECT_EQ(selected(), "d2");
    EXPECT_TRUE(tree_->isVisible(L"d2"));
    events();
    keys({Key::enter});
    EXPECT_EQ(events(), "2 ");
    driver_.doubleClick(driver_.findItem(Role::treeItem, L"d"));
    EXPECT_EQ(rows(), "a b c d e f ");
    EXPECT_EQ(events(), "1 12 2 ");
}

TEST_F(Trees, TagsFollowClicksAndTheirRows) {
    make(letters_, TreeView::allowsTags);
    tree_->expand(L"a");
    click(L"a1");
    click(L"a3", Key::shift);
    EXPECT_EQ(tagged(), "a1 a2 a3 ");
    click(L"a2", Key::ctrl);
    EXPECT_EQ(tagged(), "a1 a3 ");
    EXPECT_EQ(events(), "11 1 3 1 3 1 3 ");
    tree_->expand(L"a2");
    EXPECT_EQ(tagged(), "a1 a3 ");
    std::ranges::reverse(letters_.children[L"a"]);
    tree_->refresh();
    EXPECT_EQ(rows(), "a a3 a2 a21 a22 a1 b c d e f ");
    EXPECT_EQ(tagged(), "a3 a1 ");
    std::erase(letters_.children[L"a"], L"a1");
    tree_->refresh(L"a");
    EXPECT_EQ(tagged(), "a3 ");
    EXPECT_EQ(events(), "11 3 ");
    tree_->collapse(L"a");
    EXPECT_FALSE(tree_->anyTaggedItems()) << "what is hidden is not tagged";
    // Siblings only.
    tree_->expand(L"a");
    tree_->setOptions(TreeView::allowsTags | TreeView::tagsSiblingsOnly);
    auto const row = [&](wchar_t const* name) { return static_cast<unsigned int>(tree_->findItem(name)); };
    EXPECT_TRUE(tree_->canTagBoth(row(L"a3"), row(L"a2")));
    EXPECT_TRUE(tree_->canTagBoth(row(L"a"), row(L"b")));
    EXPECT_FALSE(tree_->canTagBoth(row(L"a"), row(L"a2")));
    letters_.untaggable = L"b";
    EXPECT_FALSE(tree_->canTagBoth(row(L"a"), row(L"b")));
    click(L"a");
    click(L"a2", Key::ctrl);
    EXPECT_EQ(tagged(), "a2 ") << "no sibling: it replaces";
    tree_->setWindowTop(0);
    click(L"a");
    keys({Key::shift | Key::end});
    EXPECT_EQ(tagged(), "a c d e f ");
    tree_->setWindowTop(0);
    click(L"a");
    keys({Key::ctrl | 'A'});
    EXPECT_EQ(tagged(), "a c d e f ");
    keys({Key::ctrl | 'A'});
    EXPECT_EQ(tagged(), "");
    keys({Key::home, Key::ctrl | Key::end, Key::space});
    EXPECT_EQ(tagged(), "a f ") << "by keys alone";
    keys({Key::home, Key::space});
    driver_.moveTo(placeOf(L"a"));
    driver_.clickAt(placeOf(L"a"), Driver::Button::right);
    EXPECT_EQ(letters_.offered, std::vector<Text>{L"a"});
}

TEST_F(Trees, ItemsAreRenamedInTheirPlace) {
    make(letters_);
    tree_->expand(L"b");
    tree_->changeSelectedItem(L"b");
    events();
    keys({Key::function(2)});
    ASSERT_TRUE(tree_->isEditing());
    EXPECT_TRUE(tree_->getRow(1).nameBox);
    driver_.type(L"blue");
    keys({Key::enter});
    EXPECT_FALSE(tree_->isEditing());
    EXPECT_EQ(rows(), "a blue b1 b2 b3 c d e f ") << "it stays open";
    EXPECT_EQ(selected(), "blue");
    EXPECT_EQ(events(), "4 ");
    EXPECT_EQ(get_kbd_focus(), tree_);
    // What is typed stays while others change; a text that is another's name selects nothing else.
    keys({Key::function(2)});
    driver_.type(L"gre");
    tree_->refresh();
    EXPECT_TRUE(tree_->isEditing());
    driver_.wheelAt(tree_->screenBox().centre(), -9);
    EXPECT_FALSE(tree_->isVisible(L"blue"));
    driver_.type(L"en");
    keys({Key::enter});
    EXPECT_EQ(selected(), "green");
    letters_.rename({L"green", 1}, L"blue");
    tree_->refresh();
    tree_->changeSelectedItem(L"blue");
    events();
    // Refused, taken back, and gone meanwhile.
    keys({Key::function(2)});
    driver_.type(L"no");
    keys({Key::enter});
    EXPECT_TRUE(tree_->isPresent(L"blue"));
    keys({Key::function(2)});
    driver_.type(L"x");
    keys({Key::escape});
    EXPECT_TRUE(tree_->isPresent(L"blue"));
    keys({Key::function(2)});
    letters_.children[L""].erase(letters_.children[L""].begin() + 1);
    tree_->refresh();
    EXPECT_FALSE(tree_->isEditing());
    EXPECT_EQ(events(), "13 ");
    EXPECT_EQ(rows(), "a c d e f ");
    keys({Key::down});
    EXPECT_EQ(selected(), "d") << "the keys go on from where it was";
    // Without the focus, and taken by a press on what takes no focus.
    root_->claimKbdFocus();
    EXPECT_TRUE(tree_->enableEditing(L"a"));
    EXPECT_EQ(Consistency(driver_).fault(), "");
    driver_.type(L"z");
    driver_.clickAt(root_->globXYToScreenXY({2, 2}));
    EXPECT_EQ(rows(), "z c d e f ");
    // A long way in, it can be read and edited.
    Text name = L"z";
    for (wchar_t letter = L'A'; letter < L'Z'; ++letter)
        name = letters_.children[name].emplace_back(1, letter);
    tree_->expandAll(L"z");
    tree_->changeSelectedItem(name);
    IntBox const seen = tree_->bounds();
    EXPECT_TRUE(seen.contains(
        tree_->getItemBounds(static_cast<unsigned int>(tree_->findItem(name)), TreeView::eLabelBounds)
            .centre()));
    keys({Key::home});
    EXPECT_EQ(tree_->getWindowLeft(), 0);
}

TEST_F(Trees, ItemsAreDraggedOntoBranchesAndBetweenRows) {
    make(letters_);
    auto const drag = [&](Text const& from, XY<int> to) {
        letters_.dropped = {};
        driver_.moveTo(placeOf(from));
        driver_.press();
        driver_.moveTo(placeOf(from) + XY<int>(6, 0));
        driver_.moveTo(to);
    };
    drag(L"a", placeOf(L"c"));
    auto const marked = picture();
    driver_.release();
    EXPECT_EQ(letters_.dropped, L"a on c");
    EXPECT_NE(picture(), marked);
    EXPECT_EQ(events(), "1 5 ");
    // A closed branch opens under it, and takes it; the branch itself and what is in it do not.
    drag(L"b", placeOf(L"a"));
    driver_.advance(1000);
    EXPECT_TRUE(tree_->isExpanded(L"a"));
    driver_.moveTo(placeOf(L"a2"));
    driver_.release();
    EXPECT_EQ(letters_.dropped, L"b on a2");
    for (wchar_t const* const target : {L"a", L"a2"}) {
        drag(L"a", placeOf(target));
        driver_.release();
        EXPECT_EQ(letters_.dropped, L"");
    }
    letters_.inserts = true;
    drag(L"b", placeOf(L"a2") + XY<int>(0, line / 2 - 2));
    driver_.release();
    EXPECT_EQ(letters_.dropped, L"b in a before a2");
    drag(L"b", placeOf(L"a3") - XY<int>(0, line / 2 - 2));
    driver_.release();
    EXPECT_EQ(letters_.dropped, L"b in a before ");
    // At the edge it scrolls.
    tree_->setWindowTop(0);
    drag(L"a", placeOf(L"a1") - XY<int>(0, 4 * line - 4 - line));
    driver_.advance(2000);
    EXPECT_EQ(tree_->getWindowTop(), (static_cast<int>(tree_->numRows()) - 5) * line) << "to the end";
    driver_.key(Key::escape);
    driver_.release();
    driver_.settle();
    EXPECT_EQ(Consistency(driver_).fault(), "");
    // A drop may take the tree away.
    tree_->setWindowTop(0);
    letters_.onDrop = [&] { destroy(tree_); };
    drag(L"a1", placeOf(L"a2"));
    driver_.release();
    EXPECT_FALSE(is_good_glob_ptr(tree_));
}

TEST_F(Trees, ListenersAndAdaptorsMayChangeAndDestroyEverything) {
    make(letters_);
    // The listener changes the rows in mid-toggle: the branch is found again.
    onEvent_ = [&](TreeView::eEventType type) {
        if (type != TreeView::eBranchExpanded) return;
        onEvent_ = {};
        letters_.children[L""].insert(letters_.children[L""].begin(), L"0");
        tree_->refresh();
    };
    tree_->expand(L"f");
    EXPECT_EQ(rows(), "0 a b c d e f f1 f2 f3 ");
    EXPECT_TRUE(tree_->isFullyVisible(9));
    // Clicks, tags and drags go with their items.
    tree_->setOptions(TreeView::allowsTags);
    tree_->setWindowTop(0);
    onEvent_ = [&](TreeView::eEventType type) {
        if (type != TreeView::eItemSelected) return;
        onEvent_ = {};
        letters_.children[L""].erase(letters_.children[L""].begin());
        tree_->refresh();
    };
    click(L"c");
    EXPECT_EQ(selected(), "c");
    EXPECT_EQ(tagged(), "c ");
    driver_.moveTo(placeOf(L"b"));
    driver_.press();
    std::swap(letters_.children[L""][0], letters_.children[L""][1]);
    tree_->refresh();
    driver_.moveTo(placeOf(L"d"));
    driver_.release();
    EXPECT_EQ(letters_.dropped, L"b on d");
    std::swap(letters_.children[L""][0], letters_.children[L""][1]);
    tree_->refresh();
    tree_->setOptions(0);
    // It tells of what it has opened, once.
    onEvent_ = [&](TreeView::eEventType type) {
        if (type == TreeView::eBranchExpanded) tree_->expandAll();
    };
    events();
    tree_->expand(L"b");
    EXPECT_EQ(events(), "11 11 ");
    onEvent_ = {};
    tree_->collapse(L"a");
    tree_->collapse(L"b");
    // What comes later.
    letters_.isPending = true;
    tree_->expand(L"a");
    EXPECT_TRUE(tree_->findItemByName(L"a")->isPending);
    EXPECT_EQ(tree_->findItem(L"a1"), -1);
    letters_.isPending = false;
    tree_->refresh(L"a");
    EXPECT_GE(tree_->findItem(L"a1"), 0);
    tree_->collapse(L"a2");
    letters_.isPending = true;
    tree_->collapse(L"a");
    tree_->expandAll(L"a");
    letters_.isPending = false;
    tree_->refresh(L"a");
    EXPECT_GE(tree_->findItem(L"a21"), 0) << "all of it was to be open";
    // What is asked for while the adaptor answers is done afterwards.
    Letters other;
    letters_.onList = [&] {
        letters_.onList = {};
        tree_->refresh();
        tree_->setAdaptor(&other);
    };
    tree_->expand(L"b");
    driver_.advance(10);
    EXPECT_EQ(tree_->getAdaptor(), &other);
    EXPECT_EQ(rows(), "a b c d e f ");
    expectDiagnostic("adaptor failed");
    other.onList = [] { throw std::runtime_error("no"); };
    tree_->expand(L"a");
    EXPECT_EQ(rows(), "a b c d e f ");
    other.onList = [&] { destroy(tree_); };
    tree_->refresh();
    EXPECT_FALSE(is_good_glob_ptr(tree_));
    auto dying = std::make_unique<Letters>();
    make(*dying);
    dying.reset();
    driver_.settle();
    tree_->expand(L"a");
    EXPECT_EQ(tree_->numRows(), 6U);
    keys({Key::down, Key::right, Key::function(2)});
    tree_->setAdaptor(nullptr);
    EXPECT_EQ(tree_->numRows(), 0U);
}

TEST_F(Trees, RandomUseLooksAsIfAllWerePaintedAnew) {
    make(letters_, TreeView::allowsTags);
    std::mt19937 random(9);
    auto const below = [&](unsigned int end) { return static_cast<unsigned int>(random() % end); };
    for (int i = 0; i < 200; ++i) {
        unsigned int const row = below(std::max(1U, tree_->numRows()));
        Text const name = tree_->getRow(row).item.name;
        switch (below(7)) {
        case 0:
        case 1:
            tree_->toggleBranchExpansion(row);
            break;
        case 2:
            tree_->setWindowTop(tree_->getWindowTop() + static_cast<int>(below(60)) - 30);
            break;
        case 3:
            keys({below(2) ? Key::down : Key::shift | Key::up});
            break;
        case 4:
            std::ranges::shuffle(letters_.children[L"a"], random);
            tree_->refresh(L"a");
            break;
        case 5:
            tree_->setSelectedItem(name);
            break;
        default:
            driver_.moveTo(placeOf(name));
            driver_.press();
            driver_.moveTo(placeOf(letters_.children[L""][below(6)]));
            driver_.release();
        }
        driver_.advance(50);
        ASSERT_EQ(Consistency(driver_).fault(), "") << i;
    }
}

} // namespace

class TreeNotifications : public SentNotifications {
protected:
    TreeView& tree() { return *static_cast<TreeView*>(widget_); }
    Letters letters_;
};

TEST_F(TreeNotifications, OfTrees) {
    auto const key = [&](std::uint32_t code) {
        tree().setSelectedItem(L"a");
        tree().claimKbdFocus();
        driver_.key(code);
    };
    auto const rename = [&] {
        key(Key::function(2));
        driver_.type(L"x");
        driver_.key(Key::enter);
        letters_ = Letters();
    };
    auto const drop = [&] {
        auto const at = [&](unsigned int row) {
            return tree().getItemBounds(row, TreeView::eLabelBounds).centre() +
                   tree().screenBox().bottomLeft();
        };
        XY<int> const to = at(2);
        driver_.moveTo(at(0));
        driver_.press();
        driver_.moveTo(to + XY<int>(1, 0));
        driver_.moveTo(to);
        driver_.release();
    };
    runAll<TreeView>({{"selected", "tree_selected", [&] { tree().changeSelectedItem(L"b"); }},
                      {"activated", "tree_activated", [&] { key(Key::enter); }},
                      {"tags", "tree_tags", [&] { key(Key::space); }},
                      {"renamed", "tree_renamed", rename},
                      {"dropped", "tree_dropped", drop},
                      {"expanded", "tree_expanded", [&] { key(Key::right); }},
                      {"collapsed", "tree_collapsed",
                       [&] {
                           key(Key::right);
                           key(Key::left);
                       }},
                      {"selection hidden", "tree_selection_hidden",
                       [&] {
                           tree().expand(L"a");
                           tree().setSelectedItem(L"a1");
                           tree().collapse(L"a");
                       }}},
                     [&] {
                         TreeView::InitArgs args(140, 150);
                         args.adaptor = &letters_;
                         args.options = TreeView::allowsTags;
                         return new TreeView(args);
                     });
}

} // namespace wainscot
