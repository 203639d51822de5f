#pragma once

#include "host/services/folder_watch.h"

#include <string>
#include <unordered_map>

namespace wainscot {

/// Collects what the system says about one folder until it is delivered. Keeps at most
/// `iWatchable::mostChanges` names.
class FolderChanges {
public:
    /// An event about one entry: `change` has happened to it.
    void note(std::string const& name, iWatchable::Change change);
    /// Events were lost.
    void noteLoss();
    void noteGone() { seen_ = gone_ = true; }

    bool isEmpty() const { return !seen_; }
    bool isGone() const { return gone_; }
    iWatchable::Result result() const;

private:
    struct Entry {
        bool wasThere;
        bool isThere;
    };

    std::unordered_map<std::string, Entry> entries_;
    bool seen_ = false;
    bool rescan_ = false;
    bool gone_ = false;
};

} // namespace wainscot
