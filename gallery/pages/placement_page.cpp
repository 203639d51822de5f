#include "foundation/label.h"
#include "foundation/layout/box_layout.h"
#include "foundation/standard_panel.h"
#include "gallery/label_glob.h"
#include "gallery/page.h"

#include "host/base/convert.h"
#include "host/drawing/uif_std.h"

#include <algorithm>

namespace wainscot::gallery {

namespace {

/// Every corner and edge, and the four sides of a sibling; all follow when the window is resized.
class PlacementArea final : public Glob {
public:
    explicit PlacementArea(LogLine log) : Glob(1, 1), log_(std::move(log)) {
        add(L"Top left", TopLeft(0, 0));
        add(L"Top right", TopRight(0, 0));
        add(L"Bottom left", BottomLeft(0, 0));
        add(L"Bottom right", BottomRight(0, 0));
        add(L"Left centre", LeftCentre(0, 0));
        add(L"Right centre", RightCentre(0, 0));
        LabelGlob* const middle = add(L"Centre", Centre(0, 0));
        add(L"Above", Above(gap(), middle, WidgetAlignment::centre));
        add(L"Below", Below(gap(), middle, WidgetAlignment::centre));
        add(L"Left of", LeftOf(gap(), middle, WidgetAlignment::centre));
        add(L"Right of", RightOf(gap(), middle, WidgetAlignment::centre));
    }

    /// Room for five labels in each direction.
    SizeNeeds sizeNeeds() const override {
        XY<int> cell;
        for (Glob const* child = firstChild(); child; child = child->nextSibling()) {
            XY<int> const needed = child->sizeNeeds().natural;
            cell = {std::max(cell.x, needed.x), std::max(cell.y, needed.y)};
        }
        constexpr int count = 5;
        int const gaps = (count - 1) * gap();
        XY<int> const size{count * cell.x + gaps, count * cell.y + gaps};
        return {.natural = size, .minimum = size};
    }

    int handleMessageEvent(LightweightString<char> name, Glob* sender) override {
        auto const* label = dynamic_cast<LabelGlob const*>(sender);
        if (name == LabelGlob::clickedMsg && label) {
            XY<int> const corner = label->box().bottomLeft();
            log_(label->label() + L" lies at " + Qv::WStringFromInteger(corner.x) + L", " +
                 Qv::WStringFromInteger(corner.y));
        }
        return 1;
    }

private:
    static int gap() { return UifStd::getWidgetGap() * 2; }
    LabelGlob* add(LightweightString<wchar_t> const& text, WidgetPosition const& position) {
        return addChild(std::make_unique<LabelGlob>(text), position);
    }

    LogLine log_;
};

std::unique_ptr<Glob> make(XY<int> size, LogLine log) {
    auto page = std::make_unique<StandardPanel>(size);
    auto layout = BoxLayout::makeColumn();
    layout->add(std::make_unique<Label>(L"A press tells where it lies, from the lower left corner.",
                                        Label::Part::secondary));
    layout->add(std::make_unique<PlacementArea>(std::move(log)), {.stretch = 1});
    page->setLayout(std::move(layout));
    return page;
}

} // namespace

extern Page const placementPage = {"placement",
                                   L"Placement",
                                   PageGroup::testBench,
                                   L"Where objects come to lie in their parent.",
                                   "gallery/pages/placement_page.cpp",
                                   make};

} // namespace wainscot::gallery
