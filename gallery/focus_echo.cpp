#include "gallery/focus_echo.h"

#include "driver/script.h"
#include "host/objects/glob_notices.h"
#include "host/objects/kbd_focus.h"

#include <cstdio>

namespace wainscot::gallery {

FocusEcho::FocusEcho(Glob& root)
    : later_([this] { print(); }),
      watch_(GlobNotices::watchFocus(root, makeCallback<int, NotifyMsg>([this](NotifyMsg const&) {
                                         changed();
                                         return 1;
                                     }))) {}

void FocusEcho::changed() {
    print();
    unprinted_ = HandlerRef<Glob>(get_kbd_focus());
    later_.start(0);
}

void FocusEcho::print() {
    if (Glob* const holder = unprinted_.get()) std::fputs(Script::focusLine(holder).c_str(), stdout);
    std::fflush(stdout);
    unprinted_ = {};
}

} // namespace wainscot::gallery
