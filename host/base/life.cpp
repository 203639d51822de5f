#include "host/base/life.h"

#include <bit>
#include <cstdint>
#include <cstdlib>

namespace wainscot {

namespace {

/// Open addressing with linear probing; removal shifts the following entries back, so there are no
/// tombstones.
class LiveTable {
public:
    void add(void const* object, IdStamp stamp) {
        if ((count_ + 1) * 4 > capacity_ * 3) grow();
        Entry& entry = entries_[slotOf(object)];
        if (!entry.object) ++count_;
        entry = {object, stamp.value()};
    }

    /// Null when there is no such entry.
    std::uint64_t* find(void const* object) const {
        if (count_ == 0) return nullptr;
        Entry& entry = entries_[slotOf(object)];
        return entry.object ? &entry.tagged : nullptr;
    }

    void remove(void const* object) {
        if (count_ == 0) return;
        std::size_t hole = slotOf(object);
        if (!entries_[hole].object) return;
        entries_[hole] = {};
        --count_;
        closeGap(hole);
        if (count_ == 0) releaseMemory();
    }

    std::size_t count() const { return count_; }

private:
    struct Entry {
        void const* object = nullptr;
        std::uint64_t tagged = 0;
    };

    std::size_t homeOf(void const* object) const {
        auto const bits = reinterpret_cast<std::uintptr_t>(object) * 0x9E3779B97F4A7C15ull;
        return bits >> shift_;
    }

    std::size_t slotOf(void const* object) const {
        std::size_t slot = homeOf(object);
        while (entries_[slot].object && entries_[slot].object != object) slot = (slot + 1) & (capacity_ - 1);
        return slot;
    }

    void closeGap(std::size_t hole) {
        std::size_t const mask = capacity_ - 1;
        for (std::size_t slot = (hole + 1) & mask; entries_[slot].object; slot = (slot + 1) & mask) {
            std::size_t const home = homeOf(entries_[slot].object);
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
            if (old[i].object) entries_[slotOf(old[i].object)] = old[i];
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
};

constinit LiveTable liveTable;

/// Stamps never reach this bit; in the table it marks objects of the tree.
constexpr std::uint64_t treeBit = std::uint64_t(1) << 63;

} // namespace

void Liveness::add(void const* object, IdStamp stamp) {
    if (object) liveTable.add(object, stamp);
}

void Liveness::remove(void const* object) {
    liveTable.remove(object);
}

void Liveness::markTreeObject(void const* object) {
    if (std::uint64_t* tagged = liveTable.find(object)) *tagged |= treeBit;
}

bool Liveness::isTreeObject(void const* object) {
    std::uint64_t const* const tagged = liveTable.find(object);
    return tagged && (*tagged & treeBit) != 0;
}

IdStamp Liveness::stampOf(void const* object) {
    std::uint64_t const* const tagged = liveTable.find(object);
    return tagged ? IdStamp::fromValue(*tagged & ~treeBit) : IdStamp();
}

std::size_t Liveness::count() {
    return liveTable.count();
}

IdStamp LifeToken::stamp() const {
    if (!stamp_.valid()) {
        stamp_ = IdStamp::make();
        Liveness::add(this, stamp_);
    }
    return stamp_;
}

// Not inline: a compiler that sees the object die beside the question takes the asking for a use of it.
bool LifeGuard::alive() const {
    return Liveness::alive(object_, stamp_);
}

} // namespace wainscot
