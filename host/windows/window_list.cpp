#include "host/windows/window_list_p.h"

#include <algorithm>

namespace wainscot {

namespace {

int layerOf(TopLevelWindow const& window) {
    return window.isNote() ? 3 : window.isPopUp() ? 2 : window.keepsAbove() ? 1 : 0;
}

template <class Map, class Key>
TopLevelWindow* found(Map const& map, Key const& key) {
    auto const entry = map.find(key);
    return entry == map.end() ? nullptr : entry->second;
}

} // namespace

WindowList::~WindowList() {
    for (auto const& window : *this) window->watchDamage(nullptr, 0);
}

TopLevelWindow& WindowList::add(std::unique_ptr<TopLevelWindow> added, IdStamp owner) {
    TopLevelWindow& window = *added;
    std::uint64_t const number = ++lastNumber_;
    windows_.emplace(number, std::move(added));
    byRoot_.emplace(&window.root(), &window);
    byStamp_.emplace(window.rootStamp().value(), &window);
    byId_.emplace(window.native().id(), &window);
    window.setOwner(owner);
    if (owner.valid()) owned_[owner.value()].insert(number);
    putInStack(window);
    window.watchDamage(this, number);
    return window;
}

std::unique_ptr<TopLevelWindow> WindowList::take(Glob const& root) {
    TopLevelWindow* const window = of(&root);
    if (!window) return nullptr;
    std::uint64_t const number = window->number();
    window->watchDamage(nullptr, number);
    damaged_.erase(number);
    stacking_.erase(stackPlaces_.at(window));
    stackPlaces_.erase(window);
    if (auto const owned = owned_.find(window->ownerStamp().value()); owned != owned_.end()) {
        owned->second.erase(number);
        if (owned->second.empty()) owned_.erase(owned);
    }
    byId_.erase(window->native().id());
    byStamp_.erase(window->rootStamp().value());
    byRoot_.erase(&root);
    return std::move(windows_.extract(number).mapped());
}

TopLevelWindow* WindowList::of(Glob const* root) const {
    return found(byRoot_, root);
}

TopLevelWindow* WindowList::of(NativeWindowId id) const {
    return found(byId_, id);
}

TopLevelWindow* WindowList::ofStamp(IdStamp root) const {
    return found(byStamp_, root.value());
}

TopLevelWindow* WindowList::after(TopLevelWindow const* window) const {
    auto const next = window ? windows_.upper_bound(window->number()) : windows_.begin();
    return next == windows_.end() ? nullptr : next->second.get();
}

std::vector<TopLevelWindow*> WindowList::ownedBy(IdStamp root) const {
    std::vector<TopLevelWindow*> windows;
    auto const owned = owned_.find(root.value());
    if (owned == owned_.end()) return windows;
    for (std::uint64_t const number : owned->second) windows.push_back(windows_.at(number).get());
    return windows;
}

TopLevelWindow* WindowList::topmost() const {
    return stacking_.empty() ? nullptr : stacking_.rbegin()->second;
}

void WindowList::putInStack(TopLevelWindow& window) {
    StackPlace const place(layerOf(window), ++lastStackPlace_);
    auto const [known, isNew] = stackPlaces_.try_emplace(&window, place);
    if (!isNew) stacking_.erase(std::exchange(known->second, place));
    stacking_.emplace(place, &window);
}

/// Windows that belong together keep their order.
void WindowList::bringToFront(TopLevelWindow& window) {
    std::vector<TopLevelWindow*> group{&window};
    auto const liesBelow = [this](TopLevelWindow const* a, TopLevelWindow const* b) {
        return stackPlaces_.at(a) < stackPlaces_.at(b);
    };
    for (std::size_t i = 0; i < group.size(); ++i) {
        std::vector<TopLevelWindow*> owned = ownedBy(group[i]->rootStamp());
        std::erase(owned, &window);
        std::sort(owned.begin(), owned.end(), liesBelow);
        group.insert(group.end(), owned.begin(), owned.end());
    }
    for (TopLevelWindow* member : group) putInStack(*member);
}

bool WindowList::hasPaintWork() const {
    std::erase_if(damaged_, [this](std::uint64_t number) { return !windows_.at(number)->hasDamage(); });
    return std::any_of(damaged_.begin(), damaged_.end(),
                       [this](std::uint64_t number) { return windows_.at(number)->hasPaintWork(); });
}

std::vector<Glob*> WindowList::damaged() const {
    std::vector<Glob*> roots;
    for (std::uint64_t const number : damaged_) roots.push_back(&windows_.at(number)->root());
    return roots;
}

} // namespace wainscot
