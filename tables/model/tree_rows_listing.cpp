#include "tables/model/adaptor_failure_p.h"
#include "tables/model/tree_branch_p.h"
#include "tables/model/tree_rows.h"

#include <utility>

namespace wainscot {

namespace {

/// So many rows are looked for in other branches.
constexpr std::size_t mostMoved = 256;

/// A child that is to be opened.
struct ToOpen {
    unsigned int index = 0;
    TreeItem item;
};

} // namespace

/// Lists a branch, and in it all branches that are to be open. Branches in branches are worked off one after
/// the other, without recursion.
class TreeRows::Gathering {
public:
    enum class Opens : unsigned char { remembered, all };

    Gathering(TreeRows& rows, Opens opens) : rows_(rows), life_(rows.life_), opens_(opens) {}

    /// Rows with these numbers are to be found again; those in `anew` are listed anew.
    void keep(std::span<unsigned int const> rows, RowRange anew) {
        places_.resize(rows.size());
        for (std::size_t i = 0; i < rows.size(); ++i) {
            Place const place = rows_.locate(rows[i]);
            if (!anew.contains(rows[i]))
                places_[i] = place;
            else if (place.branch)
                kept_[place.branch].push_back({place.index, i});
        }
    }

    /// `old` is the branch as it was before, or null. Null when the tree or the source has gone meanwhile, or
    /// when the source was replaced.
    std::unique_ptr<Branch> run(Place const& place, TreeItem const& item, Branch* old);

    /// Where the kept rows are in the new branches.
    std::vector<Place> const& places() const { return places_; }
    /// Looks for those that have left their branch in all open ones that were listed.
    void findMoved();

private:
    struct Kept {
        unsigned int index;
        std::size_t slot;
    };
    struct Gone {
        Text name;
        std::size_t slot;
    };
    struct Step {
        Branch* branch;
        Branch* old;
        bool opensAll;
        std::vector<ToOpen> toOpen;
        std::size_t next = 0;
        /// Open children of `old` by their names. A name is taken once.
        std::unordered_map<Text, Branch*> known;
        std::unordered_set<Text> taken;
    };

    bool isOver() const { return !life_.alive() || rows_.source() != source_; }
    /// With `opensAll` the branches in it are opened when they come, perhaps later.
    std::unique_ptr<Branch> list(TreeItem const& item, std::uint16_t childDepth, Branch* parent, Branch* old,
                                 bool opensAll);
    void noteOpen(Branch const& old);
    void findOpen(Step& step);
    bool wantsOpen(Step& step, TreeItem const& item) const;
    void findKept(Branch& now, Branch& old);

