#include "gallery/page.h"

#include "buttons/button.h"
#include "buttons/checkbox.h"
#include "foundation/label.h"
#include "foundation/layout/box_layout.h"
#include "foundation/standard_panel.h"
#include "foundation/val_server_adaptor.h"
#include "host/base/convert.h"
#include "menus/menu.h"
#include "menus/model/menu_change.h"
#include "menus/model/sub_menu_creator.h"

namespace wainscot::gallery {

namespace {

using Text = LightweightString<wchar_t>;

MenuItem grouped(wchar_t const* label, char const* message) {
    return MenuItem(label, WidgetCallback(message), eGroupedMenuItem);
}

MenuItem inactive(wchar_t const* label) {
    MenuItem item(label, WidgetCallback("never"));
    item.setActive(false);
    return item;
}

/// Folders whose sub-menus go on without end; each is made when it opens.
MenuItem folder(Text const& name) {
    MenuItem item = MenuItem::plain(name);
    item.setSubMenuCreator(makeSubMenuCreator([name](Glob&) {
        std::vector<MenuItem> items;
        for (wchar_t const* const part : {L"reels", L"sound", L"stills"})
            items.push_back(folder(name + L"/" + part));
        items.push_back(MenuItem(L"Open this folder", WidgetCallback("folder")));
        return Qv::makePtr<MenuData>(std::move(items));
    }));
    return item;
}

Qv::Ptr<MenuData> plainItems() {
    return Qv::makePtr<MenuData>(std::vector<MenuItem>{
        MenuItem(L"Open...||Ctrl+O", WidgetCallback("open")),
        MenuItem(L"Save||Ctrl+S", WidgetCallback("save")), inactive(L"Save as..."), MenuItem(),
        MenuItem(L"<b>Export</b> for the <i>cinema</i>", WidgetCallback("export")),
        MenuItem::plain(L"harbour | [take 4] <final>.mov", WidgetCallback("clip")), folder(L"/media"),
        MenuItem(), MenuItem(L"Quit||Ctrl+Q", WidgetCallback("quit"))});
}

Qv::Ptr<MenuData> optionItems() {
    return Qv::makePtr<MenuData>(
        std::vector<MenuItem>{MenuItem(L"Loop||[Off] [On]", WidgetCallback("loop")),
                              MenuItem(L"Snap||[Off] [On]", WidgetCallback("snap")),
                              MenuItem(L"Speed||[Half] [Normal] [Double]", WidgetCallback("speed")),
                              MenuItem(L"Quality||[Draft] [Good] [Best]", WidgetCallback("quality")),
                              inactive(L"Proxy||[Off] [On]")});
}

Qv::Ptr<MenuData> groupedItems() {
    return Qv::makePtr<MenuData>(std::vector<MenuItem>{
        MenuItem(L"Picture", WidgetCallback(""), eExpandedGroupItem), grouped(L"Colour", "colour"),
        grouped(L"Crop", "crop"), grouped(L"Rotate", "rotate"),
        MenuItem(L"Sound", WidgetCallback(""), eCompressedGroupItem), grouped(L"Equaliser", "equaliser"),
        grouped(L"Limiter", "limiter"), MenuItem(L"Titles", WidgetCallback(""), eExpandedGroupItem),
        grouped(L"Lower third", "third"), grouped(L"Roll", "roll")});
}

Qv::Ptr<MenuData> longItems() {
    auto items = Qv::makePtr<MenuData>();
    items->reserve(MenuData::maxItems);
    for (int i = 0; i < static_cast<int>(MenuData::maxItems); ++i)
        items->addItem(MenuItem(L"Take " + Qv::WStringFromInteger(i + 1), WidgetCallback("take")));
    return items;
}

/// Menus of each kind, in the page and as pop-ups.
class MenusPage final : public StandardPanel {
public:
    MenusPage(XY<int> size, LogLine log) : StandardPanel(size), log_(std::move(log)) {
        setTabGoesOn(true);
        auto* const column = setLayout(BoxLayout::makeColumn());
        Label::InitArgs note(L"A right press opens the context menu of this page; so does the Menu key, or "
                             L"Shift+F10, while something "
                             L"here has the focus.",
                             Label::Part::secondary);
        column->add(std::make_unique<Label>(note));
        auto* const row = column->add(BoxLayout::makeRow(), {.stretch = 1});
        addMenu(*row, plainItems());
        auto options = optionItems();
        for (MenuItem const& item :
             GenericParam::makeItems({{L"Bound to the box below", {loop_, quality_, size_}}}))
            options->addItem(item);
        addMenu(*row, options);
        addMenu(*row, groupedItems());
        auto* const buttons = column->add(BoxLayout::makeRow());
        addButton(*buttons, L"Pop up", plainItems);
        addButton(*buttons, L"Groups", groupedItems);
        addButton(*buttons, L"65,535 items", longItems);
        auto* const box = buttons->add(std::make_unique<Checkbox>(Checkbox::InitArgs(L"Loop the take")));
        bindToServer(*box, loop_->server());
        addTabStop(*box);
        addMenuItem(MenuItem(L"Cascades", folder(L"/media").subMenuCreator()));
        addMenuItem(MenuItem(L"About this page", WidgetCallback("about")));
    }

