#include "host/windows/press_hand_over_p.h"

#include "host/events/dispatch_scope.h"
#include "host/events/event.h"
#include "host/objects/dispatch.h"
#include "host/windows/popup_chain.h"
#include "host/windows/top_level_window.h"

namespace wainscot {

namespace {

bool overlapsInTree(Glob const* a, Glob const* b) {
    return a && b && (a == b || Glob::isParentedTo(a, b) || Glob::isParentedTo(b, a));
}

} // namespace

Glob* PressHandOver::popUpUnder(Glob* holder, Event const& event) const {
    PopUpChain const& chain = windows_.popUps();
    if (!holder || !chain.isOpen()) return nullptr;
    Glob const* const holderRoot = Glob::getRootParent(holder);
    if (!chain.contains(holderRoot) && !overlapsInTree(holder, chain.opener())) return nullptr;
    TopLevelWindow const* const window = windows_.windowAt(event.place());
    if (!window || &window->root() == holderRoot || !chain.contains(&window->root())) return nullptr;
    bool const isDragged = present() || isMouseMoveSignificant(event);
    return isDragged ? &window->root() : nullptr;
}

Glob* PressHandOver::receiver(Glob* holder, Event const& event) {
    Glob* const before = present();
    popUp_ = HandlerRef<Glob>(popUpUnder(holder, event));
    if (before && before != present()) {
        DispatchScope const scope;
        dispatchUpwards(before, event);
    }
    return present();
}

} // namespace wainscot
