#include "tests/controls.h"
#include "tests/widget_fixture.h"

#include "host/services/preferences.h"
#include "host/windows/look.h"
#include "look/face.h"

#include <algorithm>
#include <array>
#include <malloc.h>
#include <optional>

namespace wainscot {
namespace {

/// A control as a row of the table, and the part of it that has to stand out from what lies to its left.
struct Control {
    char const* name;
    std::function<Glob*()> make;
    std::function<IntBox(Glob const&)> part = [](Glob const& glob) { return glob.bounds(); };
};

Button* makeButton(std::function<void(Button&)> const& change = {}) {
    auto* const button = newButton(L"HHHH");
    if (change) change(*button);
    return button;
}

Checkbox* makeCheckbox(Checkbox::eAppearance appearance, bool ticked) {
    auto* const box = newBox(L"HHHH", ticked);
    box->setAppearance(appearance);
    return box;
}

IntBox tickBox(Glob const& glob) {
    return dynamic_cast<Checkbox const&>(glob).getTickExtents();
}

IntBox scrollThumb(Glob const& glob) {
    return dynamic_cast<ScrollBar const&>(glob).getThumbArea();
}

IntBox sliderThumb(Glob const& glob) {
    return dynamic_cast<Slider const&>(glob).getThumbArea();
}

Glob* makeFaced(std::uint32_t colour) {
    return makeButton([=](Button& b) { b.setFaceColour(Colour::fromLong(colour)); });
}

std::vector<Control> const& controls() {
    static std::vector<Control> const table{
        {"button", [] { return makeButton(); }},
        {"default button", [] { return makeButton([](Button& b) { b.setDefaultAction(true); }); }},
        {"latched button",
         [] {
             return makeButton([](Button& b) {
                 b.setLatching(true, false);
                 b.setState(buttonDown, eRedrawNo);
             });
         }},
        {"dark face", [] { return makeFaced(0x282828); }},
        {"light face", [] { return makeFaced(0xEFEFEF); }},
        {"purple face", [] { return makeFaced(0x6B3A7E); }},
        {"clear box", [] { return makeCheckbox(Checkbox::tickBox, false); }, tickBox},
        {"ticked box", [] { return makeCheckbox(Checkbox::tickBox, true); }, tickBox},
        {"round box", [] { return makeCheckbox(Checkbox::roundTickBox, false); }, tickBox},
        {"chosen round box", [] { return makeCheckbox(Checkbox::roundTickBox, true); }, tickBox},
        {"light that is off", [] { return makeCheckbox(Checkbox::blueLight, false); }, tickBox},
        {"blue light", [] { return makeCheckbox(Checkbox::blueLight, true); }, tickBox},
        {"red light", [] { return makeCheckbox(Checkbox::redLight, true); }, tickBox},
        {"green light", [] { return makeCheckbox(Checkbox::greenLight, true); }, tickBox},
        {"scroll bar",
         [] {
             return newBar(eHorizontal, {0.3, 0.3});
         },
         scrollThumb},
        {"upright scroll bar",
         [] {
             return newBar(eVertical, {0.3, 0.3});
         },
         scrollThumb},
        {"slider", [] { return newSlider(0.5); }, sliderThumb},
        {"slider at its start", [] { return newSlider(0.0); }, sliderThumb},
    };
    return table;
}

enum State { rest, hovered, pressed, focused, disabled, numStates };

class ControlLooks : public WidgetTest, public testing::WithParamInterface<eTheme> {
protected:
    ControlLooks() { Look::setTheme(GetParam()); }

    void bring(Glob* glob, State state) {
        XY<int> const away{390, 290};
        driver_.moveTo(root_->globXYToScreenXY(away));
        if (state == hovered || state == pressed) driver_.moveTo(glob->globXYToScreenXY(inPart_.centre()));
        if (state == pressed) driver_.press();
        if (state == focused) glob->claimKbdFocus();
        if (state == disabled) glob->setActive(false);
        driver_.settle();
    }
    Glob* make(Control const& control, State state) {
        Glob* const glob = show(control.make(), 40, 60);
        inPart_ = control.part(*glob);
        bring(glob, state);
        return glob;
    }
    void drop(Glob* glob) {
        driver_.release();
        destroy(glob);
        driver_.settle();
    }
    Colour at(Glob* glob, int x, int y) { return Colour::fromLong(driver_.pixel(glob, {x, y})); }
    /// The strongest contrast to a colour of so many pixels to the right of x.
    double strongest(Glob* glob, Colour const& against, int x, int y, int count) {
        double result = 1;
        for (int i = 0; i < count; ++i) result = std::max(result, contrastRatio(at(glob, x + i, y), against));
        return result;
    }
    /// The strongest contrast of the label to what it stands on.
    double labelContrast(Glob* glob, IntBox const& room) {
        Colour const ground = at(glob, room.x1, room.centre().y);
        double result = 1;
        for (int y = room.y1; y < room.y2; ++y)
            result = std::max(result, strongest(glob, ground, room.x1, y, room.width()));
        return result;
    }

