#include "buttons/button.h"
#include "containers/scroll_bar.h"
#include "host/base/convert.h"
#include "host/drawing/symbols.h"
#include "host/drawing/uif_std.h"
#include "host/events/dispatch_scope.h"
#include "host/objects/description.h"
#include "look/face.h"
#include "look/track.h"

#include <algorithm>

namespace wainscot {

namespace {

/// Arrow buttons report at once, again after 0.3 s, and then ten times a second.
constexpr int repeatsPerHalfSecond = 5;
constexpr double repeatDelay = 0.6;
/// The arrows, as a share of the bar's thickness.
constexpr double arrowShare = 0.6;

template <QvTTF::eGlyph glyph>
void drawArrow(Button const& button) {
    IntBox const box = button.canvasArea();
    auto const size =
        toSize16(std::max(1, static_cast<int>(std::min(box.width(), box.height()) * arrowShare)));
    Qv::Ptr<iFont> const font = Glib::loadFont({getQvUtilityFontName(), size});
    Colour const colour =
        button.isActive() ? button.getPalette().mark(eMarkNormal) : button.getPalette().text(eTextDisabled);
    XY<int> const place{box.centre().x, box.y1 + getFontYOffset(box.height(), font)};
    CanvasRenderer renderer(button.canvas(), box);
    renderer.renderPrimitive(Glib::TextDescription(getString(glyph), place, font, colour, eAlignCentre));
}

/// For the pointer only: keys scroll in what the bar belongs to. It can be hit as far as the bar is thick;
/// what is drawn is no thicker than the bar's lane.
class ArrowButton final : public Button {
public:
    using Button::Button;
    void drawBackground() override {
        if (getStyle() != eButtonFlat) return Button::drawBackground();
        ControlState const state{.isHovered = containsPointer(), .isPressed = isDown()};
        if (!isActive() || !(state.isHovered || state.isPressed)) return;
        CanvasRenderer renderer(canvas(), canvasArea());
        IntBox const face = canvasArea().inset(ScrollBar::laneInset(std::min(width(), height())));
        ControlLook::drawFace(renderer, {face, ControlLook::laneColour(getPalette()), state}, getPalette());
    }
    void drawBorder() override {
        if (getStyle() != eButtonFlat) Button::drawBorder();
    }
    void describe(GlobDescription& description) const override {
        Button::describe(description);
        description.states &= ~static_cast<std::uint32_t>(GlobDescription::focusable);
    }
};

Button* makeArrowButton(LightweightString<char> const& message, void (*draw)(Button const&)) {
    unsigned short const side = static_cast<unsigned short>(ScrollBar::thickness());
    auto* const button = new ArrowButton(Button::InitArgs(UIString(), message, side, side));
    button->setMessageOnMouseUp(false);
    button->setRepeating(repeatsPerHalfSecond, repeatDelay);
    button->setCustomDrawFn(draw);
    button->setStyle(eButtonFlat);
    return button;
}

} // namespace

void ScrollBar::addArrowButtons() {
    DispatchScope const scope;
    Button* const first = isVertical() ? makeArrowButton(upButtonPressedMsg, drawArrow<QvTTF::eArrowUp>)
                                       : makeArrowButton(leftButtonPressedMsg, drawArrow<QvTTF::eArrowLeft>);
    Button* const last = isVertical() ? makeArrowButton(downButtonPressedMsg, drawArrow<QvTTF::eArrowDown>)
                                      : makeArrowButton(rightButtonPressedMsg, drawArrow<QvTTF::eArrowRight>);
    for (Button* const button : {first, last}) {
        button->setPalette(getPalette());
        addChild(button);
    }
    firstButton_ = HandlerRef<Button>(first);
    lastButton_ = HandlerRef<Button>(last);
    layOutButtons();
    updateButtonStates(eRedrawNo);
}

void ScrollBar::updateButtonStates(eRedrawFlag redraw) {
    DispatchScope const scope;
    LifeGuard const life = guard();
    if (Button* const first = firstButton_.get()) first->setActive(position_ > 0, redraw);
    if (!life.alive()) return;
    if (Button* const last = lastButton_.get()) last->setActive(position_ < 1 - size_, redraw);
}

void ScrollBar::setThumbCol(Colour const& colour) {
    if (thumbColour_ == colour) return;
    thumbColour_ = colour;
    redrawThumb();
}

void ScrollBar::setButtonCol(Colour const& colour) {
    DispatchScope const scope;
    for (Button* const button : {firstButton_.get(), lastButton_.get()}) {
        if (!button) continue;
        button->setFaceColour(colour);
        // Flat ones have no face at rest.
        button->setStyle(eButtonStandard);
    }
}

void ScrollBar::setPalette(Palette const& palette) {
    DispatchScope const scope;
    StandardPanel::setPalette(palette);
    for (Button* const button : {firstButton_.get(), lastButton_.get()})
        if (button) button->setPalette(palette);
}

void ScrollBar::redrawThumb() {
    damage(getThumbArea());
}

void ScrollBar::drawBackground() {
    CanvasRenderer renderer(canvas(), canvasArea());
    if (isOpaque()) renderer.renderPrimitive(Glib::RectDescription(canvasArea(), getCol()));
    XY<int> const corner = canvasArea().bottomLeft();
    // The arrows stand in the lane, too.
    IntBox const lane = bounds().inset(laneInset(std::min(width(), height())));
    ControlLook::drawLane(renderer, lane.translated(corner), getPalette());
    IntBox const thumb = getThumbArea().translated(corner);
    // A thumb that fills the track has nothing to say.
    if (size_ >= 1 || thumb.isEmpty()) return;
    ControlState const state{.isActive = isActive(), .isHovered = overThumb_, .isPressed = isDragging()};
    Colour const* const own = thumbColour_ ? &*thumbColour_ : nullptr;
    ControlLook::drawThumb(renderer, {thumb, own, state, isVertical(), resizable_}, getPalette());
}

} // namespace wainscot
