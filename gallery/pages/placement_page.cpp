#include "gallery/caption.h"
#include "gallery/label_glob.h"
#include "gallery/page.h"

#include "host/base/convert.h"
#include "host/drawing/uif_std.h"

namespace wainscot::gallery {

namespace {

/// Every corner and edge, and the four sides of a sibling; all follow when the window is resized.
class PlacementPage final : public Glob {
public:
    SizeNeeds sizeNeeds() const override { return usualNeeds(); }
    PlacementPage(XY<int> size, LogLine log)
        : Glob(toSize16(size.x), toSize16(size.y)), log_(std::move(log)) {
        int const inset = UifStd::getIndentWidth() * 2;
        add(L"Top left", TopLeft(inset, inset));
        add(L"Top right", TopRight(inset, inset));
        add(L"Bottom left", BottomLeft(inset, inset));
        add(L"Bottom right", BottomRight(inset, inset));
        add(L"Left centre", LeftCentre(inset, 0));
        add(L"Right centre", RightCentre(inset, 0));
        LabelGlob* const middle = add(L"Centre", Centre(0, 0));
        int const gap = UifStd::getWidgetGap() * 2;
        add(L"Above", Above(gap, middle, WidgetAlignment::centre));
        add(L"Below", Below(gap, middle, WidgetAlignment::centre));
        add(L"Left of", LeftOf(gap, middle, WidgetAlignment::centre));
        add(L"Right of", RightOf(gap, middle, WidgetAlignment::centre));
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
    LabelGlob* add(LightweightString<wchar_t> const& text, WidgetPosition const& position) {
        XY<int> const size{UifStd::getButtonHeight() * 4, UifStd::getButtonHeight()};
        return addChild(std::make_unique<LabelGlob>(size, text), position);
    }

    LogLine log_;
};

std::unique_ptr<Glob> make(XY<int> size, LogLine log) {
    return std::make_unique<PlacementPage>(size, std::move(log));
}

} // namespace

extern Page const placementPage = {"placement",
                                   L"Placement",
                                   PageGroup::testBench,
                                   L"Where objects come to lie in their parent.",
                                   "gallery/pages/placement_page.cpp",
                                   make};

} // namespace wainscot::gallery
