#include "gallery/page.h"

#include "buttons/button.h"
#include "buttons/checkbox.h"
#include "containers/lazy_tabbed_dialogue.h"
#include "foundation/form_layout.h"
#include "foundation/label.h"
#include "foundation/layout/box_layout.h"
#include "foundation/val_server_adaptor.h"
#include "host/base/convert.h"
#include "host/drawing/uif_std.h"
#include "host/events/event.h"
#include "host/objects/drag_drop_item.h"
#include "host/windows/drag_drop_manager.h"
#include "host/windows/look.h"
#include "text/text_box.h"
#include "text/vari_box.h"
#include "text/vari_box_parser_basic.h"

#include <array>

namespace wainscot::gallery {

namespace {

using Text = LightweightString<wchar_t>;

constexpr int manyTabs = 200;
constexpr double largerSize = 1.25;

/// A thing that can be dragged over tabs.
class Clip final : public Button {
public:
    Clip() : Button(InitArgs(L"Drag me over a tab", "")) {}

protected:
    void pressMoved(Event const& event) override {
        if (isMouseMoveSignificant(event))
            DragDropManager::instance().beginDrag(Qv::makePtr<DragDropItem>("clip", L"Clip"), this);
        else
            Button::pressMoved(event);
    }
};

/// What a page of effects holds.
void fillEffect(StandardPanel& page, Text const& name) {
    auto* const form = page.setLayout(std::make_unique<FormLayout>());
    for (wchar_t const* const label : {L"Amount", L"Softness"}) {
        VariBox* const box = form->addRow(label, std::make_unique<VariBox>(VariBox::InitArgs()));
        auto* const displayer = new VariBoxPercentDisplayer<double>;
        box->setParser(new VariBoxParserBasic<double>(box, displayer, 0, 1, 0.01, 0.1, 0.5), true);
        page.addTabStop(*box);
    }
    page.addTabStop(*form->addRow(L"Note", std::make_unique<TextBox>(TextBox::InitArgs(0, 0, name))));
}

/// The settings of this program. Each page is built when it is first shown.
class SettingsDialogue final : public LazyTabbedDialogue {
public:
    SettingsDialogue(InitArgs const& args, LogLine log)
        : LazyTabbedDialogue(args, L"Look"), log_(std::move(log)) {
        setPages({L"Look", L"Keys", L"About"});
    }

protected:
    Glob* makePage(unsigned short) override {
        return std::make_unique<StandardTabPage>(getMaxPageSize(), getColoursForWidgets()).release();
    }
    void buildPage(Text const& id) override {
        log_(L"built  " + id);
        auto* const page = dynamic_cast<StandardPanel*>(getCurrentPage());
        if (!page) return;
        auto* const column = page->setLayout(BoxLayout::makeColumn());
        if (id == L"Look") {
            addChoice(*page, *column, L"Light theme", Palette::currentTheme() == eThemeLight,
                      [](bool on) { Look::setTheme(on ? eThemeLight : eThemeDark); });
            addChoice(*page, *column, L"Larger controls", UifStd::getScale() > 1,
                      [](bool on) { Look::setSize(on ? largerSize : 1); });
        } else {
            bool const isAboutKeys = id == L"Keys";
            for (wchar_t const* const line : isAboutKeys ? keyLines : aboutLines)
                column->add(std::make_unique<Label>(line));
        }
    }

private:
    static constexpr std::array keyLines{L"Ctrl+Tab, Ctrl+Page Down: the next page",
                                         L"Ctrl+Shift+Tab, Ctrl+Page Up: the page before",
                                         L"Left, Right, Home, End: along the tabs"};
    static constexpr std::array aboutLines{L"Pages of this dialogue are built when they are first shown.",
                                           L"The log tells of each.", L""};

    static void addChoice(StandardPanel& page, BoxLayout& column, wchar_t const* label, bool isOn,
                          std::function<void(bool)> const& act) {
        auto* const box = column.add(Checkbox::make(0, 0, label, isOn));
        box->setCallback(WidgetCallback(makeCallback<int, NotifyMsg>([box, act](NotifyMsg const&) {
                                            act(box->isTicked());
                                            return 1;
                                        }),
                                        ""));
        page.addTabStop(*box);
    }

