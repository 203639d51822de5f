#pragma once

#include "host/services/files.h"

#include <cstdint>
#include <functional>
#include <memory>

namespace wainscot {

/// News of watched folders.
struct WAINSCOT_API iWatchable {
    enum eKind : std::uint8_t {
        /// A list of the folder is as before: a file came and went again.
        eIgnored,
        /// The entries in `changes` have come, gone or changed.
        eChanged,
        /// More has changed than is worth naming: the folder must be read again.
        eRescan,
        /// The folder has been deleted, moved or unmounted; nothing more will be said about it.
        eGone,
    };

    enum class Change : std::uint8_t { added, removed, altered };

    /// One entry, and what has happened to it since the last result.
    struct Entry {
        LightweightString<wchar_t> name;
        Change change = Change::altered;
    };

    struct Result {
        eKind kind = eIgnored;
        /// As it was given to the watch.
        LightweightString<wchar_t> folder;
        /// In no order, each name once.
        std::vector<Entry> changes;

        /// There is nothing to do.
        bool isEmpty() const { return kind == eIgnored || (kind == eChanged && changes.empty()); }
    };

    /// With more names than this the result is `eRescan`.
    static constexpr std::size_t mostChanges = 1000;
    /// How long changes are collected before they are delivered, in milliseconds.
    static constexpr int collectMs = 100;
};

/// Watches the entries of one folder for as long as it lives. Watches of one folder share their work, and
/// cost nothing while nothing happens there. Made and destroyed on the user-interface thread. The handler is
/// called there by the loop; it may destroy this watch and others.
class WAINSCOT_API FolderWatch {
public:
    using Handler = std::function<void(iWatchable::Result const& result)>;

    /// When the folder cannot be watched, or no host lives, nothing is ever delivered and `problem()` says
    /// why.
    FolderWatch(LightweightString<wchar_t> folder, Handler handler);
    ~FolderWatch();
    FolderWatch(FolderWatch const&) = delete;
    FolderWatch& operator=(FolderWatch const&) = delete;

    /// False from the start when the folder could not be watched, and once it has gone.
    bool isWatching() const;
    LightweightString<wchar_t> const& folder() const;
    /// Why the folder could not be watched; empty when it could.
    LightweightString<wchar_t> const& problem() const { return problem_; }

    struct Listener;

private:
    std::shared_ptr<Listener> listener_;
    LightweightString<wchar_t> problem_;
};

/// The service behind the watches of the live host. Its thread starts with the first watch and sleeps until
/// something happens in a watched folder.
class WAINSCOT_API FolderWatchService {
public:
    using Call = std::function<void()>;
    /// Runs a call on the user-interface thread, later and in order; safe from any thread.
    using Deliver = std::function<void(Call call)>;

    /// Becomes the live one.
    explicit FolderWatchService(Deliver deliver);
    /// Ends all watching; what has not been delivered is dropped.
    ~FolderWatchService();
    FolderWatchService(FolderWatchService const&) = delete;
    FolderWatchService& operator=(FolderWatchService const&) = delete;

    /// Null without a host.
    static FolderWatchService* current();
    /// How many folders the system watches for this program.
    std::size_t numFolders() const;

private:
    friend class FolderWatch;
    class Core;
    std::shared_ptr<Core> core_;
};

} // namespace wainscot
