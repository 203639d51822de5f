#include "tests/controls.h"
#include "tests/widget_fixture.h"

#include "buttons/checkbox_group.h"
#include "buttons/custom_border_button.h"
#include "buttons/radio_set.h"
#include "foundation/label.h"
#include "text/numeric_text_box.h"
#include "text/vari_friendly_text_box.h"

namespace wainscot {
namespace {

/// A setter with a value that a new widget does not have.
struct Setter {
    char const* name;
    std::function<Glob*()> make;
    std::function<void(Glob&)> set;
};

std::vector<UIString> const labels{L"one", L"two"};
Colour const red = Colour::fromLong(0xFF0000);

template <class T>
Glob* make() {
    if constexpr (std::is_same_v<T, Button> || std::is_same_v<T, CustomBorderButton>)
        return new T(L"Apply", "apply", 100, 24);
    else if constexpr (std::is_same_v<T, Checkbox>)
        return newBox();
    else if constexpr (std::is_same_v<T, CheckboxGroup>)
        return new T(CheckboxGroup::InitArgs(L"Tracks", labels));
    else if constexpr (std::is_same_v<T, RadioSet>)
        return new T(RadioSet::InitArgs({L"one", L"two"}));
    else if constexpr (std::is_same_v<T, CheckboxRadioSet>)
        return newSet(labels, 0);
    else if constexpr (std::is_same_v<T, ScrollBar>)
        return newBar(eHorizontal, {0.25, 0.5}, false, true);
    else if constexpr (std::is_same_v<T, Slider>)
        return newSlider(0);
    else if constexpr (std::derived_from<T, MultiLineTextBox>)
        return new T(MultiLineTextBox::InitArgs(120, 60, L"Name and\nnumber of the clip"));
    else if constexpr (std::derived_from<T, TextBox>)
        return new T(TextBox::InitArgs(120, 24, L"Name"));
    else if constexpr (std::is_same_v<T, Label>)
        return new T(Label::InitArgs(L"Name"));
    else
        return new T(XY<int>{200, 120});
}

template <class T>
Setter row(char const* name, void (*set)(T&)) {
    return {name, make<T>, [set](Glob& glob) { set(static_cast<T&>(glob)); }};
}

Glib::FontDesc tallFont() {
    Glib::FontDesc font;
    font.size = 30;
    return font;
}

std::vector<Setter> const setters{
    row<Button>("label", [](Button& b) { b.setString(L"Other"); }),
    row<Button>("second label",
                [](Button& b) { b.setSecondString(L"Down"), b.setState(buttonDown, eRedrawYes); }),
    row<Button>("value",
                [](Button& b) {
                    LightweightString<wchar_t> text(L"Other");
                    b.setNewWidgetValue(text, eRedrawYes);
                }),
    row<Button>("font", [](Button& b) { b.setFont(tallFont()); }),
    row<Button>("style", [](Button& b) { b.setStyle(eButtonDropDown); }),
    row<Button>("alignment", [](Button& b) { b.setAlignment(eAlignRight); }),
    row<Button>("default", [](Button& b) { b.setDefaultAction(true); }),
    row<Button>("colours", [](Button& b) { b.setCols(red, Colour()); }),
    row<Button>("face", [](Button& b) { b.setFaceColour(red); }),
    row<Button>("colours when up", [](Button& b) { b.setUpCols(red, Colour()); }),
    row<Button>("colours when down",
                [](Button& b) { b.setDownCols(red, red), b.setState(buttonDown, eRedrawYes); }),
    row<Button>("icons", [](Button& b) { b.setIcons(L"led_red_on.png", L"led_red.png"); }),
    row<Button>("state", [](Button& b) { b.setState(buttonDown, eRedrawYes); }),
    row<Button>("switched state", [](Button& b) { b.switchState(buttonDown, false); }),
    row<Button>("active", [](Button& b) { b.setActive(false); }),
    row<Button>("visible", [](Button& b) { b.setVisible(false); }),
    row<Button>("palette", [](Button& b) { b.setPalette(Palette(Palette().warning())); }),
    row<CustomBorderButton>("border", [](CustomBorderButton& b) { b.setCustomBorderColours(red, Colour()); }),
    row<Checkbox>("state", [](Checkbox& b) { b.setState(true); }),
    row<Checkbox>("value",
                  [](Checkbox& b) {
                      bool yes = true;
                      b.setNewWidgetValue(yes, eRedrawYes);
                  }),
    row<Checkbox>("label", [](Checkbox& b) { b.setString(L"Other"); }),
    row<Checkbox>("appearance", [](Checkbox& b) { b.setAppearance(Checkbox::roundTickBox); }),
    row<Checkbox>("tick character", [](Checkbox& b) { b.setState(true), b.setTickCharacter('x'); }),
    row<Checkbox>("font", [](Checkbox& b) { b.setFont(tallFont()); }),
    row<Checkbox>("text colour", [](Checkbox& b) { b.setTextColour(red); }),
    row<Checkbox>("mixed", [](Checkbox& b) { b.setShownMixed(true); }),
    row<Checkbox>("active", [](Checkbox& b) { b.setEnabledState(false); }),
    row<CheckboxRadioSet>("choice", [](CheckboxRadioSet& s) { s.setSelectedItem(1); }),
    row<CheckboxRadioSet>("value",
                          [](CheckboxRadioSet& s) {
                              int one = 1;
                              s.setNewWidgetValue(one, eRedrawYes);
                          }),
    row<CheckboxRadioSet>("bold", [](CheckboxRadioSet& s) { s.setBoldWhenTicked(true); }),
    row<CheckboxRadioSet>("text colour", [](CheckboxRadioSet& s) { s.setTextColourWhenTicked(red); }),
    row<CheckboxRadioSet>("appearance", [](CheckboxRadioSet& s) { s.setAppearance(Checkbox::greenLight); }),
    row<CheckboxRadioSet>("active", [](CheckboxRadioSet& s) { s.setActive(false); }),
    row<CheckboxGroup>("ticks", [](CheckboxGroup& g) { g.setTicked(1, true); }),
    row<RadioSet>("choice", [](RadioSet& s) { s.setSelectedItem(1); }),
    row<RadioSet>("active", [](RadioSet& s) { s.setActive(false); }),
    row<ScrollBar>("place", [](ScrollBar& b) { b.setThumbPos(0.4); }),
    row<ScrollBar>("size", [](ScrollBar& b) { b.setThumbSize(0.3); }),
    row<ScrollBar>("value",
                   [](ScrollBar& b) {
                       ThumbSettings thumb{0.1, 0.2};
                       b.setNewWidgetValue(thumb, eRedrawYes);
                   }),
    row<ScrollBar>("thumb colour", [](ScrollBar& b) { b.setThumbCol(red); }),
    row<ScrollBar>("button colour", [](ScrollBar& b) { b.setButtonCol(red); }),
    row<ScrollBar>("active", [](ScrollBar& b) { b.setActive(false); }),
    row<TextBox>("text", [](TextBox& b) { b.setText(L"Other"); }),
    row<TextBox>("value",
                 [](TextBox& b) {
                     LightweightString<wchar_t> text(L"Other");
                     b.setNewWidgetValue(text, eRedrawYes);
                 }),
    row<TextBox>("ghost label", [](TextBox& b) { b.setText(L""), b.setGhostLabel(L"Name"); }),
    row<TextBox>("suffix", [](TextBox& b) { b.setDisplaySuffix(L" dB"); }),
    row<TextBox>("alignment", [](TextBox& b) { b.setAlignment(eAlignRight); }),
    row<TextBox>("margins", [](TextBox& b) { b.setMargins(30, 10); }),
    row<TextBox>("font", [](TextBox& b) { b.setFont(tallFont()); }),
    row<TextBox>("masked", [](TextBox& b) { b.setObfuscatedDisplay(true); }),
    row<TextBox>("editable", [](TextBox& b) { b.setEditable(false); }),
    row<TextBox>("active", [](TextBox& b) { b.setEnabledState(false); }),
    row<TextBox>("selection",
                 [](TextBox& b) {
                     b.setSelection({1, 3});
                 }),
    row<MultiLineTextBox>("lines", [](MultiLineTextBox& b) { b.setText(L"Other\n"); }),
    row<MultiLineTextBox>("wrap", [](MultiLineTextBox& b) { b.setWrap(false); }),
    row<MultiLineTextBox>("alignment", [](MultiLineTextBox& b) { b.setAlignment(eAlignCentre); }),
    row<MultiLineTextBox>("margins", [](MultiLineTextBox& b) { b.setMargins(30, 10); }),
    row<MultiLineTextBox>("font", [](MultiLineTextBox& b) { b.setFont(tallFont()); }),
    row<MultiLineTextBox>("active", [](MultiLineTextBox& b) { b.setEnabledState(false); }),
    row<MultiLineTextBox>("selection",
                          [](MultiLineTextBox& b) {
                              b.setSelection({2, 12});
                          }),
    row<VariFriendlyTextBox>("dragging", [](VariFriendlyTextBox& b) { b.setDragging(true); }),
    row<Slider>("range", [](Slider& s) { s.setValueRange(-1, 1); }),
    row<Slider>("value", [](Slider& s) { s.setPosition(0.5); }),
    row<Slider>("new value",
                [](Slider& s) {
                    double half = 0.5;
                    s.setNewWidgetValue(half, eRedrawYes);
                }),
    row<Slider>("point", [](Slider& s) { s.setPointOfInterest(0.5); }),
    row<Slider>("points",
                [](Slider& s) {
                    s.setPointsOfInterest({{0.5, red}});
                }),
    row<Slider>("orientation", [](Slider& s) { s.setOrientation(eVertical); }),
    row<Slider>("thumb", [](Slider& s) { s.setThumbVisibility(false); }),
    row<Slider>("thumb colour", [](Slider& s) { s.setThumbColour(red); }),
    row<Label>("text", [](Label& l) { l.setString(L"Other"); }),
    row<Label>("font", [](Label& l) { l.setFont(tallFont()); }),
    row<Slider>("active", [](Slider& s) { s.setActive(false); }),
    row<StandardPanel>("title", [](StandardPanel& p) { p.setTitle(L"Mixer"); }),
    row<StandardPanel>("border", [](StandardPanel& p) { p.setBorderStyle(Border::window); }),
};

using Setters = WidgetTest;

TEST_F(Setters, ShowWhatIsNewAndDoNothingTwice) {
    for (Setter const& setter : setters) {
        Glob* const glob = show(setter.make());
        SCOPED_TRACE(std::string(roleName(Driver::describe(*glob).role).c_str()) + ": " + setter.name);
        std::uint64_t const before = nativeOf(root_)->numPresented();
        setter.set(*glob);
        driver_.settle();
        EXPECT_GT(nativeOf(root_)->numPresented(), before);
        EXPECT_EQ(Consistency(driver_).fault(), "");
        root_->forgetMessages();
        IntBox const box = glob->box();
        std::uint64_t const again = nativeOf(root_)->numPresented();
        setter.set(*glob);
        driver_.settle();
        EXPECT_EQ(nativeOf(root_)->numPresented(), again) << "equal";
        EXPECT_EQ(glob->box(), box);
        EXPECT_EQ(sent(), "");
        destroy(glob);
        driver_.settle();
    }
}

TEST_F(Setters, TakeAnyLabel) {
    using Text = LightweightString<wchar_t>;
    Text const texts[] = {L"", L"\x01\t\n\r\x1b\x7f\u200f",
                          L"\u05e9\u05dc\u05d5\u05dd abc \u05e2\u05d5\u05dc\u05dd",
                          std::wstring(1000000, L'W').c_str(), std::wstring(100000, L'\n').c_str()};
    std::function<Glob*(Text const&)> const makers[] = {
        [](Text const& text) {
            auto* const button = new Button(text, "m", 0, 0);
            button->setStyle(eButtonFolding);
            button->setIcons(L"led_red.png", L"");
            return button;
        },
        [](Text const& text) { return new Checkbox(Checkbox::InitArgs(text)); },
        [](Text const& text) { return new CheckboxGroup(CheckboxGroup::InitArgs(text, {text})); },
        [](Text const& text) { return new RadioSet(RadioSet::InitArgs({text})); },
        [](Text const& text) { return new Label(text); },
        [](Text const& text) { return new TextBox(TextBox::InitArgs(0, 0, text)); },
        [](Text const& text) { return new NumericTextBox(TextBox::InitArgs(0, 0, text)); },
        [](Text const& text) {
            auto* const panel = make<StandardPanel>();
            static_cast<StandardPanel*>(panel)->setTitle(text);
            return panel;
        }};
    for (Text const& text : texts) {
        for (auto const& made : makers) {
            Glob* const glob = show(made(text));
            for (int const side : {0, 1, 7, 8, 100, 65535}) {
                glob->resize(side, side);
                driver_.settle();
            }
            Driver::describe(*glob);
            EXPECT_EQ(Consistency(driver_).fault(), "");
            destroy(glob);
        }
    }
}

} // namespace
} // namespace wainscot
