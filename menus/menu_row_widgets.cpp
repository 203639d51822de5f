#include "buttons/checkbox.h"
#include "host/base/convert.h"
#include "host/base/first_exception.h"
#include "host/base/letter_case.h"
#include "host/drawing/drawable.h"
#include "host/events/dispatch_scope.h"
#include "host/objects/description.h"
#include "host/services/text_ids.h"
#include "menus/drop_down_menu_button.h"
#include "menus/menu.h"

#include <algorithm>

namespace wainscot {

using Text = LightweightString<wchar_t>;

namespace {

/// Whether a text is the word for "off".
bool isOff(Text const& text) {
    return isSameText(text.view(), UIString(TextId::off).text().view());
}

} // namespace

bool Menu::isBinaryItem(MenuItem const& item) {
    auto const options = item.options();
    return options.size() == 2 &&
           (isOff(options[0].getDisplayString()) || isOff(options[1].getDisplayString()));
}

bool Menu::convertToBool(MenuItem const& item) {
    if (!isBinaryItem(item)) return false;
    bool const isFirst = item.getCurOption() == 0;
    return isOff(item.options()[0].getDisplayString()) != isFirst;
}

// Making

namespace {

/// What is said of a widget in a row: it bears the name of the item.
class RowName {
public:
    virtual ~RowName() = default;
    Text name;
};

template <class Widget>
class InRow final : public Widget, public RowName {
public:
    using Widget::Widget;
    void describe(GlobDescription& description) const override {
        Widget::describe(description);
        description.name = name;
    }
};

/// The options as a list, which closes when one is chosen.
Qv::Ptr<DropDownMenuData> listOf(MenuItem const& item) {
    std::vector<MenuItem> options(item.options().begin(), item.options().end());
    for (MenuItem& option : options) option.setFlags(option.getFlags() | MenuItemFlag::closesMenu);
    return Qv::makePtr<DropDownMenuData>(std::move(options));
}

} // namespace

int Menu::widthOfOptions(MenuItem const& item) const {
    if (isBinaryItem(item)) return getRowHeight();
    int width = 0;
    for (MenuItem const& option : item.options())
        width = std::max(width, DropDownMenuButton::calcWidthFor(option.getDisplayString(), item.getFont()));
    return width;
}

Glob* Menu::makeRowWidget(MenuItem const& item) const {
    auto const height = toSize16(getRowHeight());
    if (isBinaryItem(item)) return new InRow<Checkbox>(Checkbox::InitArgs(height, height));
    DropDownMenuButton::InitArgs args(listOf(item), toSize16(widthOfOptions(item)), height);
    args.font = item.getFont();
    args.style = eButtonFlat;
    auto* const list = new InRow<DropDownMenuButton>(args);
    list->setAlignment(eAlignRight);
    return list;
}

bool Menu::showOption(Glob& widget, MenuItem const& item) {
    if (auto* const named = dynamic_cast<RowName*>(&widget)) named->name = item.getDisplayString();
    if (auto* const box = dynamic_cast<Checkbox*>(&widget)) {
        if (!isBinaryItem(item)) return false;
        box->setState(convertToBool(item));
        return true;
    }
    auto* const list = dynamic_cast<DropDownMenuButton*>(&widget);
    auto const label = [](MenuItem const& option) { return option.label(); };
    if (!list || isBinaryItem(item) ||
        !std::ranges::equal(list->getItems()->items(), item.options(), {}, label, label))
        return false;
    unsigned int const option = item.getCurOption();
    if (option < item.options().size())
        list->setSelectedItemInternal(static_cast<unsigned short>(option), false);
    else
        list->getItems()->clearSelection(false), list->handleCurrentItemChange();
    return true;
}

/// Check boxes and lists of options stand in the rows that are seen.
void Menu::createWidgetsForItems() {
    DispatchScope const scope;
    LifeGuard const life = guard();
    std::vector<RowWidget> before = std::exchange(widgets_, {});
    for (VisibleMenuItem const& row : std::vector<VisibleMenuItem>(visible_)) {
        if (row.item >= items_->numItems()) continue;
        MenuItem const item = items_->getItem(row.item);
        if (!item.hasOptions()) continue;
        LightweightString<char> const id = item.id();
        // Copies of an item share its id.
        auto const known = std::ranges::find_if(
            before, [&](RowWidget const& entry) { return entry.widget && entry.id == id; });
        Glob* widget = known == before.end() ? nullptr : known->widget.get();
        if (widget && !showOption(*widget, item)) widget = nullptr;
        if (!life.alive()) return;
        XY<int> const place{row.box.x2 - widthOfOptions(item), row.box.y1};
        if (widget) {
            known->widget = {};
            setWidgetPos(widget, place);
        } else {
            widget = makeRowWidget(item);
            showOption(*widget, item);
            addWidget(widget, place.x, place.y);
        }
        if (!life.alive()) return;
        widgets_.push_back({id, row.item, HandlerRef<Glob>(widget)});
        widget->setActive(item.isActive());
        if (!life.alive()) return;
    }
    for (RowWidget const& entry : before)
        if (entry.widget && life.alive()) destroy(entry.widget.get());
}

unsigned short Menu::findItemFromWidget(Glob const* widget) const {
    auto const found = std::ranges::find_if(
        widgets_, [&](RowWidget const& entry) { return widget && entry.widget.get() == widget; });
    if (found == widgets_.end()) return MenuData::none;
    // The list may have changed since.
    bool const isThere = found->item < items_->numItems() && items_->getItem(found->item).hasId(found->id);
    return isThere ? found->item : findItem(found->id);
}

// Choosing

bool Menu::isRowWidgetMsg(LightweightString<char> const& name) {
    return name == buttonHighlightMsg || name == DropDownMenuButton::dropDownMenuButtonMsg ||
           name.startsWith(Checkbox::defaultPrefix.view());
}

/// A check box in a row was ticked, or another option chosen from the list.
int Menu::handleRowWidget(Glob* sender) {
    unsigned short const index = findItemFromWidget(sender);
    DispatchScope const scope;
    LifeGuard const life = guard();
    MenuItem& item = items_->getItem(index);
    auto const* const box = dynamic_cast<Checkbox const*>(sender);
    auto const* const list = dynamic_cast<DropDownMenuButton const*>(sender);
    if (box && convertToBool(item) != box->isTicked()) item.setCurOption(item.getCurOption() == 0 ? 1 : 0);
    if (list && list->getSelectedItem() >= 0)
        item.setCurOption(static_cast<unsigned int>(list->getSelectedItem()));
    bool const closes = shouldCloseMenuAfterSelection(index);
    FirstException thrown;
    thrown.run([&] { itemChanged(index); });
    if (life.alive()) finishChoice(index, closes);
    thrown.rethrow();
    return 1;
}

} // namespace wainscot
