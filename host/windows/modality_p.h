#pragma once

#include "host/objects/glob.h"

#include <map>
#include <unordered_map>

namespace wainscot {

/// Who may receive input: a filter over the routing, not a loop of its own.
///
/// A modal object keeps input from everything outside its modal chain: a root from all other windows, a child
/// from the rest of its own window. The chain holds all whose modal context leads to it, such as the menus
/// that it opens. Of several modal objects the latest counts first. What has died, or is not shown, keeps
/// nobody from anything.
class WAINSCOT_API Modality {
public:
    /// From now on `glob` is modal.
    void addModal(Glob& glob);
    /// Whatever modality allows to `context` it allows to `glob` as well.
    void setContext(Glob& glob, Glob& context);
    /// Takes back both.
    void remove(Glob const& glob);

    /// The modal object that keeps input from `target`, itself not kept from it; null when `target` is free.
    Glob* blockerOf(Glob const& target) const;
    bool isModal(Glob const& glob) const;

private:
    struct Context {
        HandlerRef<Glob const> glob;
        HandlerRef<Glob> context;
    };

    void removeModal(Glob const& glob);
    /// Now and then, so that it costs nothing to speak of.
    void dropDeadIfWorthwhile();
    bool belongsTo(Glob const& target, Glob const& modal) const;
    /// The object that the next step towards the chain's end leads to; null at the end.
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
