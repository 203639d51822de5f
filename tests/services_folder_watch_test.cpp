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

    TemporaryFolder folder_;
    std::vector<Result> results_;
    std::map<std::string, iWatchable::Change> last_;
};

TEST_F(ThreadFolderWatch, SaysWhatHasComeGoneAndChangedThoughOtherHandlersFail) {
    expectDiagnostic("exception in handler");
    folder_.write("old", "1");
    folder_.write("there", "1");
    FolderWatch const failing(folder_.wide(), [](Result const&) { throw std::runtime_error("x"); });
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

TEST_F(ThreadFolderWatch, AFolderThatGoesIsReportedOnce) {
    for (bool const isMoved : {true, false}) {
        results_.clear();
        std::filesystem::create_directory(folder_.path("inner"));
        FolderWatch const watch(folder_.wide("inner"), record());
        if (isMoved)
            ASSERT_TRUE(renamePath(folder_.wide("inner"), folder_.wide("elsewhere")).isDone());
        else
            ASSERT_TRUE(deleteEmptyFolder(folder_.wide("inner")).isDone());
        ASSERT_TRUE(waitFor([&] { return !results_.empty(); }));
        EXPECT_EQ(results_.back().kind, iWatchable::eGone);
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

/// A service without a host: what it hands over is called when the test says so.
class FolderWatchLife : public testing::Test {
protected:
    /// How much was handed over since the last time.
    std::size_t callAll() {
        std::vector<FolderWatchService::Call> calls;
        {
            std::lock_guard const lock(mutex_);
            calls.swap(later_);
        }
        for (FolderWatchService::Call const& call : calls) call();
        return calls.size();
    }
    FolderWatch::Handler record() {
        return [this](Result const& result) { results_.push_back(result); };
    }

    TemporaryFolder folder_;
    std::mutex mutex_;
    std::vector<FolderWatchService::Call> later_;
    std::vector<Result> results_;
    FolderWatch const without_{folder_.wide(), record()};
    std::unique_ptr<FolderWatchService> service_ =
        std::make_unique<FolderWatchService>([this](FolderWatchService::Call call) {
            std::lock_guard const lock(mutex_);
            later_.push_back(std::move(call));
        });
    FolderWatch const watch_{folder_.wide(), record()};
};

TEST_F(FolderWatchLife, AWatchMayOutliveTheHostAndHaveNone) {
    EXPECT_FALSE(without_.isWatching() || without_.problem().empty());
    EXPECT_TRUE(watch_.isWatching());
    folder_.write("a", "");
    letTimePass(std::chrono::milliseconds(3 * iWatchable::collectMs));
    service_.reset();
    EXPECT_EQ(callAll(), 1u);
    EXPECT_TRUE(results_.empty());
    EXPECT_FALSE(watch_.isWatching());
}

TEST_F(FolderWatchLife, WhatCameAndWentIsIgnored) {
    folder_.write("brief", "");
    std::filesystem::remove(folder_.path("brief"));
    ASSERT_TRUE(waitUntil([&] { return callAll() && !results_.empty(); }));
    EXPECT_EQ(results_[0].kind, iWatchable::eIgnored);
    EXPECT_TRUE(results_[0].isEmpty());
}

} // namespace
} // namespace wainscot
