#pragma once

#include "host/objects/glob.h"

#include <span>

namespace wainscot {

class ChildGrid;

/// The links between parents and children. No drawing, no placing, no notices.
class WAINSCOT_API Tree {
public:
    /// Whether `parent` may take `child` over: neither is null or dying, no cycle comes about.
    static bool mayAdopt(Glob const* parent, Glob const* child);
    /// Links a child that has no parent above all others, or below `before`.
    static void link(Glob& parent, Glob& child, Glob* before = nullptr);
    /// Takes a child out of its parent.
    static void unlink(Glob& child);
    /// The subtree, parents before children.
    static std::vector<Glob*> subtree(Glob& top);
    /// The same without the objects that `enter` refuses, and all below them.
    static std::vector<Glob*> subtree(Glob& top, std::function<bool(Glob&)> const& enter);
    /// Counts changes of links, boxes and visibility: what may move objects under a resting pointer.
    static std::uint64_t numChanges();
    static void noteChange();
    /// Cuts all links of detached objects from each other.
    static void scatter(std::vector<Glob*> const& globs);
    /// Appends the children whose boxes meet `area` (in the parent's coordinates), from below to above.
    static void childrenMeeting(Glob& parent, IntBox const& area, std::vector<Glob*>& found);
    /// The same for those that meet one of several areas, each once.
    static void childrenMeeting(Glob& parent, std::span<IntBox const> areas, std::vector<Glob*>& found);
    /// To be called after a child's box has changed.
    static void childBoxChanged(Glob& child);
    /// The child with an index below the number of children. Going through all by index takes no longer than
    /// going from one to the next.
    static Glob* childAt(Glob& parent, std::uint32_t index);
    /// The topmost shown descendant at a place (in `top`'s coordinates), or `top` itself; null outside it.
    static Glob* globAt(Glob& top, XY<int> place);

private:
    static ChildGrid* grid(Glob& parent);
    static void dropGrid(Glob& parent);
    static Glob* nearChildAt(Glob const& parent, std::uint32_t index);
    /// Keeps, or drops, the children by their indices.
    static void noteLinked(Glob& parent, Glob& child);
    static void noteUnlinked(Glob& parent, Glob const& child);
};

} // namespace wainscot
