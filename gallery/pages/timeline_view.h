#pragma once

#include "gallery/pages/timeline_model.h"

#include "foundation/focusable.h"
#include "foundation/key_table.h"
#include "host/drawing/canvas_renderer.h"

#include <functional>
#include <optional>

namespace wainscot::gallery {

/// Draws the part of a timeline that is in sight: a ruler, the names of the tracks and their clips. What a
/// frame costs depends on what is to be seen, not on what there is: where clips are narrower than a pixel,
/// one stands for all that begin and end in it.
///
/// A press on a clip selects it, one on the ruler sets the playhead, which follows the pointer until the
/// release. The clip of a name that was cut tells it as a tip.
class TimelineView final : public Focusable<Pressable<Glob>> {
public:
    enum class Act { back, on, cutBefore, cutAfter, begin, end, trackAbove, trackBelow, closer, wider, fit };
    static constexpr KeyRow<Act> keyTable[] = {{Key::left, Act::back, "the playhead goes back"},
                                               {Key::right, Act::on, "the playhead goes on"},
                                               {Key::ctrl | Key::left, Act::cutBefore, "to the cut before"},
                                               {Key::ctrl | Key::right, Act::cutAfter, "to the next cut"},
                                               {Key::home, Act::begin, "to the beginning"},
                                               {Key::end, Act::end, "to the end"},
                                               {Key::up, Act::trackAbove, "selects on the track above"},
                                               {Key::down, Act::trackBelow, "selects on the track below"},
                                               {'+', Act::closer, "closer"},
                                               {'-', Act::wider, "more of it"},
                                               {'f', Act::fit, "all of it"}};
    /// A clip, by the numbers of its track and of itself on it.
    struct ClipPlace {
        int track = 0;
        std::size_t clip = 0;
        friend bool operator==(ClipPlace const&, ClipPlace const&) = default;
    };

    /// What is in sight: seconds, or tracks and parts of tracks.
    struct Span {
        double from = 0;
        double length = 1;
        friend bool operator==(Span const&, Span const&) = default;
    };

    explicit TimelineView(XY<int> size);

    /// Called when the playhead has moved, something was selected, or something else is in sight, with a word
    /// for what the user did; empty for what goes on by itself. It may destroy this.
    void setChanged(std::function<void(char const*)> changed) { changed_ = std::move(changed); }

    TimelineModel const& model() const { return model_; }
    Span const& times() const { return times_; }
    Span const& tracks() const { return tracks_; }
    /// How far spans reach: a little farther than the clips, so that there is always something to scroll.
    static double timesExtent() { return TimelineModel::duration * extentFactor; }
    double tracksExtent() const { return model_.numTracks() * extentFactor; }
    /// Brought within what there is. The shortest spans are two seconds, and one track.
    void setTimes(Span const& times);
    void setTracks(Span const& tracks);
    /// Shows `factor` times as much; the time at `x` (own coordinates) stays where it is.
    void zoomTimes(double factor, int x);
    /// The same, with the playhead in the place of `x` where it is in sight, else the middle.
    void zoomTimes(double factor);
    /// All clips from the beginning to the end.
    void fit();

    /// In seconds, from 0 to the duration.
    double playhead() const { return playhead_; }
    void setPlayhead(double time);
    /// The same, and goes on to the next part of the times when it leaves those in sight.
    void follow(double time);
    /// Whether sound is drawn as wave forms.
    void showWaves(bool shown);
    std::optional<ClipPlace> const& selection() const { return selection_; }
    void select(std::optional<ClipPlace> place);
    /// The selected clip; null when none is.
    TimelineModel::Clip const* selectedClip() const;
    void act(Act act);

    /// Hours, minutes, seconds and tenths.
    static LightweightString<wchar_t> timeText(double seconds);

    /// Where the clips are, in its own coordinates.
    IntBox clipsArea() const;

    SizeNeeds sizeNeeds() const override;
    bool react(Event const& event) override;
    void draw() override;
    bool getTooltipDetails(XY<int> const& place, TooltipDetails& details) const override;
    void describe(GlobDescription& description) const override;

protected:
    bool pressBegan(Event const& event) override;
    void pressMoved(Event const& event) override;
    void pressEnded(PressEnd how) override;

private:
    static constexpr double extentFactor = 1.05;

    static int headerWidth();
    static int rulerHeight();
    void change(Span& span, Span const& wanted);

    int xOf(double time) const;
    double timeAt(int x) const;
    int topOf(int track) const;
    /// The clip at a place of its own; none between clips.
    std::optional<ClipPlace> clipAt(XY<int> place) const;
    IntBox boxOf(ClipPlace const& place) const;
    /// Where the name of a clip stands, and how much room it has.
    IntBox nameBox(IntBox const& clip) const;
    double cutBeside(bool isAfter) const;
    void selectBeside(int tracks);
    void showPlayhead();
    /// False when it is there already.
    bool movePlayhead(double time);
    void tell(char const* what);
    /// The lane of a track, on the canvas.
    IntBox trackBox(int track) const;

    void drawTrack(CanvasRenderer& renderer, int number);
    void drawClips(CanvasRenderer& renderer, int number, IntBox const& lane);
    void drawClip(CanvasRenderer& renderer, TimelineModel::Clip const& clip, Colour const& colour,
                  IntBox const& box, bool isSelected) const;
    void addWave(std::vector<IntBox>& wave, IntBox const& box) const;
    void drawHeader(CanvasRenderer& renderer, int number) const;
    void drawRuler(CanvasRenderer& renderer) const;
    void drawPlayhead(CanvasRenderer& renderer) const;
    void drawCorner(CanvasRenderer& renderer) const;
    Colour colourOf(TimelineModel::Kind kind) const;
    LightweightString<wchar_t> countText() const;

    TimelineModel model_;
    Span times_;
    Span tracks_;
    std::size_t numDrawn_ = 0;
    double playhead_ = 0;
    /// Where it was when the press began.
    double before_ = 0;
    std::optional<ClipPlace> selection_;
    bool isScrubbing_ = false;
    bool hasWaves_ = true;
    std::function<void(char const*)> changed_;
};

} // namespace wainscot::gallery
