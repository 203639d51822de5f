#include "gallery/pages/timeline_model.h"

#include "host/base/convert.h"

#include <algorithm>
#include <array>
#include <random>

namespace wainscot::gallery {

namespace {

constexpr int numTitleTracks = 2;
constexpr int numVideoTracks = 4;
constexpr int numAudioTracks = 18;

using Names = std::array<wchar_t const*, 6>;
constexpr Names titleNames{L"Opening title", L"Lower third", L"Chapter", L"Caption", L"Credits", L"Map"};
constexpr Names videoNames{L"Interview", L"Harbour", L"Street at night", L"Workshop", L"Aerial", L"Close-up"};
constexpr Names audioNames{L"Dialogue", L"Room tone", L"Traffic", L"Strings", L"Narration", L"Footsteps"};

Names const& namesOf(TimelineModel::Kind kind) {
    return kind == TimelineModel::Kind::title   ? titleNames
           : kind == TimelineModel::Kind::video ? videoNames
                                                : audioNames;
}

/// From two seconds to half a minute, with a gap before every third one; titles stand alone.
std::vector<TimelineModel::Clip> makeClips(TimelineModel::Kind kind, unsigned seed) {
    // The same numbers everywhere, which the distributions of the library do not promise.
    std::minstd_rand random(seed);
    auto const tenths = [&](unsigned below) { return static_cast<double>(random() % below) / 10; };
    Names const& names = namesOf(kind);
    std::vector<TimelineModel::Clip> clips;
    double time = tenths(100);
    while (true) {
        if (kind == TimelineModel::Kind::title || random() % 3 == 0) time += 1 + tenths(60);
        double const length = 2 + tenths(random() % 4 == 0 ? 280 : 120);
        if (time + length > TimelineModel::duration) return clips;
        LightweightString<wchar_t> name = names[random() % names.size()];
        clips.push_back({time, length, name + L" " + Qv::WStringFromInteger(clips.size() + 1)});
        time += length;
    }
}

} // namespace

std::size_t TimelineModel::Track::firstEndingAfter(double time) const {
    auto const found = std::ranges::upper_bound(clips, time, {}, &Clip::end);
    return static_cast<std::size_t>(found - clips.begin());
}

TimelineModel::TimelineModel() {
    addTracks(Kind::title, L"Titles ", numTitleTracks);
    addTracks(Kind::video, L"Video ", numVideoTracks);
    addTracks(Kind::audio, L"Audio ", numAudioTracks);
}

void TimelineModel::addTracks(Kind kind, wchar_t const* name, int count) {
    for (int i = 1; i <= count; ++i) {
        auto const seed = static_cast<unsigned>(tracks_.size() + 1);
        tracks_.push_back(
            {kind, LightweightString<wchar_t>(name) + Qv::WStringFromInteger(i), makeClips(kind, seed)});
    }
}

std::size_t TimelineModel::numClips() const {
    std::size_t count = 0;
    for (Track const& track : tracks_) count += track.clips.size();
    return count;
}

} // namespace wainscot::gallery
