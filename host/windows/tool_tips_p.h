#pragma once

#include "host/events/event_system.h"
#include "host/events/one_shot_timer.h"
#include "host/windows/floating_note_p.h"

namespace wainscot {

/// Shows the tip of the object under the pointer when the pointer rests on it.
class WAINSCOT_API ToolTips {
public:
    /// How long the pointer has to rest; and how long while tips are being read, one after the other.
    static constexpr double restMs = 600.0;
    static constexpr double readingRestMs = 80.0;
    /// How long tips count as being read after a tip has gone.
    static constexpr double readingMs = 600.0;

    explicit ToolTips(EventSystem& events);
    ~ToolTips();
    ToolTips(ToolTips const&) = delete;
    ToolTips& operator=(ToolTips const&) = delete;

    /// The pointer is over `under`, at its last known place; null when no object is to be asked.
    void pointerIsOver(Glob* under);
    /// A press, a key or the wheel: the tip that is shown or about to be shown goes.
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
    /// The tip was dismissed, or could not be shown; the next one comes only over another subject.
    bool dismissed_ = false;
};

} // namespace wainscot
