#pragma once

#include "host/events/event.h"
#include "host/messages/observer_list.h"

#include <functional>

namespace wainscot {

/// Listeners that hear of all pointer events, whoever gets them. They cannot consume events.
using MouseListeners = ObserverList<std::function<void(Event const&)>>;

namespace Glib {

/// Keeps a listener for as long as it lives; it may outlive the host.
class WAINSCOT_API MouseListener {
public:
    MouseListener() = default;
    MouseListener(std::uint64_t host, MouseListeners::Id id) : host_(host), id_(id) {}
    MouseListener(MouseListener&& other) noexcept;
    MouseListener& operator=(MouseListener&& other) noexcept;
    ~MouseListener() { end(); }
    /// Ends the listening now.
    void end();

private:
    /// The number of the host (`EventSystem::number`).
    std::uint64_t host_ = 0;
    MouseListeners::Id id_ = 0;
};

/// `listener` is called with every mouse event before it is dispatched. Needs a live host.
[[nodiscard]] WAINSCOT_API MouseListener addMouseListener(std::function<void(Event const&)> listener);

} // namespace Glib
} // namespace wainscot