    IntBox inPart_;
};

TEST_P(ControlLooks, StandOutFromTheirGround) {
    for (Control const& control : controls()) {
        for (int state = rest; state < disabled; ++state) {
            Glob* const glob = make(control, State(state));
            int const y = inPart_.centre().y;
            // As much as a slim thumb leaves free of the box in which it can be held.
            constexpr int reach = 6;
            EXPECT_GE(strongest(glob, at(glob, inPart_.x1 - 2, y), inPart_.x1, y, reach), 3.0)
                << control.name << " " << state;
            drop(glob);
        }
    }
}

TEST_P(ControlLooks, TheFocusMarkIsTwoPixelsThickAndStandsOutOnBothSides) {
    for (Control const& control : controls()) {
        for (double const scale : {1.0, 1.25, 1.5, 2.0}) {
            Look::setDeviceScale(scale);
            Glob* const glob = make(control, focused);
            if (!(Driver::describe(*glob).states & GlobDescription::focusable)) {
                drop(glob);
                continue;
            }
            int const y = glob->height() / 2;
            Colour const mark = glob->getPalette().mark(eMarkFocus);
            EXPECT_EQ(at(glob, 0, y), mark) << control.name << " " << scale;
            EXPECT_EQ(at(glob, 1, y), mark) << control.name << " " << scale;
            EXPECT_NE(at(glob, 0, 0), mark) << control.name << ": round corners";
            EXPECT_GE(contrastRatio(mark, at(glob, -2, y)), 3.0) << control.name;
            EXPECT_GE(contrastRatio(mark, at(glob, 2, y)), 3.0) << control.name << " " << scale;
            EXPECT_GE(contrastRatio(mark, glob->getPalette().mark(eMarkAccent)), 1.5) << "another colour";
            drop(glob);
        }
    }
}

TEST_P(ControlLooks, EdgesAreCrispAtEveryScale) {
    for (double const scale : {1.0, 1.25, 1.5, 2.0, 3.0}) {
        Look::setDeviceScale(scale);
        for (int const x : {20, 21, 23}) {
            Button* const button = show(makeButton(), x, 100 + x);
            bring(button, rest);
            ControlLook::Face const face{{}, button->getPalette().button(), {}};
            Colour const edge = ControlLook::edgeColour(face, button->getPalette());
            for (XY<int> const place : {XY<int>{0, 12}, {40, 23}, {40, 0}})
                EXPECT_EQ(at(button, place.x, place.y), edge) << scale << " " << x << " " << place.x;
            EXPECT_EQ(at(button, 6, 12), face.colour);
            drop(button);
        }
    }
}

TEST_P(ControlLooks, EveryStateAndSizeIsPaintedWhole) {
    for (double const scale : {1.0, 1.5, 2.0}) {
        Look::setDeviceScale(scale);
        for (Control const& control : controls()) {
            for (int state = rest; state < numStates; ++state) {
                Glob* const glob = make(control, State(state));
                EXPECT_EQ(Consistency(driver_).fault(), "") << control.name << " " << state << " " << scale;
                int const side = std::array{0, 1, 3, 7, 65535}[static_cast<std::size_t>(state)];
                if (scale == 1) {
                    for (XY<int> const& size : {XY<int>{side, 24}, {24, side}, {side, side}}) {
                        glob->resize(size.x, size.y);
                        driver_.settle();
                    }
                    EXPECT_EQ(Consistency(driver_).fault(), "") << control.name << ", side " << side;
                }
                drop(glob);
            }
        }
    }
}

TEST_P(ControlLooks, CornersAreSquareWhereTheUserWantsThem) {
    for (bool const curved : {true, false}) {
        prefs().setPreference("curved_buttons", curved);
        ControlLook::readPreferences();
        Glob* const glob = make(controls().front(), rest);
        EXPECT_EQ(at(glob, 0, 0) == at(glob, 0, 12), !curved);
        bring(glob, focused);
        EXPECT_EQ(at(glob, 0, 0) == at(glob, 0, 12), !curved) << "the mark of the focus";
        drop(glob);
        Glob* const box = make({"box", [] { return newBox(); }, tickBox}, rest);
        Colour const edge = at(box, inPart_.x1, inPart_.centre().y);
        EXPECT_EQ(at(box, inPart_.x1, inPart_.y1) == edge, !curved);
        EXPECT_EQ(at(box, inPart_.x1, inPart_.y1 + 3), edge) << "less round than the control";
        drop(box);
    }
}

/// A state is told by the face, by the edge or by the mark along the lower edge, also without hues.
TEST_P(ControlLooks, StatesAreToldApart) {
    struct Sample {
        std::string name;
        std::vector<Colour> colours;
    };
    using Rows = std::vector<std::pair<std::string, State>>;
    for (Rows const& rows : {Rows{{"button", rest},
                                  {"button", hovered},
                                  {"button", pressed},
                                  {"button", disabled},
                                  {"default button", rest},
                                  {"latched button", rest}},
                             Rows{{"clear box", rest}, {"clear box", hovered}, {"ticked box", rest}},
                             Rows{{"scroll bar", rest}, {"scroll bar", hovered}, {"scroll bar", pressed}},
                             Rows{{"scroll bar", rest}, {"scroll bar", disabled}},
                             Rows{{"slider", rest}, {"slider", pressed}}}) {
        std::vector<Sample> samples;
        for (auto const& [name, state] : rows) {
            auto const row = std::find_if(controls().begin(), controls().end(),
                                          [&](Control const& c) { return c.name == name; });
            ASSERT_NE(row, controls().end());
            Glob* const glob = make(*row, state);
            Sample sample{name + " " + std::to_string(state), {}};
            for (int const x : {0, 3, 6})
                sample.colours.push_back(at(glob, inPart_.x1 + x, inPart_.centre().y));
            sample.colours.push_back(at(glob, inPart_.centre().x, inPart_.y1 + 2));
            for (Sample const& other : samples) {
                double most = 1;
                for (std::size_t i = 0; i < sample.colours.size(); ++i)
                    most = std::max(most, contrastRatio(sample.colours[i], other.colours[i]));
                EXPECT_GE(most, 1.25) << sample.name << " and " << other.name;
            }
            samples.push_back(std::move(sample));
            drop(glob);
        }
    }
}

TEST_P(ControlLooks, LabelsReadAndThoseOfDisabledControlsStandBack) {
    Look::setDeviceScale(3.0);
    auto const inked = [](Colour const& ink) {
        Checkbox* const box = makeCheckbox(Checkbox::tickBox, false);
        box->setTextColour(ink);
        return box;
    };
    std::vector<Control> table = controls();
    table.push_back({"ink of the ground", [&] { return inked(root_->getCol()); }});
    table.push_back({"ink of a face", [&] { return inked(Palette().warning()); }});
    for (Control const& control : table) {
        std::array<double, numStates> contrast{};
        for (State const state : {rest, hovered, pressed, disabled}) {
            Glob* const glob = make(control, state);
            IntBox room = glob->bounds().inset(5);
            if (dynamic_cast<Checkbox*>(glob)) room.x1 = tickBox(*glob).x2 + 3;
            bool const hasLabel = dynamic_cast<Checkbox*>(glob) || dynamic_cast<Button*>(glob);
            contrast[state] = hasLabel ? labelContrast(glob, room) : 0;
            drop(glob);
        }
        if (contrast[rest] == 0) continue;
        for (State const state : {rest, hovered, pressed})
            EXPECT_GE(contrast[state], 4.5) << control.name << " " << state;
        EXPECT_GE(contrast[disabled], 2.5) << control.name;
        EXPECT_LT(contrast[disabled], 0.9 * contrast[rest]) << control.name;
    }
}

INSTANTIATE_TEST_SUITE_P(Themes, ControlLooks, testing::Values(eThemeDark, eThemeLight));

class ThemeSwitches : public WidgetTest {
protected:
    void change(int times) {
        for (int i = 0; i < times; ++i) {
            Look::setTheme(Palette::currentTheme() == eThemeDark ? eThemeLight : eThemeDark);
            driver_.settle();
        }
    }
};

TEST_F(ThemeSwitches, ManyLeaveTheSamePictureAndNoGrowth) {
    int y = 5;
    for (Control const& control : controls()) {
        Glob* const glob = show(control.make(), y % 2 ? 5 : 200, y);
        y += glob->height() > 100 ? 0 : 20;
    }
    std::vector<std::uint32_t> const dark = picture();
    change(1);
    EXPECT_NE(picture(), dark);
    change(99);
    std::size_t const before = mallinfo2().uordblks;
    // The least that could be left behind is 24 bytes for each.
    change(300);
    EXPECT_LE(mallinfo2().uordblks, before + 4096);
    EXPECT_EQ(picture(), dark);
}

} // namespace
} // namespace wainscot
