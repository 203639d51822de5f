#include "tests/sent_notifications.h"
#include "tests/widget_fixture.h"

#include "host/services/clipboard.h"
#include "text/local_number.h"
#include "text/numeric_text_box.h"

namespace wainscot {
namespace {

using Text = LightweightString<wchar_t>;

constexpr wchar_t cursorMark = L'|';
constexpr wchar_t anchorMark = L'^';

/// A text with marks for the cursor and, where there is one, the anchor of the selection.
struct Marked {
    explicit Marked(std::wstring marked) : text(std::move(marked)) {
        auto at = text.find(anchorMark);
        if (at != text.npos) {
            text.erase(at, 1);
            anchor = static_cast<int>(at);
        }
        cursor = static_cast<int>(text.find(cursorMark));
        text.erase(static_cast<std::size_t>(cursor), 1);
        if (anchor > cursor) --anchor;
    }
    std::wstring text;
    int cursor = 0;
    int anchor = -1;
};

class TextBoxes : public WidgetTest {
protected:
    template <class Box = TextBox>
    Box* box(Text const& text = {}, std::function<void(TextBox::InitArgs&)> const& prepare = {}) {
        TextBox::InitArgs args(200, 24, text);
        if (prepare) prepare(args);
        auto* const made = new Box(args);
        for (int event = eEditStart; event <= eDoubleClick; ++event)
            made->requestCallback(names[event], root_, static_cast<eCallbackEvent>(event));
        return show(made);
    }
    /// The same with the focus, and forgets what that has told.
    TextBox* focused(TextBox* made) {
        made->claimKbdFocus();
        told();
        return made;
    }
    TextBox* at(wchar_t const* marked) {
        Marked const wanted(marked);
        TextBox* const made = focused(box(Text(wanted.text)));
        place(*made, wanted);
        return made;
    }
    static void place(TextBox& box, Marked const& wanted) {
        box.setCursorIndex(wanted.cursor);
        if (wanted.anchor >= 0) box.setSelection({wanted.anchor, wanted.cursor});
    }
    /// With the marks. A selection whose end is not the cursor is shown behind it.
    static std::string state(TextBox const& box) {
        std::wstring text = box.getText().c_str();
        int const start = box.getSelection().start();
        int const cursor = box.getCursorPosition();
        text.insert(static_cast<std::size_t>(cursor), 1, cursorMark);
        if (start >= 0)
            text.insert(static_cast<std::size_t>(start + (start > cursor ? 1 : 0)), 1, anchorMark);
        std::string result = toUTF8(Text(text)).c_str();
        if (start >= 0 && box.getSelection().end() != cursor)
            result += " " + std::to_string(start) + ".." + std::to_string(box.getSelection().end());
        return result;
    }

