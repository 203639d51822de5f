#pragma once

#include "host/drawing/colour.h"
#include "host/messages/handler_ref.h"
#include "host/messages/observer_list.h"
#include "host/objects/child_grid_p.h"
#include "host/objects/glob.h"
#include "host/objects/surround.h"

#include <optional>
#include <unordered_map>
#include <vector>

namespace wainscot {

/// What only few objects of the tree have; made when first needed.
struct Glob::Side {
    /// Handlers that are offered events before the object itself.
    struct Offered {
        HandlerRef<Glob> handler;
        int kinds;
    };
    struct Offers {
        using Id = ObserverList<Offered>::Id;

        ObserverList<Offered> list;
        std::unordered_map<int, std::vector<Id>> byKinds;
        /// At this number of entries the dead ones are dropped.
        std::size_t sweepAt = 16;

        void add(Offered const& entry);
        void remove(int kinds);
        void dropDead();
    };

    LightweightString<char> name;
    std::optional<Colour> colour;
    XY<int> minSize;
    /// The place rule of a child that stands next to a sibling.
    WidgetPosition relative;
    Surround surround;
    /// Where the pointer holds a moving object, in its own coordinates.
    XY<int> grip;
    UIString tip;
    UIString moreTip;
    HandlerRef<Glob> labelledBy;
    HandlerRef<Glob> controls;
    std::unique_ptr<Offers> offers;
    std::unique_ptr<ChildGrid> grid;
    /// All children, or empty. Made when a child in the middle is asked for by its index.
    std::vector<Glob*> byIndex;
};

} // namespace wainscot
