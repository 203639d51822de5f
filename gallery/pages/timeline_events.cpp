#include "gallery/pages/timeline_view.h"

#include "host/base/convert.h"
#include "host/drawing/font.h"
#include "host/drawing/uif_std.h"
#include "host/objects/tooltip_details.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace wainscot::gallery {

namespace {

/// What share of the times in sight the playhead goes with one key.
constexpr double playheadStep = 0.02;
constexpr double zoomPerKey = 1.25;

} // namespace

// The pointer

bool TimelineView::react(Event const& event) {
    if (reactToPress(event)) return true;
    auto const wanted =
        isActive() && isKeyPressEvent(event) ? actionFor(keyTable, event.keyCode()) : std::nullopt;
    if (wanted) act(*wanted);
    return wanted || Focusable::react(event);
}

bool TimelineView::pressBegan(Event const& event) {
    XY<int> const place = eventXYToGlobXY(event, *this);
    IntBox const lanes = clipsArea();
    if (!isActive() || place.x < lanes.x1) return false;
    LifeGuard const life = guard();
    claimKbdFocus();
    if (!life.alive()) return true;
    isScrubbing_ = place.y >= lanes.y2;
    before_ = playhead_;
    if (isScrubbing_)
        pressMoved(event);
    else
        select(clipAt(place));
    return true;
}

void TimelineView::pressMoved(Event const& event) {
    if (!isScrubbing_) return;
    setPlayhead(timeAt(eventXYToGlobXY(event, *this).x));
}

void TimelineView::pressEnded(PressEnd how) {
    bool const goesBack = std::exchange(isScrubbing_, false) && how == PressEnd::cancelled;
    if (goesBack) setPlayhead(before_);
}

std::optional<TimelineView::ClipPlace> TimelineView::clipAt(XY<int> place) const {
    IntBox const lanes = clipsArea();
    if (!lanes.contains(place)) return std::nullopt;
    int const track =
        static_cast<int>(tracks_.from + tracks_.length * (lanes.y2 - 1 - place.y) / lanes.height());
    if (track >= model_.numTracks()) return std::nullopt;
    TimelineModel::Track const& found = model_.tracks()[static_cast<std::size_t>(track)];
    double const time = timeAt(place.x);
    std::size_t const clip = found.firstEndingAfter(time);
    if (clip == found.clips.size() || found.clips[clip].start > time) return std::nullopt;
    return ClipPlace{track, clip};
}

IntBox TimelineView::boxOf(ClipPlace const& place) const {
    TimelineModel::Clip const& clip =
        model_.tracks()[static_cast<std::size_t>(place.track)].clips[place.clip];
    return {xOf(clip.start), topOf(place.track + 1), xOf(clip.end()), topOf(place.track)};
}

/// Names that were cut, and those of clips too narrow for one.
bool TimelineView::getTooltipDetails(XY<int> const& place, TooltipDetails& details) const {
    auto const found = clipAt(place);
    if (!found) return Focusable::getTooltipDetails(place, details);
    IntBox const box = boxOf(*found);
    XY<int> const corner = canvasArea().bottomLeft();
    TimelineModel::Clip const& clip =
        model_.tracks()[static_cast<std::size_t>(found->track)].clips[found->clip];
    Qv::Ptr<iFont> const font = Glib::loadFont(UifStd::getFont());
    if (font->textWidth(clip.name) <= nameBox(box.translated(corner)).width()) return false;
    details.text = UIString(clip.name);
    details.area = box;
    return true;
}

// The playhead and the selection

void TimelineView::tell(char const* what) {
    describeChanged(DescriptionChange::value);
    if (changed_) changed_(what);
}

bool TimelineView::movePlayhead(double time) {
    double const wanted = std::clamp(time, 0.0, TimelineModel::duration);
    if (wanted == playhead_) return false;
    playhead_ = wanted;
    makeDirty();
    return true;
}

