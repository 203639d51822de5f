#include "tests/widget_fixture.h"

#include "host/services/clipboard.h"
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

} // namespace
} // namespace wainscot
