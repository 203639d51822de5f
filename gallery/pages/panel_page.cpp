#include "gallery/page.h"

#include "buttons/button.h"
#include "foundation/label.h"
#include "foundation/layout/box_layout.h"
#include "foundation/standard_panel.h"
#include "host/base/convert.h"
#include "host/drawing/uif_std.h"

#include <vector>

namespace wainscot::gallery {

namespace {

constexpr double roundCorners = 8.0;
constexpr double shadowOpacity = 0.4;

struct KindName {
    Border::eType type;
    wchar_t const* name;
};
constexpr KindName kinds[] = {
    {Border::none, L"No border"},  {Border::window, L"Window"}, {Border::line, L"Line"},
    {Border::dialog, L"Dialogue"}, {Border::raised, L"Raised"}, {Border::sunken, L"Sunken"},
    {Border::group, L"Group"},
};

/// Says what it hears, and leaves the rest to the panel.
class ToldPanel : public StandardPanel {
public:
    ToldPanel(Border::eType border, LightweightString<wchar_t> const& title, LogLine log)
        : StandardPanel(InitArgs(1, 1, Border(border))), log_(std::move(log)) {
        setTitle(title);
        setTabGoesOn(true);
    }

    int handleMessageEvent(LightweightString<char> name, Glob* sender) override {
        log_(getTitleW() + L"  hears  " + fromUTF8(name));
        // A click takes no focus by itself; here Tab is to go on from the button that was clicked.
        if (auto* const button = dynamic_cast<Button*>(sender)) setTabStopFocus(*button);
        bool const isForPanel = name == pootMsg || sender == getStandardWidget(StandardWidget::pin) ||
                                sender == getStandardWidget(StandardWidget::size);
        return isForPanel ? 0 : 1;
    }
    int handleFlipSize() override {
        if (isMinimisable()) log_(getTitleW() + (isMinimised() ? L"  is restored" : L"  is minimised"));
        return 0;
    }
    void handlePoot() override {
        log_(getTitleW() + L"  closes");
        StandardPanel::handlePoot();
    }

    /// A row of buttons, each a stop of the panel.
    void addButtons(std::vector<LightweightString<wchar_t>> const& labels) {
        auto column = BoxLayout::makeColumn();
        BoxLayout* const row = column->add(BoxLayout::makeRow());
        for (auto const& label : labels)
            addTabStop(*row->add(std::make_unique<Button>(Button::InitArgs(UIString(label), "pressed"))));
        setLayout(std::move(column));
    }

private:
    LogLine log_;
};

class PanelPage final : public StandardPanel {
public:
    PanelPage(XY<int> size, LogLine log) : StandardPanel(size), log_(std::move(log)) {
        auto layout = BoxLayout::makeColumn();
        addNote(*layout, L"Every kind of border, with square and with round corners");
        addKinds(*layout, 0.0);
        addKinds(*layout, roundCorners);
        layout->addSpace(0);
        addNote(*layout,
                L"Drag a title or an edge; Tab goes from button to button; the size button minimises");
        addWorking(*layout);
        layout->addStretch();
        setLayout(std::move(layout));
        addFloating();
    }

    void handleLayout() override {
        LifeGuard const life = guard();
        StandardPanel::handleLayout();
        if (life.alive()) placeFloating();
    }

private:
    static void addNote(BoxLayout& layout, wchar_t const* text) {
        layout.add(std::make_unique<Label>(text, Label::Part::secondary));
    }

    void addKinds(BoxLayout& layout, double radius) {
        BoxLayout* const row = layout.add(BoxLayout::makeRow());
        for (KindName const& kind : kinds) {
            auto panel = std::make_unique<ToldPanel>(kind.type, kind.name, log_);
            panel->set_radius(radius);
            row->add(std::move(panel),
                     {.stretch = 1, .size = {4, 3}, .minimum = {2, 3}, .unit = LayoutUnit::buttonHeight});
        }
    }

    void addWorking(BoxLayout& layout) {
        using enum StandardPanel::StandardWidgetFlags;
        BoxLayout* const row = layout.add(BoxLayout::makeRow());
        place_ =
            row->add(std::make_unique<Glob>(1, 1, Palette(), false),
                     {.stretch = 1, .size = {9, 5}, .minimum = {6, 5}, .unit = LayoutUnit::buttonHeight});

        auto dialogue = makePanel(Border::dialog, L"A dialogue with a long title", closeWidget | doItWidget);
        dialogue->addButtons({L"Browse ...", L"Defaults"});
        row->add(std::move(dialogue), {.stretch = 1});

        auto group = makePanel(Border::group, L"A group", sizeWidget | latchWidget);
        group->setMinimisable(true);
        group->set_radius(roundCorners / 2);
        group->addButtons({L"Left", L"Right"});
        group->addStatusWidget(new Label(L"Ready", Label::Part::secondary), 0);
        row->add(std::move(group), {.stretch = 1});
    }

    void addFloating() {
        using enum StandardPanel::StandardWidgetFlags;
        auto floating =
            makePanel(Border::window, L"Floating", closeWidget | sizeWidget | pinWidget | settingsWidget);
        floating->setMovable(true);
        floating->setResizable(true);
        floating->setMinimisable(true);
        floating->setMinSize(toSize16(5 * UifStd::getButtonHeight()),
                             toSize16(3 * UifStd::getButtonHeight()));
        floating->set_radius(roundCorners / 2);
        floating->addShadow(UifStd::getIndentWidth(), shadowOpacity);
        floating->addButtons({L"Cut", L"Copy", L"Paste"});
        Glob* const added = addChild(std::move(floating));
        floating_ = HandlerRef<Glob>(added);
        given_ = added->box();
    }

    /// The floating panel is in no layout, which would bring it back. It follows its place until the user
    /// moves it.
    void placeFloating() {
        Glob* const floating = floating_.get();
        if (!floating || floating->box() != given_) return;
        given_ = place_->box();
        reshapeWidgetAt(floating, given_.bottomLeft(), given_.size());
    }

    std::unique_ptr<ToldPanel> makePanel(Border::eType border, wchar_t const* title, int widgets) {
        auto panel = std::make_unique<ToldPanel>(border, title, log_);
        panel->addStandardWidgets(widgets);
        return panel;
    }

    LogLine log_;
    /// The room that the layout keeps for the floating panel.
    Glob* place_ = nullptr;
    HandlerRef<Glob> floating_;
    /// The box that the floating panel was given last.
    IntBox given_;
};

std::unique_ptr<Glob> make(XY<int> size, LogLine log) {
    return std::make_unique<PanelPage>(size, std::move(log));
}

} // namespace

extern Page const panelPage = {"panel",
                               L"Panels",
                               PageGroup::panels,
                               L"Panels with titles, standard buttons, borders and sizes that change.",
                               "gallery/pages/panel_page.cpp",
                               make};

} // namespace wainscot::gallery
