#include "menus/menu_button_widget.h"

#include "host/drawing/uif_std.h"
#include "host/events/event.h"

namespace wainscot {

class MenuButtonWidget::OpenedMenu final : public Menu {
public:
    OpenedMenu(Menu::InitArgs const& args, MenuButtonWidget& button) : Menu(args), button_(&button) {}

protected:
    bool stepBeyond(int direction) override { return !button_ || button_.get()->stepToNeighbour(direction); }

private:
    HandlerRef<MenuButtonWidget> button_;
};

MenuButtonWidget::InitArgs::InitArgs(UIString text, Qv::Ptr<MenuData> list, unsigned short w,
                                     unsigned short h)
    : Button::InitArgs(std::move(text), {}, w, h), items(std::move(list)) {}

MenuButtonWidget::MenuButtonWidget(InitArgs const& args)
    : DropDownButton(args, eStaysDown), hasArrow_(args.hasArrow) {
    setItems(args.items);
    if (args.width == 0) resize(sizeNeeds().natural.x, height());
}

MenuButtonWidget::~MenuButtonWidget() = default;

void MenuButtonWidget::setItems(Qv::Ptr<MenuData> items) {
    items_ = items ? std::move(items) : Qv::makePtr<MenuData>();
}

Menu* MenuButtonWidget::makeDropDown() {
    if (items_->isEmpty()) return nullptr;
    Menu::InitArgs args(items_, this);
    args.maxHeight = heightForList(0);
    return new OpenedMenu(args, *this);
}

bool MenuButtonWidget::handleDropDownMessage(Event const& message) {
    if (Glob* const hearer = parent()) hearer->handleEvent(message);
    return false;
}

bool MenuButtonWidget::stepToNeighbour(int) {
    return true;
}

// Look

SizeNeeds MenuButtonWidget::sizeNeeds() const {
    SizeNeeds needs = DropDownButton::sizeNeeds();
    if (!hasArrow_ && needs.natural.x >= 0) needs.natural.x = Button::calcSizeFor(getString(), getFont()).x;
    return needs;
}

int MenuButtonWidget::rightMargin() const {
    return hasArrow_ ? DropDownButton::rightMargin() : UifStd::getIndentWidth();
}

void MenuButtonWidget::drawDropDownButtonArrow() {
    if (hasArrow_) DropDownButton::drawDropDownButtonArrow();
}

void MenuButtonWidget::drawDropDownButtonSeparator() {
    if (hasArrow_) DropDownButton::drawDropDownButtonSeparator();
}

// As a heading

namespace {

MenuButtonWidget::InitArgs headingArgs(UIString const& title, Qv::Ptr<MenuData> items) {
    MenuButtonWidget::InitArgs args(title, std::move(items));
    args.font = UifStd::getSubheadingFont();
    args.style = eButtonFlat;
    return args;
}

} // namespace

TitleMenuButton::TitleMenuButton(UIString const& title, Qv::Ptr<MenuData> items)
    : MenuButtonWidget(headingArgs(title, std::move(items))) {
    setAlignment(eAlignLeft);
}

TitleMenuButton::~TitleMenuButton() = default;

void TitleMenuButton::handleLookChange(LookChange changes) {
    setFont(UifStd::getSubheadingFont());
    MenuButtonWidget::handleLookChange(changes);
}

} // namespace wainscot
