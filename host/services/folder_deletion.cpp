#include "host/services/file_operations_p.h"

#include <cerrno>
#include <dirent.h>
#include <fcntl.h>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace wainscot {

namespace {

/// Walks down into a folder and deletes on its way up. It holds one folder open at a time and uses single
/// names, so that neither depth nor the length of paths is limited. It knows folders by their numbers, so
/// that a folder that is moved meanwhile does not lead it elsewhere.
class FolderDeletion {
public:
    explicit FolderDeletion(std::string path) : top_(std::move(path)) {}
    ~FolderDeletion() {
        if (folder_ >= 0) close(folder_);
    }
    FolderDeletion(FolderDeletion const&) = delete;
    FolderDeletion& operator=(FolderDeletion const&) = delete;

    /// 0 when everything has been deleted, else the system's reason.
    int run() {
        if (!enter(AT_FDCWD, top_)) return errno;
        while (!levels_.empty())
            if (!step()) return errno;
        return rmdir(top_.c_str()) == 0 ? 0 : errno;
    }

    /// The entry that could not be deleted.
    std::string place() const {
        std::string path = top_;
        for (std::size_t i = 1; i < levels_.size(); ++i) path += "/" + levels_[i].name;
        return failed_.empty() ? path : path + "/" + failed_;
    }

private:
    struct Level {
        std::string name;
        dev_t device;
        ino_t number;
        /// The folders in it that are still to be deleted.
        std::vector<std::string> folders;
    };

    bool step() {
        Level& level = levels_.back();
        if (level.folders.empty()) return leave();
        failed_ = std::move(level.folders.back());
        level.folders.pop_back();
        return enter(folder_, std::string(failed_));
    }

    bool enter(int parent, std::string const& name) {
        int const opened = openat(parent, name.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
        if (opened < 0) return false;
        struct stat status {};
        bool const isKnown = fstat(opened, &status) == 0;
        if (!isKnown || (!levels_.empty() && status.st_dev != levels_.front().device)) {
            close(opened);
            if (isKnown) errno = EXDEV;
            return false;
        }
        hold(opened);
        levels_.push_back({name, status.st_dev, status.st_ino, {}});
        failed_.clear();
        return deleteFiles();
    }

    /// Deletes all entries but folders, and lists the folders.
    bool deleteFiles() {
        int const copy = dup(folder_);
        DIR* const list = copy < 0 ? nullptr : fdopendir(copy);
        if (!list) {
            if (copy >= 0) close(copy);
            return false;
        }
        int reason = 0;
        while (reason == 0) {
            errno = 0;
            dirent const* const entry = readdir(list);
            if (entry && deleteEntry(entry->d_name)) continue;
            reason = errno;
            break;
        }
        closedir(list);
        errno = reason;
        return reason == 0;
    }

    bool deleteEntry(std::string_view name) {
        if (name == "." || name == "..") return true;
        failed_ = name;
        struct stat status {};
        if (fstatat(folder_, failed_.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0) return errno == ENOENT;
        if (S_ISDIR(status.st_mode))
            levels_.back().folders.push_back(failed_);
        else if (unlinkat(folder_, failed_.c_str(), 0) != 0 && errno != ENOENT)
            return false;
        failed_.clear();
        return true;
    }

    bool leave() {
        std::string const name = std::move(levels_.back().name);
        levels_.pop_back();
        if (levels_.empty()) return true;
        failed_ = name;
        int const parent = openat(folder_, "..", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        if (parent < 0) return false;
        hold(parent);
        struct stat status {};
        if (fstat(parent, &status) != 0) return false;
        Level const& expected = levels_.back();
        if (status.st_dev != expected.device || status.st_ino != expected.number) {
            errno = ESTALE;
            return false;
        }
        if (unlinkat(folder_, name.c_str(), AT_REMOVEDIR) != 0) return false;
        failed_.clear();
        return true;
    }

    void hold(int folder) {
        if (folder_ >= 0) close(folder_);
        folder_ = folder;
    }

    std::string top_;
    std::vector<Level> levels_;
    int folder_ = -1;
    std::string failed_;
};

} // namespace

FileResult deleteFolderWithContents(LightweightString<wchar_t> const& path) {
    std::string const top = changeablePath(path);
    FolderDeletion deletion(top);
    int const reason = !top.empty() ? deletion.run() : EINVAL;
    if (reason == 0) return {};
    return failedOn(top.empty() ? path : fileNameFromBytes(LightweightString<char>(deletion.place())),
                    reason);
}

} // namespace wainscot
