#include "tests/host_fixture.h"

#include "buttons/checkbox.h"
#include "buttons/radio_button.h"
#include "containers/scroll_bar.h"
#include "containers/slider.h"

namespace wainscot {
namespace {

/// A ground that scrolls its widgets with the wheel, as the owner of a drawing does.
class ScrolledGround final : public Glob {
public:
    static constexpr int step = 40;

    ScrolledGround() : Glob(300, 200) {}

    bool react(Event const& event) override {
        if (!mouse_wheel_event(event)) return Glob::react(event);
        notches += event.amount();
        if (scrolled) setWidgetPos(scrolled, getWidgetPos(scrolled) + XY<int>{0, event.amount() * step});
        return true;
    }
    int handleMessageEvent(LightweightString<char>, Glob*) override {
        ++numMessages;
        return 1;
    }

    Glob* scrolled = nullptr;
    int notches = 0;
    int numMessages = 0;
};

class Wheels : public HostTest {
protected:
    struct Subject {
        char const* name;
        std::function<Glob*()> make;
        /// What the wheel might change.
        std::function<double(Glob*)> value;
    };

    std::vector<Subject> const subjects_{
        {"slider",
         [] {
             Slider::InitArgs args(Colour(0.4, 0.5, 0.6), 120);
             args.value = 0.5;
             return new Slider(args);
         },
         [](Glob* glob) { return static_cast<Slider*>(glob)->getWidgetValue(); }},
        {"scroll bar",
         [] {
             ScrollBar::InitArgs args(eHorizontal, 120);
             args.thumb = {0.25, 0.25};
             return new ScrollBar(args);
         },
         [](Glob* glob) { return static_cast<ScrollBar*>(glob)->getThumbPos(); }},
        {"checkbox", [] { return new Checkbox(Checkbox::InitArgs(L"Snap to grid")); },
         [](Glob* glob) { return static_cast<Checkbox*>(glob)->getWidgetValue() ? 1.0 : 0.0; }},
        {"choice", [] { return new radio_button(L"Mono", "mono", nullptr, 120, 24); },
         [](Glob* glob) { return static_cast<Button*>(glob)->isDown() ? 1.0 : 0.0; }},
    };
};

TEST_F(Wheels, AGestureBelongsToWhatItBeganOnAndChangesNothingElse) {
    RecordingParent* const root = openWindow(400, 300);
    for (Subject const& subject : subjects_) {
        auto* const ground = new ScrolledGround;
        root->addChild(ground, BottomLeft(20, 20));
        Glob* const widget = subject.make();
        ground->addChild(widget, BottomLeft(100, 20));
        ground->scrolled = widget;
        driver_.settle();
        double const before = subject.value(widget);
        // The second notch brings it under the pointer, where all others find it.
        XY<int> const pointer = ground->globXYToScreenXY(
            {100 + widget->width() / 2, 20 + 2 * ScrolledGround::step + widget->height() / 2});
        driver_.wheelAt(pointer, 1);
        driver_.wheelAt(pointer, 1);
        EXPECT_TRUE(widget->screenBox().contains(pointer));
        ground->scrolled = nullptr;
        for (int i = 0; i < 5; ++i) driver_.wheelAt(pointer, i % 2 == 0 ? 1 : -1);
        EXPECT_EQ(ground->notches, 3) << subject.name;
        EXPECT_EQ(ground->numMessages, 0) << subject.name;
        EXPECT_EQ(subject.value(widget), before) << subject.name;
        destroy(ground);
    }
}

TEST_F(Wheels, OverAWidgetChangesNoValueByItself) {
    RecordingParent* const root = openWindow(400, 300);
    for (Subject const& subject : subjects_) {
        auto* const ground = new ScrolledGround;
        root->addChild(ground, BottomLeft(20, 20));
        Glob* const widget = subject.make();
        ground->addChild(widget, BottomLeft(100, 20));
        driver_.settle();
        double const before = subject.value(widget);
        bool const isBar = dynamic_cast<ScrollBar*>(widget) != nullptr;
        EXPECT_TRUE(driver_.wheel(widget, 2)) << driver_.problem().c_str();
        EXPECT_EQ(subject.value(widget), before) << subject.name;
        EXPECT_EQ(ground->notches, isBar ? 0 : 2) << subject.name << ": what scrolls gets it";
        EXPECT_EQ(ground->numMessages, isBar ? 2 : 0) << subject.name;
        destroy(ground);
        driver_.advance(600);
    }
}

} // namespace
} // namespace wainscot
