#include "driver/windows/child_process.h"
#include "driver/windows/window_bench.h"

#include "host/drawing/image.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>
#include <sstream>

using namespace wainscot;
using testing::HasSubstr;

namespace {

/// The gallery as a program without a screen.
class Gallery : public testing::Test {
protected:
    Gallery() : folder_(testing::TempDir() + "/gallery-" + std::to_string(::getpid())) {
        std::filesystem::create_directories(folder_);
    }
    ~Gallery() override { std::filesystem::remove_all(folder_); }

    std::string fileWith(std::string const& text) {
        std::string path = folder_ + "/script.txt";
        std::ofstream(path) << text;
        return path;
    }
    std::vector<std::string> pageNames() {
        std::istringstream names(run("--list").out);
        std::vector<std::string> pages;
        for (std::string name; std::getline(names, name);) pages.push_back(name);
        return pages;
    }
    struct Outcome {
        int code;
        std::string out;
        std::string errors;
    };
    Outcome run(std::string const& arguments) {
        std::string const program = WindowBench::besideTests("wainscot-gallery");
        std::string const command = "cd " + folder_ + " && env -u DISPLAY -u WAYLAND_DISPLAY " + program +
                                    " " + arguments + " >out 2>errors </dev/null";
        int const status = std::system(command.c_str());
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, content("out"), content("errors")};
    }
    std::string content(std::string const& name) {
        std::ostringstream text;
        text << std::ifstream(folder_ + "/" + name).rdbuf();
        return text.str();
    }

    std::string folder_;
};

} // namespace

TEST_F(Gallery, WithoutADisplayItSaysSoAndRendersItsPages) {
    Outcome const outcome = run("");
    EXPECT_EQ(outcome.code, 0);
    EXPECT_THAT(outcome.out, HasSubstr("No display can be used"));
    EXPECT_THAT(outcome.out, HasSubstr("gallery-pages/globs.png"));
    EXPECT_GT(std::filesystem::file_size(folder_ + "/gallery-pages/globs.png"), 2000u);
}

TEST_F(Gallery, RendersEveryPageAtEveryScaleAndTheme) {
    std::vector<std::string> const pages = pageNames();
    ASSERT_FALSE(pages.empty());
    for (char const* options :
         {"", "--scale 1.75 --theme light --size 700x500", "--scale 3 --size 300x200"}) {
        EXPECT_EQ(run(std::string("--shots shots ") + options).code, 0);
        for (std::string const& page : pages)
            EXPECT_TRUE(std::filesystem::exists(folder_ + "/shots/" + page + ".png"));
        std::filesystem::remove_all(folder_ + "/shots");
    }
}

/// `tools/pictures` makes them anew. Look at them before they are committed.
TEST_F(Gallery, DrawsWhatTheGuidesShow) {
    std::string const tree = WAINSCOT_SOURCE_DIR;
    std::string const tool =
        tree + "/tools/pictures --into " + folder_ + " " + WindowBench::besideTests("..");
    ASSERT_EQ(std::system((tool + " >/dev/null").c_str()), 0);
    std::size_t numPictures = 0;
    for (auto const& entry : std::filesystem::directory_iterator(tree + "/docs/images")) {
        std::string const name = entry.path().filename().string();
        Glib::LoadedImage const kept = Glib::loadPng(entry.path().c_str());
        Glib::LoadedImage const drawn = Glib::loadPng((folder_ + "/" + name).c_str());
        ASSERT_TRUE(kept.image && drawn.image) << name;
        ASSERT_EQ(kept.image->size(), drawn.image->size()) << name;
        XY<int> const size = kept.image->size();
        std::uint32_t const* const pixels = kept.image->pixels();
        auto const different =
            std::mismatch(pixels, pixels + std::ptrdiff_t{size.x} * size.y, drawn.image->pixels());
        auto const at = different.first - pixels;
        EXPECT_EQ(at, std::ptrdiff_t{size.x} * size.y)
            << name << " differs at " << at % size.x << ", " << at / size.x << " from the top";
        ++numPictures;
    }
    EXPECT_GE(numPictures, 9u);
}

TEST_F(Gallery, ARandomUserBreaksNothing) {
    Outcome const outcome = run("--random 600 --seed 4 --check 100 --size 600x400");
    EXPECT_EQ(outcome.code, 0) << outcome.out << outcome.errors;
    EXPECT_THAT(outcome.out, HasSubstr("buttons: 600 events"));
    std::string const few = "--random 100 --seed 7 --page pointer --size 400x300 --record acts.txt";
    EXPECT_EQ(run(few).out, run(few).out) << "the same seed does the same";
    EXPECT_EQ(run("--replay acts.txt").code, 0);
    EXPECT_THAT(run("--shorten acts.txt").errors, HasSubstr("nothing fails"));
    EXPECT_THAT(run("--replay missing.txt").errors, HasSubstr("cannot be read"));
}

