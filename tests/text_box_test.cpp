#include "tests/sent_notifications.h"
#include "tests/text_fixture.h"

#include "buttons/button.h"
#include "host/services/clipboard.h"

namespace wainscot {
namespace {

using Text = LightweightString<wchar_t>;

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
        {L"5|", {C | 'A', '1', '2', Key::escape, C | 'Z'}, "12|", "changed changed changed changed"},
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

TEST_F(TextBoxes, BeyondTheirLimitLoseNothing) {
    TextBox* const made = at(L"a|bcd");
    made->setSizeLimit(2);
    made->setEditMode(eOverwriteMode);
    driver_.type(L"x");
    EXPECT_EQ(state(*made), "a|bcd");
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

TEST_F(TextBoxes, GiveTheirDataWhatOthersMayNeed) {
    auto const data = Qv::makePtr<TestData<Text>>();
    TextBox* const made = focused(box());
    made->setDataAdaptor(data);
    auto* const button = show(new Button(L"b", "b", 80, 24), 20, 100);
    driver_.type(L"a");
    driver_.click(made);
    EXPECT_THAT(data->asked, IsEmpty());
    driver_.click(button);
    EXPECT_EQ(data->value, L"a") << "a button needs no focus";
    driver_.key(Key::end);
    driver_.type(L"b");
    driver_.key(C | 'S');
    EXPECT_EQ(data->value, L"ab") << "a command";
    EXPECT_EQ(get_kbd_focus(), made);
    driver_.type(L"c");
    driver_.key(Key::escape);
    EXPECT_EQ(made->getText(), L"ab") << "what the data has now";
    driver_.key(Key::end);
    driver_.type(L"d");
    auto const other = Qv::makePtr<TestData<Text>>();
    other->value = L"other";
    made->bindTo(other);
    EXPECT_EQ(data->value, L"abd");
    EXPECT_EQ(made->getText(), L"other");
    set_kbd_focus(root_);
    made->selectAll();
    made->paste(L"x");
    EXPECT_EQ(other->value, L"x") << "no end of editing will come";
    made->claimKbdFocus();
    driver_.type(L"y");
    driver_.closeWindow(root_);
    EXPECT_EQ(other->value, L"xy");
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
