#pragma once

#include "tables/model/tree_rows.h"

#include <algorithm>

namespace wainscot {

/// An open branch; the root stands for what lies above the uppermost items.
struct TreeRows::Branch {
    struct Open {
        unsigned int index;
        std::unique_ptr<Branch> branch;
    };

    Branch() = default;
    /// Branches in branches are not destroyed by recursion: there may be very many.
    ~Branch() {
        std::vector<std::unique_ptr<Branch>> rest;
        auto const take = [&rest](Branch& branch) {
            for (Open& inner : branch.open) rest.push_back(std::move(inner.branch));
            branch.open.clear();
        };
        take(*this);
        while (!rest.empty()) {
            std::unique_ptr<Branch> const last = std::move(rest.back());
            rest.pop_back();
            take(*last);
        }
    }
    Branch(Branch const&) = delete;
    Branch& operator=(Branch const&) = delete;

    unsigned int numChildren() const {
        return list.items.empty() ? list.count : static_cast<unsigned int>(list.items.size());
    }
    /// Null for the root, as the source wants it.
    TreeItem const* asParent() const { return parent ? &item : nullptr; }
    /// The first open child from an index on.
    std::size_t openFrom(unsigned int childIndex) const {
        auto const found = std::ranges::lower_bound(open, childIndex, {}, &Open::index);
        return static_cast<std::size_t>(found - open.begin());
    }
    Branch* openAt(unsigned int childIndex) const {
        std::size_t const at = openFrom(childIndex);
        return at < open.size() && open[at].index == childIndex ? open[at].branch.get() : nullptr;
    }
    /// How many rows lie below the open children before this one.
    unsigned int rowsBefore(std::size_t openIndex) const {
        if (sums.empty()) sums.push_back(0);
        while (sums.size() <= openIndex) sums.push_back(sums.back() + open[sums.size() - 1].branch->below);
        return sums[openIndex];
    }
    /// The rows below the open children from this one on have changed.
    void changedFrom(std::size_t openIndex) {
        if (sums.size() > openIndex + 1) sums.resize(openIndex + 1);
    }
    unsigned int countBelow() const {
        unsigned int count = numChildren();
        for (Open const& inner : open) count += inner.branch->below;
        return count;
    }

    /// Visits a branch and all open ones in it, without recursion, until `visit` answers false.
    template <class AnyBranch, class Visit>
    static void visitOpen(AnyBranch& top, Visit const& visit) {
        std::vector<AnyBranch*> rest{&top};
        while (!rest.empty()) {
            AnyBranch& branch = *rest.back();
            rest.pop_back();
            for (Open const& inner : branch.open) rest.push_back(inner.branch.get());
            if (!visit(branch)) return;
        }
    }

    Branch* parent = nullptr;
    /// Among the children of the parent.
    unsigned int index = 0;
    std::uint16_t childDepth = 0;
    TreeItem item;
    TreeSource::Children list;
    /// All branches in it are to be open when they come.
    bool opensAll = false;
    /// In rising order.
    std::vector<Open> open;
    /// The rows at any depth.
    unsigned int below = 0;
    mutable std::vector<unsigned int> sums;
    /// Where it is among the open branches of its name.
    std::size_t openSlot = 0;
    /// Indices of children by their names, found by hashing; made when a name is first sought.
    mutable std::vector<unsigned int> byName;
};

struct TreeRows::Place {
    Branch* branch = nullptr;
    unsigned int index = 0;
};

/// The rows of places, in any order. What was found out about a branch is kept.
class TreeRows::Numbering {
public:
    unsigned int rowOf(Place const& place);

private:
    /// The rows of first children.
    std::unordered_map<Branch const*, unsigned int> first_;
};

/// What the source is asked is counted, so that nothing changes the rows meanwhile.
class TreeRows::Asking {
public:
    explicit Asking(TreeRows const& rows) : rows_(rows), life_(rows.life_) { ++rows_.numAsking_; }
    ~Asking() {
        if (life_.alive()) --rows_.numAsking_;
    }
    Asking(Asking const&) = delete;
    Asking& operator=(Asking const&) = delete;

    bool alive() const { return life_.alive(); }

private:
    TreeRows const& rows_;
    LifeGuard life_;
};

} // namespace wainscot
