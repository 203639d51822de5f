#pragma once

#include "host/objects/glob.h"

#include <span>

namespace wainscot {

class ChildGrid;

/// The links between parents and children. No drawing, no placing, no notices.
class WAINSCOT_API Tree {
public:
    /// Whether `parent` may take over `child`: neither is null or dying, and no cycle would arise.
    static bool mayAdopt(Glob const* parent, Glob const* child);
    /// Links a child that has no parent above all others, or below `before`.
    static void link(Glob& parent, Glob& child, Glob* before = nullptr);
    /// Takes a child out of its parent.
    static void unlink(Glob& child);
    /// The subtree, parents before children.
    static std::vector<Glob*> subtree(Glob& top);
    /// The same without the objects that `enter` refuses, and all below them.
    static std::vector<Glob*> subtree(Glob& top, std::function<bool(Glob&)> const& enter);
    /// The same as a template, for large trees: `enter` is called directly.
    template <class Enter>
    static std::vector<Glob*> collect(Glob& top, Enter enter);
    /// Counts changes of links, boxes and visibility, by which objects may move under a resting pointer.
    static std::uint64_t numChanges();
    static void noteChange();
    /// Cuts all links of a detached object. To be called for all objects that they lead to.
    static void scatter(Glob& glob);
    /// Appends the children whose boxes meet `area` (in the parent's coordinates), from below to above.
    static void childrenMeeting(Glob& parent, IntBox const& area, std::vector<Glob*>& found);
    /// The same for several areas; each child is appended once.
    static void childrenMeeting(Glob& parent, std::span<IntBox const> areas, std::vector<Glob*>& found);
    /// To be called after a child's box has changed.
    static void childBoxChanged(Glob& child);
    /// The child with an index below the number of children. Going through all children by index takes linear
    /// time.
    static Glob* childAt(Glob& parent, std::uint32_t index);
    /// The topmost shown descendant at a place (in `top`'s coordinates), or `top` itself; null outside it.
    static Glob* globAt(Glob& top, XY<int> place);

private:
    static ChildGrid* grid(Glob& parent);
    static void dropGrid(Glob& parent);
    static Glob* nearChildAt(Glob const& parent, std::uint32_t index);
    /// Keep the table of children by index up to date, or drop it.
    static void noteLinked(Glob& parent, Glob& child);
    static void noteUnlinked(Glob& parent, Glob const& child);
};

template <class Enter>
std::vector<Glob*> Tree::collect(Glob& top, Enter enter) {
    std::vector<Glob*> found;
    found.reserve(top.numChildren_ + 1);
    Glob* glob = &top;
    while (glob) {
        bool const entered = enter(*glob);
        if (entered) found.push_back(glob);
        if (entered && glob->firstChild_) {
            glob = glob->firstChild_;
            continue;
        }
        while (glob != &top && !glob->next_) glob = glob->parent_;
        glob = glob == &top ? nullptr : glob->next_;
    }
    return found;
}

} // namespace wainscot
