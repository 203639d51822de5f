#include "gallery/caption.h"
#include "gallery/page.h"

#include "buttons/button.h"
#include "foundation/standard_panel.h"
#include "host/base/convert.h"
#include "host/drawing/uif_std.h"

#include <vector>

namespace wainscot::gallery {

namespace {

constexpr double roundCorners = 8.0;

struct KindName {
    Border::eType type;
    wchar_t const* name;
};
constexpr KindName kinds[] = {
    {Border::none, L"No border"},  {Border::window, L"Window"}, {Border::line, L"Line"},
    {Border::dialog, L"Dialogue"}, {Border::raised, L"Raised"}, {Border::sunken, L"Sunken"},
    {Border::group, L"Group"},
};

int margin() {
    return 2 * UifStd::getIndentWidth();
}

int noteHeight() {
    return UifStd::getButtonHeight();
}

/// Says what it hears, and leaves the rest to the panel.
class ToldPanel : public StandardPanel {
public:
    ToldPanel(XY<int> size, Border::eType border, LightweightString<wchar_t> const& title, LogLine log)
        : StandardPanel(InitArgs(toSize16(size.x), toSize16(size.y), Border(border))), log_(std::move(log)) {
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
        Glob* before = nullptr;
        for (auto const& label : labels) {
            auto* const button = new Button(label, "pressed", 0, UifStd::getButtonHeight());
            button->autoResize();
            if (before)
                addWidgetRelative(button, before, UifStd::getWidgetGap(), WidgetRelativity::rightOf);
            else
                addChild(button, UserTopLeft(UifStd::getIndentWidth(), UifStd::getIndentWidth()));
            addTabStop(*button);
            before = button;
        }
    }

private:
    LogLine log_;
};

class PanelPage final : public Glob {
public:
    PanelPage(XY<int> size, LogLine log) : Glob(toSize16(size.x), toSize16(size.y)), log_(std::move(log)) {
        int y = margin();
        y = addNote(L"Every kind of border, with square and with round corners", y);
        y = addKinds(0.0, y);
        y = addKinds(roundCorners, y);
        y = addNote(L"Drag a title or an edge; Tab goes from button to button; the size button minimises",
                    y + UifStd::getRowGap());
        addWorking(y);
    }

private:
    int addNote(wchar_t const* text, int y) {
        addChild(std::make_unique<Caption>(text, Caption::Kind::note), TopLeft(margin(), y));
        return y + noteHeight();
    }

    XY<int> cellSize() const {
        int const gaps = UifStd::getIndentWidth() * static_cast<int>(std::size(kinds) - 1);
        return {(width() - 2 * margin() - gaps) / static_cast<int>(std::size(kinds)),
                3 * UifStd::getButtonHeight()};
    }

    int addKinds(double radius, int y) {
        int x = margin();
        for (KindName const& kind : kinds) {
            auto panel = std::make_unique<ToldPanel>(cellSize(), kind.type, kind.name, log_);
            panel->set_radius(radius);
            addChild(std::move(panel), TopLeft(x, y));
            x += cellSize().x + UifStd::getIndentWidth();
        }
        return y + cellSize().y + UifStd::getIndentWidth();
    }

    void addWorking(int y) {
        XY<int> const size{(width() - 2 * margin() - 2 * UifStd::getIndentWidth()) / 3,
                           6 * UifStd::getButtonHeight()};
        int const step = size.x + UifStd::getIndentWidth();
        using enum StandardPanel::StandardWidgetFlags;

        auto floating =
            make(size, Border::window, L"Floating", closeWidget | sizeWidget | pinWidget | settingsWidget);
        floating->setMovable(true);
        floating->setResizable(true);
        floating->setMinimisable(true);
        floating->setMinSize(toSize16(size.x / 2), toSize16(size.y / 2));
        floating->set_radius(roundCorners / 2);
        floating->addShadow(UifStd::getIndentWidth(), 0.4);
        floating->addButtons({L"Cut", L"Copy", L"Paste"});

        auto dialogue = make(size, Border::dialog, L"A dialogue with a long title", closeWidget | doItWidget);
        dialogue->addButtons({L"Browse ...", L"Defaults"});

        auto group = make(size, Border::group, L"A group", sizeWidget | latchWidget);
        group->setMinimisable(true);
        group->set_radius(roundCorners / 2);
        group->addButtons({L"Left", L"Right"});
        group->addStatusWidget(new Caption(L"Ready", Caption::Kind::note), 0);

        addChild(std::move(dialogue), TopLeft(margin() + step, y));
        addChild(std::move(group), TopLeft(margin() + 2 * step, y));
        addChild(std::move(floating), TopLeft(margin(), y));
    }

    std::unique_ptr<ToldPanel> make(XY<int> size, Border::eType border, wchar_t const* title, int widgets) {
        auto panel = std::make_unique<ToldPanel>(size, border, title, log_);
        panel->addStandardWidgets(widgets);
        return panel;
    }

    LogLine log_;
};

} // namespace

std::unique_ptr<Glob> makePanelPage(XY<int> size, LogLine log) {
    return std::make_unique<PanelPage>(size, std::move(log));
}

} // namespace wainscot::gallery
