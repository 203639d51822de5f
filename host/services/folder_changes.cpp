#include "host/services/folder_changes_p.h"

namespace wainscot {

using Change = iWatchable::Change;

void FolderChanges::note(std::string const& name, Change change) {
    seen_ = true;
    if (rescan_) return;
    // Unless its first event made it, the entry existed before.
    Entry& entry = entries_.try_emplace(name, Entry{change != Change::added, true}).first->second;
    entry.isThere = change != Change::removed;
    if (entries_.size() > iWatchable::mostChanges) noteLoss();
}

void FolderChanges::noteLoss() {
    seen_ = true;
    rescan_ = true;
    entries_ = {};
}

iWatchable::Result FolderChanges::result() const {
    iWatchable::Result result;
    for (auto const& [name, entry] : entries_) {
        if (!entry.wasThere && !entry.isThere) continue;
        Change const change = !entry.wasThere ? Change::added
                              : entry.isThere ? Change::altered
                                              : Change::removed;
        result.changes.push_back({fileNameFromBytes(LightweightString<char>(name)), change});
    }
    result.kind = gone_                    ? iWatchable::eGone
                  : rescan_                ? iWatchable::eRescan
                  : result.changes.empty() ? iWatchable::eIgnored
                                           : iWatchable::eChanged;
    return result;
}

} // namespace wainscot