    static constexpr std::array<char const*, 5> names{"start", "end", "changed", "return", "double"};
};

constexpr std::uint32_t C = Key::ctrl, S = Key::shift, M = Key::meta, A = Key::alt;

TEST_F(TextBoxes, KeysDoWhatTheTableSays) {
    struct Row {
        wchar_t const* before;
        std::vector<std::uint32_t> keys;
        char const* after;
        char const* told = "";
    };
    std::vector<Row> const rows{
        {L"ab|c", {'x'}, "abx|c", "changed"},
        {L"ab|c", {S | 'X', S | 'Y'}, "abXY|c", "changed changed"},
        {L"a^bc|d", {'x'}, "ax|d", "changed"},
        {L"ab|c", {Key::keypad | '5', Key::keypad | '.'}, "ab5.|c", "changed changed"},
        {L"ab|c", {Key::keypad | '=', A | 'x', C | 'K', C | S | 'A', Key::insert, Key::up}, "ab|c"},
        {L"ab|c", {Key::backspace}, "a|c", "changed"},
        {L"|abc", {Key::backspace, Key::backspace}, "|abc"},
        {L"one two|", {C | Key::backspace}, "one |", "changed"},
        {L"a^bc|d", {Key::backspace}, "a|d", "changed"},
        {L"a|bc", {Key::del}, "a|c", "changed"},
        {L"abc|", {Key::del}, "abc|"},
        {L"|one two", {C | Key::del}, "| two", "changed"},
        {L"a|bc^d", {Key::del}, "a|d", "changed"},
        // Moves. A selection does not lead to its edge, but to the neighbour of the cursor.
        {L"ab|c", {Key::left}, "a|bc"},
        {L"a^bc|d", {Key::left}, "ab|cd"},
        {L"|abc", {Key::left, Key::home}, "|abc"},
        {L"^|abc", {Key::left}, "|abc"},
        {L"one two|", {C | Key::left}, "one |two"},
        {L"|one two", {C | Key::right}, "one| two"},
        {L"a|bc", {Key::home, Key::end, Key::right}, "abc|"},
        {L"a|bc", {S | Key::right, S | Key::right}, "a^bc|"},
        {L"ab|c", {S | Key::left, S | Key::home}, "|ab^c"},
        {L"one t|wo", {S | C | Key::left}, "one |t^wo"},
        {L"ab|cd", {S | M | Key::left}, "^ab|cd"},
        {L"ab|cd", {S | M | Key::right}, "ab^|cd 2..4"},
        {L"ab|c", {S | Key::tab}, "^ab|c"},
        // Capitals select nothing.
        {L"abc|", {S | Key::left, S | 'X'}, "abX|", "changed"},
        {L"|abc", {C | 'A'}, "^abc|"},
        {L"|abc", {C | 'a', C | 'a'}, "abc|"},
        {L"a^b|c", {C | 'C'}, "a^b|c"},
        {L"a^b|c", {C | 'A'}, "abc|"},
        {L"a^b|c", {C | 'X', C | 'V', C | 'V'}, "abb|c", "changed changed changed"},
        {L"ab|c", {M | 'A', M | 'C', Key::end, M | 'V'}, "abcabc|", "changed"},
        {L"ab|c", {C | 'X'}, "|", "changed"},
        {L"ab|c", {C | 'X', C | 'Z'}, "abc|", "changed changed"},
        {L"a^b|c", {S | Key::del, Key::end, S | Key::insert}, "acb|", "changed changed"},
        {L"a^b|c", {C | Key::insert, Key::end, S | Key::insert}, "abcb|", "changed"},
        {L"|", {'a', ',', 'b', A | Key::backspace}, "|", "changed changed changed changed"},
        {L"|", {'a', ' ', 'b', C | 'Z'}, "a |", "changed changed changed changed"},
        {L"|", {'a', ' ', 'b', C | 'Z', C | 'Z'}, "a|", "changed changed changed changed changed"},
        {L"|",
         {'a', 'b', C | 'Z', C | 'Y', 'c', C | 'Z'},
         "ab|",
         "changed changed changed changed changed changed"},
        // A group whose changes do not touch.
        {L"|x", {'a', Key::end, 'b', C | 'Z'}, "|x", "changed changed changed"},
        {L"|x", {'a', Key::end, 'b', C | 'Z', C | 'Y'}, "axb|", "changed changed changed changed"},
        {L"ab|", {Key::backspace, C | 'Z', Key::del, C | 'Y'}, "a|", "changed changed changed"},
        // Escape brings back the text from before, as one change.
        {L"ab|c", {'x', 'y', Key::escape}, "^abc|", "changed changed changed"},
        {L"ab|c", {'x', Key::escape, C | 'Z'}, "abx|c", "changed changed changed"},
        {L"a^b|c", {Key::escape}, "abc|"},
        // Clusters.
        {L"e\u0301|", {Key::backspace}, "|", "changed"},
        {L"|\U0001F1E9\U0001F1EA\U0001F1EB\U0001F1F7",
         {Key::right},
         "\U0001F1E9\U0001F1EA|\U0001F1EB\U0001F1F7"},
    };
    for (Row const& row : rows) {
        Marked const wanted(row.before);
        SCOPED_TRACE(toUTF8(Text(row.before)).c_str() + std::string(" to ") + row.after);
        TextBox* const made = at(row.before);
        for (std::uint32_t const key : row.keys) driver_.key(key);
        EXPECT_EQ(state(*made), row.after);
        EXPECT_EQ(told(), row.told);
        destroy(made);
        told();
    }
}

TEST_F(TextBoxes, TakeWhatTheRulesAllow) {
    struct Row {
        wchar_t const* before;
        wchar_t const* characters;
        eCharacterRestriction restriction;
        unsigned long limit;
        Text pasted;
        char const* after;
    };
    std::wstring const strange{L'a', L'\0', wchar_t(0xD800), wchar_t(0xFFFFFFFF), L'\n', L'\t', L'b'};
    std::vector<Row> const rows{
        {L"abc|", L"", eNoRestriction, 5, L"xyz", "abcxy|"},
        {L"abc|", L"", eNoRestriction, 2, L"x", "abc|"},
        {L"a^b|c", L"", eNoRestriction, 2, L"xy", "a|c"},
        {L"|", L"", eNoRestriction, 1, L"xy", "x|"},
        {L"ab|", L"", eOnlyCharacters, 0, L"x", "ab|"},
        {L"ab|", L"", eNotCharacters, 0, L"x", "abx|"},
        {L"a^b|", L"zyx", eOnlyCharacters, 0, L"1x2y", "axy|"},
        {L"|", L"12", eNotCharacters, 0, L"1x2y", "xy|"},
        {L"|", L"", eNoRestriction, 0, Text(strange.data(), strange.size()), "a\uFFFDb|"},
        // A selection goes even where nothing takes its place.
        {L"a^b|c", L"x", eOnlyCharacters, 0, L"q", "a|c"},
    };
    for (Row const& row : rows) {
        SCOPED_TRACE(row.after);
        TextBox* const made = at(row.before);
        made->setCharacters(row.characters, row.restriction);
        made->setSizeLimit(row.limit);
        std::string const before = state(*made);
        made->paste(row.pasted);
        EXPECT_EQ(state(*made), row.after);
        EXPECT_EQ(made->getChanged(), before != row.after);
        EXPECT_EQ(made->numUndoItems(), before != row.after ? 1u : 0u);
        made->undo();
        EXPECT_EQ(made->getText(), Text(Marked(row.before).text));
        destroy(made);
    }
    EXPECT_EQ(told(), "") << "only the user's changes are told";
}

TEST_F(TextBoxes, OverwriteTheCharacterBehindTheCursor) {
    TextBox* const made = at(L"a|e\u0301c");
    made->setSizeLimit(3);
    made->setEditMode(eOverwriteMode);
    EXPECT_GT(made->getCaret()->width(), 3) << "a block over the character";
    driver_.type(L"xyz");
    EXPECT_EQ(state(*made), "axy|") << "the limit";
    driver_.key(C | 'Z');
    EXPECT_EQ(state(*made), "a|e\u0301c");
    made->setSelection({0, 3});
    driver_.type(L"q");
    EXPECT_EQ(state(*made), "q|c") << "the selection alone";
    made->setEditMode(eInsertMode);
    EXPECT_EQ(made->getCaret()->width(), 1);
}

TEST_F(TextBoxes, TellTheirOwnerOfEditing) {
    TextBox* const made = box(L"one");
    made->claimKbdFocus();
    EXPECT_EQ(told(), "start");
    driver_.type(L"x");
    EXPECT_EQ(root_->messages()[0].sender, made);
    EXPECT_EQ(told(), "changed");
    EXPECT_TRUE(made->getChanged());
    driver_.key(Key::enter);
    EXPECT_EQ(told(), "return end");
    EXPECT_EQ(get_kbd_focus(), root_);
    EXPECT_TRUE(made->getChanged());
    EXPECT_EQ(made->getCaret(), nullptr);
    EXPECT_EQ(EventSystem::live().intercepts.size(), 0u);
    made->claimKbdFocus();
    driver_.type(L"y");
    driver_.key(Key::escape);
    EXPECT_FALSE(made->getChanged());
    EXPECT_EQ(state(*made), "^xone|");
    told();
    set_kbd_focus(root_);
    told();
    // Whatever takes the focus away ends editing.
    std::function<void()> const ends[] = {
        [&] { made->setEditable(false); },     [&] { made->setEditable(true); },
        [&] { made->setEnabledState(false); }, [&] { made->setEnabledState(true); },
        [&] { made->setVisible(false); },      [&] { made->setVisible(true); },
        [&] { root_->setVisible(false); },     [&] { root_->setVisible(true); },
        [&] { set_kbd_focus(root_); },         [&] {},
    };
    for (std::size_t i = 0; i < std::size(ends); i += 2) {
        made->claimKbdFocus();
        EXPECT_EQ(told(), "start") << i;
        ends[i]();
        EXPECT_EQ(told(), "end") << i;
        EXPECT_EQ(EventSystem::live().timers.size(), 0u);
        EXPECT_EQ(EventSystem::live().intercepts.size(), 0u);
        ends[i + 1]();
    }
    made->claimKbdFocus();
    told();
    deactivate();
    activate(root_);
    EXPECT_EQ(told(), "") << "another window has come and gone";
    EXPECT_EQ(get_kbd_focus(), made);
    driver_.key(Key::tab);
    EXPECT_EQ(state(*made), "|xone");
}

TEST_F(TextBoxes, ThatCannotBeEditedTakeClicksOnly) {
    TextBox* const first = box(L"one", [](auto& args) { args.editable = false; });
    TextBox* const second = show(new TextBox(TextBox::InitArgs(100, 24, L"two")), 20, 100);
    second->setEditable(false);
    second->requestCallback("double", root_, eDoubleClick);
    first->claimKbdFocus();
    EXPECT_EQ(get_kbd_focus(), root_) << "it would keep Tab";
    EXPECT_EQ(first->handleKeyboardEvent('x'), 1) << "swallowed";
    EXPECT_EQ(first->TextBoxBase::handleKeyboardEvent(static_cast<int>(C | 'V')), 0);
    driver_.click(first);
    virtualClock().advance(399);
    driver_.click(second);
    EXPECT_EQ(told(), "double") << "one time for all boxes";
    virtualClock().advance(400);
    driver_.click(first);
    driver_.holdModifiers(Key::shift);
    driver_.click(first);
    driver_.holdModifiers(0);
    EXPECT_EQ(told(), "");
    root_->setActive(false);
    driver_.click(first);
    EXPECT_EQ(told(), "");
    root_->setActive(true);
    WindowsClipboard::addText(L"");
    callMessage(TextBoxBase::copyMsg, first);
    EXPECT_EQ(WindowsClipboard::getText(), L"one");
    EXPECT_EQ(callMessage(TextBoxBase::pasteMsg, first), 1);
    EXPECT_EQ(first->getText(), L"one");
}

TEST_F(TextBoxes, PlaceTheirText) {
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

TEST_F(TextBoxes, ShowHintsMasksAndSuffixes) {
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

TEST_F(TextBoxes, CaretsFlash) {
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

TEST_F(TextBoxes, FollowThePointer) {
    TextBox* const made = box(L"one two three");
    int const word = made->getFontPtr()->textWidth(L"one ");
    XY<int> const inTwo = made->globXYToScreenXY({made->textXToDisplayX(word) + 1, 12});
    driver_.clickAt(inTwo);
    EXPECT_EQ(state(*made), "one |two three");
    driver_.key(C | 'A');
    EXPECT_EQ(state(*made), "^one two three|") << "a click leaves no anchor";
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

TEST_F(TextBoxes, TakeComposedText) {
    TextBox* const made = at(L"a|b");
    auto const compose = [&](wchar_t const* text) {
        return callMessageWithData(compoundTextInputMsg, made, wrapData(Text(text)));
    };
    EXPECT_EQ(compose(L"\u6F22\u5B57"), 1);
    EXPECT_EQ(state(*made), "a\u6F22\u5B57|b");
    EXPECT_EQ(told(), "changed");
    EXPECT_EQ(callMessageWithData(compoundTextInputMsg, made, wrapData(7)), 1) << "no text";
    made->setEditable(false);
    told();
    EXPECT_EQ(compose(L"x"), 1);
    EXPECT_EQ(made->getText(), L"a\u6F22\u5B57b");
    EXPECT_EQ(told(), "");
}

TEST_F(TextBoxes, AskTheirDataOnceAtTheEnd) {
    auto const data = Qv::makePtr<TestData<Text>>();
    TextBox* const made = focused(box(L"one"));
    made->setDataAdaptor(data);
    driver_.type(L"xy");
    EXPECT_THAT(data->asked, IsEmpty());
    driver_.key(Key::enter);
    EXPECT_THAT(data->asked, ElementsAre(Text(L"xyone")));
    made->claimKbdFocus();
    driver_.key(Key::del);
    driver_.key(C | 'Z');
    set_kbd_focus(root_);
    EXPECT_EQ(data->asked.size(), 1u) << "nothing has changed";
    made->claimKbdFocus();
    driver_.type(L"z");
    driver_.key(Key::escape);
    set_kbd_focus(root_);
    EXPECT_EQ(data->asked.size(), 1u) << "taken back";
    data->accepts = false;
    made->claimKbdFocus();
    driver_.type(L"z");
    set_kbd_focus(root_);
    EXPECT_EQ(made->getText(), L"xyone") << "refused";
    EXPECT_EQ(data->asked.size(), 2u);
    // The owner makes something else of it while it is typed.
    data->accepts = true;
    made->requestCallback(calling([&](NotifyMsg const&) {
                              if (made->getText() == L"qxyone") made->setText(L"Q");
                          }).getCallback(),
                          eChanged);
    made->claimKbdFocus();
    driver_.type(L"q");
    EXPECT_EQ(state(*made), "Q|");
    driver_.key(Key::enter);
    EXPECT_EQ(data->asked.back(), L"Q");
}

TEST_F(TextBoxes, StepNumbers) {
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

TEST_F(TextBoxes, KnowNumbersAsPeopleWriteThem) {
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

TEST_F(TextBoxes, MayBeDestroyedInTheMiddleOfAKey) {
    for (int event = eEditStart; event <= eReturn; ++event) {
        TextBox* made = box(L"one");
        made->requestCallback(
            calling([&](NotifyMsg const&) { destroy(std::exchange(made, nullptr)); }).getCallback(),
            static_cast<eCallbackEvent>(event));
        made->claimKbdFocus();
        if (made) driver_.type(L"x");
        if (made) driver_.key(Key::enter);
        EXPECT_EQ(made, nullptr) << event;
        // Outside all handlers, memory goes at once.
        made = new TextBox(TextBox::InitArgs(100, 24));
        TextBox* const second = made;
        second->requestCallback(
            calling([&](NotifyMsg const&) { destroy(std::exchange(made, nullptr)); }).getCallback(),
            static_cast<eCallbackEvent>(event));
        root_->addWidget(second, 20, 20);
        second->claimKbdFocus();
        if (made) second->handleKeyboardEvent('x');
        if (made) second->handleKeyboardEvent(Key::enter);
        EXPECT_EQ(made, nullptr) << event;
    }
}

class TextNotifications : public SentNotifications {
protected:
    TextBox& box() { return static_cast<TextBox&>(*widget_); }
    void dropListeners() override { box().setDataAdaptor({}); }
};

TEST_F(TextNotifications, OfTextBoxes) {
    auto const focus = [this] { box().claimKbdFocus(); };
    auto const type = [=, this] {
        focus();
        driver_.type(L"x");
    };
    auto const end = [=, this] {
        type();
        driver_.key(Key::enter);
    };
    auto const click = [this] {
        box().setEditable(false);
        driver_.advance(1000);
        driver_.click(widget_);
        driver_.click(widget_);
    };
    std::vector<Row> rows{{"edit start", "edit start", focus},
                          {"edit end", "edit end", end},
                          {"changed", "changed", type},
                          {"return", "return", end},
                          {"double click", "double click", click},
                          {"data", "", [=, this] { bind<Text>(box()), end(); }}};
    for (int event = eEditStart; event <= eDoubleClick; ++event)
        rows.push_back({"callback", "", [=, this] {
                            box().requestCallback(reaction(), static_cast<eCallbackEvent>(event));
                            event == eDoubleClick ? click() : end();
                        }});
    runAll<TextBox>(rows, [this] {
        auto* const made = new TextBox(TextBox::InitArgs(100, 24));
        for (MessageInfo const& info : TextBox::messageTable)
            if (info.delivery != MessageInfo::callback)
                made->requestCallback(LightweightString<char>(info.what.data()), parent_,
                                      static_cast<eCallbackEvent>(info.code));
        return made;
    });
}

} // namespace
} // namespace wainscot
