#pragma once

#include "foundation/tab_client_info_p.h"

namespace wainscot {

/// The stops in the order of adding. Removal leaves a hole, so that the others keep their slots. With holes,
/// a tree of counts leads from slot to index and back.
class TabStopSequence {
public:
    using Stop = TabOrderManager::ClientInfo;

    std::size_t size() const { return slots_.size() - holes_; }
    /// Null when out of range.
    Stop* at(std::size_t index) const;
    std::size_t indexOf(Stop const& stop) const { return holes_ ? countBefore(stop.slot) : stop.slot; }
    /// Appends a stop. When there are many holes, they are closed first.
    void append(Qv::Ptr<Stop> stop);
    /// Takes a stop out and hands it over.
    Qv::Ptr<Stop> remove(Stop& stop);
    /// All slots; holes are null.
    std::vector<Qv::Ptr<Stop>> const& slots() const { return slots_; }

private:
    std::size_t countBefore(std::size_t slot) const;
    std::size_t slotOf(std::size_t index) const;
    void buildCounts();
    void closeHoles();

    std::vector<Qv::Ptr<Stop>> slots_;
    std::size_t holes_ = 0;
    /// Binary indexed tree over the slots, from 1; empty while there are no holes.
    std::vector<std::size_t> counts_;
};

} // namespace wainscot