TEST_F(Gallery, AScriptDoesWhatAPersonWould) {
    std::string const script =
        fileWith("# a comment\n\n"
                 "click label \"Plain\"\nkey Shift+Tab\nkey Tab\n"
                 "click label \"Destroys itself\"\nclick label \"Throws\"\n"
                 "drag label \"Drag me\" 100 -50\nwheel label \"Plain\" -2\n"
                 "type \"a\\\"b\"\nadvance 250\nresize 900 650\n"
                 "messages\ntree\nshot after.png\nclick label \"Destroys the page\"\n");
    Outcome const outcome = run("--page globs --script " + script);
    EXPECT_EQ(outcome.code, 0) << outcome.errors;
    EXPECT_THAT(outcome.out, HasSubstr("clicked  Plain"));
    EXPECT_THAT(outcome.out, HasSubstr("clicked  (sender has gone)"));
    EXPECT_THAT(outcome.out, HasSubstr("wheel  Plain"));
    EXPECT_THAT(outcome.out, HasSubstr("label \"Drag me\" focused"));
    EXPECT_THAT(outcome.out, Not(HasSubstr("label \"Destroys itself\"")));
    EXPECT_THAT(outcome.errors, HasSubstr("thrown by a button"));
    EXPECT_TRUE(std::filesystem::exists(folder_ + "/after.png"));
}

TEST_F(Gallery, TabGoesThroughAllOfEveryPageAndKeepsItInSight) {
    constexpr int steps = 120;
    std::string script;
    for (int i = 0; i < steps; ++i) script += "key Tab\nfocus\n";
    for (std::string const& page : pageNames()) {
        Outcome const outcome = run("--page " + page + " --size 900x560 --script " + fileWith(script));
        ASSERT_EQ(outcome.code, 0) << page << outcome.errors;
        EXPECT_THAT(outcome.out, Not(HasSubstr("out of sight"))) << page;
        std::vector<std::string> stops;
        std::istringstream lines(outcome.out);
        for (std::string line; std::getline(lines, line);) stops.push_back(line.substr(0, line.find(" in ")));
        ASSERT_EQ(stops.size(), static_cast<std::size_t>(steps));
        // The list of pages is one stop: from there to there is the circle.
        std::string const list = "focus list \"Pages\"";
        auto const first = std::ranges::find(stops, list);
        ASSERT_NE(first, stops.end()) << page;
        auto const second = std::find(first + 1, stops.end(), list);
        ASSERT_NE(second, stops.end()) << page << ": the circle does not close";
        std::vector<std::string> const circle(first, second);
        for (char const* stop : {"button \"Pause\"", "button \"Clear\"", "radiobutton \"Dark\""})
            EXPECT_THAT(circle, testing::Contains("focus " + std::string(stop))) << page;
    }
}

TEST_F(Gallery, PagesAreFoundByKeysAlone) {
    auto const shows = [](std::string const& page) {
        return "expect label \"gallery/pages/" + page + "_page.cpp\"\n";
    };
    Outcome const outcome =
        run("--page desk --script " +
            fileWith("key Ctrl+PageDown\n" + shows("timeline") + "key Ctrl+PageUp\nkey Ctrl+PageUp\n" +
                     shows("desk") + "click listitem \"Choices\"\n" + shows("choices") + "key Down\n" +
                     shows("scroll") + "key PageDown\n" + shows("grading") + "key End\n" + shows("dragging") +
                     "type \"sy\"\n" + shows("symbols") + "advance 1500\ntype \"order\"\n" +
                     shows("tab_order") + "key Home\n" + shows("desk") +
                     "click radiobutton \"Light\"\nclick radiobutton \"A++\"\nclick radiobutton \"150 %\"\n" +
                     "shot large.png\nclick button \"Pause\"\nclick button \"Fit\"\n" +
                     "expect label \"Messages (paused, 1 more)\"\nclick button \"Clear\"\nmessages\n"));
    EXPECT_EQ(outcome.code, 0) << outcome.errors;
    EXPECT_EQ(outcome.out, "") << "no messages are left";
}

TEST_F(Gallery, AScriptReachesWhatIsNoWidget) {
    Outcome const outcome =
        run("--page windows --script " +
            fileWith("click button \"Open pop-ups\"\ntree\nclick menuitem \"Choose 2\"\nmessages\n"));
    EXPECT_EQ(outcome.code, 0) << outcome.errors;
    EXPECT_THAT(outcome.out, HasSubstr("menu \"level 1\"\n  menuitem \"Open the next level\" 1 of 4\n"));
    EXPECT_THAT(outcome.out, HasSubstr("level 1  chosen  Choose 2"));
}