void TimelineView::setPlayhead(double time) {
    if (movePlayhead(time)) tell("playhead");
}

void TimelineView::follow(double time) {
    bool const wasInSight = playhead_ >= times_.from && playhead_ <= times_.from + times_.length;
    if (!movePlayhead(time)) return;
    bool const leaves = wasInSight && playhead_ > times_.from + times_.length;
    LifeGuard const life = guard();
    if (leaves) setTimes({playhead_, times_.length});
    if (life.alive()) tell(leaves ? "shown" : "");
}

void TimelineView::showWaves(bool shown) {
    if (shown == hasWaves_) return;
    hasWaves_ = shown;
    makeDirty();
}

void TimelineView::select(std::optional<ClipPlace> place) {
    if (place == selection_) return;
    selection_ = place;
    makeDirty();
    tell("selected");
}

TimelineModel::Clip const* TimelineView::selectedClip() const {
    return selection_ ? &model_.tracks()[static_cast<std::size_t>(selection_->track)].clips[selection_->clip]
                      : nullptr;
}

/// The next begin or end of a clip on the track of the selection, or on the first track.
double TimelineView::cutBeside(bool isAfter) const {
    TimelineModel::Track const& track =
        model_.tracks()[static_cast<std::size_t>(selection_ ? selection_->track : 0)];
    double found = isAfter ? TimelineModel::duration : 0;
    std::size_t const near = track.firstEndingAfter(playhead_);
    std::size_t const first = near > 1 ? near - 2 : 0;
    for (std::size_t i = first; i < std::min(near + 2, track.clips.size()); ++i)
        for (double const cut : {track.clips[i].start, track.clips[i].end()}) {
            if (isAfter && cut > playhead_) found = std::min(found, cut);
            if (!isAfter && cut < playhead_) found = std::max(found, cut);
        }
    return found;
}

/// What lies under the playhead on the next track that has something there.
void TimelineView::selectBeside(int tracks) {
    int track = selection_ ? selection_->track + tracks : 0;
    for (; track >= 0 && track < model_.numTracks(); track += tracks) {
        TimelineModel::Track const& found = model_.tracks()[static_cast<std::size_t>(track)];
        std::size_t const clip = found.firstEndingAfter(playhead_);
        if (clip == found.clips.size() || found.clips[clip].start > playhead_) continue;
        LifeGuard const life = guard();
        double const last = track + 1 - tracks_.length;
        setTracks({std::clamp(tracks_.from, last, std::max<double>(track, last)), tracks_.length});
        if (life.alive()) select(ClipPlace{track, clip});
        return;
    }
}

/// Brings the playhead into sight where a key has led it out.
void TimelineView::showPlayhead() {
    if (playhead_ < times_.from || playhead_ > times_.from + times_.length)
        setTimes({playhead_ - times_.length / 2, times_.length});
}

void TimelineView::act(Act act) {
    LifeGuard const life = guard();
    double const step = times_.length * playheadStep;
    switch (act) {
    case Act::back:
    case Act::on:
        setPlayhead(playhead_ + (act == Act::on ? step : -step));
        break;
    case Act::cutBefore:
    case Act::cutAfter:
        setPlayhead(cutBeside(act == Act::cutAfter));
        break;
    case Act::begin:
    case Act::end:
        setPlayhead(act == Act::end ? TimelineModel::duration : 0);
        break;
    case Act::trackAbove:
    case Act::trackBelow:
        return selectBeside(act == Act::trackBelow ? 1 : -1);
    case Act::closer:
    case Act::wider:
        zoomTimes(act == Act::wider ? zoomPerKey : 1 / zoomPerKey);
        if (life.alive()) tell("zoom");
        return;
    case Act::fit:
        fit();
        if (life.alive()) tell("zoom");
        return;
    }
    if (!life.alive()) return;
    TimelineView::Span const before = times_;
    showPlayhead();
    if (life.alive() && times_ != before) tell("shown");
}

} // namespace wainscot::gallery
