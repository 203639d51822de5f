#pragma once

#include "foundation/tab_order_manager.h"

namespace wainscot {

struct TabOrderChunk;

/// One stop, shared by the manager's tables and by steps in progress.
class TabOrderManager::ClientInfo final : public Qv::InternalRefCount {
public:
    explicit ClientInfo(TabOrderable& control) : object(&control) {}

    inline unsigned int tabOrder() const;

    /// Not owned; null once the stop is removed, so that a step in progress sees that.
    TabOrderable* object;
    bool enabled = true;

    /// Its place in the order of adding.
    std::size_t slot = 0;
    /// Its place in the list by order. The stored order lacks the shift of its chunk.
    TabOrderChunk* chunk = nullptr;
    unsigned int storedOrder = 0;
    /// The other stops of the same control, by index.
    ClientInfo* previousOfObject = nullptr;
    ClientInfo* nextOfObject = nullptr;
};

/// Stops that lie together in the list by order. Pushing all of them is one addition.
struct TabOrderChunk {
    enum class Shape : unsigned char { unknown, run, broken };

    unsigned int orderAt(std::size_t offset) const { return stops[offset]->storedOrder + shift; }
    unsigned int firstOrder() const { return orderAt(0); }
    unsigned int lastOrder() const { return orderAt(stops.size() - 1); }
    /// Whether each order is one more than the order before it.
    bool isRun();

    std::vector<TabOrderManager::ClientInfo*> stops;
    unsigned int shift = 0;
    Shape shape = Shape::unknown;
};

inline unsigned int TabOrderManager::ClientInfo::tabOrder() const {
    return storedOrder + chunk->shift;
}

} // namespace wainscot
