#include "tests/widget_fixture.h"

#include "buttons/checkbox_group.h"
#include "buttons/checkbox_radio_set.h"
#include "buttons/radio_set.h"
#include "containers/lazy_tabbed_dialogue.h"
#include "containers/scroll_bar.h"
#include "containers/slider.h"
#include "foundation/val_server_adaptor.h"
#include "host/events/key_names.h"
#include "menus/combo_box.h"
#include "menus/drop_down_menu_button.h"
#include "menus/menu_button_group.h"
#include "tables/table_widget.h"
#include "tables/tree_view.h"
#include "text/multi_line_text_box.h"
#include "text/numeric_text_box.h"
#include "text/vari_box.h"
#include <star_rating.h>

#include <fstream>
#include <sstream>

namespace wainscot {
namespace {

using example::StarRating;

class Guide : public WidgetTest {
protected:
    StarRating* addRating(int x) {
        auto* const rating = new StarRating(GlobCreationInfo(100, 20));
        root_->addChild(rating, BottomLeft(x, 10));
        order_.addTabStop(*rating);
        return rating;
    }
    /// The middle of a star, as they lie from the left.
    static XY<int> star(StarRating const& rating, int place) {
        return rating.globXYToScreenXY({place * 20 - 10, 10});
    }
    void clickStar(StarRating const& rating, int place) {
        driver_.moveTo(star(rating, place));
        driver_.press();
        driver_.release();
    }

    TabOrderManager order_{false};
};

TEST_F(Guide, ItsControlIsAControlLikeAnyOther) {
    StarRating* const one = addRating(10);
    ValServer<int> stars(4);
    bindToServer<int>(*one, stars);
    one->claimKbdFocus();
    EXPECT_TRUE(one->isTabStopFocus());
    driver_.key(Key::right);
    driver_.key(Key::right);
    EXPECT_EQ(stars.value(), 5) << "there are no more";
    driver_.key(Key::left);
    UifStd::setRightToLeft(true);
    driver_.key(Key::left);
    EXPECT_EQ(stars.value(), 5);
    clickStar(*one, 1);
    EXPECT_EQ(stars.value(), 5) << "the first one lies at the right";
    clickStar(*one, 4);
    EXPECT_EQ(stars.value(), 2);
    driver_.key(Key::home);
    GlobDescription const description = GlobDescription::of(*one);
    EXPECT_EQ(description.number, (NumberValue{0, 0, 5, 1}));
    EXPECT_NE(description.states & GlobDescription::focused, 0u);
    told();

    int heard = -1;
    one->setCallback(WidgetCallback(makeCallback<int, NotifyMsg>([&](NotifyMsg const& message) {
                                        heard = *unwrapData<int>(message.payload());
                                        destroy(one);
                                        return 1;
                                    }),
                                    ""));
    driver_.key(Key::end);
    EXPECT_EQ(heard, 5);
    EXPECT_FALSE(is_good_glob_ptr(one));
    EXPECT_EQ(told(), "");
}

// The rows of keys and messages in the guides come from the tables of the classes.

std::string guide(char const* name) {
    std::ifstream const file(std::string(WAINSCOT_SOURCE_DIR) + "/docs/" + name);
    std::stringstream text;
    text << file.rdbuf();
    return text.str();
}

template <std::size_t count>
void expectMessages(char const* file, MessageInfo const (&table)[count]) {
    std::string const text = guide(file);
    for (MessageInfo const& row : table) {
        bool const isMessage = row.delivery != MessageInfo::callback;
        std::string name;
        if (!row.text.empty()) name.append("`").append(row.text).append("`");
        if (row.naming == MessageInfo::ownThenText) name.insert(0, row.text.empty() ? "name" : "name + ");
        if (row.naming == MessageInfo::textThenValue) name += " + value";
        char const* const how = row.delivery == MessageInfo::called   ? "called"
                                : row.delivery == MessageInfo::queued ? "queued"
                                                                      : "call";
        std::ostringstream line;
        line << "| " << (isMessage ? name : "-") << " | " << row.when << " | " << how << " | ";
        if (isMessage) line << row.code << " |";
        EXPECT_NE(text.find(line.str()), std::string::npos) << file << " lacks\n" << line.str();
    }
}

template <class Action, std::size_t count>
void expectKeys(char const* file, KeyRow<Action> const (&table)[count]) {
    std::string const text = guide(file);
    for (std::size_t i = 0; i < count;) {
        std::string line = "| ";
        std::size_t const first = i;
        for (; i < count && table[i].does == table[first].does; ++i)
            line += (i > first ? ", " : "") + std::string(keyToString(table[i].key).c_str());
        line += " | " + std::string(table[first].does) + " |";
        EXPECT_NE(text.find(line), std::string::npos) << file << " lacks\n" << line;
    }
}

TEST(Guides, TellTheKeysAndMessagesThatThereAre) {
    expectMessages("button.md", Button::messageTable);
    expectMessages("choices.md", Checkbox::messageTable);
    expectMessages("choices.md", CheckboxGroup::messageTable);
    expectMessages("choices.md", radio_button::messageTable);
    expectMessages("choices.md", RadioSet::messageTable);
    expectMessages("choices.md", CheckboxRadioSet::messageTable);
    expectMessages("scrolling.md", ScrollBar::messageTable);
    expectMessages("scrolling.md", Slider::messageTable);
    expectMessages("text-entry.md", TextBox::messageTable);
    expectMessages("text-lines.md", MultiLineTextBox::messageTable);
    expectMessages("menus.md", Menu::messageTable);
    expectMessages("drop-downs.md", DropDownMenuButton::messageTable);
    expectMessages("drop-downs.md", ComboBox::messageTable);
    expectMessages("panel.md", StandardPanel::messageTable);
    expectMessages("table.md", TableWidget::messageTable);
    expectKeys("table.md", TableWidget::keyTable);
    expectKeys("table.md", TableKeys::keyTable);
    expectMessages("tree.md", TreeView::messageTable);
    expectKeys("tree.md", TreeView::keyTable);
    expectMessages("tabs.md", TabbedDialogue::messageTable);
    expectMessages("tabs.md", LazyTabbedDialogue::messageTable);
    expectMessages("tabs.md", Tab::messageTable);
    expectKeys("tabs.md", TabbedDialogue::keyTable);
    expectKeys("tabs.md", TabbedDialogue::stripKeyTable);
    expectKeys("button.md", Button::keyTable);
    expectKeys("choices.md", Checkbox::keyTable);
    expectKeys("choices.md", choiceKeys);
    expectKeys("scrolling.md", Slider::keyTable);
    expectKeys("text-entry.md", TextKeys::actionTable);
    expectKeys("text-entry.md", TextKeys::shortcutTable);
    expectKeys("text-entry.md", NumericTextBox::keyTable);
    expectMessages("value-box.md", VariBox::messageTable);
    expectKeys("value-box.md", VariBox::keyTable);
    expectKeys("menus.md", Menu::keyTable);
    expectKeys("drop-downs.md", DropDownMenuButton::keyTable);
    expectKeys("drop-downs.md", ComboBox::keyTable);
    expectKeys("drop-downs.md", MenuButtonGroup::keyTable);
    expectKeys("text-lines.md", TextKeys::lineActionTable);
}

} // namespace
} // namespace wainscot
