#pragma once

#include <cstddef>
#include <functional>
#include <list>
#include <unordered_map>
#include <utility>

namespace wainscot {

/// A cache for a stated number of entries. A new entry replaces the least recently used entry. Every
/// operation takes constant time.
template <class Key, class Value, class Hash = std::hash<Key>>
class RecentMap {
public:
    explicit RecentMap(std::size_t most) : most_(most > 0 ? most : 1) {}
    RecentMap(RecentMap const&) = delete;
    RecentMap& operator=(RecentMap const&) = delete;

    /// Null when the key is unknown. Valid until the next `add` or `clear`.
    Value* find(Key const& key) {
        auto const place = places_.find(key);
        if (place == places_.end()) return nullptr;
        entries_.splice(entries_.begin(), entries_, place->second);
        return &entries_.front().second;
    }
    /// Replaces what was kept for the key.
    Value& add(Key const& key, Value value) {
        if (Value* const known = find(key)) return *known = std::move(value);
        if (entries_.size() == most_) {
            places_.erase(entries_.back().first);
            entries_.pop_back();
        }
        entries_.emplace_front(key, std::move(value));
        places_.emplace(key, entries_.begin());
        return entries_.front().second;
    }
    void clear() {
        places_.clear();
        entries_.clear();
    }
    std::size_t size() const { return entries_.size(); }

private:
    using Entries = std::list<std::pair<Key, Value>>;

    std::size_t most_;
    Entries entries_;
    std::unordered_map<Key, typename Entries::iterator, Hash> places_;
};

} // namespace wainscot
