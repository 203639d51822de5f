#include "gallery/pages/timeline_view.h"

#include "host/base/convert.h"
#include "host/drawing/shapes.h"
#include "host/drawing/uif_std.h"
#include "host/objects/description.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace wainscot::gallery {

namespace {

constexpr double shortestTimes = 2;
constexpr double fewestTracks = 1;
constexpr double timesAtStart = 120;
constexpr double tracksAtStart = 8;
/// How much of its hue a clip keeps over the ground, so that text reads on it in every theme.
constexpr double clipHue = 0.36;
/// How much of the ink of text is in the edges of clips and in wave forms.
constexpr double edgeShare = 0.3;
constexpr double waveShare = 0.35;
constexpr double tickShare = 0.6;
/// In pixels.
constexpr int narrowClip = 16;
constexpr int selectedEdge = 2;
/// Pixels from one line of a wave form to the next.
constexpr int waveStep = 3;

/// Seconds from label to label, and how many parts ticks divide them into.
struct RulerStep {
    double seconds;
    int parts;
};
constexpr std::array rulerSteps{RulerStep{0.2, 5}, RulerStep{0.5, 5}, RulerStep{1, 5},   RulerStep{2, 4},
                                RulerStep{5, 5},   RulerStep{10, 5},  RulerStep{30, 6},  RulerStep{60, 6},
                                RulerStep{120, 4}, RulerStep{300, 5}, RulerStep{600, 5}, RulerStep{900, 3},
                                RulerStep{1800, 6}};

LightweightString<wchar_t> clockText(double seconds, bool withTenths) {
    auto const tenths = std::lround(seconds * 10);
    long const whole = tenths / 10;
    wchar_t text[32];
    std::swprintf(text, std::size(text), L"%ld:%02ld:%02ld", whole / 3600, whole / 60 % 60, whole % 60);
    LightweightString<wchar_t> const clock = text;
    return withTenths ? clock + L"." + Qv::WStringFromInteger(tenths % 10) : clock;
}

/// The same height for the same place at each repaint; no sound is read for it.
unsigned noise(std::int64_t place) {
    auto bits = static_cast<std::uint64_t>(place) * 0x9E3779B97F4A7C15u;
    bits ^= bits >> 29;
    return static_cast<unsigned>(bits * 0xBF58476D1CE4E5B9u >> 40) % 1000;
}

} // namespace

TimelineView::TimelineView(XY<int> size) : Focusable(GlobCreationInfo(size)) {
    setName("timeline");
    setTimes({0, timesAtStart});
    setTracks({0, tracksAtStart});
}

LightweightString<wchar_t> TimelineView::timeText(double seconds) {
    return clockText(seconds, true);
}

/// Room for the names of the tracks and the same of the clips, for the ruler and some tracks.
SizeNeeds TimelineView::sizeNeeds() const {
    return {.natural = {4 * headerWidth(), 6 * rulerHeight()},
            .minimum = {2 * headerWidth(), 3 * rulerHeight()}};
}

// What is in sight

void TimelineView::change(Span& span, Span const& wanted) {
    if (span == wanted) return;
    span = wanted;
    makeDirty();
    tell("");
}

void TimelineView::setTimes(Span const& times) {
    double const length = std::clamp(times.length, shortestTimes, TimelineModel::duration);
    change(times_, {std::clamp(times.from, 0.0, timesExtent() - length), length});
}

void TimelineView::setTracks(Span const& tracks) {
    double const length = std::clamp<double>(tracks.length, fewestTracks, model_.numTracks());
    change(tracks_, {std::clamp(tracks.from, 0.0, tracksExtent() - length), length});
}

void TimelineView::zoomTimes(double factor, int x) {
    double const length = std::clamp(times_.length * factor, shortestTimes, TimelineModel::duration);
    double const fixed = timeAt(x);
    setTimes({fixed - (fixed - times_.from) * length / times_.length, length});
}

void TimelineView::zoomTimes(double factor) {
    bool const isInSight = playhead_ >= times_.from && playhead_ <= times_.from + times_.length;
    zoomTimes(factor, isInSight ? xOf(playhead_) : clipsArea().centre().x);
}

void TimelineView::fit() {
    setTimes({0, TimelineModel::duration});
}

// Places

int TimelineView::headerWidth() {
    return UifStd::getButtonHeight() * 5;
}

