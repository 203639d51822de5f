#include "host/windows/tool_tips_p.h"

#include "host/drawing/uif_std.h"
#include "host/events/dispatch_scope.h"
#include "host/objects/tooltip_details.h"
#include "host/services/clock.h"

#include <utility>

namespace wainscot {

namespace {

/// The part of the screen that the pointer's usual shapes cover, so that no tip lies under it.
constexpr int pointerExtent = 18;

} // namespace

ToolTips::ToolTips(EventSystem& events) : events_(events), rest_([this] { show(); }) {}

ToolTips::~ToolTips() = default;

bool ToolTips::find(Glob* under, XY<int> place, Subject& subject) {
    if (!under) return false;
    XY<int> inside = under->screenXYToGlobXY(place);
    DispatchScope const scope;
    for (Glob* glob = under; glob; glob = glob->parent()) {
        TooltipDetails details;
        LifeGuard const life = glob->guard();
        bool found = false;
        runHandler("getTooltipDetails", [&] { found = glob->getTooltipDetails(inside, details); });
        if (!life.alive()) return false;
        if (found) {
            subject.glob = HandlerRef<Glob>(glob);
            subject.text = {details.text.text(), details.more.text(), UifStd::getFont()};
            subject.area = details.area.translated(place - inside);
            return true;
        }
        inside += glob->box().bottomLeft();
    }
    return false;
}

void ToolTips::pointerIsOver(Glob* under) {
    // The press has hidden the tip; its subject is remembered until the release.
    if (events_.pointer.heldButtons != 0) return;
    Subject now;
    bool const found = events_.focus.applicationHasFocus() && find(under, events_.pointer.place, now);
    bool const rests = rest_.isRunning() && restPlace_ == events_.pointer.place;
    if (found && now == subject_ && (note_.isShown() || dismissed_ || rests)) return;
    if (note_.isShown()) {
        lastShown_ = service_get_msecs();
        note_.hide();
    }
    dismissed_ = false;
    subject_ = now;
    rest_.stop();
    if (!found) return;
    bool const isReading = service_get_msecs() - lastShown_ < readingMs;
    rest_.start(isReading ? readingRestMs : restMs);
    restPlace_ = events_.pointer.place;
}

void ToolTips::dismiss() {
    dismissed_ = subject_.glob != HandlerRef<Glob>();
    rest_.stop();
    note_.hide();
}

void ToolTips::show() {
    Glob* const glob = subject_.glob.get();
    if (!glob || !glob->isShown()) return;
    XY<int> const place = events_.pointer.place;
    IntBox const pointer(place.x, place.y - pointerExtent, place.x + 1, place.y + 1);
    note_.showBeside(pointer, subject_.text, *glob);
    dismissed_ = !note_.isShown();
}

} // namespace wainscot
