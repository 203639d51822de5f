#include "tests/sent_notifications.h"
#include "tests/widget_fixture.h"

#include "buttons/checkbox.h"
#include "containers/lazy_tabbed_dialogue.h"
#include "foundation/val_server_adaptor.h"
#include "host/base/convert.h"
#include "host/objects/description.h"
#include "host/objects/drag_drop_item.h"
#include "host/windows/drag_drop_manager.h"
#include "text/text_box.h"

#include <random>

namespace wainscot {
namespace {

using Text = LightweightString<wchar_t>;

/// Writes down what dialogues call, and makes pages on demand.
class Owner final : public RecordingParent {
public:
    Owner() : RecordingParent(400, 300) {}
    int handleDataMessageEvent(LightweightString<char> name, Glob* sender, Qv::Ptr<iObject> data) override {
        auto const* const details = unwrapData<TabDetails>(data);
        if (!details) return 0;
        // Wherever that was shown.
        auto& dialogue = static_cast<TabbedDialogue&>(*sender);
        heard += std::string(name.c_str()) + " " + toUTF8(details->name).c_str() + " ";
        if (name == TabbedDialogue::buildPageMsg && makesPages) {
            auto* const page = new StandardTabPage(dialogue.getMaxPageSize(), getPalette());
            EXPECT_TRUE(dialogue.addPageForTab(details->index, page));
        }
        if (auto const act = onMessage) act(name, *details);
        return 1;
    }
    int handleMessageEvent(LightweightString<char> name, Glob*) override {
        heard += std::string(name.c_str()) + " ";
        return 1;
    }
    std::string heard;
    bool makesPages = true;
    std::function<void(LightweightString<char> const&, TabDetails const&)> onMessage;
};

class Tabs : public WidgetTest {
protected:
    static constexpr int indent = 4;

