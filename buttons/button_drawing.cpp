#include "buttons/button_extras_p.h"
#include "host/base/convert.h"
#include "host/drawing/descriptions.h"
#include "host/drawing/symbols.h"
#include "host/drawing/uif_std.h"
#include "host/objects/kbd_focus.h"
#include "look/face.h"
#include "look/ink.h"

#include <algorithm>

namespace wainscot {

namespace {

/// Labels are not drawn in buttons that are no higher than this.
constexpr int labelFreeHeight = 7;
/// How much of the text colour the glyph keeps on the face.
constexpr double activeGlyphWeight = 0.6;
constexpr double inactiveGlyphWeight = 0.2;

} // namespace

Colour Button::getBackCol() const {
    if (extras_ && isDown() && extras_->down) return extras_->down->face;
    if (extras_ && !isDown() && extras_->up) return extras_->up->face;
    return defaultAction_ ? getPalette().doIt() : getPalette().button();
}

bool Button::hasOwnDownFace() const {
    return extras_ && isDown() && extras_->down && extras_->down->isOfState;
}

Colour Button::getForeCol() const {
    auto const* const own = !extras_                    ? nullptr
                            : isDown() && extras_->down ? &*extras_->down
                            : !isDown() && extras_->up  ? &*extras_->up
                                                        : nullptr;
    if (own && own->text) return isActive() ? *own->text : ControlLook::weakened(*own->text, own->face);
    Colour const ink =
        ControlLook::textColour({.isActive = isActive(), .isDefault = !own && defaultAction_}, getPalette());
    return own ? ControlLook::inkOn(ink, ControlLook::faceColour(face(), getPalette()), isActive()) : ink;
}

Colour const* Button::borderColour() const {
    return nullptr;
}

bool Button::isHovered() const {
    return isActive() && containsPointer();
}

ControlLook::Face Button::face() const {
    bool const isChosen = isLatching() && isDown();
    ControlState const state{.isActive = isActive(),
                             .isHovered = isHovered(),
                             .isPressed = looksDown() && !isChosen,
                             .isChosen = isChosen,
                             .isDefault = defaultAction_ && getBackCol() == getPalette().doIt()};
    // What has no face at rest shows its state on the ground.
    bool const isBare = style_ == eButtonFlat && !state.isDefault && getBackCol() == getPalette().button();
    Colour const colour = isBare ? getPalette().window(eWindowNormal) : getBackCol();
    return {canvasArea(), colour, state, borderColour(), hasOwnDownFace()};
}

void Button::draw() {
    drawBackground();
    drawBorder();
    if (extras_ && extras_->draw) {
        extras_->draw(*this);
    } else {
        drawIcon();
        drawText();
    }
    drawFocusMark();
}

void Button::drawBackground() {
    CanvasRenderer renderer(canvas(), canvasArea());
    // In a window of its own nothing lies behind the round corners.
    if (!isChildGlob() && isOpaque())
        renderer.renderPrimitive(Glib::RectDescription(canvasArea(), getPalette().window(eWindowNormal)));
    if (style_ == eButtonFlat && !looksDown() && !isHovered() && !defaultAction_) return;
    ControlLook::drawFace(renderer, face(), getPalette());
}

void Button::drawBorder() {
    if (style_ == eButtonFlat && !looksDown()) return;
    CanvasRenderer renderer(canvas(), canvasArea());
    ControlLook::drawEdge(renderer, face(), getPalette());
}

FittedLabel Button::shownLabel() const {
    bool const second = isDown() && extras_ && !extras_->secondLabel.isEmpty();
    return second ? label_.withText(extras_->secondLabel) : label_;
}

Qv::Ptr<Glib::Image> Button::icon() const {
    if (!extras_) return {};
    LightweightString<wchar_t> const& name = isDown() ? extras_->downIcon : extras_->upIcon;
    return name.isEmpty() ? Qv::Ptr<Glib::Image>() : Glib::loadIcon(name);
}

int Button::leftMargin() const {
    return hasIndicator() ? 0 : UifStd::getIndentWidth();
}

int Button::rightMargin() const {
    return hasIndicator() ? 3 * UifStd::getWidgetGap() : UifStd::getIndentWidth();
}

int Button::labelRoom() const {
    Qv::Ptr<Glib::Image> const image = icon();
    return width() - (leftMargin() + rightMargin() + (image ? image->size().x + UifStd::getWidgetGap() : 0));
}

/// The x at which the label is anchored, from the left edge; what that means depends on the alignment.
int Button::labelAnchor() const {
    int const gap = UifStd::getWidgetGap();
    Qv::Ptr<Glib::Image> const image = icon();
    if (alignment_ == eAlignRight) return width() - (rightMargin() + gap);
    if (alignment_ == eAlignCentre && image) {
        int const extent = calcIconPosition(image->size()).x2 - canvasArea().x1;
        return extent + (width() - extent) / 2;
    }
    if (alignment_ == eAlignCentre) return leftMargin() + (width() - leftMargin() - rightMargin()) / 2;
    return hasIndicator() && image ? leftMargin() + 2 * gap + image->size().x : leftMargin() + gap;
}

void Button::drawText() {
    if (height() <= labelFreeHeight) return;
    IntBox const area = canvasArea();
    CanvasRenderer renderer(canvas(), area);
    shownLabel().draw(renderer, area, area.x1 + labelAnchor(), labelRoom(), getForeCol(),
                      static_cast<TextAlignment>(alignment_));
    renderer.flush();
    if (hasIndicator()) drawIndicator();
}

Colour Button::indicatorColour() const {
    return Colour::mix(getForeCol(), getBackCol(), isActive() ? activeGlyphWeight : inactiveGlyphWeight);
}

void Button::drawIndicator() {
    auto const glyph = style_ == eButtonDropDown ? QvTTF::eDropDown
                       : isDown()                ? QvTTF::eFoldOpen
                                                 : QvTTF::eFoldClosed;
    int const size = style_ == eButtonFolding ? UifStd::getButtonHeight() / 2 : getQvUtilityFontSize();
    Qv::Ptr<iFont> const font = Glib::loadFont({getQvUtilityFontName(), toSize16(size)});
    int x = width() - (height() - 2 * UifStd::getIndentWidth()) / 2;
    TextAlignment alignment = eAlignCentre;
    if (alignment_ == eAlignLeft) {
        x = labelAnchor() + Glib::loadFont(label_.font())->textWidth(shownLabel().fitted(labelRoom())) +
            UifStd::getWidgetGap();
        alignment = eAlignLeft;
    }
    XY<int> const place = canvasArea().bottomLeft() + XY<int>{x, getFontYOffset(height(), font)};
    CanvasRenderer renderer(canvas(), canvasArea());
    renderer.renderPrimitive(
        Glib::TextDescription(wainscot::getString(glyph), place, font, indicatorColour(), alignment));
}

/// Without a label in the middle; with one it stands before it, or at the other end from a label that is
/// aligned to the left.
IntBox Button::calcIconPosition(XY<int> const& iconSize) const {
    IntBox const area = canvasArea();
    int const y = area.y1 + (area.height() - iconSize.y) / 2;
    int const margin = leftMargin() + UifStd::getWidgetGap();
    int x = area.x1 + margin;
    if (shownLabel().isEmpty())
        x = area.x1 + (area.width() - iconSize.x) / 2;
    else if (alignment_ == eAlignLeft && !hasIndicator())
        x = area.x2 - margin - iconSize.x;
    return IntBox::sized({x, y}, iconSize);
}

void Button::drawIcon() {
    Qv::Ptr<Glib::Image> const image = icon();
    if (!image) return;
    CanvasRenderer renderer(canvas(), canvasArea());
    Glib::ImageDescription description(image, calcIconPosition(image->size()));
    if (!isActive()) description.opacity = 0.4;
    renderer.renderPrimitive(description);
}

} // namespace wainscot