    TreeRows& rows_;
    LifeGuard life_;
    Opens opens_;
    TreeSource* source_ = nullptr;
    unsigned int numOpened_ = 0;
    unsigned int numListed_ = 0;
    /// Names of all branches that were open.
    std::unordered_set<Text> wereOpen_;
    /// Names on the way from the root.
    std::unordered_map<Text, int> path_;
    std::unordered_map<Branch const*, std::vector<Kept>> kept_;
    std::vector<Place> places_;
    std::vector<Gone> gone_;
};

TreeSource::Children TreeRows::list(TreeItem const* parent) {
    TreeSource* const asked = source();
    if (!asked) return {};
    Asking const asking(*this);
    try {
        return asked->listChildren(parent);
    } catch (...) {
        noteAdaptorFailure("TreeRows");
        return {};
    }
}

std::unique_ptr<TreeRows::Branch> TreeRows::Gathering::list(TreeItem const& item, std::uint16_t childDepth,
                                                            Branch* parent, Branch* old, bool opensAll) {
    auto branch = std::make_unique<Branch>();
    branch->item = item;
    branch->childDepth = childDepth;
    branch->parent = parent;
    branch->list = rows_.list(branch->asParent());
    if (isOver()) return nullptr;
    if (branch->list.isPending && branch->numChildren() == 0 && old) {
        // The old rows are still on display, and stay when the listing fails.
        branch->list = old->list;
        branch->list.isPending = true;
    }
    // No more rows than can be counted.
    unsigned int const room = maxRows - std::min(maxRows, rows_.numRows() + numListed_);
    if (branch->list.items.size() > room) branch->list.items.resize(room);
    branch->list.count = std::min(branch->list.count, room);
    numListed_ += branch->numChildren();
    branch->opensAll = opensAll && branch->list.isPending;
    return branch;
}

void TreeRows::Gathering::noteOpen(Branch const& old) {
    Branch::visitOpen(old, [&](Branch const& branch) {
        if (&branch != &old) wereOpen_.insert(branch.item.name);
        return true;
    });
}

bool TreeRows::Gathering::wantsOpen(Step& step, TreeItem const& item) const {
    if (!item.isBranch() || path_.contains(item.name)) return false;
    bool const wasOpen = step.known.contains(item.name) && step.taken.insert(item.name).second;
    if (wasOpen || step.opensAll || rows_.remembered_.contains(item.name)) return true;
    // It may have come from another branch.
    if (!wereOpen_.contains(item.name)) return false;
    return !step.old || (!step.old->list.items.empty() && rows_.indexIn(*step.old, item.name) < 0);
}

void TreeRows::Gathering::findOpen(Step& step) {
    if (step.old)
        for (Branch::Open& inner : step.old->open)
            step.known.try_emplace(inner.branch->item.name, inner.branch.get());
    Branch const& now = *step.branch;
    if (now.childDepth == mostDepth) return;
    auto const& items = now.list.items;
    for (unsigned int i = 0; i < items.size(); ++i)
        if (items[i].isBranch() && wantsOpen(step, items[i])) step.toOpen.push_back({i, items[i]});
    if (!items.empty() || now.list.areLeaves) return;
    if (step.opensAll || !rows_.remembered_.empty()) {
        for (unsigned int i = 0; i < now.numChildren() && !isOver(); ++i)
            if (TreeItem item = rows_.itemAt(now, i); !isOver() && wantsOpen(step, item))
                step.toOpen.push_back({i, std::move(item)});
        return;
    }
    for (auto const& [name, branch] : step.known) {
        int const index = rows_.indexIn(now, name);
        if (isOver()) return;
        if (index < 0) continue;
        TreeItem item = rows_.itemAt(now, static_cast<unsigned int>(index));
        if (isOver()) return;
        if (wantsOpen(step, item)) step.toOpen.push_back({static_cast<unsigned int>(index), std::move(item)});
    }
    std::ranges::sort(step.toOpen, {}, &ToOpen::index);
}

void TreeRows::Gathering::findKept(Branch& now, Branch& old) {
    auto const found = kept_.find(&old);
    if (found == kept_.end()) return;
    bool const isCounted = old.list.items.empty() && now.list.items.empty();
    for (Kept const& kept : found->second) {
        if (isCounted) {
            if (kept.index < now.numChildren()) places_[kept.slot] = {&now, kept.index};
            continue;
        }
        // Where the old list went on, it was not listed anew.
        TreeItem const item = old.list.items.empty() && !now.list.items.empty() && now.list.isPending
                                  ? rows_.itemAt(now, kept.index)
                                  : rows_.itemAt(old, kept.index);
        if (isOver()) return;
        bool const stays = kept.index < now.list.items.size() && now.list.items[kept.index].name == item.name;
        int const index = stays ? static_cast<int>(kept.index) : rows_.indexIn(now, item.name);
        if (isOver()) return;
        if (index >= 0)
            places_[kept.slot] = {&now, static_cast<unsigned int>(index)};
        else if (gone_.size() < mostMoved)
            gone_.push_back({item.name, kept.slot});
    }
}

void TreeRows::Gathering::findMoved() {
    if (gone_.empty()) return;
    Branch::visitOpen(*rows_.root_, [this](Branch& branch) {
        if (branch.list.items.empty()) return true;
        for (Gone const& gone : gone_)
            if (int const index = rows_.indexIn(branch, gone.name); index >= 0)
                places_[gone.slot] = {&branch, static_cast<unsigned int>(index)};
        return true;
    });
}

std::unique_ptr<TreeRows::Branch> TreeRows::Gathering::run(Place const& place, TreeItem const& item,
                                                           Branch* old) {
    Asking const asking(rows_);
    source_ = rows_.source();
    if (old) noteOpen(*old);
    for (Branch const* above = place.branch; above; above = above->parent) ++path_[above->item.name];
    bool const isRoot = !place.branch;
    // The root's own name is none; an uppermost item may have none, too.
    if (isRoot)
        path_.clear();
    else
        ++path_[item.name];
    auto const childDepth =
        isRoot ? std::uint16_t(0) : static_cast<std::uint16_t>(place.branch->childDepth + 1);
    auto const opensAllIn = [this](Branch const* before, bool opensAllRound) {
        return opensAllRound || opens_ == Opens::all || (before && before->opensAll);
    };
    bool const opensAll = opensAllIn(old, false);
    std::unique_ptr<Branch> top = list(item, childDepth, place.branch, old, opensAll);
    if (!top) return nullptr;
    std::vector<Step> steps;
    auto const begin = [&](Branch* branch, Branch* before, bool opensAllHere) {
        steps.push_back({branch, before, opensAllHere, {}, 0, {}, {}});
        findOpen(steps.back());
        if (before && !isOver()) findKept(*branch, *before);
    };
    begin(top.get(), old, opensAll);
    while (!steps.empty()) {
        if (isOver()) return nullptr;
        Step& step = steps.back();
        if (step.next == step.toOpen.size() || numOpened_ == mostExpanded) {
            step.branch->below = step.branch->countBelow();
            // Open branches that are not there any more are remembered, in case they come back.
            for (auto const& [name, gone] : step.known) {
                if (!gone) continue;
                rows_.remembered_.insert(name);
                rows_.rememberIn(*gone);
                if (isOver()) return nullptr;
            }
            if (auto const own = path_.find(step.branch->item.name); own != path_.end() && --own->second == 0)
                path_.erase(own);
            steps.pop_back();
            continue;
        }
        ToOpen const& next = step.toOpen[step.next++];
        Branch* before = nullptr;
        if (auto const known = step.known.find(next.item.name); known != step.known.end())
            before = std::exchange(known->second, nullptr);
        auto const depth = static_cast<std::uint16_t>(step.branch->childDepth + 1);
        bool const opensAllInner = opensAllIn(before, step.opensAll);
        std::unique_ptr<Branch> inner = list(next.item, depth, step.branch, before, opensAllInner);
        if (!inner) return nullptr;
        ++numOpened_;
        inner->index = next.index;
        ++path_[next.item.name];
        Branch* const added = inner.get();
        step.branch->open.push_back({next.index, std::move(inner)});
        begin(added, before, opensAllInner);
    }
    return top;
}

unsigned int TreeRows::expandBranch(unsigned int row) {
    Place const place = locate(row);
    bool const canOpen = place.branch && !isAsking() && place.branch->childDepth < mostDepth &&
                         !place.branch->openAt(place.index);
    if (!canOpen) return 0;
    LifeGuard const life(life_);
    TreeItem const item = itemAt(*place.branch, place.index);
    if (!life.alive() || !item.isBranch()) return 0;
    Gathering gathering(*this, Gathering::Opens::remembered);
    std::unique_ptr<Branch> branch = gathering.run(place, item, nullptr);
    if (!branch) return 0;
    unsigned int const added = branch->below;
    attach(std::move(branch), *place.branch, place.index);
    return added;
}

/// `old` is the branch as it is open there, or null; without a place it is the root.
TreeRows::Places TreeRows::listAgain(Gathering& gathering, Place const& place, Branch* old,
                                     std::span<unsigned int const> rows) {
    Places answer(rows.begin(), rows.end());
    if (isAsking()) return answer;
    LifeGuard const life(life_);
    unsigned int const first = place.branch ? rowOf(*place.branch, place.index) + 1 : 0;
    TreeItem const item = old ? old->item : place.branch ? itemAt(*place.branch, place.index) : TreeItem();
    if (!life.alive() || (place.branch && !item.isBranch())) return answer;
    gathering.keep(rows, rowsFrom(first, old ? old->below : 0));
    std::unique_ptr<Branch> now = gathering.run(place, item, old);
    if (!now) return answer;
    if (!place.branch) {
        root_ = std::move(now);
        openByName_.reset();
        changed();
    } else if (old) {
        replace(*place.branch, place.branch->openFrom(place.index), std::move(now));
    } else {
        attach(std::move(now), *place.branch, place.index);
    }
    gathering.findMoved();
    Numbering numbering;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        Place const& is = gathering.places()[i];
        answer[i] = is.branch ? std::optional(numbering.rowOf(is)) : std::nullopt;
    }
    return answer;
}