int TimelineView::rulerHeight() {
    return UifStd::getButtonHeight() * 5 / 4;
}

IntBox TimelineView::clipsArea() const {
    int const left = std::min(headerWidth(), width() - 1);
    return {left, 0, std::max(width(), left + 1), std::max(height() - rulerHeight(), 1)};
}

int TimelineView::xOf(double time) const {
    IntBox const area = clipsArea();
    return area.x1 + static_cast<int>(std::lround((time - times_.from) / times_.length * area.width()));
}

double TimelineView::timeAt(int x) const {
    IntBox const area = clipsArea();
    return times_.from + times_.length * (x - area.x1) / area.width();
}

int TimelineView::topOf(int track) const {
    IntBox const area = clipsArea();
    return area.y2 - static_cast<int>(std::lround((track - tracks_.from) / tracks_.length * area.height()));
}

IntBox TimelineView::trackBox(int track) const {
    IntBox const area = clipsArea();
    return IntBox(area.x1, topOf(track + 1), area.x2, topOf(track)).translated(canvasArea().bottomLeft());
}

// Drawing

void TimelineView::draw() {
    XY<int> const corner = canvasArea().bottomLeft();
    IntBox const lanes = clipsArea().translated(corner);
    CanvasRenderer renderer(canvas(), canvasArea());
    numDrawn_ = 0;
    int const first = static_cast<int>(tracks_.from);
    int const end = std::min(static_cast<int>(std::ceil(tracks_.from + tracks_.length)), model_.numTracks());
    renderer.setClipRect(lanes);
    renderer.renderPrimitive(Glib::RectDescription(lanes, getPalette().window(eWindowNormal)));
    for (int i = first; i < end; ++i) drawTrack(renderer, i);
    renderer.setClipRect({canvasArea().x1, lanes.y1, lanes.x1, lanes.y2});
    for (int i = first; i < end; ++i) drawHeader(renderer, i);
    renderer.setClipRect({lanes.x1, lanes.y2, lanes.x2, canvasArea().y2});
    drawRuler(renderer);
    renderer.setClipRect({lanes.x1, lanes.y1, lanes.x2, canvasArea().y2});
    drawPlayhead(renderer);
    renderer.clearClipRect();
    drawCorner(renderer);
    renderer.flush();
    drawFocusMark();
}

/// A line through all lanes, and a head on the ruler that tells it from the edge of a clip.
void TimelineView::drawPlayhead(CanvasRenderer& renderer) const {
    if (playhead_ < times_.from || playhead_ > times_.from + times_.length) return;
    IntBox const area = canvasArea();
    int const x = area.x1 + xOf(playhead_);
    int const half = UifStd::getIndentWidth();
    Colour const ink = getPalette().text(eTextEnabled);
    renderer.renderPrimitive(Glib::RectDescription({x, area.y1, x + 1, area.y2}, ink));
    int const ruler = area.y1 + clipsArea().y2;
    for (int row = 0; row <= half; ++row) {
        IntBox const line(x - row, ruler + row, x + row + 1, ruler + row + 1);
        renderer.renderPrimitive(Glib::RectDescription(line, ink));
    }
    renderer.renderPrimitive(Glib::RectDescription({x - half, ruler + half, x + half + 1, area.y2}, ink));
}

void TimelineView::drawTrack(CanvasRenderer& renderer, int number) {
    Palette const& palette = getPalette();
    IntBox const box = trackBox(number);
    Colour const ground = palette.window(number % 2 == 0 ? eWindowRecessed : eWindowAlternate);
    renderer.renderPrimitive(Glib::RectDescription(box, ground));
    renderer.renderPrimitive(
        Glib::RectDescription({box.x1, box.y1, box.x2, box.y1 + 1}, palette.separator()));
    drawClips(renderer, number, box);
}

void TimelineView::drawClips(CanvasRenderer& renderer, int number, IntBox const& lane) {
    TimelineModel::Track const& track = model_.tracks()[static_cast<std::size_t>(number)];
    int const left = canvasArea().x1;
    Colour const hue = colourOf(track.kind);
    Colour const face = Colour::mix(hue, getPalette().window(eWindowNormal), clipHue);
    std::vector<IntBox> wave;
    std::size_t next = track.firstEndingAfter(times_.from);
    while (next < track.clips.size() && track.clips[next].start < times_.from + times_.length) {
        TimelineModel::Clip const& clip = track.clips[next];
        int const from = xOf(clip.start);
        int const to = std::max(xOf(clip.end()), from + 1);
        IntBox const box(left + from, lane.y1 + 2, left + to, lane.y2 - 1);
        drawClip(renderer, clip, face, box, selection_ == ClipPlace{number, next});
        if (hasWaves_ && track.kind == TimelineModel::Kind::audio) addWave(wave, box);
        ++numDrawn_;
        next = std::max(next + 1, track.firstEndingAfter(timeAt(to)));
    }
    renderer.renderBoxes(wave, Colour::mix(getPalette().text(eTextEnabled), face, waveShare));
}

