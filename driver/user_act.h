#pragma once

#include "driver/driver.h"

#include <span>
#include <vector>

namespace wainscot {

/// One thing that a user does, with all that is needed to do it again: what `RandomUser` does, and what a
/// file of `writeActs` holds, one act a line.
///
///     move X Y            press BUTTON CLICKS     release BUTTON      wheel NOTCHES
///     key CODE            repeat CODE             hold MODIFIERS      wait MS
///
/// Places are root coordinates; buttons are `left`, `middle`, `right`; codes and modifiers are numbers of
/// `Key`. `repeat` is a key that repeats once before its release. The wheel turns at the pointer.
struct WAINSCOT_API UserAct {
    enum class Kind : std::uint8_t { move, press, release, wheel, key, repeat, hold, wait };

    Kind kind = Kind::wait;
    XY<int> place{};
    InputEvent::Button button = InputEvent::Button::left;
    /// Clicks, notches, the code of a key, modifiers, or milliseconds.
    int amount = 0;

    void perform(Driver& driver) const;
    LightweightString<char> line() const;
    /// Nothing when the line is no act.
    static std::optional<UserAct> fromLine(LightweightString<char> const& line);

    friend bool operator==(UserAct const&, UserAct const&) = default;
};

/// One act a line.
WAINSCOT_API LightweightString<char> writeActs(std::span<UserAct const> acts);
/// Blank lines and lines that begin with "#" are skipped. False when another line is no act; the acts before
/// it are in the list.
WAINSCOT_API bool readActs(LightweightString<char> const& text, std::vector<UserAct>& acts);

} // namespace wainscot
