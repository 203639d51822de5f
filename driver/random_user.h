#pragma once

#include "driver/driver.h"

#include <map>
#include <random>
#include <string>

namespace wainscot {

/// Uses a program at random: presses, drags, types, scrolls, waits. The same seed does the same things.
class WAINSCOT_API RandomUser {
public:
    RandomUser(Driver& driver, std::uint32_t seed);

    /// What has happened.
    struct Counts {
        std::uint64_t events = 0;
        std::uint64_t presses = 0;
        /// Presses on an object that is not a root.
        std::uint64_t hits = 0;
        /// Windows that have opened since it began.
        std::uint64_t windowsOpened = 0;
        /// How often objects of each role were pressed.
        std::map<std::string, std::uint64_t> pressedRoles;
    };

    /// Does `events` things. False when it has ended early because no window is left.
    bool run(std::uint64_t events);
    Counts const& counts() const { return counts_; }

private:
    int below(int bound);
    bool chance(int percent) { return below(100) < percent; }
    XY<int> somePlace();
    void pressOrRelease();
    void pressKey();
    void watchWindows();
    void releaseAll();

    Driver& driver_;
    std::mt19937 random_;
    Counts counts_;
    std::size_t windowsBefore_ = 0;
    unsigned held_ = 0;
};

} // namespace wainscot