    template <class Dialogue = TabbedDialogue>
    Dialogue* make(std::vector<UIString> const& names, TabbedDialogue::InitArgs const& args = allowing(),
                   TabbedDialogue::eTabWidget widget = TabbedDialogue::eTabPlain) {
        owner_ = addTo(root_, new Owner, BottomLeft(0, 0));
        auto* const dialogue = addTo(owner_, new Dialogue(args), BottomLeft(10, 10));
        dialogue->setPages(names, widget);
        driver_.settle();
        return dialogue;
    }
    static TabbedDialogue::InitArgs allowing() {
        TabbedDialogue::InitArgs args(380, 200);
        args.canClose = args.canRename = args.canReorder = true;
        return args;
    }
    static std::vector<UIString> named(int count) {
        std::vector<UIString> names;
        for (int i = 0; i < count; ++i) names.push_back(UIString(Qv::WStringFromInteger(i)));
        return names;
    }
    std::string heard() {
        driver_.settle();
        return std::exchange(owner_->heard, {});
    }
    XY<int> placeOf(TabbedDialogue const& dialogue, unsigned short index) {
        return dialogue.getTab(index)->screenBox().centre();
    }
    static std::string order(TabbedDialogue const& dialogue) {
        std::string ids;
        for (Text const& id : dialogue.getPageOrder()) ids += toUTF8(id).c_str();
        return ids;
    }
    /// One page at most is seen, and it is that of the current tab.
    static void expectOnePage(TabbedDialogue const& dialogue) {
        for (std::size_t at = 0; at < dialogue.numTabs(); ++at) {
            auto const i = static_cast<unsigned short>(at);
            Glob const* const page = dialogue.getPage(i);
            bool const isCurrent = i == dialogue.getCurrentTab();
            EXPECT_EQ(dialogue.getTab(i)->isCurrent(), isCurrent);
            EXPECT_TRUE(!page || page->isVisible() == isCurrent);
        }
    }
    Owner* owner_ = nullptr;
};

TEST_F(Tabs, PagesAreMadeOnDemandAndTold) {
    auto* const dialogue = make({L"A", L"B", L"C"});
    EXPECT_EQ(dialogue->getCurrentTab(), -1);
    EXPECT_TRUE(dialogue->selectPage(L"B"));
    EXPECT_EQ(owner_->heard, "PageRequired B PageChanged B ") << "before the call returns";
    EXPECT_FALSE(dialogue->selectPage(L"B"));
    EXPECT_TRUE(dialogue->selectPage(0, true, false));
    EXPECT_TRUE(dialogue->selectPage(L"B", true, true));
    EXPECT_EQ(heard(), "PageRequired B PageChanged B PageRequired A PageChanged B ");
    expectOnePage(*dialogue);
    EXPECT_EQ(dialogue->getPage(1)->box(), dialogue->getPageBounds());
    EXPECT_EQ(dialogue->getPageBounds().bottomLeft(), XY<int>(indent, indent));
    EXPECT_EQ(TabbedDialogue::calcSize(dialogue->getMaxPageSize()), dialogue->size());
    for (int const beyond : {3, 0x7FFF, 0xFFFF}) {
        auto const index = static_cast<unsigned short>(beyond);
        EXPECT_FALSE(dialogue->selectPage(index) || dialogue->removePage(index) || dialogue->getTab(index) ||
                     dialogue->getPage(index) || dialogue->renamePage(index, L"x") ||
                     dialogue->moveTab(index, 0) || dialogue->addPageForTab(index, root_));
        dialogue->setTabName(index, L"x");
        dialogue->ensureTabIsVisible(index);
        dialogue->setActive(index, false);
        EXPECT_EQ(dialogue->getTabName(index) + dialogue->getPageID(index), Text());
    }
    dialogue->setActive(false);
    EXPECT_FALSE(dialogue->selectPage(L"C"));
    dialogue->setActive(true);
    // Without a page nothing is shown, and it is asked for again.
    owner_->makesPages = false;
    EXPECT_TRUE(dialogue->selectPage(L"C"));
    EXPECT_TRUE(dialogue->selectPage(L"C"));
    EXPECT_EQ(heard(), "PageRequired C PageChanged C PageRequired C PageChanged C ");
    expectOnePage(*dialogue);
    // A page that comes late is shown at once; one that is in use is refused.
    expectDiagnostic("page is in use");
    EXPECT_FALSE(dialogue->setPageBaseGlob(dialogue->getPage(0), L"C"));
    EXPECT_FALSE(dialogue->addPageForTab(2, dialogue->getTab(0)));
    auto* const other = addTo(owner_, new TabbedDialogue(100, 100), BottomLeft(310, 10));
    StandardTabPage* const page = other->createStandardPage(L"Theirs");
    EXPECT_TRUE(dialogue->setPageBaseGlob(page, L"C"));
    EXPECT_TRUE(page->isVisible());
    EXPECT_FALSE(other->getPage(0));
    destroy(page);
    EXPECT_FALSE(dialogue->getPage(2));
    dialogue->resize(250, 150);
    EXPECT_EQ(dialogue->getPageBounds().size(), dialogue->getMaxPageSize());
}

TEST_F(Tabs, RandomUseAgreesWithAList) {
    auto* const dialogue = make({});
    std::vector<std::pair<std::string, bool>> model;
    int current = -1;
    std::mt19937 random(20);
    auto const pick = [&](std::size_t count) {
        return std::uniform_int_distribution<std::size_t>(0, count - 1)(random);
    };
    for (int step = 0; step < 600; ++step) {
        auto const count = model.size();
        auto const index = count ? pick(count) : 0;
        auto const i = static_cast<unsigned short>(index);
        switch (pick(7)) {
        case 0:
        case 1:
            if (count >= 12) break;
            dialogue->addTab(Qv::WStringFromInteger(step));
            model.emplace_back(std::to_string(step), false);
            break;
        case 2:
        case 3: {
            bool const changes = count && (static_cast<int>(index) != current || !model[index].second);
            EXPECT_EQ(dialogue->selectPage(i), changes);
            if (count) current = static_cast<int>(index), model[index].second = true;
            break;
        }
        case 4:
            if (!count) break;
            EXPECT_TRUE(dialogue->removePage(i));
            model.erase(model.begin() + static_cast<std::ptrdiff_t>(index));
            if (current > static_cast<int>(index))
                --current;
            else if (current == static_cast<int>(index)) {
                current = std::min(current, static_cast<int>(model.size()) - 1);
                if (current >= 0) model[static_cast<std::size_t>(current)].second = true;
            }
            break;
        case 5:
            if (!count) break;
            dialogue->renamePage(i, L"n" + Qv::WStringFromInteger(step));
            model[index].first = "n" + std::to_string(step);
            break;
        case 6: {
            if (!count) break;
            auto const to = pick(count);
            auto const moved = model[index];
            std::string const shown = current >= 0 ? model[static_cast<std::size_t>(current)].first : "";
            model.erase(model.begin() + static_cast<std::ptrdiff_t>(index));
            model.insert(model.begin() + static_cast<std::ptrdiff_t>(to), moved);
            EXPECT_TRUE(dialogue->moveTab(i, static_cast<unsigned short>(to)));
            for (std::size_t at = 0; at < model.size(); ++at)
                if (current >= 0 && model[at].first == shown) current = static_cast<int>(at);
            break;
        }
        }
        ASSERT_EQ(dialogue->numTabs(), model.size());
        ASSERT_EQ(dialogue->getCurrentTab(), current) << step;
        for (std::size_t at = 0; at < model.size(); ++at) {
            auto const place = static_cast<unsigned short>(at);
            ASSERT_EQ(toUTF8(dialogue->getTabName(place)), model[at].first.c_str());
            ASSERT_EQ(dialogue->getPage(place) != nullptr, model[at].second);
        }
        if (step % 20 == 0) driver_.settle();
        expectOnePage(*dialogue);
    }
    EXPECT_EQ(Consistency(driver_).fault(), "");
}

TEST_F(Tabs, ThePointerAndTheKeysSelectCloseRenameAndMove) {
    auto* const dialogue = make({L"Alpha", L"Beta", L"Gamma", L"Delta"});
    dialogue->setActive(2, false);
    driver_.clickAt(placeOf(*dialogue, 1));
    EXPECT_EQ(heard(), "PageRequired Beta PageChanged Beta ");
    driver_.clickAt(placeOf(*dialogue, 2));
    driver_.wheelAt(placeOf(*dialogue, 2), -1);
    EXPECT_EQ(heard(), "") << "it is disabled, and the wheel changes no page";
    // Keys, from anywhere in the dialogue, pass the disabled one.
    auto* const box = new TextBox(TextBox::InitArgs(60, 24));
    auto* const page = static_cast<StandardPanel*>(dialogue->getPage(1));
    addTo(page, box, BottomLeft(5, 5));
    page->addTabStop(*box);
    box->claimKbdFocus();
    driver_.key(Key::ctrl | Key::tab);
    EXPECT_EQ(dialogue->getCurrentTab(), 3);
    driver_.key(Key::ctrl | Key::pageDown);
    EXPECT_EQ(dialogue->getCurrentTab(), 0) << "round the end";
    driver_.key(Key::ctrl | Key::shiftTab);
    driver_.key(Key::ctrl | Key::pageUp);
    EXPECT_EQ(dialogue->getCurrentTab(), 1);
    EXPECT_EQ(get_kbd_focus(), box) << "the focus is where it was in the page";
    driver_.key(Key::shiftTab);
    Glob* const strip = get_kbd_focus();
    EXPECT_EQ(Driver::describe(*strip).role, Role::tabStrip);
    driver_.key(Key::right);
    driver_.key(Key::home);
    driver_.key(Key::right);
    EXPECT_EQ(dialogue->getCurrentTab(), 1);
    driver_.key(Key::end);
    EXPECT_EQ(dialogue->getCurrentTab(), 3);
    EXPECT_EQ(get_kbd_focus(), strip);
    // Renaming: a double click or F2; Escape takes it back.
    heard();
    driver_.key(Key::function(2));
    driver_.type(L"New");
    driver_.key(Key::escape);
    EXPECT_EQ(dialogue->getTabName(3), L"Delta");
    EXPECT_EQ(get_kbd_focus(), strip);
    driver_.doubleClick(dialogue->getTab(3));
    EXPECT_TRUE(dialogue->getTab(3)->isRenaming());
    driver_.type(L"New");
    driver_.key(Key::enter);
    EXPECT_EQ(dialogue->getTabName(3) + dialogue->getPageID(3), L"NewDelta");
    EXPECT_EQ(heard(), "PageRenamed New ");
    // Closing: the question can keep it; a middle click, the button, the key.
    bool mayClose = false;
    dialogue->setCloseQuestion([&](unsigned short) { return mayClose; });
    driver_.key(Key::del);
    EXPECT_EQ(dialogue->numTabs(), 4u);
    mayClose = true;
    driver_.key(Key::del);
    EXPECT_EQ(heard(), "PageRequired Gamma PageChanged Gamma PageClosed New ")
        << "what follows is selected, as the program would";
    driver_.clickAt(placeOf(*dialogue, 0), Driver::Button::middle);
    EXPECT_EQ(heard(), "PageClosed Alpha ");
    driver_.click(driver_.find(Role::button, L"Close"));
    EXPECT_EQ(dialogue->numTabs(), 1u);
    dialogue->setCanClose(false);
    driver_.clickAt(placeOf(*dialogue, 0), Driver::Button::middle);
    EXPECT_EQ(dialogue->numTabs(), 1u);
}

TEST_F(Tabs, AreDraggedToOtherPlaces) {
    auto* const dialogue = make({L"A", L"B", L"C", L"D"});
    auto const drag = [&](unsigned short from, unsigned short to, bool isTakenBack = false) {
        XY<int> const goal = placeOf(*dialogue, to) + XY<int>(to > from ? 25 : -25, 0);
        driver_.moveTo(placeOf(*dialogue, from));
        driver_.press(Driver::Button::left);
        driver_.moveTo(placeOf(*dialogue, from) + XY<int>(to > from ? 20 : -20, 0));
        driver_.moveTo(goal);
        if (isTakenBack) driver_.key(Key::escape);
        driver_.release();
        driver_.settle();
        return order(*dialogue);
    };
    EXPECT_EQ(drag(0, 2), "BCAD");
    EXPECT_EQ(heard(), "PageRequired A PageChanged A PageOrderChanged A ");
    EXPECT_EQ(drag(3, 0), "DBCA");
    heard();
    EXPECT_EQ(drag(0, 3, true), "DBCA");
    EXPECT_EQ(heard(), "");
    std::vector<Text> const wanted{L"A", L"missing", L"B"};
    dialogue->setPageOrder(wanted);
    EXPECT_EQ(order(*dialogue), "ABDC");
    EXPECT_EQ(dialogue->getCurrentTab(), 2) << "it follows its tab";
    dialogue->setCanReorder(false);
    EXPECT_EQ(drag(0, 2), "ABDC");
    // What is dragged over a tab brings its page forward after a moment.
    driver_.moveTo(placeOf(*dialogue, 0));
    driver_.press(Driver::Button::left);
    EXPECT_TRUE(DragDropManager::instance().beginDrag(Qv::makePtr<DragDropItem>("clip"), root_));
    driver_.moveTo(placeOf(*dialogue, 3));
    driver_.advance(300);
    EXPECT_EQ(dialogue->getCurrentTab(), 0);
    driver_.advance(400);
    EXPECT_EQ(dialogue->getCurrentTab(), 3);
    driver_.release();
}

TEST_F(Tabs, AStripThatIsTooShortIsScrolled) {
    auto* const dialogue = make(named(60), TabbedDialogue::InitArgs(300, 200));
    int const width = dialogue->calcTotalTabsWidth() / 60;
    dialogue->selectPage(0);
    driver_.settle();
    auto const strip = [&] { return dialogue->getTab(0)->parent()->width(); };
    EXPECT_LT(strip(), 300) << "there are buttons at its end";
    driver_.click(driver_.find(Role::button, L"Tabs behind"));
    EXPECT_EQ(dialogue->getFirstTabPos(), -strip());
    dialogue->setStyleFlags(TabbedDialogue::stepsByTab);
    dialogue->handleNextPressed();
    EXPECT_EQ(dialogue->getFirstTabPos(), -strip() - width);
    dialogue->handlePrevPressed();
    dialogue->setFirstTabPos(100);
    EXPECT_EQ(dialogue->getFirstTabPos(), 0);
    driver_.wheelAt(placeOf(*dialogue, 1), -1);
    EXPECT_LT(dialogue->getFirstTabPos(), 0);
    EXPECT_EQ(dialogue->getCurrentTab(), 0);
    // Also by what is dragged over a step button.
    driver_.moveTo(placeOf(*dialogue, 1));
    driver_.press(Driver::Button::left);
    EXPECT_TRUE(DragDropManager::instance().beginDrag(Qv::makePtr<DragDropItem>("clip"), root_));
    Glob* const button = driver_.find(Role::button, L"Tabs behind");
    driver_.moveTo(button->screenBox().centre());
    int const before = dialogue->getFirstTabPos();
    driver_.advance(500);
    int const after = dialogue->getFirstTabPos();
    EXPECT_LT(after, before);
    driver_.moveTo(XY<int>(1, 1));
    driver_.advance(500);
    EXPECT_EQ(dialogue->getFirstTabPos(), after);
    driver_.release();
    dialogue->setFirstTabPos(-100'000);
    EXPECT_EQ(dialogue->getFirstTabPos(), strip() - dialogue->calcTotalTabsWidth());
    dialogue->ensureTabIsVisible(10);
    EXPECT_EQ(dialogue->getFirstTabPos(), -10 * width);
    dialogue->ensureTabIsVisible(11);
    EXPECT_EQ(dialogue->getFirstTabPos(), -10 * width);
    dialogue->selectPage(40);
    driver_.settle();
    EXPECT_EQ(dialogue->getFirstTabPos(), strip() - 41 * width);
    dialogue->setStyleFlags(TabbedDialogue::keepsStripStill);
    dialogue->selectPage(0);
    driver_.settle();
    EXPECT_EQ(dialogue->getFirstTabPos(), strip() - 41 * width);
    // The list of all tabs.
    driver_.click(driver_.find(Role::button, L"All tabs"));
    driver_.type(L"59");
    driver_.key(Key::enter);
    EXPECT_EQ(dialogue->getCurrentTab(), 59);
    EXPECT_TRUE(dialogue->getTab(59)->isShown());
    EXPECT_FALSE(dialogue->getTab(0)->isVisible());
    for (double const least : {60.0, 30.0, 3.0, 0.0}) {
        dialogue->resize(least, least);
        driver_.settle();
    }
    dialogue->resize(390, 200);
    driver_.settle();
    dialogue->removePages();
    EXPECT_EQ(dialogue->numTabs(), 0u);
    driver_.key(Key::ctrl | Key::tab);
}

TEST_F(Tabs, CheckBoxesAreBoundAndNamesAreLookedUp) {
    ValServer<bool> isOn(true);
    auto* const dialogue = make({L"", L"Same", L"Same"}, allowing(), TabbedDialogue::eTabCheckbox);
    EXPECT_EQ(dialogue->findPageIdx(L"Same"), 1);
    EXPECT_EQ(dialogue->findPageIdx(L""), 0);
    dialogue->getTab(1)->setCheckboxDataAdaptor(new ValServerAdaptor<bool>(isOn));
    EXPECT_TRUE(
        dialogue->createTaggableStandardPage(L"Tag", root_->getPalette(), new ValServerAdaptor<bool>(isOn)));
    driver_.settle();
    driver_.click(dialogue->getTab(1)->getCheckbox());
    EXPECT_FALSE(isOn.value() || dialogue->getTab(3)->getCheckbox()->isTicked());
    EXPECT_EQ(dialogue->getCurrentTab(), -1);
    dialogue->selectPage(1);
    dialogue->getTab(1)->parent()->parent()->claimKbdFocus();
    driver_.key(Key::space);
    EXPECT_TRUE(isOn.value());
    // Too many.
    expectDiagnostic("too many tabs");
    expectDiagnostic("tab cannot be selected");
    dialogue->setCanClose(false);
    dialogue->setPages(named(static_cast<int>(TabbedDialogue::maxTabs)));
    EXPECT_EQ(dialogue->numTabs(), TabbedDialogue::maxTabs);
    EXPECT_FALSE(dialogue->addTab(L"one more"));
    EXPECT_FALSE(dialogue->selectPage(40'000));
    EXPECT_TRUE(dialogue->selectPage(32'767));
    driver_.settle();
    EXPECT_TRUE(dialogue->getTab(32'767)->isShown());
}

class Lazy : public LazyTabbedDialogue {
public:
    explicit Lazy(InitArgs const& args) : LazyTabbedDialogue(args, L"B") {}
    std::string built;
    std::function<void()> onBuild;

protected:
    void buildPage(Text const& id) override {
        built += toUTF8(id).c_str();
        if (auto const act = onBuild) act();
    }
};

TEST_F(Tabs, LazyPagesAreBuiltOnce) {
    auto* const dialogue = make<Lazy>({L"A", L"B", L"C"});
    EXPECT_EQ(dialogue->getCurrentTab(), 1) << "the start page";
    EXPECT_EQ(heard(), "PageRequired B PageChanged B TabChanged ");
    dialogue->selectPage(L"A", true, false);
    dialogue->selectPage(L"B");
    EXPECT_EQ(dialogue->built, "BA");
    EXPECT_TRUE(dialogue->pageBuilt(L"A") && !dialogue->pageBuilt(L"C"));
    EXPECT_EQ(heard(), "PageRequired A PageChanged B TabChanged ");
    EXPECT_EQ(dialogue->getPage(1)->box().bottomLeft(), XY<int>(indent, indent));
    dialogue->setStartPage(L"unknown");
    EXPECT_EQ(dialogue->getCurrentTab(), 1);
    // The hook selects another page, and comes back.
    dialogue->onBuild = [&] {
        for (wchar_t const* const name : {L"A", L"C", L"A"}) dialogue->selectPage(name);
    };
    dialogue->setStartPage(L"C");
    EXPECT_EQ(dialogue->getCurrentTab(), 0);
    dialogue->selectPage(L"C");
    EXPECT_EQ(dialogue->built, "BAC");
    // A page that has died is built again.
    dialogue->onBuild = {};
    destroy(dialogue->getPage(2));
    dialogue->selectPage(L"C");
    EXPECT_EQ(dialogue->built, "BACC");
    expectOnePage(*dialogue);
}

TEST_F(Tabs, FocusAndPagesSurviveClosingRenamingAndFailures) {
    auto* const dialogue = make({L"A", L"B", L"C"});
    auto const addBox = [&](unsigned short index) {
        dialogue->selectPage(index);
        auto* const page = dynamic_cast<StandardPanel*>(dialogue->getPage(index));
        auto* const box = addTo(page, new TextBox(TextBox::InitArgs(60, 24)), BottomLeft(5, 5));
        page->addTabStop(*box);
        return box;
    };
    TextBox* const second = addBox(1);
    TextBox* const first = addBox(0);
    // The cross of the page that has the focus: it goes on into the next page.
    first->claimKbdFocus();
    IntBox const tab = dialogue->getTab(0)->screenBox();
    driver_.clickAt({tab.x2 - 12, tab.centre().y});
    ASSERT_EQ(dialogue->numTabs(), 2U);
    EXPECT_EQ(get_kbd_focus(), second);
    // Another page ends the editing of a name, which is taken.
    dialogue->selectPage(1);
    driver_.doubleClick(Driver::Target(dialogue->getTab(1)));
    ASSERT_TRUE(dialogue->getTab(1)->isRenaming());
    driver_.type(L"new");
    driver_.key(Key::ctrl | Key::tab);
    EXPECT_FALSE(dialogue->getTab(1)->isRenaming());
    EXPECT_EQ(dialogue->getTab(1)->getName().text(), L"new");
    EXPECT_EQ(dialogue->findPageByID(dialogue->getPageID(1)), 1);
    EXPECT_EQ(dialogue->findPageByID(L"new"), TabbedDialogue::noTab);
    EXPECT_EQ(dialogue->findPageIdx(*dialogue->getTab(1)), 1);
    EXPECT_EQ(dialogue->getCurrentTab(), 0);
    // The page is shown although its owner fails.
    expectDiagnostic("exception in message");
    owner_->onMessage = [](auto const& name, auto const&) {
        if (name == TabbedDialogue::changePageMsg) throw std::runtime_error("no");
    };
    EXPECT_ANY_THROW(dialogue->selectPage(1));
    owner_->onMessage = {};
    EXPECT_EQ(dialogue->getCurrentTab(), 1);
    expectOnePage(*dialogue);
    owner_->onMessage = [](auto const& name, auto const&) {
        if (name == TabbedDialogue::buildPageMsg) throw std::runtime_error("no");
    };
    dialogue->addTab(L"D");
    EXPECT_ANY_THROW(dialogue->selectPage(L"D"));
    owner_->onMessage = {};
    EXPECT_EQ(dialogue->getCurrentTab(), 2);
    ASSERT_TRUE(dialogue->getPage(2));
    expectOnePage(*dialogue);
    // A page that could not be built is built when it is next selected.
    auto* const lazy = make<Lazy>({L"A", L"B"});
    lazy->onBuild = [] { throw std::runtime_error("no"); };
    EXPECT_ANY_THROW(lazy->selectPage(L"A"));
    lazy->onBuild = {};
    lazy->selectPage(L"B");
    EXPECT_FALSE(lazy->pageBuilt(L"A"));
    lazy->selectPage(L"A");
    EXPECT_TRUE(lazy->pageBuilt(L"A"));
}

TEST_F(Tabs, AnythingMayBeDoneInTheirMessages) {
    for (auto const& wanted : {TabbedDialogue::buildPageMsg, TabbedDialogue::changePageMsg}) {
        for (int act = 0; act < 6; ++act) {
            auto* const dialogue = make({L"A", L"B", L"C"});
            dialogue->selectPage(0);
            int calls = 0;
            owner_->onMessage = [&](LightweightString<char> const& name, TabDetails const& details) {
                if (name != wanted || details.name != L"B" || calls++ > 0) return;
                if (act == 0) dialogue->selectPage(2);
                if (act == 1) dialogue->removePage(L"B");
                if (act == 2) dialogue->removePages();
                if (act == 3) destroy(dialogue->getTab(1));
                if (act == 4) dialogue->setPages({L"X"});
                if (act == 5) dialogue->moveTab(1, 0);
            };
            dialogue->selectPage(1);
            driver_.settle();
            expectOnePage(*dialogue);
            EXPECT_EQ(calls, 1);
            EXPECT_EQ(Drawable::holdCount(), 0);
            EXPECT_EQ(Consistency(driver_).fault(), "");
            // Tabs that die by themselves take their pages with them.
            owner_->onMessage = {};
            while (dialogue->numTabs() > 0) {
                destroy(dialogue->getTab(0));
                driver_.settle();
                expectOnePage(*dialogue);
            }
            EXPECT_LE(dialogue->numChildren(), 1u);
            destroy(owner_);
        }
    }
}

class TabNotifications : public SentNotifications {
protected:
    template <class T = TabbedDialogue>
    static T* make() {
        TabbedDialogue::InitArgs args(280, 150);
        args.canClose = args.canRename = args.canReorder = true;
        auto* const dialogue = new T(args);
        dialogue->setPages({L"A", L"B", L"C"});
        dialogue->createStandardPage(L"A");
        dialogue->selectPage(0, true, false);
        return dialogue;
    }
    TabbedDialogue& dialogue() { return *static_cast<TabbedDialogue*>(widget_); }
    void dropListeners() override { dialogue().setCloseQuestion({}); }
};

} // namespace

TEST_F(TabNotifications, OfDialogues) {
    auto const select = [&] { driver_.click(dialogue().getTab(1)); };
    runAll<TabbedDialogue>(
        {{"PageRequired", "PageRequired", select},
         {"PageChanged", "PageChanged", select},
         {"PageClosed", "PageClosed", [&] { driver_.click(driver_.find(Role::button, L"Close")); }},
         {"PageRenamed", "PageRenamed",
          [&] {
              driver_.doubleClick(dialogue().getTab(0));
              driver_.type(L"New");
              driver_.key(Key::enter);
          }},
         {"PageOrderChanged", "PageOrderChanged",
          [&] {
              driver_.press(dialogue().getTab(0));
              driver_.moveTo(dialogue().getTab(2));
              driver_.moveTo(dialogue().getTab(2));
              driver_.release();
          }},
         {"close question",
          {},
          [&] {
              dialogue().setCloseQuestion([&](unsigned short) { return react(), true; });
              driver_.click(driver_.find(Role::button, L"Close"));
          }}},
        [] { return make(); });
    runAll<LazyTabbedDialogue>({{"TabChanged", "TabChanged", select}},
                               [] { return make<LazyTabbedDialogue>(); });
}

} // namespace wainscot
