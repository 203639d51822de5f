#pragma once

#include "foundation/tab_client_info_p.h"

#include <optional>

namespace wainscot {

/// The stops by tab order; stops of one order by index. They lie in chunks, so that a run of any length is
/// pushed chunk by chunk.
class TabOrderList {
public:
    using Stop = TabOrderManager::ClientInfo;

    /// Valid until the list changes.
    struct Place {
        std::size_t chunk = 0;
        std::size_t offset = 0;
    };

    /// Null at the end.
    Stop* stopAt(Place place) const;
    Place next(Place place) const;
    /// The first stop with at least this order.
    Place lowerBound(unsigned int order) const { return lowerBound(order, 0); }
    /// The same; among stops of that order, the first from a slot on.
    Place lowerBound(unsigned int order, std::size_t slot) const;
    /// The largest order below this one; nothing when there is none.
    std::optional<unsigned int> largestBelow(unsigned int order) const;
    /// Changes whenever the list does.
    std::uint64_t version() const { return version_; }

    void insert(Stop& stop, unsigned int order);
    void erase(Stop& stop);
    /// Pushes the first stop with `order` one up, and the first stops of the unbroken run of orders behind
    /// it, up to `highest`. Gives the last of them, or null when no stop has that order; nothing when an
    /// order would become too large.
    std::optional<Stop*> push(unsigned int order, unsigned int highest);
    void clear();

private:
    bool atEnd(Place place) const { return place.chunk >= chunks_.size(); }
    unsigned int orderAt(Place place) const { return chunks_[place.chunk]->orderAt(place.offset); }
    bool stepBack(Place& place) const;
    bool holds(unsigned int order) const;
    bool hasOneHolder(unsigned int order) const;
    /// The end of the run of orders that begins at `place`.
    unsigned int endOfRun(Place place, unsigned int highest) const;
    void moveFirstHolder(unsigned int order);
    /// Adds 1 to the only stop with `order`, and to the stops below it, down to `lowest`, as long as each
    /// order has one stop. Gives the last order that was changed.
    unsigned int shiftSingles(unsigned int order, unsigned int lowest);
    bool isWholeRun(Place lastOfChunk, unsigned int lowest) const;
    /// Where to insert; makes room.
    Place roomFor(unsigned int order, std::size_t slot);
    void split(std::size_t chunk);
    void addChunk(std::size_t place);
    void put(Place place, Stop& stop, unsigned int order);

    std::vector<std::unique_ptr<TabOrderChunk>> chunks_;
    std::uint64_t version_ = 0;
};

} // namespace wainscot