TreeRows::Places TreeRows::listAgain(Gathering& gathering, unsigned int branchRow,
                                     std::span<unsigned int const> rows) {
    Place const place = locate(branchRow);
    bool const canOpen = place.branch && place.branch->childDepth < mostDepth;
    if (!canOpen) return {rows.begin(), rows.end()};
    return listAgain(gathering, place, place.branch->openAt(place.index), rows);
}

TreeRows::Places TreeRows::expandAll(std::span<unsigned int const> rows) {
    Gathering gathering(*this, Gathering::Opens::all);
    return listAgain(gathering, {}, root_.get(), rows);
}

TreeRows::Places TreeRows::expandAll(unsigned int branchRow, std::span<unsigned int const> rows) {
    Gathering gathering(*this, Gathering::Opens::all);
    return listAgain(gathering, branchRow, rows);
}

TreeRows::Places TreeRows::refresh(std::span<unsigned int const> rows) {
    Gathering gathering(*this, Gathering::Opens::remembered);
    return listAgain(gathering, {}, root_.get(), rows);
}

TreeRows::Places TreeRows::refresh(unsigned int branchRow, std::span<unsigned int const> rows) {
    if (!isExpanded(branchRow)) return {rows.begin(), rows.end()};
    Gathering gathering(*this, Gathering::Opens::remembered);
    return listAgain(gathering, branchRow, rows);
}

} // namespace wainscot
