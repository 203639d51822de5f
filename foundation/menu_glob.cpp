#include "foundation/menu_glob.h"

#include "foundation/load_toolkit.h"
#include "host/events/dispatch_scope.h"
#include "host/events/event.h"

namespace wainscot {

MenuGlob::MenuGlob(GlobCreationInfo const& info) : Glob(info) {
    loadToolkit();
}

MenuGlob::MenuGlob(unsigned short width, unsigned short height, Palette const& palette, bool opaque,
                   Canvas* canvas)
    : Glob(width, height, palette, opaque, canvas) {
    loadToolkit();
}

MenuGlob::MenuGlob(configb const& settings, unsigned short width, unsigned short height)
    : Glob(settings, width, height) {
    loadToolkit();
}

MenuGlob::~MenuGlob() = default;

void MenuGlob::clearMenu() {
    if (menu_) menu_->clear();
}

void MenuGlob::addMenuItem(MenuItem const& item) {
    if (!menu_ && Registry::instance().makeContextMenu) menu_ = Registry::instance().makeContextMenu();
    if (menu_) menu_->add(item);
}

void MenuGlob::removeMenuItem(LightweightString<char> const& id) {
    if (menu_) menu_->remove(id);
}

void MenuGlob::reviewMenu(Event const*) {}

Glob* MenuGlob::contextMenu() const {
    return open_.get();
}

bool MenuGlob::openMenu(XY<int> const& place, Event const* event) {
    DispatchScope const scope;
    LifeGuard const life = guard();
    reviewMenu(event);
    if (!life.alive() || !hasMenuItems()) return false;
    if (Glob* const before = contextMenu()) destroy(before);
    if (!life.alive()) return false;
    Glob* const opened = menu_->open(*this, place);
    if (!life.alive()) return false;
    open_ = HandlerRef<Glob>(opened);
    return opened != nullptr;
}

XY<int> MenuGlob::menuPlaceForKeys() const {
    // Where the user is writing.
    auto const caret = textCaret();
    return caret ? caret->bottomLeft() : bounds().centre();
}

bool MenuGlob::opensMenu(Event const& event, XY<int>& place) const {
    place = event.place();
    if (mouse_down_event(event) && mouse_right_event(event)) return isPlainEvent(event);
    if (!isKeyPressEvent(event) || event.isRepeat()) return false;
    place = globXYToScreenXY(menuPlaceForKeys());
    return event.keyCode() == Key::menu || event.keyCode() == (Key::shift | Key::f10);
}

bool MenuGlob::react(Event const& event) {
    XY<int> place;
    if (opensMenu(event, place)) {
        LifeGuard const life = guard();
        if (openMenu(place, &event) || !life.alive()) return true;
    }
    return Glob::react(event);
}

} // namespace wainscot
