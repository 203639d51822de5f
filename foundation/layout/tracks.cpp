#include "foundation/layout/tracks_p.h"

#include <algorithm>

namespace wainscot {

namespace {

/// Sums over ranges of numbers that change, each in logarithmic time.
class RunningSums {
public:
    explicit RunningSums(std::size_t count) : nodes_(count + 1) {}

    void add(std::size_t index, std::int64_t amount) {
        for (++index; index < nodes_.size(); index += index & (~index + 1)) nodes_[index] += amount;
    }
    std::int64_t sum(std::size_t first, std::size_t end) const { return upTo(end) - upTo(first); }

private:
    std::int64_t upTo(std::size_t end) const {
        std::int64_t sum = 0;
        for (; end > 0; end -= end & (~end + 1)) sum += nodes_[end];
        return sum;
    }

    std::vector<std::int64_t> nodes_;
};

/// No place lies further away than this, so that two can be added.
constexpr std::int64_t farthest = 1 << 28;
constexpr int maxStretch = 65535;

int limited(std::int64_t size) {
    return static_cast<int>(std::clamp<std::int64_t>(size, 0, farthest));
}

/// Hands out an amount by shares, in order, so that what is rounded off one is given to a later one.
class Portions {
public:
    Portions(std::int64_t amount, std::int64_t shares) : amount_(amount), shares_(shares) {}

