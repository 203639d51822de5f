#include "tables/model/tree_rows.h"

#include "tables/model/adaptor_failure_p.h"
#include "tables/model/tree_branch_p.h"

#include <bit>
#include <utility>

namespace wainscot {

TreeSource::~TreeSource() = default;

TreeItem TreeSource::getChild(TreeItem const*, unsigned int) const {
    return {};
}

int TreeSource::findChild(TreeItem const*, Text const&) const {
    return unknown;
}

namespace {

/// Fewer names are compared one by one.
constexpr std::size_t fewNames = 16;
constexpr unsigned int nobody = 0xFFFFFFFF;

std::size_t hashOf(TreeItem::Text const& name) {
    return std::hash<TreeItem::Text>()(name);
}

/// A table of indices, twice as long as there are items. Of equal names the first is in it.
std::vector<unsigned int> namesTable(std::vector<TreeItem> const& items) {
    std::vector<unsigned int> table(std::bit_ceil(2 * items.size()), nobody);
    for (unsigned int i = 0; i < items.size(); ++i) {
        std::size_t slot = hashOf(items[i].name) & (table.size() - 1);
        while (table[slot] != nobody && items[table[slot]].name != items[i].name)
            slot = (slot + 1) & (table.size() - 1);
        if (table[slot] == nobody) table[slot] = i;
    }
    return table;
}

} // namespace

TreeRows::TreeRows() : root_(std::make_unique<Branch>()) {}

TreeRows::~TreeRows() {
    life_.end();
}

TreeSource* TreeRows::source() const {
    return sourceLife_ && sourceLife_->alive() ? source_ : nullptr;
}

void TreeRows::setSource(TreeSource* source) {
    source_ = source;
    sourceLife_.reset();
    if (source) sourceLife_.emplace(source->life());
    remembered_.clear();
    // The rows on display belong to the question that is being asked.
    if (isAsking()) return;
    root_ = std::make_unique<Branch>();
    openByName_.reset();
    changed();
    if (source) refresh({});
}

unsigned int TreeRows::numRows() const {
    return root_->below;
}

TreeItem TreeRows::itemAt(Branch const& branch, unsigned int index) const {
    if (index < branch.list.items.size()) return branch.list.items[index];
    TreeSource* const asked = source();
    if (!asked || index >= branch.numChildren()) return {};
    Asking const asking(*this);
    try {
        return asked->getChild(branch.asParent(), index);
    } catch (...) {
        noteAdaptorFailure("TreeRows");
        return {};
    }
}

// Places

/// It begins where the last row was found: rising rows take the time of one walk, however deep they lie.
TreeRows::Place TreeRows::locate(unsigned int row) const {
    if (nearVersion_ != version_) {
        nearBranch_ = root_.get();
        nearFirst_ = 0;
        nearVersion_ = version_;
    }
    while (row < nearFirst_ || row - nearFirst_ >= nearBranch_->below) {
        Branch* const parent = nearBranch_->parent;
        if (!parent) return {};
        nearFirst_ -= nearBranch_->index + parent->rowsBefore(parent->openFrom(nearBranch_->index)) + 1;
        nearBranch_ = parent;
    }
    for (;;) {
        unsigned int const inBranch = row - nearFirst_;
        // The last open child that is this row or lies above it.
        std::size_t low = 0;
        std::size_t high = nearBranch_->open.size();
        while (low < high) {
            std::size_t const middle = (low + high) / 2;
            if (nearBranch_->open[middle].index + nearBranch_->rowsBefore(middle) <= inBranch)
                low = middle + 1;
            else
                high = middle;
        }
        if (low == 0) return {nearBranch_, inBranch};
        Branch::Open const& above = nearBranch_->open[low - 1];
        unsigned int const rowAbove = above.index + nearBranch_->rowsBefore(low - 1);
        if (inBranch == rowAbove) return {nearBranch_, above.index};
        unsigned int const inside = inBranch - rowAbove - 1;
        if (inside >= above.branch->below)
            return {nearBranch_, above.index + 1 + inside - above.branch->below};
        nearFirst_ += rowAbove + 1;
        nearBranch_ = above.branch.get();
    }
}

unsigned int TreeRows::Numbering::rowOf(Place const& place) {
    std::vector<Branch const*> unknown;
    Branch const* at = place.branch;
    for (; at->parent && !first_.contains(at); at = at->parent) unknown.push_back(at);
    unsigned int first = at->parent ? first_.at(at) : 0;
    while (!unknown.empty()) {
        Branch const* const inner = unknown.back();
        unknown.pop_back();
        first += inner->index + at->rowsBefore(at->openFrom(inner->index)) + 1;
        first_.emplace(inner, first);
        at = inner;
    }
    return first + place.index + at->rowsBefore(at->openFrom(place.index));
}

unsigned int TreeRows::rowOf(Branch const& branch, unsigned int index) const {
    unsigned int row = 0;
    for (Branch const* at = &branch;; at = at->parent) {
        row += index + at->rowsBefore(at->openFrom(index));
        if (!at->parent) return row;
        ++row;
        index = at->index;
    }
}

TreeRows::Row TreeRows::rowAt(Place const& place) const {
    Row row;
    row.depth = place.branch->childDepth;
    row.parentName = place.branch->item.name;
    if (Branch const* const open = place.branch->openAt(place.index)) {
        row.isExpanded = true;
        row.isPending = open->list.isPending;
        row.item = open->item;
        return row;
    }
    row.item = itemAt(*place.branch, place.index);
    return row;
}

TreeRows::Row TreeRows::at(unsigned int row) const {
    Place const place = locate(row);
    return place.branch ? rowAt(place) : Row();
}

void TreeRows::visit(unsigned int first, unsigned int end, Visitor const& visit) const {
    RowRange const range{first, end};
    this->visit(std::span(&range, 1), visit);
}

void TreeRows::visit(std::span<RowRange const> ranges, Visitor const& visit) const {
    unsigned int const version = version_;
    // What the visitor or the source does may end it.
    LifeGuard const life(life_);
    for (RowRange const& range : ranges) {
        Place place = locate(range.first);
        for (unsigned int row = range.first; place.branch && row < range.end; ++row) {
            Row const data = rowAt(place);
            if (!life.alive() || version_ != version || !visit(row, data)) return;
            if (!life.alive() || version_ != version || row + 1 >= numRows()) return;
            Branch* const inner = place.branch->openAt(place.index);
            if (inner && inner->below > 0) {
                place = {inner, 0};
                continue;
            }
            ++place.index;
            while (place.index >= place.branch->numChildren())
                place = {place.branch->parent, place.branch->index + 1};
        }
    }
}

bool TreeRows::isExpanded(unsigned int row) const {
    Place const place = locate(row);
    return place.branch && place.branch->openAt(place.index);
}

int TreeRows::parentRow(unsigned int row) const {
    Place const place = locate(row);
    if (!place.branch || !place.branch->parent) return -1;
    return static_cast<int>(rowOf(*place.branch->parent, place.branch->index));
}

std::vector<TreeRows::Text> TreeRows::pathOf(unsigned int row) const {
    Place const place = locate(row);
    if (!place.branch) return {};
    LifeGuard const life(life_);
    std::vector<Text> path{rowAt(place).item.name};
    for (Branch const* at = life.alive() ? place.branch : nullptr; at && at->parent; at = at->parent)
        path.push_back(at->item.name);
    return path;
}

void TreeRows::rememberIn(unsigned int branchRow) {
    Place const place = locate(branchRow);
    if (Branch const* const open = place.branch ? place.branch->openAt(place.index) : nullptr)
        rememberIn(*open);
}

unsigned int TreeRows::findLastChild(unsigned int row) const {
    Place const place = locate(row);
    Branch const* const open = place.branch ? place.branch->openAt(place.index) : nullptr;
    return row + (open ? open->below : 0);
}

// Names

int TreeRows::indexIn(Branch const& branch, Text const& name) const {
    auto const& items = branch.list.items;
    if (!items.empty() && items.size() <= fewNames) {
        auto const found = std::ranges::find(items, name, &TreeItem::name);
        return found == items.end() ? -1 : static_cast<int>(found - items.begin());
    }
    if (!items.empty()) {
        if (branch.byName.empty()) branch.byName = namesTable(items);
        std::size_t const mask = branch.byName.size() - 1;
        for (std::size_t slot = hashOf(name) & mask; branch.byName[slot] != nobody; slot = (slot + 1) & mask)
            if (items[branch.byName[slot]].name == name) return static_cast<int>(branch.byName[slot]);
        return -1;
    }
    unsigned int const count = branch.numChildren();
    TreeSource* const asked = count > 0 ? source() : nullptr;
    if (!asked) return -1;
    Asking const asking(*this);
    int found = -1;
    try {
        found = asked->findChild(branch.asParent(), name);
    } catch (...) {
        noteAdaptorFailure("TreeRows");
    }
    if (found != TreeSource::unknown)
        return found >= 0 && static_cast<unsigned int>(found) < count ? found : -1;
    for (unsigned int i = 0; i < count && asking.alive(); ++i)
        if (itemAt(branch, i).name == name) return static_cast<int>(i);
    return -1;
}

std::optional<unsigned int> TreeRows::find(Text const& name) const {
    if (foundVersion_ == version_ && foundName_ == name) return foundRow_;
    LifeGuard const life(life_);
    unsigned int const version = version_;
    std::optional<unsigned int> const first = findFrom(*root_, name);
    if (!life.alive() || version_ != version) return std::nullopt;
    foundName_ = name;
    foundRow_ = first;
    foundVersion_ = version_;
    return first;
}

std::optional<unsigned int> TreeRows::findIn(unsigned int branchRow, Text const& name) const {
    Place const place = locate(branchRow);
    Branch const* const open = place.branch ? place.branch->openAt(place.index) : nullptr;
    return open ? findFrom(*open, name) : std::nullopt;
}

std::optional<unsigned int> TreeRows::findFrom(Branch const& top, Text const& name) const {
    LifeGuard const life(life_);
    unsigned int const version = version_;
    std::optional<unsigned int> first;
    bool isWhole = true;
    Branch::visitOpen(top, [&](Branch const& branch) {
        int const index = indexIn(branch, name);
        isWhole = life.alive() && version_ == version;
        if (!isWhole || index < 0) return isWhole;
        unsigned int const row = rowOf(branch, static_cast<unsigned int>(index));
        if (!first || row < *first) first = row;
        return true;
    });
    return isWhole ? first : std::nullopt;
}

std::optional<unsigned int> TreeRows::findOpen(Text const& name) const {
    if (!openByName_) {
        openByName_.emplace();
        enterOpen(*root_);
    }
    auto const found = openByName_->find(name);
    if (found == openByName_->end() || found->second.size() != 1) return std::nullopt;
    Branch const& branch = *found->second.front();
    return rowOf(*branch.parent, branch.index);
}

void TreeRows::enterOpen(Branch& top) const {
    if (!openByName_) return;
    Branch::visitOpen(top, [this](Branch& branch) {
        if (&branch == root_.get()) return true;
        std::vector<Branch*>& named = (*openByName_)[branch.item.name];
        branch.openSlot = named.size();
        named.push_back(&branch);
        return true;
    });
}

void TreeRows::leaveOpen(Branch& top) const {
    if (!openByName_) return;
    Branch::visitOpen(top, [this](Branch const& branch) {
        auto const found = openByName_->find(branch.item.name);
        std::vector<Branch*>& named = found->second;
        named.back()->openSlot = branch.openSlot;
        named[branch.openSlot] = named.back();
        named.pop_back();
        if (named.empty()) openByName_->erase(found);
        return true;
    });
}

std::vector<TreeItem> TreeRows::expandedItems() const {
    std::vector<TreeItem> items;
    Branch::visitOpen(std::as_const(*root_), [&](Branch const& branch) {
        if (branch.parent) items.push_back(branch.item);
        return true;
    });
    return items;
}

// Closing

void TreeRows::setDefaultBranchState(Text const& name, bool isOpen) {
    if (isOpen)
        remembered_.insert(name);
    else
        remembered_.erase(name);
}

/// In the order of the rows: where names are equal, the last one counts.
void TreeRows::rememberIn(Branch const& branch) {
    struct Step {
        Branch const* branch;
        unsigned int index;
    };
    LifeGuard const life(life_);
    std::vector<Step> path{{&branch, 0}};
    while (!path.empty() && life.alive()) {
        Step& step = path.back();
        Branch const& at = *step.branch;
        // Closed ones matter only where something is to be forgotten.
        bool const asks = !remembered_.empty() && !(at.list.items.empty() && at.list.areLeaves);
        std::size_t const nextOpen = at.openFrom(step.index);
        unsigned int const end = nextOpen < at.open.size() ? at.open[nextOpen].index : at.numChildren();
        for (; asks && step.index < end; ++step.index) {
            TreeItem const item = itemAt(at, step.index);
            if (!life.alive()) return;
            if (item.isBranch()) remembered_.erase(item.name);
        }
        if (nextOpen == at.open.size()) {
            path.pop_back();
            continue;
        }
        step.index = end + 1;
        Branch const* const inner = at.open[nextOpen].branch.get();
        remembered_.insert(inner->item.name);
        path.push_back({inner, 0});
    }
}

unsigned int TreeRows::collapseBranch(unsigned int row) {
    Place const place = locate(row);
    if (!place.branch || isAsking()) return 0;
    std::size_t const at = place.branch->openFrom(place.index);
    Branch* const inner = place.branch->openAt(place.index);
    if (!inner) return 0;
    LifeGuard const life(life_);
    setDefaultBranchState(inner->item.name, false);
    rememberIn(*inner);
    if (!life.alive()) return 0;
    return detach(*place.branch, at)->below;
}

void TreeRows::belowChanged(Branch& branch, unsigned int added, unsigned int gone) {
    for (Branch* above = &branch; above; above = above->parent) {
        above->below += added - gone;
        if (above->parent) above->parent->changedFrom(above->parent->openFrom(above->index));
    }
}

void TreeRows::attach(std::unique_ptr<Branch> branch, Branch& parent, unsigned int index) {
    std::size_t const at = parent.openFrom(index);
    branch->parent = &parent;
    branch->index = index;
    enterOpen(*branch);
    belowChanged(parent, branch->below, 0);
    parent.open.insert(parent.open.begin() + static_cast<std::ptrdiff_t>(at), {index, std::move(branch)});
    parent.changedFrom(at);
    changed();
}

std::unique_ptr<TreeRows::Branch> TreeRows::detach(Branch& parent, std::size_t openIndex) {
    std::unique_ptr<Branch> branch = std::move(parent.open[openIndex].branch);
    parent.open.erase(parent.open.begin() + static_cast<std::ptrdiff_t>(openIndex));
    parent.changedFrom(openIndex);
    leaveOpen(*branch);
    belowChanged(parent, 0, branch->below);
    changed();
    return branch;
}

void TreeRows::replace(Branch& parent, std::size_t openIndex, std::unique_ptr<Branch> branch) {
    std::unique_ptr<Branch>& place = parent.open[openIndex].branch;
    branch->parent = &parent;
    branch->index = place->index;
    leaveOpen(*place);
    enterOpen(*branch);
    belowChanged(parent, branch->below, place->below);
    place = std::move(branch);
    parent.changedFrom(openIndex);
    changed();
}

} // namespace wainscot
