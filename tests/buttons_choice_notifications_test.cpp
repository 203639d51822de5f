#include "tests/sent_notifications.h"

#include "buttons/checkbox_group.h"
#include "buttons/checkbox_radio_set.h"
#include "buttons/radio_set.h"

namespace wainscot {
namespace {

/// The same for sets.
class ChoiceNotifications : public SentNotifications {
protected:
    Checkbox& box() { return *static_cast<Checkbox*>(widget_); }
    void dropListeners() override {
        if (auto* const set = dynamic_cast<CheckboxRadioSet*>(widget_)) return set->setDataAdaptor({});
        box().setCallback(WidgetCallback("gone"));
        box().setUserFunction(nullptr, nullptr);
        box().setDataAdaptor({});
    }
    static void hear(Checkbox*, void* test) { static_cast<ChoiceNotifications*>(test)->react(); }
    void press(Glob* member, std::uint32_t key) {
        member->claimKbdFocus();
        driver_.key(key);
    }
};

TEST_F(ChoiceNotifications, OfCheckboxes) {
    auto const once = [this] { click(); };
    runAll<Checkbox>({{"ticked", "Checkbox TICKED", once},
                      {"ticked", "Checkbox TICKED", [this] { press(widget_, Key::space); }},
                      {"clear", "Checkbox CLEAR",
                       [this] {
                           box().setState(true);
                           click();
                       }},
                      {"callback", "",
                       [this] {
                           box().setCallback(WidgetCallback(reaction(), ""));
                           click();
                       }},
                      {"user function", "",
                       [this] {
                           box().setUserFunction(hear, this);
                           click();
                       }},
                      {"adaptor", "",
                       [this] {
                           bind<bool>(box());
                           click();
                       }}},
                     [] { return Checkbox::make(0, 0, L"b", false).release(); });
}

TEST_F(ChoiceNotifications, OfRadioButtons) {
    radio_set set;
    runAll<radio_button>({{"on", "r on", [this] { click(); }},
                          {"on", "r on", [this] { press(widget_, Key::space); }},
                          {"off", "r off",
                           [this, &set] {
                               click();
                               set.set_current(-1, false);
                           }}},
                         [&set] { return new radio_button(L"r", "r", &set, 60, 24); });
}

TEST_F(ChoiceNotifications, OfSets) {
    runAll<RadioSet>({{"radio_set_message", "radio_set_message",
                       [this] { driver_.click(static_cast<RadioSet*>(widget_)->getButton(1)); }},
                      {"radio_set_message", "radio_set_message",
                       [this] { press(static_cast<RadioSet*>(widget_)->getButton(0), Key::right); }}},
                     [] {
                         return new RadioSet(RadioSet::InitArgs({L"a", L"b"}));
                     });
    auto const choose = [this] { driver_.click(static_cast<CheckboxRadioSet*>(widget_)->getCheckbox(1)); };
    auto const step = [this] { press(static_cast<CheckboxRadioSet*>(widget_)->getCheckbox(0), Key::down); };
    runAll<CheckboxRadioSet>({{"CRSChanged", "CRSChanged", choose},
                              {"CRSChanged", "CRSChanged", step},
                              {"CRSChanged", "CRSChanged",
                               [this] { static_cast<CheckboxRadioSet*>(widget_)->setSelectedItem(1); }},
                              {"adaptor", "",
                               [this, choose] {
                                   bind<int>(*static_cast<CheckboxRadioSet*>(widget_));
                                   choose();
                               }},
                              {"adaptor", "",
                               [this, step] {
                                   bind<int>(*static_cast<CheckboxRadioSet*>(widget_));
                                   step();
                               }}},
                             [] {
                                 return new CheckboxRadioSet(CheckboxRadioSet::InitArgs({L"a", L"b"}));
                             });
    runAll<CheckboxGroup>({{"CheckboxGroupClicked", "CheckboxGroupClicked",
                            [this] { driver_.click(static_cast<CheckboxGroup*>(widget_)->getCheckbox(0)); }}},
                          [] { return new CheckboxGroup(CheckboxGroup::InitArgs(L"t", {L"a"})); });
}

} // namespace
} // namespace wainscot
