#include "foundation/layout/layout.h"

#include "foundation/layout/layout_p.h"
#include "host/base/convert.h"
#include "host/base/diagnostics.h"
#include "host/events/dispatch_scope.h"

#include <algorithm>

namespace wainscot {

namespace {

bool refuse(char const* why) {
    Diagnostics::count("layout item refused", why);
    return false;
}

/// How many layouts are at work.
constinit int numHolds = 0;

std::vector<std::unique_ptr<Layout>>& retired() {
    static std::vector<std::unique_ptr<Layout>> layouts;
    return layouts;
}

} // namespace

RetiredLayouts::Hold::Hold() {
    ++numHolds;
}

RetiredLayouts::Hold::~Hold() {
    if (--numHolds > 0 || retired().empty()) return;
    std::vector<std::unique_ptr<Layout>> const gone = std::exchange(retired(), {});
}

void RetiredLayouts::add(std::unique_ptr<Layout> layout) {
    if (numHolds > 0) retired().push_back(std::move(layout));
}

void Layout::retire(std::unique_ptr<Layout> layout) {
    RetiredLayouts::add(std::move(layout));
}

Layout::Layout()
    : root_(std::make_unique<Root>()), columns_(std::make_unique<Tracks>()),
      rows_(std::make_unique<Tracks>()) {}

Layout::~Layout() {
    life_.end();
}

Layout& Layout::root() {
    Layout* layout = this;
    while (layout->outer_) layout = layout->outer_;
    return *layout;
}

Layout const& Layout::root() const {
    return const_cast<Layout*>(this)->root();
}

Glob* Layout::panel() const {
    return root().root_->panel.get();
}

// Items

int Layout::depthAbove() const {
    int depth = 0;
    for (Layout const* layout = outer_; layout; layout = layout->outer_) ++depth;
    return depth;
}

void Layout::noteDepth() {
    int depth = depthBelow_;
    for (Layout* layout = outer_; layout; layout = layout->outer_)
        layout->depthBelow_ = std::max(layout->depthBelow_, ++depth);
}

bool Layout::mayAdd(Cell const& cell) const {
    bool const inside = cell.column >= 0 && cell.row >= 0 && cell.column < maxTracks && cell.row < maxTracks;
    return inside || refuse("no such cell");
}

bool Layout::Item::isOwner() {
    bool const isOurs = owned && child.get() && !child.get()->parent();
    if (!isOurs) static_cast<void>(owned.release());
    return isOurs;
}

Layout::Item::~Item() {
    isOwner();
}

bool Layout::accept(Glob* child) const {
    if (!is_good_glob_ptr(child) || child->isDying()) return refuse("no child");
    return !root().find(*child) || refuse("it is an item already");
}

Layout::Item* Layout::find(Glob const& child) const {
    auto const& items = root().root_->items;
    auto const found = items.find(&child);
    if (found == items.end() || found->second.child.get() != &child) return nullptr;
    bool const isOurs = !outer_ || found->second.layout == this;
    return isOurs ? found->second.item : nullptr;
}

Layout::Item& Layout::append(Cell const& cell, LayoutOptions const& options) {
    items_.push_back(std::make_unique<Item>());
    Item& item = *items_.back();
    item.cell = {cell.column, cell.row, std::clamp(cell.columns, 1, maxTracks - cell.column),
                 std::clamp(cell.rows, 1, maxTracks - cell.row)};
    item.options = options;
    return item;
}

bool Layout::addItem(Glob* child, Cell const& cell, LayoutOptions const& options) {
    if (!mayAdd(cell) || !accept(child)) return false;
    Item& item = append(cell, options);
    item.child = HandlerRef<Glob>(child);
    item.made = child->size();
    root().root_->items[child] = {this, &item, item.child};
    changed();
    return true;
}

bool Layout::addItem(std::unique_ptr<Glob> child, Cell const& cell, LayoutOptions const& options) {
    if (!addItem(child.get(), cell, options)) return false;
    HandlerRef<Glob> const added = items_.back()->child;
    LifeGuard const life(life_);
    if (Glob* const owner = panel())
        owner->addChild(std::move(child));
    else
        items_.back()->owned = std::move(child);
    if (!added.get() && life.alive()) hasDead_ = true;
    return added.get() != nullptr;
}

bool Layout::addItem(std::unique_ptr<Layout> nested, Cell const& cell, LayoutOptions const& options) {
    if (!mayAdd(cell)) return false;
    if (!nested) return refuse("no layout");
    if (nested.get() == &root()) return refuse("a layout cannot lie in itself");
    if (depthAbove() + nested->depthBelow() + 2 > maxDepth) return refuse("nested too deep");
    Layout& inner = *nested;
    Item& item = append(cell, options);
    item.nested = std::move(nested);
    inner.item_ = &item;
    inner.mergeInto(*this);
    inner.noteDepth();
    LifeGuard const life(life_);
    if (panel()) inner.adoptChildren();
    if (life.alive()) changed();
    return life.alive();
}

bool Layout::addSpacer(int size, Cell const& cell, LayoutOptions const& options) {
    if (!mayAdd(cell)) return false;
    Item& item = append(cell, options);
    item.isSpacer = true;
    int const length = toSize16(size);
    item.made = stretchesRows() ? XY<int>{0, length} : XY<int>{length, 0};
    changed();
    return true;
}

/// What both have stays where it was first.
void Layout::mergeInto(Layout& outer) {
    std::unordered_map<Glob const*, Root::Entry> const own = std::move(root_->items);
    outer_ = &outer;
    auto& known = root().root_->items;
    for (auto const& [child, entry] : own) {
        if (!entry.child.get()) continue;
        bool const isKnown = known.contains(child) && known[child].child.get() == child;
        if (isKnown) {
            refuse("it is an item already");
            entry.item->child = {};
            entry.layout->hasDead_ = true;
        } else {
            known[child] = entry;
        }
    }
    root_.reset();
}

/// A child that cannot become one of the panel's is destroyed by what refused it.
void Layout::adoptChildren() {
    DispatchScope const scope;
    std::vector<std::unique_ptr<Glob>> owned;
    collectChildren(owned);
    HandlerRef<Glob> const owner(panel());
    for (std::unique_ptr<Glob>& child : owned)
        if (Glob* const glob = owner.get()) glob->addChild(std::move(child));
}

void Layout::collectChildren(std::vector<std::unique_ptr<Glob>>& owned) {
    for (std::unique_ptr<Item> const& item : items_) {
        if (item->owned && item->isOwner()) owned.push_back(std::move(item->owned));
        if (item->nested) item->nested->collectChildren(owned);
    }
}

bool Layout::setOptions(Glob& child, LayoutOptions const& options) {
    Item* const item = find(child);
    if (!item) return refuse("options for no item");
    if (item->options == options) return true;
    item->options = options;
    changed();
    return true;
}

bool Layout::setOptions(Layout& nested, LayoutOptions const& options) {
    if (nested.outer_ != this) return refuse("options for no item");
    nested.item_->options = options;
    changed();
    return true;
}

bool Layout::remove(Glob& child) {
    if (!find(child)) return refuse("removal of no item");
    root().forget(child);
    changed();
    return true;
}

bool Layout::remove(Layout& nested) {
    if (nested.outer_ != this) return refuse("removal of no item");
    nested.forgetChildren();
    retire(std::move(nested.item_->nested));
    hasDead_ = true;
    changed();
    return true;
}

void Layout::forgetChildren() {
    for (std::unique_ptr<Item> const& item : items_) {
        if (Glob const* const child = item->child.get()) root().forget(*child);
        if (item->nested) item->nested->forgetChildren();
    }
}

void Layout::forget(Glob const& child) {
    auto const found = root_->items.find(&child);
    if (found == root_->items.end()) return;
    Root::Entry const entry = found->second;
    root_->items.erase(found);
    entry.item->isOwner();
    entry.item->child = {};
    entry.layout->hasDead_ = true;
    std::unique_ptr<Glob> const owned = std::move(entry.item->owned);
}

std::size_t Layout::numItems() const {
    return items_.size();
}

// Distances

void Layout::setGaps(int betweenColumns, int betweenRows) {
    gaps_ = {std::min(betweenColumns, int(toSize16(betweenColumns))),
             std::min(betweenRows, int(toSize16(betweenRows)))};
    changed();
}

void Layout::setMargins(Margins const& margins) {
    auto const kept = [](int margin) { return std::min(margin, int(toSize16(margin))); };
    margins_ = {kept(margins.left), kept(margins.bottom), kept(margins.right), kept(margins.top)};
    changed();
}

// Changes

void Layout::attach(Glob* panel) {
    if (outer_) return;
    root_->panel = HandlerRef<Glob>(panel);
    forgetNeeds();
    if (!panel) return;
    LifeGuard const life(life_);
    adoptChildren();
    if (life.alive()) changed();
}

void Layout::changed() {
    setStale();
    Glob* const owner = panel();
    if (!owner) return;
    owner->askForLayout();
    owner->needsChanged();
}

void Layout::setStale() {
    for (Layout* layout = this; layout; layout = layout->outer_) {
        layout->measured_ = false;
        layout->widthAsked_ = -1;
    }
}

void Layout::forgetNeeds() {
    measured_ = false;
    widthAsked_ = -1;
    for (std::unique_ptr<Item> const& item : items_) {
        item->stale = true;
        if (item->nested) item->nested->forgetNeeds();
    }
}

/// While the children are placed, their sizes are those that were given to them here.
bool Layout::childChanged(Glob& child, ChildChange change) {
    Item* const item = find(child);
    if (!item || (isPlacing_ && change == ChildChange::size)) return false;
    Layout& layout = *root_->items[&child].layout;
    Glob* const owner = panel();
    // Then those above know already.
    bool const isKnown = item->stale && !layout.measured_ && owner && owner->isLayoutPending();
    if (isKnown && change == ChildChange::needs) return false;
    if (change == ChildChange::removed)
        forget(child);
    else if (change == ChildChange::size || change == ChildChange::added)
        item->made = child.size();
    item->stale = true;
    layout.setStale();
    if (owner) owner->askForLayout();
    return true;
}

} // namespace wainscot
