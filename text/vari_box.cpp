#include "text/vari_box.h"

#include "foundation/effects.h"
#include "host/base/convert.h"
#include "host/base/first_exception.h"
#include "host/drawing/drawable.h"
#include "host/drawing/uif_std.h"
#include "host/events/dispatch_scope.h"
#include "host/services/text_ids.h"
#include "menus/model/menu_item.h"
#include "text/vari_box_p.h"

namespace wainscot {

namespace {

/// The standard width, in heights of a button.
constexpr int standardWidth = 4;
constexpr float smallShare = 0.75F;
/// How far a square corner reaches into a round one: less than the sine of 45 degrees.
constexpr float shareWithinCorner = 0.7F;

using Text = LightweightString<wchar_t>;

/// The id of its own item in the context menu.
constexpr LightweightString<char> defaultItemId{"varibox_default"};

GlobCreationInfo sized(VariBox::InitArgs const& args) {
    auto const wide = args.width > 0 ? args.width : VariBox::getDefaultWidth();
    return {args, wide, args.height > 0 ? args.height : VariBox::getDefaultHeight(args.appearance)};
}

void freeParser(void* parser) {
    delete static_cast<VariBoxParserBase*>(parser);
}

} // namespace

VariBox::InitArgs::InitArgs(UIString content, unsigned short w)
    : GlobCreationInfo(w, 0), text(std::move(content)) {}

VariBox::VariBox(InitArgs const& args) : Focusable(sized(args)), appearance_(args.appearance) {
    setPressButtons(EventKind::left | EventKind::right);
    standardWidth_ = args.width == 0;
    standardHeight_ = height() == getDefaultHeight(appearance_);
    if (!args.text.text().isEmpty()) extras().text = args.text.text();
}

VariBox::~VariBox() {
    if (ownsParser_) DispatchScope::freeWhenUnwound(freeParser, parser_);
}

void VariBox::handleDetached() {
    isEditing_ = false;
    isDragging_ = false;
    if (parser_ && ownsParser_) parser_->handleBoxGone();
    Focusable::handleDetached();
}

VariBox::Extras& VariBox::extras() {
    if (!extras_) extras_ = std::make_unique<Extras>();
    return *extras_;
}

// Parser

/// The former parser hears of the end of what the user was doing.
void VariBox::setParser(VariBoxParserBase* parser, bool owns) {
    DispatchScope const scope;
    LifeGuard const life = guard();
    FirstException thrown;
    if (parser == parser_) {
        ownsParser_ = owns && parser;
        return;
    }
    LifeGuard const parserLife = parser ? LifeGuard(parser->life()) : life;
    VariBox* const other = parser ? parser->getBox() : nullptr;
    if (other) other->ownsParser_ = false;
    if (other) thrown.run([&] { other->setParser(nullptr, false); });
    if (life.alive()) thrown.run([&] { dropPress(); });
    if (life.alive()) thrown.run([&] { endEditing(false); });
    if (!life.alive()) {
        if (owns && parser && parserLife.alive()) DispatchScope::freeWhenUnwound(freeParser, parser);
        return thrown.rethrow();
    }
    // What has ended may have destroyed the new one.
    if (!parserLife.alive()) parser = nullptr;
    VariBoxParserBase* const former = std::exchange(parser_, parser);
    if (std::exchange(ownsParser_, owns && parser)) DispatchScope::freeWhenUnwound(freeParser, former);
    parser_SetAllowedCharacters({});
    parser_SetMaxNumChars(0);
    if (parser) parser->box_ = HandlerRef<VariBox>(this);
    if (parser) thrown.run([&] { parser->init(); });
    bool const isDisabling = life.alive() && parser_ == parser && parser && !parser->isEnabled();
    if (life.alive() && isDisabling != std::exchange(isDisabledByParser_, isDisabling))
        thrown.run([&] { setActive(!isDisabling); });
    if (life.alive()) thrown.run([&] { applyEffects(*this, Effect::paint | Effect::value); });
    thrown.rethrow();
}

/// Called from a destructor: nothing may be thrown.
void VariBox::parser_Gone() {
    DispatchScope const scope;
    LifeGuard const life = guard();
    parser_ = nullptr;
    ownsParser_ = false;
    runHandler("parser_Gone", [&] {
        if (std::exchange(isDragging_, false)) showDragging(false);
        if (life.alive()) endEditing(false);
        if (life.alive()) applyEffects(*this, Effect::paint | Effect::value);
    });
}

void VariBox::parser_SetAllowedCharacters(LightweightString<char> const& characters) {
    if (Editor* const box = editor())
        box->setCharacters(fromUTF8(characters), characters.empty() ? eNoRestriction : eOnlyCharacters);
}

void VariBox::parser_SetMaxNumChars(unsigned long most) {
    if (Editor* const box = editor()) box->setSizeLimit(most);
}

void VariBox::parser_TextChanged(bool byUser) {
    if (byUser) return handleNudge();
    redrawTherm();
    describeChanged(DescriptionChange::value);
}

// Reports

LightweightString<char> VariBox::message(eMessageType type) {
    return type == eValueChanged ? valueChangedMsg : type == eChangeComplete ? changeCompleteMsg : invalidMsg;
}

void VariBox::sendMessageToParent(eMessageType type) {
    DispatchScope const scope;
    NotifyMsg report(message(type));
    report.setCode(type);
    reporter_.report(*this, parent(), report, MessageInfo::queued);
}

void VariBox::handleNudge() {
    DispatchScope const scope;
    LifeGuard const life = guard();
    FirstException thrown;
    thrown.run([&] { parser_TextChanged(false); });
    if (life.alive()) thrown.run([&] { sendMessageToParent(eValueChanged); });
    if (life.alive()) thrown.run([&] { sendMessageToParent(eChangeComplete); });
    thrown.rethrow();
}

// State and look

/// What is being done ends while the box can still be reached.
void VariBox::setActive(bool active, eRedrawFlag redraw) {
    DispatchScope const scope;
    LifeGuard const life = guard();
    FirstException thrown;
    if (!active) thrown.run([&] { endEditing(false); });
    if (life.alive()) thrown.run([&] { Focusable::setActive(active, redraw); });
    thrown.rethrow();
}

void VariBox::setPalette(Palette const& palette) {
    DispatchScope const scope;
    LifeGuard const life = guard();
    Focusable::setPalette(palette);
    if (!life.alive()) return;
    if (Editor* const box = editor()) box->setPalette(palette);
}

void VariBox::setAppearance(eAppearance appearance) {
    DispatchScope const scope;
    if (appearance == appearance_) return;
    appearance_ = appearance;
    LifeGuard const life = guard();
    if (standardHeight_) resize(width(), getDefaultHeight(appearance));
    if (life.alive()) applyEffects(*this, Effect::size | Effect::paint);
}

unsigned short VariBox::getDefaultWidth() {
    return toSize16(standardWidth * UifStd::getButtonHeight());
}

unsigned short VariBox::getDefaultHeight(eAppearance appearance) {
    return appearance == eSmall ? UifStd::getButtonHeight(smallShare) : UifStd::getButtonHeight();
}

int VariBox::calcSize(VariBoxMetrics::eMetric metric) const {
    int const radius = UifStd::getCornerRadius();
    switch (metric) {
    case VariBoxMetrics::eWidth:
        return getDefaultWidth();
    case VariBoxMetrics::eHeight:
        return getDefaultHeight(appearance_);
    case VariBoxMetrics::eTextMargin:
        return UifStd::getIndentWidth();
    case VariBoxMetrics::eThermMargin:
        return std::max(1, radius - static_cast<int>(static_cast<float>(radius - 1) * shareWithinCorner));
    case VariBoxMetrics::eThermLine:
        return std::max(1, UifStd::getBorder() / 2);
    }
    return 0;
}

SizeNeeds VariBox::sizeNeeds() const {
    int const high = standardHeight_ ? calcSize(VariBoxMetrics::eHeight) : -1;
    SizeNeeds needs;
    needs.natural = {standardWidth_ ? calcSize(VariBoxMetrics::eWidth) : -1, high};
    needs.minimum = {2 * UifStd::getButtonHeight(), high};
    return needs;
}

void VariBox::reshape() {
    DispatchScope const scope;
    LifeGuard const life = guard();
    Focusable::reshape();
    if (!life.alive()) return;
    if (Editor* const box = editor()) box->resize(width(), height());
}

void VariBox::setThermCol(Colour const& colour) {
    changeSetting(*this, extras().thermColour, colour, Effect::paint);
}

void VariBox::setTextCol(Colour const& colour) {
    changeSetting(*this, extras().textColour, colour, Effect::paint);
}

void VariBox::setDraggingForeCol(Colour const& colour) {
    if (Editor* const box = editor()) box->setDraggingForeCol(colour);
    changeSetting(*this, extras().draggingColour, colour, Effect::paint);
}

// Context menu

/// Only the item for the default comes and goes; the others are the owner's.
void VariBox::reviewMenu(Event const* event) {
    bool const wantsItem = takesInput() && parser_->hasDefault();
    if (!wantsItem && std::exchange(hasDefaultItem_, false)) removeMenuItem(defaultItemId);
    if (wantsItem && !std::exchange(hasDefaultItem_, true)) {
        MenuItem item(TextId::putDefaultBack,
                      makeCallback<int, NotifyMsg>([box = HandlerRef<VariBox>(this)](NotifyMsg const&) {
                          if (VariBox* const live = box.get()) live->putDefaultBack();
                          return 1;
                      }));
        item.id(defaultItemId);
        addMenuItem(item);
    }
    Focusable::reviewMenu(event);
}

} // namespace wainscot
