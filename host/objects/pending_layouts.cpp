#include "host/objects/pending_layouts_p.h"

#include "host/base/diagnostics.h"
#include "host/events/dispatch_scope.h"
#include "host/messages/handler_ref.h"
#include "host/objects/glob.h"

#include <algorithm>
#include <unordered_map>
#include <utility>
#include <vector>

namespace wainscot {

namespace {

using Refs = std::vector<HandlerRef<Glob>>;

Refs& waiting() {
    static Refs refs;
    return refs;
}

std::size_t depthOf(Glob const& glob) {
    std::size_t depth = 0;
    for (Glob const* above = glob.parent(); above; above = above->parent()) ++depth;
    return depth;
}

/// Those that live, parents before children.
Refs takeOrdered() {
    std::vector<std::pair<std::size_t, HandlerRef<Glob>>> ordered;
    for (HandlerRef<Glob> const& ref : std::exchange(waiting(), {}))
        if (Glob const* glob = ref.get()) ordered.emplace_back(depthOf(*glob), ref);
    std::stable_sort(ordered.begin(), ordered.end(),
                     [](auto const& a, auto const& b) { return a.first < b.first; });
    Refs refs;
    refs.reserve(ordered.size());
    for (auto const& [depth, ref] : ordered) refs.push_back(ref);
    return refs;
}

} // namespace

void Glob::askForLayout() {
    if (isDying() || hasFlag(layoutPendingFlag)) return;
    setFlag(layoutPendingFlag, true);
    waiting().emplace_back(this);
}

bool PendingLayouts::any() {
    return !waiting().empty();
}

void PendingLayouts::doAll() {
    std::unordered_map<Glob const*, int> times;
    while (any()) {
        for (HandlerRef<Glob> const& ref : takeOrdered()) {
            Glob* const glob = ref.get();
            if (!glob || !glob->isLayoutPending()) continue;
            glob->layoutDone();
            if (++times[glob] <= maxTimes)
                runHandler("layout", [&] { glob->handleLayout(); });
            else
                Diagnostics::count("layout not settled", "it is asked for again and again");
        }
    }
}

} // namespace wainscot
