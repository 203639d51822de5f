#include "tests/controls.h"
#include "tests/widget_fixture.h"

#include "buttons/radio_button.h"
#include "host/base/convert.h"
#include "host/objects/description.h"
#include "host/objects/drag_drop_item.h"
#include "host/windows/drag_drop_manager.h"

#include <star_rating.h>

#include <array>

namespace wainscot {
namespace {

/// Hears which changes begin (0), go on (1), end (2) or are all there is (3).
template <class T>
class ListeningData final : public ValAdaptorBase<T> {
public:
    explicit ListeningData(std::string& heard) : heard_(heard) {}
    T getDataValue() const override { return {}; }
    bool requestSetNewDataValue(T const&, DataChangeType why) override {
        heard_ += std::to_string(static_cast<int>(why));
        return true;
    }

private:
    std::string& heard_;
};

class PlainPressable final : public Pressable<Glob> {
public:
    explicit PlainPressable(std::string& heard) : Pressable<Glob>(80, 24), heard_(heard) {}
    bool react(Event const& event) override { return reactToPress(event) || Glob::react(event); }

protected:
    bool pressBegan(Event const&) override {
        heard_ += "began ";
        return true;
    }
    void pressEnded(PressEnd how) override {
        constexpr std::array names{"inside", "outside", "cancelled", "lost"};
        heard_ += names[static_cast<std::size_t>(how)];
    }

private:
    std::string& heard_;
};

struct OwnSet {
    radio_set ownSet;
};

/// The only member of its set.
class OwnMember final : OwnSet, public radio_button {
public:
    OwnMember() : radio_button(L"r", "r", &ownSet, 80, 24) {}
};

/// What a press may change.
std::string valueOf(Glob& glob) {
    GlobDescription const said = Driver::describe(glob);
    if (said.role == Role::panel) {
        IntBox const box = glob.box();
        return std::to_string(box.x1) + "," + std::to_string(box.y1) + " " + std::to_string(box.width());
    }
    double const size = said.number ? said.number->page : 0;
    std::string const value = toUTF8(said.value).c_str();
    if (size > 0) return value + "+" + toUTF8(Qv::WStringFromFloat(size)).c_str();
    auto const isOn = said.states & (GlobDescription::pressed | GlobDescription::checked);
    return said.number ? value : isOn ? "on" : "off";
}

/// By `PressEnd`.
using Outcomes = std::array<char const*, 4>;

/// A control as a row of the table.
struct Control {
    char const* name;
    /// Bound to data that writes down what it hears.
    std::function<Glob*(std::string& heard)> make;
    /// Where it is pressed, and how far the pointer goes on.
    std::function<XY<int>(Glob&)> place;
    XY<int> way;
    /// Gives it the value from before the press.
    std::function<void(Glob&)> putBack;
    /// For each kind of ending: its value, what the data has heard, what the owner has heard.
    Outcomes outcomes;
    /// Whether a press begins while another button is held.
    bool beginsInChord = true;
};

XY<int> centre(Glob& glob) {
    return glob.bounds().centre();
}

void raise(Glob& glob) {
    static_cast<Button&>(glob).Button::setState(buttonUp, eRedrawYes);
}

Control buttonRow(char const* name, std::function<void(Button&)> prepare, Outcomes const& ends) {
    return {name,
            [prepare](std::string&) {
                auto* const button = newButton();
                prepare(*button);
                return button;
            },
            centre,
            {4, 0},
            raise,
            ends};
}

Control boxRow(char const* name, Checkbox::eMsgGeneration when, Outcomes const& ends) {
    return {name,
            [when](std::string& heard) {
                auto* const box = newBox();
                box->setMessageGeneration(when);
                box->setDataAdaptor(Qv::makePtr<ListeningData<bool>>(heard));
                return box;
            },
            centre,
            {4, 0},
            [](Glob& glob) { static_cast<Checkbox&>(glob).setState(false); },
            ends,
            false};
}

Control barRow(char const* name, XY<int> place, Outcomes const& ends) {
    return {name,
            [](std::string& heard) {
                auto* const bar = newBar(eHorizontal, {0.25, 0.5}, true, true);
                bar->setDataAdaptor(Qv::makePtr<ListeningData<ThumbSettings>>(heard));
                return bar;
            },
            [place](Glob&) { return place; },
            {-15, 0},
            [](Glob& glob) {
                ThumbSettings thumb{0.25, 0.5};
                static_cast<ScrollBar&>(glob).setNewWidgetValue(thumb, eRedrawYes);
            },
            ends};
}

Control panelRow(char const* name, XY<int> place, Outcomes const& ends) {
    return {name,
            [](std::string&) {
                auto* const panel =
                    new StandardPanel(StandardPanel::InitArgs(200, 90, Border(Border::window)));
                panel->addStandardWidgets(StandardPanel::closeWidget);
                panel->setMovable(true);
                panel->setResizable(true);
                return panel;
            },
            [place](Glob&) { return place; },
            {10, 0},
            [](Glob& glob) {
                glob.parent()->reshapeWidgetAt(&glob, {20, 40}, {200, 90});
            },
            ends,
            false};
}

std::vector<Control> const& controls() {
    static std::vector<Control> const table{
        {"plain",
         [](std::string& heard) { return new PlainPressable(heard); },
         centre,
         {4, 0},
         [](Glob&) {},
         {"20,40 80 began inside ", "20,40 80 began outside ", "20,40 80 began cancelled ",
          "20,40 80 began lost "}},
        buttonRow("momentary", [](Button&) {}, {"off  b", "off  ", "off  ", "off  "}),
        buttonRow("latching", [](Button& button) { button.setLatching(true, false); },
                  {"on  b on", "on  b on", "off  b on b off", "on  b on"}),
        buttonRow("repeating", [](Button& button) { button.setRepeating(5, 1.0); },
                  {"off  b", "off  ", "off  ", "off  "}),
        boxRow("box", Checkbox::onPress, {"on 3 ", "on 3 ", "on 3 ", "on 3 "}),
        boxRow("late box", Checkbox::onRelease, {"on 3 ", "on 3 ", "off  ", "off  "}),
        {"member",
         [](std::string&) { return new OwnMember; },
         centre,
         {4, 0},
         [](Glob& glob) { static_cast<radio_button&>(glob).set()->set_current(-1, true); },
         {"on  r on", "on  r on", "on  r on", "on  r on"}},
        {"slider",
         [](std::string& heard) {
             auto* const slider = newSlider(0.5);
             slider->setDataAdaptor(Qv::makePtr<ListeningData<double>>(heard));
             return slider;
         },
         [](Glob& glob) { return static_cast<Slider&>(glob).getThumbArea().centre(); },
         {20, 0},
         [](Glob& glob) { static_cast<Slider&>(glob).setPosition(0.5); },
         {"0.6 02 slider 0.600000 slider_released 0.600000",
          "0.6 02 slider 0.600000 slider_released 0.600000",
          "0.5 012 slider 0.600000 slider 0.500000 slider_released 0.500000", "0.6 02 slider 0.600000"}},
        barRow("thumb", {100, 12},
               {"0.151+0.5 02 M R", "0.151+0.5 02 M R", "0.25+0.5 012 M M R", "0.151+0.5 02 M"}),
        barRow("end of thumb", {138, 12},
               {"0.349+0.303 02 M R", "0.349+0.303 02 M R", "0.25+0.5 012 M M R", "0.349+0.303 02 M"}),
        barRow("track", {170, 12}, {"0.5+0.5 3 M", "0.5+0.5 3 M", "0.5+0.5 3 M", "0.5+0.5 3 M"}),
        barRow("arrow", {204, 12}, {"0.25+0.5  A", "0.25+0.5  A", "0.25+0.5  A", "0.25+0.5  A"}),
        panelRow("title strip", {20, 80}, {"30,40 200  ", "30,0 200  ", "20,40 200  ", "30,40 200  "}),
        panelRow("edge", {199, 45}, {"20,40 210  ", "20,40 210  ", "20,40 200  ", "20,40 210  "}),
        {"rating",
         [](std::string& heard) {
             auto* const rating = new example::StarRating(GlobCreationInfo(100, 20));
             rating->setDataAdaptor(Qv::makePtr<ListeningData<int>>(heard));
             return rating;
         },
         [](Glob&) {
             return XY<int>{50, 10};
         },
         {20, 0},
         [](Glob& glob) {
             int none = 0;
             static_cast<example::StarRating&>(glob).setNewWidgetValue(none, eRedrawYes);
         },
         {"4 3 rated", "0  ", "0  ", "0  "}},
    };
    return table;
}

/// Counts what the control has no use for.
class Ground final : public RecordingParent {
public:
    Ground() : RecordingParent(390, 145) {}
    bool react(Event const& event) override {
        if (mouse_down_event(event) || isKeyPressEvent(event)) ++passed;
        if (mouse_up_event(event)) ++released;
        if (mouse_wheel_event(event)) notches += event.amount();
        return RecordingParent::react(event);
    }
    int passed = 0;
    int released = 0;
    int notches = 0;
};

/// Every press of every control against everything that can end it.
class ControlPresses : public WidgetTest {
protected:
    enum Kind { simple, another, anotherHeld, anotherBefore, doubleClick, numKinds };
    enum End {
        inside,
        outside,
        escape,
        windowLeft,
        reportedLost,
        pressedElsewhere,
        disabled,
        hidden,
        parentHidden,
        moved,
        dragged,
        destroyed,
        numEnds
    };

