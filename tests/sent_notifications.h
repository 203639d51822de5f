#pragma once

#include "tests/host_fixture.h"

#include "foundation/report.h"
#include "foundation/val_widget.h"

#include <algorithm>

namespace wainscot {

/// Calls the test in each request.
template <class T>
class ReactingAdaptor final : public ValAdaptorBase<T> {
public:
    explicit ReactingAdaptor(std::function<void()> react) : react_(std::move(react)) {}
    T getDataValue() const override { return {}; }
    bool requestSetNewDataValue(T const&, DataChangeType) override {
        auto const handler = react_;
        handler();
        return true;
    }

private:
    std::function<void()> react_;
};

/// Sends every report of a class of widgets, and destroys the widget, its parent, its window or its listener
/// in each. The test fails when a report of the class's `messageTable` has no row here.
class SentNotifications : public HostTest {
protected:
    enum Victim { sender, parent, window, listener, numVictims };

    struct Row {
        std::string_view notification;
        /// The message that the parent hears; empty for callbacks, which call `react()` themselves.
        std::string_view message;
        /// Leads to the notification.
        std::function<void()> act;
        /// How many reports pass before the one that destroys.
        int passed = 0;
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

    /// Takes the listeners away from the widget.
    virtual void dropListeners() {}

    void react() {
        // A listener that is taken away may be told of that.
        if (isReacting_ || passing_-- > 0) return;
        isReacting_ = true;
        ++heard_;
        if (victim_ == sender) destroy(widget_);
        if (victim_ == parent || (victim_ == listener && !message_.empty())) destroy(parent_);
        if (victim_ == window) destroy(root_);
        if (victim_ == listener && message_.empty()) dropListeners();
        isReacting_ = false;
    }

    template <class T>
    void bind(ValWidget<T>& widget) {
        widget.setDataAdaptor(Qv::Ptr<ValAdaptorBase<T>>(new ReactingAdaptor<T>([this] { react(); })));
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
        passing_ = row.passed;
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
        for (MessageInfo const& declared : T::messageTable)
            EXPECT_TRUE(rowFor(declared.what)) << declared.what << " is declared, and has no row";
        for (Row const& row : rows) {
            EXPECT_NE(std::ranges::find(T::messageTable, row.notification, &MessageInfo::what),
                      std::end(T::messageTable))
                << row.notification << " is not declared";
            for (int victim = sender; victim < numVictims; ++victim)
                run(row, make, static_cast<Victim>(victim));
        }
    }

    void click() { driver_.click(widget_); }

    RecordingParent* root_ = nullptr;
    Glob* parent_ = nullptr;
    Glob* widget_ = nullptr;
    std::string_view message_;
    Victim victim_ = sender;
    int heard_ = 0;
    int passing_ = 0;
    bool isReacting_ = false;
};

} // namespace wainscot
