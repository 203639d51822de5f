#include "menus/drop_down_button_base.h"

#include "host/base/diagnostics.h"
#include "host/drawing/canvas_renderer.h"
#include "host/drawing/symbols.h"
#include "host/drawing/uif_std.h"
#include "host/events/dispatch_scope.h"
#include "host/events/messages.h"
#include "host/objects/description.h"
#include "host/objects/glob_notices.h"
#include "host/objects/kbd_focus.h"
#include "host/objects/surround.h"
#include "host/windows/glob_manager.h"
#include "host/windows/screen.h"
#include "menus/menu.h"

namespace wainscot {

namespace {

/// A list is not made lower than that many rows to fit beside the button.
constexpr int leastRows = 6;
/// The shadow of a pop-up that has found no room on the side where it was wanted.
constexpr double shadowOpacity = 0.35;
constexpr unsigned allEdges = Surround::allEdges;
constexpr unsigned allButBottom = Surround::left | Surround::right | Surround::top;

} // namespace

DropDownButtonBase::DropDownButtonBase(Button::InitArgs const& args, eMode mode) : Button(args), mode_(mode) {
    setAlignment(eAlignLeft);
    if (mode_ == eStaysDown) setMessageOnMouseUp(false);
}

DropDownButtonBase::~DropDownButtonBase() = default;

void DropDownButtonBase::setDropDownPlace(WidgetRelativity side, WidgetAlignment alignment) {
    side_ = side;
    alignment_ = alignment;
}

// Opening

bool DropDownButtonBase::displayDropDown() {
    if (isDropDownOpen()) return false;
    DispatchScope const scope;
    LifeGuard const life = guard();
    informParentOfImminentAppearance();
    if (!life.alive() || !isActive() || isDropDownOpen()) return false;
    Glob* const made = makeDropDown();
    if (life.alive()) return displayWidget(made);
    if (GlobManager::instance().isFree(made)) destroy(made);
    return false;
}

bool DropDownButtonBase::displayWidget(Glob* popUp) {
    if (!is_good_glob_ptr(popUp)) return false;
    DispatchScope const scope;
    GlobManager& manager = GlobManager::instance();
    if (popUp == this || !manager.isFree(popUp)) {
        Diagnostics::count("pop-up is in use", "DropDownButton");
        return false;
    }
    LifeGuard const life = guard();
    LifeGuard const popUpLife = popUp->guard();
    handleSecondClick();
    if (!life.alive() && popUpLife.alive()) destroy(popUp);
    if (!life.alive() || !popUpLife.alive()) return false;
    IntBox const button = dropDownAnchor();
    XY<int> const size(popUp->width(), popUp->height());
    XY<int> place = manager.calcPosForGlob(size, button, side_, alignment_);
    if (place.y < 0) {
        bool const fitsAbove = button.y2 + size.y <= glib_getRootWindowHeight();
        place.y = fitsAbove ? button.y2 : 0;
        if (popUp->getSurround().frame().style == WidgetSurround::Style::inset)
            popUp->addShadow(2 * UifStd::getWidgetGap(), shadowOpacity, fitsAbove ? allButBottom : allEdges);
    }
    PopUpOptions options;
    options.place = place;
    options.anchor = button;
    options.opener = dropDownOpener();
    popUp_ = HandlerRef<Glob>(popUp);
    bool const isOpened = manager.openPopUp(popUp, options);
    if ((!isOpened || !life.alive()) && popUpLife.alive()) destroy(popUp);
    if (!life.alive()) return false;
    if (!isOpened) popUp_ = {};
    if (!popUp_ || popUp_.get() != popUp) return false;
    deletionWatch_ =
        GlobNotices::watchDeletion(*popUp, makeCallback<int, NotifyMsg>([this](NotifyMsg const&) {
            forgetDropDown();
            showReleased();
            return 1;
        }));
    describeChanged(DescriptionChange::state);
    return true;
}

unsigned short DropDownButtonBase::heightForList(unsigned short wanted) const {
    IntBox const anchor = dropDownAnchor();
    IntBox const monitor = GlobManager::instance().monitorFor(anchor);
    int const room = std::max(anchor.y1 - monitor.y1, monitor.y2 - anchor.y2);
    if (room < leastRows * UifStd::getTableRowHeight()) return wanted;
    return toSize16(wanted == 0 ? room : std::min<int>(room, wanted));
}

IntBox DropDownButtonBase::dropDownAnchor() const {
    return screenBox();
}

Glob* DropDownButtonBase::dropDownOpener() {
    return this;
}

void DropDownButtonBase::informParentOfImminentAppearance() {
    if (auto const prepare = prepare_) prepare();
}

// Closing

Glob* DropDownButtonBase::forgetDropDown() {
    Glob* const open = popUp_.get();
    popUp_ = {};
    deletionWatch_ = {};
    if (open) describeChanged(DescriptionChange::state);
    return open;
}

void DropDownButtonBase::handleSecondClick() {
    DispatchScope const scope;
    if (Glob* const open = forgetDropDown()) destroy(open);
}

void DropDownButtonBase::showReleased() {
    if (!isLatching()) setState(buttonUp, eRedrawYes);
}

void DropDownButtonBase::removeMenuFromScreen() {
    DispatchScope const scope;
    LifeGuard const life = guard();
    handleSecondClick();
    if (life.alive()) showReleased();
}

void DropDownButtonBase::setActive(bool active, eRedrawFlag redraw) {
    DispatchScope const scope;
    LifeGuard const life = guard();
    if (!active && isDropDownOpen()) removeMenuFromScreen();
    if (life.alive()) Button::setActive(active, redraw);
}

void DropDownButtonBase::setVisible(bool visible) {
    DispatchScope const scope;
    LifeGuard const life = guard();
    if (!visible && isDropDownOpen()) removeMenuFromScreen();
    if (life.alive()) Button::setVisible(visible);
}

void DropDownButtonBase::handleDetached() {
    Glob* const open = popUp_.get();
    popUp_ = {};
    deletionWatch_ = {};
    Button::handleDetached();
    if (open) destroy(open);
}

// Presses

void DropDownButtonBase::switchState(button_state state, bool notify) {
    DispatchScope const scope;
    LifeGuard const life = guard();
    button_state shown = state;
    if (mode_ == eStaysDown) {
        if (state != buttonDown)
            handleSecondClick();
        else if (!isDropDownOpen())
            displayDropDown();
    } else if (state == buttonDown) {
        if (isDropDownOpen())
            handleSecondClick();
        else
            shown = displayDropDown() ? buttonDown : buttonUp;
    }
    // What has opened nothing has not been used.
    bool const isUsed = !life.alive() || mode_ == eGoesUp || state != buttonDown || isDropDownOpen();
    if (life.alive()) Button::switchState(shown, notify && isUsed && !getMessage().empty());
}

bool DropDownButtonBase::staysDownAfterRelease() const {
    return mode_ == eStaysDown && isDropDownOpen();
}

/// Dragging away from it, for instance into the pop-up, changes nothing while that is open.
void DropDownButtonBase::pressMoved(Event const& event) {
    if (!isDropDownOpen()) Button::pressMoved(event);
}

void DropDownButtonBase::pressEnded(PressEnd how) {
    if (how == PressEnd::lost && staysDownAfterRelease()) return;
    LifeGuard const life = guard();
    if (how == PressEnd::cancelled) handleSecondClick();
    if (life.alive()) Button::pressEnded(how);
}

// Events

bool DropDownButtonBase::react(Event const& event) {
    if (isMessageEvent(event) && reactToMessage(event)) return true;
    if (!isActive()) return Button::react(event);
    if (mouse_wheel_event(event)) {
        DispatchScope const scope;
        handleMouseWheelDelta(event.amount());
        return true;
    }
    if (isKeyPressEvent(event) && actionFor(openKeyTable, event.keyCode())) {
        if (isDropDownOpen())
            removeMenuFromScreen();
        else
            openByKey();
        return true;
    }
    return Button::react(event);
}

/// No release follows: without a pop-up the button goes up at once.
void DropDownButtonBase::openByKey() {
    LifeGuard const life = guard();
    switchState(buttonDown, true);
    if (life.alive() && !isDropDownOpen()) showReleased();
}

/// The keys belong to somebody else from now on.
void DropDownButtonBase::handleKbdFocus() {
    DispatchScope const scope;
    LifeGuard const life = guard();
    Button::handleKbdFocus();
    if (life.alive() && isDropDownOpen() && get_kbd_focus() != this) removeMenuFromScreen();
}

bool DropDownButtonBase::reactToMessage(Event const& event) {
    DispatchScope const scope;
    Glob* const sender = event.sender();
    bool const isFromPopUp = Glob::isWithin(sender, getDropDown());
    if (event.message() == Menu::pootMsg_ && (isFromPopUp || !sender || !isDropDownOpen())) {
        forgetDropDown();
        showReleased();
        return true;
    }
    if (!isFromPopUp) return false;
    LifeGuard const life = guard();
    if (handleDropDownMessage(event) && life.alive()) removeMenuFromScreen();
    return true;
}

bool DropDownButtonBase::handleDropDownMessage(Event const&) {
    return false;
}

void DropDownButtonBase::handleMouseWheelDelta(int) {}

// Look

int DropDownButtonBase::rightMargin() const {
    return arrowBox().width() + UifStd::getWidgetGap();
}

IntBox DropDownButtonBase::arrowBox() const {
    IntBox const area = canvasArea();
    return {area.x2 - std::min<int>(UifStd::getButtonHeight(), std::min(area.height(), area.width())),
            area.y1, area.x2, area.y2};
}

int DropDownButtonBase::calcWidthFor(UIString const& label, Glib::FontDesc const& font) {
    return calcSizeFor(label, font).x;
}

XY<int> DropDownButtonBase::calcSizeFor(UIString const& label, Glib::FontDesc const& font) {
    int const height = UifStd::getButtonHeight();
    int const around = UifStd::getIndentWidth() + 2 * UifStd::getWidgetGap();
    return {FittedLabel(label, font).neededWidth() + around + height, height};
}

SizeNeeds DropDownButtonBase::sizeNeeds() const {
    SizeNeeds needs = Button::sizeNeeds();
    if (needs.natural.x >= 0) needs.natural.x = calcWidthFor(getString(), getFont());
    return needs;
}

void DropDownButtonBase::drawText() {
    drawDropDownButtonText();
    drawDropDownButtonSeparator();
    drawDropDownButtonArrow();
}

void DropDownButtonBase::drawDropDownButtonText() {
    Button::drawText();
}

void DropDownButtonBase::drawDropDownButtonSeparator() {
    if (getStyle() == eButtonFlat) return;
    CanvasRenderer renderer(canvas(), canvasArea());
    IntBox const box = arrowBox();
    int const inset = box.height() / 4;
    renderer.renderPrimitive(Glib::RectDescription({box.x1, box.y1 + inset, box.x1 + 1, box.y2 - inset},
                                                   getPalette().separator()));
}

void DropDownButtonBase::drawDropDownButtonArrow() {
    Qv::Ptr<iFont> const font = Glib::loadFont({getQvUtilityFontName(), getQvUtilityFontSize()});
    IntBox const box = arrowBox();
    XY<int> const place{box.centre().x, box.y1 + getFontYOffset(box.height(), font)};
    CanvasRenderer renderer(canvas(), canvasArea());
    renderer.renderPrimitive(Glib::TextDescription(wainscot::getString(QvTTF::eDropDown), place, font,
                                                   indicatorColour(), eAlignCentre));
}

void DropDownButtonBase::describe(GlobDescription& description) const {
    Button::describe(description);
    description.role = Role::dropDown;
    if (isDropDownOpen()) description.states |= GlobDescription::expanded;
}

} // namespace wainscot
