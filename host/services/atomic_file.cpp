#include "host/services/atomic_file_p.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <string>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace wainscot {

namespace {

using Text = LightweightString<char>;

/// A file descriptor that closes itself.
class Descriptor {
public:
    explicit Descriptor(int value) : value_(value) {}
    ~Descriptor() {
        if (value_ >= 0) close(value_);
    }
    Descriptor(Descriptor const&) = delete;
    Descriptor& operator=(Descriptor const&) = delete;
    int get() const { return value_; }
    bool valid() const { return value_ >= 0; }

private:
    int value_;
};

Text reason() {
    return Text(std::strerror(errno));
}

bool writeAll(int file, std::string_view bytes) {
    while (!bytes.empty()) {
        ssize_t const count = write(file, bytes.data(), bytes.size());
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) return false;
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
}

bool readAll(int file, std::string& bytes, std::size_t maxSize) {
    char buffer[16384];
    while (bytes.size() <= maxSize) {
        ssize_t const count = read(file, buffer, sizeof buffer);
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) return count == 0;
        bytes.append(buffer, static_cast<std::size_t>(count));
    }
    errno = EFBIG;
    return false;
}

/// The target of a symbolic link in the file's place; the path itself when it is not a link.
std::string realTarget(Text const& path) {
    std::error_code problem;
    std::filesystem::path const given(std::string(path.view()));
    if (!std::filesystem::is_symlink(given, problem)) return given.string();
    std::filesystem::path const target = std::filesystem::weakly_canonical(given, problem);
    return problem ? given.string() : target.string();
}

/// New files are for their owner only.
void copyPermissions(std::string const& from, int file) {
    struct stat status {};
    if (stat(from.c_str(), &status) != 0) return;
    [[maybe_unused]] int const kept = fchmod(file, status.st_mode & 07777U);
}

/// Writes a file to the disk. Its name is safe only when the folder is on the disk too.
bool writeSynced(std::string const& path, std::string const& permissionsOf, std::string_view bytes) {
    Descriptor const file(open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_NOFOLLOW | O_CLOEXEC, 0600));
    if (!file.valid()) return false;
    copyPermissions(permissionsOf, file.get());
    return writeAll(file.get(), bytes) && fsync(file.get()) == 0;
}

void syncFolder(std::string const& folder) {
    Descriptor const opened(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (opened.valid()) fsync(opened.get());
}

} // namespace

FileBytes readWholeFile(LightweightString<char> const& path, std::size_t maxSize) {
    using State = FileBytes::State;
    // A pipe in the file's place must not keep the program waiting.
    Descriptor const file(open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    if (!file.valid())
        return {errno == ENOENT || errno == ENOTDIR ? State::absent : State::failed, {}, reason()};
    struct stat status {};
    if (fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode))
        return {State::failed, {}, "it is no ordinary file"};
    std::string bytes;
    if (!readAll(file.get(), bytes, maxSize)) return {State::failed, {}, reason()};
    return {State::read, Text(bytes), {}};
}

LightweightString<char> writeFileAtomically(LightweightString<char> const& path, std::string_view bytes) {
    std::string const target = realTarget(path);
    std::string const fresh = target + ".new";
    // A file that its owner has protected could still be replaced.
    if (faccessat(AT_FDCWD, target.c_str(), W_OK, AT_EACCESS) != 0 && errno != ENOENT) return reason();
    if (!writeSynced(fresh, target, bytes) || rename(fresh.c_str(), target.c_str()) != 0) {
        Text why = reason();
        unlink(fresh.c_str());
        return why;
    }
    syncFolder(std::filesystem::path(target).parent_path().string());
    return {};
}

LightweightString<char> makeFolders(LightweightString<char> const& path) {
    std::string const wanted(path.view());
    for (std::size_t end = wanted.find('/', 1);; end = wanted.find('/', end + 1)) {
        bool const isLast = end == std::string::npos;
        bool const made = mkdir(wanted.substr(0, end).c_str(), 0700) == 0 || errno == EEXIST;
        // Folders above may exist although this program may not make any there.
        if (isLast) return made ? Text() : reason();
    }
}

FolderLock::FolderLock(LightweightString<char> const& folder)
    : descriptor_(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
    while (descriptor_ >= 0 && flock(descriptor_, LOCK_EX) != 0 && errno == EINTR) {
    }
}

FolderLock::~FolderLock() {
    if (descriptor_ >= 0) close(descriptor_);
}

} // namespace wainscot