TEST_F(Gallery, TheFilterLeavesThePagesWithTheTypedWord) {
    Outcome const outcome = run(
        "--page desk --script " +
        fileWith("click textbox \"Find a page\"\ntype \"TAB O\"\ntree\n"
                 "key Down\nexpect label \"gallery/pages/tab_order_page.cpp\"\nkey Shift+Tab\n"
                 "key Escape\nexpect listitem \"Editing desk\"\ntype \"zz\"\nkey Return\nkey Down\nfocus\n"
                 "key Backspace\nkey Backspace\nexpect listitem \"Editing desk\"\n"
                 "type \"board\"\nkey Return\nexpect label \"gallery/pages/clipboard_page.cpp\"\nfocus\n"));
    EXPECT_EQ(outcome.code, 0) << outcome.errors;
    EXPECT_THAT(outcome.out, HasSubstr("list \"Pages\" = \"Editing desk\"\n"
                                       "          label \"Panels and windows\" 1 of 2\n"
                                       "          listitem \"Tab order\" 2 of 2\n"));
    EXPECT_THAT(outcome.out, HasSubstr("focus textbox \"Find a page\"")) << "nothing found, nothing opened";
    EXPECT_THAT(outcome.out.substr(outcome.out.rfind("focus")), HasSubstr("list \"Pages\""));
}

TEST_F(Gallery, PagesOfTextBoxesSayWhatTheBoxesTell) {
    struct Row {
        char const* page;
        char const* script;
        std::vector<char const*> said;
        std::vector<char const*> notSaid = {};
    };
    std::vector<Row> const rows{
        {"text_boxes",
         "click textbox \"Plain\"\nkey Ctrl+A\ntype \"a\"\nkey Return\nadvance 10\n",
         {"Plain  sends  edit start", "Plain  sends  changed  a\n", "Plain  sends  return",
          "Plain  sends  edit end"}},
        {"text_boxes",
         "click textbox \"Password\"\ntype \"x\"\n",
         {"Password  sends  changed  ***********\n"}},
        {"text_boxes",
         "click textbox \"Only hexadecimal\"\ntype \"gG\"\nclick textbox \"At most 8\"\ntype \"1\"\n"
         "click textbox \"No / \\\\ :\"\ntype \"/\"\n",
         {"At most 8  sends  edit start"},
         {"changed"}},
        {"text_boxes",
         "click textbox \"Read only\"\nclick textbox \"Read only\"\n",
         {"Read only  sends  double click"}},
        {"text_boxes",
         "click textbox \"One value\"\nkey Ctrl+A\ntype \"b\"\nkey Return\nclick textbox \"The same "
         "value\"\n",
         {"The same value  sends  edit start  b\n"}},
        {"text_boxes",
         "click textbox \"At least 3\"\nkey Ctrl+A\ntype \"c\"\nkey Return\nadvance 10\n",
         {"the data refuses  c\n", "At least 3  sends  edit end  Reel 4\n"}},
        {"text_boxes",
         "click numberbox \"Fractions\"\nkey Up\nadvance 10\n",
         {"Fractions  sends  edit end  -5.904"}},
        {"entry_form",
         "click textbox \"Szene\"\nkey Return\nadvance 10\nexpect label \"Der Titel fehlt.\"\n"
         "type \"Evening\"\nkey Return\nadvance 10\n",
         {"Titel  is  Evening\n", "Dauer  is  12.5\n"}},
    };
    for (Row const& row : rows) {
        std::string const script = row.script + std::string("messages\n");
        Outcome const outcome = run("--page " + std::string(row.page) + " --script " + fileWith(script));
        EXPECT_EQ(outcome.code, 0) << row.script << outcome.errors;
        for (char const* line : row.notSaid) EXPECT_THAT(outcome.out, Not(HasSubstr(line))) << row.script;
        for (char const* line : row.said) EXPECT_THAT(outcome.out, HasSubstr(line)) << row.script;
    }
}

TEST_F(Gallery, TheCursorsPlaceIsShown) {
    std::vector<std::array<std::string, 3>> const rows{
        {"longtext", "key Tab\nkey End\n", "Cursor 1000000 of 1000000, nothing selected"},
        {"longtext", "wheel scrollbar \"Place\" -2\n", "Cursor 100 of 1000000, nothing selected"},
        {"scripts", "click textbox \"Chinese\"\nkey Home\nkey Right\nkey Shift+End\n",
         "Chinese: Cursor 5 of 5, selected 1 to 5"},
        // A letter and its marks are one place for the cursor.
        {"scripts",
         "click textbox \"Combining marks\"\nkey Home\nkey Shift+Right\nkey Shift+Right\n"
         "key Shift+Right\nkey Shift+Right\n",
         "Combining marks: Cursor 5 of 28, selected 0 to 5"},
    };
    for (auto const& [page, script, place] : rows) {
        std::string whole = script;
        whole.append("expect label \"").append(place).append("\"\n");
        std::string options("--page ");
        options.append(page).append(" --script ").append(fileWith(whole));
        Outcome const outcome = run(options);
        EXPECT_EQ(outcome.code, 0) << page << outcome.errors;
    }
}

