#pragma once

#include "host/messages/notifier.h"

namespace wainscot {

class Glob;

/// Notices of the death, of the moves and of the keyboard focus of single objects of the tree. A watch ends
/// with its subscription, which may happen inside a notice.
class WAINSCOT_API GlobNotices {
public:
    using Callback = Qv::Ptr<iCallbackBase<int, NotifyMsg>>;

    static constexpr LightweightString<char> deletedMsg{"glob_deleted"};
    static constexpr LightweightString<char> movedMsg{"glob_moved"};
    static constexpr LightweightString<char> focusedMsg{"glob_focused"};

    /// Called once, before the object is detached; the payload is the `Glob*` (`unwrapData<Glob*>`).
    [[nodiscard]] static NotifierSubscription watchDeletion(Glob& glob, Callback callback);
    /// Called after its place in its parent, or its size, has changed.
    [[nodiscard]] static NotifierSubscription watchMoves(Glob& glob, Callback callback);
    /// Called after it, or something in it, has got the keyboard focus of its window.
    [[nodiscard]] static NotifierSubscription watchFocus(Glob& glob, Callback callback);

private:
    friend class KbdFocus;
    static void focused(Glob& holder);
    friend class Lifetime;
    friend class Placement;
    static void deleted(Glob& glob);
    static void moved(Glob& glob);
    static void forget(Glob const& glob);
};

} // namespace wainscot
