#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

namespace wainscot {

/// The columns of a layout, or its rows: what each needs, and how they share the room that there is. Sums are
/// kept in 64 bits, so that nothing that was asked for can wrap round.
class Tracks {
public:
    static constexpr int unlimited = std::numeric_limits<int>::max();

    struct Need {
        int natural = 0;
        int minimum = 0;
        int maximum = unlimited;
    };
    /// The place of a track, from the beginning of the first one.
    struct Place {
        int start = 0;
        int size = 0;
        int end() const { return start + size; }
    };

    /// Begins anew, with so many tracks without any need; those stay unused, and have neither room nor gap.
    void reset(std::size_t count, int gap);
    std::size_t size() const { return tracks_.size(); }
    /// It gets a share of room that is left over.
    void stretchAtLeast(std::size_t track, int stretch);
    /// All of them get the shares of others, which are as many.
    void takeStretch(Tracks const& others);
    /// Something lies in the tracks from `first` on.
    void need(std::size_t first, std::size_t count, Need const& need);
    /// What one needs, all need, so that all have the same size; before `finish`.
    void makeEqual();
    /// To be called when all needs are known.
    void finish();

    int natural() const { return naturalSum_; }
    int minimum() const { return minimumSum_; }
    /// Shares out the room. Where it is less than the natural size, all give way by what they have above
    /// their minimum; where it is more, the stretched ones grow up to their maximum.
    std::vector<Place> shared(int room) const;

private:
    struct Track {
        Need need;
        int stretch = 0;
        bool used = false;
        /// The largest maximum of what lies in it; -1 = nothing has said one.
        int allowed = -1;
    };
    struct Spanning {
        std::size_t first;
        std::size_t count;
        Need need;
    };

    void useSpanned();
    void applySpanning();
    std::vector<std::int64_t> shrunk(std::int64_t room) const;
    std::vector<std::int64_t> grown(std::int64_t room) const;
    std::int64_t gaps() const;

    std::vector<Track> tracks_;
    std::vector<Spanning> spanning_;
    int gap_ = 0;
    int naturalSum_ = 0;
    int minimumSum_ = 0;
};

} // namespace wainscot
