#pragma once

#include "host/objects/glob.h"

#include <map>
#include <unordered_map>

namespace wainscot {

/// Decides who may receive input: a filter on routing, not a loop of its own.
///
/// A modal object keeps input from everything outside its modal chain: a root from all other windows, a child
/// from the rest of its own window. The chain holds all objects whose modal context leads to the modal
/// object, such as the menus that it opens. The latest modal object counts first. Modal objects that have
/// died, or are not shown, do not count.
class WAINSCOT_API Modality {
public:
    /// From now on `glob` is modal.
    void addModal(Glob& glob);
    /// From now on `glob` gets input whenever modality lets `context` have input.
    void setContext(Glob& glob, Glob& context);
    /// Takes back `addModal` and `setContext`.
    void remove(Glob const& glob);

    /// The modal object that keeps input from `target` and may have input itself; null when there is none.
    Glob* blockerOf(Glob const& target) const;
    bool isModal(Glob const& glob) const;

private:
    struct Context {
        HandlerRef<Glob const> glob;
        HandlerRef<Glob> context;
    };

    void removeModal(Glob const& glob);
    /// Drops dead entries now and then, so that the cost is negligible.
    void dropDeadIfWorthwhile();
    bool belongsTo(Glob const& target, Glob const& modal) const;
    /// The modal context of an object; null at the end of the chain.
    Glob* contextOf(Glob const& target) const;
    Glob* firstBlockerOf(Glob const& target) const;

    /// By the order of adding.
    std::map<std::uint64_t, HandlerRef<Glob>> modals_;
    std::unordered_map<Glob const*, std::uint64_t> places_;
    std::uint64_t lastPlace_ = 0;
    std::unordered_map<Glob const*, Context> contexts_;
    std::size_t sweepAt_ = 16;
};

} // namespace wainscot
