#pragma once

#include "foundation/rect.h"
#include "foundation/standard_panel.h"
#include "host/base/first_exception.h"
#include "host/events/dispatch_scope.h"
#include "host/events/event.h"

namespace wainscot {

/// How a press ended.
enum class PressEnd : unsigned char {
    releasedInside,
    releasedOutside,
    /// Escape was pressed, or the release is lost: the widget takes back what the press began.
    cancelled,
    /// The widget was disabled, hidden or taken away, or another object took the pointer: the widget lets go
    /// and chooses nothing.
    lost,
};

/// One held press of the pointer on a widget: which button, where, and whether it is still going on. A second
/// button of a chord changes nothing.
class WAINSCOT_API Press {
public:
    /// What an event means for the press.
    enum class Step : unsigned char {
        /// It does not belong to the press.
        other,
        begins,
        moves,
        /// Another button, pressed or released meanwhile.
        chord,
        releasedInside,
        releasedOutside,
        /// The button is no longer held, and no release was reported.
        lost,
    };

    /// `buttons` are the buttons that can begin it (`EventKind::left` ...).
    explicit Press(int buttons = EventKind::left) : buttons_(static_cast<unsigned char>(buttons)) {}

    /// Notes what a pointer event means for the press. All edges of the widget's box count as inside.
    Step take(Event const& event, Glob const& widget);
    /// Ends the press for another reason. False when none is held.
    bool end();

    bool isHeld() const { return held_ != 0; }
    /// Tells one press from the next: it changes at the beginning and at the end of a press.
    unsigned int number() const { return number_; }
    /// Where it began, in root coordinates.
    XY<int> const& place() const { return place_; }
    /// The modifiers at the last press.
    unsigned int modifiers() const { return modifiers_; }

    /// A press, move or release of the left button.
    static bool isOfLeftButton(Event const& event);
    static bool isInside(Event const& event, Glob const& widget);

private:
    Step takeRelease(Event const& event, Glob const& widget);

    XY<int> place_;
    unsigned int number_ = 0;
    unsigned int modifiers_ = 0;
    unsigned char buttons_;
    /// The button that holds it.
    unsigned char held_ = 0;
};

/// A widget that can be pressed. It hears once that a press begins and once that it ends, whatever the
/// reason. It is painted when the pointer enters and leaves. `Base` is the class of widgets that it extends.
///
/// The widget hands its events to `reactToPress`. The virtuals called here may destroy anything.
template <class Base>
class WAINSCOT_API Pressable : public Base {
public:
    using Base::Base;

    /// A held press ends when the widget becomes inactive or hidden.
    void setActive(bool active, eRedrawFlag redraw = eRedrawYes) override;
    void setVisible(bool visible) override;
    void handlePressCancelled(Event const& press) override;
    void handleCaptureLost() override;
    void handleMouseContainment(bool inside) override;

protected:
    /// A button went down on it. False = no press begins.
    virtual bool pressBegan(Event const& event) = 0;
    /// The pointer has moved while the press is held. Does nothing here.
    virtual void pressMoved(Event const& event);
    /// `press()` is not held any more.
    virtual void pressEnded(PressEnd how) = 0;

    /// Whether the event belongs to the press and is used; true also when the widget has died.
    bool reactToPress(Event const& event);
    /// Ends a held press as lost.
    void dropPress();
    Press const& press() const { return press_; }
    /// Sets the buttons that begin a press; at first the left button alone.
    void setPressButtons(int buttons) { press_ = Press(buttons); }

private:
    bool begin(Event const& event);

    Press press_;
};

template <class Base>
bool Pressable<Base>::reactToPress(Event const& event) {
    if (!mouse_event(event)) return false;
    LifeGuard const life = this->guard();
    // The button is pressed again, so its release was not reported.
    if (mouse_down_event(event) && !mouse_chord_event(event)) dropPress();
    if (!life.alive()) return true;
    switch (press_.take(event, *this)) {
    case Press::Step::other:
        return false;
    case Press::Step::begins:
        return begin(event);
    case Press::Step::moves:
        pressMoved(event);
        return true;
    case Press::Step::chord:
        return true;
    case Press::Step::releasedInside:
        pressEnded(PressEnd::releasedInside);
        return true;
    case Press::Step::releasedOutside:
        pressEnded(PressEnd::releasedOutside);
        return true;
    case Press::Step::lost:
        pressEnded(PressEnd::lost);
        return !life.alive();
    }
    return false;
}

template <class Base>
bool Pressable<Base>::begin(Event const& event) {
    LifeGuard const life = this->guard();
    unsigned int const number = press_.number();
    if (pressBegan(event) || !life.alive()) return true;
    if (press_.number() == number) press_.end();
    return false;
}

template <class Base>
void Pressable<Base>::pressMoved(Event const&) {}

template <class Base>
void Pressable<Base>::dropPress() {
    if (press_.end()) pressEnded(PressEnd::lost);
}

template <class Base>
void Pressable<Base>::setActive(bool active, eRedrawFlag redraw) {
    DispatchScope const scope;
    FirstException thrown;
    LifeGuard const life = this->guard();
    if (!active) thrown.run([&] { dropPress(); });
    if (life.alive()) thrown.run([&] { Base::setActive(active, redraw); });
    thrown.rethrow();
}

template <class Base>
void Pressable<Base>::setVisible(bool visible) {
    DispatchScope const scope;
    FirstException thrown;
    LifeGuard const life = this->guard();
    if (!visible) thrown.run([&] { dropPress(); });
    if (life.alive()) thrown.run([&] { Base::setVisible(visible); });
    thrown.rethrow();
}

template <class Base>
void Pressable<Base>::handlePressCancelled(Event const& press) {
    FirstException thrown;
    LifeGuard const life = this->guard();
    if (press_.end()) thrown.run([&] { pressEnded(PressEnd::cancelled); });
    if (life.alive()) thrown.run([&] { Base::handlePressCancelled(press); });
    thrown.rethrow();
}

template <class Base>
void Pressable<Base>::handleCaptureLost() {
    FirstException thrown;
    LifeGuard const life = this->guard();
    thrown.run([&] { dropPress(); });
    if (life.alive()) thrown.run([&] { Base::handleCaptureLost(); });
    thrown.rethrow();
}

template <class Base>
void Pressable<Base>::handleMouseContainment(bool inside) {
    if (this->isActive()) this->makeDirty();
    Base::handleMouseContainment(inside);
}

extern template class Pressable<Glob>;
extern template class Pressable<rect>;
extern template class Pressable<StandardPanel>;

} // namespace wainscot