    std::int64_t take(std::int64_t share) {
        if (shares_ <= 0) return 0;
        std::int64_t const portion = amount_ * share / shares_;
        amount_ -= portion;
        shares_ -= share;
        return portion;
    }
    /// More or less than its share was taken.
    void takeExactly(std::int64_t share, std::int64_t portion) {
        amount_ -= portion;
        shares_ -= share;
    }
    std::int64_t portion(std::int64_t share) const { return shares_ > 0 ? amount_ * share / shares_ : 0; }

private:
    std::int64_t amount_;
    std::int64_t shares_;
};

} // namespace

void Tracks::reset(std::size_t count, int gap) {
    tracks_.assign(count, {});
    spanning_.clear();
    gap_ = std::max(gap, 0);
}

void Tracks::stretchAtLeast(std::size_t track, int stretch) {
    tracks_[track].stretch = std::max(tracks_[track].stretch, std::min(stretch, maxStretch));
}

void Tracks::takeStretch(Tracks const& others) {
    for (std::size_t i = 0; i < tracks_.size(); ++i) tracks_[i].stretch = others.tracks_[i].stretch;
}

void Tracks::need(std::size_t first, std::size_t count, Need const& need) {
    if (count > 1) {
        spanning_.push_back({first, count, need});
        return;
    }
    Track& track = tracks_[first];
    track.used = true;
    track.need.natural = std::max(track.need.natural, need.natural);
    track.need.minimum = std::max(track.need.minimum, need.minimum);
    track.allowed = std::max(track.allowed, need.maximum);
}

/// What lies over several of them asks each for the same part.
void Tracks::makeEqual() {
    useSpanned();
    Need most;
    auto const raise = [](int& size, int wanted) { size = std::max(size, wanted); };
    for (Track const& track : tracks_) {
        raise(most.natural, track.need.natural);
        raise(most.minimum, track.need.minimum);
    }
    for (Spanning const& item : spanning_) {
        auto const count = static_cast<std::int64_t>(item.count);
        auto const part = [&](int size) { return limited((size - (count - 1) * gap_ + count - 1) / count); };
        raise(most.natural, part(item.need.natural));
        raise(most.minimum, part(item.need.minimum));
    }
    for (Track& track : tracks_) {
        if (!track.used) continue;
        track.need.natural = most.natural;
        track.need.minimum = most.minimum;
        track.allowed = -1;
    }
    spanning_.clear();
}

void Tracks::finish() {
    for (Track& track : tracks_) {
        if (track.allowed >= 0) track.need.maximum = track.allowed;
        track.need.natural = std::max(track.need.natural, track.need.minimum);
        track.need.maximum = std::max(track.need.natural, track.need.maximum);
    }
    useSpanned();
    applySpanning();
    std::int64_t natural = gaps();
    std::int64_t minimum = natural;
    for (Track const& track : tracks_) {
        natural += track.need.natural;
        minimum += track.need.minimum;
    }
    naturalSum_ = limited(natural);
    minimumSum_ = limited(minimum);
}

void Tracks::useSpanned() {
    std::vector<int> begun(tracks_.size() + 1);
    for (Spanning const& item : spanning_) {
        ++begun[item.first];
        --begun[item.first + item.count];
    }
    int covering = 0;
    for (std::size_t i = 0; i < tracks_.size(); ++i) {
        covering += begun[i];
        tracks_[i].used = tracks_[i].used || covering > 0;
    }
}

/// What needs more than its tracks have makes the last of them that is stretched wider, or the last one.
void Tracks::applySpanning() {
    if (spanning_.empty()) return;
    std::stable_sort(spanning_.begin(), spanning_.end(),
                     [](Spanning const& a, Spanning const& b) { return a.count < b.count; });
    std::size_t const none = tracks_.size();
    std::vector<std::size_t> lastStretched(tracks_.size());
    RunningSums natural(tracks_.size());
    RunningSums minimum(tracks_.size());
    for (std::size_t i = 0; i < tracks_.size(); ++i) {
        lastStretched[i] = tracks_[i].stretch > 0 ? i : i > 0 ? lastStretched[i - 1] : none;
        std::int64_t const gap = tracks_[i].used && i > 0 ? gap_ : 0;
        natural.add(i, tracks_[i].need.natural + gap);
        minimum.add(i, tracks_[i].need.minimum + gap);
    }
    for (Spanning const& item : spanning_) {
        std::size_t const end = item.first + item.count;
        std::size_t const stretched = lastStretched[end - 1];
        std::size_t const widened = stretched != none && stretched >= item.first ? stretched : end - 1;
        Need& need = tracks_[widened].need;
        std::int64_t const firstGap = item.first > 0 ? gap_ : 0;
        auto const widen = [&](RunningSums& sums, int& size, int wanted) {
            std::int64_t const missing = wanted - (sums.sum(item.first, end) - firstGap);
            if (missing <= 0) return;
            size += static_cast<int>(missing);
            sums.add(widened, missing);
        };
        widen(minimum, need.minimum, item.need.minimum);
        widen(natural, need.natural, std::max(item.need.natural, item.need.minimum));
        if (need.natural < need.minimum) {
            natural.add(widened, need.minimum - need.natural);
            need.natural = need.minimum;
        }
        need.maximum = std::max(need.maximum, need.natural);
    }
}

std::int64_t Tracks::gaps() const {
    auto const used = std::count_if(tracks_.begin(), tracks_.end(), [](Track const& t) { return t.used; });
    return used > 0 ? (used - 1) * std::int64_t(gap_) : 0;
}

std::vector<Tracks::Place> Tracks::shared(int room) const {
    std::int64_t const forTracks = std::int64_t(room) - gaps();
    std::vector<std::int64_t> const sizes = room < naturalSum_ ? shrunk(forTracks) : grown(forTracks);
    std::vector<Place> places(tracks_.size());
    std::int64_t at = 0;
    for (std::size_t i = 0; i < places.size(); ++i) {
        places[i] = {limited(at), limited(sizes[i])};
        at += tracks_[i].used ? sizes[i] + gap_ : 0;
    }
    return places;
}

std::vector<std::int64_t> Tracks::shrunk(std::int64_t room) const {
    std::int64_t natural = 0;
    std::int64_t slack = 0;
    for (Track const& track : tracks_) {
        natural += track.need.natural;
        slack += track.need.natural - track.need.minimum;
    }
    Portions missing(std::min(natural - room, slack), slack);
    std::vector<std::int64_t> sizes;
    sizes.reserve(tracks_.size());
    for (Track const& track : tracks_)
        sizes.push_back(track.need.natural - missing.take(track.need.natural - track.need.minimum));
    return sizes;
}

/// Who reaches its maximum first is served first; what it leaves goes to the others.
std::vector<std::int64_t> Tracks::grown(std::int64_t room) const {
    std::vector<std::int64_t> sizes;
    sizes.reserve(tracks_.size());
    std::vector<std::size_t> growing;
    std::int64_t shares = 0;
    for (std::size_t i = 0; i < tracks_.size(); ++i) {
        sizes.push_back(tracks_[i].need.natural);
        room -= sizes[i];
        if (!tracks_[i].used || tracks_[i].stretch <= 0) continue;
        growing.push_back(i);
        shares += tracks_[i].stretch;
    }
    auto const reach = [&](std::size_t i) {
        return (double(tracks_[i].need.maximum) - tracks_[i].need.natural) / tracks_[i].stretch;
    };
    std::stable_sort(growing.begin(), growing.end(),
                     [&](std::size_t a, std::size_t b) { return reach(a) < reach(b); });
    Portions extra(std::max<std::int64_t>(room, 0), shares);
    for (std::size_t i : growing) {
        std::int64_t const most = std::int64_t(tracks_[i].need.maximum) - sizes[i];
        std::int64_t const portion = std::min(extra.portion(tracks_[i].stretch), most);
        extra.takeExactly(tracks_[i].stretch, portion);
        sizes[i] += portion;
    }
    return sizes;
}

} // namespace wainscot
