#include "foundation/label.h"

#include "foundation/focus_stop.h"
#include "foundation/tab_order_manager.h"
#include "host/drawing/uif_std.h"
#include "host/drawing/word_wrapping_text_renderer.h"
#include "host/events/dispatch_scope.h"
#include "host/events/event.h"
#include "host/objects/description.h"
#include "host/objects/tooltip_details.h"

#include <algorithm>

namespace wainscot {

namespace {

/// The natural width of a text that is wrapped: so many heights of a button.
constexpr int wrapLength = 14;

Glib::FontDesc fontOf(Label::Part part) {
    return part == Label::Part::heading ? UifStd::getTitleFont() : UifStd::getFont();
}

/// Where a control is made of several, the first of them at which Tab stops.
Glob& focusIn(Glob& control) {
    auto* const host = dynamic_cast<TabOrderableHost*>(&control);
    if (!host) return control;
    std::vector<TabOrderable*> stops;
    host->getTabOrderables(stops, TabOrderManager::appendTabStop);
    for (TabOrderable* stop : stops) {
        auto* const part = dynamic_cast<Glob*>(stop);
        if (part && stop->isTabStopActive()) return *part;
    }
    return control;
}

} // namespace

Label::InitArgs::InitArgs(UIString label, Part labelPart, unsigned short w, unsigned short h)
    : GlobCreationInfo(w, h), text(std::move(label)), part(labelPart) {
    opaque = false;
}

Label::Label(InitArgs const& args)
    : Glob(args), label_(args.text, fontOf(args.part)), automatic_(args.width == 0, args.height == 0),
      part_(args.part), wraps_(args.wraps) {
    resizeToText();
}

Label::~Label() = default;

void Label::setString(UIString const& text) {
    if (label_.setText(text)) textChanged();
}

void Label::setFont(Glib::FontDesc const& font) {
    hasOwnFont_ = true;
    if (label_.setFont(font)) textChanged();
}

void Label::setAlignment(TextAlignment alignment) {
    if (alignment_ == alignment) return;
    alignment_ = static_cast<unsigned char>(alignment);
    makeDirty();
}

void Label::setWraps(bool wraps) {
    if (wraps_ == wraps) return;
    wraps_ = wraps;
    textChanged();
}

void Label::textChanged() {
    DispatchScope const scope;
    LifeGuard const life = guard();
    resizeToText();
    if (!life.alive()) return;
    makeDirty();
    describeChanged(DescriptionChange::name);
}

void Label::setLabelFor(Glob& control) {
    if (getLabelFor() == &control) return;
    clearLabelFor();
    control_ = HandlerRef<Glob>(&control);
    control.setLabelledBy(this);
}

void Label::clearLabelFor() {
    Glob* const control = getLabelFor();
    control_ = {};
    if (control && control->getLabelledBy() == this) control->setLabelledBy(nullptr);
}

// Size

int Label::wrappedHeight(int width) const {
    Glib::WordWrappingTextRenderer lines(Glib::loadFont(label_.font()), std::max(width, 1));
    lines.analyse(label_.text().text());
    return std::max<int>(lines.size().y, UifStd::getButtonHeight());
}

XY<int> Label::neededSize() const {
    int const width = label_.neededWidth();
    int const lineHeight = Glib::loadFont(label_.font())->lineHeight();
    if (!wraps_) return {width, std::max<int>(lineHeight, UifStd::getButtonHeight())};
    int const wrapped = std::min(width, wrapLength * UifStd::getButtonHeight());
    return {wrapped, wrappedHeight(wrapped)};
}

void Label::resizeToText() {
    automatic_.apply(*this, neededSize());
}

SizeNeeds Label::sizeNeeds() const {
    XY<int> const needed = neededSize();
    // What is cut says less than it should: who prefers that names a minimum to the layout.
    SizeNeeds needs = automatic_.needs(needed, {wraps_ ? UifStd::getButtonHeight() : needed.x, needed.y});
    needs.heightFollowsWidth = wraps_ && needs.natural.y >= 0;
    return needs;
}

int Label::heightForWidth(int width) const {
    return wraps_ ? wrappedHeight(width) : neededSize().y;
}

void Label::handleLookChange(LookChange changes) {
    DispatchScope const scope;
    LifeGuard const life = guard();
    Glob::handleLookChange(changes);
    if (!life.alive()) return;
    if (!hasOwnFont_) label_ = label_.withFont(fontOf(part_));
    resizeToText();
}

// Input

bool Label::react(Event const& event) {
    Glob* const control = getLabelFor();
    bool const isPress = mouse_down_event(event) && mouse_left_event(event);
    if (!isPress || !control || !isActive()) return Glob::react(event);
    Glob& target = focusIn(*control);
    return (FocusStop::canTake(target) && target.claimKbdFocus()) || Glob::react(event);
}

// Look

Colour Label::colour() const {
    Palette const& palette = getPalette();
    if (!isActive()) return palette.text(eTextDisabled);
    if (part_ == Part::heading) return palette.headingText();
    return palette.text(part_ == Part::secondary ? eTextSecondary : eTextEnabled);
}

TextAlignment Label::shownAlignment() const {
    if (alignment_ == eAlignCentre || !UifStd::isRightToLeft()) return getAlignment();
    return alignment_ == eAlignLeft ? eAlignRight : eAlignLeft;
}

void Label::draw() {
    IntBox const box = canvasArea();
    CanvasRenderer renderer(canvas(), box);
    if (wraps_)
        drawLines(renderer, box);
    else
        drawLine(renderer, box);
}

void Label::drawLine(CanvasRenderer& renderer, IntBox const& box) {
    TextAlignment const alignment = shownAlignment();
    int const x = alignment == eAlignLeft ? box.x1 : alignment == eAlignRight ? box.x2 : box.centre().x;
    label_.draw(renderer, box, x, box.width(), colour(), alignment);
}

/// In the middle of the height, like a single line; from the top where they do not fit.
void Label::drawLines(CanvasRenderer& renderer, IntBox const& box) {
    LightweightString<wchar_t> const text = label_.text().text();
    Glib::WordWrappingTextRenderer lines(Glib::loadFont(label_.font()), std::max(box.width(), 1));
    lines.analyse(text);
    int const above = std::max((box.height() - lines.size().y) / 2, 0);
    IntBox const area{box.x1, box.y1, box.x2, box.y2 - above};
    lines.renderString(renderer, text, area, colour(), shownAlignment());
}

void Label::describe(GlobDescription& description) const {
    Glob::describe(description);
    description.role = Role::label;
    description.name = label_.text().text();
}

bool Label::getTooltipDetails(XY<int> const& place, TooltipDetails& details) const {
    if (Glob::getTooltipDetails(place, details)) return true;
    return !wraps_ && label_.getTip(*this, width(), details);
}

} // namespace wainscot
