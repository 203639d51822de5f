#include "driver/windows/window_bench.h"

#include <gmock/gmock.h>

#include <csignal>

using namespace wainscot;
using namespace std::chrono_literals;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

constexpr std::uint32_t contentColour = 0x336699;
constexpr std::uint32_t markColour = 0xFFCC00;

/// The desktop module in the hands of a program that prints its input.
class WindowDesktop : public testing::Test {
protected:
    explicit WindowDesktop(WindowBench::WindowManager manager = WindowBench::WindowManager::openbox)
        : bench_(manager) {}
    void SetUp() override { ASSERT_EQ(bench_.problem(), ""); }
    void TearDown() override {
        if (HasFailure() && probe_) {
            std::printf("%zu lines of the probe:\n", probe_->lines().size());
            for (std::string const& line : probe_->lines()) std::printf("%s\n", line.c_str());
            std::printf("errors:\n%s\n", bench_.errors().c_str());
        }
        if (!probe_) return;
        probe_->send("quit");
        EXPECT_EQ(probe_->waitForExit(), 0) << "it crashed, or leaked: " << bench_.errors();
    }

    /// Starts the probe at 200, 150 (upper-left corner on the screen) with 300 x 200 pixels and waits until
    /// its window is on the screen and active.
    void startProbe(std::vector<std::string> const& options = {"--place", "200", "418"}) {
        std::vector<std::string> words{"desktop-probe",
                                       WindowBench::besideTests("../lib/libwainscot-desktop.so")};
        words.insert(words.end(), options.begin(), options.end());
        probe_ = bench_.start(words);
        ASSERT_THAT(probe_->waitForLine("ready"), StartsWith("ready")) << bench_.errors();
        window_ = bench_.findWindow("probe");
        ASSERT_NE(window_, 0u);
        ASSERT_TRUE(waitForPixel(150, 100, contentColour));
    }
    void startActiveProbe() {
        startProbe();
        ASSERT_FALSE(probe_->waitForLine("activated").empty());
    }
    /// A place in the window, from its upper-left corner, as it lies on the screen now.
    XY<int> inWindow(int x, int y) { return bench_.placeOf(window_) + XY<int>{x, y}; }
    bool waitForPixel(int x, int y, std::uint32_t colour) {
        return bench_.waitForColour(window_, {x, y}, colour);
    }
    /// Runs a command of the probe to its end.
    std::string command(std::string const& line) {
        probe_->send(line);
        return probe_->waitForLine("done");
    }
    std::string next(std::string_view kind) { return probe_->waitForLine(kind); }
    void expectKeys(std::vector<std::string> const& names, std::vector<std::string> const& codes) {
        ASSERT_TRUE(bench_.key(names));
        for (std::string const& code : codes)
            EXPECT_THAT(next("key "), HasSubstr(" code=" + code + " ")) << code;
    }

    WindowBench bench_;
    std::unique_ptr<ChildProcess> probe_;
    WindowBench::WindowId window_ = 0;
};

/// Nobody holds back the input.
class WindowDesktopUnmanaged : public WindowDesktop {
protected:
    WindowDesktopUnmanaged() : WindowDesktop(WindowBench::WindowManager::none) {}
};

} // namespace

TEST_F(WindowDesktop, RefusesClearlyWithoutADisplay) {
    std::string const module = WindowBench::besideTests("../lib/libwainscot-desktop.so");
    bench_.setVariable("DISPLAY", "");
    EXPECT_THAT(bench_.start({"desktop-probe", module})->waitForLine("refused"),
                HasSubstr("DISPLAY is not set"));
    bench_.setVariable("DISPLAY", ":4711");
    auto const probe = bench_.start({"desktop-probe", module});
    EXPECT_THAT(probe->waitForLine("refused"), HasSubstr("\":4711\""));
    EXPECT_EQ(probe->waitForExit(), 1);
}

