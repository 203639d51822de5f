#include "host/windows/containment_p.h"

#include "host/events/dispatch_scope.h"

#include <algorithm>

namespace wainscot {

void ContainmentPath::tell(Step const& step, bool inside) {
    Glob* const glob = step.get();
    if (!glob || glob->containsPointer() == inside) return;
    glob->setFlag(Glob::containsPointerFlag, inside);
    runHandler("handleMouseContainment", [&] { glob->handleMouseContainment(inside); });
}

void ContainmentPath::moveTo(Glob* deepest) {
    std::vector<Step> wanted;
    for (Glob* glob = deepest; glob; glob = glob->parent()) wanted.emplace_back(glob);
    std::reverse(wanted.begin(), wanted.end());
    auto const parting = std::mismatch(steps_.begin(), steps_.end(), wanted.begin(), wanted.end());
    std::vector<Step> const left(parting.first, steps_.end());
    std::vector<Step> const entered(parting.second, wanted.end());
    if (left.empty() && entered.empty()) return;
    steps_ = wanted;
    DispatchScope const scope;
    for (auto step = left.rbegin(); step != left.rend(); ++step) tell(*step, false);
    for (Step const& step : entered) tell(step, true);
}

Glob* ContainmentPath::deepest() const {
    for (auto step = steps_.rbegin(); step != steps_.rend(); ++step)
        if (Glob* const glob = step->get()) return glob;
    return nullptr;
}

} // namespace wainscot
