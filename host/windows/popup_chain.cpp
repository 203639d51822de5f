#include "host/windows/popup_chain.h"

#include "host/events/dispatch_scope.h"
#include "host/events/event_system.h"
#include "host/events/messages.h"

#include <algorithm>

namespace wainscot {

namespace {

constexpr LightweightString<char> closeMsg{"close_pop_ups"};

XY<int> placeOf(Glob const& opener) {
    IntBox const box = opener.screenBox();
    return {box.x1, box.y1};
}

} // namespace

/// Belongs to no window, so that it is asked whichever window is active.
class PopUpChain::Keeper final : public EventHandler {
public:
    explicit Keeper(PopUpChain& chain) : chain_(chain) {
        if (EventSystem* system = EventSystem::current()) system->intercepts.push(this, lowestPriority + 1);
    }
    // Owned by the chain, never counted.
    void addRef() const noexcept override {}
    void release() const noexcept override {}
    bool intercept(Event const& event) override {
        if (!isKeyPressEvent(event) || event.keyCode() != Key::escape) return false;
        chain_.closeLast();
        return true;
    }
    int handleMessageEvent(LightweightString<char>, Glob*) override {
        if (auto const from = std::exchange(chain_.closingFrom_, {})) chain_.closeFrom(*from);
        return 1;
    }
    bool handleEvent(Event const& event) override {
        return isMessageEvent(event) && handleMessageEvent(event.message(), nullptr) == 1;
    }

private:
    PopUpChain& chain_;
};

PopUpChain::PopUpChain(std::function<void(bool)> setOutsidePresses)
    : setOutsidePresses_(std::move(setOutsidePresses)) {}

PopUpChain::~PopUpChain() = default;

// Membership

std::size_t PopUpChain::indexOf(Glob const* popUp) const {
    auto const found = std::find_if(links_.begin(), links_.end(),
                                    [popUp](Link const& link) { return popUp && link.popUp.get() == popUp; });
    return static_cast<std::size_t>(found - links_.begin());
}

bool PopUpChain::contains(Glob const* root) const {
    return indexOf(root) < links_.size();
}

bool PopUpChain::containsStamp(IdStamp root) const {
    return std::any_of(links_.begin(), links_.end(),
                       [root](Link const& link) { return link.popUp.stamp() == root; });
}

Glob* PopUpChain::last() const {
    return links_.empty() ? nullptr : links_.back().popUp.get();
}

Glob* PopUpChain::parentOf(Glob const* popUp) const {
    std::size_t const index = indexOf(popUp);
    bool const has = index > 0 && index < links_.size();
    return has ? links_[index - 1].popUp.get() : nullptr;
}

Glob* PopUpChain::opener() const {
    return opener_.get();
}

// Opening

bool PopUpChain::add(Glob& popUp, Glob* parent, Glob* opener, Glob* owner) {
    DispatchScope const scope;
    LifeGuard const life = popUp.guard();
    std::size_t index = indexOf(parent);
    if (index == links_.size()) index = indexOf(Glob::getRootParent(opener));
    LifeGuard const openerLife = opener ? opener->guard() : life;
    LifeGuard const ownerLife = owner ? owner->guard() : life;
    closeFrom(index == links_.size() ? 0 : index + 1);
    if (!life.alive()) return false;
    if (contains(&popUp)) return true;
    if (links_.empty()) begin(openerLife.alive() ? opener : nullptr, ownerLife.alive() ? owner : nullptr);
    int const priority = lowestPriority + 2 + static_cast<int>(links_.size());
    Glob* const presser = !parent && openerLife.alive() ? opener : nullptr;
    links_.push_back({HandlerRef<Glob>(&popUp), HandlerRef<Glob>(presser),
                      presser ? placeOf(*presser) : XY<int>(),
                      EventSystem::live().intercepts.push(&popUp, priority)});
    return true;
}

void PopUpChain::begin(Glob* opener, Glob* owner) {
    opener_ = HandlerRef<Glob>(opener);
    owner_ = owner ? owner->idStamp() : IdStamp();
    closingFrom_.reset();
    keeper_ = std::make_unique<Keeper>(*this);
    setOutsidePresses_(true);
}

/// The keeper itself may be running.
void PopUpChain::endIfEmpty() {
    if (!links_.empty() || !keeper_) return;
    opener_ = HandlerRef<Glob>();
    owner_.invalidate();
    closingFrom_.reset();
    auto const freeKeeper = [](void* keeper) { delete static_cast<Keeper*>(keeper); };
    if (EventSystem* system = EventSystem::current()) system->intercepts.removeAll(*keeper_);
    DispatchScope::freeWhenUnwound(freeKeeper, keeper_.release());
    setOutsidePresses_(false);
}

// Closing

PopUpChain::Link PopUpChain::take(std::size_t index) {
    Link const link = links_[index];
    links_.erase(links_.begin() + static_cast<std::ptrdiff_t>(index));
    if (EventSystem* system = EventSystem::current()) system->intercepts.pop(link.intercept);
    endIfEmpty();
    return link;
}

void PopUpChain::close(Link const& link) {
    Glob* const popUp = link.popUp.get();
    if (!popUp) return;
    bool handled = false;
    runHandler("poot", [&] { handled = callMessage(Glob::pootMsg, popUp, popUp) == 1; });
    if (!handled && link.popUp) destroy(popUp);
}

/// Handlers may close other pop-ups or open a new chain: only the pop-ups that are there now are closed.
void PopUpChain::closeFrom(std::size_t index) {
    DispatchScope const scope;
    std::vector<IdStamp> doomed;
    for (std::size_t i = index; i < links_.size(); ++i) doomed.push_back(links_[i].popUp.stamp());
    for (auto stamp = doomed.rbegin(); stamp != doomed.rend(); ++stamp) {
        auto const found = std::find_if(links_.begin(), links_.end(),
                                        [&](Link const& link) { return link.popUp.stamp() == *stamp; });
        if (found != links_.end()) close(take(static_cast<std::size_t>(found - links_.begin())));
    }
}

void PopUpChain::closeFromLater(std::size_t index) {
    if (!keeper_ || index >= links_.size()) return;
    bool const isAsked = closingFrom_.has_value();
    closingFrom_ = std::min(closingFrom_.value_or(index), index);
    if (!isAsked) sendMessage(closeMsg, keeper_.get());
}

void PopUpChain::closeAll() {
    closeFrom(0);
}

void PopUpChain::closeLast() {
    if (!links_.empty()) closeFrom(links_.size() - 1);
}

void PopUpChain::closeBehind(Glob const& popUp) {
    closeFrom(indexOf(&popUp) + 1);
}

void PopUpChain::leave(Glob const& popUp) {
    std::size_t const index = indexOf(&popUp);
    while (links_.size() > index) take(links_.size() - 1);
}

// Presses

PopUpChain::Press PopUpChain::press(Glob* under) {
    std::size_t const pressed = indexOf(Glob::getRootParent(under));
    if (pressed < links_.size()) {
        Glob const* const opener = pressed + 1 < links_.size() ? links_[pressed + 1].opener.get() : nullptr;
        if (opener && !Glob::isWithin(under, opener)) closeFrom(pressed + 1);
        return Press::goesOn;
    }
    if (links_.empty()) return Press::goesOn;
    if (Glob::isWithin(under, opener())) {
        pressedChain_ = links_.front().popUp.stamp();
        return Press::reachesOpener;
    }
    closeAll();
    return Press::spent;
}

/// By a message behind those of the opener: an owner that is told of the press may close the chain itself.
void PopUpChain::openerWasPressed() {
    if (!links_.empty() && links_.front().popUp.stamp() == pressedChain_) closeFromLater(0);
    pressedChain_.invalidate();
}

// Windows

void PopUpChain::windowChanged(Glob const& root) {
    if (!links_.empty() && root.idStamp() == owner_) closeFromLater(0);
}

bool PopUpChain::Link::hasOpenerGone() const {
    return opener && (!opener.get()->isShown() || placeOf(*opener.get()) != openerPlace);
}

void PopUpChain::checkOpeners() {
    auto const found = std::ranges::find_if(links_, &Link::hasOpenerGone);
    closeFromLater(static_cast<std::size_t>(found - links_.begin()));
}

void PopUpChain::rootDying(Glob const& root) {
    windowChanged(root);
    std::size_t const index = indexOf(&root);
    if (index == links_.size()) return;
    take(index);
    closeFromLater(index);
}

} // namespace wainscot