TEST_F(WindowDesktop, OpensAtItsPlaceAndShowsItsPixels) {
    startProbe();
    EXPECT_EQ(bench_.sizeOf(window_), (XY<int>{300, 200}));
    EXPECT_EQ(bench_.placeOf(window_), (XY<int>{200, 150}));
    EXPECT_EQ(bench_.colourAt(inWindow(2, 197)), markColour) << "lower left";
    EXPECT_EQ(bench_.colourAt(inWindow(297, 2)), markColour) << "upper right";
    EXPECT_EQ(bench_.colourAt(inWindow(2, 2)), contentColour) << "upper left";
    ASSERT_TRUE(bench_.movePointer(inWindow(0, 0)));
    EXPECT_FALSE(next("moved place=0,199 root=200,617").empty());
}

TEST_F(WindowDesktop, PressDragsOutOfTheWindowAndBack) {
    startActiveProbe();
    ASSERT_TRUE(bench_.movePointer(inWindow(50, 60)));
    ASSERT_TRUE(bench_.pressButton());
    EXPECT_FALSE(next("pressed place=50,139").empty());
    ASSERT_TRUE(bench_.movePointer(inWindow(-40, 250)));
    EXPECT_FALSE(next("moved place=-40,-51").empty());
    ASSERT_TRUE(bench_.movePointer(inWindow(340, -30)));
    EXPECT_FALSE(next("moved place=340,229").empty());
    ASSERT_TRUE(bench_.releaseButton());
    EXPECT_THAT(next("released"), HasSubstr("place=340,229"));
    EXPECT_FALSE(next("left").empty()) << "the pointer is outside and nothing is held any more";
    for (std::string const& line : probe_->lines())
        EXPECT_THAT(line, testing::Not(StartsWith("left place=-40")));
    ASSERT_TRUE(bench_.movePointer(inWindow(10, 10)));
    EXPECT_FALSE(next("moved place=10,189").empty());
    ASSERT_TRUE(bench_.movePointer({5, 5}));
    EXPECT_FALSE(next("left").empty());
}

TEST_F(WindowDesktopUnmanaged, ButtonsClicksWheelAndModifiers) {
    startActiveProbe();
    ASSERT_TRUE(bench_.movePointer(inWindow(50, 60)));
    ASSERT_TRUE(bench_.xdotool({"click", "--repeat", "2", "--delay", "20", "1", "click", "3", "click", "2"}));
    EXPECT_THAT(next("pressed"), HasSubstr("button=1 clicks=1"));
    EXPECT_THAT(next("pressed"), HasSubstr("button=1 clicks=2"));
    EXPECT_THAT(next("released"), HasSubstr("button=1"));
    EXPECT_THAT(next("pressed"), HasSubstr("button=3 clicks=1"));
    EXPECT_THAT(next("pressed"), HasSubstr("button=2 clicks=1"));
    ASSERT_TRUE(bench_.wheel(1));
    ASSERT_TRUE(bench_.wheel(-2));
    EXPECT_THAT(next("wheel place=50,139"), HasSubstr("amount=1 "));
    EXPECT_THAT(next("wheel"), HasSubstr("amount=-1 "));
    EXPECT_THAT(next("wheel"), HasSubstr("amount=-1 "));
    constexpr int toTheLeft = 6, toTheRight = 7;
    ASSERT_TRUE(bench_.click(toTheLeft) && bench_.click(toTheRight));
    EXPECT_THAT(next("sidewheel"), HasSubstr("amount=-1 "));
    EXPECT_THAT(next("sidewheel"), HasSubstr("amount=1 "));
    ASSERT_TRUE(bench_.xdotool({"keydown", "Control_L", "click", "1", "keyup", "Control_L", "click", "1"}));
    EXPECT_THAT(next("pressed"), HasSubstr("mods=2000000"));
    EXPECT_THAT(next("pressed"), HasSubstr("mods=0"));
}