    static char const* expected(Control const& control, End end) {
        PressEnd const kind = end == inside             ? PressEnd::releasedInside
                              : end == outside          ? PressEnd::releasedOutside
                              : end <= pressedElsewhere ? PressEnd::cancelled
                                                        : PressEnd::lost;
        return control.outcomes[static_cast<std::size_t>(kind)];
    }
    void begin(Control const& control, Kind kind) {
        XY<int> const place = glob_->globXYToScreenXY(control.place(*glob_));
        driver_.moveTo(place);
        if (kind == anotherBefore) driver_.press(Driver::Button::right);
        driver_.press(Driver::Button::left, kind == doubleClick ? 2 : 1);
        if (kind == another || kind == anotherHeld) driver_.press(Driver::Button::right);
        if (kind == another) driver_.release(Driver::Button::right);
        last_ = place + control.way;
        driver_.moveTo(last_);
    }
    void end(End how) {
        switch (how) {
        case outside:
            driver_.moveTo(last_ - XY<int>{0, 40});
            break;
        case escape:
            driver_.key(Key::escape);
            break;
        case windowLeft:
            deactivate();
            break;
        case reportedLost:
        case pressedElsewhere:
            inject(
                {.kind = how == reportedLost ? InputEvent::Kind::pressLost : InputEvent::Kind::pointerPressed,
                 .button = Driver::Button::left,
                 .place = away()});
            break;
        case disabled:
            glob_->setActive(false);
            break;
        case hidden:
            glob_->setVisible(false);
            break;
        case parentHidden:
            ground_->setVisible(false);
            break;
        case moved:
            other_->addChild(glob_, BottomLeft(glob_->box().x1, glob_->box().y1));
            break;
        case dragged:
            EXPECT_TRUE(
                DragDropManager::instance().beginDrag(Qv::Ptr<DragDropItem>(new DragDropItem("x")), glob_));
            break;
        case destroyed:
            destroy(glob_);
            break;
        default:
            break;
        }
        driver_.settle();
    }
    void letGo(Kind kind) {
        driver_.release();
        if (kind == anotherHeld || kind == anotherBefore) driver_.release(Driver::Button::right);
        driver_.moveTo(away());
        activate(root_);
        ground_->setVisible(true);
        if (is_good_glob_ptr(glob_)) {
            glob_->setVisible(true);
            glob_->setActive(true);
        }
        // What still went on would be heard now.
        driver_.advance(3000);
    }
    XY<int> away() { return root_->globXYToScreenXY({395, 298}); }

