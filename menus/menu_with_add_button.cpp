#include "menus/menu_with_add_button.h"

#include "buttons/button.h"
#include "host/drawing/uif_std.h"
#include "host/events/dispatch_scope.h"
#include "host/events/messages.h"
#include "host/services/text_ids.h"

namespace wainscot {

MenuWithAddButton::MenuWithAddButton(InitArgs const& args, UIString const& label) : Menu(args) {
    Button::InitArgs button(label.isEmpty() ? UIString(TextId::addItem) : label, addMsg);
    button.style = eButtonFlat;
    auto* const added = new Button(button);
    button_ = HandlerRef<Button>(added);
    addWidget(added, 0, 0);
    redisplay();
    placeButton();
}

MenuWithAddButton::~MenuWithAddButton() = default;

Button* MenuWithAddButton::getAddButton() const {
    return button_.get();
}

IntBox MenuWithAddButton::calcAreaForItems() const {
    IntBox const area = Menu::calcAreaForItems();
    int const taken = button_ ? UifStd::getButtonHeight() + UifStd::getWidgetGap() / 2 : 0;
    return {area.x1, std::min(area.y1 + taken, area.y2), area.x2, area.y2};
}

void MenuWithAddButton::placeButton() {
    Button* const button = button_.get();
    if (!button) return;
    IntBox const area = Menu::calcAreaForItems();
    setWidgetPos(button, {area.x1, area.y1});
    button->resize(area.width(), UifStd::getButtonHeight());
}

void MenuWithAddButton::reshape() {
    LifeGuard const life = guard();
    Menu::reshape();
    if (life.alive()) placeButton();
}

int MenuWithAddButton::handleMessageEvent(LightweightString<char> name, Glob* sender) {
    if (name != addMsg || !sender || sender != getAddButton()) return Menu::handleMessageEvent(name, sender);
    DispatchScope const scope;
    LifeGuard const life = guard();
    if (Glob* const owner = getOwner()) sendMessage(addMsg, owner, this);
    if (life.alive() && !pinned()) sendMessage(pootMsg, this, this);
    return 1;
}

} // namespace wainscot
