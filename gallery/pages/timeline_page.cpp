#include "containers/scroll_bar.h"
#include "foundation/standard_panel.h"
#include "gallery/page.h"
#include "gallery/pages/timeline_view.h"
#include "host/base/convert.h"
#include "host/drawing/uif_std.h"
#include "host/events/event.h"

#include <algorithm>
#include <cmath>

namespace wainscot::gallery {

namespace {

/// How much of what is in sight an arrow button or a notch of the wheel moves the times.
constexpr double timesPerStep = 0.1;
constexpr double tracksPerStep = 1;
/// How much more, or less, is in sight after one step of zooming.
constexpr double zoomPerStep = 1.25;

/// A timeline in a size of its own, scrolled and zoomed by two bars. The view is the truth: bars show what it
/// shows, and are read only when the user has moved a thumb.
class TimelinePage final : public StandardPanel {
public:
    TimelinePage(XY<int> size, LogLine log) : StandardPanel(size), log_(std::move(log)) {
        view_ = addChild(std::make_unique<TimelineView>(size));
        times_ = addBar(eHorizontal, "times");
        tracks_ = addBar(eVertical, "tracks");
        layOut();
        showSpans();
    }

    void reshape() override {
        StandardPanel::reshape();
        layOut();
    }
    void handleLookChange(LookChange changes) override {
        StandardPanel::handleLookChange(changes);
        layOut();
    }

    int handleMessageEvent(LightweightString<char> name, Glob* sender) override {
        if (!ScrollBar::isScrollBarMsg(name) || (sender != times_ && sender != tracks_))
            return StandardPanel::handleMessageEvent(name, sender);
        bool const isTimes = sender == times_;
        if (name == ScrollBar::thumbMovedMsg) {
            readThumb(isTimes);
        } else if (name != ScrollBar::thumbReleasedMsg) {
            bool const back =
                name == ScrollBar::upButtonPressedMsg || name == ScrollBar::leftButtonPressedMsg;
            isTimes ? scrollTimes(back ? -1 : 1) : scrollTracks(back ? -1 : 1);
        }
        spansChanged(name);
        return 1;
    }

    /// What the drawing leaves to its owner: the wheel over it.
    int handleMouseEvent(Event const& event) override {
        bool const isSideways = mouse_side_wheel_event(event);
        if (!mouse_wheel_event(event) && !isSideways) return StandardPanel::handleMouseEvent(event);
        if (isSideways)
            scrollTimes(event.amount());
        else if (getModifier(event) & Key::ctrl)
            zoom(event);
        else if (getModifier(event) & Key::shift)
            scrollTimes(-event.amount());
        else
            scrollTracks(-event.amount());
        spansChanged("wheel");
        return 1;
    }
    bool react(Event const& event) override {
        if (!mouse_zoom_event(event)) return StandardPanel::react(event);
        zoom(event);
        spansChanged("zoom");
        return true;
    }

private:
    ScrollBar* addBar(Orientation orientation, char const* name) {
        ScrollBar::InitArgs args(orientation);
        args.resizable = true;
        auto* const bar = new ScrollBar(args);
        bar->setName(name);
        bar->setControls(view_);
        addChild(bar);
        return bar;
    }

    void layOut() {
        if (!tracks_) return;
        IntBox const area = getUserArea();
        int const thick = ScrollBar::thickness();
        XY<int> const inner{std::max(area.width() - thick, 1), std::max(area.height() - thick, 1)};
        reshapeWidgetAt(view_, {area.x1, area.y1 + thick}, inner);
        reshapeWidgetAt(times_, {area.x1, area.y1}, {inner.x, thick});
        reshapeWidgetAt(tracks_, {area.x1 + inner.x, area.y1 + thick}, {thick, inner.y});
    }

    void readThumb(bool isTimes) {
        ThumbSettings const thumb = (isTimes ? times_ : tracks_)->getWidgetValue();
        double const all = isTimes ? TimelineModel::duration : view_->model().numTracks();
        TimelineView::Span const span{thumb.position * all, thumb.size * all};
        isTimes ? view_->setTimes(span) : view_->setTracks(span);
    }
    void scrollTimes(int steps) {
        TimelineView::Span const now = view_->times();
        view_->setTimes({now.from + steps * timesPerStep * now.length, now.length});
    }
    void scrollTracks(int steps) {
        TimelineView::Span const now = view_->tracks();
        view_->setTracks({now.from + steps * tracksPerStep, now.length});
    }
    void zoom(Event const& event) {
        view_->zoomTimes(std::pow(zoomPerStep, -event.amount()), eventXYToGlobXY(event, *view_).x);
    }

    void showSpans() {
        auto const show = [](ScrollBar* bar, TimelineView::Span const& span, double all) {
            ThumbSettings thumb{span.from / all, span.length / all};
            bar->setNewWidgetValue(thumb, eRedrawYes);
        };
        show(times_, view_->times(), TimelineModel::duration);
        show(tracks_, view_->tracks(), view_->model().numTracks());
    }
    void spansChanged(LightweightString<char> const& why) {
        showSpans();
        auto const text = [](TimelineView::Span const& span) {
            return Qv::WStringFromFloat(span.from) + L" + " + Qv::WStringFromFloat(span.length);
        };
        log_(fromUTF8(why) + L"  times " + text(view_->times()) + L"  tracks " + text(view_->tracks()));
    }

    LogLine log_;
    TimelineView* view_ = nullptr;
    ScrollBar* times_ = nullptr;
    ScrollBar* tracks_ = nullptr;
};

} // namespace

std::unique_ptr<Glob> makeTimelinePage(XY<int> size, LogLine log) {
    return std::make_unique<TimelinePage>(size, std::move(log));
}

} // namespace wainscot::gallery
