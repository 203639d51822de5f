#pragma once

#include "foundation/tab_orderable.h"
#include "host/messages/handler_ref.h"
#include "host/messages/notifier.h"

namespace wainscot {

class Event;
class Glob;

/// Makes a tab stop of a widget that is worked with keys but is not a `TabOrderable` (table, tree, tab
/// strip). It is a member of the widget's owner. As the current stop it gives the widget the keyboard focus.
/// When the widget, or a descendant, gets the focus otherwise, it becomes the current stop. The widget is not
/// owned; when it dies, the stop leaves its managers.
class WAINSCOT_API GlobTabStop : public TabOrderable {
public:
    explicit GlobTabStop(Glob& widget);
    ~GlobTabStop() override;

    /// Null once it has died.
    Glob* widget() const;

    /// Whether the widget is active and shown, and is not a stop of a manager itself.
    bool isTabStopActive() override;
    void handleTabStopFocusReceipt(eDirection direction) override;
    /// Hands the keyboard focus to the root if the widget, or a descendant, still has it.
    void handleTabStopFocusLoss() override;

    /// Passes a key on to the widget while this is the current stop. A panel that keeps the keyboard focus to
    /// itself calls it from its own key handling. True when the widget consumed the key; false when the
    /// widget has the focus, and so has seen the key already.
    bool passKey(Event const& event);

private:
    /// The holder of the keyboard focus if it is the widget or a descendant; else null.
    Glob* focusHolderInside() const;

    HandlerRef<Glob> widget_;
    NotifierSubscription deletion_;
    NotifierSubscription focus_;
    bool passing_ = false;
};

} // namespace wainscot
