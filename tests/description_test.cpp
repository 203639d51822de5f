#include "tests/controls.h"
#include "tests/widget_fixture.h"

#include "buttons/bool_radio_set.h"
#include "buttons/checkbox_group.h"
#include "buttons/radio_set.h"
#include "host/base/convert.h"
#include "host/objects/described_items.h"
#include "host/objects/description.h"
#include "host/windows/floating_note_p.h"

#include <gmock/gmock.h>

namespace wainscot {
namespace {

using Text = LightweightString<wchar_t>;
using D = GlobDescription;

/// What widgets, and the items in them, say about themselves.
class Descriptions : public WidgetTest {
protected:
    template <class T>
    T* showNew(auto const&... args) {
        return show(new T(args...));
    }
};

TEST(Roles, HaveOneWordEach) {
    std::set<std::string> words;
    for (int i = 0; i <= static_cast<int>(Role::fileBrowser); ++i) {
        Role const role = static_cast<Role>(i);
        EXPECT_EQ(roleOf(roleName(role)), role);
        EXPECT_TRUE(words.insert(roleName(role).c_str()).second) << roleName(role).c_str();
    }
    EXPECT_EQ(roleOf("buton"), std::nullopt);
    EXPECT_EQ(roleOf(""), std::nullopt);
}

TEST_F(Descriptions, AreRightForEveryControl) {
    std::vector<UIString> const labels = {L"one", L"two"};
    auto* const titled = showNew<StandardPanel>(XY<int>{100, 80});
    titled->setTitle(L"Mixer");
    auto* const fast = show(newSlider(0.5));
    fast->setName("speed");
    std::uint32_t const idle = D::visible | D::enabled;
    struct Row {
        Glob* widget;
        Role role;
        Text name;
        Text value;
        std::optional<NumberValue> number;
        std::uint32_t states;
        std::uint32_t actions;
    };
    Row const rows[] = {
        {titled, Role::panel, L"Mixer", L"", {}, idle, 0},
        {showNew<Button>(Button::InitArgs(UIString(L"Apply"), "apply", 60, 24)),
         Role::button,
         L"Apply",
         L"",
         {},
         idle | D::focusable,
         D::press},
        {show(newBox(L"Loop", true)),
         Role::checkbox,
         L"Loop",
         L"",
         {},
         idle | D::focusable | D::checked,
         D::toggle},
        {showNew<RadioSet>(RadioSet::InitArgs({L"on", L"off"})), Role::radioGroup, L"", L"", {}, idle, 0},
        {show(newSet(labels, 1)), Role::radioGroup, L"", L"two", {}, idle, 0},
        {showNew<CheckboxGroup>(CheckboxGroup::InitArgs(L"Tracks", labels)),
         Role::group,
         L"Tracks",
         L"",
         {},
         idle,
         0},
        {fast, Role::slider, L"speed", L"0.5", NumberValue{0.5, 0, 1, 0.002, 0}, idle | D::focusable,
         D::drag},
        {show(newSlider(-10, 20, -30)), Role::slider, L"", L"-10", NumberValue{-10, -30, 20, 0.1, 0},
         idle | D::focusable, D::drag},
        {show(newBar(eHorizontal, {0.25, 0.5})), Role::scrollBar, L"", L"0.25",
         NumberValue{0.25, 0, 0.5, 0, 0.5}, idle, D::drag},
    };
    for (Row const& row : rows) {
        SCOPED_TRACE(std::string(roleName(row.role).c_str()) + " " + toUTF8(row.value).c_str());
        GlobDescription const said = Driver::describe(*row.widget);
        EXPECT_EQ(said.role, row.role);
        EXPECT_EQ(said.name, row.name);
        EXPECT_EQ(said.value, row.value);
        EXPECT_EQ(said.states, row.states);
        EXPECT_EQ(said.actions, row.actions);
        EXPECT_EQ(said.box, row.widget->screenBox());
        ASSERT_EQ(said.number.has_value(), row.number.has_value());
        if (!row.number) continue;
        EXPECT_NEAR(said.number->step, row.number->step, 1e-12);
        NumberValue const same{said.number->value, said.number->minimum, said.number->maximum,
                               row.number->step, said.number->page};
        EXPECT_EQ(same, *row.number);
    }
}

TEST_F(Descriptions, TellWhatBelongsTogether) {
    auto* const buttons = showNew<RadioSet>(RadioSet::InitArgs({L"a", L"b", L"c"}));
    auto* const choice = show(newSet({L"d", L"e"}));
    auto* const group = showNew<CheckboxGroup>(CheckboxGroup::InitArgs(L"", {L"f", L"g", L"h", L"i"}));
    auto* const first = show(newBox(L"yes"));
    auto* const second = show(newBox(L"no"));
    BoolRadioSet loose;
    loose.setWidgets(first, second, true);
    struct Row {
        Glob* member;
        Role role;
        Glob* set;
        std::size_t position;
        std::size_t count;
    };
    Row const rows[] = {
        {buttons->getButton(2), Role::radioButton, buttons, 3, 3},
        {choice->getCheckbox(0), Role::radioButton, choice, 1, 2},
        {group->getCheckbox(1), Role::checkbox, group, 2, 4},
        {second, Role::radioButton, nullptr, 2, 2},
        {group, Role::group, nullptr, 0, 0},
    };
    for (Row const& row : rows) {
        GlobDescription const said = Driver::describe(*row.member, D::relations);
        SCOPED_TRACE(toUTF8(said.name).c_str());
        EXPECT_EQ(said.role, row.role);
        EXPECT_EQ(said.memberOf.get(), row.set);
        EXPECT_EQ(said.position, row.position);
        EXPECT_EQ(said.setSize, row.count);
        EXPECT_EQ(Driver::describe(*row.member).position, 0u) << "nobody asked";
    }
    EXPECT_THAT(driver_.tree().c_str(), testing::HasSubstr("radiobutton \"c\" 3 of 3\n"));

    auto* const slider = showNew<Slider>(Slider::InitArgs(200));
    slider->setName("unlabelled");
    slider->setLabelledBy(first);
    slider->setControls(group);
    first->setLabelledBy(slider);
    GlobDescription const kept = Driver::describe(*slider, D::relations);
    EXPECT_EQ(kept.name, L"yes");
    EXPECT_EQ(kept.labelledBy.get(), first);
    EXPECT_EQ(kept.controls.get(), group);
    EXPECT_EQ(driver_.find(Role::slider, L"yes"), slider);
    EXPECT_THAT(driver_.tree().c_str(),
                testing::HasSubstr("slider \"yes\" = \"0\" from 0 to 1 step 0.002\n"));
    destroy(first);
    destroy(group);
    EXPECT_EQ(kept.labelledBy.get(), nullptr);
    EXPECT_EQ(kept.controls.get(), nullptr);
    EXPECT_EQ(Driver::describe(*slider).name, L"unlabelled");
}

TEST_F(Descriptions, TellTextAndCaretWhenAsked) {
    FloatingNote note;
    note.showOn(root_->screenBox(), {L"abc", L"", {}, 2}, *root_);
    ASSERT_TRUE(note.glob());
    EXPECT_FALSE(Driver::describe(*note.glob()).content);
    auto const said = Driver::describe(*note.glob(), D::textContent).content;
    ASSERT_TRUE(said);
    EXPECT_EQ(said->text, L"abc");
    EXPECT_EQ(said->caret, 2u);
    EXPECT_EQ(said->anchor, 2u);
}

/// Items in items, as rows with cells or nodes with nodes, of which those of the first level that are in
/// sight are described when somebody asks. A key is 1 + the number of the outer one * (inner + 1), + 1 + the
/// number of the inner one.
class ManyItems final : public ProbeGlob, public DescribedItems {
public:
    static constexpr int rowHeight = 10;

