#include "buttons/radio_button.h"

#include "host/base/convert.h"
#include "host/base/diagnostics.h"
#include "host/events/event.h"
#include "host/events/messages.h"
#include "host/objects/description.h"

namespace wainscot {

radio_set::~radio_set() = default;

void radio_set::switchMember(Button& member, bool on, bool notify) {
    member.switchState(on ? buttonDown : buttonUp, notify);
}

int radio_set::indexOfMember(Glob const& glob) const {
    auto const* const button = dynamic_cast<radio_button const*>(&glob);
    return button && button->set() == this ? button->index() : -1;
}

void radio_set::set_current(int index, bool quiet) {
    LifeGuard const life(choiceLife());
    RadioSetBase::set_current(index, quiet);
    if (life.alive()) takeFocusAlong();
}

radio_button::radio_button(InitArgs const& args) : Button(args) {
    init(args.set);
}

radio_button::radio_button(LightweightString<wchar_t> const& label, char const* message, radio_set* set,
                           unsigned short width, unsigned short height, bool opaque, Canvas* canvas)
    : Button(UIString(label), message, width, height, opaque, canvas) {
    init(set);
}

radio_button::~radio_button() = default;

void radio_button::init(radio_set* set) {
    setLatching(true, false);
    checkMessage();
    if (!set) return;
    set_ = set;
    setLife_ = LifeGuard(set->choiceLife());
    std::uint32_t const added = set->addMember(*this);
    index_ = added == radio_set::refused ? -1 : static_cast<int>(added);
}

radio_set* radio_button::set() const {
    return set_ && setLife_.alive() ? set_ : nullptr;
}

void radio_button::setMessage(char const* message) {
    Button::setMessage(message);
    checkMessage();
}

void radio_button::checkMessage() const {
    if (getMessage().size() + messageTable[1].text.size() > maxText)
        Diagnostics::count("radio button's message too long", getMessage().c_str());
}

void radio_button::setState(button_state, eRedrawFlag) {
    if (radio_set* const known = set()) known->set_current(index_, false);
}

void radio_button::switchState(button_state, bool notify) {
    bool const on = !isDown();
    Button::setState(on ? buttonDown : buttonUp, eRedrawYes);
    if (notify) report(on);
}

void radio_button::report(bool on) {
    MessageInfo const& info = messageTable[on ? 0 : 1];
    NotifyMsg message(info.nameFor(getMessage()).substr(0, maxText));
    message.setCode(info.code);
    Glob* target = parent();
    if (!target) {
        target = findNearestGlob([](Glob*) { return true; });
        if (!target || !(glob_pseudo_distance(this, target) < 0.0)) target = this;
    }
    sendNotification(message, target, static_cast<Glob*>(this));
}

bool radio_button::isTabStopActive() {
    radio_set const* const known = set();
    return Button::isTabStopActive() && (!known || index_ < 0 || known->isTabStopAt(index_));
}

bool radio_button::stepBy(XY<int> direction) {
    radio_set* const known = set();
    int const next = known && index_ >= 0 ? known->nextUsable(index_, direction) : -1;
    if (next < 0) return false;
    known->set_current(next, false);
    return true;
}

bool radio_button::react(Event const& event) {
    auto const direction =
        isActive() && isKeyPressEvent(event) ? actionFor(choiceKeys, event.keyCode()) : std::nullopt;
    if (direction && stepBy(*direction)) return true;
    if (!mouse_left_event(event) || mouse_wheel_event(event)) return Button::react(event);
    if (!mouse_down_event(event)) return isActive() || Button::react(event);
    if (!isActive() || ignoresMouseClicks()) return Button::react(event);
    if (radio_set* const known = set()) known->set_current(index_, false);
    return true;
}

void radio_button::describe(GlobDescription& description) const {
    Button::describe(description);
    description.role = Role::radioButton;
    if (isDown()) description.states |= GlobDescription::checked;
    radio_set const* const known = description.wants(GlobDescription::relations) ? set() : nullptr;
    if (!known || index_ < 0) return;
    description.position = static_cast<std::size_t>(index_) + 1;
    description.setSize = known->count();
}

StdRadioButton::StdRadioButton(radio_set* set, LightweightString<wchar_t> const& label, char const* message,
                               Colour const& colour, Canvas* canvas, XY<int> const& size)
    : radio_button(label, message, set, toSize16(size.x), toSize16(size.y), true, canvas) {
    setFaceColour(colour);
}

} // namespace wainscot
