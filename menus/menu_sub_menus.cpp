#include "host/base/diagnostics.h"
#include "host/drawing/uif_std.h"
#include "host/events/dispatch_scope.h"
#include "host/objects/glob_notices.h"
#include "host/services/clock.h"
#include "host/windows/popup_chain.h"
#include "menus/menu.h"

namespace wainscot {

/// Null when there is none. The menu may have died.
Glob* Menu::makeSubMenuGlob(unsigned short index) {
    MenuItem const item = items_->getItem(index);
    MenuItem::SubMenu const made = item.createSubMenu(*this);
    if (made.widget && !GlobManager::instance().isFree(made.widget)) {
        Diagnostics::count("sub-menu is in use", "");
        return nullptr;
    }
    if (made.widget) return made.widget;
    return made.items ? new Menu(made.items, this) : nullptr;
}

bool Menu::makeSubMenu(unsigned short item) {
    return openSubMenu(item, false);
}

bool Menu::openSubMenu(unsigned short item, bool byTimer) {
    if (item >= items_->numItems()) return false;
    DispatchScope const scope;
    LifeGuard const life = guard();
    deleteSubMenu();
    if (!life.alive() || item >= items_->numItems()) return false;
    std::unique_ptr<Glob> made(makeSubMenuGlob(item));
    int const row = life.alive() ? findVisibleItem(item) : noItem;
    if (!made || row < 0) return false;
    IntBox const box = visible_[static_cast<std::size_t>(row)].box;
    IntBox const anchor(screenBox().x1, screenBox().y1 + box.y1, screenBox().x2, screenBox().y1 + box.y2);
    GlobCreationInfo const size(toSize16(made->width()), toSize16(made->height()));
    bool isOpposite = false;
    GlobManager& manager = GlobManager::instance();
    int const edge = UifStd::getIndentWidth() / 2;
    XY<int> place = manager.getSafePosForGlob(size, anchor, WidgetRelativity::rightOf, 0,
                                              WidgetAlignment::end, &isOpposite);
    if (isOpposite) place.x = screenBox().x1 - made->width() + UifStd::getIndentWidth();
    place.y += edge;
    PopUpOptions options;
    options.place = place;
    options.anchor = anchor;
    if (manager.isPopUp(getRootParent(this)) && manager.popUps().contains(getRootParent(this)))
        options.parent = getRootParent(this);
    else
        options.opener = this;
    Glob* const opened = made.get();
    LifeGuard const openedLife = opened->guard();
    if (!manager.openPopUp(opened, options)) return false;
    static_cast<void>(made.release());
    if (!life.alive() || !openedLife.alive()) return false;
    subMenu_ = HandlerRef<Glob>(opened);
    subMenuItem_ = item;
    wasOpenedByTimer_ = byTimer;
    subMenuOpenedAt_ = service_get_msecs();
    deletionWatch_ =
        GlobNotices::watchDeletion(*opened, makeCallback<int, NotifyMsg>([this](NotifyMsg const&) {
            handleGlobDeletion();
            return 1;
        }));
    moveWatch_ = GlobNotices::watchMoves(*opened, makeCallback<int, NotifyMsg>([this](NotifyMsg const&) {
        handleGlobMoved();
        return 1;
    }));
    redrawRow(item);
    return true;
}

/// What the user has put elsewhere stays when the pointer goes away.
void Menu::handleGlobMoved() {
    Glob const* const open = getSubMenu();
    if (open && open->isMoving()) wasOpenedByTimer_ = false;
}

void Menu::handleGlobDeletion() {
    subMenu_ = {};
    deletionWatch_ = {};
    moveWatch_ = {};
    redrawRow(std::exchange(subMenuItem_, noItem));
}

void Menu::deleteSubMenu() {
    Glob* const open = getSubMenu();
    if (!open) return;
    DispatchScope const scope;
    handleGlobDeletion();
    destroy(open);
}

} // namespace wainscot
