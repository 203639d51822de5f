#include "foundation/layout/layout_p.h"

#include "host/base/convert.h"
#include "host/base/diagnostics.h"
#include "host/drawing/uif_std.h"
#include "host/events/dispatch_scope.h"

#include <algorithm>

namespace wainscot {

namespace {

/// Panels with layouts that are being measured inside each other.
constinit int depth = 0;
constexpr int maxPanelDepth = 200;

/// One step into a panel with a layout.
class Descent {
public:
    Descent() { ++depth; }
    ~Descent() { --depth; }
    Descent(Descent const&) = delete;
    Descent& operator=(Descent const&) = delete;

    bool isTooDeep() const {
        if (depth <= maxPanelDepth) return false;
        Diagnostics::count("layout nested too deep", "panels in panels");
        return true;
    }
};

int orElse(int size, int other) {
    return toSize16(size >= 0 ? size : other);
}

int upTo(int size, int maximum) {
    return maximum >= 0 ? std::min(size, maximum) : size;
}

LayoutOptions inPixels(LayoutOptions options) {
    if (options.unit == LayoutUnit::pixel) return options;
    int const unit = UifStd::getButtonHeight();
    auto const pixels = [unit](int size) { return size < 0 ? size : toSize16(size) * unit; };
    for (XY<int>* const size : {&options.size, &options.minimum, &options.maximum})
        *size = {pixels(size->x), pixels(size->y)};
    return options;
}

Tracks::Need along(int natural, int minimum, int maximum) {
    return {natural, minimum, maximum >= 0 ? maximum : Tracks::unlimited};
}

int added(int a, int b, int c) {
    return static_cast<int>(std::min<std::int64_t>(std::int64_t(a) + b + c, 1 << 28));
}

/// From the beginning of one track to the end of another.
Tracks::Place range(std::vector<Tracks::Place> const& places, int first, int count) {
    Tracks::Place const& last = places[static_cast<std::size_t>(first + count - 1)];
    int const start = places[static_cast<std::size_t>(first)].start;
    return {start, last.end() - start};
}

Tracks::Place aligned(LayoutAlign alignment, Tracks::Place const& room, int natural, int maximum) {
    int const wanted = alignment == LayoutAlign::fill ? room.size : std::min(natural, room.size);
    int const size = upTo(wanted, maximum);
    int const free = room.size - size;
    if (alignment == LayoutAlign::centre) return {room.start + free / 2, size};
    return {alignment == LayoutAlign::end ? room.start + free : room.start, size};
}

/// Marks that children are being placed, while its layout lives.
class Placing {
public:
    Placing(bool& mark, LifeToken const& life) : mark_(mark), life_(life) { mark_ = true; }
    ~Placing() {
        if (life_.alive()) mark_ = false;
    }
    Placing(Placing const&) = delete;
    Placing& operator=(Placing const&) = delete;

private:
    bool& mark_;
    LifeGuard life_;
};

} // namespace

int Layout::columnGap() const {
    return gaps_.x >= 0 ? gaps_.x : UifStd::getWidgetGap();
}

int Layout::rowGap() const {
    return gaps_.y >= 0 ? gaps_.y : UifStd::getRowGap();
}

Layout::Margins Layout::margins() const {
    int const standard = outer_ ? 0 : UifStd::getWidgetGap();
    auto const side = [&](int margin) { return margin >= 0 ? margin : standard; };
    return {side(margins_.left), side(margins_.bottom), side(margins_.right), side(margins_.top)};
}

// Measuring

/// An item that is being asked stays until the answer is there.
void Layout::dropDead() {
    if (!hasDead_ || isMeasuring_) return;
    hasDead_ = false;
    std::erase_if(items_, [](std::unique_ptr<Item> const& item) {
        return !item->isSpacer && !item->nested && !item->child.get();
    });
}

bool Layout::isShown(Item const& item, Glob const* panel) {
    if (item.isSpacer || item.nested) return true;
    Glob const* const child = item.child.get();
    return child && child->isVisible() && child->parent() == panel;
}

/// A layout in which nothing is shown still has its gap, as an empty panel has.
SizeNeeds Layout::measured(Item& item) {
    if (item.nested) {
        item.needs = item.nested->needs();
    } else if (item.isSpacer) {
        item.needs.natural = item.needs.minimum = item.made;
    } else if (Glob const* const child = item.stale ? item.child.get() : nullptr) {
        item.stale = false;
        item.least = child->getMinSize();
        item.widthAsked = -1;
        // Whoever throws keeps its former needs, and is asked again in the next layout.
        if (!runHandler("sizeNeeds", [&] { item.needs = child->sizeNeeds(); })) item.stale = true;
    }
    LayoutOptions const& options = item.inPixels = inPixels(item.options);
    auto const both = [&](int XY<int>::*axis) {
        int const natural = orElse(options.size.*axis, orElse(item.needs.natural.*axis, item.made.*axis));
        int const own =
            std::max(std::min(natural, orElse(item.needs.minimum.*axis, natural)), item.least.*axis);
        int const minimum = orElse(options.minimum.*axis, own);
        return XY<int>{upTo(std::max(natural, minimum), options.maximum.*axis),
                       upTo(minimum, options.maximum.*axis)};
    };
    XY<int> const x = both(&XY<int>::x);
    XY<int> const y = both(&XY<int>::y);
    return {{x.x, y.x}, {x.y, y.y}, item.needs.heightFollowsWidth && options.size.y < 0};
}

/// Finds out where the items lie, and what the columns need. A child that is asked may add others, or remove
/// some: the former wait for the next layout.
void Layout::measureColumns() {
    int shown = 0;
    Cell end{0, 0, 0, 0};
    Glob const* const owner = panel();
    for (std::size_t i = 0; i < items_.size(); ++i) {
        Item* const item = items_[i].get();
        item->shown = isShown(*item, owner);
        if (!item->shown) continue;
        item->at = cellOf(item->cell, shown++);
        end.columns = std::max(end.columns, item->at.column + item->at.columns);
        end.rows = std::max(end.rows, item->at.row + item->at.rows);
    }
    columns_->reset(static_cast<std::size_t>(end.columns), columnGap());
    rows_->reset(static_cast<std::size_t>(end.rows), rowGap());
    stretch(*columns_, *rows_);
    for (std::size_t i = 0; i < items_.size(); ++i) {
        Item* const item = items_[i].get();
        if (!item->shown) continue;
        SizeNeeds const needs = item->wanted = measured(*item);
        auto const column = static_cast<std::size_t>(item->at.column);
        auto const row = static_cast<std::size_t>(item->at.row);
        if (item->options.stretch > 0 && stretchesRows()) rows_->stretchAtLeast(row, item->options.stretch);
        if (item->options.stretch > 0 && !stretchesRows())
            columns_->stretchAtLeast(column, item->options.stretch);
        columns_->need(column, static_cast<std::size_t>(item->at.columns),
                       along(needs.natural.x, needs.minimum.x, item->inPixels.maximum.x));
        rows_->need(row, static_cast<std::size_t>(item->at.rows),
                    along(needs.natural.y, needs.minimum.y, item->inPixels.maximum.y));
        needs_.heightFollowsWidth = needs_.heightFollowsWidth || needs.heightFollowsWidth;
    }
    if (hasEqualColumns()) columns_->makeEqual();
    columns_->finish();
    rows_->finish();
}

void Layout::measure() {
    if (measured_) return;
    measured_ = true;
    dropDead();
    needs_ = {};
    bool const isInner = std::exchange(isMeasuring_, true);
    measureColumns();
    isMeasuring_ = isInner;
    Margins const edge = margins();
    int const width = added(columns_->natural(), edge.left, edge.right);
    int height = added(rows_->natural(), edge.bottom, edge.top);
    if (needs_.heightFollowsWidth) height = heightForWidth(width);
    needs_.natural = {toSize16(width), toSize16(height)};
    int const least = added(rows_->minimum(), edge.bottom, edge.top);
    needs_.minimum = {toSize16(added(columns_->minimum(), edge.left, edge.right)),
                      toSize16(std::min(least, height))};
}

SizeNeeds Layout::needs() {
    DispatchScope const scope;
    RetiredLayouts::Hold const hold;
    Descent const descent;
    if (descent.isTooDeep()) return {};
    measure();
    return needs_;
}

XY<int> Layout::naturalSize() {
    return needs().natural;
}

XY<int> Layout::minimumSize() {
    return needs().minimum;
}

int Layout::heightForWidth(int width) {
    DispatchScope const scope;
    RetiredLayouts::Hold const hold;
    Descent const descent;
    if (descent.isTooDeep()) return 0;
    measure();
    if (!needs_.heightFollowsWidth) return needs_.natural.y;
    if (width == widthAsked_) return heightAnswered_;
    Margins const edge = margins();
    Tracks rows;
    measureRows(added(std::max(width, 0), -edge.left, -edge.right), rows);
    widthAsked_ = width;
    heightAnswered_ = toSize16(added(rows.natural(), edge.bottom, edge.top));
    return heightAnswered_;
}

/// The rows once the columns share a width.
void Layout::measureRows(int width, Tracks& rows) {
    std::vector<Tracks::Place> const columns = columns_->shared(width);
    rows.reset(rows_->size(), rowGap());
    rows.takeStretch(*rows_);
    for (std::size_t i = 0; i < items_.size(); ++i) {
        Item* const item = items_[i].get();
        if (!item->shown) continue;
        SizeNeeds needs = item->wanted;
        if (needs.heightFollowsWidth) {
            Tracks::Place const room = range(columns, item->at.column, item->at.columns);
            LayoutOptions const& options = item->inPixels;
            int const at = aligned(options.horizontal, room, needs.natural.x, options.maximum.x).size;
            needs.natural.y =
                upTo(std::max(heightOf(*item, at), orElse(options.minimum.y, 0)), options.maximum.y);
            needs.minimum.y = options.minimum.y >= 0 ? needs.minimum.y : needs.natural.y;
        }
        rows.need(static_cast<std::size_t>(item->at.row), static_cast<std::size_t>(item->at.rows),
                  along(needs.natural.y, needs.minimum.y, item->inPixels.maximum.y));
    }
    rows.finish();
}

int Layout::heightOf(Item& item, int width) {
    if (item.nested) return item.nested->heightForWidth(width);
    Glob const* const child = item.child.get();
    if (child && item.widthAsked != width) {
        item.widthAsked = width;
        runHandler("heightForWidth", [&] { item.heightAnswered = toSize16(child->heightForWidth(width)); });
    }
    return item.heightAnswered;
}

// Placing

void Layout::layOutNow() {
    Layout& top = root();
    Glob* const owner = panel();
    if (!owner || top.isPlacing_) return;
    DispatchScope const scope;
    RetiredLayouts::Hold const hold;
    LifeGuard const life(top.life_);
    owner->layoutDone();
    if (top.growsPanel_) top.growPanel();
    if (!life.alive() || !top.panel()) return;
    ++top.numLayouts_;
    std::vector<Placed> placed;
    top.measure();
    if (!life.alive() || top.panel() != owner) return;
    top.place(owner->getUserArea(), placed);
    top.apply(placed);
}

void Layout::growPanel() {
    Glob& owner = *panel();
    SizeNeeds const wanted = owner.sizeNeeds();
    // What has not grown leaves the panel as small as the user has made it.
    auto const grown = [](int now, int needed, int before) {
        return needed > before ? std::max(now, needed) : now;
    };
    int const width = grown(owner.width(), wanted.natural.x, grownFor_.x);
    int const height = wanted.heightFollowsWidth ? owner.heightForWidth(width) : wanted.natural.y;
    XY<int> const size{width, grown(owner.height(), height, grownFor_.y)};
    grownFor_ = {wanted.natural.x, height};
    if (size != owner.size()) owner.resize(size.x, size.y);
    if (is_good_glob_ptr(&owner)) owner.layoutDone();
}

/// Rows are counted from above, places from below.
void Layout::place(IntBox const& area, std::vector<Placed>& placed) {
    measure();
    Margins const edge = margins();
    int const width = std::max(added(area.width(), -edge.left, -edge.right), 0);
    int const height = std::max(added(area.height(), -edge.bottom, -edge.top), 0);
    std::vector<Tracks::Place> const columns = columns_->shared(width);
    Tracks wrapped;
    if (needs_.heightFollowsWidth) measureRows(width, wrapped);
    std::vector<Tracks::Place> const rows = (needs_.heightFollowsWidth ? wrapped : *rows_).shared(height);
    bool const mirrored = UifStd::isRightToLeft();
    for (std::size_t i = 0; i < items_.size(); ++i) {
        Item* const item = items_[i].get();
        if (!item->shown || item->isSpacer) continue;
        Tracks::Place const across = range(columns, item->at.column, item->at.columns);
        Tracks::Place const down = range(rows, item->at.row, item->at.rows);
        LayoutOptions const& options = item->inPixels;
        SizeNeeds const& needs = item->wanted;
        Tracks::Place const x = aligned(options.horizontal, across, needs.natural.x, options.maximum.x);
        int const natural = needs.heightFollowsWidth ? heightOf(*item, x.size) : needs.natural.y;
        Tracks::Place const y = aligned(options.vertical, down, natural, options.maximum.y);
        int const left = mirrored ? area.x2 - edge.left - x.end() : area.x1 + edge.left + x.start;
        int const bottom = area.y2 - edge.top - y.end();
        IntBox const box = IntBox::sized({left, bottom}, {toSize16(x.size), toSize16(y.size)});
        if (item->nested)
            item->nested->place(box, placed);
        else
            placed.push_back({item->child, box});
    }
}

/// Nothing of this is touched once a child has been resized: its handlers may have destroyed all of it.
void Layout::apply(std::vector<Placed> const& placed) {
    HandlerRef<Glob> const owner = root_->panel;
    Placing const placing(isPlacing_, life_);
    Glob* panel = owner.get();
    for (Placed const& next : placed) {
        if (!panel) return;
        Glob* const child = next.child.get();
        if (!child || child->parent() != panel || child->box() == next.box) continue;
        runHandler("reshape", [&] { panel->reshapeWidgetAt(child, next.box.bottomLeft(), next.box.size()); });
        panel = owner.get();
    }
}

void sizeToLayout(Glob& panel) {
    DispatchScope const scope;
    LifeGuard const life = panel.guard();
    XY<int> const natural = panel.sizeNeeds().natural;
    if (natural.x >= 0 && natural.y >= 0) panel.resize(natural.x, natural.y);
    if (life.alive()) panel.handleLayout();
}

} // namespace wainscot
