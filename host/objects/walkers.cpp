#include "host/objects/glob.h"
#include "host/objects/root_host.h"
#include "host/objects/tree.h"

#include <algorithm>
#include <limits>

namespace wainscot {

namespace {

void visitAll(std::vector<Glob*> const& globs, Glob::Visitor const& visit) {
    std::vector<HandlerRef<Glob>> remembered;
    remembered.reserve(globs.size());
    for (Glob* glob : globs) remembered.emplace_back(glob);
    for (HandlerRef<Glob> const& next : remembered)
        if (Glob* const glob = next.get(); glob && !visit(*glob)) return;
}

/// The subtree, children before their parents.
std::vector<Glob*> postOrder(Glob& top) {
    std::vector<Glob*> found;
    Glob* glob = &top;
    while (glob->firstChild()) glob = glob->firstChild();
    while (true) {
        found.push_back(glob);
        if (glob == &top) return found;
        if (glob->nextSibling()) {
            glob = glob->nextSibling();
            while (glob->firstChild()) glob = glob->firstChild();
        } else {
            glob = glob->parent();
        }
    }
}

} // namespace

void Glob::visitChildren(Visitor const& visit) {
    std::vector<Glob*> children;
    getChildren(children);
    visitAll(children, visit);
}

void Glob::visitSubtree(Visitor const& visit) {
    visitAll(Tree::subtree(*this), visit);
}

void Glob::visitPostOrder(Visitor const& visit) {
    visitAll(postOrder(*this), visit);
}

void Glob::visitAncestors(Visitor const& visit) {
    std::vector<Glob*> ancestors;
    for (Glob* glob = parent_; glob; glob = glob->parent_) ancestors.push_back(glob);
    visitAll(ancestors, visit);
}

void Glob::visitSiblings(Visitor const& visit) {
    if (!parent_) return;
    std::vector<Glob*> siblings;
    parent_->getChildren(siblings);
    std::erase(siblings, this);
    visitAll(siblings, visit);
}

void Glob::visitOlderSiblings(Visitor const& visit) {
    std::vector<Glob*> siblings;
    for (Glob* glob = previous_; glob; glob = glob->previous_) siblings.push_back(glob);
    std::reverse(siblings.begin(), siblings.end());
    visitAll(siblings, visit);
}

void Glob::visitYoungerSiblings(Visitor const& visit) {
    std::vector<Glob*> siblings;
    for (Glob* glob = next_; glob; glob = glob->next_) siblings.push_back(glob);
    visitAll(siblings, visit);
}

Glob* Glob::findNearestGlob(bool (*accept)(Glob*)) {
    iRootHost const* const host = iRootHost::current();
    if (!host || !accept) return nullptr;
    LifeGuard const life = guard();
    HandlerRef<Glob> nearest;
    double least = std::numeric_limits<double>::infinity();
    for (Glob* root : host->roots()) {
        if (!is_good_glob_ptr(root)) continue;
        root->visitSubtree([&](Glob& glob) {
            if (&glob == this || isParentedTo(&glob, this) || isParentedTo(this, &glob)) return true;
            double const distance = glob_pseudo_distance(this, &glob);
            if (distance >= least) return true;
            HandlerRef<Glob> const asked(&glob);
            bool const taken = accept(&glob);
            if (!life.alive()) return false;
            if (taken && asked) {
                least = distance;
                nearest = asked;
            }
            return true;
        });
        if (!life.alive()) return nullptr;
    }
    return nearest.get();
}

Glob* walk_all_root_globs(Glob* previous) {
    iRootHost const* const host = iRootHost::current();
    return host ? host->rootAfter(previous) : nullptr;
}

} // namespace wainscot
