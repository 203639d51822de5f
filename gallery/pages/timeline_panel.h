#pragma once

#include "gallery/page.h"
#include "gallery/pages/timeline_view.h"

#include "buttons/button.h"
#include "containers/scroll_bar.h"
#include "foundation/label.h"
#include "foundation/layout/box_layout.h"
#include "foundation/layout/grid_layout.h"
#include "foundation/standard_panel.h"

namespace wainscot::gallery {

/// A timeline with what belongs to it: two bars that scroll and zoom it, buttons, a read-out of the playhead,
/// and a line that says how it is worked. The view is the truth: bars show what it shows, and are read only
/// when the user has moved a thumb.
class TimelinePanel : public StandardPanel {
public:
    /// `log` hears what the user does in it.
    TimelinePanel(XY<int> size, LogLine log);

    TimelineView& view() { return *view_; }
    /// Called after the playhead has moved.
    void setPlayheadMoved(std::function<void()> moved) { playheadMoved_ = std::move(moved); }

    int handleMessageEvent(LightweightString<char> name, Glob* sender) override;
    /// What the drawing leaves to its owner: the wheel over it.
    int handleMouseEvent(Event const& event) override;
    bool react(Event const& event) override;

protected:
    void say(LightweightString<wchar_t> const& line) const { log_(line); }
    /// One more button in the row.
    Button* addTool(wchar_t const* label, LightweightString<char> const& message, wchar_t const* tip);

private:
    static constexpr LightweightString<char> closerMsg{"closer"};
    static constexpr LightweightString<char> widerMsg{"wider"};
    static constexpr LightweightString<char> fitMsg{"fit"};

    ScrollBar* addBar(GridLayout& grid, Orientation orientation, char const* name);
    void readThumb(bool isTimes);
    void scrollTimes(int steps);
    void scrollTracks(int steps);
    void zoom(Event const& event);
    void showState();
    void changed(LightweightString<char> const& why);

    LogLine log_;
    BoxLayout* tools_;
    Label* time_;
    TimelineView* view_;
    ScrollBar* times_;
    ScrollBar* tracks_;
    std::function<void()> playheadMoved_;
};

} // namespace wainscot::gallery
