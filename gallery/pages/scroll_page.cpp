#include "containers/scroll_bar.h"
#include "containers/slider.h"
#include "foundation/glob_tab_stop.h"
#include "foundation/layout/box_layout.h"
#include "gallery/pages/cell_panel.h"

namespace wainscot::gallery {

namespace {

constexpr double arrowStep = 0.05;

struct TallBar {
    char const* name;
    double size;
};
constexpr TallBar tallBars[] = {
    {"tall zoom", 0.6}, {"tall", 0.2}, {"tall much", 0.01}, {"tall full", 1.0}, {"tall disabled", 0.3}};

/// Scroll bars and sliders in all their looks. The page is the owner that bars need: it answers arrow buttons
/// and wheel by setting the thumb.
class ScrollPage : public CellPanel {
public:
    ScrollPage(XY<int> size, LogLine log) : CellPanel(size, std::move(log)) {
        grid().setEqualColumns(false);
        addNote(L"scroll bar", 0, 0);
        addBar({0.2, 0.3}, 1)->setName("bar");
        addNote(L"zoom bar", 0, 2);
        addBar({0.3, 0.4}, 3)->setName("zoom");
        addNote(L"disabled", 0, 4);
        ScrollBar* const disabled = addBar({0.2, 0.3}, 5);
        disabled->setName("disabled");
        disabled->setActive(false);
        addNote(L"much to scroll", 0, 6);
        addBar({0.5, 0.005}, 7)->setName("much");
        addNote(L"slider", 0, 8);
        addSlider(0.4, 9)->setName("slider");
        addNote(L"points of interest", 0, 10);
        marked_ = addSlider(0.8, 11);
        marked_->setName("marked");
        showMarks();
        Label* const note = addNote(L"disabled", 0, 12);
        Slider* const off = addSlider(0.3, 13);
        off->setLabelledBy(note);
        off->setActive(false);
        addTallBars();
    }

    int handleMessageEvent(LightweightString<char> name, Glob* sender) override {
        auto* const bar = dynamic_cast<ScrollBar*>(sender);
        if (bar && (name == ScrollBar::upButtonPressedMsg || name == ScrollBar::leftButtonPressedMsg))
            bar->setThumbPosDelta(-arrowStep);
        if (bar && (name == ScrollBar::downButtonPressedMsg || name == ScrollBar::rightButtonPressedMsg))
            bar->setThumbPosDelta(arrowStep);
        if (bar)
            say(nameOf(*bar) + fromUTF8(name) + L"  " + Qv::WStringFromFloat(bar->getThumbPos(), 3, false) +
                L"  " + Qv::WStringFromFloat(bar->getThumbSize(), 3, false));
        else if (dynamic_cast<Slider*>(sender))
            say(nameOf(*sender) + fromUTF8(name));
        else
            CellPanel::handleMessageEvent(name, sender);
        return 1;
    }
    void handleLookChange(LookChange changes) override {
        CellPanel::handleLookChange(changes);
        showMarks();
    }

private:
    void showMarks() {
        marked_->setPointsOfInterest(
            {{0.25, getPalette().mark(eMarkNormal)}, {0.5, getPalette().mark(eMarkWarning)}});
    }
    static LightweightString<wchar_t> nameOf(Glob const& glob) { return fromUTF8(glob.name()) + L"  "; }
    static unsigned short length() { return toSize16(10 * UifStd::getButtonHeight()); }
    ScrollBar* addBar(ThumbSettings thumb, int row) {
        ScrollBar::InitArgs args(eHorizontal, length());
        args.thumb = thumb;
        args.resizable = row == 3;
        return put(std::make_unique<ScrollBar>(args), {row, 0});
    }
    Slider* addSlider(double value, int row) {
        Slider::InitArgs args(length());
        args.value = value;
        return addStop(put(std::make_unique<Slider>(args), {row, 0}));
    }
    Slider* addStop(Slider* slider) {
        stops_.push_back(std::make_unique<GlobTabStop>(*slider));
        addTabStop(*stops_.back());
        return slider;
    }
    void addTallBars() {
        BoxLayout* const row = grid().add(BoxLayout::makeRow(), {.row = 0, .column = 1, .rows = 14});
        row->setMargins({.left = 2 * UifStd::getButtonHeight()});
        row->setGaps(UifStd::getButtonHeight(), 0);
        for (auto const& [name, size] : tallBars) {
            ScrollBar::InitArgs args(eVertical, length());
            args.thumb = {0.1, size};
            args.resizable = size > 0.5;
            ScrollBar* const bar = row->add(std::make_unique<ScrollBar>(args));
            bar->setName(name);
            if (LightweightString<char>(name).endsWith("disabled")) bar->setActive(false);
        }
        Slider::InitArgs args(length(), eVertical);
        args.value = 0.7;
        addStop(row->add(std::make_unique<Slider>(args)))->setName("tall slider");
    }

    Slider* marked_ = nullptr;
    std::vector<std::unique_ptr<GlobTabStop>> stops_;
};

std::unique_ptr<Glob> make(XY<int> size, LogLine log) {
    return std::make_unique<ScrollPage>(size, std::move(log));
}

} // namespace

extern Page const scrollPage = {"scroll",
                                L"Scrolling",
                                PageGroup::controls,
                                L"Scroll bars, sliders and bars that zoom.",
                                "gallery/pages/scroll_page.cpp",
                                make};

} // namespace wainscot::gallery
