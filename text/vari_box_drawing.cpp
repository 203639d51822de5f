#include "host/base/convert.h"
#include "host/drawing/canvas_renderer.h"
#include "host/drawing/uif_std.h"
#include "host/objects/description.h"
#include "host/objects/tooltip_details.h"
#include "host/services/text_ids.h"
#include "look/field.h"
#include "look/ink.h"
#include "text/vari_box_p.h"

#include <algorithm>
#include <cmath>

namespace wainscot {

namespace {

/// How much of its colour the bar has behind the text, which must stay readable.
constexpr double barShare = 0.3;

using Text = LightweightString<wchar_t>;

/// The latest ink; most boxes have the same, and finding it takes long.
struct KnownInk {
    Colour wanted;
    Colour ground;
    bool isActive = false;
    Colour ink;
};
constinit std::optional<KnownInk> knownInk;

Colour inkOn(Colour const& wanted, Colour const& ground, bool isActive) {
    bool const isKnown = knownInk && knownInk->wanted == wanted && knownInk->ground == ground &&
                         knownInk->isActive == isActive;
    if (!isKnown) knownInk = KnownInk{wanted, ground, isActive, ControlLook::inkOn(wanted, ground, isActive)};
    return knownInk->ink;
}

} // namespace

IntBox VariBox::thermArea() const {
    return bounds().inset(calcSize(VariBoxMetrics::eThermMargin));
}

/// Edge and round corners stay as they are, unless the text is so large that it reaches there.
void VariBox::redrawTherm() {
    IntBox const area = thermArea();
    int const line = Glib::loadFont(UifStd::getFont())->lineHeight();
    damage(line <= area.height() ? area : bounds());
}

Text VariBox::getText() const {
    return parser_ ? parser_->getText() : extras_ ? extras_->text : Text();
}

Text VariBox::shownText() const {
    return isMixed() ? UIString(TextId::severalValues).text() : getText();
}

Colour VariBox::barColour() const {
    return extras_ && extras_->thermColour ? *extras_->thermColour : getPalette().mark(eMarkAccent);
}

Colour VariBox::textColour() const {
    Palette const& palette = getPalette();
    if (!isActive()) return palette.text(eTextDisabled);
    if (isMixed()) return palette.text(eTextSecondary);
    if (isDragging_)
        return extras_ && extras_->draggingColour ? *extras_->draggingColour : palette.mark(eMarkAccent);
    return extras_ && extras_->textColour ? *extras_->textColour : palette.text(eTextEnabled);
}

void VariBox::draw() {
    CanvasRenderer renderer(canvas(), canvasArea());
    IntBox const box = canvasArea();
    IntBox const inner = box.inset(calcSize(VariBoxMetrics::eThermMargin));
    IntBox const sides[] = {{box.x1, box.y1, inner.x1, box.y2},
                            {inner.x2, box.y1, box.x2, box.y2},
                            {box.x1, box.y1, box.x2, inner.y1},
                            {box.x1, inner.y2, box.x2, box.y2}};
    if (std::ranges::any_of(sides, [&](IntBox const& side) { return renderer.isVisible(side); })) {
        ControlState const state{.isActive = isActive(), .isHovered = isActive() && containsPointer()};
        ControlLook::drawBehindCorners(renderer, box, getPalette());
        ControlLook::drawField(renderer, box, state, getPalette());
    } else
        renderer.renderPrimitive(Glib::RectDescription(inner, fieldColour()));
    if (parser_ && !isMixed()) drawTherm(renderer);
    drawText(renderer);
    drawFocusMark();
}

Colour VariBox::fieldColour() const {
    return ControlLook::fieldColour({.isActive = isActive()}, getPalette());
}

/// A weak bar behind the text, and a strong line below it.
void VariBox::drawTherm(CanvasRenderer& renderer) {
    IntBox const area = thermArea().translated(canvasArea().bottomLeft());
    double const position = std::clamp(parser_->getPositionWithinRange(), 0.0, 1.0);
    int const end = area.x1 + static_cast<int>(std::lround(position * area.width()));
    int const line = std::min(calcSize(VariBoxMetrics::eThermLine), area.height());
    if (end <= area.x1 || line <= 0) return;
    Colour const colour = isActive() ? barColour() : ControlLook::weakened(barColour(), fieldColour());
    renderer.renderPrimitive(Glib::RectDescription({area.x1, area.y1 + line, end, area.y2},
                                                   Colour::mix(colour, fieldColour(), barShare)));
    renderer.renderPrimitive(Glib::RectDescription({area.x1, area.y1, end, area.y1 + line}, colour));
}

void VariBox::drawText(CanvasRenderer& renderer) {
    int const room = width() - 2 * calcSize(VariBoxMetrics::eTextMargin);
    Text const text = shownText();
    if (text.empty() || room <= 0) return;
    Qv::Ptr<iFont> const font = Glib::loadFont(UifStd::getFont());
    IntBox const area = canvasArea();
    bool const fits = font->textWidth(text) <= room;
    Text const shown = fits ? text : Glib::fitTextToWidth(font, text, toSize16(room));
    XY<int> const place{area.x1 + width() / 2, area.y1 + getFontYOffset(height(), font)};
    Colour const ink = inkOn(textColour(), Colour::mix(barColour(), fieldColour(), barShare), isActive());
    renderer.renderPrimitive(Glib::TextDescription(shown, place, font, ink, eAlignCentre));
}

bool VariBox::getTooltipDetails(XY<int> const& place, TooltipDetails& details) const {
    if (Focusable::getTooltipDetails(place, details)) return true;
    int const room = width() - 2 * calcSize(VariBoxMetrics::eTextMargin);
    bool wasCut = false;
    Text const text = shownText();
    Glib::fitTextToWidth(Glib::loadFont(UifStd::getFont()), text, toSize16(room), &wasCut);
    if (isEditing_ || isDragging_ || !wasCut) return false;
    details.text = text;
    details.area = bounds();
    return true;
}

void VariBox::describe(GlobDescription& description) const {
    Focusable::describe(description);
    description.role = Role::numberBox;
    if (description.name.empty()) description.name = fromUTF8(name());
    if (isDragging_) description.states |= GlobDescription::pressed;
    if (takesInput()) description.states |= GlobDescription::editable;
    description.actions |= GlobDescription::drag;
    if (isMixed()) {
        description.states |= GlobDescription::mixed;
        return;
    }
    LifeGuard const life = const_cast<VariBox*>(this)->guard();
    description.value = getText();
    if (life.alive() && parser_) description.number = parser_->getNumber();
}

} // namespace wainscot
