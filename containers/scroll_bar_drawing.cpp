#include "buttons/button.h"
#include "buttons/button_look.h"
#include "containers/scroll_bar.h"
#include "host/drawing/shapes.h"
#include "host/drawing/symbols.h"
#include "host/drawing/uif_std.h"
#include "host/events/dispatch_scope.h"
#include "host/objects/description.h"

#include <algorithm>

namespace wainscot {

namespace {

/// Arrow buttons report at once, again after 0.3 s, and then ten times a second.
constexpr int repeatsPerHalfSecond = 5;
constexpr double repeatDelay = 0.6;
/// What the edge of a thumb that cannot be used keeps of its colour.
constexpr double inactiveShare = 0.6;
/// The lines at each end of a zoom bar's thumb, and how far inside they are; shorter thumbs have none.
constexpr int gripLines = 2;
constexpr int gripInset = 3;
constexpr int leastGripped = 24;

template <QvTTF::eGlyph glyph>
void drawArrow(Button const& button) {
    IntBox const box = button.canvasArea();
    auto const size = static_cast<unsigned short>(std::max(1, std::min(box.width(), box.height()) * 3 / 4));
    Qv::Ptr<iFont> const font = Glib::loadFont({getQvUtilityFontName(), size});
    Colour const colour =
        button.isActive() ? button.getPalette().mark(eMarkNormal) : button.getPalette().text(eTextDisabled);
    XY<int> const place{box.centre().x, box.y1 + getFontYOffset(box.height(), font)};
    CanvasRenderer renderer(button.canvas(), box);
    renderer.renderPrimitive(Glib::TextDescription(getString(glyph), place, font, colour, eAlignCentre));
}

/// For the pointer only: keys scroll in what the bar belongs to.
class ArrowButton final : public Button {
public:
    using Button::Button;
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

Colour ScrollBar::thumbColour() const {
    return thumbColour_ ? *thumbColour_ : ButtonLook::thumbColour(getPalette());
}

void ScrollBar::drawBackground() {
    Palette const& palette = getPalette();
    XY<int> const corner = canvasArea().bottomLeft();
    CanvasRenderer renderer(canvas(), canvasArea());
    if (isOpaque()) renderer.renderPrimitive(Glib::RectDescription(canvasArea(), getCol()));
    IntBox const track = getThumbBgArea().translated(corner);
    Glib::drawIndentBox(renderer, palette.window(eWindowRecessed), track);
    IntBox const thumb = getThumbArea().translated(corner);
    // A thumb that fills the track has nothing to say.
    if (size_ >= 1 || thumb.isEmpty()) return;
    bool const isActiveThumb = isActive();
    Colour const edge =
        isActiveThumb ? palette.mark(eMarkEdge)
                      : Colour::mix(palette.mark(eMarkEdge), palette.window(eWindowRecessed), inactiveShare);
    ButtonLook::Face const face{thumb, thumbColour(), isDragging(), overThumb_, isActiveThumb, &edge};
    ButtonLook::drawFace(renderer, face, palette);
    ButtonLook::drawEdge(renderer, face, palette);
    if (resizable_) drawGrips(renderer, thumb, edge);
}

/// Lines across both ends, where the thumb can be taken by them.
void ScrollBar::drawGrips(CanvasRenderer& renderer, IntBox const& thumb, Colour const& colour) {
    int const margin = std::max(2, (isVertical() ? thumb.width() : thumb.height()) / 4);
    int const length = isVertical() ? thumb.height() : thumb.width();
    if (length >= leastGripped)
        Glib::drawGripLines(renderer, colour, thumb, isVertical(), gripInset, margin, gripLines);
}

} // namespace wainscot
