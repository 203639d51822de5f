#pragma once

#include "foundation/tab_orderable.h"
#include "host/messages/handler_ref.h"
#include "host/messages/notifier.h"

namespace wainscot {

class Event;
class Glob;

/// Makes a tab stop of a widget that is worked with keys but is no `TabOrderable` itself (table,
/// tree, tab strip): a member of whoever owns the widget. As the current stop it gives the widget the
/// keyboard focus, so that keys go there; it becomes the current stop when the widget, or something in it,
/// has got the focus otherwise. The widget is not owned; with its death the stop leaves its
/// managers.
class WAINSCOT_API GlobTabStop : public TabOrderable {
public:
    explicit GlobTabStop(Glob& widget);
    ~GlobTabStop() override;

    /// Null once it has died.
    Glob* widget() const;

    /// Whether the widget is active and shown, and no stop of a manager itself.
    bool isTabStopActive() override;
    void handleTabStopFocusReceipt(eDirection direction) override;
    /// Hands the keyboard focus to the root where the widget, or something in it, still has it.
    void handleTabStopFocusLoss() override;

    /// Passes a key that went elsewhere on to the widget while this is the current stop: a panel that keeps
    /// the keyboard focus itself, or gets it back when a pop-up closes, calls it from its own key handling.
    /// Whether the widget consumed it; false when it has the focus, and so has seen the key already.
    bool passKey(Event const& event);

private:
    /// The holder of the keyboard focus when that is the widget or lies in it; else null.
    Glob* focusHolderInside() const;

    HandlerRef<Glob> widget_;
    NotifierSubscription deletion_;
    NotifierSubscription focus_;
    bool passing_ = false;
};

} // namespace wainscot