TEST_F(WindowDesktop, KeysOfTheUsLayout) {
    startActiveProbe();
    ASSERT_TRUE(bench_.setLayout("us"));
    expectKeys({"a", "shift+a", "exclam", "shift+Tab", "Return", "KP_Enter", "BackSpace", "Escape"},
               {"61", "1000041", "1000021", "1000009", "d", "d", "8", "1b"});
    expectKeys({"Left", "ctrl+shift+Right", "Delete", "F5", "Menu"},
               {"800004b", "b00004d", "8000053", "800003f", "800005d"});
    expectKeys({"ctrl+c", "ctrl+shift+z", "alt+f", "ctrl+1", "ctrl+space", "super+v"},
               {"2000043", "300005a", "4000046", "2000031", "2000020", "100056"});
    EXPECT_THAT(probe_->unreadLines(), testing::Not(HasSubstr("\nkey ")));
}

TEST_F(WindowDesktop, KeypadFollowsTheNumberLock) {
    startActiveProbe();
    // Key 79 is the keypad's 7, 91 its decimal key: what they mean is the lock's and the layout's business.
    ASSERT_TRUE(bench_.setLayout("de"));
    expectKeys({"79", "91", "86"}, {"8000047", "8000053", "8000002b"});
    expectKeys({"Num_Lock", "79", "91", "86"}, {"80000037", "8000002e", "8000002b"});
    expectKeys({"Num_Lock", "79"}, {"8000047"});
}

TEST_F(WindowDesktop, KeysOfTheGermanLayout) {
    startActiveProbe();
    ASSERT_TRUE(bench_.setLayout("de"));
    // By the places of the keys: 29 is z and 52 y here, 47 an umlaut, 24 q with the at sign, 108 the right
    // Alt key.
    expectKeys({"29", "ctrl+29", "47"}, {"7a", "200005a", "f6"});
    ASSERT_TRUE(bench_.xdotool({"keydown", "108", "key", "24", "keyup", "108", "key", "24"}));
    EXPECT_THAT(next("key "), HasSubstr(" code=40 mods=0"));
    EXPECT_THAT(next("key "), HasSubstr(" code=71 mods=0"));
    // 21 is a dead accent: one character comes of it and the next key, and nothing of itself.
    probe_->skipLines();
    expectKeys({"21", "26"}, {"e9"});
    EXPECT_THAT(next("keyup"), HasSubstr(" code=e9 "));
    ASSERT_TRUE(bench_.key({"x"}));
    EXPECT_THAT(next("key "), HasSubstr(" code=78 "));
}

TEST_F(WindowDesktop, KeysOfTheRussianLayout) {
    startActiveProbe();
    ASSERT_TRUE(bench_.setLayout("ru"));
    // 38 is where the US layout has its a, 54 its c.
    expectKeys({"38", "shift+38", "ctrl+54", "ctrl+shift+38"}, {"444", "1000424", "2000043", "3000041"});
}

TEST_F(WindowDesktop, RightAltIsAltWhereTheLayoutLeavesIt) {
    startActiveProbe();
    ASSERT_TRUE(bench_.setLayout("us"));
    ASSERT_TRUE(bench_.xdotool({"keydown", "108", "key", "24", "keyup", "108"}));
    EXPECT_THAT(next("key "), HasSubstr(" code=4000051 mods=4000000"));
}

TEST_F(WindowDesktop, HeldKeysRepeatWithoutReleases) {
    startActiveProbe();
    ASSERT_TRUE(bench_.xdotool({"keydown", "k"}));
    EXPECT_THAT(next("key "), testing::AllOf(HasSubstr(" code=6b "), HasSubstr("repeat=0")));
    EXPECT_THAT(next("key "), testing::AllOf(HasSubstr(" code=6b "), HasSubstr("repeat=1")));
    EXPECT_THAT(next("key "), HasSubstr("repeat=1"));
    for (std::string const& line : probe_->lines()) EXPECT_THAT(line, testing::Not(StartsWith("keyup")));
    ASSERT_TRUE(bench_.xdotool({"keyup", "k"}));
    EXPECT_THAT(next("keyup"), HasSubstr(" code=6b "));
}

