#include "host/objects/placement_p.h"

#include "host/events/dispatch_scope.h"
#include "host/objects/description.h"
#include "host/objects/glob_notices.h"
#include "host/objects/glob_side_p.h"
#include "host/objects/root_host.h"
#include "host/objects/tree.h"

#include <cmath>
#include <limits>

namespace wainscot {

namespace {

constexpr double maxSize = std::numeric_limits<unsigned short>::max();
/// Sums of places beyond this could overflow.
constexpr int maxPlace = 1 << 29;

unsigned short toSize(double value) {
    if (!(value > 0.0)) return 0;
    return static_cast<unsigned short>(std::lround(std::min(value, maxSize)));
}

int saturatingAdd(int a, int b) {
    auto const sum = std::int64_t(a) + b;
    return static_cast<int>(std::clamp<std::int64_t>(sum, -maxPlace, maxPlace));
}

int alignedStart(WidgetAlignment alignment, int low, int high, int size) {
    switch (alignment) {
    case WidgetAlignment::start:
        return low;
    case WidgetAlignment::end:
        return high - size;
    case WidgetAlignment::centre:
        break;
    }
    return low + (high - low - size) / 2;
}

XY<int> besideSibling(WidgetPosition const& position, IntBox const& sibling, XY<int> size) {
    int const gap = std::clamp(position.gap(), -maxPlace, maxPlace);
    int const alongX = alignedStart(position.alignment(), sibling.x1, sibling.x2, size.x);
    int const alongY = alignedStart(position.alignment(), sibling.y1, sibling.y2, size.y);
    switch (position.relativity()) {
    case WidgetRelativity::above:
        return {alongX, saturatingAdd(sibling.y2, gap)};
    case WidgetRelativity::below:
        return {alongX, saturatingAdd(sibling.y1 - size.y, -gap)};
    case WidgetRelativity::leftOf:
        return {saturatingAdd(sibling.x1 - size.x, -gap), alongY};
    case WidgetRelativity::rightOf:
        break;
    }
    return {saturatingAdd(sibling.x2, gap), alongY};
}

XY<int> fromCorner(WidgetPosition const& position, IntBox const& area, XY<int> size) {
    XY<int> const offset = Placement::clampPlace(position.offset());
    auto const left = [&] { return saturatingAdd(area.x1, offset.x); };
    auto const right = [&] { return saturatingAdd(area.x2 - size.x, -offset.x); };
    auto const bottom = [&] { return saturatingAdd(area.y1, offset.y); };
    auto const top = [&] { return saturatingAdd(area.y2 - size.y, -offset.y); };
    auto const middleX = [&] { return saturatingAdd(area.x1 + (area.width() - size.x) / 2, offset.x); };
    auto const middleY = [&] { return saturatingAdd(area.y1 + (area.height() - size.y) / 2, offset.y); };
    switch (position.origin()) {
    case CoordinateOrigin::bottomLeft:
        return {left(), bottom()};
    case CoordinateOrigin::bottomRight:
        return {right(), bottom()};
    case CoordinateOrigin::topLeft:
        return {left(), top()};
    case CoordinateOrigin::topRight:
        return {right(), top()};
    case CoordinateOrigin::leftCentre:
        return {left(), middleY()};
    case CoordinateOrigin::rightCentre:
        return {right(), middleY()};
    case CoordinateOrigin::centre:
        break;
    }
    return {middleX(), middleY()};
}

} // namespace

XY<int> Placement::clampPlace(XY<int> place) {
    return {std::clamp(place.x, -maxPlace, maxPlace), std::clamp(place.y, -maxPlace, maxPlace)};
}

void Placement::setRule(Glob& child, WidgetPosition const& position) {
    child.setFlag(Glob::relativeFlag, position.isRelative());
    child.setFlag(Glob::userAreaFlag, position.inUserArea());
    child.origin_ = position.origin();
    child.offset_ = position.offset();
    if (position.isRelative()) child.side().relative = position;
}

WidgetPosition Placement::rule(Glob const& child) {
    if (child.hasFlag(Glob::relativeFlag)) return child.side_->relative;
    return {child.origin_, child.offset_, child.hasFlag(Glob::userAreaFlag)};
}

XY<int> Placement::placeFor(Glob const& parent, WidgetPosition const& position, XY<int> size,
                            XY<int> present) {
    if (position.isRelative()) {
        Glob const* const sibling = position.sibling();
        bool const usable = sibling && sibling->parent() == &parent;
        return usable ? besideSibling(position, sibling->box(), size) : present;
    }
    return fromCorner(position, position.inUserArea() ? parent.getUserArea() : parent.bounds(), size);
}

XY<int> Placement::inCorner(WidgetPosition const& position, IntBox const& area, XY<int> size) {
    return fromCorner(position, area, size);
}

void Placement::moveTo(Glob& glob, XY<int> place) {
    place = clampPlace(place);
    if (glob.position_ == place) return;
    DispatchScope const scope;
    glob.damageWithSurround();
    glob.position_ = place;
    glob.wholeDamaged_ = 0;
    glob.damageWithSurround();
    bool const isWindow = !glob.parent_ && glob.ownCanvas_.surface();
    if (isWindow && iRootHost::current()) iRootHost::current()->rootMoved(glob);
    boxChanged(glob);
}

void Placement::setSize(Glob& glob, double width, double height) {
    unsigned short const newWidth = toSize(width);
    unsigned short const newHeight = toSize(height);
    if (newWidth == glob.width_ && newHeight == glob.height_) return;
    DispatchScope const scope;
    glob.damageWithSurround();
    glob.oldWidth_ = glob.width_;
    glob.oldHeight_ = glob.height_;
    glob.width_ = newWidth;
    glob.height_ = newHeight;
    glob.wholeDamaged_ = 0;
    bool const isWindow = !glob.parent_ && glob.ownCanvas_.surface();
    if (isWindow && iRootHost::current()) iRootHost::current()->rootResized(glob);
    glob.damageWithSurround();
    glob.tellParent(ChildChange::size);
    LifeGuard const life = glob.guard();
    boxChanged(glob);
    if (life.alive()) glob.reshape();
}

void Placement::boxChanged(Glob& glob) {
    Tree::childBoxChanged(glob);
    glob.describeChanged(DescriptionChange::place);
    if (glob.hasFlag(Glob::watchedFlag)) GlobNotices::moved(glob);
}

void Placement::placeChild(Glob& parent, Glob& child) {
    moveTo(child, placeFor(parent, rule(child), child.size(), child.position_));
}

/// Nothing of it can be seen here yet.
void Placement::placeNewChild(Glob& parent, Glob& child) {
    XY<int> const place = clampPlace(placeFor(parent, rule(child), child.size(), child.position_));
    if (child.position_ == place) return;
    child.position_ = place;
    child.wholeDamaged_ = 0;
    boxChanged(child);
}

Glob* Placement::siblingOf(Glob const& parent, Glob const& child) {
    if (!child.hasFlag(Glob::relativeFlag)) return nullptr;
    Glob* const sibling = child.side_->relative.sibling();
    return sibling && sibling->parent() == &parent ? sibling : nullptr;
}

/// A child next to a sibling is placed after that sibling; a ring of siblings is broken where it closes.
void Placement::placeChildren(Glob& parent) {
    DispatchScope const scope;
    std::vector<HandlerRef<Glob>> children;
    for (Glob* child = parent.firstChild_; child; child = child->next_) {
        child->setFlag(Glob::placedFlag, false);
        children.emplace_back(child);
    }
    LifeGuard const life = parent.guard();
    std::vector<Glob*> waiting;
    for (HandlerRef<Glob> const& ref : children) {
        Glob* const first = ref.get();
        if (!first || first->parent() != &parent) continue;
        waiting.clear();
        for (Glob* child = first; child && !child->hasFlag(Glob::placedFlag);
             child = siblingOf(parent, *child)) {
            child->setFlag(Glob::placedFlag, true);
            waiting.push_back(child);
        }
        for (auto child = waiting.rbegin(); child != waiting.rend(); ++child) {
            if (is_good_glob_ptr(*child) && (*child)->parent() == &parent) placeChild(parent, **child);
            if (!life.alive()) return;
        }
    }
}

} // namespace wainscot
