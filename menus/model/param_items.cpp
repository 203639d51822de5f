#include "menus/model/param_items.h"

#include "host/services/text_ids.h"
#include "menus/model/param_redirectors.h"
#include "menus/model/sub_menu_creator.h"

namespace wainscot::GenericParam {

namespace {

MenuItem textItem(iParam const& param, UIString const& text) {
    bool const isPlain = (param.getPresentationHints() & eHintPlainText) != 0;
    return isPlain ? MenuItem::plain(text.text()) : MenuItem(text);
}

constexpr std::uint32_t withFlag(std::uint32_t flags, MenuItemFlag::Bits flag, bool isSet) {
    return isSet ? flags | flag : flags;
}

std::vector<MenuItem> optionItems(iParam const& param, std::vector<UIString> const& texts) {
    bool const closes = (param.getPresentationHints() & eHintClosesMenu) != 0;
    std::vector<MenuItem> items;
    for (UIString const& text : texts) {
        items.push_back(textItem(param, text));
        items.back().setFlags(withFlag(MenuItemFlag::active, MenuItemFlag::optionClosesMenu, closes));
    }
    return items;
}

void redirect(MenuItem& item, iParam const& param, MenuItemAction* redirector) {
    item.setCallback(WidgetCallback(Qv::Ptr<MenuItemAction>(redirector), param.getValueType()));
}

void bind(MenuItem& item, Qv::Ptr<BoolParam> const& param) {
    item.setOptions(optionItems(*param, {UIString(TextId::off), UIString(TextId::on)}));
    item.setCurOption(param->value());
    redirect(item, *param, new BoolRedirector(param));
}

void bind(MenuItem& item, Qv::Ptr<MultiParam> const& param) {
    item.setOptions(optionItems(*param, param->options()));
    item.setCurOption(param->value());
    redirect(item, *param, new OptionRedirector(param));
}

void bind(MenuItem& item, Qv::Ptr<ActionParam> const& param) {
    bool const stays = (param->getPresentationHints() & eHintKeepsMenuOpen) != 0;
    item.setFlags(withFlag(MenuItemFlag::active | MenuItemFlag::command, MenuItemFlag::closesMenu, !stays));
    redirect(item, *param, new ActionRedirector(param));
}

Qv::Ptr<MenuData> choices(Qv::Ptr<OptionsParam> const& param) {
    auto data = Qv::makePtr<MenuData>();
    unsigned int index = 0;
    for (UIString const& text : param->options()) {
        MenuItem item = textItem(*param, text);
        redirect(item, *param, new IndexRedirector(param, index++));
        data->addItem(std::move(item));
    }
    return data;
}

void bind(MenuItem& item, Qv::Ptr<ChoiceParam> const& param) {
    item.setSubMenuCreator(makeSubMenuCreator([param](Glob&) { return choices(param); }));
}

template <class T>
bool bindAs(MenuItem& item, Qv::Ptr<iParam> const& param) {
    auto const own = param.cast<T>();
    if (own) bind(item, own);
    return bool(own);
}

} // namespace

std::optional<MenuItem> makeItem(Qv::Ptr<iParam> const& param) {
    if (param) {
        MenuItem item = textItem(*param, param->getLegend());
        bool const isKnown = bindAs<BoolParam>(item, param) || bindAs<MultiParam>(item, param) ||
                             bindAs<ActionParam>(item, param) || bindAs<ChoiceParam>(item, param);
        item.setActive(param->isActive());
        if (isKnown) return item;
    }
    Diagnostics::count("parameter without an item", param ? param->getValueType().c_str() : "null");
    return {};
}

std::vector<MenuItem> makeItems(std::vector<Section> const& sections) {
    std::vector<MenuItem> items;
    for (auto const& [title, params] : sections) {
        bool const hasHeader = !title.isEmpty();
        if (hasHeader) {
            items.emplace_back(title);
            items.back().setType(eExpandedGroupItem);
        }
        for (Qv::Ptr<iParam> const& param : params) {
            std::optional<MenuItem> item = makeItem(param);
            if (!item) continue;
            if (hasHeader) item->setType(eGroupedMenuItem);
            items.push_back(std::move(*item));
        }
    }
    return items;
}

} // namespace wainscot::GenericParam
