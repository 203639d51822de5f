#include "host/windows/sub_menu_approach_p.h"

#include "host/events/dispatch_scope.h"
#include "host/events/event_system.h"
#include "host/services/clock.h"
#include "host/windows/popup_chain.h"
#include "host/windows/top_level_window.h"

namespace wainscot {

SubMenuApproach::SubMenuApproach(GlobManager const& windows, std::function<void(InputEvent const&)> deliver)
    : windows_(windows), deliver_(std::move(deliver)), timer_([this] { timeIsOver(); }) {}

SubMenuApproach::~SubMenuApproach() = default;

std::optional<IntBox> SubMenuApproach::target(XY<int> from, XY<int> place) const {
    PopUpChain const& chain = windows_.popUps();
    Glob const* const last = chain.last();
    Glob const* const parent = chain.parentOf(last);
    if (!parent) return {};
    TopLevelWindow const* const start = windows_.windowAt(from);
    TopLevelWindow const* const here = windows_.windowAt(place);
    bool const setOutFromParent = start && &start->root() == parent;
    bool const hasArrived = here && &here->root() == last;
    if (!setOutFromParent || hasArrived) return {};
    return last->screenBox();
}

bool SubMenuApproach::holdsBack(XY<int> from, InputEvent const& move) {
    if (delivering_) return false;
    auto const box = target(from, move.place);
    if (!box || !way_.holdsBack(from, move.place, *box, service_get_msecs())) {
        drop();
        return false;
    }
    held_ = move;
    if (!timer_.isRunning()) timer_.start(DiagonalWay::longest);
    return true;
}

void SubMenuApproach::drop() {
    way_.end();
    timer_.stop();
}

void SubMenuApproach::checkTarget(XY<int> from) {
    if (timer_.isRunning() && !target(from, held_.place)) timeIsOver();
}

void SubMenuApproach::timeIsOver() {
    drop();
    delivering_ = true;
    runHandler("move", [this] { deliver_(held_); });
    delivering_ = false;
}

} // namespace wainscot
