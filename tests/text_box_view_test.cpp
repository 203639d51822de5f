#include "tests/text_fixture.h"

#include "host/services/clipboard.h"
#include "text/local_number.h"
#include "text/numeric_text_box.h"

#include <limits>

namespace wainscot {
namespace {

constexpr std::uint32_t C = Key::ctrl;

using TextBoxViews = TextBoxes;

TEST_F(TextBoxViews, PlaceTheirText) {
    struct Row {
        TextAlignment alignment;
        int length;
        int cursor;
        /// For a box of 200 with margins of 10 and 20, and a text of so many letters.
        std::function<int(int text)> origin;
        std::function<int(int text, int caret)> scroll;
    };
    auto const none = [](int, int) { return 0; };
    std::vector<Row> const rows{
        {eAlignLeft, 5, 5, [](int) { return 10; }, none},
        {eAlignRight, 5, 0, [](int t) { return 180 - t; }, none},
        {eAlignCentre, 5, 0, [](int t) { return (200 - t) / 2; }, none},
        {eAlignLeft, 60, 60, [](int) { return 10; }, [](int t, int) { return t - 170; }},
        {eAlignLeft, 60, 40, [](int) { return 10; }, [](int, int c) { return c - 170; }},
        {eAlignRight, 60, 0, [](int t) { return 180 - t; }, [](int t, int) { return 170 - t; }},
    };
    for (Row const& row : rows) {
        SCOPED_TRACE(row.length);
        TextBox* const made = focused(box(Text(static_cast<std::size_t>(row.length), L'n')));
        made->setMargins(10, 20);
        made->setAlignment(row.alignment);
        made->setCursorIndex(row.cursor);
        int const text = made->getFontPtr()->textWidth(made->getText());
        int const caret = made->getFontPtr()->prefixWidth(made->getText(), row.cursor);
        EXPECT_EQ(made->textXToDisplayX(0), row.origin(text));
        EXPECT_EQ(made->displayXToTextX(row.origin(text)), 0);
        EXPECT_EQ(made->getScroll(), row.scroll(text, caret));
        EXPECT_EQ(made->textCaret()->x1, row.origin(text) + caret - row.scroll(text, caret));
        EXPECT_EQ(made->textCaret()->y1, (24 - 12 + 1) / 2);
        // Where there is room on the right again, the text comes back.
        driver_.key(C | 'A');
        driver_.key(Key::backspace);
        EXPECT_EQ(made->getScroll(), 0);
        destroy(made);
    }
}

TEST_F(TextBoxViews, ArePaintedAnewWhenTheScrollComesBackAfterAResize) {
    TextBox* const made = focused(box(L"one two three four five six seven eight nine ten eleven"));
    made->setCursorIndex(20);
    made->resize(80, 24);
    driver_.settle();
    EXPECT_GT(made->getScroll(), 0);
    driver_.key(Key::home);
    EXPECT_EQ(made->getScroll(), 0);
    // What is left of a text whose end is taken away fills the view.
    made->setSelection({55, 45});
    driver_.key(Key::backspace);
    EXPECT_NEAR(made->textCaret()->x1, 80 - 8, 2);
    EXPECT_EQ(Consistency(driver_).fault(), "");
    EXPECT_EQ(made->textXToDisplayX(std::numeric_limits<int>::max()), std::numeric_limits<int>::max());
}

TEST_F(TextBoxViews, ShowHintsMasksAndSuffixes) {
    TextBox* const made = box(L"", [](auto& args) {
        args.ghostLabel = UIString(L"Name");
        args.suffix = L" dB";
    });
    EXPECT_TRUE(made->isGhostLabelVisible());
    EXPECT_EQ(made->getDisplayText(), L"Name dB");
    EXPECT_EQ(driver_.find(Role::textBox, L"Name"), made);
    made->claimKbdFocus();
    EXPECT_EQ(made->getDisplayText(), L" dB");
    driver_.type(L"se\u0301cret");
    auto const plain = picture();
    made->setObfuscatedDisplay(true);
    EXPECT_TRUE(picture() != plain);
    EXPECT_EQ(made->getDisplayText(), L"******* dB");
    GlobDescription const said = Driver::describe(*made, GlobDescription::allParts);
    EXPECT_EQ(said.value, L"*******");
    EXPECT_EQ(said.content->text, L"*******");
    EXPECT_EQ(made->getText(), L"se\u0301cret");
    driver_.type(L" word");
    driver_.key(C | Key::left);
    EXPECT_EQ(made->getCursorPosition(), 0) << "its words are not told apart";
    driver_.doubleClick(made);
    EXPECT_EQ(made->getSelectedText(), made->getText());
    WindowsClipboard::addText(L"before");
    WindowsClipboard::addSelection(L"before");
    driver_.key(C | 'A');
    driver_.key(C | 'C');
    driver_.advance(1000);
    driver_.key(C | 'A');
    driver_.key(C | 'X');
    EXPECT_EQ(WindowsClipboard::getText(), L"before");
    EXPECT_EQ(WindowsClipboard::getSelection(), L"before");
    EXPECT_EQ(made->getText(), L"") << "cut takes away nevertheless";
}

TEST_F(TextBoxViews, CaretsFlash) {
    TextBox* const made = at(L"ab|");
    TextCursor const& caret = *made->getCaret();
    auto const shows = [&](double ms) {
        driver_.advance(ms);
        return caret.isShowing();
    };
    EXPECT_TRUE(shows(500));
    EXPECT_TRUE(shows(1 + 530)) << "the pause, then a whole time";
    EXPECT_FALSE(shows(2));
    EXPECT_TRUE(shows(531));
    auto const shown = picture();
    EXPECT_FALSE(shows(531));
    EXPECT_TRUE(picture() != shown);
    driver_.type(L"c");
    EXPECT_TRUE(shows(0));
    for (int i = 0; i < 9; ++i) EXPECT_TRUE(driver_.type(L"c") && shows(400)) << "while one types";
    shows(12'000);
    EXPECT_TRUE(caret.isShowing());
    EXPECT_EQ(EventSystem::live().timers.size(), 0u) << "at rest";
    driver_.key(Key::left);
    EXPECT_FALSE(shows(1033));
    driver_.key(Key::left);
    auto const active = picture();
    deactivate();
    EXPECT_TRUE(picture() != active) << "no caret in a program that is not active";
    activate(root_);
}

TEST_F(TextBoxViews, FollowThePointer) {
    TextBox* const made = box(L"one two three");
    int const word = made->getFontPtr()->textWidth(L"one ");
    XY<int> const inTwo = made->globXYToScreenXY({made->textXToDisplayX(word) + 1, 12});
    driver_.clickAt(inTwo);
    EXPECT_EQ(state(*made), "one |two three");
    driver_.key(C | 'A');
    EXPECT_EQ(state(*made), "^one two three|") << "a click leaves no anchor";
    driver_.advance(300);
    EXPECT_EQ(WindowsClipboard::getSelection(), L"one two three")
        << "what keys select is offered a little later";
    driver_.moveTo(inTwo);
    driver_.press();
    driver_.moveTo(inTwo + XY<int>(made->getFontPtr()->textWidth(L"two"), 40));
    EXPECT_EQ(state(*made), "one ^two| three");
    driver_.key(Key::escape);
    EXPECT_EQ(state(*made), "^one two three|") << "as before the press";
    driver_.release();
    driver_.moveTo(inTwo);
    driver_.press(Driver::Button::left, 2);
    EXPECT_EQ(state(*made), "one ^two| three");
    driver_.moveTo(made->globXYToScreenXY({made->textXToDisplayX(3), 12}));
    EXPECT_EQ(state(*made), "|one two^ three") << "word by word";
    driver_.release();
    EXPECT_EQ(WindowsClipboard::getSelection(), L"one two");
    driver_.press(Driver::Button::left, 3);
    driver_.release();
    EXPECT_EQ(state(*made), "^one two three|");
    driver_.clickAt(inTwo);
    driver_.holdModifiers(Key::shift);
    driver_.clickAt(made->globXYToScreenXY({199, 12}));
    driver_.holdModifiers(0);
    EXPECT_EQ(state(*made), "one ^two three|");
    told();
    driver_.clickAt(made->globXYToScreenXY({made->textXToDisplayX(0), 12}), Driver::Button::middle);
    EXPECT_EQ(state(*made), "two three|one two three") << "the selection of any program";
    EXPECT_EQ(told(), "changed");
    // Held beside the box, the pointer scrolls.
    made->paste(Text(300, L'm'));
    made->setCursorIndex(0);
    driver_.moveTo(made->globXYToScreenXY({60, 12}));
    driver_.press();
    driver_.moveTo(made->globXYToScreenXY({260, 12}));
    int const before = made->getScroll();
    driver_.advance(400);
    EXPECT_GT(made->getScroll(), before + 100);
    driver_.release();
    driver_.advance(1000);
    EXPECT_EQ(EventSystem::live().timers.size(), 1u) << "the caret";
}

TEST_F(TextBoxViews, EscapeToWhatTheDataHas) {
    auto const data = Qv::makePtr<TestData<Text>>();
    data->value = L"1";
    auto* const made = box<NumericTextBox>();
    made->bindTo(data);
    made->claimKbdFocus();
    driver_.key(Key::up);
    driver_.type(L"7");
    driver_.key(Key::escape);
    EXPECT_EQ(made->getText(), L"2") << "the data has got the step";
    data->accepts = false;
    driver_.key(Key::up);
    driver_.key(Key::escape);
    EXPECT_EQ(made->getText(), L"2") << "and no other";
    data->value = L"5";
    data->forceWidgetUpdate(eRedrawYes);
    driver_.type(L"7");
    driver_.key(Key::escape);
    EXPECT_EQ(made->getText(), L"5") << "it has changed meanwhile";
}

TEST_F(TextBoxViews, StepNumbers) {
    auto* const made = box<NumericTextBox>(L"7");
    made->claimKbdFocus();
    told();
    driver_.key(Key::up);
    EXPECT_EQ(made->getText(), L"8");
    EXPECT_EQ(told(), "end");
    driver_.type(L".5");
    EXPECT_EQ(made->getText(), L"85") << "whole numbers have no point";
    driver_.wheel(made, -3);
    EXPECT_EQ(made->getText(), L"84");
    told();
    struct Row {
        std::function<bool()> range;
        wchar_t const* text;
        bool up;
        wchar_t const* after;
    };
    auto const whole = [&](int low, int high) { return [=] { return made->setValueRange(low, high); }; };
    auto const fine = [&](double low, double high) { return [=] { return made->setValueRange(low, high); }; };
    std::vector<Row> const rows{
        {whole(0, 100), L"100", true, L"100"},
        {whole(0, 100), L"500", true, L"100"},
        {whole(0, 100), L"-", false, L"-"},
        {whole(0, 1000), L"10", true, L"12"},
        {whole(-2147483647, 2147483647), L"0", true, L"8589934"},
        {fine(0, 1), L"0.5", true, L"0.502"},
        {fine(0, 1), L"0.5", false, L"0.498"},
        {fine(0, 0.1), L"0.05", true, L"0.05"},
        {fine(-1, 0), L"abc", true, L"abc"},
        {fine(-1, 0), L"abc", false, L"-0.002"},
        {whole(10, 0), L"5", true, L"10"},
    };
    for (Row const& row : rows) {
        EXPECT_TRUE(row.range());
        made->setText(row.text);
        made->nudge(row.up);
        EXPECT_EQ(made->getText(), row.after);
        EXPECT_EQ(told(), Text(row.text) == row.after ? "" : "end") << toUTF8(row.after).c_str();
    }
    expectDiagnostic("no number");
    EXPECT_FALSE(made->setValueRange(0.0, std::nan("")));
    made->setEnabledState(false);
    driver_.wheel(made, 1);
    EXPECT_EQ(made->getText(), L"10");

    auto const data = Qv::makePtr<TestData<Text>>();
    made->setEnabledState(true);
    made->setValueRange(0.0, 1.0);
    made->bindTo(data);
    made->claimKbdFocus();
    driver_.type(L"1-");
    driver_.key(Key::enter);
    EXPECT_THAT(data->asked, IsEmpty());
    EXPECT_EQ(made->getText(), L"") << "no number";
    made->claimKbdFocus();
    WindowsClipboard::addText(L" 1.234,5 ");
    driver_.key(C | 'V');
    driver_.key(Key::down);
    EXPECT_THAT(data->asked, ElementsAre(Text(L"1")));
}

TEST_F(TextBoxViews, KnowNumbersAsPeopleWriteThem) {
    for (auto const& [text, number] : std::map<Text, char const*>{{L"1,5", "1.5"},
                                                                  {L"1,500", "1500"},
                                                                  {L"1.500,25", "1500.25"},
                                                                  {L"1,234,567.8", "1234567.8"},
                                                                  {L"12 345,6", "12345.6"},
                                                                  {L"\u22125", "-5"},
                                                                  {L"1'000", "1000"},
                                                                  {L"1.5", "1.5"},
                                                                  {L" 42 ", "42"},
                                                                  {L",5", ".5"},
                                                                  {L"12,34,567", "none"},
                                                                  {L"1.2.3", "none"},
                                                                  {L"1e3", "none"},
                                                                  {L"", "none"},
                                                                  {L"-", "none"},
                                                                  {L"1,,2", "none"}})
        EXPECT_EQ(toUTF8(plainNumber(text).value_or(L"none")), number) << toUTF8(text).c_str();
}

} // namespace
} // namespace wainscot
