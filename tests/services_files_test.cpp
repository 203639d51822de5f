#include "host/base/convert.h"
#include "host/services/drive_list.h"
#include "host/services/files.h"
#include "host/services/preferences.h"
#include "host/services/recent_paths.h"
#include "host/services/wstrxcmp.h"
#include "tests/temporary_folder.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <ctime>
#include <fcntl.h>
#include <map>
#include <random>
#include <sstream>
#include <string>
#include <sys/stat.h>

namespace wainscot {
namespace {

using Narrow = LightweightString<char>;
using Wide = LightweightString<wchar_t>;
using testing::ElementsAre;

Wide wide(std::string const& bytes) {
    return fileNameFromBytes(Narrow(bytes));
}

TEST(FileNames, AnyBytesSurviveTheWayToTextAndBack) {
    std::mt19937 random(2);
    // Good and bad sequences; their beginnings are bad, too.
    std::string const pieces[] = {"a",
                                  "\n",
                                  "\x80",
                                  "\xFF",
                                  "\xC3\xA9",
                                  "\xC0\x80",
                                  "\xE2\x82\xAC",
                                  "\xED\xA0\x80",
                                  "\xE0\x80\x80",
                                  "\xEF\xBF\xBD",
                                  "\xF3\xB0\xBE\xBF",
                                  "\xF3\xB0\xBF\xBF",
                                  "\xF4\x90\x80\x80",
                                  "\xF0\x80\x80\x80",
                                  "\xF0\x9F\x98\x80"};
    int escaped = 0;
    for (int i = 0; i < 20'000; ++i) {
        std::string bytes;
        for (auto n = random() % 8; n > 0; --n)
            bytes += random() % 3
                         ? pieces[random() % std::size(pieces)].substr(0, random() % 9 ? 4 : 1 + random() % 3)
                         : std::string(1, static_cast<char>(random() % 256));
        Wide const text = wide(bytes);
        ASSERT_EQ(fileNameToBytes(text), Narrow(bytes));
        // What is shown may be kept as UTF-8, in preferences for example.
        Wide const decoded = fromUTF8(Narrow(bytes));
        for (Wide const& kept : {text, decoded}) ASSERT_EQ(fromUTF8(toUTF8(kept)), kept);
        escaped += text != decoded;
        ASSERT_EQ(bytes.empty(), decoded.empty());
    }
    EXPECT_GT(escaped, 5'000);
    EXPECT_EQ(wide("a\xC3\xA9\U0001F600"), L"a\u00E9\U0001F600");
    EXPECT_EQ(wide("a\xFF"), L"a\U000F0FFF");
}

TEST(FileNames, AreValidated) {
    Wide reason = L"old";
    for (wchar_t const* good : {L"a", L"...", L" ", L"\u00E9\n", L".hidden"}) {
        EXPECT_TRUE(validateFileName(good, &reason));
        EXPECT_EQ(reason, L"");
    }
    for (Wide const& bad : {Wide(), Wide(L"."), Wide(L".."), Wide(L"a/b"), Wide(L"a\0b", 3), Wide(256, L'x'),
                            Wide(128, L'\u00E9'), wide(std::string(256, '\xFF'))}) {
        EXPECT_FALSE(validateFileName(bad, &reason));
        EXPECT_NE(reason, L"");
    }
    EXPECT_TRUE(validateFileName(wide(std::string(255, '\xFF'))));
}

TEST(Files, PathsAreJoinedAndTakenApart) {
    struct {
        Wide folder, name, joined, parent;
    } const paths[] = {
        {L"/a", L"b", L"/a/b", L"/a"}, {L"/a/", L"b", L"/a/b", L"/a"}, {L"/", L"b", L"/b", L"/"},
        {L"/a", L"/b", L"/b", L"/"},   {L"", L"b", L"b", L""},         {L"/a", L"", L"/a", L"/"},
        {L"/a/b", L"/", L"/", L"/"},   {L"", L"", L"", L""},           {L"a", L"b", L"a/b", L"a"}};
    for (auto const& [folder, name, joined, parent] : paths) {
        EXPECT_EQ(joinPaths(folder, name), joined);
        EXPECT_EQ(getPath(joined), parent) << toUTF8(joined).c_str();
    }
    for (wchar_t const* path : {L"/a/b//", L"/a//b", L"/a/b"}) EXPECT_EQ(getPath(path), L"/a");
    EXPECT_EQ(getPath(L"//"), L"/");
}

TEST(Files, FoldersAreListedWithHostileEntries) {
    TemporaryFolder const folder;
    std::string const odd = "line\nbreak \xFF\xC3";
    folder.write("plain", "12345");
    folder.write(odd, "");
    folder.write(std::string(255, 'n'), "");
    folder.write("sub/x", "");
    std::filesystem::create_symlink("nowhere", folder.path("broken"));
    std::filesystem::create_symlink("loop", folder.path("loop"));
    std::filesystem::create_symlink("sub", folder.path("link"));
    ASSERT_EQ(mkfifo(folder.path("pipe").c_str(), 0600), 0);
    timespec const times[2] = {{1'000'000'000, 0}, {1'234'567'890, 0}};
    ASSERT_EQ(utimensat(AT_FDCWD, folder.path("plain").c_str(), times, 0), 0);

    iFileManager::Contents const contents = getDirectoryContents(folder.wide());
    EXPECT_EQ(contents.message, L"");
    std::map<Wide, iFileManager::DirectoryItem> items;
    for (auto const& item : contents.items) items[item.name] = item;
    ASSERT_EQ(items.size(), 8u);
    EXPECT_EQ(contents.items.size(), 8u);
    using enum iFileManager::eKind;
    struct {
        Wide name;
        iFileManager::eKind kind;
        bool isLink, isBroken;
    } const expected[] = {{L"plain", eFile, false, false},  {L"sub", eFolder, false, false},
                          {L"link", eFolder, true, false},  {L"broken", eFile, true, true},
                          {L"loop", eFile, true, true},     {L"pipe", eSpecial, false, false},
                          {wide(odd), eFile, false, false}, {Wide(255, L'n'), eFile, false, false}};
    for (auto const& [name, kind, isLink, isBroken] : expected) {
        EXPECT_EQ(items[name].kind, kind) << toUTF8(name);
        EXPECT_EQ(items[name].isLink, isLink) << toUTF8(name);
        EXPECT_EQ(items[name].isBrokenLink, isBroken) << toUTF8(name);
        EXPECT_EQ(fileExists(items[name].path), !isBroken) << toUTF8(name);
    }
    EXPECT_EQ(items[L"plain"].size, 5u);
    EXPECT_EQ(items[L"sub"].size, 0u);
    EXPECT_EQ(items[L"plain"].time, 1'234'567'890u);
}

TEST(Files, WhatIsNotThereIsSaid) {
    TemporaryFolder const folder;
    folder.write("plain", "");
    for (Wide const& path : {folder.wide("none"), folder.wide("plain"), Wide(),
                             folder.wide() + Wide(L"\0x", 2), wide(std::string(5000, 'x'))}) {
        iFileManager::Contents const contents = getDirectoryContents(path);
        EXPECT_NE(contents.message, L"");
        EXPECT_TRUE(contents.items.empty());
    }
    EXPECT_FALSE(fileExists(folder.wide("plain") + Wide(L"\0x", 2)));
    EXPECT_TRUE(fileExists(folder.wide("plain")));
    EXPECT_FALSE(folderExists(folder.wide("plain")));
}

TEST(Places, MountPointsAreThoseForPeople) {
    auto const points = findMountPoints("sysfs /sys sysfs rw 0 0\n"
                                        "/dev/sda1 / ext4 rw 0 0\n"
                                        "/dev/sdb1 /media/me/USB\\040\\134stick vfat rw 0 0\n"
                                        "server:/x /home/shared nfs4 rw 0 0\n"
                                        "/dev/sdc /mnt/bad\\9\\04 ext4\n"
                                        "rubbish\n\n/dev/x relative nfs");
    EXPECT_THAT(points, ElementsAre("/media/me/USB \\stick", "/home/shared", "/mnt/bad\\9\\04"));
}

TEST(Places, AreThoseOfTheUser) {
    TemporaryFolder const folder;
    TestEnvironment const environment({{"HOME", folder.path() + "/"}, {"XDG_CONFIG_HOME", "relative"}});
    EXPECT_EQ(getProjectsBaseDirectory(), folder.wide());
    folder.write("My \"music\"/x", "");
    folder.write("Docs/x", "");
    folder.write(".config/user-dirs.dirs", "# remark\nXDG_MUSIC_DIR=\"$HOME/My \\\"music\\\"\"\n"
                                           "XDG_DOCUMENTS_DIR=\"$HOME/Docs\"\nXDG_VIDEOS_DIR=\"$HOME/None\"\n"
                                           "XDG_PICTURES_DIR=\"$HOME\"\nXDG_DESKTOP_DIR=\"$HOME");
    std::vector<DriveItem> const places = buildDriveList();
    ASSERT_GE(places.size(), 4u);
    std::vector<Wide> paths;
    for (DriveItem const& place : places) paths.push_back(place.path);
    paths.resize(4);
    EXPECT_THAT(paths, ElementsAre(L"/", folder.wide(), folder.wide("Docs"), folder.wide("My \"music\"")));
    EXPECT_EQ(places[1].kind, DriveItem::Kind::home);
    EXPECT_EQ(getProjectsBaseDirectory(), folder.wide("Docs"));
    EditorPreferences store("", EditorPreferences::Storage::memory);
    store.setPreference("Projects folder", folder.wide("My \"music\""));
    EXPECT_EQ(getProjectsBaseDirectory(), folder.wide("My \"music\""));
}

TEST(RecentPathsTest, TheLatestComesFirst) {
    EditorPreferences store("", EditorPreferences::Storage::memory);
    RecentPaths recent("Recent", 3);
    for (wchar_t const* path : {L"/a", L"/b", L"", L"/a", L"/c", L"/d"}) recent.add(path);
    EXPECT_THAT(recent.paths(), ElementsAre(L"/d", L"/c", L"/a"));
    recent.remove(L"/c");
    recent.add(wide("/\xFF"));
    EXPECT_THAT(RecentPaths("Recent", 2).paths(), ElementsAre(wide("/\xFF"), L"/d"));
    recent.clear();
    EXPECT_TRUE(recent.paths().empty());
    store.setValue("Recent", *parseJson(R"([1, "", "/x", ["/y"]])").value);
    EXPECT_THAT(recent.paths(), ElementsAre(L"/x"));
}

int sign(int value) {
    return (value > 0) - (value < 0);
}

TEST(Wstrxcmp, OrdersAsPeopleDo) {
    // Where the values are the same, as in "010" and "10", the code points decide.
    std::wistringstream list(
        L"| x|2|010|10|0010b|a|a 2|A1|a01|a1|a1b|a2|A10|a99999999999999999999|"
        L"a100000000000000000000|ab|b.png|B2.png|b10.png|\u00C4|\u00E4|\u00E4b|\u00C4c|\U0001F600");
    std::vector<Wide> names;
    for (std::wstring name; std::getline(list, name, L'|');) names.emplace_back(name);
    ASSERT_EQ(names.size(), 25u);
    for (std::size_t i = 0; i < names.size(); ++i)
        for (std::size_t k = 0; k < names.size(); ++k)
            EXPECT_EQ(sign(wstrxcmp(names[i], names[k])), sign(static_cast<int>(i) - static_cast<int>(k)))
                << i << " " << k;
}

TEST(Wstrxcmp, IsATotalOrderOfRandomNames) {
    std::wstring const characters = L"0019aAbB.\u00E9\u00C9\u212Ak_";
    std::mt19937 random(11);
    std::vector<Wide> names;
    for (int i = 0; i < 90; ++i) {
        std::wstring name;
        for (auto n = random() % 6; n > 0; --n) name += characters[random() % characters.size()];
        names.emplace_back(name);
    }
    names.emplace_back(1, static_cast<wchar_t>(0xFFFFFFFF));
    for (Wide const& a : names)
        for (Wide const& b : names) {
            int const ab = sign(wstrxcmp(a, b));
            ASSERT_EQ(ab, -sign(wstrxcmp(b, a)));
            ASSERT_EQ(ab == 0, a == b);
            for (Wide const& c : names) ASSERT_TRUE(ab > 0 || wstrxcmp(b, c) > 0 || wstrxcmp(a, c) <= 0);
        }
}

TEST(Wstrxcmp, LongRunsOfDigitsDoNotOverflow) {
    Wide const nines(300'000, L'9');
    EXPECT_LT(wstrxcmp(nines, Wide(L"1") + Wide(300'000, L'0')), 0);
    EXPECT_GT(wstrxcmp(nines, Wide(500'000, L'0') + L"8"), 0);
}

} // namespace
} // namespace wainscot