TEST_F(Gallery, ATimelineDrawsOnlyWhatIsInSight) {
    Outcome const outcome = run("--offscreen --page timeline --script " +
                                fileWith("tree\nwheel drawing \"Timeline\" -9\ntree\n"
                                         "sidewheel drawing \"Timeline\" 1\nzoom drawing \"Timeline\" 1\n"
                                         "chord drawing \"Timeline\"\nactivate drawing \"Timeline\"\n"));
    EXPECT_EQ(outcome.code, 0) << outcome.errors;
    std::vector<int> drawn;
    std::istringstream lines(outcome.out);
    for (std::string line; std::getline(lines, line);) {
        int count = 0;
        int all = 0;
        std::size_t const at = line.find("drawing");
        if (at == std::string::npos ||
            std::sscanf(line.c_str() + at, "drawing \"Timeline\" = \"%d of %d clips\"", &count, &all) != 2)
            continue;
        drawn.push_back(count);
        EXPECT_GT(all, 5000);
    }
    ASSERT_EQ(drawn.size(), 2u);
    EXPECT_THAT(drawn, testing::Each(testing::AllOf(testing::Gt(20), testing::Lt(300))));
    EXPECT_NE(drawn[0], drawn[1]) << "other tracks";
}

TEST_F(Gallery, WhatIsWrongIsSaidWithWhatIsAllowed) {
    auto const script = [this](std::string const& line) {
        return "--script " + fileWith("tree\n" + line + "\n");
    };
    std::vector<std::pair<std::string, char const*>> const options = {
        {"--page nix", "there is no page \"nix\"; there are desk"},
        {"--bogus", "there is no option \"--bogus\"; there are"},
        {"--page", "--page needs a value"},
        {"--scale 0", "--scale takes"},
        {"--scale nan", "--scale takes"},
        {"--size 10", "--size takes"},
        {"--size 0x5", "--size takes"},
        {"--theme pink", "--theme takes dark or light"},
        {"--script missing.txt", "cannot be read"},
        {"--shots /dev/null/x", "cannot be made"},
    };
    for (auto const& [arguments, said] : options) {
        Outcome const outcome = run(arguments);
        EXPECT_EQ(outcome.code, 2) << arguments;
        EXPECT_THAT(outcome.errors, HasSubstr(said));
    }
    std::vector<std::pair<std::string, char const*>> const lines = {
        {"clik label \"Plain\"", "line 2: there is no command \"clik\"; there are click"},
        {"click label \"No such\"", "there is no label \"No such\""},
        {"click buton \"Plain\"", "there is no role \"buton\"; there are panel, window"},
        {"click label", "the name of a widget, in quotation marks, is missing"},
        {"click at x 5", "X is no number: \"x\""},
        {"key Hyper+Q", "there is no key \"Hyper+Q\""},
        {"type \"open", "a quotation mark is left open"},
        {"release now", "nothing behind it"},
        {"shot /dev/null/x.png", "line 2: shot"},
    };
    for (auto const& [line, said] : lines) {
        Outcome const outcome = run(script(line));
        EXPECT_EQ(outcome.code, 2) << line;
        EXPECT_THAT(outcome.errors, HasSubstr(said));
    }
}

TEST_F(Gallery, PagesAreScrolledWhereTheWindowIsTooSmall) {
    std::string const script = fileWith("place radiobutton \"Mono\"\nwheel label \"ticks\" -2\n"
                                        "place radiobutton \"Mono\"\nresize 1000 700\n"
                                        "place label \"ticks\"\nexpect checkbox \"Own tick\"\n");
    Outcome const outcome = run("--offscreen --page choices --size 700x500 --script " + script);
    EXPECT_EQ(outcome.code, 0) << outcome.errors;
    std::istringstream lines(outcome.out);
    std::string word;
    int x[3], y[3], width, height;
    for (int i = 0; i < 3; ++i) ASSERT_TRUE(lines >> word >> x[i] >> y[i] >> width >> height) << outcome.out;
    EXPECT_LT(y[1], y[0] - 50);
    EXPECT_EQ(x[1], x[0]);
    EXPECT_LT(y[2], 110) << "back at the top where there is room";
}
