#include "host/base/life.h"

#include <bit>
#include <cstdint>
#include <cstdlib>

namespace wainscot {

namespace {

/// What lives at an address.
enum Kind : std::uint64_t {
    nothing = 0,
    /// Its stamp is the first that is in it.
    stampFirst = 1,
    /// Its stamp follows the pointer to its virtual functions.
    stampSecond = 2,
    /// The same, and it belongs to the on-screen tree.
    treeObject = 3,
};

/// The kinds of all places at which an object may begin, in a piece of the address space. Objects that are
/// made together lie together, and so do their records.
class Region {
public:
    static constexpr int addressBits = 14;
    static std::uintptr_t keyOf(void const* object) {
        return reinterpret_cast<std::uintptr_t>(object) >> addressBits;
    }

    Kind kind(void const* object) const { return Kind(wordOf(object) >> shiftOf(object) & mask); }
    void set(void const* object, Kind kind) {
        std::uint64_t& word = words_[indexOf(object)];
        word = (word & ~(mask << shiftOf(object))) | std::uint64_t(kind) << shiftOf(object);
    }

    std::size_t count = 0;

private:
    static constexpr std::uint64_t mask = 3;
    static constexpr int bitsEach = 2;
    static constexpr int placesInWord = 64 / bitsEach;

    static std::size_t placeOf(void const* object) {
        constexpr std::size_t mostPlaces = (std::size_t(1) << addressBits) / sizeof(void*);
        return reinterpret_cast<std::uintptr_t>(object) / sizeof(void*) % mostPlaces;
    }
    static std::size_t indexOf(void const* object) { return placeOf(object) / placesInWord; }
    static int shiftOf(void const* object) { return int(placeOf(object) % placesInWord) * bitsEach; }
    std::uint64_t wordOf(void const* object) const { return words_[indexOf(object)]; }

    std::uint64_t words_[(std::size_t(1) << addressBits) / sizeof(void*) / placesInWord] = {};
};

/// The regions with live objects. Open addressing with linear probing; removal shifts the following entries
/// back, so there are no tombstones.
class Regions {
public:
    /// Null when nothing lives there.
    Region* find(std::uintptr_t key) {
        if (key == latestKey_) return latest_;
        if (count_ == 0) return nullptr;
        Region* const found = entries_[slotOf(key)].region;
        if (found) remember(key, found);
        return found;
    }

    Region& make(std::uintptr_t key) {
        if (Region* const known = find(key)) return *known;
        if ((count_ + 1) * 4 > capacity_ * 3) grow();
        Region* const made = new Region;
        entries_[slotOf(key)] = {key, made};
        ++count_;
        remember(key, made);
        return *made;
    }

    void remove(std::uintptr_t key) {
        std::size_t const hole = slotOf(key);
        delete entries_[hole].region;
        entries_[hole] = {};
        --count_;
        remember(0, nullptr);
        closeGap(hole);
        if (count_ == 0) releaseMemory();
    }

private:
    struct Entry {
        std::uintptr_t key = 0;
        Region* region = nullptr;
    };

    /// The next question is mostly about the same object, or its neighbour.
    void remember(std::uintptr_t key, Region* region) {
        latestKey_ = key;
        latest_ = region;
    }

    std::size_t homeOf(std::uintptr_t key) const { return key * 0x9E3779B97F4A7C15ull >> shift_; }

    std::size_t slotOf(std::uintptr_t key) const {
        std::size_t slot = homeOf(key);
        while (entries_[slot].region && entries_[slot].key != key) slot = (slot + 1) & (capacity_ - 1);
        return slot;
    }

    void closeGap(std::size_t hole) {
        std::size_t const mask = capacity_ - 1;
        for (std::size_t slot = (hole + 1) & mask; entries_[slot].region; slot = (slot + 1) & mask) {
            std::size_t const home = homeOf(entries_[slot].key);
            bool const mayMove = ((slot - home) & mask) >= ((slot - hole) & mask);
            if (!mayMove) continue;
            entries_[hole] = entries_[slot];
            entries_[slot] = {};
            hole = slot;
        }
    }

    void grow() {
        Entry* const old = entries_;
        std::size_t const oldCapacity = capacity_;
        capacity_ = oldCapacity ? oldCapacity * 2 : 64;
        shift_ = 64 - std::countr_zero(capacity_);
        entries_ = new Entry[capacity_];
        for (std::size_t i = 0; i < oldCapacity; ++i)
            if (old[i].region) entries_[slotOf(old[i].key)] = old[i];
        delete[] old;
    }

    void releaseMemory() {
        delete[] entries_;
        entries_ = nullptr;
        capacity_ = 0;
    }

    Entry* entries_ = nullptr;
    std::size_t capacity_ = 0;
    std::size_t count_ = 0;
    int shift_ = 0;
    /// No object lies at so low an address as to have the key 0.
    std::uintptr_t latestKey_ = 0;
    Region* latest_ = nullptr;
};

constinit Regions regions;
constinit std::size_t liveCount = 0;

Kind kindOf(void const* object) {
    bool const isPlace = reinterpret_cast<std::uintptr_t>(object) % sizeof(void*) == 0;
    Region const* const region = isPlace ? regions.find(Region::keyOf(object)) : nullptr;
    return region ? region->kind(object) : nothing;
}

} // namespace

void Liveness::add(void const* object, IdStamp const& stamp) {
    if (!object) return;
    Region& region = regions.make(Region::keyOf(object));
    if (region.kind(object) == nothing) {
        ++region.count;
        ++liveCount;
    }
    region.set(object, static_cast<void const*>(&stamp) == object ? stampFirst : stampSecond);
}

void Liveness::remove(void const* object) {
    if (kindOf(object) == nothing) return;
    std::uintptr_t const key = Region::keyOf(object);
    Region& region = *regions.find(key);
    region.set(object, nothing);
    --liveCount;
    if (--region.count == 0) regions.remove(key);
}

void Liveness::markTreeObject(void const* object) {
    if (kindOf(object) == stampSecond) regions.find(Region::keyOf(object))->set(object, treeObject);
}

bool Liveness::isTreeObject(void const* object) {
    return kindOf(object) == treeObject;
}

IdStamp Liveness::stampOf(void const* object) {
    Kind const kind = kindOf(object);
    if (kind == nothing) return IdStamp();
    auto const* const place = static_cast<char const*>(object) + (kind == stampFirst ? 0 : sizeof(void*));
    return *reinterpret_cast<IdStamp const*>(place);
}

std::size_t Liveness::count() {
    return liveCount;
}

IdStamp LifeToken::stamp() const {
    if (!stamp_.valid()) {
        stamp_ = IdStamp::make();
        Liveness::add(this, stamp_);
    }
    return stamp_;
}

// Not inline: a compiler that sees the object die nearby would warn of a use after its end.
bool LifeGuard::alive() const {
    return Liveness::alive(object_, stamp_);
}

} // namespace wainscot