void TimelineView::drawClip(CanvasRenderer& renderer, TimelineModel::Clip const& clip, Colour const& colour,
                            IntBox const& box, bool isSelected) const {
    Palette const& palette = getPalette();
    if (box.width() < narrowClip) {
        // Edges would be more than what they are round: a pixel of ground tells clips apart.
        IntBox const inner(box.x1, box.y1, std::max(box.x2 - 1, box.x1 + 1), box.y2);
        renderer.renderPrimitive(
            Glib::RectDescription(inner, isSelected ? palette.text(eTextEnabled) : colour));
        return;
    }
    Colour const edge =
        isSelected ? palette.text(eTextEnabled) : Colour::mix(palette.text(eTextEnabled), colour, edgeShare);
    Glib::drawRoundedRect(renderer, colour, edge, box, isSelected ? selectedEdge : 1,
                          UifStd::getCornerRadius());
    IntBox const name = nameBox(box);
    Qv::Ptr<iFont> const font = Glib::loadFont(UifStd::getFont());
    if (name.width() < 2 * font->lineHeight() || box.height() < font->lineHeight()) return;
    renderer.renderPrimitive(Glib::TextDescription(
        Glib::fitTextToWidth(font, clip.name, toSize16(name.width())),
        {name.x1, name.y1 + getFontYOffset(name.height(), font)}, font, palette.text(eTextEnabled)));
}

/// What is in sight of a long clip is named, too.
IntBox TimelineView::nameBox(IntBox const& clip) const {
    int const gap = UifStd::getIndentWidth();
    IntBox const lanes = clipsArea().translated(canvasArea().bottomLeft());
    int const from = std::max(clip.x1, lanes.x1) + gap;
    int const strip = std::min(clip.height(), Glib::loadFont(UifStd::getFont())->lineHeight() + gap);
    return {from, clip.y2 - strip, std::max(std::min(clip.x2, lanes.x2) - gap, from), clip.y2};
}

/// Below the name, where there is room for both.
void TimelineView::addWave(std::vector<IntBox>& wave, IntBox const& box) const {
    int const gap = UifStd::getIndentWidth();
    int const strip = Glib::loadFont(UifStd::getFont())->lineHeight() + gap;
    int const height = box.height() - strip - gap;
    if (height < gap || box.width() < narrowClip) return;
    IntBox const lanes = clipsArea().translated(canvasArea().bottomLeft());
    double const secondsPerStep = times_.length * waveStep / lanes.width();
    int const middle = box.y1 + gap + height / 2;
    auto place = static_cast<std::int64_t>(
        std::ceil(timeAt(std::max(box.x1, lanes.x1) + gap - canvasArea().x1) / secondsPerStep));
    int const end = std::min(box.x2 - gap, lanes.x2);
    for (int x = 0; true; ++place) {
        x = canvasArea().x1 + xOf(static_cast<double>(place) * secondsPerStep);
        if (x + 2 > end) return;
        int const half = 1 + static_cast<int>(noise(place)) * (height / 2 - 1) / 1000;
        wave.emplace_back(x, middle - half, x + 2, middle + half);
    }
}

