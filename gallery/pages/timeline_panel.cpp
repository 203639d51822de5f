#include "gallery/pages/timeline_panel.h"

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

} // namespace

TimelinePanel::TimelinePanel(XY<int> size, LogLine log) : StandardPanel(size), log_(std::move(log)) {
    setTabGoesOn(true);
    auto layout = BoxLayout::makeColumn();
    layout->setMargins(UifStd::getIndentWidth());
    tools_ = layout->add(BoxLayout::makeRow());
    addTool(L"Closer", closerMsg, L"Shows less of it, larger");
    addTool(L"Wider", widerMsg, L"Shows more of it, smaller");
    addTool(L"Fit", fitMsg, L"Shows all of it");
    XY<int> const mayBeCut{UifStd::getButtonHeight(), -1};
    time_ = tools_->add(std::make_unique<Label>(L""), {.stretch = 1, .minimum = mayBeCut});
    time_->setAlignment(eAlignRight);

    GridLayout* const grid = layout->add(std::make_unique<GridLayout>(), {.stretch = 1});
    grid->setGaps(0, 0);
    view_ = grid->add(std::make_unique<TimelineView>(XY<int>(1, 1)), {0, 0});
    grid->setColumnStretch(0, 1);
    grid->setRowStretch(0, 1);
    tracks_ = addBar(*grid, eVertical, "tracks");
    times_ = addBar(*grid, eHorizontal, "times");
    layout->add(std::make_unique<Label>(L"Wheel: tracks.  Shift+wheel: time.  Ctrl+wheel: zoom.  Arrows, "
                                        L"Ctrl+arrows, Home, End: playhead and selection.  + - F: zoom.",
                                        Label::Part::secondary),
                {.minimum = mayBeCut});
    setLayout(std::move(layout));

    view_->setChanged([this](char const* what) {
        LifeGuard const life = guard();
        changed(what);
        if (life.alive() && playheadMoved_) playheadMoved_();
    });
    addTabStop(*view_);
    showState();
}

Button* TimelinePanel::addTool(wchar_t const* label, LightweightString<char> const& message,
                               wchar_t const* tip) {
    Button* const button = tools_->add(std::make_unique<Button>(Button::InitArgs(UIString(label), message)));
    button->setContextString(UIString(tip));
    addTabStop(*button);
    return button;
}

ScrollBar* TimelinePanel::addBar(GridLayout& grid, Orientation orientation, char const* name) {
    ScrollBar::InitArgs args(orientation);
    args.resizable = true;
    auto bar = std::make_unique<ScrollBar>(args);
    bar->setName(name);
    bar->setControls(view_);
    return grid.add(std::move(bar), orientation == eVertical ? GridCell{0, 1} : GridCell{1, 0});
}

// What the user does

int TimelinePanel::handleMessageEvent(LightweightString<char> name, Glob* sender) {
    if (name == closerMsg) return view_->act(TimelineView::Act::closer), 1;
    if (name == widerMsg) return view_->act(TimelineView::Act::wider), 1;
    if (name == fitMsg) return view_->act(TimelineView::Act::fit), 1;
    if (!ScrollBar::isScrollBarMsg(name) || (sender != times_ && sender != tracks_))
        return StandardPanel::handleMessageEvent(name, sender);
    bool const isTimes = sender == times_;
    if (name == ScrollBar::thumbMovedMsg) {
        readThumb(isTimes);
    } else if (name != ScrollBar::thumbReleasedMsg) {
        bool const back = name == ScrollBar::upButtonPressedMsg || name == ScrollBar::leftButtonPressedMsg;
        isTimes ? scrollTimes(back ? -1 : 1) : scrollTracks(back ? -1 : 1);
    }
    changed(name);
    return 1;
}

int TimelinePanel::handleMouseEvent(Event const& event) {
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
    changed("wheel");
    return 1;
}

bool TimelinePanel::react(Event const& event) {
    if (!mouse_zoom_event(event)) return StandardPanel::react(event);
    zoom(event);
    changed("zoom");
    return true;
}

void TimelinePanel::readThumb(bool isTimes) {
    ThumbSettings const thumb = (isTimes ? times_ : tracks_)->getWidgetValue();
    double const all = isTimes ? TimelineView::timesExtent() : view_->tracksExtent();
    TimelineView::Span const span{thumb.position * all, thumb.size * all};
    isTimes ? view_->setTimes(span) : view_->setTracks(span);
}

void TimelinePanel::scrollTimes(int steps) {
    TimelineView::Span const now = view_->times();
    view_->setTimes({now.from + steps * timesPerStep * now.length, now.length});
}

void TimelinePanel::scrollTracks(int steps) {
    TimelineView::Span const now = view_->tracks();
    view_->setTracks({now.from + steps * tracksPerStep, now.length});
}

void TimelinePanel::zoom(Event const& event) {
    view_->zoomTimes(std::pow(zoomPerStep, -event.amount()), eventXYToGlobXY(event, *view_).x);
}

// What is shown

void TimelinePanel::showState() {
    auto const show = [](ScrollBar* bar, TimelineView::Span const& span, double all) {
        ThumbSettings thumb{span.from / all, span.length / all};
        bar->setNewWidgetValue(thumb, eRedrawYes);
    };
    show(times_, view_->times(), TimelineView::timesExtent());
    show(tracks_, view_->tracks(), view_->tracksExtent());
    LightweightString<wchar_t> text;
    if (TimelineModel::Clip const* const clip = view_->selectedClip()) text = clip->name + L"   ";
    time_->setString(UIString(text + TimelineView::timeText(view_->playhead())));
}

void TimelinePanel::changed(LightweightString<char> const& why) {
    showState();
    if (why.isEmpty()) return;
    TimelineModel::Clip const* const clip = view_->selectedClip();
    if (why == "playhead") return log_(L"playhead  " + TimelineView::timeText(view_->playhead()));
    if (why == "selected")
        return log_(L"selected  " + (clip ? clip->name : LightweightString<wchar_t>(L"nothing")));
    auto const text = [](TimelineView::Span const& span) {
        return Qv::WStringFromFloat(span.from) + L" + " + Qv::WStringFromFloat(span.length);
    };
    log_(fromUTF8(why) + L"  times " + text(view_->times()) + L"  tracks " + text(view_->tracks()));
}

} // namespace wainscot::gallery
