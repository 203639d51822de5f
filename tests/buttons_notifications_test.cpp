#include "tests/host_fixture.h"

#include "buttons/standard_buttons.h"
#include "foundation/standard_panel.h"

#include <algorithm>

namespace wainscot {
namespace {

/// Everything that buttons and panels tell others, and in each the widget, its parent, its window or its
/// listener destroyed. What a class declares (`sentNotifications`) and no row sends fails the test.
class SentNotifications : public HostTest {
protected:
    enum Victim { sender, parent, window, listener, numVictims };

    struct Row {
        std::string_view notification;
        /// The message that the parent hears; empty for callbacks, which call `react()` themselves.
        std::string_view message;
        /// Leads to the notification.
        std::function<void()> act;
    };

    /// Destroys in the message that is waited for.
    class Listener : public Glob {
    public:
        explicit Listener(SentNotifications& test) : Glob(300, 200), test_(test) {}
        int handleMessageEvent(LightweightString<char> name, Glob*) override { return hear(name); }
        int handleDataMessageEvent(LightweightString<char> name, Glob*, Qv::Ptr<iObject>) override {
            return hear(name);
        }

    private:
        int hear(LightweightString<char> const& name) {
            if (test_.message_ == name.c_str()) test_.react();
            return 1;
        }
        SentNotifications& test_;
    };

    void react() {
        ++heard_;
        if (victim_ == sender) destroy(widget_);
        if (victim_ == parent || (victim_ == listener && !message_.empty())) destroy(parent_);
        if (victim_ == window) destroy(root_);
        if (victim_ != listener || !message_.empty()) return;
        static_cast<Button*>(widget_)->setCallback(WidgetCallback("gone"));
        static_cast<Button*>(widget_)->setMessageCallback({});
    }

    WidgetCallback::Callback reaction() {
        return makeCallback<int, NotifyMsg>([this](NotifyMsg const&) {
            react();
            return 0;
        });
    }

    void run(Row const& row, std::function<Glob*()> const& make, Victim victim) {
        root_ = openWindow();
        root_->addChild(parent_ = new Listener(*this), BottomLeft(10, 10));
        parent_->addChild(widget_ = make(), BottomLeft(20, 20));
        driver_.settle();
        victim_ = victim;
        message_ = row.message;
        heard_ = 0;
        row.act();
        driver_.settle();
        EXPECT_EQ(heard_, 1) << row.notification << ", victim " << victim;
        EXPECT_EQ(is_good_glob_ptr(widget_), victim == listener && row.message.empty()) << row.notification;
        driver_.release();
        destroy(root_);
        driver_.settle();
    }

    /// All rows of a class; `T` declares what they are about.
    template <class T>
    void runAll(std::vector<Row> const& rows, std::function<Glob*()> const& make) {
        auto const rowFor = [&](std::string_view name) {
            return std::ranges::find(rows, name, &Row::notification) != rows.end();
        };
        for (std::string_view const declared : T::sentNotifications)
            EXPECT_TRUE(rowFor(declared)) << declared << " is declared, and has no row";
        for (Row const& row : rows) {
            EXPECT_NE(std::ranges::find(T::sentNotifications, row.notification),
                      std::end(T::sentNotifications))
                << row.notification << " is not declared";
            for (int victim = sender; victim < numVictims; ++victim)
                run(row, make, static_cast<Victim>(victim));
        }
    }

    Button& button() { return *static_cast<Button*>(widget_); }
    void click() { driver_.click(widget_); }
    void drag() {
        driver_.press(widget_);
        driver_.moveTo({130, 380});
    }

    RecordingParent* root_ = nullptr;
    Glob* parent_ = nullptr;
    Glob* widget_ = nullptr;
    std::string_view message_;
    Victim victim_ = sender;
    int heard_ = 0;
};

TEST_F(SentNotifications, OfButtons) {
    auto const latch = [this] {
        button().setLatching(true, false);
        click();
        if (is_good_glob_ptr(widget_)) click();
    };
    runAll<Button>(
        {
            {"released", "b", [this] { click(); }},
            {"pressed", "b",
             [this] {
                 button().setMessageOnMouseUp(false);
                 button().setRepeating(5, 1.0);
                 click();
             }},
            {"on", "b on", latch},
            {"off", "b off", latch},
            {"drag", "b drag",
             [this] {
                 button().setMessageOnDrag(true);
                 drag();
             }},
            {"repeat", "b",
             [this] {
                 button().setRepeating(1, 1.0);
                 driver_.press(widget_);
                 driver_.advance(600);
             }},
            {"callback", "",
             [this] {
                 button().setCallback(WidgetCallback(reaction(), ""));
                 click();
             }},
            {"message callback", "",
             [this] {
                 expectDiagnostic("message not handled");
                 button().setMessageCallback(reaction());
                 callMessage("inner", widget_);
             }},
        },
        [] {
            auto* const made = new Button(L"b", "b", 80, 24);
            made->setPayload(wrapData(1));
            return made;
        });
}

TEST_F(SentNotifications, OfTitleButtons) {
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

/// A title box that reports what it is told to.
class TitleBox : public Glob, public iTitleBox {
public:
    explicit TitleBox(StandardPanel& panel) : Glob(10, 10), panel_(panel) {}
    Glob& glob() override { return *this; }
    LightweightString<wchar_t> titleText() const override { return text_; }
    void setTitleText(LightweightString<wchar_t> const& text) override { text_ = text; }
    void type(wchar_t const* text) {
        text_ = text;
        panel_.handleTitleTyped();
    }
    void end() { panel_.handleTitleEdited(); }

private:
    StandardPanel& panel_;
    LightweightString<wchar_t> text_;
};

TEST_F(SentNotifications, OfPanels) {
    static TitleBox* box = nullptr;
    auto const before = Registry::instance().makeTitleBox;
    Registry::instance().makeTitleBox = [](StandardPanel& panel, LightweightString<wchar_t> const&,
                                           Glib::FontDesc const&) -> iTitleBox* {
        return box = new TitleBox(panel);
    };
    runAll<StandardPanel>({{"StdPanelTitleTyped", "StdPanelTitleTyped", [] { box->type(L"new"); }},
                           {"StdPanelTitleChanged", "StdPanelTitleChanged",
                            [] {
                                box->type(L"new");
                                box->end();
                            }}},
                          [] {
                              auto* const panel = new StandardPanel(150, 100);
                              panel->setTitle(L"old");
                              panel->setEditableTitle(true);
                              return panel;
                          });
    Registry::instance().makeTitleBox = before;
}

} // namespace
} // namespace wainscot
