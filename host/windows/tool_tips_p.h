#pragma once

#include "host/events/event_system.h"
#include "host/events/one_shot_timer.h"
#include "host/windows/floating_note_p.h"

namespace wainscot {

/// Shows what the object under the pointer says of itself when the pointer rests on it.
class WAINSCOT_API ToolTips {
public:
    /// How long the pointer has to rest; and while tips are being read, one after the other.
    static constexpr double restMs = 600.0;
    static constexpr double readingRestMs = 80.0;
    /// After a tip has gone they count as being read for so long.
    static constexpr double readingMs = 600.0;

    explicit ToolTips(EventSystem& events);
    ~ToolTips();
    ToolTips(ToolTips const&) = delete;
    ToolTips& operator=(ToolTips const&) = delete;

    /// The pointer is over `under` (null: over nothing that is asked), at its last known place.
    void pointerIsOver(Glob* under);
    /// A press, a key or the wheel: whatever is shown or awaited goes.
    void dismiss();
    bool isShown() const { return note_.isShown(); }

private:
    struct Subject {
        HandlerRef<Glob> glob;
        NoteText text;
        /// Root coordinates.
        IntBox area;

        friend bool operator==(Subject const&, Subject const&) = default;
    };

    static bool find(Glob* under, XY<int> place, Subject& subject);
    void show();

    EventSystem& events_;
    FloatingNote note_;
    Subject subject_;
    /// Runs while the pointer's rest is awaited.
    OneShotTimer rest_;
    /// Where it rests.
    XY<int> restPlace_;
    double lastShown_ = -readingMs;
    /// It was dismissed over this subject, or could not be shown, and comes again only over another one.
    bool dismissed_ = false;
};

} // namespace wainscot