    int handleMessageEvent(LightweightString<char> name, Glob* sender) override {
        return hear(name, sender, {}) ? 1 : StandardPanel::handleMessageEvent(name, sender);
    }
    int handleDataMessageEvent(LightweightString<char> name, Glob* sender, Qv::Ptr<iObject> data) override {
        return hear(name, sender, data) ? 1 : StandardPanel::handleDataMessageEvent(name, sender, data);
    }

private:
    struct Opener {
        Button* button;
        Qv::Ptr<MenuData> (*make)();
    };

    void addMenu(BoxLayout& row, Qv::Ptr<MenuData> const& items) {
        addTabStop(*row.add(std::make_unique<Menu>(items, this), {.stretch = 1}));
    }
    void addButton(BoxLayout& row, wchar_t const* label, Qv::Ptr<MenuData> (*make)()) {
        Button::InitArgs args(label, "pop up");
        auto* const button = row.add(std::make_unique<Button>(args));
        addTabStop(*button);
        openers_.push_back({button, make});
    }
    bool hear(LightweightString<char> const& name, Glob* sender, Qv::Ptr<iObject> const& data) {
        if (name == pootMsg) return false;
        for (Opener const& opener : openers_)
            if (opener.button == sender) return popUp(opener), true;
        Text line = fromUTF8(name);
        if (auto const change = data.cast<MenuData::Change>())
            line += L"  option " + Qv::WStringFromInteger(static_cast<int>(change->option()));
        log_(line);
        return true;
    }
    void popUp(Opener const& opener) {
        auto menu = std::make_unique<Menu>(opener.make(), this);
        IntBox const button = opener.button->screenBox();
        PopUpOptions options;
        options.anchor = button;
        options.opener = opener.button;
        options.place = GlobManager::instance().calcPosForGlob({menu->width(), menu->height()}, button,
                                                               WidgetRelativity::above);
        if (menu->open(options)) menu.release();
    }

    LogLine log_;
    std::vector<Opener> openers_;
    Qv::Ptr<GenericParam::BoolParam> loop_ = Qv::makePtr<GenericParam::BoolParam>(L"Loop the take");
    Qv::Ptr<GenericParam::MultiParam> quality_ = Qv::makePtr<GenericParam::MultiParam>(
        L"Proxies", std::vector<UIString>{L"Draft", L"Good", L"Best"}, 1U);
    Qv::Ptr<GenericParam::ChoiceParam> size_ = Qv::makePtr<GenericParam::ChoiceParam>(
        L"Viewer", std::vector<UIString>{L"Fit", L"Half", L"Full"}, 0U);
};

std::unique_ptr<Glob> make(XY<int> size, LogLine log) {
    return std::make_unique<MenusPage>(size, std::move(log));
}

} // namespace

extern Page const menusPage = {
    "menus",
    L"Menus",
    PageGroup::controls,
    L"Menus with groups, options, rich text, sub-menus and tens of thousands of items.",
    "gallery/pages/menus_page.cpp",
    make};

} // namespace wainscot::gallery