    LogLine log_;
};

/// Pages on demand with all that the user may do with tabs, many tabs, and lazy pages.
class TabsPage final : public StandardPanel {
public:
    TabsPage(XY<int> size, LogLine log) : StandardPanel(size), log_(std::move(log)) {
        setTabGoesOn(true);
        for (ValServer<bool>& server : isOn_) server = true;
        auto* const column = setLayout(BoxLayout::makeColumn());
        LayoutOptions fill;
        fill.stretch = 1;
        TabbedDialogue::InitArgs args(0, 0);
        args.canClose = args.canRename = args.canReorder = true;
        effects_ = column->add(std::make_unique<TabbedDialogue>(args), fill);
        for (wchar_t const* const name : {L"Grade", L"Blur", L"Grain", L"Vignette"}) addEffect(name);
        effects_->setCloseQuestion([this](unsigned short) {
            bool const isLast = effects_->numTabs() == 1;
            if (isLast) log_(L"the last effect stays");
            return !isLast;
        });
        effects_->selectPage(0);

        auto* const row = column->add(BoxLayout::makeRow());
        addTabStop(*row->add(std::make_unique<Button>(Button::InitArgs(L"Add an effect", addMsg))));
        addTabStop(*row->add(std::make_unique<Clip>()));

        LayoutOptions low;
        low.size.y = 3;
        low.unit = LayoutUnit::buttonHeight;
        many_ = column->add(std::make_unique<TabbedDialogue>(TabbedDialogue::InitArgs(0, 0)), low);
        for (int i = 1; i <= manyTabs; ++i) many_->addTab(L"Scene " + Qv::WStringFromInteger(i));
        many_->selectPage(0);
        column->add(std::make_unique<SettingsDialogue>(TabbedDialogue::InitArgs(0, 0), log_), fill);
    }

    int handleMessageEvent(LightweightString<char> name, Glob* sender) override {
        if (name == pootMsg) return StandardPanel::handleMessageEvent(name, sender);
        if (name != addMsg) return log_(fromUTF8(name)), 1;
        addEffect((L"Effect " + Qv::WStringFromInteger(static_cast<int>(effects_->numTabs()) + 1)));
        effects_->selectPage(static_cast<unsigned short>(effects_->numTabs() - 1));
        return 1;
    }
    int handleDataMessageEvent(LightweightString<char> name, Glob* sender, Qv::Ptr<iObject> data) override {
        auto const* const details = unwrapData<TabDetails>(data);
        if (!details) return StandardPanel::handleDataMessageEvent(name, sender, data);
        log_(fromUTF8(name) + L"  " + details->name);
        if (name == TabbedDialogue::buildPageMsg) makePage(*static_cast<TabbedDialogue*>(sender), *details);
        return 1;
    }

private:
    static constexpr LightweightString<char> addMsg{"add an effect"};

    void addEffect(Text const& name) {
        Tab* const tab = effects_->addTab(name, TabbedDialogue::eTabCheckbox);
        ValServer<bool>& isOn = isOn_[effects_->numTabs() % isOn_.size()];
        tab->setCheckboxDataAdaptor(new ValServerAdaptor<bool>(isOn));
    }
    void makePage(TabbedDialogue& dialogue, TabDetails const& details) {
        auto page = std::make_unique<StandardTabPage>(dialogue.getMaxPageSize(), dialogue.getPalette());
        if (&dialogue == effects_)
            fillEffect(*page, details.name);
        else
            page->setLayout(BoxLayout::makeColumn())->add(std::make_unique<Label>(details.name));
        dialogue.addPageForTab(details.index, std::move(page));
    }

    LogLine log_;
    TabbedDialogue* effects_ = nullptr;
    TabbedDialogue* many_ = nullptr;
    std::array<ValServer<bool>, 4> isOn_;
};

std::unique_ptr<Glob> make(XY<int> size, LogLine log) {
    return std::make_unique<TabsPage>(size, std::move(log));
}

} // namespace

extern Page const tabsPage = {
    "tabs",
    L"Tabbed dialogues",
    PageGroup::panels,
    L"Pages on demand: close, rename by a double click, drag; 200 tabs; pages that are built late.",
    "gallery/pages/tabs_page.cpp",
    make};

} // namespace wainscot::gallery
