#include "host/objects/tree.h"

#include "host/objects/activity_p.h"
#include "host/objects/glob_side_p.h"

#include <algorithm>

namespace wainscot {

namespace {
constinit std::uint64_t changeCount = 0;
/// This near to an end, children are counted one by one.
constexpr std::uint32_t nearEnd = 32;
} // namespace

bool Tree::mayAdopt(Glob const* parent, Glob const* child) {
    if (!parent || !child || parent == child || parent->isDying() || child->isDying()) return false;
    bool const childHasNone = !child->firstChild_;
    return childHasNone || !Glob::isParentedTo(parent, child);
}

void Tree::link(Glob& parent, Glob& child, Glob* before) {
    child.parent_ = &parent;
    child.next_ = before;
    child.previous_ = before ? before->previous_ : parent.lastChild_;
    (child.previous_ ? child.previous_->next_ : parent.firstChild_) = &child;
    (before ? before->previous_ : parent.lastChild_) = &child;
    ++parent.numChildren_;
    Activity::parentChanged(child);
    child.wholeDamaged_ = 0;
    if (!child.ownsCanvas() && child.canvas_ != parent.canvas_) child.moveToCanvas(*parent.canvas_);
    noteChange();
    noteLinked(parent, child);
    child.tellParent(ChildChange::added);
    if (!parent.side_ || !parent.side_->grid) return;
    child.gridNumber_ = before ? 0 : parent.side_->grid->append(&child, child.box());
    if (before || parent.side_->grid->isWorn()) dropGrid(parent);
}

void Tree::unlink(Glob& child) {
    Glob& parent = *child.parent_;
    child.tellParent(ChildChange::removed);
    (child.previous_ ? child.previous_->next_ : parent.firstChild_) = child.next_;
    (child.next_ ? child.next_->previous_ : parent.lastChild_) = child.previous_;
    child.parent_ = child.previous_ = child.next_ = nullptr;
    --parent.numChildren_;
    if (!child.isDying()) Activity::parentChanged(child);
    child.wholeDamaged_ = 0;
    noteChange();
    noteUnlinked(parent, child);
    if (!parent.side_ || !parent.side_->grid) return;
    parent.side_->grid->remove(child.gridNumber_);
    if (parent.side_->grid->isWorn()) dropGrid(parent);
}

std::vector<Glob*> Tree::subtree(Glob& top) {
    return subtree(top, [](Glob&) { return true; });
}

std::vector<Glob*> Tree::subtree(Glob& top, std::function<bool(Glob&)> const& enter) {
    return collect(top, enter);
}

std::uint64_t Tree::numChanges() {
    return changeCount;
}

void Tree::noteChange() {
    ++changeCount;
}

void Tree::scatter(Glob& glob) {
    glob.parent_ = glob.previous_ = glob.next_ = nullptr;
    glob.firstChild_ = glob.lastChild_ = nullptr;
    glob.numChildren_ = 0;
    if (!glob.side_) return;
    glob.side_->grid.reset();
    glob.side_->byIndex.clear();
}

void Tree::noteLinked(Glob& parent, Glob& child) {
    if (!parent.side_ || parent.side_->byIndex.empty()) return;
    if (child.next_)
        parent.side_->byIndex.clear();
    else
        parent.side_->byIndex.push_back(&child);
}

void Tree::noteUnlinked(Glob& parent, Glob const& child) {
    if (!parent.side_ || parent.side_->byIndex.empty()) return;
    if (parent.side_->byIndex.back() == &child)
        parent.side_->byIndex.pop_back();
    else
        parent.side_->byIndex.clear();
}

/// Null when counting would take long.
Glob* Tree::nearChildAt(Glob const& parent, std::uint32_t index) {
    std::uint32_t const fromEnd = parent.numChildren_ - 1 - index;
    if (std::min(index, fromEnd) >= nearEnd) return nullptr;
    Glob* child = index < nearEnd ? parent.firstChild_ : parent.lastChild_;
    for (std::uint32_t i = 0; i < (index < nearEnd ? index : fromEnd); ++i)
        child = index < nearEnd ? child->next_ : child->previous_;
    return child;
}

Glob* Tree::childAt(Glob& parent, std::uint32_t index) {
    if (Glob* const child = nearChildAt(parent, index)) return child;
    std::vector<Glob*>& children = parent.side().byIndex;
    if (children.empty()) parent.getChildren(children);
    return children[index];
}

ChildGrid* Tree::grid(Glob& parent) {
    if (parent.numChildren_ <= ChildGrid::threshold) return nullptr;
    Glob::Side& side = parent.side();
    if (side.grid) return side.grid.get();
    std::vector<Glob*> children;
    parent.getChildren(children);
    std::vector<IntBox> boxes;
    boxes.reserve(children.size());
    for (Glob const* child : children) boxes.push_back(child->box());
    side.grid = std::make_unique<ChildGrid>();
    side.grid->build(children, boxes, [](Glob& child, std::uint32_t number) { child.gridNumber_ = number; });
    return side.grid.get();
}

void Tree::dropGrid(Glob& parent) {
    parent.side_->grid.reset();
}

void Tree::childrenMeeting(Glob& parent, IntBox const& area, std::vector<Glob*>& found) {
    childrenMeeting(parent, std::span(&area, 1), found);
}

void Tree::childrenMeeting(Glob& parent, std::span<IntBox const> areas, std::vector<Glob*>& found) {
    if (ChildGrid const* cells = grid(parent)) {
        cells->find(areas, found);
        return;
    }
    for (Glob* child = parent.firstChild_; child; child = child->next_) {
        IntBox const box = child->box();
        auto const meets = [&](IntBox const& area) { return box.intersects(area); };
        if (std::any_of(areas.begin(), areas.end(), meets)) found.push_back(child);
    }
}

void Tree::childBoxChanged(Glob& child) {
    noteChange();
    Glob* const parent = child.parent_;
    if (!parent || !parent->side_ || !parent->side_->grid) return;
    parent->side_->grid->move(child.gridNumber_, child.box());
    if (parent->side_->grid->isWorn()) dropGrid(*parent);
}

Glob* Tree::globAt(Glob& top, XY<int> place) {
    if (!top.bounds().contains(place)) return nullptr;
    Glob* found = &top;
    std::vector<Glob*> candidates;
    for (Glob* next = &top; next;) {
        found = next;
        next = nullptr;
        candidates.clear();
        childrenMeeting(*found, IntBox::sized(place, {1, 1}), candidates);
        for (auto child = candidates.rbegin(); child != candidates.rend() && !next; ++child)
            if ((*child)->isVisible() && (*child)->canvas()->isMapped()) next = *child;
        if (next) place -= next->position_;
    }
    return found;
}

} // namespace wainscot
