#include "tests/controls.h"
#include "tests/widget_fixture.h"

#include "foundation/val_server_adaptor.h"

#include <star_rating.h>

#include <stdexcept>

namespace wainscot {
namespace {

/// Answers every wish as the test says.
template <class T>
class Guard final : public iValGuard<T>, public Qv::InternalRefCount {
public:
    explicit Guard(std::function<bool(T&)> answer) : answer_(std::move(answer)) {}
    bool requestValChange(ValServer<T>*, T& value) override { return answer_(value); }

private:
    std::function<bool(T&)> answer_;
};

/// A control that shows a value, and what its user does to it.
template <class T>
struct Bound {
    char const* name;
    std::function<Glob*()> make;
    /// Leads from the first value to the second.
    std::function<void(Glob&)> act;
    T from, to;
    /// Another value that the data may make of it.
    T other;
    /// What the owner hears of the act, and of one that the data refuses.
    char const* told;
    char const* toldOfRefused = "";
};

class BoundControls : public WidgetTest {
protected:
    void drag(Glob& glob, XY<int> from, XY<int> way) {
        driver_.moveTo(glob.globXYToScreenXY(from));
        driver_.press();
        driver_.moveTo(glob.globXYToScreenXY(from + way));
        driver_.release();
    }
    void key(Glob& glob, std::uint32_t code) {
        glob.claimKbdFocus();
        driver_.key(code);
    }

    template <class T>
    void check(Bound<T> const& row) {
        SCOPED_TRACE(row.name);
        Glob* const glob = show(row.make(), 20, 20);
        auto& widget = dynamic_cast<ValWidget<T>&>(*glob);
        auto& second = dynamic_cast<ValWidget<T>&>(*show(row.make(), 20, 160));
        row.act(*glob);
        EXPECT_EQ(widget.getWidgetValue(), row.to) << "bound to nothing";
        EXPECT_NE(told(), "");

        ValServer<T> server(row.from);
        for (ValWidget<T>* each : {&widget, &second}) bindToServer(*each, server);
        auto const expect = [&](T const& value, char const* heard) {
            EXPECT_EQ(server.value(), value);
            EXPECT_EQ(widget.getWidgetValue(), value);
            EXPECT_EQ(second.getWidgetValue(), value);
            EXPECT_EQ(told(), heard);
        };
        expect(row.from, "");
        driver_.moveTo(root_->globXYToScreenXY({395, 298}));
        auto const atFirst = picture();
        server = row.to;
        expect(row.to, "");
        EXPECT_TRUE(picture() != atFirst);
        EXPECT_EQ(Consistency(driver_).fault(), "");
        std::uint64_t const presented = nativeOf(root_)->numPresented();
        server = row.to;
        driver_.settle();
        EXPECT_EQ(nativeOf(root_)->numPresented(), presented) << "an equal value";
        server = row.from;
        row.act(*glob);
        expect(row.to, row.told);

        auto const guarded = [&](std::function<bool(T&)> answer) {
            server.setGuard({});
            server = row.from;
            server.setGuard(Qv::makePtr<Guard<T>>(std::move(answer)));
            told();
            row.act(*glob);
        };
        guarded([](T&) { return false; });
        expect(row.from, row.toldOfRefused);
        guarded([&](T& value) { return value = row.other, true; });
        EXPECT_EQ(told().empty(), std::string(row.told).empty());
        expect(row.other, "");
        guarded([](T&) -> bool { throw std::runtime_error("no"); });
        told();
        expect(row.from, "");

        server.setGuard({});
        struct Thrower : ValClient<T> {
            void handleNotification(NotifierEvent<T> const& event) override {
                if (event.type == ValServerBase::valChangedMsgType) throw std::runtime_error("observer");
            }
        };
        {
            Thrower thrower;
            thrower.attach(server);
            row.act(*glob);
            EXPECT_TRUE(thrower.detach());
        }
        expect(row.to, row.told);
        EXPECT_EQ(EventSystem::live().pointer.captureHolder(), nullptr);
        destroy(glob);
        destroy(dynamic_cast<Glob*>(&second));
        driver_.settle();
        root_->forgetMessages();
    }
};

Glob* makeBar() {
    return newBar(eHorizontal, {0.25, 0.5}, false, true);
}

Glob* makeSlider() {
    return newSlider(0.5);
}

TEST_F(BoundControls, ShowTheirDataAndChangeItAsItAllows) {
    expectDiagnostic("exception in handler");
    auto const click = [this](Glob& glob) { driver_.click(&glob); };
    auto const toEnd = [this](Glob& glob) { key(glob, Key::end); };
    auto const enter = [this](Glob& glob) {
        key(glob, Key::ctrl | 'A');
        driver_.type(L"new");
        driver_.key(Key::enter);
    };
    using Text = LightweightString<wchar_t>;
    check<Text>({"text", [this] { return newTextBox(L"old", {eEditEnd}, root_); }, enter, L"old", L"new",
                 L"other", "end", "end"});
    auto const leave = [this](Glob& glob) {
        key(glob, Key::ctrl | 'A');
        driver_.type(L"new");
        driver_.key(Key::enter);
        root_->claimKbdFocus();
        driver_.settle();
    };
    check<Text>({"lines",
                 [this] {
                     auto* const box = new MultiLineTextBox(MultiLineTextBox::InitArgs(120, 60, L"old"));
                     box->requestCallback("end", root_, eEditEnd);
                     return box;
                 },
                 leave, L"old", L"new\n", L"other", "end", "end"});
    check<bool>({"checkbox", [] { return newBox(); }, click, false, true, true, ""});
    check<int>({"set",
                [] {
                    return newSet({L"a", L"b", L"c"}, 0);
                },
                [&](Glob& glob) { click(*static_cast<CheckboxRadioSet&>(glob).getCheckbox(1)); }, 0, 1, 2,
                "CRSChanged"});
    check<int>({"rating", [] { return new example::StarRating(GlobCreationInfo(100, 20)); }, toEnd, 0, 5, 2,
                "rated"});
    check<double>(
        {"slider, key", makeSlider, toEnd, 0.5, 1, 0.7, "slider 1.000000 slider_released 1.000000"});
    check<double>({"slider, drag", makeSlider,
                   [this](Glob& glob) {
                       drag(glob, static_cast<Slider&>(glob).getThumbArea().centre(), {100, 0});
                   },
                   0.5, 1, 0.7, "slider 1.000000 slider_released 1.000000", "slider_released 0.500000"});
    check<ThumbSettings>({"thumb",
                          makeBar,
                          [this](Glob& glob) {
                              drag(glob, {100, 12}, {-38, 0});
                          },
                          {0.25, 0.5},
                          {0, 0.5},
                          {0.5, 0.25},
                          "ScrollBar::thumbMoved ScrollBar::thumbReleased",
                          "ScrollBar::thumbReleased"});
    check<ThumbSettings>({"track",
                          makeBar,
                          [this](Glob& glob) {
                              drag(glob, {170, 12}, {});
                          },
                          {0.25, 0.5},
                          {0.5, 0.5},
                          {0, 0.25},
                          "ScrollBar::thumbMoved"});
}

} // namespace
} // namespace wainscot
