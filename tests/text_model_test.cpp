#include "tests/widget_fixture.h"

#include "host/drawing/text_seek.h"
#include "text/multi_line_text_box.h"
#include "text/text_box.h"

#include <random>

namespace wainscot {
namespace {

using Text = LightweightString<wchar_t>;

/// What a text box should be: a plain text, and whole copies of it for undo.
struct Model {
    struct State {
        std::wstring text;
        int cursor = 0;
    };
    struct Change {
        State before, after;
        std::wstring inserted;
        bool isSingle;
    };

    State now;
    int start = -1, end = -1;
    std::vector<Change> changes, takenBack;
    std::size_t limit = 0;
    bool hasLines = false;

    int seek(iFont::eCharSeekMethod method) const {
        return static_cast<int>(Glib::seekInText(now.text, static_cast<std::size_t>(now.cursor), method));
    }
    bool hasSelection() const { return start >= 0 && start != end; }
    void replace(int from, int to, std::wstring const& inserted) {
        State const before = now;
        now.text.replace(static_cast<std::size_t>(from), static_cast<std::size_t>(to - from), inserted);
        now.cursor = from + static_cast<int>(inserted.size());
        changes.push_back({before, now, inserted, inserted.size() == 1});
        takenBack.clear();
        start = end = -1;
    }
    void paste(std::wstring const& text) {
        bool const replaces = hasSelection();
        int const from = replaces ? std::min(start, end) : now.cursor;
        int const to = replaces ? std::max(start, end) : now.cursor;
        std::size_t const rest = now.text.size() - static_cast<std::size_t>(to - from);
        std::wstring kept;
        for (wchar_t const c : text)
            if ((c > 31 || (hasLines && c == L'\n')) && (limit == 0 || rest + kept.size() < limit)) kept += c;
        if (replaces || !kept.empty()) replace(from, to, kept);
    }
    void erase(iFont::eCharSeekMethod method) {
        int const other = seek(method);
        if (hasSelection())
            replace(std::min(start, end), std::max(start, end), L"");
        else if (other != now.cursor)
            replace(std::min(other, now.cursor), std::max(other, now.cursor), L"");
        start = end = -1;
    }
    void move(int to, bool extends) {
        if (extends && start < 0) start = now.cursor;
        now.cursor = to;
        end = extends ? to : -1;
        if (!extends) start = -1;
    }
    /// Home and End go through the text of one line, or to the ends of the present line.
    int homeOrEnd(bool toEnd) const {
        if (!hasLines) return toEnd ? static_cast<int>(now.text.size()) : 0;
        auto const cursor = static_cast<std::size_t>(now.cursor);
        if (toEnd) return static_cast<int>(std::min(now.text.find(L'\n', cursor), now.text.size()));
        return cursor == 0 ? 0 : static_cast<int>(now.text.rfind(L'\n', cursor - 1) + 1);
    }
    static bool goTogether(Change const& a, Change const& b) {
        if (a.inserted == L"\n" || b.inserted == L"\n") return false;
        return a.isSingle && b.isSingle && (a.inserted == L" ") == (b.inserted == L" ");
    }
    void undo() {
        start = end = -1;
        if (changes.empty()) return;
        std::size_t first = changes.size() - 1;
        while (first > 0 && goTogether(changes[first - 1], changes[first])) --first;
        bool const isAlone = first + 1 == changes.size();
        takenBack.push_back({changes[first].before, changes.back().after, changes.back().inserted,
                             isAlone && changes.back().isSingle});
        changes.resize(first);
        now = takenBack.back().before;
    }
    void redo() {
        start = end = -1;
        if (takenBack.empty()) return;
        changes.push_back(takenBack.back());
        takenBack.pop_back();
        now = changes.back().after;
    }
};

class TextModel : public WidgetTest {
protected:
    std::wstring randomText(std::size_t length) {
        static std::wstring const letters = L"abcdefgh    \u0301\u05D0\u05D1\u0628\U0001F1E9\U0001F600\n\t,7";
        std::wstring text;
        while (text.size() < length) text += letters[random_() % letters.size()];
        return text;
    }
    void act(TextEntry& box, Model& model) {
        using Seek = iFont::eCharSeekMethod;
        auto const method = static_cast<Seek>(random_() % 6);
        bool const extends = random_() % 3 == 0;
        std::uint32_t const S = extends ? Key::shift : 0;
        switch (random_() % 12) {
        case 0: {
            std::wstring const text = randomText(1 + random_() % (random_() % 20 == 0 ? 600 : 12));
            box.paste(Text(text));
            return model.paste(text);
        }
        case 1:
            driver_.key(Key::backspace | (method % 2 ? Key::ctrl : 0));
            return model.erase(method % 2 ? Seek::eSeekPrevWord : Seek::eSeekPrevChar);
        case 2:
            driver_.key(Key::del | (method % 2 ? Key::ctrl : 0));
            return model.erase(method % 2 ? Seek::eSeekNextWord : Seek::eSeekNextChar);
        case 3:
            driver_.key(Key::ctrl | 'Z');
            return model.undo();
        case 4:
            driver_.key(Key::ctrl | 'Y');
            return model.redo();
        case 5:
        case 6:
        case 7: {
            constexpr std::uint32_t keys[] = {
                Key::left, Key::right, Key::ctrl | Key::right, Key::ctrl | Key::left, Key::home, Key::end};
            driver_.key(keys[method] | S);
            bool const isEdge = method == Seek::eSeekStart || method == Seek::eSeekEnd;
            return model.move(isEdge ? model.homeOrEnd(method == Seek::eSeekEnd) : model.seek(method),
                              extends);
        }
        case 8: {
            int const to = static_cast<int>(random_() % (model.now.text.size() + 1));
            box.setSelection({model.now.cursor, to});
            model.start = model.now.cursor;
            model.now.cursor = model.end = to;
            return;
        }
        default: {
            bool const isReturn = model.hasLines && random_() % 6 == 0;
            wchar_t const c = isReturn ? L'\n' : L"abc xyz\u05D0"[random_() % 8];
            driver_.key(isReturn ? Key::enter : static_cast<std::uint32_t>(c));
            return model.paste(std::wstring(1, c));
        }
        }
    }
    void expectSame(TextEntry& box, Model const& model) {
        ASSERT_EQ(box.getText(), Text(model.now.text));
        ASSERT_EQ(box.getCursorPosition(), model.now.cursor);
        ASSERT_EQ(box.getSelection().start(), model.start);
        ASSERT_EQ(box.getSelection().end(), model.end);
        ASSERT_EQ(box.numUndoItems(), model.changes.size());
        ASSERT_EQ(box.numRedoItems(), model.takenBack.size());
    }
    /// The caret stands where the whole text, measured anew, has that gap.
    void expectCaret(TextBox& box, Model const& model) {
        Qv::Ptr<iFont> const& font = box.getFontPtr();
        int const x = font->prefixWidth(box.getDisplayText(), model.now.cursor);
        ASSERT_NEAR(box.textCaret()->x1, box.textXToDisplayX(x) - box.getScroll(), 1);
        ASSERT_GE(box.textCaret()->x1, 0);
        ASSERT_LE(box.textCaret()->x1, box.width());
    }

