#include "host/windows/modality_p.h"

#include <algorithm>

namespace wainscot {

namespace {

bool lies(Glob const& glob, Glob const& in) {
    return &glob == &in || Glob::isParentedTo(&glob, &in);
}

} // namespace

/// The latest counts.
void Modality::addModal(Glob& glob) {
    dropDeadIfWorthwhile();
    removeModal(glob);
    places_[&glob] = ++lastPlace_;
    modals_.emplace(lastPlace_, &glob);
}

void Modality::setContext(Glob& glob, Glob& context) {
    dropDeadIfWorthwhile();
    contexts_[&glob] = {HandlerRef<Glob const>(&glob), HandlerRef<Glob>(&context)};
}

void Modality::remove(Glob const& glob) {
    removeModal(glob);
    contexts_.erase(&glob);
}

void Modality::removeModal(Glob const& glob) {
    auto const place = places_.find(&glob);
    if (place == places_.end()) return;
    modals_.erase(place->second);
    places_.erase(place);
}

void Modality::dropDeadIfWorthwhile() {
    if (modals_.size() + contexts_.size() < sweepAt_) return;
    std::erase_if(contexts_, [](auto const& entry) { return !entry.second.glob || !entry.second.context; });
    std::erase_if(places_, [this](auto const& entry) {
        bool const isDead = !modals_.at(entry.second);
        if (isDead) modals_.erase(entry.second);
        return isDead;
    });
    sweepAt_ = std::max<std::size_t>(16, 2 * (modals_.size() + contexts_.size()));
}

bool Modality::isModal(Glob const& glob) const {
    auto const place = places_.find(&glob);
    return place != places_.end() && modals_.at(place->second).get() == &glob;
}

Glob* Modality::contextOf(Glob const& target) const {
    if (contexts_.empty()) return nullptr;
    for (Glob const* glob = &target; glob; glob = glob->parent()) {
        auto const found = contexts_.find(glob);
        if (found != contexts_.end() && found->second.glob) return found->second.context.get();
    }
    return nullptr;
}

/// Contexts may have been set in a ring: there are no more steps than entries.
bool Modality::belongsTo(Glob const& target, Glob const& modal) const {
    Glob const* next = &target;
    for (std::size_t step = 0; next && step <= contexts_.size(); ++step) {
        if (lies(*next, modal)) return true;
        next = contextOf(*next);
    }
    return false;
}

Glob* Modality::firstBlockerOf(Glob const& target) const {
    for (auto entry = modals_.rbegin(); entry != modals_.rend(); ++entry) {
        Glob* const modal = entry->second.get();
        if (!modal || !modal->isShown()) continue;
        if (belongsTo(target, *modal)) return nullptr;
        Glob* const root = Glob::getRootParent(modal);
        bool const reachesHere = modal == root || lies(target, *root);
        if (reachesHere) return modal;
    }
    return nullptr;
}

Glob* Modality::blockerOf(Glob const& target) const {
    Glob* blocker = nullptr;
    Glob const* next = &target;
    for (std::size_t step = 0; step <= modals_.size(); ++step) {
        Glob* const further = firstBlockerOf(*next);
        if (!further) break;
        next = blocker = further;
    }
    return blocker;
}

} // namespace wainscot
