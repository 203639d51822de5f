#pragma once

#include "host/messages/handler_ref.h"
#include "host/windows/pointer_hover_p.h"

namespace wainscot {

/// Brings turns of the wheel and zoom gestures to their receivers: a wheel gesture stays with the object over
/// which it began.
class WheelGesture {
public:
    WheelGesture(InputTargets& targets, PointerHover& hover) : targets_(targets), hover_(hover) {}

    void wheel(InputEvent const& input);
    void zoom(InputEvent const& input);
    void end() { glob_ = HandlerRef<Glob>(); }

private:
    Glob* targetOf(InputEvent const& input);

    InputTargets& targets_;
    PointerHover& hover_;
    HandlerRef<Glob> glob_;
    double lastTime_ = 0.0;
    XY<int> startPlace_;
};

} // namespace wainscot
