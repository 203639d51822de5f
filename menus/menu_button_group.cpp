#include "menus/menu_button_group.h"

#include "foundation/layout/box_layout.h"
#include "host/drawing/uif_std.h"
#include "host/events/dispatch_scope.h"
#include "host/events/event.h"

#include <algorithm>

namespace wainscot {

class MenuButtonGroup::MenuButton final : public MenuButtonWidget {
public:
    MenuButton(InitArgs const& args, MenuButtonGroup& group) : MenuButtonWidget(args), group_(&group) {}

    bool canOpen() const { return isActive() && isShown() && !getItems()->isEmpty(); }
    void handleMouseContainment(bool inside) override {
        LifeGuard const life = guard();
        MenuButtonWidget::handleMouseContainment(inside);
        MenuButtonGroup* const group = inside && life.alive() ? group_.get() : nullptr;
        if (group) group->switchUnderPointer(*this);
    }
    bool react(Event const& event) override {
        auto const step = isActive() && isKeyPressEvent(event)
                              ? actionFor(MenuButtonGroup::keyTable, event.keyCode())
                              : std::nullopt;
        if (!step) return MenuButtonWidget::react(event);
        if (*step == openStep) return openByKey(), true;
        MenuButtonGroup* const group = group_.get();
        MenuButton* const next = group ? group->neighbourOf(*this, *step == nextStep ? 1 : -1) : nullptr;
        if (next) next->claimKbdFocus();
        return true;
    }

protected:
    bool stepToNeighbour(int direction) override {
        MenuButtonGroup* const group = group_.get();
        if (MenuButton* const next = group ? group->neighbourOf(*this, direction) : nullptr)
            group->switchTo(*next);
        return true;
    }
    /// A press on one button may go on over the next, and into its menu.
    Glob* dropDownOpener() override {
        return Glob::isWithin(this, group_.get()) ? static_cast<Glob*>(group_.get()) : this;
    }
    void pressMoved(Event const& event) override {
        MenuButtonGroup* const group = group_.get();
        MenuButton* const under = group ? group->buttonAt(event.place()) : nullptr;
        if (!under || !group->switchUnderPointer(*under)) MenuButtonWidget::pressMoved(event);
    }

private:
    /// Null when it has died, and the button was taken out of it before.
    HandlerRef<MenuButtonGroup> group_;
};

namespace {

StandardPanel::InitArgs barArgs() {
    StandardPanel::InitArgs args(0, toSize16(UifStd::getButtonHeight()), Border(Border::none));
    args.opaque = false;
    return args;
}

} // namespace

MenuButtonGroup::MenuButtonGroup() : StandardPanel(barArgs()) {
    auto* const row = setLayout(BoxLayout::makeRow());
    row->setMargins(0);
    row->setGaps(0, 0);
}

MenuButtonGroup::~MenuButtonGroup() = default;

MenuButtonWidget* MenuButtonGroup::addMenu(UIString const& label, Qv::Ptr<MenuData> items) {
    MenuButtonWidget::InitArgs args(label, std::move(items));
    args.style = eButtonFlat;
    args.hasArrow = false;
    args.message = clickMsg;
    auto* const row = dynamic_cast<BoxLayout*>(getLayout());
    if (!row) return nullptr;
    auto* const button = row->add(std::make_unique<MenuButton>(args, *this));
    if (!button) return nullptr;
    buttons_.push_back(HandlerRef<MenuButton>(button));
    resize(width() + button->width(), height());
    return button;
}

MenuButtonWidget* MenuButtonGroup::getButton(std::size_t index) const {
    return index < buttons_.size() ? buttons_[index].get() : nullptr;
}

MenuButtonWidget* MenuButtonGroup::getOpenButton() const {
    auto const found = std::ranges::find_if(buttons_, [](HandlerRef<MenuButton> const& button) {
        return button && button.get()->isDropDownOpen();
    });
    return found == buttons_.end() ? nullptr : found->get();
}

MenuButtonGroup::MenuButton* MenuButtonGroup::neighbourOf(MenuButton const& button, int direction) const {
    auto const count = static_cast<int>(buttons_.size());
    auto const found = std::ranges::find_if(
        buttons_, [&](HandlerRef<MenuButton> const& other) { return other.get() == &button; });
    auto const from = static_cast<int>(found - buttons_.begin());
    for (int i = 1; i < count; ++i) {
        MenuButton* const next =
            buttons_[static_cast<std::size_t>((from + i * direction + count * count) % count)].get();
        if (next && next->canOpen()) return next;
    }
    return nullptr;
}

void MenuButtonGroup::switchTo(MenuButton& button) {
    DispatchScope const scope;
    LifeGuard const life = button.guard();
    if (MenuButtonWidget* const open = getOpenButton()) open->removeMenuFromScreen();
    if (life.alive()) button.openByKey();
}

bool MenuButtonGroup::switchUnderPointer(MenuButton& button) {
    MenuButtonWidget const* const open = getOpenButton();
    if (!open || open == &button || !button.canOpen()) return false;
    switchTo(button);
    return true;
}

MenuButtonGroup::MenuButton* MenuButtonGroup::buttonAt(XY<int> const& place) const {
    auto const found = std::ranges::find_if(buttons_, [&](HandlerRef<MenuButton> const& button) {
        return button && button.get()->isShown() && button.get()->screenBox().contains(place);
    });
    return found == buttons_.end() ? nullptr : found->get();
}

void MenuButtonGroup::getTabOrderables(std::vector<TabOrderable*>& controls, unsigned int) {
    for (HandlerRef<MenuButton> const& button : buttons_)
        if (button && Glob::isParentedTo(button.get(), this)) controls.push_back(button.get());
}

/// The sender is a button, or an open menu.
bool MenuButtonGroup::react(Event const& event) {
    bool const isFromElsewhere = !event.sender() || event.sender() == this;
    if (!isMessageEvent(event) || isFromElsewhere || !parent()) return StandardPanel::react(event);
    return parent()->handleEvent(event);
}

} // namespace wainscot
