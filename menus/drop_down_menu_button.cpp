#include "menus/drop_down_menu_button.h"

#include "host/drawing/canvas_renderer.h"
#include "host/drawing/uif_std.h"
#include "host/events/dispatch_scope.h"
#include "host/objects/description.h"
#include "host/windows/glob_manager.h"
#include "look/ink.h"
#include "menus/menu_layout_p.h"

namespace wainscot {

namespace {

/// The least width, in heights of a button.
constexpr int leastWidth = 3;

} // namespace

DropDownMenuButton::InitArgs::InitArgs(Qv::Ptr<DropDownMenuData> list, unsigned short w, unsigned short h)
    : Button::InitArgs(w, h), items(std::move(list)) {}

DropDownMenuButton::InitArgs::InitArgs(Qv::Ptr<DropDownMenuData> list, XY<int> const& size)
    : InitArgs(std::move(list)) {
    setSize(size);
}

DropDownMenuButton::DropDownMenuButton(InitArgs const& args)
    : DropDownButton(args, args.mode), observer_(this), ownLabel_(args.label), maxHeight_(args.maxHeight),
      automaticWidth_(args.width == 0) {
    setItems(args.items);
    if (height() == 0) resize(width(), UifStd::getButtonHeight());
}

DropDownMenuButton::DropDownMenuButton(Qv::Ptr<DropDownMenuData> items)
    : DropDownMenuButton(InitArgs(std::move(items))) {}

DropDownMenuButton::~DropDownMenuButton() = default;

// Items

void DropDownMenuButton::setItems(Qv::Ptr<DropDownMenuData> items) {
    DispatchScope const scope;
    LifeGuard const life = guard();
    if (isDropDownOpen()) removeMenuFromScreen();
    if (!life.alive()) return;
    items_ = items ? std::move(items) : Qv::makePtr<DropDownMenuData>();
    observer_.stopObserving();
    observer_.attach(*items_);
    if (automaticWidth_) autoSize();
    if (life.alive()) handleCurrentItemChange();
}

bool DropDownMenuButton::setSelectedItemInternal(unsigned short item, bool notify) {
    DispatchScope const scope;
    LifeGuard const life = guard();
    Qv::Ptr<DropDownMenuData> const items = items_;
    bool const isSelected = items->setSelectedItemPhysical(item, notify);
    if (life.alive()) handleCurrentItemChange();
    return isSelected;
}

void DropDownMenuButton::useSelectedForButtonDisplay(bool use) {
    showsSelected_ = use;
    handleCurrentItemChange();
}

void DropDownMenuButton::notifyValChanged(ValObserverBase*) {
    handleCurrentItemChange();
}

void DropDownMenuButton::handleCurrentItemChange() {
    DispatchScope const scope;
    LifeGuard const life = guard();
    setItemColours();
    initCurrentString();
    if (!life.alive()) return;
    if (Menu* const open = getDropDown()) open->makeDirty();
    describeChanged(DescriptionChange::value);
}

void DropDownMenuButton::initCurrentString() {
    unsigned short const selected = showsSelected_ ? items_->getSelectedItemPhysical() : MenuData::none;
    setString(selected == MenuData::none ? ownLabel_
                                         : UIString(items_->getItem(selected).getDisplayString()));
}

/// Colours of an item's own are shown on the face, too.
void DropDownMenuButton::setItemColours() {
    unsigned short const selected = showsSelected_ ? items_->getSelectedItemPhysical() : MenuData::none;
    std::optional<Colour> text, ground;
    if (selected != MenuData::none) {
        MenuItem const& item = items_->getItem(selected);
        if (Colour const own = item.getTextColour(); own != MenuItem::getDefaultColour()) text = own;
        if (Colour const own = item.getBackgroundColour(); own != MenuItem().getBackgroundColour())
            ground = own;
    }
    if (text == itemText_ && ground == itemGround_) return;
    itemText_ = text;
    itemGround_ = ground;
    makeDirty();
}

// Size

int DropDownMenuButton::calcWidth() const {
    int wanted = leastWidth * UifStd::getButtonHeight();
    if (!showsSelected_ || !ownLabel_.isEmpty())
        wanted = std::max(wanted, calcWidthFor(ownLabel_, getFont()));
    if (!showsSelected_) return wanted;
    for (unsigned short const index : MenuLayout::longestItems(*items_))
        wanted = std::max(wanted, calcWidthFor(items_->getItem(index).getDisplayString(), getFont()));
    return wanted;
}

void DropDownMenuButton::autoSize() {
    int const height = this->height() != 0 ? this->height() : UifStd::getButtonHeight();
    resize(calcWidth(), height);
}

SizeNeeds DropDownMenuButton::sizeNeeds() const {
    SizeNeeds needs = DropDownButton::sizeNeeds();
    if (automaticWidth_) needs.natural = {calcWidth(), UifStd::getButtonHeight()};
    return needs;
}

void DropDownMenuButton::handleLookChange(LookChange changes) {
    LifeGuard const life = guard();
    DropDownButton::handleLookChange(changes);
    if (life.alive()) handleCurrentItemChange();
}

// The list

DropDownMenu* DropDownMenuButton::makeDropDown() {
    return items_->isEmpty() ? nullptr : new DropDownMenu(listArgs());
}

DropDownMenu::InitArgs DropDownMenuButton::listArgs() {
    DropDownMenu::InitArgs args(items_, this);
    args.maxHeight = heightForList(maxHeight_);
    args.minWidth = toSize16(width());
    return args;
}

void DropDownMenuButton::handleItemClick(NotifyMsg const&) {
    informOwner();
}

void DropDownMenuButton::informOwner() {
    informParent(dropDownMenuButtonMsg, 0);
}

bool DropDownMenuButton::pressBegan(Event const& event) {
    LifeGuard const life = guard();
    unsigned int const number = press().number();
    GlobManager const* const manager = GlobManager::current();
    if (manager && !manager->isPopUp(getRootParent(this))) claimKbdFocus();
    // Who has lost the focus may have ended the press.
    if (!life.alive() || number != press().number() || !isActive()) return true;
    return DropDownButton::pressBegan(event);
}

// Stepping

bool DropDownMenuButton::react(Event const& event) {
    // What was done by the choice may have closed the list already.
    if (isMessageEvent(event) && event.message() == DropDownMenu::chosenMsg) {
        handleItemClick(NotifyMsg(event.message(), event.data()));
        return true;
    }
    if (!isActive() || !isKeyPressEvent(event)) return DropDownButton::react(event);
    DispatchScope const scope;
    bool const isTyped = event.keyCode() == Key::space && !typed_.isEmpty();
    auto const step = actionFor(keyTable, event.keyCode());
    if (step && *step != openList) return typed_.forget(), performStep(*step);
    if (!step && (isTyped || !actionFor(Button::keyTable, event.keyCode())) && typeAhead(event.keyCode()))
        return true;
    return DropDownButton::react(event);
}

int DropDownMenuButton::selectedIndex() const {
    unsigned short const selected = items_->getSelectedItemPhysical();
    return selected == MenuData::none ? -1 : selected;
}

bool DropDownMenuButton::performStep(Step step) {
    auto const count = static_cast<int>(items_->numItems());
    int const current = selectedIndex();
    switch (step) {
    case nextItem:
        return selectNear(current, 1);
    case previousItem:
        return selectNear(current < 0 ? count : current, -1);
    case firstItem:
        return selectNear(-1, 1);
    case lastItem:
        return selectNear(count, -1);
    case openList:
        break;
    }
    return true;
}

/// The nearest item in that direction; without one nothing changes.
bool DropDownMenuButton::selectNear(int from, int direction) {
    int const item = items_->nextToSelect(from, direction);
    return item < 0 || select(item);
}

/// As the user's choice.
bool DropDownMenuButton::select(int item) {
    if (item == items_->getSelectedItemPhysical()) return true;
    LifeGuard const life = guard();
    if (setSelectedItemInternal(static_cast<unsigned short>(item), true) && life.alive()) informOwner();
    return true;
}

void DropDownMenuButton::handleMouseWheelDelta(int delta) {
    performStep(delta < 1 ? nextItem : previousItem);
}

bool DropDownMenuButton::typeAhead(std::uint32_t key) {
    if (!typed_.take(key)) return false;
    auto const textOf = [this](int item) {
        return items_->getItem(static_cast<unsigned short>(item)).getDisplayString();
    };
    auto const canBeFound = [&](int item) {
        return items_->canBeSelected(static_cast<unsigned short>(item)) && typed_.matches(textOf(item));
    };
    int const found = typed_.find(static_cast<int>(items_->numItems()), selectedIndex(), canBeFound,
                                  [&](int item) { return typed_.isAll(textOf(item)); });
    return found < 0 || select(found);
}

// Look

void DropDownMenuButton::drawDropDownButtonText() {
    if (!itemText_ && !itemGround_) return DropDownButton::drawDropDownButtonText();
    IntBox const area = canvasArea();
    int const left = area.x1 + UifStd::getIndentWidth() + UifStd::getWidgetGap();
    int const room = std::max(area.x2 - rightMargin() - left, 0);
    CanvasRenderer renderer(canvas(), area);
    Colour const ground = itemGround_.value_or(getBackCol());
    int const inset = UifStd::getWidgetGap() / 2;
    if (itemGround_)
        renderer.renderPrimitive(
            Glib::RectDescription({area.x1 + inset, area.y1 + inset, left + room, area.y2 - inset}, ground));
    Colour const ink = ControlLook::inkOn(itemText_.value_or(getForeCol()), ground, isActive());
    FittedLabel(getString(), getFont()).draw(renderer, area, left, room, ink);
}

void DropDownMenuButton::describe(GlobDescription& description) const {
    DropDownButton::describe(description);
    description.value = items_->getSelectedItemNameW();
}

} // namespace wainscot
