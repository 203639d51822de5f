#include "host/objects/glob.h"

#include "host/base/configb.h"
#include "host/base/diagnostics.h"
#include "host/drawing/damage.h"
#include "host/events/dispatch_scope.h"
#include "host/events/event_system.h"
#include "host/messages/handler_ref.h"
#include "host/objects/activity_p.h"
#include "host/objects/description.h"
#include "host/objects/description_listener.h"
#include "host/objects/glob_memory_p.h"
#include "host/objects/glob_side_p.h"
#include "host/objects/kbd_focus.h"
#include "host/objects/lifetime_p.h"
#include "host/objects/placement_p.h"
#include "host/objects/root_host.h"
#include "host/objects/tree.h"

#include <algorithm>
#include <cmath>

namespace wainscot {

namespace {

bool refuse(char const* what) {
    Diagnostics::count("tree operation refused", what);
    return false;
}

} // namespace

Glob::Glob(GlobCreationInfo const& info) : flags_(0), ownCanvas_(*this), palette_(info.palette) {
    init({info.width, info.height}, info.canvas, info.opaque);
    if (!info.name.empty()) setName(info.name);
}

Glob::Glob(unsigned short width, unsigned short height, Palette const& palette, bool opaque, Canvas* canvas)
    : flags_(0), ownCanvas_(*this), palette_(palette) {
    init({width, height}, canvas, opaque);
}

Glob::Glob(configb const& settings, unsigned short width, unsigned short height)
    : flags_(0), ownCanvas_(*this) {
    init({width, height}, nullptr, true);
    LightweightString<char> savedName;
    if (settings.in("name", savedName)) setName(savedName);
    settings.in("x", position_.x);
    settings.in("y", position_.y);
    offset_ = position_;
    bool saved = true;
    if (settings.in("visible", saved)) setFlag(visibleFlag, saved);
    if (settings.in("active", saved)) setFlag(activeFlag, saved);
}

void Glob::init(XY<int> size, Canvas* canvas, bool opaque) {
    Liveness::markTreeObject(static_cast<EventHandler*>(this));
    flags_ = visibleFlag | activeFlag | trashableFlag | canBeItFlag | resizableFlag | reparentableFlag;
    setFlag(opaqueFlag, opaque);
    width_ = oldWidth_ = static_cast<unsigned short>(size.x);
    height_ = oldHeight_ = static_cast<unsigned short>(size.y);
    canvas_ = canvas ? canvas : &ownCanvas_;
    if (canvas) canvas->share(*this);
}

Glob::~Glob() {
    if (!isDying()) Lifetime::detachFromDestructor(*this);
}

void* Glob::operator new(std::size_t size) {
    return GlobMemory::allocate(size);
}

void Glob::operator delete(void* memory) {
    GlobMemory::free(memory);
}

void Glob::operator delete(Glob* glob, std::destroying_delete_t) {
    Lifetime::destroy(*glob);
}

Glob::Side& Glob::side() {
    if (!side_) side_ = std::make_unique<Side>();
    return *side_;
}

Glob* Glob::asGlob() {
    return this;
}

IdStamp Glob::windowStamp() const {
    return getRootParent(const_cast<Glob*>(this))->idStamp();
}

// Tree

void Glob::getChildren(std::vector<Glob*>& children) const {
    children.reserve(children.size() + numChildren_);
    for (Glob* child = firstChild_; child; child = child->next_) children.push_back(child);
}

Glob* Glob::getWidget(Glob* child) const {
    return is_good_glob_ptr(child) && child->parent_ == this ? child : nullptr;
}

Glob* Glob::getWidget(unsigned short index) const {
    return index < numChildren_ ? Tree::childAt(const_cast<Glob&>(*this), index) : nullptr;
}

bool Glob::isWithin(Glob const* glob, Glob const* root) {
    return glob && root && (glob == root || isParentedTo(glob, root));
}

bool Glob::isParentedTo(Glob const* glob, Glob const* ancestor) {
    if (!glob || !ancestor) return false;
    for (glob = glob->parent_; glob; glob = glob->parent_)
        if (glob == ancestor) return true;
    return false;
}

Glob* Glob::getRootParent(Glob* glob) {
    while (glob && glob->parent_) glob = glob->parent_;
    return glob;
}

bool Glob::mayTake(Glob const* child) const {
    if (!is_good_glob_ptr(child) || !Tree::mayAdopt(this, child)) return false;
    bool const isWindow = !child->parent_ && child->ownCanvas_.surface();
    return !isWindow;
}

Glob* Glob::addChild(Glob* child, WidgetPosition const& position, WidgetSurround surround) {
    // Keeps the memory of both, so that both can be asked whether they are dying.
    DispatchScope const scope;
    if (!mayTake(child)) {
        refuse("addChild");
        return nullptr;
    }
    bool const isNew = child->parent_ != this;
    if (isNew) {
        KbdFocus::joinTree(*child);
        if (child->parent_ && !moveHere(child)) return nullptr;
        Tree::link(*this, *child);
    }
    Placement::setRule(*child, position);
    setWidgetBorderStyle(child, surround);
    if (isNew)
        Placement::placeNewChild(*this, *child);
    else
        Placement::placeChild(*this, *child);
    if (isDying() || child->isDying()) return nullptr;
    child->setFlag(dirtyFlag, true);
    child->damageWithSurround();
    describeChanged(DescriptionChange::children);
    return child;
}

/// Takes it out of its parent. False when somebody who was told of that has moved or destroyed it.
bool Glob::moveHere(Glob* child) {
    LifeGuard const life = guard();
    std::unique_ptr<Glob> taken = child->parent_->takeWidget(child);
    if (!taken || !life.alive() || !mayTake(child)) return false;
    static_cast<void>(taken.release());
    return true;
}

Glob* Glob::addWidget(Glob* child, int x, int y, CoordinateOrigin origin, WidgetSurround surround,
                      Glob* before) {
    DispatchScope const scope;
    Glob* const added = addChild(child, WidgetPosition(origin, {x, y}), surround);
    if (added && before && before != added && getWidget(before)) {
        Tree::unlink(*added);
        Tree::link(*this, *added, before);
        added->damageWithSurround();
    }
    return added;
}

Glob* Glob::addWidgetRelative(Glob* child, Glob* sibling, int gap, WidgetRelativity relativity,
                              WidgetSurround surround, WidgetAlignment alignment) {
    if (!getWidget(sibling) || sibling == child) {
        refuse("addWidgetRelative");
        return nullptr;
    }
    return addChild(child, WidgetPosition(sibling, gap, relativity, alignment), surround);
}

void Glob::removeWidget(Glob*& child, bool redraw) {
    Glob* const removed = getWidget(std::exchange(child, nullptr));
    if (!removed) {
        refuse("removeWidget");
        return;
    }
    if (!redraw) removed->setFlag(visibleFlag, false);
    delete removed;
}

std::unique_ptr<Glob> Glob::takeWidget(Glob* child) {
    DispatchScope const scope;
    Glob* const taken = getWidget(child);
    if (!taken || taken->isDying()) return nullptr;
    LifeGuard const life = taken->guard();
    taken->damageWithSurround();
    HandlerRef<Glob> const holder = taken->loseInput();
    Tree::unlink(*taken);
    describeChanged(DescriptionChange::children);
    tellCaptureLost(holder);
    return std::unique_ptr<Glob>(life.alive() && !taken->parent_ ? taken : nullptr);
}

void Glob::setWidgetDetails(WidgetDetails const& details) {
    DispatchScope const scope;
    Glob* const child = getWidget(details.widget);
    if (!child) {
        refuse("setWidgetDetails");
        return;
    }
    Placement::setRule(*child, details.position);
    setWidgetBorderStyle(child, details.surround);
    Placement::placeChild(*this, *child);
}

WidgetDetails Glob::getWidgetDetails(Glob* child) const {
    WidgetDetails details;
    details.widget = getWidget(child);
    if (!details.widget) return details;
    details.position = Placement::rule(*details.widget);
    if (details.widget->side_) details.surround = details.widget->side_->surround.frame();
    return details;
}

void Glob::setWidgetBorderStyle(Glob* child, WidgetSurround surround) {
    if (!getWidget(child)) return;
    bool const had = child->side_ && child->side_->surround.frame() != WidgetSurround();
    if (had || surround != WidgetSurround()) child->addSurround(Surround(surround));
}

void Glob::addSurround(Surround const& surround) {
    damageWithSurround();
    Surround added = surround;
    // A new frame keeps the old shadow, unless it has one of its own.
    if (side_ && surround.shadowSize() == 0)
        added.setShadow(side_->surround.shadowSize(), side_->surround.shadowOpacity(),
                        side_->surround.shadowEdges());
    side().surround = added;
    surroundChanged();
}

void Glob::removeSurround() {
    if (!hasSurround()) return;
    damageWithSurround();
    side().surround = Surround();
    surroundChanged();
}

Surround Glob::getSurround() const {
    return side_ ? side_->surround : Surround();
}

bool Glob::hasSurround() const {
    return side_ && !side_->surround.isEmpty();
}

void Glob::addShadow(int size, double opacity, unsigned edges) {
    damageWithSurround();
    side().surround.setShadow(size, opacity, edges);
    surroundChanged();
}

void Glob::surroundChanged() {
    damageWithSurround();
    if (isWindow()) iRootHost::current()->rootSurroundChanged(*this);
}

bool Glob::isWindow() const {
    return !parent_ && ownCanvas_.surface() && iRootHost::current();
}

void Glob::damageWithSurround() {
    damage(bounds());
    if (parent_ && isVisible() && hasSurround()) parent_->damage(box().inset(-side_->surround.extent()));
}

bool Glob::reparentTo(Glob* parent) {
    if (!hasFlag(reparentableFlag) || !is_good_glob_ptr(parent)) return refuse("reparentTo");
    WidgetDetails details;
    details.position = Placement::rule(*this);
    if (side_) details.surround = side_->surround.frame();
    return parent->addChild(this, details.position, details.surround) != nullptr;
}

void Glob::moveToTop() {
    if (!parent_ || !next_) return;
    Glob& parent = *parent_;
    Tree::unlink(*this);
    Tree::link(parent, *this);
    damageWithSurround();
}

void Glob::moveToBottom() {
    if (!parent_ || !previous_) return;
    Glob& parent = *parent_;
    Tree::unlink(*this);
    Tree::link(parent, *this, parent.firstChild_);
    damageWithSurround();
}

void Glob::handleDetached() {}

bool Glob::canBeDestroyed(int) {
    return !isIndestructible();
}

// Geometry

XY<int> Glob::placeOnCanvas() const {
    XY<int> place = position_;
    for (Glob const* glob = parent_; glob && !glob->ownsCanvas(); glob = glob->parent_)
        place += glob->position_;
    return place;
}

void Glob::resize(double width, double height) {
    Placement::setSize(*this, width, height);
}

void Glob::reshape() {
    DispatchScope const scope;
    LifeGuard const life = guard();
    reshapeCanvas();
    if (life.alive()) positionChildWidgets();
}

void Glob::reshapeAndDraw(XY<int> const& size) {
    DispatchScope const scope;
    LifeGuard const life = guard();
    resize(size.x, size.y);
    if (life.alive()) makeDirty();
}

void Glob::forceReshape() {
    DispatchScope const scope;
    LifeGuard const life = guard();
    reshape();
    if (life.alive()) makeDirty();
}

void Glob::setMinSize(unsigned short width, unsigned short height) {
    side().minSize = {width, height};
    needsChanged();
    if (isWindow()) iRootHost::current()->rootResized(*this);
}

XY<int> Glob::getMinSize() const {
    return side_ ? side_->minSize : XY<int>();
}

XY<int> Glob::sizeConstrain(XY<int> const& wanted, int) const {
    XY<int> const least = getMinSize();
    return {std::max(wanted.x, least.x), std::max(wanted.y, least.y)};
}

void Glob::setWidgetPos(Glob* child, XY<int> const& place) {
    if (!getWidget(child)) {
        refuse("setWidgetPos");
        return;
    }
    Placement::setRule(*child, WidgetPosition(CoordinateOrigin::bottomLeft, place));
    Placement::moveTo(*child, place);
}

void Glob::reshapeWidgetAt(Glob* child, XY<int> const& place, XY<int> const& size) {
    DispatchScope const scope;
    LifeGuard const life = guard();
    setWidgetPos(child, place);
    if (life.alive() && getWidget(child)) child->resize(size.x, size.y);
}

SizeNeeds Glob::sizeNeeds() const {
    return {};
}

int Glob::heightForWidth(int) const {
    return height();
}

bool Glob::handleChildChange(Glob&, ChildChange) {
    return false;
}

void Glob::handleLayout() {}

void Glob::tellParent(ChildChange change) {
    for (Glob* child = this; child->parent_; child = child->parent_) {
        if (child->parent_->isDying() || !child->parent_->handleChildChange(*child, change)) return;
        change = ChildChange::needs;
    }
}

XY<int> Glob::getWidgetPos(Glob* child) const {
    Glob const* const known = getWidget(child);
    return known ? known->position_ : XY<int>();
}

void Glob::positionChildWidgets() {
    Placement::placeChildren(*this);
}

void Glob::positionChildWidget(WidgetDetails const& details) {
    if (Glob* child = getWidget(details.widget)) Placement::moveTo(*child, getAbsRect(details).bottomLeft());
}

IntBox Glob::getAbsRect(WidgetDetails const& details) const {
    Glob const* const child = getWidget(details.widget);
    if (!child) return IntBox();
    return IntBox::sized(Placement::placeFor(*this, details.position, child->size(), child->position_),
                         child->size());
}

void Glob::calcAbsoluteWidgetPositions() {
    for (Glob* child = firstChild_; child; child = child->next_)
        Placement::setRule(*child, WidgetPosition(CoordinateOrigin::bottomLeft, child->position_));
}

IntBox Glob::getUserArea() const {
    return bounds();
}

void Glob::setScreenPos(XY<int> const& place) {
    Placement::moveTo(*this, parent_ ? parent_->screenXYToGlobXY(place) : place);
}

void Glob::constrainWithinScreen() {
    Glob* const root = getRootParent(this);
    if (root->isWindow()) iRootHost::current()->constrainRoot(*root);
}

void Glob::popToTop(bool activate) {
    Glob* const root = getRootParent(this);
    if (root->isWindow()) iRootHost::current()->rootToTop(*root, activate);
}

void Glob::bringIntoView() {
    bringIntoView(bounds());
}

void Glob::bringIntoView(IntBox const& part) {
    EventSystem const* const system = EventSystem::current();
    if (!system || system->pointer.heldButtons != 0) return;
    IntBox area = part;
    HandlerRef<Glob> within(this);
    while (within.get() && within.get()->parent_) {
        area = area.translated(within.get()->position_);
        within = HandlerRef<Glob>(within.get()->parent_);
        area = area.translated(within.get()->handleBringIntoView(area));
    }
}

XY<int> Glob::handleBringIntoView(IntBox const&) {
    return {};
}

XY<int> Glob::globXYToScreenXY(XY<int> const& place) const {
    XY<int> onScreen = place;
    for (Glob const* glob = this; glob; glob = glob->parent_)
        onScreen = Placement::clampPlace(onScreen) + glob->position_;
    return onScreen;
}

XY<int> Glob::screenXYToGlobXY(XY<int> const& place) const {
    return Placement::clampPlace(place) - Placement::clampPlace(globXYToScreenXY({0, 0}));
}

IntBox Glob::screenBox() const {
    return IntBox::sized(globXYToScreenXY({0, 0}), size());
}

// Visibility and activity

void Glob::setVisible(bool visible) {
    DispatchScope const scope;
    if (isVisible() == visible) return;
    HandlerRef<Glob> holder;
    if (!visible) {
        damageWithSurround();
        holder = loseInput();
    }
    setFlag(visibleFlag, visible);
    Tree::noteChange();
    tellParent(ChildChange::visibility);
    if (visible) {
        makeDirty();
        damageWithSurround();
    }
    LifeGuard const life = guard();
    if (isWindow()) iRootHost::current()->rootVisibilityChanged(*this);
    if (life.alive()) describeChanged(DescriptionChange::state);
    tellCaptureLost(holder);
}

bool Glob::isShown() const {
    return !isDying() && !isHidden() && getRootParent(const_cast<Glob*>(this))->ownCanvas_.surface();
}

bool Glob::isHidden() const {
    for (Glob const* glob = this; glob; glob = glob->parent_)
        if (!glob->isVisible() || !glob->canvas_->isMapped()) return true;
    return false;
}

void Glob::setActive(bool active, eRedrawFlag redraw) {
    DispatchScope const scope;
    if (isActiveItself() == active) return;
    bool const before = isActive();
    setFlag(activeFlag, active);
    if (isActive() == before) return;
    if (redraw) makeDirty();
    Activity::switched(*this);
}

void Glob::handOnKbdFocus() {
    Glob* const holder = KbdFocus::holderIn(*getRootParent(this));
    if (isWithin(holder, this)) holder->relinquishKbdFocus(KbdFocus::heirOf(*this));
}

void Glob::setOpacity(double opacity) {
    if (!ownsCanvas()) return canvas_to_glob(canvas_)->setOpacity(opacity);
    auto const clamped = static_cast<float>(opacity > 0.0 ? std::min(opacity, 1.0) : 0.0);
    if (clamped == canvas_->opacity()) return;
    canvas_->setOpacity(clamped);
    makeDirty();
    damageWithSurround();
}

void Glob::mapCanvas() {
    if (!ownsCanvas()) return canvas_to_glob(canvas_)->mapCanvas();
    if (canvas_->isMapped()) return;
    canvas_->setMapped(true);
    Damage::noteShown();
    Tree::noteChange();
    makeDirty();
    damageWithSurround();
}

void Glob::unmapCanvas() {
    if (!ownsCanvas()) return canvas_to_glob(canvas_)->unmapCanvas();
    DispatchScope const scope;
    if (!canvas_->isMapped()) return;
    damageWithSurround();
    HandlerRef<Glob> const holder = loseInput();
    canvas_->setMapped(false);
    Tree::noteChange();
    tellCaptureLost(holder);
}

// Self-description

void Glob::describe(GlobDescription& description) const {
    description.box = screenBox();
    if (isShown()) description.states |= GlobDescription::visible;
    if (isActive()) description.states |= GlobDescription::enabled;
    if (get_kbd_focus() == this) description.states |= GlobDescription::focused;
    if (!side_ || !description.wants(GlobDescription::relations)) return;
    description.labelledBy = side_->labelledBy;
    description.controls = side_->controls;
}

void Glob::describeChild(Glob const&, GlobDescription&) const {}

void Glob::setLabelledBy(Glob* label) {
    if (label == getLabelledBy()) return;
    side().labelledBy = HandlerRef<Glob>(label);
    describeChanged(DescriptionChange::name);
}

Glob* Glob::getLabelledBy() const {
    return side_ ? side_->labelledBy.get() : nullptr;
}

void Glob::setControls(Glob* controlled) {
    if (side_ ? side_->controls.get() == controlled : !controlled) return;
    side().controls = HandlerRef<Glob>(controlled);
    describeChanged(DescriptionChange::relations);
}

void Glob::describeChanged(DescriptionChange what) {
    if (DescriptionListener* listener = DescriptionListener::current())
        listener->descriptionChanged(*this, what);
}

LightweightString<char> Glob::name() const {
    return side_ ? side_->name : LightweightString<char>();
}

void Glob::setName(LightweightString<char> name) {
    side().name = std::move(name);
}

// Free functions

bool is_good_glob_ptr(Glob const* glob) {
    return glob && Liveness::isTreeObject(static_cast<EventHandler const*>(glob));
}

void destroy(Glob* glob) {
    if (is_good_glob_ptr(glob)) Lifetime::destroy(*glob);
}

double glob_pseudo_distance(Glob const* a, Glob const* b) {
    if (!is_good_glob_ptr(a) || !is_good_glob_ptr(b)) return HUGE_VAL;
    IntBox const boxA = a->screenBox();
    IntBox const boxB = b->screenBox();
    double const gapX = std::max(boxA.x1, boxB.x1) - std::min(boxA.x2, boxB.x2);
    double const gapY = std::max(boxA.y1, boxB.y1) - std::min(boxA.y2, boxB.y2);
    if (gapX < 0.0 && gapY < 0.0) return std::max(gapX, gapY);
    return std::hypot(std::max(gapX, 0.0), std::max(gapY, 0.0));
}

Glob* canvas_to_glob(Canvas const* canvas) {
    return canvas ? dynamic_cast<Glob*>(&canvas->owner()) : nullptr;
}

bool canvas_is_mapped_to_root(Canvas const* canvas) {
    if (!canvas) return false;
    CanvasPlace const place = canvas->place();
    return place.surface && place.mapped;
}

void canvupd_mark_all(Canvas* canvas) {
    if (Glob* glob = canvas_to_glob(canvas)) glob->makeDirty();
}

} // namespace wainscot
