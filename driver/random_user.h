#pragma once

#include "driver/user_act.h"

#include <functional>
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

    /// Is told of each act before it is done; a file of these acts brings the same fault again.
    void setBefore(std::function<void(UserAct const&)> before) { before_ = std::move(before); }
    /// Is asked after each act whether to go on; the end of the run when it answers false.
    void setAfter(std::function<bool()> after) { after_ = std::move(after); }

    /// Does `events` things, and then releases what it holds. False when it has ended early because no window
    /// is left, or because it was not to go on.
    bool run(std::uint64_t events);
    Counts const& counts() const { return counts_; }

private:
    int below(int bound);
    bool chance(int percent) { return below(100) < percent; }
    XY<int> somePlace();
    UserAct choose();
    UserAct pressOrRelease();
    UserAct someKey();
    void countPress();
    bool perform(UserAct const& act);
    void watchWindows();
    void releaseAll();

    Driver& driver_;
    std::mt19937 random_;
    Counts counts_;
    std::function<void(UserAct const&)> before_;
    std::function<bool()> after_;
    std::size_t windowsBefore_ = 0;
    unsigned held_ = 0;
};

} // namespace wainscot
