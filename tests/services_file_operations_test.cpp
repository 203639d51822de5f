#include "tests/temporary_folder.h"

#include "host/services/clock.h"
#include "host/services/file_operations.h"

#include <gmock/gmock.h>

#include <sys/stat.h>
#include <unistd.h>

namespace wainscot {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using Wide = LightweightString<wchar_t>;

TEST(FileOperations, ChangeWhatIsThereAndReplaceNothing) {
    TemporaryFolder const folder;
    Wide const made = folder.wide("new \xFF");
    EXPECT_TRUE(createFolder(made).isDone());
    EXPECT_TRUE(folderExists(made));
    FileResult const again = createFolder(made);
    EXPECT_EQ(again.message, L"File exists");
    EXPECT_EQ(again.path, made);
    EXPECT_EQ(createFolder(folder.wide("none/deeper")).message, L"No such file or directory");
    folder.write("a", "first");
    folder.write("b", "second");
    EXPECT_EQ(renamePath(folder.wide("a"), folder.wide("b")).path, folder.wide("b"));
    EXPECT_EQ(folder.read("b"), "second");
    EXPECT_TRUE(renamePath(folder.wide("a"), folder.wide("c")).isDone());
    EXPECT_TRUE(renamePath(folder.wide("c"), folder.wide("c/")).isDone());
    EXPECT_EQ(folder.read("c"), "first");
    EXPECT_EQ(renamePath(folder.wide("a"), folder.wide("b")).message, L"No such file or directory");
    EXPECT_TRUE(deleteFile(folder.wide("c")).isDone());
    EXPECT_FALSE(folder.has("c"));
    EXPECT_FALSE(deleteFile(made).isDone());
    EXPECT_TRUE(deleteEmptyFolder(made).isDone());
    for (Wide const& path : {Wide(), Wide(L"/"), Wide(L"."), folder.wide("x/.."), Wide(L"//"),
                             folder.wide("b") + Wide(L"\0x", 2)}) {
        EXPECT_EQ(deleteFolderWithContents(path).message, L"Invalid argument");
        EXPECT_FALSE(deleteFile(path).isDone());
        EXPECT_FALSE(createFolder(path).isDone());
        EXPECT_FALSE(renamePath(folder.wide("b"), path).isDone());
        EXPECT_FALSE(moveToTrash(path).isDone());
    }
    EXPECT_EQ(folder.read("b"), "second");
}

TEST(FileOperations, AFolderGoesWithItsContentsButNotWithWhatLinksLeadTo) {
    TemporaryFolder const folder;
    folder.write("kept/file", "kept");
    for (int i = 0; i < 60; ++i) {
        folder.write("gone/file " + std::to_string(i), "x");
        folder.write("gone/folder " + std::to_string(i) + "/inner/file", "x");
    }
    std::filesystem::create_directory_symlink(folder.path("kept"), folder.path("gone/link"));
    std::filesystem::create_symlink(folder.path("none"), folder.path("gone/broken"));
    ASSERT_EQ(mkfifo(folder.path("gone/pipe").c_str(), 0600), 0);
    std::filesystem::create_directory_symlink(folder.path("gone"), folder.path("outer"));
    EXPECT_FALSE(deleteFolderWithContents(folder.wide("outer/")).isDone());
    EXPECT_TRUE(folder.has("gone/pipe"));
    EXPECT_TRUE(deleteFolderWithContents(folder.wide("gone//")).isDone());
    EXPECT_FALSE(folder.has("gone"));
    EXPECT_EQ(folder.read("kept/file"), "kept");
    EXPECT_FALSE(deleteFolderWithContents(folder.wide("kept/file")).isDone());
    EXPECT_EQ(folder.read("kept/file"), "kept");
}

TEST(FileOperations, DepthIsNotLimited) {
    TemporaryFolder const folder;
    // Far deeper than a path may be long, and than files may be open.
    std::filesystem::path const before = std::filesystem::current_path();
    ASSERT_EQ(chdir(folder.path().c_str()), 0);
    for (int i = 0; i < 1500; ++i) ASSERT_TRUE(mkdir("deep", 0700) == 0 && chdir("deep") == 0);
    std::filesystem::current_path(before);
    EXPECT_TRUE(deleteFolderWithContents(folder.wide("deep")).isDone());
    EXPECT_FALSE(folder.has("deep"));
}

TEST(FileOperations, AFailureNamesThePlaceAndTheReason) {
    TemporaryFolder const folder;
    folder.write("top/locked/file", "x");
    for (std::string const& place : {folder.path(), folder.path("top"), folder.path("top/locked")})
        ASSERT_EQ(chmod(place.c_str(), 0555), 0);
    FileResult refused;
    {
        OrdinaryUser const user;
        refused = deleteFolderWithContents(folder.wide("top"));
    }
    EXPECT_EQ(refused.path, folder.wide("top/locked/file"));
    EXPECT_EQ(refused.message, L"Permission denied");
    for (std::string const& place : {folder.path("top/locked"), folder.path("top"), folder.path()})
        chmod(place.c_str(), 0755);
}

TEST(Trash, TakesFilesWithANoteOfWhereTheyCameFrom) {
    TemporaryFolder const folder;
    TestEnvironment const environment(
        {{"HOME", folder.path()}, {"XDG_DATA_HOME", folder.path("data")}, {"TZ", "UTC"}});
    VirtualClock clock;
    clock.setCalendar(1'000'000'000);
    iClock::install(&clock);
    for (int i = 0; i < 12; ++i) {
        folder.write("50% of\xC3\xA4", std::to_string(i));
        EXPECT_TRUE(moveToTrash(folder.wide("50% of\xC3\xA4")).isDone()) << i;
    }
    EXPECT_FALSE(folder.has("50% of\xC3\xA4"));
    EXPECT_EQ(folder.read("data/Trash/files/50% of\xC3\xA4"), "0");
    EXPECT_EQ(folder.read("data/Trash/files/50% of\xC3\xA4 2"), "1");
    EXPECT_EQ(folder.read("data/Trash/info/50% of\xC3\xA4 2.trashinfo"),
              "[Trash Info]\nPath=" + folder.path("50%25%20of%C3%A4") +
                  "\nDeletionDate=2001-09-09T01:46:40\n");
    std::string const longest(250, 'n');
    folder.write(longest + "/inner", "x");
    EXPECT_TRUE(moveToTrash(folder.wide(longest)).isDone());
    EXPECT_FALSE(folder.has(longest));
    EXPECT_FALSE(moveToTrash(folder.wide("none")).isDone());
    EXPECT_FALSE(folder.has("data/Trash/info/none.trashinfo"));
    iClock::install(nullptr);
}

} // namespace
} // namespace wainscot
