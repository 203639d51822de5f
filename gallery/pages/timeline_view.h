#pragma once

#include "gallery/pages/timeline_model.h"

#include "host/drawing/canvas_renderer.h"
#include "host/objects/glob.h"

namespace wainscot::gallery {

/// Draws the part of a timeline that is in sight: a ruler, the names of the tracks and their clips. What a
/// frame costs depends on what is to be seen, not on what there is: where clips are narrower than a pixel,
/// one stands for all that begin and end in it.
class TimelineView final : public Glob {
public:
    /// What is in sight: seconds, or tracks and parts of tracks.
    struct Span {
        double from = 0;
        double length = 1;
        friend bool operator==(Span const&, Span const&) = default;
    };

    explicit TimelineView(XY<int> size);

    TimelineModel const& model() const { return model_; }
    Span const& times() const { return times_; }
    Span const& tracks() const { return tracks_; }
    /// Brought within what there is. The shortest spans are two seconds, and one track.
    void setTimes(Span const& times);
    void setTracks(Span const& tracks);
    /// Shows `factor` times as much; the time at `x` (own coordinates) stays where it is.
    void zoomTimes(double factor, int x);

    /// Where the clips are, in its own coordinates.
    IntBox clipsArea() const;

    void draw() override;
    void describe(GlobDescription& description) const override;

private:
    static int headerWidth();
    static int rulerHeight();
    void change(Span& span, Span const& wanted);

    int xOf(double time) const;
    double timeAt(int x) const;
    int topOf(int track) const;
    /// The lane of a track, on the canvas.
    IntBox trackBox(int track) const;

    void drawTrack(CanvasRenderer& renderer, int number);
    void drawClips(CanvasRenderer& renderer, TimelineModel::Track const& track, IntBox const& lane);
    void drawClip(CanvasRenderer& renderer, TimelineModel::Clip const& clip, Colour const& colour,
                  IntBox const& box) const;
    void addWave(std::vector<IntBox>& wave, IntBox const& box) const;
    void drawHeader(CanvasRenderer& renderer, int number) const;
    void drawRuler(CanvasRenderer& renderer) const;
    void drawCorner(CanvasRenderer& renderer) const;
    Colour colourOf(TimelineModel::Kind kind) const;
    LightweightString<wchar_t> countText() const;

    TimelineModel model_;
    Span times_;
    Span tracks_;
    std::size_t numDrawn_ = 0;
};

} // namespace wainscot::gallery
