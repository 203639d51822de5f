#pragma once

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <memory>
#include <vector>

namespace wainscot {

/// A list that may be changed, or destroyed, while it is walked. An entry added in a walk is not visited by
/// it, a removed entry is never visited, and the death of the list ends the walk. Entries are visited in the
/// order of adding. Adding, removing and each step take constant or logarithmic time.
template <class T>
class ObserverList {
public:
    using Id = std::uint64_t;

    ObserverList() = default;
    ObserverList(ObserverList const&) = delete;
    ObserverList& operator=(ObserverList const&) = delete;
    ~ObserverList() {
        if (state_) state_->dead = true;
    }

    Id add(T value) {
        if (!state_) state_ = std::make_shared<State>();
        state_->entries.push_back({++state_->lastId, std::move(value), false});
        ++state_->live;
        return state_->lastId;
    }

    /// False when there is no such entry (any more).
    bool remove(Id id) {
        Entry* entry = find(id);
        if (!entry) return false;
        entry->removed = true;
        --state_->live;
        sweepIfWorthwhile(state_);
        return true;
    }

    void clear() {
        if (!state_) return;
        for (Entry& entry : state_->entries) entry.removed = true;
        state_->live = 0;
        sweepIfWorthwhile(state_);
    }

    std::size_t size() const { return state_ ? state_->live : 0; }
    bool empty() const { return size() == 0; }

    /// Calls `visit` with a copy of each entry.
    template <class Visit>
    void walk(Visit visit) {
        if (empty()) return;
        Walk const walk(state_);
        std::size_t const count = walk.state->entries.size();
        for (std::size_t i = 0; i < count && !walk.state->dead; ++i) {
            if (walk.state->entries[i].removed) continue;
            T const value = walk.state->entries[i].value;
            visit(value);
        }
    }

private:
    struct Entry {
        Id id;
        T value;
        bool removed;
    };

    struct State {
        std::vector<Entry> entries;
        std::size_t live = 0;
        Id lastId = 0;
        int walks = 0;
        bool dead = false;
    };

    /// Removed entries are destroyed last: their destructors may change or destroy this list.
    static void sweepIfWorthwhile(std::shared_ptr<State> state) {
        if (state->walks > 0 || state->live * 2 > state->entries.size()) return;
        auto const stays = [](Entry const& entry) { return !entry.removed; };
        auto const firstGone = std::stable_partition(state->entries.begin(), state->entries.end(), stays);
        std::vector<Entry> const gone(std::make_move_iterator(firstGone),
                                      std::make_move_iterator(state->entries.end()));
        state->entries.erase(firstGone, state->entries.end());
    }

    /// Keeps the state alive and in place while a walk goes on.
    struct Walk {
        explicit Walk(std::shared_ptr<State> walked) : state(std::move(walked)) { ++state->walks; }
        ~Walk() {
            --state->walks;
            if (!state->dead) sweepIfWorthwhile(state);
        }
        Walk(Walk const&) = delete;
        Walk& operator=(Walk const&) = delete;
        std::shared_ptr<State> state;
    };

    Entry* find(Id id) {
        if (!state_) return nullptr;
        auto& entries = state_->entries;
        auto const before = [](Entry const& entry, Id wanted) { return entry.id < wanted; };
        auto const found = std::lower_bound(entries.begin(), entries.end(), id, before);
        return found != entries.end() && found->id == id && !found->removed ? &*found : nullptr;
    }

    std::shared_ptr<State> state_;
};

} // namespace wainscot
