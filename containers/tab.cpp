#include "containers/tab.h"

#include "buttons/checkbox.h"
#include "buttons/standard_buttons.h"
#include "containers/tab_strip_p.h"
#include "containers/tabbed_dialogue.h"
#include "foundation/focus_stop.h"
#include "host/drawing/shapes.h"
#include "host/events/messages.h"
#include "host/objects/description.h"
#include "host/objects/drag_drop_item.h"
#include "host/objects/kbd_focus.h"
#include "host/objects/tooltip_details.h"
#include "look/focus_mark.h"
#include "look/ink.h"

#include <algorithm>

namespace wainscot {

namespace {

/// Of a name, in heights of a button; longer ones are cut.
constexpr int widestName = 8;
constexpr int narrowestName = 2;
/// While it is edited.
constexpr int narrowestEdited = 5;
/// How thick the accent of the current tab is, in indents.
constexpr double accentThickness = 0.5;

} // namespace

Tab::Tab(UIString const& name, TabStrip* strip) : Pressable<rect>(0, 0), label_(name), strip_(strip) {
    setOpaque(false);
    setPressButtons(EventKind::left | EventKind::middle);
    Tab::resize(neededWidth(), neededHeight());
}

Tab::~Tab() = default;

// Parts

void Tab::setName(UIString const& name) {
    if (!label_.setText(name)) return;
    describeChanged(DescriptionChange::name);
    widthChanged();
}

void Tab::setFont(Glib::FontDesc const& font) {
    if (label_.setFont(font)) widthChanged();
}

void Tab::setTextColour(std::optional<Colour> const& colour) {
    textColour_ = colour;
    makeDirty();
}

void Tab::widthChanged() {
    makeDirty();
    if (TabStrip* const strip = strip_.get()) strip->widthChanged(*this);
}

int Tab::neededHeight() const {
    return UifStd::getButtonHeight() + UifStd::getIndentWidth();
}

int Tab::neededWidth() const {
    int const button = UifStd::getButtonHeight();
    int const least = (isRenaming() ? narrowestEdited : narrowestName) * button;
    int const name = std::clamp(label_.neededWidth() + 1, least, widestName * button);
    int const parts =
        (checkbox_ ? checkbox_.get()->width() : 0) + (closeButton_ ? closeButton_.get()->width() : 0);
    return name + parts + 2 * UifStd::getWidgetGap();
}

void Tab::addCheckbox() {
    if (checkbox_) return;
    unsigned short const side = UifStd::getButtonHeight();
    auto* const box = new Checkbox(Checkbox::InitArgs(side, side));
    checkbox_ = HandlerRef<Glob>(box);
    addWidget(box, 0, 0);
    widthChanged();
}

Checkbox* Tab::getCheckbox() const {
    return static_cast<Checkbox*>(checkbox_.get());
}

void Tab::setCheckboxDataAdaptor(ValAdaptorBase<bool>* adaptor) {
    Qv::Ptr<ValAdaptorBase<bool>> const held(adaptor);
    LifeGuard const life = guard();
    addCheckbox();
    if (Checkbox* const box = life.alive() ? getCheckbox() : nullptr) box->bindTo(held);
}

void Tab::setClosable(bool closable) {
    if (closable == isClosable()) return;
    if (closable) {
        auto* const button = new PootButton(getPalette());
        closeButton_ = HandlerRef<Glob>(button);
        addWidget(button, 0, 0);
    } else {
        destroy(closeButton_.get());
    }
    widthChanged();
}

void Tab::placeParts() {
    int const gap = UifStd::getWidgetGap();
    auto const middle = [&](Glob const& part) { return (height() - part.height()) / 2; };
    if (Glob* const box = checkbox_.get()) setWidgetPos(box, {gap / 2, middle(*box)});
    if (Glob* const button = closeButton_.get())
        setWidgetPos(button, {width() - gap / 2 - button->width(), middle(*button)});
    if (Glob* const box = nameBox_.get()) {
        IntBox const area = labelArea();
        int const indent = UifStd::getIndentWidth();
        reshapeWidgetAt(box, {area.x1 - indent, middle(*box)}, {area.width() + 2 * indent, box->height()});
    }
}

IntBox Tab::labelArea() const {
    int const gap = UifStd::getWidgetGap();
    Glob const* const box = checkbox_.get();
    Glob const* const button = closeButton_.get();
    int const left = box ? gap / 2 + box->width() : gap;
    int const right = button ? gap / 2 + button->width() : gap;
    return {left, 0, std::max(left, width() - right), height()};
}

void Tab::reshape() {
    Pressable<rect>::reshape();
    placeParts();
}

// Renaming

bool Tab::startRenaming() {
    auto const make = Registry::instance().makeNameBox;
    if (isRenaming() || !make || !isActive() || !isShown()) return isRenaming();
    DispatchScope const scope;
    LifeGuard const life = guard();
    Glob* const box =
        make(getName().text(), getFont(), getPalette().makeTextPalette(),
             [ref = HandlerRef<Tab>(this)](std::optional<LightweightString<wchar_t>> const& name) {
                 if (Tab* const tab = ref.get()) tab->endRenaming(name);
             });
    nameBox_ = HandlerRef<Glob>(box);
    addWidget(box, 0, 0);
    if (!life.alive() || !nameBox_) return false;
    widthChanged();
    placeParts();
    box->claimKbdFocus();
    return life.alive() && isRenaming();
}

void Tab::endRenaming(std::optional<LightweightString<wchar_t>> const& name) {
    DispatchScope const scope;
    LifeGuard const life = guard();
    Glob* const box = nameBox_.get();
    nameBox_ = {};
    TabStrip* const strip = strip_.get();
    // A box that is hidden has lost the focus to what is round it.
    Glob* const holder = FocusStop::holderBeside(*this);
    bool const isHere = holder && strip && holder != strip && isWithin(holder, strip);
    if (box && isHere) strip->claimKbdFocus();
    if (box) destroy(box);
    if (life.alive()) widthChanged();
    // A name of blanks is none.
    bool const isNamed = name && !std::ranges::all_of(*name, [](wchar_t c) { return c == L' '; });
    if (!life.alive() || !isNamed || *name == getName().text()) return;
    setName(*name);
    if (life.alive() && strip_ && strip_.get()->dialogue())
        sendMessage(nameChangedMsg, strip_.get()->dialogue(), this);
}

// Events

bool Tab::isCurrent() const {
    return strip_ && strip_.get()->current() == this;
}

bool Tab::react(Event const& event) {
    if (isMessageEvent(event)) {
        TabbedDialogue* const dialogue = strip_ ? strip_.get()->dialogue() : nullptr;
        if (event.message() == pootMsg && dialogue) dialogue->closeByUser(*this);
        // The check box speaks through its data.
        return true;
    }
    if (!isActive()) return Pressable<rect>::react(event);
    return reactToPress(event) || Pressable<rect>::react(event);
}

bool Tab::pressBegan(Event const& event) {
    TabbedDialogue* const dialogue = strip_ ? strip_.get()->dialogue() : nullptr;
    if (!dialogue) return false;
    isMiddlePress_ = mouse_middle_event(event);
    if (isMiddlePress_) return dialogue->canClose();
    if (mouse_double_click_event(event) && isCurrent() && dialogue->canRename()) {
        startRenaming();
        return true;
    }
    // The keys of the dialogue work from now on.
    LifeGuard const life = guard();
    if (!isWithin(FocusStop::holderBeside(*this), dialogue)) strip_.get()->claimKbdFocus();
    if (life.alive() && strip_ && strip_.get()->dialogue()) dialogue->selectByUser(*this);
    return true;
}

void Tab::pressMoved(Event const& event) {
    TabStrip* const strip = strip_.get();
    if (!strip || isMiddlePress_ || isRenaming()) return;
    if (isDragged_ || isMouseMoveSignificant(event)) isDragged_ = strip->drag(*this, event, press().place());
}

void Tab::pressEnded(PressEnd how) {
    DispatchScope const scope;
    TabStrip* const strip = strip_.get();
    if (std::exchange(isDragged_, false) && strip) strip->endDrag(*this, how == PressEnd::cancelled);
    if (isMiddlePress_ && how == PressEnd::releasedInside && strip && strip->dialogue())
        strip->dialogue()->closeByUser(*this);
}

void Tab::setActive(bool active, eRedrawFlag redraw) {
    LifeGuard const life = guard();
    Pressable<rect>::setActive(active, redraw);
    if (life.alive()) describeChanged(DescriptionChange::state);
}

void Tab::handleDetached() {
    if (TabStrip* const strip = strip_.get()) strip->tabGone(*this);
    Pressable<rect>::handleDetached();
}

// Drags of others

bool Tab::canAccept(DragDropItem const&, XY<int> const&, eDropReason reason) {
    return reason == dropHover && isActive();
}

void Tab::handleDragHover(DragDropItem const&, XY<int> const&, bool inside) {
    if (TabbedDialogue* const dialogue = strip_ ? strip_.get()->dialogue() : nullptr)
        dialogue->hoverByDrag(inside ? this : nullptr);
}

/// It takes nothing itself.
MouseCursorID Tab::getDropCursor(DragDropItem const&, XY<int> const&) const {
    return arrowCursor;
}

// Look

void Tab::handleLookChange(LookChange changes) {
    Pressable<rect>::handleLookChange(changes);
    label_.followLook();
}

bool Tab::getTooltipDetails(XY<int> const& place, TooltipDetails& details) const {
    return Pressable<rect>::getTooltipDetails(place, details) ||
           label_.getTip(*this, labelArea().width(), details);
}

void Tab::draw() {
    Pressable<rect>::draw();
    CanvasRenderer renderer(canvas(), canvasArea());
    if (!isRenaming()) {
        Palette const& palette = getPalette();
        ControlState state;
        state.isActive = isActive();
        Colour const usual = isCurrent() || containsPointer() || !state.isActive
                                 ? ControlLook::textColour(state, palette)
                                 : palette.text(eTextSecondary);
        Colour const ink =
            textColour_ ? ControlLook::inkOn(*textColour_, palette.window(eWindowNormal), state.isActive)
                        : usual;
        IntBox const area = labelArea();
        IntBox const row = area.translated(canvasArea().bottomLeft());
        bool wasCut = false;
        label_.fitted(area.width(), &wasCut);
        // A short name stands in the middle.
        int const x = wasCut ? row.x1 : row.centre().x;
        label_.draw(renderer, row, x, area.width(), ink, wasCut ? eAlignLeft : eAlignCentre);
    }
    TabStrip const* const strip = strip_.get();
    if (strip && isCurrent() && glib_showsKbdFocus(strip))
        ControlLook::drawFocusMark(renderer, canvasArea(), getPalette());
}

void Tab::drawBackground() {
    CanvasRenderer renderer(canvas(), canvasArea());
    IntBox const box = canvasArea();
    Palette const& palette = getPalette();
    if (isCurrent() || isDragged_)
        renderer.renderPrimitive(Glib::RectDescription(box, palette.window(eWindowNormal)));
    else if (containsPointer() && isActive())
        renderer.renderPrimitive(
            Glib::RectDescription({box.x1, box.y1 + 1, box.x2, box.y2}, palette.window(eWindowRaised)));
}

/// The current tab is open towards its page.
void Tab::drawBorder() {
    CanvasRenderer renderer(canvas(), canvasArea());
    IntBox const box = canvasArea();
    Colour const line = getPalette().separator();
    if (isCurrent() || isDragged_) {
        renderer.renderPrimitive(Glib::RectDescription({box.x1, box.y1, box.x1 + 1, box.y2}, line));
        renderer.renderPrimitive(Glib::RectDescription({box.x2 - 1, box.y1, box.x2, box.y2}, line));
        drawTopEdge();
    } else {
        renderer.renderPrimitive(Glib::RectDescription({box.x1, box.y1, box.x2, box.y1 + 1}, line));
    }
}

void Tab::drawTopEdge() {
    CanvasRenderer renderer(canvas(), canvasArea());
    IntBox const box = canvasArea();
    int const thickness = std::max(1, static_cast<int>(UifStd::getIndentWidth() * accentThickness));
    Palette const& palette = getPalette();
    Colour const accent = isActive() ? palette.mark(eMarkAccent) : palette.separator();
    renderer.renderPrimitive(Glib::RectDescription({box.x1, box.y2 - thickness, box.x2, box.y2}, accent));
}

void Tab::describe(GlobDescription& description) const {
    Pressable<rect>::describe(description);
    description.role = Role::tab;
    description.name = getName().text();
    description.actions |= GlobDescription::press;
    if (isCurrent()) description.states |= GlobDescription::selected;
    TabStrip* const strip = strip_.get();
    if (!strip || !description.wants(GlobDescription::relations)) return;
    description.memberOf = HandlerRef<Glob>(strip);
    description.position = static_cast<std::size_t>(strip->indexOf(this)) + 1;
    description.setSize = strip->numTabs();
}

} // namespace wainscot
