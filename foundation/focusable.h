#pragma once

#include "foundation/focus_stop.h"
#include "foundation/press.h"
#include "foundation/tab_orderable.h"
#include "host/objects/description.h"

namespace wainscot {

/// A widget that is worked with keys: one tab stop, the keyboard focus, and the mark that shows it. Stop and
/// focus go together. It can take the focus while it is active and shown in a window. `Base` is the class of
/// widgets that it extends.
template <class Base>
class WAINSCOT_API Focusable : public Base, public TabOrderable {
public:
    using Base::Base;

    // A panel as base has these names for its own tab order; here they are those of the widget as a stop.
    using TabOrderable::isTabStopFocus;
    using TabOrderable::setTabStopFocus;

    bool isTabStopActive() override;
    void handleTabStopFocusReceipt(eDirection direction) override;
    void handleTabStopFocusLoss() override;
    void handleKbdFocus() override;
    void handleDetached() override;
    void describe(GlobDescription& description) const override;

protected:
    /// Draws the mark of the focus round it while it is to be shown.
    void drawFocusMark();
};

template <class Base>
bool Focusable<Base>::isTabStopActive() {
    return FocusStop::canTake(*this);
}

template <class Base>
void Focusable<Base>::handleTabStopFocusReceipt(eDirection) {
    this->claimKbdFocus();
}

template <class Base>
void Focusable<Base>::handleTabStopFocusLoss() {
    FocusStop::handleLoss(*this, *this);
}

template <class Base>
void Focusable<Base>::handleKbdFocus() {
    FocusStop::handleKbdFocus(*this, *this);
}

template <class Base>
void Focusable<Base>::handleDetached() {
    leaveAllManagers();
    Base::handleDetached();
}

template <class Base>
void Focusable<Base>::describe(GlobDescription& description) const {
    Base::describe(description);
    if (this->isActive()) description.states |= GlobDescription::focusable;
}

template <class Base>
void Focusable<Base>::drawFocusMark() {
    FocusStop::drawMark(*this);
}

extern template class Focusable<Pressable<Glob>>;
extern template class Focusable<Pressable<rect>>;
extern template class Focusable<Pressable<StandardPanel>>;

} // namespace wainscot
