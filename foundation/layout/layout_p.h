#pragma once

#include "foundation/layout/layout.h"
#include "foundation/layout/tracks_p.h"
#include "host/messages/handler_ref.h"

#include <unordered_map>

namespace wainscot {

/// A child, a layout, or room without either.
struct Layout::Item {
    Item() = default;
    Item(Item const&) = delete;
    Item& operator=(Item const&) = delete;
    ~Item();
    /// Whether what was handed in is still its own: it may have died, or found a parent, before there was a
    /// panel. Lets go of it where it is not.
    bool isOwner();

    HandlerRef<Glob> child;
    /// Handed in, and not yet a child of the panel.
    std::unique_ptr<Glob> owned;
    std::unique_ptr<Layout> nested;
    bool isSpacer = false;

    Cell cell;
    LayoutOptions options;
    /// The size that it was made with, or was given by others since.
    XY<int> made;
    SizeNeeds needs;
    /// `Glob::getMinSize`.
    XY<int> least;
    /// `needs` and `least` are to be asked for again.
    bool stale = true;
    /// As last asked of the child.
    int widthAsked = -1;
    int heightAnswered = 0;

    // Of the present layout
    bool shown = false;
    /// `options` with sizes in pixels.
    LayoutOptions inPixels;
    /// What its needs and its options come to.
    SizeNeeds wanted;
    Cell at;
};

/// A box for a child, in the panel's coordinates.
struct Layout::Placed {
    HandlerRef<Glob> child;
    IntBox box;
};

/// Layouts that were given up while some layout is at work: they stay until that is done.
namespace RetiredLayouts {

class Hold {
public:
    Hold();
    ~Hold();
    Hold(Hold const&) = delete;
    Hold& operator=(Hold const&) = delete;
};

void add(std::unique_ptr<Layout> layout);

} // namespace RetiredLayouts

struct Layout::Root {
    struct Entry {
        Layout* layout;
        Item* item;
        HandlerRef<Glob> child;
    };

    HandlerRef<Glob> panel;
    std::unordered_map<Glob const*, Entry> items;
};

} // namespace wainscot