TEST_F(WindowDesktop, ModifiersAreClearedWhenAnotherWindowBecomesActive) {
    startActiveProbe();
    ASSERT_TRUE(bench_.xdotool({"keydown", "Control_L", "key", "h"}));
    EXPECT_THAT(next("key "), HasSubstr("code=2000048 "));
    auto const other =
        bench_.start({"desktop-probe", WindowBench::besideTests("../lib/libwainscot-desktop.so"), "--place",
                      "600", "400"});
    ASSERT_FALSE(other->waitForLine("activated").empty());
    EXPECT_FALSE(next("deactivated").empty());
    ASSERT_TRUE(bench_.xdotool({"keyup", "Control_L"}));
    ASSERT_TRUE(bench_.movePointer(inWindow(50, 60)));
    EXPECT_THAT(next("moved"), HasSubstr("mods=0"));
    ASSERT_TRUE(bench_.click());
    EXPECT_FALSE(next("activated").empty());
    EXPECT_THAT(next("pressed"), HasSubstr("mods=0")) << "the activating press counts as well";
    ASSERT_TRUE(bench_.key({"h"}));
    EXPECT_THAT(next("key "), HasSubstr("code=68 "));
}

TEST_F(WindowDesktop, ContentsFollowWhileTheEdgeIsDragged) {
    startActiveProbe();
    std::optional<XY<int>> const grip = bench_.grabCorner(window_);
    ASSERT_TRUE(grip);
    XY<int> pointer = *grip;
    for (int step = 0; step < 3; ++step) {
        XY<int> const before = bench_.sizeOf(window_);
        XY<int> const target = pointer + XY<int>{50, 40};
        ASSERT_TRUE(bench_.glidePointer(pointer, target));
        pointer = target;
        ASSERT_TRUE(waitUntil([&] { return bench_.sizeOf(window_).x >= before.x + 40; })) << "step " << step;
        // It may still be growing.
        auto const isMarked = [&](auto const& placeIn) {
            return waitUntil([&] {
                XY<int> const place = placeIn(bench_.sizeOf(window_));
                return bench_.colourAt(inWindow(place.x, place.y)) == markColour;
            });
        };
        EXPECT_TRUE(isMarked([](XY<int> size) {
            return XY<int>{size.x - 3, 3};
        })) << "while the button is held";
        EXPECT_TRUE(isMarked([](XY<int> size) { return XY<int>{3, size.y - 3}; }));
        EXPECT_FALSE(next("resized").empty());
    }
    ASSERT_TRUE(bench_.releaseButton());
}

TEST_F(WindowDesktop, TheProgramMovesSizesAndNamesItsWindow) {
    startActiveProbe();
    ASSERT_FALSE(command("move 40 100").empty());
    ASSERT_TRUE(waitUntil([&] { return bench_.placeOf(window_) == XY<int>{40, 768 - 100 - 200}; }));
    EXPECT_FALSE(next("windowmoved place=0,0 root=40,100").empty());
    ASSERT_FALSE(command("resize 420 250").empty());
    ASSERT_TRUE(waitUntil([&] { return bench_.sizeOf(window_) == XY<int>{420, 250}; }));
    EXPECT_TRUE(waitForPixel(417, 2, markColour));
    ASSERT_FALSE(command("title").empty());
    EXPECT_TRUE(waitUntil([&] { return bench_.titleOf(window_) == "caf\u00e9 \u65e5"; }));
}

TEST_F(WindowDesktop, NoSmallerThanTheLeastSize) {
    startProbe({"--place", "200", "418", "--min", "250", "150"});
    ASSERT_FALSE(next("activated").empty());
    ASSERT_TRUE(bench_.xdotool({"windowsize", std::to_string(window_), "100", "100"}));
    EXPECT_THAT(next("resized"), HasSubstr("size=250x150"));
}