    ManyItems(std::size_t outer, std::size_t inner) : ProbeGlob(200, 100), outer_(outer), inner_(inner) {
        onReact = [this](Event const& event) {
            if (mouse_down_event(event)) pressed = first_ + rowAt(eventXYToGlobXY(event, *this));
            return true;
        };
    }
    DescribedItems* describedItems() override { return this; }

    std::size_t numItems(ItemKey in) const override {
        return in.isEmpty() ? outer_ : isOuter(in) ? inner_ : 0;
    }
    Range itemsInSight(ItemKey in) const override {
        if (in.isEmpty()) return {first_, std::min(outer_ - first_, rowsInSight())};
        return {0, isInSight(outerOf(in)) ? numItems(in) : 0};
    }
    ItemKey itemAt(ItemKey in, std::size_t index) const override {
        if (index >= numItems(in)) return {};
        return in.isEmpty() ? ItemKey{1 + index * (inner_ + 1)} : ItemKey{in.value + 1 + index};
    }
    bool describeItem(ItemKey item, GlobDescription& description) const override {
        ++described;
        std::size_t const row = outerOf(item);
        if (item.isEmpty() || row >= outer_) return false;
        description.role = isOuter(item) ? Role::row : Role::cell;
        description.name = Text(isOuter(item) ? L"row " : L"cell ") + Qv::WStringFromInteger(int(row));
        if (!isOuter(item)) description.name += L"/" + Qv::WStringFromInteger(int(innerOf(item)));
        description.states = D::enabled;
        if (!isInSight(row)) return true;
        int const top = height() - int(row - first_) * rowHeight;
        description.box = IntBox(0, top - rowHeight, width(), top).translated(screenBox().bottomLeft());
        return true;
    }
    bool performItemAction(ItemKey item, std::uint32_t action) override {
        if (action == D::reveal) first_ = outerOf(item);
        return action == D::reveal;
    }