void TimelineView::drawHeader(CanvasRenderer& renderer, int number) const {
    Palette const& palette = getPalette();
    TimelineModel::Track const& track = model_.tracks()[static_cast<std::size_t>(number)];
    IntBox const lane = trackBox(number);
    IntBox const box(canvasArea().x1, lane.y1, lane.x1, lane.y2);
    int const gap = UifStd::getIndentWidth();
    renderer.renderPrimitive(Glib::RectDescription(box, palette.window(eWindowRaised)));
    renderer.renderPrimitive(
        Glib::RectDescription({box.x1, box.y1, box.x2, box.y1 + 1}, palette.separator()));
    renderer.renderPrimitive(
        Glib::RectDescription({box.x1, box.y1 + 1, box.x1 + gap, box.y2}, colourOf(track.kind)));
    renderer.renderPrimitive(
        Glib::RectDescription({box.x2 - 1, box.y1, box.x2, box.y2}, palette.separator()));
    Qv::Ptr<iFont> const font = Glib::loadFont(UifStd::getFont());
    if (box.height() < font->lineHeight()) return;
    renderer.renderPrimitive(
        Glib::TextDescription(track.name, {box.x1 + 3 * gap, box.y1 + getFontYOffset(box.height(), font)},
                              font, palette.text(eTextEnabled)));
}

void TimelineView::drawRuler(CanvasRenderer& renderer) const {
    Palette const& palette = getPalette();
    XY<int> const corner = canvasArea().bottomLeft();
    IntBox const lanes = clipsArea().translated(corner);
    IntBox const box(lanes.x1, lanes.y2, lanes.x2, canvasArea().y2);
    renderer.renderPrimitive(Glib::RectDescription(box, palette.window(eWindowRaised)));
    Qv::Ptr<iFont> const font = Glib::loadFont(UifStd::getFont());
    int const gap = UifStd::getIndentWidth();
    double const room = font->textWidth(clockText(0, true)) + 4.0 * gap;
    double const perPixel = times_.length / box.width();
    auto const fits = [&](RulerStep const& step) { return step.seconds / perPixel >= room; };
    auto const found = std::ranges::find_if(rulerSteps, fits);
    RulerStep const step = found == rulerSteps.end() ? rulerSteps.back() : *found;
    double const tick = step.seconds / step.parts;
    std::vector<IntBox> ticks;
    // From the label before, which may reach into sight.
    auto number = static_cast<long>(times_.from / step.seconds) * step.parts;
    for (; static_cast<double>(number) * tick <= times_.from + times_.length; ++number) {
        double const time = static_cast<double>(number) * tick;
        int const x = corner.x + xOf(time);
        bool const isLabelled = number % step.parts == 0;
        ticks.emplace_back(x, box.y1, x + 1, box.y1 + (isLabelled ? box.height() * 2 / 3 : 2 * gap));
        if (!isLabelled) continue;
        renderer.renderPrimitive(Glib::TextDescription(clockText(time, step.seconds < 1),
                                                       {x + gap, box.y2 - gap - font->ascent()}, font,
                                                       palette.text(eTextSecondary)));
    }
    renderer.renderBoxes(ticks, palette.mark(eMarkNormal), tickShare);
    renderer.renderPrimitive(
        Glib::RectDescription({box.x1, box.y1, box.x2, box.y1 + 1}, palette.separator()));
}

/// How much work the clips in sight were.
void TimelineView::drawCorner(CanvasRenderer& renderer) const {
    Palette const& palette = getPalette();
    IntBox const lanes = clipsArea().translated(canvasArea().bottomLeft());
    IntBox const box(canvasArea().x1, lanes.y2, lanes.x1, canvasArea().y2);
    renderer.renderPrimitive(Glib::RectDescription(box, palette.window(eWindowRaised)));
    Glib::drawFrame(renderer, palette.separator(), box, 1);
    Qv::Ptr<iFont> const font = Glib::loadFont(UifStd::getFont());
    int const gap = UifStd::getIndentWidth();
    renderer.renderPrimitive(Glib::TextDescription(
        Glib::fitTextToWidth(font, countText(), toSize16(box.width() - 2 * gap)),
        {box.x1 + gap, box.y1 + getFontYOffset(box.height(), font)}, font, palette.text(eTextSecondary)));
}

Colour TimelineView::colourOf(TimelineModel::Kind kind) const {
    Palette const& palette = getPalette();
    if (kind == TimelineModel::Kind::title) return palette.mark(eMarkWarning);
    return kind == TimelineModel::Kind::video ? palette.mark(eMarkAccent) : palette.doIt();
}

LightweightString<wchar_t> TimelineView::countText() const {
    return Qv::WStringFromInteger(numDrawn_) + L" of " + Qv::WStringFromInteger(model_.numClips()) +
           L" clips";
}

void TimelineView::describe(GlobDescription& description) const {
    Focusable::describe(description);
    description.role = Role::drawing;
    description.name = L"Timeline";
    description.value = countText();
}

} // namespace wainscot::gallery
