#include "tests/panel_fixture.h"
#include "tests/sent_notifications.h"

#include "buttons/standard_buttons.h"

namespace wainscot {
namespace {

class ButtonNotifications : public SentNotifications {
protected:
    Button& button() { return *static_cast<Button*>(widget_); }
    void drag() {
        driver_.press(widget_);
        driver_.moveTo({130, 380});
    }
    void dropListeners() override {
        button().setCallback(WidgetCallback("gone"));
        button().setInnerMessageCallback({});
    }
};

TEST_F(ButtonNotifications, OfButtons) {
    auto const once = [this] { click(); };
    auto const atPress = [this] {
        button().setMessageOnMouseUp(false);
        button().setRepeating(5, 1.0);
        click();
    };
    auto const latch = [this] {
        button().setLatching(true, false);
        click();
        if (is_good_glob_ptr(widget_)) click();
    };
    auto const dragged = [this] {
        button().setMessageOnDrag(true);
        drag();
    };
    auto const repeat = [this] {
        button().setRepeating(1, 1.0);
        driver_.press(widget_);
        driver_.advance(600);
    };
    auto const calling = [this](std::function<void()> act) {
        return [this, act] {
            button().setCallback(WidgetCallback(reaction(), ""));
            act();
        };
    };
    auto const key = [this] {
        button().setMessageOnMouseUp(false);
        widget_->claimKbdFocus();
        driver_.key(Key::space);
    };
    runAll<Button>(
        {
            {"released", "b", once},
            {"pressed", "b", atPress},
            {"on", "b on", latch},
            {"off", "b off", latch},
            {"drag", "b drag", dragged},
            {"repeat", "b", repeat},
            {"callback", "", calling(once)},
            {"callback", "", calling(atPress)},
            {"callback", "", calling(latch)},
            {"callback", "", calling(dragged)},
            {"callback", "", calling(repeat)},
            {"callback", "", calling(key)},
            {"callback", "", calling([this] { button().switchState(buttonDown, true); })},
            {"message callback", "",
             [this] {
                 expectDiagnostic("message not handled");
                 button().setInnerMessageCallback(reaction());
                 callMessage("inner", widget_);
             }},
        },
        [] {
            auto* const made = new Button(L"b", "b", 80, 24);
            made->setPayload(wrapData(1));
            return made;
        });
}

TEST_F(ButtonNotifications, OfTitleButtons) {
    auto const once = [this] { click(); };
    auto const twice = [this] {
        click();
        if (is_good_glob_ptr(widget_)) click();
    };
    runAll<PootButton>({{"poot", "poot", once}}, [] { return new PootButton(Palette()); });
    runAll<SizeButton>({{"freeze_flip", "freeze_flip", once}}, [] { return new SizeButton(Palette()); });
    runAll<PinButton>({{"pin on", "pin on", once}, {"pin off", "pin off", twice}},
                      [] { return new PinButton(Palette()); });
    runAll<SettingsButton>({{"settings on", "settings on", once}, {"settings off", "settings off", twice}},
                           [] { return new SettingsButton(Palette()); });
}

TEST_F(ButtonNotifications, OfPanels) {
    StandardPanel* panel = nullptr;
    auto const type = [&] {
        panel->getTitleWidget()->claimKbdFocus();
        driver_.type(L"new");
    };
    runAll<StandardPanel>({{"StdPanelTitleTyped", "StdPanelTitleTyped", type},
                           {"StdPanelTitleChanged", "StdPanelTitleChanged",
                            [&] {
                                type();
                                driver_.key(Key::enter);
                            }}},
                          [&] {
                              panel = new StandardPanel(150, 100);
                              panel->setTitle(L"old");
                              panel->setEditableTitle(true);
                              return panel;
                          });
}

} // namespace
} // namespace wainscot