TEST_F(WindowDesktop, MinimisedAndRestored) {
    startActiveProbe();
    bench_.minimise(window_);
    EXPECT_FALSE(next("hidden").empty());
    EXPECT_TRUE(waitUntil([this] { return !bench_.isViewable(window_); }));
    bench_.activate(window_);
    EXPECT_FALSE(next("shown").empty());
    EXPECT_TRUE(waitForPixel(297, 2, markColour));
}

TEST_F(WindowDesktop, APressIsHeardAlthoughTheReleaseBeforeItWentElsewhere) {
    startActiveProbe();
    XY<int> const place = inWindow(50, 60);
    ASSERT_TRUE(bench_.movePointer(place) && bench_.pressButton());
    EXPECT_FALSE(next("pressed").empty());
    // A busy program finds all that follows at once.
    kill(probe_->pid(), SIGSTOP);
    bench_.minimise(window_);
    EXPECT_TRUE(waitUntil([&] { return !bench_.isViewable(window_); }));
    ASSERT_TRUE(bench_.releaseButton());
    bench_.activate(window_);
    EXPECT_TRUE(waitUntil([&] { return bench_.isViewable(window_) && bench_.isActive(window_); }));
    ASSERT_TRUE(bench_.movePointer(place + XY<int>{5, 5}) && bench_.click());
    kill(probe_->pid(), SIGCONT);
    EXPECT_THAT(next("pressed"), HasSubstr("place=55,134 "));
    EXPECT_THAT(next("released"), HasSubstr("place=55,134 "));
}

TEST_F(WindowDesktop, HiddenAndShownByTheProgram) {
    startActiveProbe();
    ASSERT_FALSE(command("hide").empty());
    EXPECT_TRUE(waitUntil([&] { return !bench_.isViewable(window_); }));
    ASSERT_FALSE(command("misfit 50 50").empty()) << "a hidden window is not painted";
    ASSERT_FALSE(command("show").empty());
    EXPECT_TRUE(waitForPixel(297, 2, markColour));
    for (std::string const& line : probe_->lines())
        EXPECT_THAT(line, testing::Not(testing::AnyOf(StartsWith("hidden"), StartsWith("shown"))));
}

TEST_F(WindowDesktop, UncoveredContentsComeBack) {
    startActiveProbe();
    auto other = bench_.start({"desktop-probe", WindowBench::besideTests("../lib/libwainscot-desktop.so"),
                               "--place", "150", "400", "--size", "500", "350"});
    ASSERT_FALSE(other->waitForLine("activated").empty());
    ASSERT_TRUE(waitForPixel(297, 2, contentColour)) << "covered";
    other.reset();
    EXPECT_FALSE(next("exposed").empty());
    EXPECT_TRUE(waitForPixel(297, 2, markColour));
}

TEST_F(WindowDesktop, ASurfaceThatDoesNotFitIsShownAsFarAsItGoes) {
    startActiveProbe();
    ASSERT_FALSE(command("misfit 100 50").empty());
    EXPECT_TRUE(waitForPixel(50, 25, 0x000000));
    EXPECT_EQ(bench_.colourAt(inWindow(150, 100)), contentColour);
    ASSERT_FALSE(command("misfit 2000 1500").empty());
    EXPECT_TRUE(waitForPixel(150, 100, 0x000000));
}

TEST_F(WindowDesktop, CloseIsARequest) {
    startActiveProbe();
    bench_.requestClose(window_);
    EXPECT_FALSE(next("close").empty());
    EXPECT_EQ(probe_->waitForExit(), 0);
}