    mutable std::size_t described = 0;
    std::size_t pressed = 0;

private:
    bool isOuter(ItemKey item) const { return (item.value - 1) % (inner_ + 1) == 0; }
    std::size_t outerOf(ItemKey item) const { return (item.value - 1) / (inner_ + 1); }
    std::size_t innerOf(ItemKey item) const { return (item.value - 1) % (inner_ + 1) - 1; }
    std::size_t rowsInSight() const { return static_cast<std::size_t>(height() / rowHeight); }
    bool isInSight(std::size_t row) const { return row >= first_ && row < first_ + rowsInSight(); }
    std::size_t rowAt(XY<int> place) const {
        return static_cast<std::size_t>((height() - 1 - place.y) / rowHeight);
    }

    std::size_t outer_;
    std::size_t inner_;
    std::size_t first_ = 0;
};

TEST_F(Descriptions, OfItemsAreMadeForThoseInSight) {
    auto* const table = showNew<ManyItems>(1'000'000, 3);
    EXPECT_EQ(table->described, 0u);
    Driver::Target const cell = driver_.findItem(Role::cell, L"cell 7/2");
    ASSERT_TRUE(cell);
    EXPECT_LE(table->described, 4 * 8u);
    EXPECT_TRUE(driver_.click(cell));
    EXPECT_EQ(table->pressed, 7u);
    EXPECT_THAT(driver_.tree().c_str(), testing::HasSubstr("\n      cell \"cell 7/2\" 3 of 3\n"
                                                           "    row \"row 8\" 9 of 1000000\n"));

    table->described = 0;
    EXPECT_FALSE(driver_.findItem(Role::row, L"row 10"));
    EXPECT_LE(table->described, 4 * 10u);
    Driver::Target const far = driver_.findItem(Role::row, L"row 1500", Driver::Reach::all);
    ASSERT_TRUE(far);
    EXPECT_FALSE(driver_.click(far)) << "out of sight";
    EXPECT_TRUE(driver_.reveal(far) && driver_.click(far));
    EXPECT_EQ(table->pressed, 1500u);
    EXPECT_FALSE(driver_.click(cell)) << "out of sight now";
    EXPECT_TRUE(driver_.findItemIn(far, Role::cell, L"cell 1500/1"));
    EXPECT_FALSE(driver_.findItemIn(far, Role::cell, L"cell 1501/1"));
    EXPECT_TRUE(driver_.findByWord("row", L"row 1505"));
    EXPECT_FALSE(driver_.click({table, ItemKey{1ULL << 40}})) << "a key that nobody knows";
    destroy(table);
    EXPECT_FALSE(far);
    EXPECT_FALSE(driver_.click(far));
    EXPECT_FALSE(Driver::describe(far));
}

TEST_F(Descriptions, OfItemsReachTheLastOneOfATree) {
    auto* const tree = showNew<ManyItems>(1000, 100);
    EXPECT_TRUE(driver_.findItem(Role::cell, L"cell 999/99", Driver::Reach::all));
    EXPECT_EQ(tree->described, 101'000u);
}

/// Each item holds the next one.
class Chain final : public ProbeGlob, public DescribedItems {
public:
    static constexpr std::uint64_t depth = 300'000;

    DescribedItems* describedItems() override { return this; }
    std::size_t numItems(ItemKey in) const override { return in.value < depth ? 1 : 0; }
    Range itemsInSight(ItemKey) const override { return {}; }
    ItemKey itemAt(ItemKey in, std::size_t) const override { return {in.value + 1}; }
    bool describeItem(ItemKey item, GlobDescription& description) const override {
        description.role = item.value == depth ? Role::treeItem : Role::row;
        return true;
    }
};

TEST_F(Descriptions, OfItemsDoNotRecurseOnTheDepthOfData) {
    showNew<Chain>();
    EXPECT_EQ(driver_.findItem(Role::treeItem, L"", Driver::Reach::all).item().value, Chain::depth);
}

} // namespace
} // namespace wainscot
