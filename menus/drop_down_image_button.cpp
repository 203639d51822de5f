#include "menus/drop_down_image_button.h"

#include "host/drawing/canvas_renderer.h"
#include "host/drawing/uif_std.h"
#include "host/objects/tooltip_details.h"

#include <algorithm>

namespace wainscot {

DropDownImageButton::DropDownImageButton(InitArgs const& args)
    : DropDownMenuButton(args), isAutomatic_(args.width == 0) {
    if (isAutomatic_) resize(neededWidth(), height());
}

DropDownImageButton::~DropDownImageButton() = default;

Qv::Ptr<MenuItem::iIconRenderer> DropDownImageButton::shownIcon() const {
    unsigned short const selected = getItems()->getSelectedItemPhysical();
    return selected == MenuData::none ? nullptr : getItems()->getItem(selected).iconRenderer();
}

int DropDownImageButton::neededWidth() const {
    int widest = 0;
    for (MenuItem const& item : getItems()->items())
        if (auto const icon = item.iconRenderer()) widest = std::max(widest, icon->size().x);
    int const button = UifStd::getButtonHeight();
    return std::max(widest, button) + UifStd::getIndentWidth() + 2 * UifStd::getWidgetGap() + button;
}

SizeNeeds DropDownImageButton::sizeNeeds() const {
    SizeNeeds needs = DropDownMenuButton::sizeNeeds();
    if (isAutomatic_) needs.natural.x = neededWidth();
    return needs;
}

DropDownMenu* DropDownImageButton::makeDropDown() {
    return getItems()->isEmpty() ? nullptr : new DropDownImageMenu(listArgs());
}

void DropDownImageButton::drawDropDownButtonText() {
    Qv::Ptr<MenuItem::iIconRenderer> const icon = shownIcon();
    if (!icon) return DropDownMenuButton::drawDropDownButtonText();
    IntBox const area = canvasArea();
    IntBox const room(area.x1 + UifStd::getIndentWidth(), area.y1, area.x2 - rightMargin(), area.y2);
    XY<int> const size = icon->size();
    CanvasRenderer renderer(canvas(), area);
    icon->draw(renderer, IntBox::sized(room.centre() - XY<int>(size.x / 2, size.y / 2), size), getForeCol());
}

bool DropDownImageButton::getTooltipDetails(XY<int> const& place, TooltipDetails& details) const {
    if (!shownIcon() || getString().isEmpty()) return DropDownMenuButton::getTooltipDetails(place, details);
    details.text = getString();
    details.area = IntBox(0, 0, width(), height());
    return true;
}

} // namespace wainscot