TEST_F(WindowDesktop, AWindowDestroyedUnderAHeldButton) {
    startActiveProbe();
    ASSERT_TRUE(bench_.movePointer(inWindow(50, 60)));
    ASSERT_TRUE(bench_.pressButton());
    ASSERT_FALSE(next("pressed").empty());
    ASSERT_FALSE(command("destroy").empty());
    ASSERT_TRUE(bench_.releaseButton());
    ASSERT_FALSE(command("fresh").empty());
    ASSERT_FALSE(next("activated").empty());
    window_ = bench_.findWindow("probe");
    ASSERT_TRUE(waitForPixel(150, 100, contentColour));
    ASSERT_TRUE(bench_.movePointer(inWindow(50, 60)));
    ASSERT_TRUE(bench_.click());
    EXPECT_THAT(next("pressed"), HasSubstr("clicks=1"));
    EXPECT_FALSE(next("released").empty());
}

TEST_F(WindowDesktop, TheDeviceScaleIsSeenByThePixelsOnly) {
    bench_.setVariable("WAINSCOT_DEVICE_SCALE", "1.5");
    startProbe({"--place", "100", "100", "--size", "201", "101"});
    EXPECT_EQ(bench_.sizeOf(window_), (XY<int>{302, 152}));
    EXPECT_EQ(bench_.placeOf(window_), (XY<int>{150, 768 - 150 - 152}));
    ASSERT_TRUE(bench_.movePointer(inWindow(301, 151)));
    EXPECT_FALSE(next("moved place=200,0").empty());
    ASSERT_TRUE(bench_.movePointer(inWindow(0, 0)));
    EXPECT_FALSE(next("moved place=0,100").empty());
}

TEST_F(WindowDesktop, NoSeamIsLeftWhereTheWindowIsAPixelLarger) {
    bench_.setVariable("WAINSCOT_DEVICE_SCALE", "1.75");
    startProbe({"--place", "50", "50", "--size", "150", "80"});
    ASSERT_TRUE(bench_.xdotool({"windowsize", std::to_string(window_), "335", "181"}));
    // That is 334 x 180 device pixels.
    EXPECT_THAT(next("resized"), HasSubstr("size=191x103"));
    EXPECT_TRUE(waitForPixel(333, 100, contentColour));
    EXPECT_TRUE(waitForPixel(334, 100, contentColour));
    EXPECT_TRUE(waitForPixel(150, 180, contentColour));
}

TEST_F(WindowDesktop, TheScreensResourcesGiveTheDeviceScale) {
    bench_.setResources("*background: white\nXft.dpi:\t192\n");
    startProbe({"--place", "50", "50", "--size", "100", "80"});
    EXPECT_EQ(bench_.sizeOf(window_), (XY<int>{200, 160}));
    EXPECT_THAT(probe_->lines().front(), HasSubstr("scale=2.00 monitor=512x384"));
}

TEST_F(WindowDesktop, APopUpTakesNoFocusAndNoFrame) {
    startActiveProbe();
    ASSERT_FALSE(command("popup 700 600").empty());
    EXPECT_TRUE(bench_.waitForColour({740, 768 - 620}, contentColour));
    EXPECT_TRUE(bench_.waitForColour({777, 768 - 637}, markColour)) << "at its exact place";
    EXPECT_TRUE(bench_.isActive(window_));
    ASSERT_TRUE(bench_.key({"a"}));
    EXPECT_FALSE(next("key ").empty());
    ASSERT_TRUE(bench_.movePointer({740, 768 - 620}));
    ASSERT_TRUE(bench_.pressButton());
    EXPECT_THAT(next("pressed"), HasSubstr(" root=740,619 "));
    ASSERT_TRUE(bench_.movePointer({840, 768 - 520}));
    EXPECT_THAT(next("moved"), HasSubstr(" root=840,519 ")) << "held, so it goes on outside";
    ASSERT_TRUE(bench_.movePointer(inWindow(100, 100)));
    EXPECT_THAT(next("moved"), HasSubstr(" root=300,517 ")) << "also over another window";
    ASSERT_TRUE(bench_.releaseButton());
    EXPECT_THAT(next("released"), HasSubstr(" root=300,517 "));
    ASSERT_FALSE(command("popdown").empty());
    EXPECT_TRUE(waitUntil([this] { return bench_.colourAt({740, 768 - 620}) != contentColour; }));
}

