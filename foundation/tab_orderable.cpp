#include "foundation/tab_orderable.h"

#include "foundation/tab_order_manager.h"
#include "foundation/tab_orderable_p.h"

#include <algorithm>
#include <unordered_set>

namespace wainscot {

TabOrderableHost::~TabOrderableHost() = default;

constinit TabOrderable::Receiving* TabOrderable::Receiving::innermost_ = nullptr;

TabOrderable::Receiving::Receiving(TabOrderable& object) : object_(&object), outer_(innermost_) {
    innermost_ = this;
}

TabOrderable::Receiving::~Receiving() {
    innermost_ = outer_;
}

bool TabOrderable::Receiving::includes(TabOrderable const& object) {
    for (Receiving const* running = innermost_; running; running = running->outer_)
        if (running->object_ == &object) return true;
    return false;
}

void TabOrderable::Receiving::forget(TabOrderable const& object) {
    for (Receiving* running = innermost_; running; running = running->outer_)
        if (running->object_ == &object) running->object_ = nullptr;
}

TabOrderable::~TabOrderable() {
    leaveAllManagers();
    Receiving::forget(*this);
}

// Also called by the destructor: no virtual is called, and managers do not call back.
void TabOrderable::leaveAllManagers() {
    if (managers_.empty()) return;
    for (TabOrderManager* const manager : std::exchange(managers_, {})) manager->dropStopsOf(*this);
}

void TabOrderable::handleTabStopFocusReceipt(eDirection) {}

void TabOrderable::handleTabStopFocusLoss() {}

bool TabOrderable::setTabStopFocus() {
    LifeGuard const life(life_);
    for (ManagerRef const& ref : distinctManagers()) {
        if (ref.life.alive()) ref.manager->setTabStopFocus(*this);
        if (!life.alive()) return false;
    }
    return isTabStopFocus();
}

void TabOrderable::relinquishTabStopFocus() {
    LifeGuard const life(life_);
    for (ManagerRef const& ref : distinctManagers()) {
        if (ref.life.alive()) ref.manager->setTabStopFocus(TabOrderManager::noTabStop);
        if (!life.alive()) return;
    }
}

bool TabOrderable::isTabStopFocus() const {
    return std::any_of(managers_.begin(), managers_.end(),
                       [this](TabOrderManager const* manager) { return manager->isTabStopFocus(*this); });
}

bool TabOrderable::isReceivingTabStopFocus() const {
    return Receiving::includes(*this);
}

void TabOrderable::registerManager(TabOrderManager* manager) {
    managers_.push_back(manager);
}

void TabOrderable::deregisterManager(TabOrderManager* manager) {
    auto const entry = std::find(managers_.begin(), managers_.end(), manager);
    if (entry != managers_.end()) managers_.erase(entry);
}

void TabOrderable::leaveManager(TabOrderManager* manager) {
    std::erase(managers_, manager);
}

std::vector<TabOrderable::ManagerRef> TabOrderable::distinctManagers() const {
    std::vector<ManagerRef> refs;
    std::unordered_set<TabOrderManager const*> seen;
    for (TabOrderManager* const manager : managers_)
        if (seen.insert(manager).second) refs.push_back({manager, LifeGuard(manager->tabOrderLife())});
    return refs;
}

} // namespace wainscot
