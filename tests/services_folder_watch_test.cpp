#include "driver/windows/child_process.h"
#include "tests/host_fixture.h"
#include "tests/temporary_folder.h"

#include "host/services/file_operations.h"
#include "host/services/folder_watch.h"

#include <gmock/gmock.h>

#include <fstream>
#include <map>
#include <memory>

namespace wainscot {
namespace {

using Result = iWatchable::Result;
using Wide = LightweightString<wchar_t>;

/// Runs under the thread sanitizer, too.
class ThreadFolderWatch : public HostTest {
protected:
    FolderWatch::Handler record() {
        return [this](Result const& result) {
            results_.push_back(result);
            for (iWatchable::Entry const& entry : result.changes)
                last_[std::string(fileNameToBytes(entry.name).view())] = entry.change;
        };
    }
    bool waitFor(std::function<bool()> const& condition) {
        return waitUntil([&] {
            host_->loop().turn();
            return condition();
        });
    }
    bool waitForKind(iWatchable::eKind kind) {
        return waitFor([&] { return !results_.empty() && results_.back().kind == kind; });
    }

    TemporaryFolder folder_;
    std::vector<Result> results_;
    std::map<std::string, iWatchable::Change> last_;
};

TEST_F(ThreadFolderWatch, SaysWhatHasComeGoneAndChanged) {
    folder_.write("old", "1");
    folder_.write("there", "1");
    FolderWatch const watch(folder_.wide(), record());
    ASSERT_TRUE(watch.isWatching());
    folder_.write("new \xFF", "1");
    folder_.write("there", "22");
    std::filesystem::remove(folder_.path("old"));
    ASSERT_TRUE(waitFor([&] { return last_.size() == 3; }));
    EXPECT_EQ(last_["new \xFF"], iWatchable::Change::added);
    EXPECT_EQ(last_["there"], iWatchable::Change::altered);
    EXPECT_EQ(last_["old"], iWatchable::Change::removed);
    EXPECT_EQ(results_.front().folder, folder_.wide());
    EXPECT_FALSE(results_.front().isEmpty());
}

TEST_F(ThreadFolderWatch, OneWatchServesAllAndEndsWithTheLast) {
    std::filesystem::create_directory_symlink(folder_.path(), folder_.path("link"));
    auto first = std::make_unique<FolderWatch>(folder_.wide(), record());
    auto second = std::make_unique<FolderWatch>(folder_.wide("link"), record());
    EXPECT_EQ(FolderWatchService::current()->numFolders(), 1u);
    folder_.write("a", "");
    ASSERT_TRUE(waitFor([&] { return results_.size() >= 2; }));
    EXPECT_NE(results_[0].folder, results_[1].folder);
    first.reset();
    results_.clear();
    folder_.write("b", "");
    ASSERT_TRUE(waitFor([&] { return !results_.empty(); }));
    EXPECT_EQ(results_[0].folder, folder_.wide("link"));
    second.reset();
    EXPECT_EQ(FolderWatchService::current()->numFolders(), 0u);
}

TEST_F(ThreadFolderWatch, AWatchMayEndItselfAndOthersInItsHandler) {
    std::unique_ptr<FolderWatch> watches[3];
    int calls = 0;
    for (auto& watch : watches)
        watch = std::make_unique<FolderWatch>(folder_.wide(), [&](Result const& result) {
            ++calls;
            for (auto& each : watches) each.reset();
            EXPECT_FALSE(result.changes.empty());
        });
    folder_.write("a", "");
    ASSERT_TRUE(waitFor([&] { return calls > 0; }));
    driver_.settle();
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(FolderWatchService::current()->numFolders(), 0u);
}

TEST_F(ThreadFolderWatch, AFailingHandlerKeepsNothingFromTheOthers) {
    expectDiagnostic("exception in handler");
    FolderWatch const failing(folder_.wide(), [](Result const&) { throw std::runtime_error("x"); });
    FolderWatch const other(folder_.wide(), record());
    folder_.write("a", "");
    EXPECT_TRUE(waitFor([&] { return !results_.empty(); }));
}

TEST_F(ThreadFolderWatch, AFolderThatGoesIsReportedOnce) {
    for (bool const isMoved : {true, false}) {
        results_.clear();
        std::filesystem::create_directory(folder_.path("inner"));
        FolderWatch const watch(folder_.wide("inner"), record());
        if (isMoved)
            ASSERT_TRUE(renamePath(folder_.wide("inner"), folder_.wide("elsewhere")).isDone());
        else
            ASSERT_TRUE(deleteEmptyFolder(folder_.wide("inner")).isDone());
        EXPECT_TRUE(waitForKind(iWatchable::eGone));
        EXPECT_FALSE(watch.isWatching());
        EXPECT_EQ(FolderWatchService::current()->numFolders(), 0u);
        EXPECT_EQ(results_.size(), 1u);
    }
}

TEST_F(ThreadFolderWatch, WhatCannotBeWatchedSaysWhy) {
    folder_.write("plain", "");
    for (Wide const& path :
         {folder_.wide("none"), folder_.wide("plain"), Wide(), folder_.wide() + Wide(L"\0x", 2)}) {
        FolderWatch const watch(path, record());
        EXPECT_FALSE(watch.isWatching());
        EXPECT_FALSE(watch.problem().empty());
    }
}

TEST_F(ThreadFolderWatch, AStormOfFilesIsFewDeliveriesOfBoundedSize) {
    constexpr int numFiles = 3 * iWatchable::mostChanges;
    FolderWatch const watch(folder_.wide(), record());
    for (int i = 0; i < numFiles; ++i) std::ofstream(folder_.path(std::to_string(i)));
    // Nothing was delivered meanwhile: all of it is one result.
    ASSERT_TRUE(waitFor([&] { return !results_.empty(); }));
    EXPECT_EQ(results_.front().kind, iWatchable::eRescan);
    EXPECT_TRUE(results_.front().changes.empty());
    EXPECT_FALSE(results_.front().isEmpty());
    EXPECT_LT(results_.size(), 10u);
    // What of the storm came after that collection may follow in another one.
    letTimePass(std::chrono::milliseconds(3 * iWatchable::collectMs));
    driver_.settle();
    EXPECT_LT(results_.size(), 10u);
    folder_.write("last", "");
    EXPECT_TRUE(waitFor([&] { return last_.count("last") > 0; }));
}

TEST(FolderWatchLife, AWatchMayOutliveTheHostAndHaveNone) {
    TemporaryFolder const folder;
    int calls = 0;
    FolderWatch const without(folder.wide(), [&](Result const&) { ++calls; });
    EXPECT_FALSE(without.isWatching());
    EXPECT_FALSE(without.problem().empty());
    std::vector<FolderWatchService::Call> calledLater;
    auto service = std::make_unique<FolderWatchService>(
        [&](FolderWatchService::Call call) { calledLater.push_back(std::move(call)); });
    FolderWatch const watch(folder.wide(), [&](Result const&) { ++calls; });
    EXPECT_TRUE(watch.isWatching());
    folder.write("a", "");
    letTimePass(std::chrono::milliseconds(3 * iWatchable::collectMs));
    service.reset();
    EXPECT_EQ(calledLater.size(), 1u);
    for (FolderWatchService::Call const& call : calledLater) call();
    EXPECT_EQ(calls, 0);
    EXPECT_FALSE(watch.isWatching());
}

TEST(FolderWatchLife, WhatCameAndWentIsIgnored) {
    TemporaryFolder const folder;
    std::vector<FolderWatchService::Call> calledLater;
    std::mutex mutex;
    FolderWatchService const service([&](FolderWatchService::Call call) {
        std::lock_guard const lock(mutex);
        calledLater.push_back(std::move(call));
    });
    std::vector<Result> results;
    FolderWatch const watch(folder.wide(), [&](Result const& result) { results.push_back(result); });
    folder.write("brief", "");
    std::filesystem::remove(folder.path("brief"));
    ASSERT_TRUE(waitUntil([&] {
        std::vector<FolderWatchService::Call> calls;
        {
            std::lock_guard const lock(mutex);
            calls.swap(calledLater);
        }
        for (FolderWatchService::Call const& call : calls) call();
        return !results.empty();
    }));
    EXPECT_EQ(results[0].kind, iWatchable::eIgnored);
    EXPECT_TRUE(results[0].isEmpty());
}

} // namespace
} // namespace wainscot