TEST_F(WindowDesktop, FilesThatAreDraggedOverItAreReportedBeforeTheyAreDropped) {
    startActiveProbe();
    bench_.dragFilesOver(window_, inWindow(40, 30));
    EXPECT_THAT(next("filesover"), HasSubstr("place=40,169 "));
    bench_.dragFilesAway(window_);
    EXPECT_THAT(next("filesover"), HasSubstr("root=0,0 "));
}

TEST_F(WindowDesktop, SleepsWhileNothingHappensAndWakesFromAThread) {
    startActiveProbe();
    // The first command lets everything that belongs to opening the window go by.
    ASSERT_FALSE(command("nothing").empty());
    letTimePass(500ms);
    std::string const before = command("nothing");
    long const wakeUps = probe_->wakeUps();
    letTimePass(3000ms);
    EXPECT_EQ(probe_->wakeUps(), wakeUps) << "nobody woke it";
    std::string const after = command("nothing");
    auto const waits = [](std::string const& line) {
        return std::stoi(line.substr(line.find("waits=") + 6));
    };
    EXPECT_EQ(waits(after), waits(before) + 1) << "one wake-up for one command";
}

TEST_F(WindowDesktopUnmanaged, WorksWithoutAWindowManager) {
    startActiveProbe();
    EXPECT_TRUE(bench_.waitForColour({202, 768 - 418 - 3}, markColour));
    ASSERT_TRUE(bench_.key({"a", "ctrl+b"}));
    EXPECT_THAT(next("key "), HasSubstr(" code=61 "));
    EXPECT_THAT(next("key "), HasSubstr(" code=2000042 "));
    auto const second =
        bench_.start({"desktop-probe", WindowBench::besideTests("../lib/libwainscot-desktop.so"), "--place",
                      "600", "100"});
    ASSERT_FALSE(second->waitForLine("activated").empty());
    second->send("quit");
    EXPECT_EQ(second->waitForExit(), 0);
    ASSERT_TRUE(bench_.movePointer({250, 200}));
    ASSERT_TRUE(bench_.click());
    ASSERT_TRUE(bench_.movePointer({10, 10}));
    ASSERT_FALSE(next("activated").empty()) << "a click takes the keyboard";
    ASSERT_TRUE(bench_.key({"c"}));
    EXPECT_THAT(next("key "), HasSubstr(" code=63 "));
}

TEST(WindowDesktopColours, AScreenWithTooFewColoursIsRefusedWithAReason) {
    WindowBench bench(WindowBench::WindowManager::none, 8);
    ASSERT_EQ(bench.problem(), "");
    auto const gallery = bench.start({"wainscot-gallery", "--desktop", "--page", "buttons"});
    EXPECT_THAT(gallery->waitForLine("No display can be used"), HasSubstr("too few for colours"));
}

TEST(WindowDesktopColours, ConvertsPixelsForAScreenOfSixteenBits) {
    WindowBench bench(WindowBench::WindowManager::none, 16);
    ASSERT_EQ(bench.problem(), "");
    auto const probe =
        bench.start({"desktop-probe", WindowBench::besideTests("../lib/libwainscot-desktop.so"), "--place",
                     "200", "418"});
    ASSERT_FALSE(probe->waitForLine("exposed").empty()) << bench.errors();
    // Five bits of red, six of green, five of blue.
    EXPECT_TRUE(bench.waitForColour({350, 768 - 518}, 0x3333));
    EXPECT_EQ(bench.colourAt({202, 768 - 418 - 3}), 0xFE60u);
}

