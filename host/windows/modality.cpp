#include "host/windows/modality.h"

#include <algorithm>

namespace wainscot {

namespace {

bool lies(Glob const& glob, Glob const& in) {
    return &glob == &in || Glob::isParentedTo(&glob, &in);
}

} // namespace

void Modality::addModal(Glob& glob) {
    add({&glob, glob.idStamp(), nullptr, IdStamp()});
}

void Modality::setContext(Glob& glob, Glob& context) {
    add({&glob, glob.idStamp(), &context, context.idStamp()});
}

/// The latest of each kind counts.
void Modality::add(Entry const& entry) {
    dropDead();
    std::erase_if(entries_, [&](Entry const& known) {
        return known.stamp == entry.stamp && !known.context == !entry.context;
    });
    entries_.push_back(entry);
}

void Modality::remove(Glob const& glob) {
    std::erase_if(entries_, [&](Entry const& entry) { return entry.glob == &glob; });
}

void Modality::dropDead() {
    std::erase_if(entries_, [](Entry const& entry) {
        return !EventHandler::valid(entry.glob, entry.stamp) ||
               (entry.context && !EventHandler::valid(entry.context, entry.contextStamp));
    });
}

bool Modality::isModal(Glob const& glob) const {
    return std::any_of(entries_.begin(), entries_.end(), [&](Entry const& entry) {
        return !entry.context && EventHandler::valid(&glob, entry.stamp);
    });
}

Glob* Modality::contextOf(Glob const& target) const {
    for (Glob const* glob = &target; glob; glob = glob->parent())
        for (Entry const& entry : entries_)
            if (entry.context && entry.glob == glob && EventHandler::valid(glob, entry.stamp))
                return EventHandler::valid(entry.context, entry.contextStamp) ? entry.context : nullptr;
    return nullptr;
}

/// Contexts may have been set in a ring: there are no more steps than entries.
bool Modality::belongsTo(Glob const& target, Glob const& modal) const {
    Glob const* next = &target;
    for (std::size_t step = 0; next && step <= entries_.size(); ++step) {
        if (lies(*next, modal)) return true;
        next = contextOf(*next);
    }
    return false;
}

Glob* Modality::firstBlockerOf(Glob const& target) const {
    for (auto entry = entries_.rbegin(); entry != entries_.rend(); ++entry) {
        if (entry->context || !entry->counts()) continue;
        if (belongsTo(target, *entry->glob)) return nullptr;
        Glob* const root = Glob::getRootParent(entry->glob);
        bool const reachesHere = entry->glob == root || lies(target, *root);
        if (reachesHere) return entry->glob;
    }
    return nullptr;
}

Glob* Modality::blockerOf(Glob const& target) const {
    Glob* blocker = nullptr;
    Glob const* next = &target;
    for (std::size_t step = 0; step <= entries_.size(); ++step) {
        Glob* const further = firstBlockerOf(*next);
        if (!further) break;
        next = blocker = further;
    }
    return blocker;
}

} // namespace wainscot
