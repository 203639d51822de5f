#include "driver/windows/child_process.h"
#include "host/base/convert.h"
#include "host/base/diagnostics.h"
#include "host/services/clock.h"
#include "host/services/preferences.h"
#include "host/start/host.h"
#include "tests/host_fixture.h"
#include "tests/temporary_folder.h"

#include <gtest/gtest.h>

#include <csignal>
#include <limits>
#include <memory>
#include <random>
#include <stdexcept>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace wainscot {
namespace {

using Narrow = LightweightString<char>;
using Wide = LightweightString<wchar_t>;

class PreferencesTest : public testing::Test {
protected:
    PreferencesTest() {
        Diagnostics::reset();
        Diagnostics::setSink([](char const*) {});
    }
    ~PreferencesTest() override {
        Diagnostics::setSink(nullptr);
        Diagnostics::reset();
    }

    /// A store in a folder below the test's own; the one before it ends first.
    EditorPreferences& open(std::string const& folder = "config") {
        store_.reset();
        store_ = std::make_unique<EditorPreferences>("", EditorPreferences::Storage::memory);
        EXPECT_TRUE(store_->setFolder(folder_.text(folder)));
        return *store_;
    }

    static constexpr char const* file = "config/preferences.json";
    TemporaryFolder folder_;
    std::unique_ptr<EditorPreferences> store_;
};

TEST_F(PreferencesTest, EveryTypeSurvivesARestart) {
    Wide const wide = L"/\u00E4 \U0001F600\n\"";
    constexpr int least = std::numeric_limits<int>::min();
    open().setPreference("flag", true);
    prefs().setPreference("least", least);
    prefs().setPreference("share", 0.1);
    prefs().setPreference("literal", "text");
    prefs().setPreference("wide", wide);
    prefs().setPreference("place", XY<int>(-3, 7));
    prefs().setPreference("gone", 1);
    prefs().setValue("gone", {});
    EXPECT_FALSE(folder_.has(file));
    open();
    EXPECT_TRUE(prefs().getPreference("flag", false));
    EXPECT_EQ(prefs().getPreference("least", 0), least);
    EXPECT_EQ(prefs().getPreference("share", 0.0), 0.1);
    EXPECT_EQ(prefs().getPreference("literal", ""), "text");
    EXPECT_EQ(prefs().getPreference("wide", L""), wide);
    EXPECT_EQ(prefs().getPreference("wide", Narrow()), "/\u00E4 \U0001F600\n\"");
    EXPECT_EQ(prefs().getPreference("place", XY<int>()), XY<int>(-3, 7));
    EXPECT_EQ(prefs().getPreference("gone", 5), 5);
}

TEST_F(PreferencesTest, AnotherTypeAndTheEnvironmentGiveTheDefault) {
    TestEnvironment const environment({{"curved_buttons", "7"}});
    EXPECT_EQ(config_int("curved_buttons", 1), 1);
    EXPECT_THROW(prefs(), std::logic_error);
    folder_.write(file, R"({"n": 3000000000, "d": 1.5, "t": "1", "b": true, "p": [1, 2, 3], "q": [1, "2"]})");
    open();
    EXPECT_EQ(config_int("curved_buttons", 1), 1);
    for (char const* key : {"n", "d", "t", "b"}) EXPECT_EQ(prefs().getPreference(key, 4), 4) << key;
    EXPECT_EQ(prefs().getPreference("n", true), true);
    EXPECT_EQ(prefs().getPreference("n", L"x"), L"x");
    for (char const* key : {"p", "q"})
        EXPECT_EQ(prefs().getPreference(key, XY<int>(8, 9)), XY<int>(8, 9)) << key;
    EXPECT_EQ(config_int("b", 4), 1);
    EXPECT_EQ(config_int("t", 4), 4);
    EXPECT_EQ(config_double("n", 1), 3e9);
    EXPECT_EQ(config_double("d", 1), 1.5);
}

TEST_F(PreferencesTest, WhatOthersHaveWrittenStays) {
    folder_.write(file, R"({"newer": {"deep": [1]}, "shared": 1, "removed": 2})");
    open().setPreference("mine", 1);
    prefs().setPreference("shared", 5);
    prefs().setValue("removed", {});
    folder_.write(file, R"({"newer": {"deep": [2]}, "shared": 2, "removed": 3, "other": 4})");
    EXPECT_TRUE(prefs().flush());
    EXPECT_EQ(parseJson(folder_.read(file)).value,
              parseJson(R"({"mine": 1, "newer": {"deep": [2]}, "shared": 5, "other": 4})").value);
    EXPECT_EQ(prefs().getPreference("other", 0), 4);
}

TEST_F(PreferencesTest, SettingIsCheapAndWritingWaits) {
    VirtualClock clock;
    iClock::install(&clock);
    open().setPreference("n", 1);
    double const due = clock.msecs() + EditorPreferences::writeDelay;
    clock.advance(10);
    prefs().setPreference("n", 2);
    EXPECT_EQ(prefs().nextWrite(), due);
    prefs().writeIfDue();
    EXPECT_FALSE(folder_.has(file));
    clock.advanceTo(due);
    prefs().writeIfDue();
    EXPECT_TRUE(folder_.has(file));
    prefs().setPreference("n", 2);
    EXPECT_FALSE(prefs().nextWrite());
    iClock::install(nullptr);
}

TEST_F(PreferencesTest, ADamagedFileIsSetAsideAndLosesNothingKnown) {
    for (char const* damaged : {"{\"a\": 1", "", "[]", "\xFF\xFE"}) {
        Diagnostics::reset();
        folder_.write(file, damaged);
        EXPECT_EQ(open().getPreference("a", 7), 7);
        EXPECT_EQ(Diagnostics::lines().size(), 1u);
        prefs().setPreference("a", 8);
        EXPECT_EQ(open().getPreference("a", 7), 8);
    }
    EXPECT_EQ(folder_.read("config/preferences.json.damaged"), "{\"a\": 1");
    EXPECT_EQ(folder_.read("config/preferences.json.damaged-4"), "\xFF\xFE");
    folder_.write(file, "rubbish");
    prefs().setPreference("new", 2);
    EXPECT_EQ(open().getPreference("a", 0), 8);
    EXPECT_EQ(prefs().getPreference("new", 0), 2);
}

TEST_F(PreferencesTest, UnusableFoldersAreSurvivedAndReportedOnce) {
    folder_.write("file", "");
    for (char const* place : {"file", "file/below", "\xFF\nodd"}) {
        std::string const before = folder_.read("file");
        open(place);
        prefs().setPreference("n", 1);
        bool const worked = prefs().flush();
        EXPECT_EQ(worked, place[0] == '\xFF');
        EXPECT_EQ(prefs().flush(), worked);
        EXPECT_EQ(prefs().getPreference("n", 0), 1);
        EXPECT_EQ(Diagnostics::lines().size(), worked ? 0u : 1u) << place;
        Diagnostics::reset();
    }
    std::filesystem::create_directories(folder_.path("config/preferences.json"));
    open().setPreference("n", 1);
    EXPECT_FALSE(prefs().flush());
    EXPECT_EQ(Diagnostics::lines().size(), 1u);
}

TEST_F(PreferencesTest, ReadOnlyPlacesAreReadAndNotChanged) {
    struct {
        mode_t folder, file;
        int seen;
    } const places[] = {{0555, 0644, 1}, {0777, 0444, 1}, {0777, 0, 5}};
    folder_.write(file, R"({"n": 1})");
    chmod(folder_.path().c_str(), 0755);
    for (auto const& place : places) {
        chmod(folder_.path(file).c_str(), place.file);
        chmod(folder_.path("config").c_str(), place.folder);
        // Nothing is refused to the administrator.
        bool const changed = geteuid() == 0 && seteuid(65534) == 0;
        EXPECT_EQ(open().getPreference("n", 5), place.seen);
        prefs().setPreference("n", 2);
        EXPECT_FALSE(prefs().flush());
        store_.reset();
        EXPECT_EQ(changed ? seteuid(0) : 0, 0);
        chmod(folder_.path("config").c_str(), 0777);
    }
    EXPECT_EQ(folder_.read(file), R"({"n": 1})");
    EXPECT_EQ(Diagnostics::lines().size(), 3u);
}

TEST_F(PreferencesTest, LinksAndPermissionsAreKept) {
    folder_.write("elsewhere/real.json", "{}");
    chmod(folder_.path("elsewhere/real.json").c_str(), 0640);
    std::filesystem::create_directories(folder_.path("config"));
    std::filesystem::create_symlink("../elsewhere/real.json", folder_.path(file));
    open().setPreference("n", 1);
    store_.reset();
    EXPECT_TRUE(std::filesystem::is_symlink(folder_.path(file)));
    EXPECT_EQ(parseJson(folder_.read("elsewhere/real.json")).value->member("n").asInteger(), 1);
    struct stat status {};
    stat(folder_.path("elsewhere/real.json").c_str(), &status);
    EXPECT_EQ(status.st_mode & 07777U, 0640u);
}

TEST_F(PreferencesTest, BytesThatAreNoTextAreCounted) {
    open().setPreference("bad", "a\xFF");
    EXPECT_EQ(prefs().getPreference("bad", ""), "a\uFFFD");
    prefs().setPreference("\xFF", 1);
    EXPECT_EQ(prefs().getPreference("\xFF", 0), 0);
    EXPECT_EQ(Diagnostics::countOf("preference is no UTF-8"), 1u);
    EXPECT_EQ(Diagnostics::countOf("preference key is no UTF-8"), 1u);
}

/// Writes larger and smaller files without end; every one says how long its text is.
[[noreturn]] void writeForEver(Narrow const& folder) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    EditorPreferences store("", EditorPreferences::Storage::memory);
    store.setFolder(folder);
    for (int length = 0;; length = (length + 30'000) % 210'000) {
        store.setPreference("length", length);
        store.setPreference("text", Narrow(static_cast<std::size_t>(length), 'x'));
        store.flush();
    }
}

bool isWhole(std::string const& text) {
    std::optional<JsonValue> const value = parseJson(text).value;
    return value && static_cast<int>(value->member("text").asText().value_or("-").size()) ==
                        value->member("length").asInteger();
}

TEST_F(PreferencesTest, AFileKilledWhileWritingIsWhole) {
    std::mt19937 random(3);
    int seen = 0;
    for (int round = 0; round < 25; ++round) {
        pid_t const child = fork();
        if (child == 0) writeForEver(folder_.text("config"));
        ASSERT_TRUE(waitUntil([&] { return folder_.has(file); }));
        for (auto looks = random() % 20; looks > 0; --looks, ++seen) ASSERT_TRUE(isWhole(folder_.read(file)));
        letTimePass(std::chrono::milliseconds(random() % 4));
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
        ASSERT_TRUE(isWhole(folder_.read(file))) << round;
        open().getPreference("length", 0);
        ASSERT_TRUE(Diagnostics::lines().empty());
        store_.reset();
    }
    EXPECT_GT(seen, 50);
}

TEST_F(PreferencesTest, TwoProgramsAtOnceLoseNothing) {
    pid_t const child = fork();
    auto const writeMany = [this](char const* prefix) {
        for (int i = 0; i < 40; ++i) {
            open().setPreference(Narrow(prefix) + StringFromInteger(i), i);
            prefs().flush();
        }
    };
    if (child == 0) {
        writeMany("child");
        _exit(0);
    }
    writeMany("parent");
    waitpid(child, nullptr, 0);
    open();
    for (int i = 0; i < 40; ++i) {
        EXPECT_EQ(prefs().getPreference(Narrow("child") + StringFromInteger(i), -1), i);
        EXPECT_EQ(prefs().getPreference(Narrow("parent") + StringFromInteger(i), -1), i);
    }
}

TEST_F(PreferencesTest, TheHostKeepsThem) {
    TestEnvironment const environment({{"XDG_CONFIG_HOME", folder_.path("xdg")}});
    HostSettings settings;
    settings.name = "../pro/gram";
    settings.screen = HostSettings::Screen::offscreen;
    {
        Host const host(0, nullptr, settings);
        prefs().setPreference("n", 1);
        EXPECT_TRUE(prefs().filePath().empty());
        EXPECT_TRUE(prefs().flush());
    }
    EXPECT_FALSE(folder_.has("xdg"));
    settings.preferenceFolder = folder_.text("given");
    for (int i = 0; i < 2; ++i) {
        Host const host(0, nullptr, settings);
        EXPECT_EQ(prefs().getPreference("n", 0), i);
        EXPECT_FALSE(prefs().setFolder(folder_.text("late")));
        prefs().setPreference("n", i + 1);
    }
    EXPECT_THROW(prefs(), std::logic_error);
    EditorPreferences const named(settings.name, EditorPreferences::Storage::file);
    EXPECT_EQ(named.filePath(), folder_.text("xdg/_._pro_gram/preferences.json"));
}

TEST_F(PreferencesTest, TheIdleLoopWritesThem) {
    HostSettings settings;
    settings.screen = HostSettings::Screen::offscreen;
    settings.preferenceFolder = folder_.text("config");
    Host host(0, nullptr, settings);
    auto* const watcher = new ProbeGlob;
    int ticks = 0;
    watcher->onReact = [&](Event const&) {
        if (folder_.has(file) || ++ticks == 1000) host.quit();
        return true;
    };
    watcher->setInterest(EventKind::timer);
    ASSERT_TRUE(host.globManager().realize(watcher));
    prefs().setPreference("n", 1);
    host.run();
    EXPECT_NEAR(ticks * 10.0, EditorPreferences::writeDelay, 50);
    host.globManager().closeAll();
}

} // namespace
} // namespace wainscot
