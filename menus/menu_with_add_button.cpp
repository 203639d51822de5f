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
    add();
    return 1;
}

void MenuWithAddButton::add() {
    DispatchScope const scope;
    LifeGuard const life = guard();
    if (Glob* const owner = getOwner()) sendMessage(addMsg, owner, this);
    if (life.alive() && !pinned()) sendMessage(pootMsg, this, this);
}

void MenuWithAddButton::markButton(bool marked) {
    if (Button* const button = getAddButton()) button->setDefaultAction(marked);
    if (marked) setHighlightedItem(noItem);
}

int MenuWithAddButton::handleKeyboardEvent(int keyCode) {
    auto const step = actionFor(keyTable, static_cast<std::uint32_t>(keyCode));
    Button* const button = getAddButton();
    if (!step || !button) return Menu::handleKeyboardEvent(keyCode);
    bool const isMarked = button->isDefaultAction() && getHighlightedItem() == noItem;
    if (isMarked && *step == Step::choose) return add(), 1;
    LifeGuard const life = guard();
    if (button->isDefaultAction()) markButton(false);
    int const before = life.alive() ? getHighlightedItem() : noItem;
    int const answer = life.alive() ? Menu::handleKeyboardEvent(keyCode) : 1;
    if (!life.alive() || isMarked) return answer;
    // Round the end, where the button stands.
    int const after = getHighlightedItem();
    bool const isPastEnd = *step == Step::down && after <= before;
    bool const isPastStart = *step == Step::up && after >= before;
    if (isPastEnd || isPastStart) markButton(true);
    return answer;
}

} // namespace wainscot