    std::string told() {
        std::string names;
        for (Ground* parent : {ground_, other_}) {
            for (auto const& message : parent->messages()) {
                std::string name = message.name.c_str();
                if (name.starts_with("ScrollBar::"))
                    name = name.ends_with("Moved") ? "M" : name.ends_with("Released") ? "R" : "A";
                names += (names.empty() ? "" : " ") + name;
            }
            parent->forgetMessages();
        }
        return names;
    }
    std::string outcome() { return valueOf(*glob_) + " " + std::exchange(heard_, {}) + " " + told(); }
    void make(Control const& control) {
        ground_ = addTo(root_, new Ground, BottomLeft(5, 150));
        other_ = addTo(root_, new Ground, BottomLeft(5, 0));
        glob_ = addTo(ground_, control.make(heard_), BottomLeft(20, 40));
        driver_.settle();
    }
    void drop() {
        destroy(ground_);
        destroy(other_);
        driver_.settle();
        heard_.clear();
    }

    Ground* ground_ = nullptr;
    Ground* other_ = nullptr;
    Glob* glob_ = nullptr;
    std::string heard_;
    XY<int> last_;
};

TEST_F(ControlPresses, EndOnceHoweverTheyEnd) {
    expectDiagnostic("keyboard focus refused");
    for (Control const& control : controls()) {
        for (int kind = simple; kind < numKinds; ++kind) {
            for (int how = inside; how < numEnds; ++how) {
                SCOPED_TRACE(std::string(control.name) + ", press " + std::to_string(kind) + ", end " +
                             std::to_string(how));
                make(control);
                glob_->claimKbdFocus();
                auto const atRest = picture();
                heard_.clear();
                std::string const nothing = outcome();
                begin(control, Kind(kind));
                bool const isAlone = kind == simple || kind == doubleClick;
                EXPECT_EQ(isAlone ? ground_->passed : 0, 0);
                end(End(how));
                letGo(Kind(kind));
                int const goesOn = std::string_view(control.name) == "track" ? 1 : 0;
                EXPECT_EQ(isAlone && how <= outside ? ground_->released : goesOn, goesOn);
                EXPECT_EQ(EventSystem::live().pointer.captureHolder(), nullptr);
                EXPECT_EQ(EventSystem::live().timers.size(), 0u);
                if (how != destroyed) {
                    bool const isNone = kind == anotherBefore && !control.beginsInChord;
                    EXPECT_EQ(outcome(), isNone ? nothing : expected(control, End(how)));
                    control.putBack(*glob_);
                    told();
                    begin(control, simple);
                    letGo(simple);
                    EXPECT_EQ(outcome(), expected(control, inside)) << "the next one";
                    ground_->addChild(glob_, BottomLeft(20, 40));
                    control.putBack(*glob_);
                    glob_->claimKbdFocus();
                    EXPECT_TRUE(picture() == atRest);
                }
                drop();
            }
        }
    }
}

/// Also those that change nothing now.
TEST_F(ControlPresses, KeysOfAControlGoNoFurther) {
    std::map<std::string, std::vector<std::uint32_t>> const used{
        {"momentary", {Key::enter, Key::space}},
        {"box", {Key::enter, Key::space}},
        {"slider",
         {Key::left, Key::down, Key::pageDown, Key::home, Key::home, Key::right, Key::end, Key::end}},
        {"rating", {Key::left, Key::down, Key::right, Key::up, Key::home, Key::end}}};
    for (Control const& control : controls()) {
        if (!used.count(control.name)) continue;
        make(control);
        glob_->claimKbdFocus();
        for (std::uint32_t const key : used.at(control.name)) {
            driver_.key(key);
            EXPECT_EQ(ground_->passed, 0) << control.name << " " << key;
        }
        driver_.key('A');
        EXPECT_EQ(ground_->passed, 1) << control.name;
        drop();
    }
}

/// A right press is for its owner or for what lies below.
TEST_F(ControlPresses, WhatIsNotForThemPasses) {
    for (Control const& control : controls()) {
        make(control);
        if (Driver::describe(*glob_).role == Role::panel) {
            drop();
            continue;
        }
        XY<int> const place = glob_->globXYToScreenXY(control.place(*glob_));
        auto* const stop = dynamic_cast<TabOrderable*>(glob_);
        EXPECT_TRUE(!stop || stop->isTabStopActive()) << control.name;
        std::string const nothing = outcome();
        driver_.clickAt(place, Driver::Button::right);
        EXPECT_EQ(std::exchange(ground_->passed, 0) == 1, outcome() == nothing) << control.name;
        glob_->setActive(false);
        EXPECT_FALSE(stop && stop->isTabStopActive()) << control.name;
        for (auto const button : {Driver::Button::left, Driver::Button::right, Driver::Button::middle})
            driver_.clickAt(place, button);
        EXPECT_EQ(ground_->passed, 3) << control.name;
        EXPECT_EQ(outcome(), nothing) << control.name;
        drop();
    }
}

TEST_F(ControlPresses, TheWheelChangesNoValueAndAGestureBelongsToWhatItBeganOn) {
    for (Control const& control : controls()) {
        make(control);
        std::string const nothing = outcome();
        XY<int> const place = glob_->globXYToScreenXY({5, 5});
        ground_->setWidgetPos(glob_, {150, 40});
        driver_.wheelAt(place, 1);
        // As when what lies there scrolls.
        ground_->setWidgetPos(glob_, {20, 40});
        driver_.settle();
        for (int const notches : {1, -1, 1}) driver_.wheelAt(place, notches);
        EXPECT_EQ(ground_->notches, 2) << control.name;
        driver_.advance(600);
        driver_.wheelAt(place, 2);
        bool const scrolls = Driver::describe(*glob_).role == Role::scrollBar;
        EXPECT_EQ(ground_->notches, scrolls ? 2 : 4) << control.name;
        EXPECT_EQ(outcome(), nothing + (scrolls ? "A A" : "")) << control.name;
        drop();
    }
}

} // namespace
} // namespace wainscot
