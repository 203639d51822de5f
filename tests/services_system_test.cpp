#include "driver/windows/child_process.h"
#include "tests/host_fixture.h"
#include "tests/temporary_folder.h"

#include "host/base/convert.h"
#include "host/base/os.h"
#include "host/base/ptr.h"
#include "host/services/link_opener.h"
#include "host/services/local_time.h"
#include "host/services/system_watchdog.h"
#include "host/services/user_folders.h"

#include <sys/stat.h>
#include <tuple>

namespace wainscot {
namespace {

using Text = LightweightString<char>;
using Wide = LightweightString<wchar_t>;

TEST(ServiceObject, CountsReferencesAsThePointersDo) {
    struct Counted : Qv::InternalRefCount {
        explicit Counted(bool& gone) : isGone(gone) {}
        ~Counted() override { isGone = true; }
        bool& isGone;
    };
    bool isGone = false;
    auto* const object = new Counted(isGone);
    OS().addReference(object);
    { Qv::Ptr<Counted> const pointer(object); }
    EXPECT_EQ(object->refCount(), 1u);
    OS().releaseReference(object);
    EXPECT_TRUE(isGone);
    OS().addReference(nullptr);
    OS().releaseReference(nullptr);
}

class Watchdog : public HostTest {
protected:
    /// A handler of the loop in which virtual time passes.
    void handle(std::function<void()> work) {
        auto* const root = openWindow();
        root->addChild(new ProbeGlob);
        auto* const probe = new ProbeGlob;
        root->addChild(probe);
        probe->onMessage = [work = std::move(work)](auto const&, Glob*) {
            work();
            return 1;
        };
        sendMessage("work", probe, nullptr, false);
        driver_.settle();
    }
    std::uint64_t reports() const { return Diagnostics::countOf("handler too slow"); }
};

TEST_F(Watchdog, ReportsAHandlerThatIsNotOnLifeSupport) {
    expectDiagnostic("handler too slow");
    handle([&] { virtualClock().advance(SystemWatchdog::standardLimit); });
    EXPECT_EQ(reports(), 0u);
    handle([&] { virtualClock().advance(SystemWatchdog::standardLimit + 1); });
    EXPECT_EQ(reports(), 1u);
    SystemWatchdog::setLimit(0);
    handle([&] { virtualClock().advance(1e6); });
    SystemWatchdog::setLimit(SystemWatchdog::standardLimit);
    EXPECT_EQ(reports(), 1u);
}

TEST_F(Watchdog, TimeOnLifeSupportDoesNotCount) {
    expectDiagnostic("handler too slow");
    expectDiagnostic("life support ended twice");
    expectDiagnostic("exception in handler");
    handle([&] {
        virtualClock().advance(3000);
        SystemWatchdog::LifeSupport const outer;
        virtualClock().advance(60'000);
        { SystemWatchdog::LifeSupport const inner; }
        EXPECT_TRUE(SystemWatchdog::isOnLifeSupport());
        virtualClock().advance(60'000);
        throw std::runtime_error("the bracket is closed all the same");
    });
    EXPECT_FALSE(SystemWatchdog::isOnLifeSupport());
    handle([] { SystemWatchdog::beginLifeSupport(); });
    handle([&] { virtualClock().advance(60'000); });
    handle([&] {
        virtualClock().advance(60'000);
        SystemWatchdog::endLifeSupport();
    });
    EXPECT_EQ(reports(), 0u);
    SystemWatchdog::endLifeSupport();
    EXPECT_EQ(Diagnostics::countOf("life support ended twice"), 1u);
    handle([&] {
        { SystemWatchdog::LifeSupport const before; }
        virtualClock().advance(6000);
    });
    EXPECT_EQ(reports(), 1u);
}

TEST(LocalTimes, FollowTheZoneOfTheUser) {
    TestEnvironment const environment({{"TZ", "CET-1CEST,M3.5.0,M10.5.0/3"}});
    LocalTime const winter = *getLocalTime(1'705'276'799);
    EXPECT_EQ(std::tuple(winter.year, winter.month, winter.day, winter.hour, winter.second, winter.weekday,
                         winter.dayOfYear, winter.isSummerTime),
              std::tuple(2024, 1, 15, 0, 59, 1, 15, false));
    EXPECT_EQ(getLocalTime(1'720'000'000)->utcOffset, 7200);
    EXPECT_FALSE(getLocalTime(INT64_MAX));
    EXPECT_EQ(getLocalTime(-1)->year, 1970);
    {
        TestEnvironment const elsewhere({{"TZ", "UTC"}});
        EXPECT_EQ(formatLocalTime(L"%d.%m. %H:%M", 1'705'276'799), L"14.01. 23:59");
    }
    EXPECT_EQ(formatLocalTime(L"%d.%m. %H:%M", 1'705'276'799), L"15.01. 00:59");
}

TEST(LocalTimes, AnyFormatSurvives) {
    TestEnvironment const environment({{"TZ", "UTC"}});
    constexpr std::int64_t moment = 1'000'000'000;
    for (wchar_t const* same :
         {L"", L"%", L"%%%", L"%Q", L"%E", L"100% \x65E5", L"%999999999d", L"%1", L"%-"})
        EXPECT_EQ(formatLocalTime(same, moment), std::wstring_view(same) == L"%%%" ? L"%%" : same);
    EXPECT_EQ(formatLocalTime(L"%Y\x5E74%5d|%-d|%Ey|%p", moment), L"2001\x5E74"
                                                                  L"00009|9|01|AM");
    EXPECT_EQ(formatLocalTime(Wide(L"a\0%d", 4), moment), Wide(L"a\0"
                                                               L"09",
                                                               4));
    std::wstring longFormat, expected;
    for (int i = 0; i < 100'000; ++i) {
        longFormat += L"%d-";
        expected += L"09-";
    }
    EXPECT_EQ(formatLocalTime(Wide(longFormat), moment), Wide(expected));
    EXPECT_TRUE(formatLocalTime(L"%Y", INT64_MIN).empty());
}

TEST(StandardFolders, APipeInPlaceOfTheListBlocksNobody) {
    TemporaryFolder const folder;
    TestEnvironment const environment({{"HOME", folder.path()}, {"XDG_CONFIG_HOME", folder.path()}});
    ASSERT_EQ(mkfifo(folder.path("user-dirs.dirs").c_str(), 0600), 0);
    EXPECT_TRUE(getStandardFolder("MUSIC").empty());
}

TEST(Links, AreMadeUsable) {
    std::pair<wchar_t const*, wchar_t const*> const links[] = {
        {L"https://a.example/x?y#z", L"https://a.example/x?y#z"},
        {L"  HTTP://a.example\n", L"HTTP://a.example"},
        {L"http://https://a.example", L"https://a.example"},
        {L"http://http://http://a.example", L"http://a.example"},
        {L"http://mailto:a@b.example", L"mailto:a@b.example"},
        {L"http://localhost:8080/x", L"http://localhost:8080/x"},
        {L"http://a.example/http://b.example", L"http://a.example/http://b.example"},
        {L"ftp://http://a.example", L"ftp://http://a.example"}};
    for (auto const& [given, usable] : links) EXPECT_EQ(usableLink(given), usable) << toUTF8(given);
    for (wchar_t const* unusable : {L"http:", L"", L"a.example", L"--help", L"/etc/passwd",
                                    L"1http://a.example", L"http://a.example/x y", L"http://a.example/\x1Bx"})
        EXPECT_EQ(usableLink(unusable), L"") << toUTF8(unusable);
    EXPECT_TRUE(usableLink(Wide(L"http://a\0b", 10)).empty());
    std::wstring many;
    for (int i = 0; i < 100'000; ++i) many += L"http://";
    EXPECT_EQ(usableLink(Wide(many + L"a")), L"http://a");
}

/// A program in the place of the desktop's, which records its words.
class LinkOpening : public testing::Test {
protected:
    LinkOpening() {
        folder_.write("bin/xdg-open", "#!/bin/sh\nprintf '%s|' \"$#\" \"$@\" >\"$0.new\"\nread line || "
                                      "printf end >>\"$0.new\"\nmv \"$0.new\" \"$0.out\"\n");
        chmod(folder_.path("bin/xdg-open").c_str(), 0700);
    }
    std::string waitForWords() {
        waitUntil([&] { return folder_.has("bin/xdg-open.out"); });
        return folder_.read("bin/xdg-open.out");
    }

    TemporaryFolder folder_;
    TestEnvironment environment_{{"PATH", folder_.path("bin") + ":/usr/bin:/bin"}};
};

TEST_F(LinkOpening, StartsTheProgramOfTheDesktopWithoutAShell) {
    LinkResult const result = openLink(L"http://https://a.example/?a=$(id)&b='\";x|y\x65E5");
    EXPECT_TRUE(result.isOpened());
    EXPECT_TRUE(result.message.empty());
    EXPECT_EQ(waitForWords(), "1|https://a.example/?a=$(id)&b='\";x|y\xE6\x97\xA5|end");
}

TEST_F(LinkOpening, AsksForWhatIsNotHarmless) {
    std::vector<std::string> asked;
    auto const answer = [&](bool allowed) {
        return [&, allowed](Text const& scheme, Wide const&) {
            return asked.emplace_back(scheme.c_str()), allowed;
        };
    };
    EXPECT_EQ(openLink(L"FILE:///etc/passwd", answer(false)).state, LinkResult::State::refused);
    EXPECT_EQ(openLink(L"javascript:x").state, LinkResult::State::refused);
    EXPECT_FALSE(openLink(L"no link", answer(true)).message.empty());
    EXPECT_EQ(asked, (std::vector<std::string>{"file"}));
    EXPECT_FALSE(folder_.has("bin/xdg-open.out"));
    EXPECT_TRUE(openLink(L"app+x:y", answer(true)).isOpened());
    EXPECT_EQ(waitForWords(), "1|app+x:y|end");
}

TEST_F(LinkOpening, SaysWhyTheSystemCouldNot) {
    LinkResult const tooLong = openLink(Wide(L"http://a.example/") + Wide(1'000'000, L'x'));
    EXPECT_EQ(tooLong.state, LinkResult::State::failed);
    EXPECT_EQ(tooLong.message, L"Argument list too long");
    TestEnvironment const nowhere({{"PATH", folder_.path("none")}});
    EXPECT_EQ(openLink(L"http://a.example").message, L"No such file or directory");
}

} // namespace
} // namespace wainscot
