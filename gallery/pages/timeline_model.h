#pragma once

#include "host/base/lightweight_string.h"

#include <vector>

namespace wainscot::gallery {

/// What the timeline page shows: an hour of tracks with thousands of clips, always the same ones. Times are
/// seconds from the beginning.
class TimelineModel {
public:
    enum class Kind { title, video, audio };

    struct Clip {
        double start = 0;
        double length = 0;
        double end() const { return start + length; }
        LightweightString<wchar_t> name;
    };

    struct Track {
        Kind kind = Kind::video;
        LightweightString<wchar_t> name;
        /// One after the other, none over another.
        std::vector<Clip> clips;

        /// The index of the first clip that ends after a time; the number of clips when none does.
        std::size_t firstEndingAfter(double time) const;
    };

    static constexpr double duration = 3600;

    TimelineModel();

    std::vector<Track> const& tracks() const { return tracks_; }
    int numTracks() const { return static_cast<int>(tracks_.size()); }
    std::size_t numClips() const;

private:
    void addTracks(Kind kind, wchar_t const* name, int count);

    std::vector<Track> tracks_;
};

} // namespace wainscot::gallery
