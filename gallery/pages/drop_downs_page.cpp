#include "gallery/page.h"

#include "foundation/form_layout.h"
#include "foundation/label.h"
#include "foundation/layout/box_layout.h"
#include "foundation/standard_panel.h"
#include "host/base/convert.h"
#include "host/drawing/canvas_renderer.h"
#include "host/drawing/uif_std.h"
#include "host/windows/glob_manager.h"
#include "menus/drop_down_image_button.h"
#include "menus/menu_button_group.h"
#include "menus/menu_with_add_button.h"
#include "menus/titled_drop_downs.h"

namespace wainscot::gallery {

namespace {

using Text = LightweightString<wchar_t>;

Qv::Ptr<DropDownMenuData> listOf(std::initializer_list<wchar_t const*> labels) {
    auto items = Qv::makePtr<DropDownMenuData>();
    for (wchar_t const* const label : labels) items->addItem(MenuItem(label));
    return items;
}

Qv::Ptr<DropDownMenuData> frameRates() {
    auto items = listOf({L"23.976", L"24", L"25", L"29.97", L"30", L"50", L"59.94", L"60"});
    MenuItem other(L"Other...");
    other.setFlags(other.getFlags() | MenuItemFlag::command);
    items->addItem(MenuItem());
    items->addItem(other);
    return items;
}

Qv::Ptr<DropDownMenuData> codecs() {
    auto items = Qv::makePtr<DropDownMenuData>();
    auto const add = [&](wchar_t const* label, MenuItemType type, bool isActive = true) {
        MenuItem item(label, WidgetCallback(""), type);
        item.setActive(isActive);
        items->addItem(item);
    };
    add(L"Camera", eExpandedGroupItem);
    add(L"Raw, 12 bit", eGroupedMenuItem);
    add(L"Log, 10 bit", eGroupedMenuItem);
    add(L"Delivery", eExpandedGroupItem);
    add(L"Cinema package", eGroupedMenuItem);
    add(L"Broadcast, interlaced", eGroupedMenuItem, false);
    add(L"Web", eGroupedMenuItem);
    return items;
}

Qv::Ptr<DropDownMenuData> labels() {
    auto items = Qv::makePtr<DropDownMenuData>();
    struct Named {
        wchar_t const* name;
        Colour colour;
    };
    for (Named const& named : {Named{L"Red", Colour(0.9, 0.4, 0.4)},
                               {L"Green", Colour(0.4, 0.8, 0.4)},
                               {L"Blue", Colour(0.5, 0.6, 1.0)}})
        items->addItem(MenuItem(named.name, WidgetCallback(""), named.colour));
    return items;
}

Qv::Ptr<DropDownMenuData> takes() {
    auto items = Qv::makePtr<DropDownMenuData>();
    for (int i = 1; i <= 10'000; ++i) items->addItem(MenuItem(L"Take " + Qv::WStringFromInteger(i)));
    return items;
}

Qv::Ptr<MenuData> lenses() {
    auto items = Qv::makePtr<MenuData>();
    for (wchar_t const* const kind : {L"Prime", L"Macro", L"Zoom", L"Tilt", L"Anamorphic"})
        for (int length = 14; length < 200; length += 14)
            items->addItem(MenuItem(Text(kind) + L" " + Qv::WStringFromInteger(length) + L" mm"));
    return items;
}

/// A stripe that fades out.
class WipeIcon final : public MenuItem::iIconRenderer, public Qv::InternalRefCount {
public:
    explicit WipeIcon(bool isUpright) : isUpright_(isUpright) {}
    XY<int> size() const override { return {UifStd::getButtonHeight(), UifStd::getButtonHeight() / 2}; }
    void draw(CanvasRenderer& renderer, IntBox const& area, Colour const& colour) const override {
        int const middle = isUpright_ ? area.centre().y : area.centre().x;
        IntBox const half = isUpright_ ? IntBox(area.x1, area.y1, area.x2, middle)
                                       : IntBox(area.x1, area.y1, middle, area.y2);
        renderer.renderPrimitive(
            Glib::RectDescription(area, Colour::mix(colour, Colour(0.5, 0.5, 0.5), 0.3)));
        renderer.renderPrimitive(Glib::RectDescription(half, colour));
    }

private:
    bool isUpright_;
};

Qv::Ptr<DropDownMenuData> wipes() {
    auto items = Qv::makePtr<DropDownMenuData>();
    for (bool const isUpright : {false, true}) {
        MenuItem item(isUpright ? L"Wipe from below" : L"Wipe from the left");
        item.setIconRenderer(Qv::makePtr<WipeIcon>(isUpright));
        items->addItem(item);
    }
    return items;
}

/// Opens a list to which the user can add.
class MarkersButton final : public DropDownButton<MenuWithAddButton> {
public:
    MarkersButton() : DropDownButton(Button::InitArgs(L"Markers", ""), eStaysDown) {
        for (wchar_t const* const label : {L"Scene 1", L"Scene 2"}) add(label);
    }

protected:
    MenuWithAddButton* makeDropDown() override {
        Menu::InitArgs args(items_, this);
        args.minWidth = toSize16(width());
        return new MenuWithAddButton(args);
    }
    bool handleDropDownMessage(Event const& message) override {
        if (message.message() == MenuWithAddButton::addMsg)
            add((L"Scene " + Qv::WStringFromInteger(static_cast<int>(items_->numItems()) + 1)).c_str());
        if (parent()) parent()->handleEvent(message);
        return false;
    }

private:
    void add(wchar_t const* label) { items_->addItem(MenuItem(label, WidgetCallback("marker"))); }

    Qv::Ptr<MenuData> items_ = Qv::makePtr<MenuData>();
};

Qv::Ptr<MenuData> commands(std::initializer_list<wchar_t const*> labels) {
    auto items = Qv::makePtr<MenuData>();
    for (wchar_t const* const label : labels) items->addItem(MenuItem(label, WidgetCallback("command")));
    return items;
}

void logMessage(LogLine const& log, LightweightString<char> const& name, Glob const* sender) {
    Text line = fromUTF8(name);
    if (auto const* const button = dynamic_cast<DropDownMenuButton const*>(sender))
        line += L"  " + button->getItems()->getSelectedItemNameW();
    if (auto const* const box = dynamic_cast<ComboBox const*>(sender)) line += L"  " + box->getText();
    log(line);
}

/// A window with nothing but a drop-down.
class EdgeWindow final : public StandardPanel {
public:
    explicit EdgeWindow(LogLine log) : StandardPanel(XY<int>{200, 60}), log_(std::move(log)) {
        auto* const column = setLayout(BoxLayout::makeColumn());
        addTabStop(*column->add(std::make_unique<DropDownMenuButton>(frameRates())));
    }
    int handleMessageEvent(LightweightString<char> name, Glob* sender) override {
        if (name == pootMsg) return StandardPanel::handleMessageEvent(name, sender);
        logMessage(log_, name, sender);
        return 1;
    }

private:
    LogLine log_;
};

/// A bar of menus, and drop-downs of each kind. Two of them show the same data.
class DropDownsPage final : public StandardPanel {
public:
    DropDownsPage(XY<int> size, LogLine log) : StandardPanel(size), log_(std::move(log)) {
        setTabGoesOn(true);
        auto* const column = setLayout(BoxLayout::makeColumn());
        auto* const bar = column->add(std::make_unique<MenuButtonGroup>());
        bar->addMenu(L"File", commands({L"Open...||Ctrl+O", L"Save||Ctrl+S", L"Quit||Ctrl+Q"}));
        bar->addMenu(L"Edit", commands({L"Undo||Ctrl+Z", L"Redo||Ctrl+Y"}));
        bar->addMenu(L"View", commands({L"Viewer", L"Timeline", L"Scopes"}));
        addTabStopsFrom(*bar);
        auto* const form = column->add(std::make_unique<FormLayout>());
        auto const rates = frameRates();
        add(*form, L"Frame rate", std::make_unique<DropDownMenuButton>(rates));
        add(*form, L"The same again", std::make_unique<DropDownMenuButton>(rates));
        add(*form, L"Codec", std::make_unique<DropDownMenuButton>(codecs()));
        add(*form, L"Label", std::make_unique<DropDownMenuButton>(labels()));
        add(*form, L"Take", std::make_unique<DropDownMenuButton>(takes()));
        add(*form, L"Nothing yet", std::make_unique<DropDownMenuButton>(listOf({})));
        add(*form, L"Disabled", std::make_unique<DropDownMenuButton>(listOf({L"Left", L"Right"})))
            ->setActive(false);
        auto const sizes = commands({L"1280 x 720", L"1920 x 1080", L"3840 x 2160"});
        add(*form, L"Size", std::make_unique<ComboBox>(ComboBox::InitArgs(sizes, 120)));
        add(*form, L"Lens", std::make_unique<ComboBox>(ComboBox::InitArgs(lenses(), 120)));
        auto* const row = column->add(BoxLayout::makeRow());
        auto* const title = row->add(std::make_unique<TitleMenuButton>(L"Transition", commands({L"Reset"})));
        addTabStop(*title);
        DropDownMenuButton::InitArgs wipe(wipes());
        addTabStop(*row->add(std::make_unique<DropDownImageButton>(wipe)));
        auto* const titled = row->add(std::make_unique<TitledMenuButtonPlain>(
            L"Easing", DropDownMenuButton::InitArgs(listOf({L"Linear", L"Smooth", L"Late"}))));
        addTabStopsFrom(*titled);
        addTabStop(*row->add(std::make_unique<MarkersButton>()));
        addTabStop(*row->add(std::make_unique<Button>(Button::InitArgs(L"At the edge", edgeMsg))));
    }

    int handleMessageEvent(LightweightString<char> name, Glob* sender) override {
        if (name == pootMsg) return StandardPanel::handleMessageEvent(name, sender);
        if (name == edgeMsg) return openAtEdge(), 1;
        logMessage(log_, name, sender);
        return 1;
    }

private:
    static constexpr LightweightString<char> edgeMsg{"at the edge"};

    /// A window in the lower right corner of the screen, where lists have no room below.
    void openAtEdge() {
        auto window = std::make_unique<EdgeWindow>(log_);
        GlobManager& manager = GlobManager::instance();
        IntBox const screen = manager.activeMonitor();
        XY<int> const corner{screen.x2 - window->width(), screen.y1};
        if (manager.realizeOwned(window.get(), this, corner)) static_cast<void>(window.release());
    }
    template <class T>
    T* add(FormLayout& form, wchar_t const* label, std::unique_ptr<T> control) {
        T* const added = form.addRow(label, std::move(control));
        addTabStop(*added);
        return added;
    }

    LogLine log_;
};

std::unique_ptr<Glob> make(XY<int> size, LogLine log) {
    return std::make_unique<DropDownsPage>(size, std::move(log));
}

} // namespace

extern Page const dropDownsPage = {"drop_downs",
                                   L"Drop-downs",
                                   PageGroup::controls,
                                   L"Buttons that open a list and show what is selected: press, wheel, arrow "
                                   L"keys, letters, Alt+Down.",
                                   "gallery/pages/drop_downs_page.cpp",
                                   make};

} // namespace wainscot::gallery
