#include "host/windows/modal_flash_p.h"

#include "host/windows/glob_manager.h"
#include "host/windows/top_level_window.h"

namespace wainscot {

ModalFlash::ModalFlash(GlobManager& windows) : windows_(windows), timer_([this] { tick(); }) {}

ModalFlash::~ModalFlash() = default;

void ModalFlash::start(TopLevelWindow const& window) {
    end();
    root_ = window.rootStamp();
    left_ = changes;
    timer_.start(interval);
    show(true);
}

void ModalFlash::show(bool marked) {
    if (TopLevelWindow* window = windows_.windowOfStamp(root_)) window->setMarked(marked);
}

void ModalFlash::end() {
    if (!root_.valid()) return;
    show(false);
    root_.invalidate();
    timer_.stop();
}

void ModalFlash::forget(Glob const& root) {
    if (root.idStamp() == root_) end();
}

void ModalFlash::tick() {
    if (--left_ <= 0) return end();
    show(left_ % 2 == 0);
    timer_.start(interval);
}

} // namespace wainscot
