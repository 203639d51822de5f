#include "foundation/tab_order_manager.h"

#include "foundation/tab_order_list_p.h"
#include "foundation/tab_orderable_p.h"
#include "foundation/tab_stop_sequence_p.h"
#include "host/drawing/drawable.h"

#include <unordered_map>

namespace wainscot {

struct TabOrderManager::Stops {
    struct OfObject {
        ClientInfo* first = nullptr;
        ClientInfo* last = nullptr;
    };

    TabStopSequence sequence;
    TabOrderList byOrder;
    std::unordered_map<TabOrderable const*, OfObject> byObject;
    TabOrderBounds bounds;
};

TabOrderManager::TabOrderManager(bool allowDuplicates) : allowDuplicates_(allowDuplicates) {}

TabOrderManager::~TabOrderManager() {
    removeAllTabStops();
}

void TabOrderManager::removeAllTabStops() {
    currentIndex_ = currentOrder_ = noTabStop;
    if (!stops_) return;
    for (Qv::Ptr<ClientInfo> const& stop : stops_->sequence.slots()) {
        if (!stop) continue;
        stop->object->leaveManager(this);
        stop->object = nullptr;
    }
    // The tables stay: a step may be walking them.
    stops_->byOrder.clear();
    stops_->byObject.clear();
    stops_->sequence = TabStopSequence();
}

TabOrderManager::TabOrderBounds const& TabOrderManager::tabOrderBounds() const {
    static constexpr TabOrderBounds none;
    return stops_ ? stops_->bounds : none;
}

TabOrderManager::Stops& TabOrderManager::tabStops() {
    if (!stops_) stops_ = std::make_unique<Stops>();
    return *stops_;
}

// --- Look-up

TabOrderManager::ClientInfo* TabOrderManager::stopAt(unsigned int index) const {
    return stops_ ? stops_->sequence.at(index) : nullptr;
}

TabOrderManager::ClientInfo* TabOrderManager::firstStopOf(TabOrderable const& object) const {
    if (!stops_) return nullptr;
    auto const found = stops_->byObject.find(&object);
    return found == stops_->byObject.end() ? nullptr : found->second.first;
}

unsigned int TabOrderManager::indexOfStop(ClientInfo const& stop) const {
    return static_cast<unsigned int>(stops_->sequence.indexOf(stop));
}

unsigned int TabOrderManager::numTabStops() const {
    return stops_ ? static_cast<unsigned int>(stops_->sequence.size()) : 0;
}

unsigned int TabOrderManager::getTabStopTabOrder(unsigned int index) const {
    ClientInfo const* const stop = stopAt(index);
    return stop ? stop->tabOrder() : noTabStop;
}

TabOrderable* TabOrderManager::getTabStopObject(unsigned int index) const {
    ClientInfo const* const stop = stopAt(index);
    return stop ? stop->object : nullptr;
}

bool TabOrderManager::isTabStopFocus(TabOrderable const& object) const {
    ClientInfo const* const stop = firstStopOf(object);
    return stop && currentIndex_ != noTabStop && stop == stopAt(currentIndex_);
}

unsigned int TabOrderManager::getTabStopIndex(TabOrderable const& object) const {
    ClientInfo const* const stop = firstStopOf(object);
    return stop ? indexOfStop(*stop) : noTabStop;
}

// --- Adding

bool TabOrderManager::addTabStop(TabOrderable& object, unsigned int order) {
    if (!allowDuplicates_ && firstStopOf(object)) return false;
    unsigned int const highest = tabOrderBounds().highestOrder;
    if (order == appendTabStop) order = highest == noTabStop ? 0 : highest + 1;
    if (order > maxTabOrder || !makeWay(order)) return false;
    appendStop(object, order);
    object.registerManager(this);
    noteAddedOrder(order, numTabStops() - 1);
    return true;
}

void TabOrderManager::appendStop(TabOrderable& object, unsigned int order) {
    auto const stop = Qv::makePtr<ClientInfo>(object);
    tabStops().sequence.append(stop);
    stops_->byOrder.insert(*stop, order);
    Stops::OfObject& ofObject = stops_->byObject[&object];
    stop->previousOfObject = ofObject.last;
    (ofObject.last ? ofObject.last->nextOfObject : ofObject.first) = stop.get();
    ofObject.last = stop.get();
}

void TabOrderManager::noteAddedOrder(unsigned int order, unsigned int index) {
    TabOrderBounds& bounds = stops_->bounds;
    if (bounds.lowestOrder == noTabStop || order < bounds.lowestOrder) {
        bounds.lowestOrder = order;
        bounds.lowestIndex = index;
    }
    if (bounds.highestOrder == noTabStop || order > bounds.highestOrder) {
        bounds.highestOrder = order;
        bounds.highestIndex = index;
    }
}

bool TabOrderManager::makeWay(unsigned int order) {
    if (numTabStops() == 0) return true;
    TabOrderBounds& bounds = stops_->bounds;
    if (order < bounds.lowestOrder || order > bounds.highestOrder) return true;
    ClientInfo const* const current = stopAt(currentIndex_);
    unsigned int const before = current ? current->tabOrder() : noTabStop;
    auto const pushed = stops_->byOrder.push(order, bounds.highestOrder);
    if (!pushed) return false;
    if (*pushed && (*pushed)->tabOrder() > bounds.highestOrder) {
        bounds.highestOrder = (*pushed)->tabOrder();
        bounds.highestIndex = indexOfStop(**pushed);
    }
    if (current && current->tabOrder() != before) currentOrder_ = current->tabOrder();
    return true;
}

bool TabOrderManager::addTabStopsFrom(TabOrderableHost& host, unsigned int order) {
    LifeGuard const life(life_);
    std::vector<TabOrderable*> controls;
    host.getTabOrderables(controls, order);
    if (!life.alive()) return false;
    for (TabOrderable* const control : controls)
        if (!control || !addTabStop(*control, order)) return false;
    return true;
}

bool TabOrderManager::addTabStopsFrom(TabOrderableHost* host, unsigned int order) {
    return host && addTabStopsFrom(*host, order);
}

// --- Removing

bool TabOrderManager::removeTabStop(TabOrderable const& object) {
    ClientInfo const* const stop = firstStopOf(object);
    if (!stop) return false;
    stop->object->leaveManager(this);
    return dropStopsOf(object);
}

bool TabOrderManager::dropStopsOf(TabOrderable const& object) {
    bool dropped = false;
    while (ClientInfo* const stop = firstStopOf(object)) {
        unsigned int const index = indexOfStop(*stop);
        if (currentIndex_ == index)
            currentIndex_ = noTabStop;
        else if (currentIndex_ != noTabStop && currentIndex_ > index)
            --currentIndex_;
        dropStop(*stop);
        dropped = true;
    }
    if (ClientInfo const* const current = stopAt(currentIndex_)) currentOrder_ = current->tabOrder();
    return dropped;
}

bool TabOrderManager::removeTabStop(unsigned int index) {
    ClientInfo* const stop = stopAt(index);
    if (!stop) return false;
    stop->object->deregisterManager(this);
    if (currentIndex_ == index) currentIndex_ = noTabStop;
    dropStop(*stop);
    return true;
}

void TabOrderManager::dropStop(ClientInfo& stop) {
    stops_->byOrder.erase(stop);
    Stops::OfObject& ofObject = stops_->byObject[stop.object];
    (stop.previousOfObject ? stop.previousOfObject->nextOfObject : ofObject.first) = stop.nextOfObject;
    (stop.nextOfObject ? stop.nextOfObject->previousOfObject : ofObject.last) = stop.previousOfObject;
    if (!ofObject.first) stops_->byObject.erase(stop.object);
    stop.object = nullptr;
    stops_->sequence.remove(stop);
}

// --- Changing

bool TabOrderManager::setTabOrder(TabOrderable const& object, unsigned int order) {
    // Whether others can make way does not depend on the stop, so the first one decides.
    ClientInfo* const stop = firstStopOf(object);
    return stop && moveStop(*stop, order);
}

bool TabOrderManager::setTabOrder(unsigned int index, unsigned int order) {
    ClientInfo* const stop = stopAt(index);
    return stop && moveStop(*stop, order);
}

bool TabOrderManager::moveStop(ClientInfo& stop, unsigned int order) {
    if (order > maxTabOrder || !makeWay(order)) return false;
    stops_->byOrder.erase(stop);
    stops_->byOrder.insert(stop, order);
    if (&stop == stopAt(currentIndex_)) currentOrder_ = order;
    return true;
}

void TabOrderManager::renumberTabStops(std::vector<unsigned int> const& indices) {
    if (numTabStops() == 0) return;
    std::vector<ClientInfo*> sorted;
    std::vector<bool> listed(numTabStops());
    for (unsigned int const index : indices) {
        if (index >= listed.size() || listed[index]) continue;
        listed[index] = true;
        sorted.push_back(stopAt(index));
    }
    TabOrderList& list = stops_->byOrder;
    for (auto place = list.lowerBound(0); list.stopAt(place); place = list.next(place))
        if (!listed[indexOfStop(*list.stopAt(place))]) sorted.push_back(list.stopAt(place));
    list.clear();
    for (unsigned int order = 0; order < sorted.size(); ++order) list.insert(*sorted[order], order);
    stops_->bounds = {0, indexOfStop(*sorted.front()), numTabStops() - 1, indexOfStop(*sorted.back())};
    if (ClientInfo const* const current = stopAt(currentIndex_)) currentOrder_ = current->tabOrder();
}

bool TabOrderManager::setTabStopEnabled(TabOrderable const& object, bool enabled) {
    return setTabStopEnabled(getTabStopIndex(object), enabled);
}

bool TabOrderManager::setTabStopEnabled(unsigned int index, bool enabled) {
    ClientInfo* const stop = stopAt(index);
    if (stop) stop->enabled = enabled;
    return stop;
}

bool TabOrderManager::getTabStopEnabled(TabOrderable const& object, bool* found) const {
    return getTabStopEnabled(getTabStopIndex(object), found);
}

bool TabOrderManager::getTabStopEnabled(unsigned int index, bool* found) const {
    ClientInfo const* const stop = stopAt(index);
    if (found) *found = stop;
    return stop && stop->enabled;
}

// --- Focusing

bool TabOrderManager::setTabStopFocus(unsigned int index) {
    return internalSetTabStopFocus(index, true, TabOrderable::forward);
}

bool TabOrderManager::setTabStopFocus(TabOrderable const& object) {
    unsigned int const index = getTabStopIndex(object);
    return index != noTabStop && setTabStopFocus(index);
}

bool TabOrderManager::internalSetTabStopFocus(unsigned int index, bool, TabOrderable::eDirection direction) {
    RedrawHold const hold;
    if (index == noTabStop) return clearTabStopFocus();
    // The control may die in each question and call.
    Qv::Ptr<ClientInfo> const stop(stopAt(index));
    LifeGuard const life(life_);
    if (!stop || !canFocusStop(*stop) || !life.alive()) return false;
    return focusStop(*stop, direction);
}

bool TabOrderManager::clearTabStopFocus() {
    if (currentIndex_ == noTabStop) return true;
    Qv::Ptr<ClientInfo> const old(stopAt(currentIndex_));
    currentOrder_ = noTabStop;
    currentIndex_ = noTabStop;
    if (old) old->object->handleTabStopFocusLoss();
    return true;
}

bool TabOrderManager::focusStop(ClientInfo& stop, TabOrderable::eDirection direction) {
    Qv::Ptr<ClientInfo> const old(stopAt(currentIndex_));
    TabOrderable::Receiving const receiving(*stop.object);
    currentOrder_ = stop.tabOrder();
    currentIndex_ = indexOfStop(stop);
    stop.object->handleTabStopFocusReceipt(direction);
    // The manager may be dead; then the old stop has no object either.
    if (old && old->object) old->object->handleTabStopFocusLoss();
    return true;
}

bool TabOrderManager::canFocusStop(ClientInfo& stop) {
    return stop.enabled && isTabStopHere(*stop.object) && stop.object->isTabStopActive() && stop.object;
}

bool TabOrderManager::isTabStopHere(TabOrderable&) const {
    return true;
}

// --- Stepping

unsigned int TabOrderManager::incrementTabStop() {
    LifeGuard const life(life_);
    Qv::Ptr<ClientInfo> found;
    if (currentOrder_ != noTabStop) found = findStopFrom(currentOrder_ + 1);
    if (!found && life.alive()) found = findStopFrom(0);
    return life.alive() ? focusFound(found.get(), TabOrderable::forward) : noTabStop;
}

unsigned int TabOrderManager::decrementTabStop() {
    LifeGuard const life(life_);
    Qv::Ptr<ClientInfo> found;
    if (currentOrder_ != noTabStop) found = findStopBelow(currentOrder_);
    if (!found && life.alive()) found = findStopBelow(noTabStop);
    return life.alive() ? focusFound(found.get(), TabOrderable::backward) : noTabStop;
}

unsigned int TabOrderManager::focusFound(ClientInfo* found, TabOrderable::eDirection direction) {
    LifeGuard const life(life_);
    internalSetTabStopFocus(found ? indexOfStop(*found) : noTabStop, true, direction);
    return life.alive() ? currentIndex_ : noTabStop;
}

unsigned int TabOrderManager::focusFirstTabStop() {
    LifeGuard const life(life_);
    Qv::Ptr<ClientInfo> const found = findStopFrom(0);
    return life.alive() ? focusFound(found.get(), TabOrderable::forward) : noTabStop;
}

unsigned int TabOrderManager::focusLastTabStop() {
    LifeGuard const life(life_);
    Qv::Ptr<ClientInfo> const found = findStopBelow(noTabStop);
    return life.alive() ? focusFound(found.get(), TabOrderable::backward) : noTabStop;
}

bool TabOrderManager::hasTabStopAhead(TabOrderable::eDirection direction) {
    if (currentOrder_ == noTabStop) return numTabStops() > 0;
    bool const forward = direction == TabOrderable::forward;
    return static_cast<bool>(forward ? findStopFrom(currentOrder_ + 1) : findStopBelow(currentOrder_));
}

unsigned int TabOrderManager::refocusCurrentTabStop() {
    if (currentIndex_ == noTabStop) return incrementTabStop();
    LifeGuard const life(life_);
    setTabStopFocus(currentIndex_);
    return life.alive() ? currentIndex_ : noTabStop;
}

Qv::Ptr<TabOrderManager::ClientInfo> TabOrderManager::findStopFrom(unsigned int order) {
    return findStopBetween(order, appendTabStop);
}

Qv::Ptr<TabOrderManager::ClientInfo> TabOrderManager::findStopBelow(unsigned int order) {
    LifeGuard const life(life_);
    while (life.alive() && stops_) {
        std::optional<unsigned int> const below = stops_->byOrder.largestBelow(order);
        if (!below) break;
        if (auto found = findStopBetween(*below, *below)) return found;
        order = *below;
    }
    return {};
}

Qv::Ptr<TabOrderManager::ClientInfo> TabOrderManager::findStopBetween(unsigned int first, unsigned int last) {
    if (!stops_) return {};
    LifeGuard const life(life_);
    TabOrderList const& list = stops_->byOrder;
    TabOrderList::Place place = list.lowerBound(first);
    while (ClientInfo* const candidate = list.stopAt(place)) {
        unsigned int const order = candidate->tabOrder();
        if (order > last) break;
        Qv::Ptr<ClientInfo> stop(candidate);
        std::size_t const slot = stop->slot;
        std::uint64_t const version = list.version();
        if (canFocusStop(*stop) && life.alive()) return stop;
        if (!life.alive()) break;
        place = list.version() == version ? list.next(place) : list.lowerBound(order, slot + 1);
    }
    return {};
}

} // namespace wainscot
