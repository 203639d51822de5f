#pragma once

#include "driver/driver.h"

#include <map>
#include <random>
#include <string>

namespace wainscot {

/// Uses a program without any plan: presses, drags, types, scrolls, waits. The same seed does the same.
class WAINSCOT_API RandomUser {
public:
    RandomUser(Driver& driver, std::uint32_t seed);

    /// What came of it.
    struct Counts {
        std::uint64_t events = 0;
        std::uint64_t presses = 0;
        /// Presses over an object that is no root.
        std::uint64_t hits = 0;
        /// Windows seen that were not there when it began.
        std::uint64_t windowsOpened = 0;
        /// The classes of the objects that were pressed, by role.
        std::map<std::string, std::uint64_t> pressedRoles;
    };

    /// Does `events` things, or fewer when no window is left. False then.
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
