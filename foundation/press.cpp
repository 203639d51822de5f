#include "foundation/press.h"

namespace wainscot {

bool Press::isInside(Event const& event, Glob const& widget) {
    XY<int> const place = eventXYToGlobXY(event, widget);
    return place.x >= 0 && place.x <= widget.width() && place.y >= 0 && place.y <= widget.height();
}

bool Press::isOfLeftButton(Event const& event) {
    return mouse_left_event(event) &&
           (mouse_down_event(event) || mouse_up_event(event) || mouse_move_event(event));
}

bool Press::end() {
    if (!isHeld()) return false;
    held_ = 0;
    ++number_;
    return true;
}

Press::Step Press::take(Event const& event, Glob const& widget) {
    if (mouse_wheel_event(event) || mouse_side_wheel_event(event)) return Step::other;
    int const button = event.kind() & buttons_;
    if (mouse_down_event(event) && mouse_chord_event(event) && isHeld()) return Step::chord;
    if (mouse_up_event(event)) return takeRelease(event, widget);
    if (mouse_down_event(event)) {
        if (button == 0) return Step::other;
        held_ = static_cast<unsigned char>(button);
        place_ = event.place();
        modifiers_ = getModifier(event);
        ++number_;
        return Step::begins;
    }
    if (!mouse_move_event(event) || !isHeld()) return Step::other;
    if ((event.kind() & held_) != 0) return Step::moves;
    end();
    return Step::lost;
}

Press::Step Press::takeRelease(Event const& event, Glob const& widget) {
    if (!isHeld()) return Step::other;
    if ((event.heldButtons() & held_) != 0) return Step::chord;
    end();
    return isInside(event, widget) ? Step::releasedInside : Step::releasedOutside;
}

template class Pressable<Glob>;
template class Pressable<rect>;
template class Pressable<StandardPanel>;

} // namespace wainscot