TEST_F(WindowDesktop, TextsGoToOtherProgramsAndComeFromThem) {
    startActiveProbe();
    ASSERT_FALSE(command("copy gr\u00fc\u00dfe \u65e5\u672c \U0001F600").empty());
    ASSERT_FALSE(command("select chosen").empty());
    auto const read = [&](std::string const& from) {
        return bench_.start({"/bin/sh", "-c", "xclip -o -selection " + from + "; echo"});
    };
    EXPECT_EQ(read("clipboard")->waitForLine("g"), "gr\u00fc\u00dfe \u65e5\u672c \U0001F600");
    EXPECT_EQ(read("primary")->waitForLine("c"), "chosen");
    ASSERT_FALSE(command("copymuch").empty());
    EXPECT_EQ(bench_.start({"/bin/sh", "-c", "xclip -o -selection clipboard | wc -c"})->waitForLine("1"),
              "1000000");

    auto const owns = [&](std::string const& to, std::string const& maker) {
        return bench_.start({"/bin/sh", "-c", maker + " | exec xclip -quiet -selection " + to});
    };
    auto const fetch = [&](std::string const& how, std::string const& expected) {
        return waitUntil([&] {
            probe_->send(how);
            return probe_->waitForLine("text") == "text " + expected && !probe_->waitForLine("done").empty();
        });
    };
    auto const owner = owns("clipboard", "printf '\\303\\244\\r\\n\\tb'");
    EXPECT_TRUE(fetch("paste", "\u00e4\r"));
    auto const selector = owns("primary", "printf word");
    EXPECT_TRUE(fetch("insert", "word"));
    auto const picture =
        bench_.start({"/bin/sh", "-c", "printf picture | exec xclip -quiet -selection primary -t image/png"});
    EXPECT_TRUE(fetch("insert", "")) << "a picture is no text";
    ASSERT_FALSE(command("copy mine").empty());
    EXPECT_TRUE(fetch("paste", "mine")) << "the program's own text";
    ASSERT_FALSE(command("destroy").empty());
    EXPECT_EQ(read("clipboard")->waitForLine("m"), "mine") << "although the window has gone";
    auto const much = owns("clipboard", "head -c 3000000 /dev/zero | tr '\\0' y");
    EXPECT_TRUE(fetch("paste", "3000000"));
}

TEST_F(WindowDesktop, TheWholeWayIsReportedInSmallStepsWhileThatIsWanted) {
    startActiveProbe();
    ASSERT_TRUE(bench_.movePointer(inWindow(20, 100)));
    EXPECT_FALSE(next("moved place=20,99").empty());
    ASSERT_FALSE(command("steps 1").empty());
    ASSERT_TRUE(bench_.movePointer(inWindow(80, 100)));
    for (int x = 23; x <= 80; x += 3)
        EXPECT_THAT(next("moved"), StartsWith("moved place=" + std::to_string(x) + ",99 "));
    ASSERT_FALSE(command("steps 0").empty());
    ASSERT_TRUE(bench_.movePointer(inWindow(20, 100)));
    EXPECT_THAT(next("moved"), StartsWith("moved place=20,99 "));
}

TEST_F(WindowDesktop, UnboundedMotionGoesPastTheScreensEdgeAndEndsWhereItBegan) {
    startActiveProbe();
    ASSERT_TRUE(bench_.movePointer(inWindow(250, 100)));
    EXPECT_FALSE(next("moved place=250,99").empty());
    ASSERT_FALSE(command("unbounded 1").empty());
    for (int i = 0; i < 12; ++i) ASSERT_TRUE(bench_.xdotool({"mousemove_relative", "100", "0"}));
    EXPECT_FALSE(next("moved place=1450,99").empty()) << "the screen is 1024 wide";
    ASSERT_FALSE(command("unbounded 0").empty());
    probe_->skipLines();
    ASSERT_TRUE(bench_.xdotool({"mousemove_relative", "5", "0"}));
    EXPECT_FALSE(next("moved place=255,99").empty());
}
