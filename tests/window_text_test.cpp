#include "driver/windows/window_bench.h"

#include <gmock/gmock.h>

using namespace wainscot;

namespace {

/// Two text boxes and one with lines, one below the other, in a real window.
class WindowText : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_EQ(bench_.problem(), "");
        ASSERT_TRUE(bench_.setLayout("us"));
        probe_ = bench_.start({"text-probe"});
        window_ = bench_.findWindow("text probe");
        ASSERT_NE(window_, 0u) << bench_.errors();
        ASSERT_TRUE(waitUntil([&] { return bench_.isActive(window_); }));
        ASSERT_TRUE(bench_.movePointer(at(40)) && bench_.click());
        expect("caret |");
    }
    void TearDown() override {
        bench_.requestClose(window_);
        EXPECT_EQ(probe_->waitForExit(), 0) << bench_.errors();
    }

    /// A place in a box, on the screen.
    XY<int> at(int x, int box = 0) { return bench_.placeOf(window_) + XY<int>{20 + x, 32 + 40 * box}; }
    std::string state(int box = 0) {
        probe_->skipLines();
        probe_->send("state " + std::to_string(box));
        return probe_->waitForLine("");
    }
    /// Waits for the caret or its absence, and the text with marks for the cursor and the anchor.
    void expect(std::string const& wanted, int box = 0) {
        std::string last;
        EXPECT_TRUE(waitUntil([&] { return (last = state(box)) == wanted; })) << wanted << "\n" << last;
    }
    /// Goes into the box with lines.
    void goToLines() {
        ASSERT_TRUE(bench_.movePointer(at(10, 2)) && bench_.click());
        expect("caret |", 2);
    }
    void setText(std::string const& text) { probe_->send("text 0 " + text); }
    struct Step {
        std::vector<std::string> keys;
        std::string text;
    };
    void typeAll(std::vector<Step> const& steps) {
        for (auto const& [keys, text] : steps) {
            ASSERT_TRUE(bench_.key(keys));
            expect("caret " + text);
        }
    }
    void press(int x) { ASSERT_TRUE(bench_.movePointer(at(x)) && bench_.pressButton()); }
    void drag(int from, int to) {
        press(from);
        ASSERT_TRUE(bench_.glidePointer(at(from), at(to)) && bench_.releaseButton());
    }
    std::unique_ptr<ChildProcess> shell(std::string const& line) {
        return bench_.start({"/bin/sh", "-c", line});
    }
    std::string read(std::string const& selection, std::string const& filter = "cat") {
        return shell("xclip -o -selection " + selection + " | " + filter + "; echo")->waitForLine("");
    }
    void expectOthersRead(std::string const& text, std::string const& selection) {
        EXPECT_TRUE(waitUntil([&] { return read(selection) == text; })) << read(selection);
    }
    /// Another program puts there what a command makes.
    std::unique_ptr<ChildProcess> give(std::string const& selection, std::string const& maker) {
        std::string const sum = shell(maker + " | cksum")->waitForLine("");
        auto owner = shell(maker + " | exec xclip -quiet -selection " + selection);
        EXPECT_TRUE(waitUntil([&] { return read(selection, "cksum") == sum; }));
        return owner;
    }

    WindowBench bench_;
    std::unique_ptr<ChildProcess> probe_;
    WindowBench::WindowId window_ = 0;
};

} // namespace

TEST_F(WindowText, KeysOfSeveralLayouts) {
    // Key 79 is the keypad's 7, 86 its plus.
    typeAll({{{"a", "shift+b", "exclam", "space", "Num_Lock", "79", "86", "Num_Lock"}, "aB! 7+|"},
             {{"Home", "shift+Right", "shift+Right"}, "^aB|! 7+"},
             {{"ctrl+c", "End", "ctrl+v", "shift+Home"}, "|aB! 7+aB^"},
             {{"ctrl+x"}, "|"},
             {{"ctrl+z", "ctrl+y", "ctrl+v", "ctrl+Left"}, "aB! |7+aB"},
             {{"ctrl+a", "q"}, "q|"}});
    // By their places: 24, 26, 29, 38, 52 to 55 are q, e, y, a, z, x, c and v in the layout before. In this
    // one 20 and 21 are a letter and a dead accent, and 108 is AltGr.
    ASSERT_TRUE(bench_.setLayout("de"));
    typeAll({{{"BackSpace", "21", "26", "20", "29", "21", "shift+26"}, "éßzÉ|"}});
    ASSERT_TRUE(bench_.xdotool({"keydown", "108", "key", "26", "key", "24", "keyup", "108"}));
    typeAll({{{"52"}, "éßzÉ€@y|"}, {{"ctrl+29"}, "|"}, {{"ctrl+29", "ctrl+38"}, "^q|"}});
    for (std::string const layout : {"ru", "gr"}) {
        ASSERT_TRUE(bench_.setLayout(layout));
        std::string const letter = layout == "ru" ? "ф" : "α";
        typeAll({{{"38"}, letter + "|"},
                 {{"ctrl+38", "ctrl+54", "ctrl+55", "ctrl+55"}, letter + letter + "|"},
                 {{"ctrl+53"}, "|"}});
        expectOthersRead(letter + letter, "clipboard");
    }
}

