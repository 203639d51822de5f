#include "host/drawing/canvas_renderer.h"
#include "host/drawing/html_renderer.h"
#include "host/drawing/symbols.h"
#include "host/drawing/uif_std.h"
#include "host/objects/description.h"
#include "host/objects/kbd_focus.h"
#include "host/objects/tooltip_details.h"
#include "look/ink.h"
#include "menus/menu.h"
#include "menus/menu_layout_p.h"

#include <algorithm>

namespace wainscot {

using Text = LightweightString<wchar_t>;

Glib::FontDesc Menu::getFontForItem(MenuItem const& item) const {
    Glib::FontDesc font = item.isHeader() ? UifStd::getSubheadingFont() : item.getFont();
    MenuItem::Layout const layout = item.getLayout();
    if (layout.isBold) font.style |= Glib::eFontBold;
    if (layout.isItalic) font.style |= Glib::eFontItalic;
    return font;
}

/// A list in a panel is in use while it has the pointer or the keyboard focus.
bool Menu::isInUse() const {
    return !isChildGlob() || isInside_ || get_kbd_focus() == this;
}

Colour Menu::getItemBackCol(VisibleMenuItem const& row) const {
    MenuItem const& item = items_->getItem(row.item);
    Palette const& palette = getPalette();
    Colour const ground = item.getBackgroundColour();
    bool const isPointedAt = row.item == highlighted_ || row.item == pressed_;
    if (isPointedAt && (!item.isHeader() || row.item == highlighted_))
        return Colour::mix(palette.selection(isInUse() ? eSelectionActive : eSelectionInactive), ground,
                           item.getLayout().highlightShare);
    return isOwnerOfSubMenu(row.item) ? palette.selection(eSelectionInactive) : ground;
}

namespace {

/// While the rows are drawn.
class Drawing {
public:
    Drawing(CanvasRenderer*& place, CanvasRenderer& renderer) : place_(place) { place_ = &renderer; }
    ~Drawing() { place_ = nullptr; }
    Drawing(Drawing const&) = delete;
    Drawing& operator=(Drawing const&) = delete;

private:
    CanvasRenderer*& place_;
};

} // namespace

void Menu::drawBackground() {
    CanvasRenderer renderer(canvas(), canvasArea());
    XY<int> const corner = canvasArea().bottomLeft();
    IntBox const area = calcAreaForItems().translated(corner);
    renderer.renderPrimitive(Glib::RectDescription(canvasArea(), getPalette().window(eWindowRaised)));
    {
        Drawing const drawing(renderer_, renderer);
        renderer.setClipRect(area);
        for (VisibleMenuItem const& row : std::vector<VisibleMenuItem>(visible_)) {
            IntBox const box = row.box.translated(corner);
            if (renderer.isVisible({area.x1, box.y1, area.x2, box.y2})) drawItem({box, row.item});
        }
        renderer.clearClipRect();
    }
    drawTyped(renderer);
}

bool Menu::isMarked(unsigned short item) const {
    return item < items_->numItems() && items_->getItem(item).getLayout().isMarked;
}

void Menu::draw() {
    Focusable::draw();
    drawFocusMark();
}

/// `row` lies in canvas coordinates.
void Menu::drawItem(VisibleMenuItem const& row) {
    // The list may be shorter than when it was laid out.
    if (!renderer_ || row.item >= items_->numItems()) return;
    CanvasRenderer& renderer = *renderer_;
    IntBox const area = calcAreaForItems().translated(canvasArea().bottomLeft());
    MenuItem const item = items_->getItem(row.item);
    Palette const& palette = getPalette();
    IntBox const whole(area.x1, row.box.y1, std::max(row.box.x2 + UifStd::getIndentWidth(), area.x1),
                       row.box.y2);
    Colour const ground = getItemBackCol(row);
    if (ground != palette.window(eWindowRaised))
        renderer.renderPrimitive(Glib::RectDescription(whole, ground));
    int const middle = whole.centre().y;
    auto const line = [&](int y) {
        renderer.renderPrimitive(Glib::RectDescription({whole.x1, y, whole.x2, y + 1}, palette.separator()));
    };
    if (MenuLayout::isSeparator(item)) return line(middle);
    MenuItem::Layout const layout = item.getLayout();
    if (layout.hasLineAbove) line(whole.y2 - 1);
    if (layout.hasLineBelow) line(whole.y1);
    if (matches(row.item) || isMarked(row.item)) {
        int const mark = UifStd::getIndentWidth() / 2;
        renderer.renderPrimitive(
            Glib::RectDescription({whole.x1, whole.y1, whole.x1 + mark, whole.y2}, palette.doIt()));
    }
    if (row.item < items_->numItems()) drawRowText(renderer, row, ground);
}

void Menu::drawRowText(CanvasRenderer& renderer, VisibleMenuItem const& row, Colour const& ground) {
    // The icon may change the list.
    MenuItem const item = items_->getItem(row.item);
    Palette const& palette = getPalette();
    int const gap = UifStd::getWidgetGap();
    bool const isActive = item.isActive() && this->isActive();
    Colour const plain = isActive ? item.getTextColour() : palette.text(eTextDisabled);
    Colour const wanted = item.isHeader() && isActive ? palette.subheadingText() : plain;
    // On the ground of the theme its colours read as they are.
    bool const isUsual = ground == palette.window(eWindowRaised) && wanted == palette.text(eTextEnabled);
    Colour const ink = isUsual ? wanted : ControlLook::inkOn(wanted, ground, isActive);
    Glib::FontDesc const desc = getFontForItem(item);
    Qv::Ptr<iFont> const font = Glib::loadFont(desc);
    int const baseline = row.box.y1 + getFontYOffset(row.box.height(), font);
    int left = row.box.x1 + item.getLayout().paddingLeft;
    if (item.isHeader()) {
        auto const sign = item.type() == eExpandedGroupItem ? QvTTF::eFoldOpen : QvTTF::eFoldClosed;
        int const size = UifStd::calcScaledValue(12);
        renderer.renderPrimitive(Glib::TextDescription(
            getString(sign), {left, baseline}, Glib::FontDesc(getQvUtilityFontName(), toSize16(size)), ink));
        left += size + gap / 2;
    }
    int right = drawRightSide(renderer, row, ink);
    if (auto const icon = item.iconRenderer()) {
        XY<int> const size = icon->size();
        int const x = item.getLayout().isIconAtRight ? right - size.x : left;
        int const y = row.box.centre().y - size.y / 2;
        icon->draw(renderer, {x, y, x + size.x, y + size.y}, ink);
        if (item.getLayout().isIconAtRight)
            right -= size.x + gap;
        else
            left += size.x + gap;
    }
    if (auto const formatted = item.formattedLabel()) {
        int const height = HTMLRenderer::calcHeight(*formatted, desc, -1);
        int const top = row.box.centre().y + (height + 1) / 2;
        return HTMLRenderer::render(renderer, *formatted, desc,
                                    {left, top - height, std::max(right, left), top});
    }
    Text text = item.getDisplayString();
    if (item.getLayout().isTextFitted)
        text = Glib::fitTextToWidth(font, text, toSize16(std::max(right - left, 0)));
    renderer.renderPrimitive(Glib::TextDescription(text, {left, baseline}, font, ink));
}

/// Draws the arrow of a sub-menu, the option and the text at the right; gives what is left for the label.
int Menu::drawRightSide(CanvasRenderer& renderer, VisibleMenuItem const& row, Colour const& ink) {
    MenuItem const& item = items_->getItem(row.item);
    Palette const& palette = getPalette();
    int const gap = UifStd::getWidgetGap();
    Qv::Ptr<iFont> const font = Glib::loadFont(getFontForItem(item));
    int const baseline = row.box.y1 + getFontYOffset(row.box.height(), font);
    int right = row.box.x2 - item.getLayout().paddingRight;
    auto const symbol = [&](QvTTF::eGlyph glyph) {
        int const size = UifStd::calcScaledValue(12);
        Glib::FontDesc const desc(getQvUtilityFontName(), toSize16(size));
        renderer.renderPrimitive(
            Glib::TextDescription(getString(glyph), {right, baseline}, desc, ink, eAlignRight));
        right -= size + gap / 2;
    };
    auto const text = [&](Text const& shown, Colour const& colour) {
        if (shown.empty()) return;
        renderer.renderPrimitive(Glib::TextDescription(shown, {right, baseline}, font, colour, eAlignRight));
        right -= font->textWidth(shown) + 2 * gap;
    };
    if (isCascadingItem(item)) symbol(QvTTF::eSubMenu);
    if (item.hasOptions()) right -= widthOfOptions(item) + gap;
    bool const hasMore = item.label().find(L'|') != Text::npos || !item.getIncidentalText().empty();
    if (!hasMore) return right;
    Colour const weaker = ControlLook::inkOn(palette.text(item.isActive() ? eTextSecondary : eTextDisabled),
                                             getItemBackCol(row), item.isActive());
    text(item.getIncidentalText(), weaker);
    text(item.getShownRightAlignedText(), weaker);
    return right;
}

/// What was typed to find an item, in the lower right corner, where it hides least.
void Menu::drawTyped(CanvasRenderer& renderer) {
    if (typed_.isEmpty()) return;
    Palette const& palette = getPalette();
    Qv::Ptr<iFont> const font = Glib::loadFont(UifStd::getFont());
    int const gap = UifStd::getWidgetGap();
    IntBox area = calcAreaForItems();
    // Beside the scroll bar.
    if (!visible_.empty()) area.x2 = std::min(area.x2, visible_.front().box.x2);
    area = area.translated(canvasArea().bottomLeft());
    int const wide = std::min(font->textWidth(typed_.text()) + 2 * gap, area.width());
    IntBox const box(area.x2 - wide, area.y1, area.x2, std::min(area.y1 + getRowHeight(), area.y2));
    renderer.clearClipRect();
    renderer.renderPrimitive(Glib::RectDescription(box, palette.window(eWindowRecessed)));
    renderer.renderPrimitive(
        Glib::TextDescription(typed_.text(), {box.x1 + gap, box.y1 + getFontYOffset(box.height(), font)},
                              font, palette.text(eTextEnabled)));
}

/// Over a label that was cut, all of it.
bool Menu::getTooltipDetails(XY<int> const& place, TooltipDetails& details) const {
    int const item = findItemAtPos(place);
    int const row = item < 0 ? noItem : findVisibleItem(static_cast<unsigned short>(item));
    if (row < 0) return Focusable::getTooltipDetails(place, details);
    auto const index = static_cast<unsigned short>(item);
    IntBox const box = visible_[static_cast<std::size_t>(row)].box;
    Text const text = items_->getItem(index).getDisplayString();
    int const room = box.x2 + UifStd::getIndentWidth() - calcAreaForItems().x1;
    if (widthOfRow(index) <= room) return Focusable::getTooltipDetails(place, details);
    details.text = text;
    details.area = box;
    return true;
}

// For drivers and tools

void Menu::describe(GlobDescription& description) const {
    Focusable::describe(description);
    description.role = Role::menu;
}

std::size_t Menu::numItems(ItemKey in) const {
    return in.isEmpty() ? layout_->numRows() : 0;
}

DescribedItems::Range Menu::itemsInSight(ItemKey in) const {
    if (!in.isEmpty() || visible_.empty()) return {};
    return {items_->rows().rowOfItem(visible_.front().item), visible_.size()};
}

ItemKey Menu::itemAt(ItemKey in, std::size_t index) const {
    unsigned short const item = in.isEmpty() ? items_->rows().itemOfRow(index) : MenuData::none;
    return item == MenuData::none ? ItemKey() : ItemKey{item + std::uint64_t(1)};
}

bool Menu::describeItem(ItemKey key, GlobDescription& description) const {
    if (key.isEmpty() || key.value > items_->numItems()) return false;
    auto const index = static_cast<unsigned short>(key.value - 1);
    MenuItem const& item = items_->getItem(index);
    description.role = itemIsEmpty(index) ? Role::menuSeparator : Role::menuItem;
    description.name = item.getDisplayString();
    if (MenuItem const* const option = item.currentOption()) description.value = option->getDisplayString();
    if (item.isActive()) description.states |= GlobDescription::enabled;
    if (index == highlighted_) description.states |= GlobDescription::focused;
    if (item.type() == eExpandedGroupItem || isOwnerOfSubMenu(index))
        description.states |= GlobDescription::expanded;
    if (isBinaryItem(item) && convertToBool(item)) description.states |= GlobDescription::checked;
    int const row = findVisibleItem(index);
    if (row >= 0) {
        description.states |= GlobDescription::visible;
        description.box = visible_[static_cast<std::size_t>(row)].box.translated(screenBox().bottomLeft());
    }
    description.actions = GlobDescription::press | GlobDescription::reveal;
    return true;
}

bool Menu::performItemAction(ItemKey key, std::uint32_t action) {
    if (key.isEmpty() || key.value > items_->numItems()) return false;
    auto const item = static_cast<unsigned short>(key.value - 1);
    if (action == GlobDescription::reveal) return reveal(item), true;
    if (action != GlobDescription::press || !items_->getItem(item).isActive()) return false;
    handleRelease(item);
    return true;
}

} // namespace wainscot
