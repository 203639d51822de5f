#include "tests/text_fixture.h"

#include "containers/scroll_bar.h"
#include "host/services/clipboard.h"
#include "text/scrollable_text_box_base.h"

#include <limits>

namespace wainscot {
namespace {

/// Boxes with lines of text.
class TextLines : public TextBoxes {
protected:
    MultiLineTextBox* lines(Text const& text,
                            std::function<void(MultiLineTextBox::InitArgs&)> const& prepare = {}) {
        MultiLineTextBox::InitArgs args(200, 90, text);
        args.wrap = false;
        if (prepare) prepare(args);
        return heard(new MultiLineTextBox(args));
    }
    MultiLineTextBox* linesAt(wchar_t const* marked) {
        Marked const wanted(marked);
        MultiLineTextBox* const made = focused(lines(Text(wanted.text)));
        place(*made, wanted);
        return made;
    }
    static Text numbered(int count) {
        std::wstring text;
        for (int i = 0; i < count; ++i) text += (i ? L"\n" : L"") + std::to_wstring(i);
        return Text(text);
    }
    /// Where a gap is drawn, on the screen.
    static XY<int> placeOf(MultiLineTextBox& box, unsigned int line, int column) {
        IntBox const area = box.textArea();
        Qv::Ptr<iFont> const& font = box.getFontPtr();
        int const row = static_cast<int>(line) - static_cast<int>(box.getTopRow());
        XY<int> const inBox{area.x1 + font->prefixWidth(box.getLine(line), column) - box.getScroll(),
                            area.y2 - row * font->lineHeight() - font->lineHeight() / 2};
        return box.screenBox().bottomLeft() + inBox;
    }
    void pressOn(XY<int> const& place, int clicks = 1) {
        driver_.moveTo(place);
        driver_.press(Driver::Button::left, clicks);
    }
    ScrollBar* bar(MultiLineTextBox& box, Orientation orientation) {
        for (Glob* child = box.firstChild(); child; child = child->nextSibling())
            if (auto* const found = dynamic_cast<ScrollBar*>(child);
                found && found->getOrientation() == orientation)
                return found->isVisible() ? found : nullptr;
        return nullptr;
    }
};

TEST_F(TextLines, KeysMoveThroughRowsAndLines) {
    struct Case {
        wchar_t const* before;
        std::vector<std::uint32_t> keys;
        char const* after;
    };
    std::uint32_t const S = Key::shift;
    std::uint32_t const C = Key::ctrl;
    for (Case const& c : {
             Case{L"ab|c\nde\nfgh", {Key::down}, "abc\nde|\nfgh"},
             // The column is kept through a shorter line, until the cursor is moved otherwise.
             Case{L"abc|\nde\nfgh", {Key::down, Key::down}, "abc\nde\nfgh|"},
             Case{L"abc|\nde\nfgh", {Key::down, Key::left, Key::down}, "abc\nde\nf|gh"},
             Case{L"a|bc\nde", {Key::up}, "a|bc\nde"},
             Case{L"abc\nd|e", {Key::down}, "abc\nd|e"},
             Case{L"abc\nd|e", {S | Key::up}, "a|bc\nd^e"},
             Case{L"ab\nc|d", {Key::home}, "ab\n|cd"},
             Case{L"ab\nc|d", {S | Key::end}, "ab\nc^d|"},
             Case{L"ab\nc|d", {C | Key::home}, "|ab\ncd"},
             Case{L"a|b\ncd", {S | C | Key::end}, "a^b\ncd|"},
             Case{L"ab\n|cd", {Key::left}, "ab|\ncd"},
             Case{L"ab|\ncd", {Key::right}, "ab\n|cd"},
             Case{L"ab\n|cd", {Key::backspace}, "ab|cd"},
             Case{L"ab|\ncd", {Key::del}, "ab|cd"},
             Case{L"a^b\nc|d", {Key::enter}, "a\n|d"},
             Case{L"a|b", {S | Key::enter}, "a\n|b"},
             Case{L"a|b", {Key::enter, C | 'Z'}, "a|b"},
             // A line feed is taken back apart from the letters round it.
             Case{L"|", {'a', Key::enter, 'b', C | 'Z', C | 'Z'}, "a|"},
             Case{L"ab\nc|d", {C | 'A'}, "^ab\ncd|"},
             Case{L"ab\nc|d", {C | 'X', C | 'Z'}, "ab\ncd|"},
             // Others have these.
             Case{L"a|b", {Key::escape, Key::tab, C | Key::enter, Key::insert}, "a|b"},
         }) {
        MultiLineTextBox* const box = linesAt(c.before);
        for (std::uint32_t const key : c.keys) driver_.key(key);
        EXPECT_EQ(state(*box), c.after) << toUTF8(Text(c.before)).c_str();
        destroy(box);
    }
}

TEST_F(TextLines, EscapeTabAndCtrlReturnAreLeftToOthers) {
    MultiLineTextBox* const box = linesAt(L"a|");
    for (std::uint32_t const key : {Key::escape, Key::tab, Key::ctrl | Key::enter})
        EXPECT_EQ(box->handleKeyboardEvent(static_cast<int>(key)), 0) << key;
    EXPECT_EQ(get_kbd_focus(), box);
    driver_.key('b');
    EXPECT_EQ(told(), "changed");
}

TEST_F(TextLines, LineEndsOfAllKindsAreLineFeeds) {
    MultiLineTextBox* const box = focused(lines(L"a\r\nb\rc\n\rd\te", [](auto& args) {
        args.characters = L"xyz";
        args.restriction = eOnlyCharacters;
    }));
    EXPECT_EQ(box->getText(), L"a\nb\nc\n\nd\te");
    EXPECT_EQ(box->numLines(), 5U);
    WindowsClipboard::addText(L"x\r\ny\tz\rq\n");
    driver_.key(Key::ctrl | 'A');
    driver_.key(Key::ctrl | 'V');
    EXPECT_EQ(box->getText(), L"x\nyz\n\n");
    EXPECT_EQ(box->numUndoItems(), 1U);
    Text strange(L"\0\xD800\uFFFF\U0010FFFF\n\0", 6);
    box->setText(strange);
    EXPECT_EQ(box->getText(), strange);
    driver_.key(Key::ctrl | Key::end);
    EXPECT_EQ(box->getCursorLine(), 1U);
}

TEST_F(TextLines, ThePointerSelectsAcrossLinesByWordsAndByLines) {
    MultiLineTextBox* const box = focused(lines(L"one two\nthree four\nfive"));
    pressOn(placeOf(*box, 0, 4));
    driver_.moveTo(placeOf(*box, 1, 5));
    driver_.release();
    EXPECT_EQ(state(*box), "one ^two\nthree| four\nfive");
    driver_.clickAt(placeOf(*box, 2, 1));
    EXPECT_EQ(state(*box), "one two\nthree four\nf|ive");
    pressOn(placeOf(*box, 1, 7), 2);
    driver_.release();
    EXPECT_EQ(box->getSelectedText(), L"four");
    pressOn(placeOf(*box, 1, 7), 3);
    driver_.moveTo(placeOf(*box, 0, 1));
    driver_.release();
    EXPECT_EQ(box->getSelectedText(), L"one two\nthree four\n");
    // Below the last line is its end.
    driver_.advance(1000);
    driver_.clickAt(box->screenBox().bottomLeft() + XY<int>(30, 8));
    EXPECT_EQ(box->getCursorPosition(), 19 + 4);
}

TEST_F(TextLines, ADragBelowTheBoxScrollsAndGoesOnSelecting) {
    MultiLineTextBox* const box = focused(lines(numbered(100)));
    pressOn(placeOf(*box, 1, 0));
    driver_.moveTo(box->screenBox().bottomLeft() + XY<int>(20, -30));
    std::size_t const before = box->getTopRow();
    driver_.advance(400);
    EXPECT_GT(box->getTopRow(), before + 10);
    EXPECT_EQ(box->getSelection().start(), 2);
    driver_.key(Key::escape);
    EXPECT_EQ(state(*box).substr(0, 2), "|0");
    driver_.advance(400);
    driver_.release();
    EXPECT_EQ(box->getSelectedText(), L"");
}

TEST_F(TextLines, WheelBarsAndKeysScroll) {
    MultiLineTextBox* const box = focused(lines(numbered(1000)));
    driver_.moveTo(placeOf(*box, 2, 0));
    driver_.wheel(box, -2);
    EXPECT_EQ(box->getTopRow(), 6U);
    EXPECT_EQ(box->getCursorPosition(), 0);
    EXPECT_LT(box->textCaret()->y2, 0) << "the caret is out of sight";
    driver_.key(Key::ctrl | Key::down);
    EXPECT_EQ(box->getTopRow(), 7U);
    // Typing brings the cursor back into sight.
    driver_.key('x');
    EXPECT_EQ(box->getTopRow(), 0U);
    ScrollBar* const vertical = bar(*box, eVertical);
    ASSERT_TRUE(vertical);
    EXPECT_FALSE(bar(*box, eHorizontal));
    XY<int> const thumb = vertical->globXYToScreenXY(vertical->getThumbArea().centre());
    pressOn(thumb);
    driver_.moveTo(thumb - XY<int>(0, 200));
    driver_.release();
    std::size_t const fitting =
        static_cast<std::size_t>(box->textArea().height() / box->getFontPtr()->lineHeight());
    EXPECT_EQ(box->getTopRow(), 1000 - fitting);
    driver_.key(Key::pageDown);
    EXPECT_EQ(box->getCursorLine(), fitting - 1);
    driver_.key(Key::ctrl | Key::end);
    driver_.key(Key::shift | Key::pageUp);
    EXPECT_EQ(box->getCursorLine(), 1000 - fitting);
    EXPECT_EQ(box->getSelectedText().substr(0, 3), L"\n99");
    driver_.key(Key::ctrl | 'V');
    EXPECT_EQ(Consistency(driver_).fault(), "");
}

TEST_F(TextLines, KeysBringTheCursorIntoSightAlsoWhereItCannotMove) {
    MultiLineTextBox* const box = focused(lines(numbered(1000)));
    for (std::uint32_t const key : {Key::ctrl | Key::home, Key::up, Key::left, Key::home, Key::backspace}) {
        box->setTopRow(500);
        driver_.key(key);
        EXPECT_EQ(box->getTopRow(), 0U) << key;
    }
}

TEST_F(TextLines, ALongLineBringsABarThatScrollsSideways) {
    MultiLineTextBox* const box = focused(lines(Text(500, L'm') + L"\nshort"));
    ScrollBar* const lying = bar(*box, eHorizontal);
    ASSERT_TRUE(lying);
    driver_.key(Key::end);
    EXPECT_GT(box->getScroll(), 0);
    EXPECT_NEAR(lying->getThumbPos() + lying->getThumbSize(), 1, 0.01);
    driver_.key(Key::down);
    EXPECT_EQ(box->getCursorLine(), 1U);
    EXPECT_LT(box->textCaret()->x1, box->textArea().x2);
    box->setWrap(true);
    EXPECT_FALSE(bar(*box, eHorizontal));
    EXPECT_GT(box->numRows(), 20U);
    EXPECT_EQ(box->getScroll(), 0);
    box->setText(L"short");
    EXPECT_FALSE(bar(*box, eVertical));
}

TEST_F(TextLines, TheEndOfAWrappedRowIsAPlaceOfItsOwn) {
    MultiLineTextBox* const box = focused(lines(L"wwwwwwwwww wwwwwwwwww wwwwwwwwww", [](auto& args) {
        args.wrap = true;
        args.width = 160;
    }));
    ASSERT_EQ(box->numRows(), 3U);
    int const top = box->textCaret()->y1;
    // The blank at the wrap stands beyond the end.
    driver_.key(Key::end);
    EXPECT_EQ(box->getCursorPosition(), 10);
    EXPECT_EQ(box->textCaret()->y1, top);
    driver_.key(Key::right);
    EXPECT_LT(box->textCaret()->y1, top);
    driver_.key(Key::right);
    driver_.key(Key::home);
    EXPECT_EQ(box->getCursorPosition(), 11);
    EXPECT_LT(box->textCaret()->y1, top);
    driver_.key(Key::end);
    driver_.key(Key::up);
    EXPECT_EQ(box->textCaret()->y1, top);
    // A press beyond the end of a row stands at its end.
    driver_.clickAt(box->screenBox().topRight() - XY<int>(30, 10));
    EXPECT_EQ(box->textCaret()->y1, top);
    // So does End in a word that is cut.
    box->setText(Text(60, L'w'));
    driver_.key(Key::ctrl | Key::home);
    driver_.key(Key::end);
    EXPECT_GT(box->getCursorPosition(), 5);
    EXPECT_EQ(box->textCaret()->y1, top);
}

TEST_F(TextLines, AnEditedTextFromElsewhereLeavesTheViewWhereItIs) {
    MultiLineTextBox* const box = focused(lines(numbered(500)));
    box->setCursorPlace(300, 1);
    box->setTopRow(290);
    box->setText(L"before\n" + numbered(500));
    EXPECT_EQ(box->getCursorLine(), 301U);
    EXPECT_EQ(box->getTopRow(), 291U);
    driver_.settle();
    EXPECT_EQ(Consistency(driver_).fault(), "");
    // What the history does not know cannot be taken back wrongly.
    driver_.key('x');
    box->erase(0, 3, false);
    driver_.key(Key::ctrl | 'Z');
    EXPECT_EQ(box->getText().substr(0, 4), L"ore\n");
    box->setText(L"another");
    EXPECT_EQ(box->getTopRow(), 0U);
}

TEST_F(TextLines, WhatCannotBeEditedCanBeReadByKeys) {
    MultiLineTextBox* const box = focused(lines(numbered(50), [](auto& args) { args.editable = false; }));
    ASSERT_EQ(get_kbd_focus(), box);
    for (std::uint32_t const key :
         {std::uint32_t('x'), Key::backspace, Key::del, Key::enter, Key::ctrl | 'X', Key::ctrl | 'Z'})
        EXPECT_EQ(box->handleKeyboardEvent(static_cast<int>(key)), 0) << key;
    EXPECT_EQ(box->getText(), numbered(50));
    driver_.key(Key::shift | Key::down);
    driver_.key(Key::ctrl | 'C');
    EXPECT_EQ(WindowsClipboard::getText(), L"0\n");
    driver_.key(Key::pageDown);
    EXPECT_GT(box->getTopRow(), 0U);
    EXPECT_EQ(told(), "");
    box->setActive(false);
    EXPECT_NE(get_kbd_focus(), box);
}

TEST_F(TextLines, ALogGrowsAtItsEndAndLeavesTheReaderAlone) {
    MultiLineTextBox* const box = focused(lines(numbered(50)));
    driver_.key('a');
    box->append(L"\nmore");
    EXPECT_EQ(box->getTopRow(), 0U);
    EXPECT_EQ(box->getCursorPosition(), 1);
    driver_.key(Key::ctrl | 'Z');
    EXPECT_EQ(box->getText(), numbered(50) + L"\nmore");
    box->setTopRow(1000);
    std::size_t const top = box->getTopRow();
    box->append(L"\r\nand more\r\n");
    EXPECT_EQ(box->getTopRow(), top + 2);
    EXPECT_EQ(box->getCursorPosition(), 0);
    // Line ends may come in two pieces.
    unsigned int const before = box->numLines();
    box->append(L"x\r");
    box->append(L"\ny");
    EXPECT_EQ(box->numLines(), before + 1);
    driver_.settle();
    EXPECT_EQ(Consistency(driver_).fault(), "");
}

TEST_F(TextLines, RowsAreHandedToTheDrawingHook) {
    struct Hooked : MultiLineTextBox {
        using MultiLineTextBox::MultiLineTextBox;
        void drawLine(SubStringRec const& row, XY<int> const& place) override {
            drawn.push_back(row);
            drawCharacters(row, {row.start, row.start + row.length}, place, Colour(1, 0, 0));
        }
        std::vector<SubStringRec> drawn;
    };
    MultiLineTextBox::InitArgs args(160, 90, L"wwwwwwwwww wwwwwwwwww\nxy");
    auto* const box = focused(heard(new Hooked(args)));
    box->setSelection({13, 23});
    box->drawn.clear();
    box->makeDirty();
    driver_.settle();
    ASSERT_EQ(box->drawn.size(), 3U);
    MultiLineTextBox::SubStringRec const& second = box->drawn[1];
    EXPECT_EQ(second.line, 0U);
    EXPECT_EQ(second.start, 11);
    EXPECT_EQ(second.length, 10);
    EXPECT_EQ(second.selection.start(), 13);
    EXPECT_EQ(second.selection.end(), 21);
    EXPECT_TRUE(second.isLineEndSelected);
    EXPECT_EQ(box->drawn[2].line, 1U);
    EXPECT_EQ(box->drawn[2].selection.end(), 1);
    EXPECT_EQ(box->drawn[0].selection.start(), -1);
    // Only rows that have changed are painted.
    box->setCursorPlace(1, 2);
    driver_.settle();
    box->drawn.clear();
    driver_.key('x');
    driver_.settle();
    ASSERT_EQ(box->drawn.size(), 1U);
    EXPECT_EQ(box->drawn[0].line, 1U);
}

TEST_F(TextLines, TheDrawingHookMayChangeTheText) {
    struct Changing : MultiLineTextBox {
        using MultiLineTextBox::MultiLineTextBox;
        void drawLine(SubStringRec const& row, XY<int> const& place) override {
            if (row.line == 2) setText(L"short");
            constexpr int most = std::numeric_limits<int>::max();
            drawCharacters(row, {-most, most}, place, Colour(1, 0, 0));
        }
    };
    auto* const box = show(new Changing(MultiLineTextBox::InitArgs(160, 90, numbered(50))));
    EXPECT_EQ(box->getText(), L"short");
    driver_.settle();
    EXPECT_EQ(Consistency(driver_).fault(), "");
}

TEST_F(TextLines, OwnersMayReplaceTheTextOrDestroyTheBoxInEachCallback) {
    for (bool const destroys : {false, true})
        for (eCallbackEvent const event : {eEditStart, eEditEnd, eChanged}) {
            MultiLineTextBox* const box = lines(numbered(40));
            LifeGuard const life = box->guard();
            box->requestCallback(makeCallback<int, NotifyMsg>([&](NotifyMsg const&) {
                                     if (!life.alive()) return 0;
                                     if (destroys)
                                         destroy(box);
                                     else
                                         box->setText(L"other\n");
                                     return 1;
                                 }),
                                 event);
            box->claimKbdFocus();
            if (life.alive()) driver_.key(Key::ctrl | Key::end);
            if (life.alive()) driver_.key(Key::enter);
            if (life.alive()) root_->claimKbdFocus();
            EXPECT_EQ(life.alive(), !destroys) << event;
            if (!life.alive()) continue;
            EXPECT_TRUE(box->getText().startsWith(L"other\n"));
            destroy(box);
        }
}

TEST_F(TextLines, SizesOfNothingDoNoHarm) {
    for (bool const wraps : {false, true})
        for (XY<int> const size : {XY<int>(1, 1), XY<int>(1, 200), XY<int>(200, 1), XY<int>(17, 17)}) {
            MultiLineTextBox* const box =
                focused(lines(numbered(30) + Text(300, L'x'), [&](auto& args) { args.wrap = wraps; }));
            box->resize(size.x, size.y);
            for (std::uint32_t const key :
                 {Key::pageDown, Key::end, std::uint32_t('a'), Key::enter, Key::ctrl | Key::home})
                driver_.key(key);
            driver_.wheelAt(box->screenBox().bottomLeft(), -3);
            driver_.settle();
            EXPECT_EQ(Consistency(driver_).fault(), "");
            destroy(box);
        }
}

TEST_F(TextLines, AViewerIsOneStopAndItsTextIsRead) {
    auto* const viewer = show(new TextViewer(MultiLineTextBox::InitArgs(200, 90, numbered(40))));
    std::vector<TabOrderable*> stops;
    viewer->getTabOrderables(stops, 0);
    ASSERT_EQ(stops.size(), 1U);
    EXPECT_EQ(stops.front(), viewer->getTextBox());
    EXPECT_EQ(viewer->getTextBox()->height(), 90);
    viewer->setTitle(L"Help");
    EXPECT_EQ(GlobDescription::of(*viewer->getTextBox()).name, L"Help");
    destroy(viewer->getTextBox());
    EXPECT_EQ(viewer->getText(), L"");
    stops.clear();
    viewer->getTabOrderables(stops, 0);
    EXPECT_TRUE(stops.empty());
}

} // namespace
} // namespace wainscot