TEST_F(WindowText, TextsComeFromOtherProgramsAndGoToThem) {
    auto const copied = give("clipboard", R"(printf 'Gr\303\274\303\237e \360\237\230\200\r\nzwei\tdrei')");
    typeAll({{{"ctrl+v", "ctrl+c"}, "Grüße 😀zweidrei|"}});
    expectOthersRead("Grüße 😀zweidrei", "clipboard");
    auto const chosen = give("primary", R"(printf 'a\303\244')");
    ASSERT_TRUE(bench_.movePointer(at(2)) && bench_.click(2));
    typeAll({{{"shift+Left"}, "a|ä^Grüße 😀zweidrei"}});
    expectOthersRead("ä", "primary");
    drag(2, 190);
    expect("caret ^aäGrüße 😀zweidrei|");
    expectOthersRead("aäGrüße 😀zweidrei", "primary");
    auto const much = give("clipboard", "head -c 300000 /dev/zero | tr '\\0' y");
    typeAll({{{"ctrl+v"}, "300000"}, {{"z", "ctrl+c"}, "300001"}});
    EXPECT_EQ(read("clipboard", "wc -c"), "300001");
    // What was chosen last can still be had.
    ASSERT_TRUE(bench_.click(2));
    expect("caret 300018");
}

TEST_F(WindowText, ThePointerPutsTheCursorAndSelects) {
    setText("one two three");
    ASSERT_TRUE(bench_.movePointer(at(190)) && bench_.click());
    expect("caret one two three|");
    ASSERT_TRUE(bench_.movePointer(at(8)) && bench_.click() && bench_.click());
    expect("caret ^one| two three");
    ASSERT_TRUE(bench_.click());
    expect("caret ^one two three|");
    drag(190, 2);
    expect("caret |one two three^");
    // Beyond the edge it goes on while the pointer rests.
    std::string const text(100, 'w');
    setText(text);
    press(2);
    ASSERT_TRUE(bench_.movePointer(at(260)));
    expect("caret ^" + text + "|");
    ASSERT_TRUE(bench_.movePointer(at(100)) && bench_.key({"Escape"}));
    expect("caret |" + text);
    ASSERT_TRUE(bench_.releaseButton());
}

TEST_F(WindowText, WhatIsSelectedStaysWhileAnotherWindowHasTheKeyboard) {
    setText("one two three");
    drag(2, 190);
    expect("caret ^one two three|");
    auto other = bench_.start({"desktop-probe", WindowBench::besideTests("../lib/libwainscot-desktop.so")});
    ASSERT_FALSE(other->waitForLine("activated").empty());
    expect("without ^one two three|");
    other.reset();
    expect("caret ^one two three|");
    // The release goes elsewhere.
    press(190);
    ASSERT_TRUE(bench_.movePointer(at(2)));
    expect("caret |one two three^");
    bench_.minimise(window_);
    expect("without ^one two three|");
    ASSERT_TRUE(bench_.releaseButton());
    bench_.activate(window_);
    expect("caret ^one two three|");
    ASSERT_TRUE(bench_.movePointer(at(100)) && bench_.key({"Tab"}));
    expect("without |one two three");
    expect("caret |", 1);
}

TEST_F(WindowText, AHeldKeyGoesOnAndTheCaretBlinks) {
    ASSERT_TRUE(bench_.xdotool({"keydown", "k"}));
    EXPECT_TRUE(waitUntil([&] { return state().starts_with("caret kkk"); }));
    ASSERT_TRUE(bench_.xdotool({"keyup", "k"}));
    typeAll({{{"ctrl+z"}, "|"}});
    auto const row = [&] {
        std::vector<std::uint32_t> pixels;
        for (int x = 0; x < 20; ++x) pixels.push_back(bench_.colourAt(at(x)));
        return pixels;
    };
    auto const before = row();
    EXPECT_TRUE(waitUntil([&] { return row() != before; }));
    EXPECT_TRUE(waitUntil([&] { return row() == before; }));
}

TEST_F(WindowText, LinesAreTypedPastedChosenAndScrolled) {
    goToLines();
    ASSERT_TRUE(bench_.key({"a", "Return", "b", "c", "shift+Return", "Up", "shift+Down", "shift+Home"}));
    expect("caret a/^bc/|", 2);
    ASSERT_TRUE(bench_.key({"Up", "shift+End"}));
    expect("caret a/^bc|/", 2);
    auto const copied = give("clipboard", R"(printf 'x\r\ny\tz\r')");
    ASSERT_TRUE(bench_.key({"ctrl+v"}));
    expect("caret a/x/yz/|/", 2);
    ASSERT_TRUE(bench_.key({"ctrl+z", "ctrl+Home", "shift+ctrl+End", "ctrl+c"}));
    expect("caret ^a/bc/|", 2);
    EXPECT_EQ(read("clipboard", "od -An -c | tr -d ' '"), R"(a\nbc\n)");
    // A drag downwards from the first row selects lines, also in the other selection.
    ASSERT_TRUE(bench_.movePointer(at(8, 2)) && bench_.pressButton());
    ASSERT_TRUE(bench_.glidePointer(at(8, 2), at(150, 2) + XY<int>(0, 60)) && bench_.releaseButton());
    expect("caret ^a/bc/|", 2);
    EXPECT_EQ(read("primary", "od -An -c | tr -d ' '"), R"(a\nbc\n)");
    probe_->send("text 2 " + std::string(3000, 'w'));
    ASSERT_TRUE(bench_.key({"ctrl+End", "Tab", "shift+Tab"}));
    expect("caret 3000", 2);
}