    /// Lines, line ends and caret are those of the text when it is cut anew.
    void expectLines(MultiLineTextBox& box, Model const& model) {
        std::wstring const& text = model.now.text;
        auto const cursor = static_cast<std::size_t>(model.now.cursor);
        std::wstring const before = text.substr(0, cursor);
        auto const line = static_cast<unsigned int>(std::ranges::count(before, L'\n'));
        std::size_t const start = before.rfind(L'\n') + 1;
        ASSERT_EQ(box.numLines(), static_cast<unsigned int>(std::ranges::count(text, L'\n')) + 1);
        ASSERT_EQ(box.getCursorLine(), line);
        ASSERT_EQ(box.getCursorColumn(), model.now.cursor - static_cast<int>(start));
        std::wstring const whole =
            text.substr(start, std::min(text.find(L'\n', cursor), text.size()) - start);
        ASSERT_EQ(box.getLine(line), Text(whole));
        if (box.getWrap()) return;
        auto const row = static_cast<int>(line) - static_cast<int>(box.getTopRow());
        Qv::Ptr<iFont> const& font = box.getFontPtr();
        IntBox const area = box.textArea();
        int const x = font->prefixWidth(Text(whole), box.getCursorColumn());
        ASSERT_NEAR(box.textCaret()->x1, area.x1 + x - box.getScroll(), 1);
        ASSERT_EQ((area.y2 - 1 - box.textCaret()->centre().y) / font->lineHeight(), row);
        ASSERT_TRUE(area.contains(box.textCaret()->centre()));
    }

    std::mt19937 random_{7};
};

TEST_F(TextModel, RandomEditingIsThatOfAPlainText) {
    for (unsigned int run = 0; run < 12; ++run) {
        TextBox::InitArgs args(200, 24);
        args.sizeLimit = run % 4 == 0 ? 40 : 0;
        args.alignment = static_cast<TextAlignment>(run % 3);
        args.suffix = run % 2 ? L" dB" : L"";
        TextBox* const box = show(new TextBox(args));
        box->claimKbdFocus();
        Model model;
        model.limit = args.sizeLimit;
        for (int step = 0; step < 150; ++step) {
            act(*box, model);
            expectSame(*box, model);
            if (!HasFatalFailure()) expectCaret(*box, model);
            if (HasFatalFailure()) FAIL() << "run " << run << ", step " << step;
        }
        EXPECT_EQ(Consistency(driver_).fault(), "");
        destroy(box);
    }
}

TEST_F(TextModel, RandomEditingOfLinesIsThatOfAPlainText) {
    for (unsigned int run = 0; run < 12; ++run) {
        MultiLineTextBox::InitArgs args(200, 90);
        args.sizeLimit = run % 4 == 0 ? 40 : 0;
        args.wrap = run % 2 == 1;
        auto* const box = show(new MultiLineTextBox(args));
        box->claimKbdFocus();
        Model model;
        model.limit = args.sizeLimit;
        model.hasLines = true;
        for (int step = 0; step < 150; ++step) {
            // Home and End go by rows, which a model of the text does not know.
            Model const before = model;
            act(*box, model);
            if (args.wrap && model.now.text == before.now.text) {
                model.now.cursor = box->getCursorPosition();
                if (model.end >= 0) model.end = box->getSelection().end();
            }
            expectSame(*box, model);
            if (!HasFatalFailure()) expectLines(*box, model);
            if (HasFatalFailure()) FAIL() << "run " << run << ", step " << step;
        }
        EXPECT_EQ(Consistency(driver_).fault(), "");
        destroy(box);
    }
}

} // namespace
} // namespace wainscot
