#pragma once

#include "host/base/xy.h"

#include <cstdint>
#include <functional>
#include <optional>

namespace wainscot {

/// How arrow keys step through a set of which one member is chosen.
namespace ChoiceSteps {

/// Which way an arrow key goes: x to the right, y downwards; nothing for any other key.
std::optional<XY<int>> directionOf(std::uint32_t key);

/// The next usable one of `count` members that lie in rows of `columns`, from one of them (-1 = from before
/// the first) in a direction and round the ends; -1 when none is usable. Sideways, and where all lie in one
/// row or column, every member is come by; else upwards and downwards only those of the same column.
int next(int from, XY<int> direction, int count, int columns, std::function<bool(int)> const& isUsable);

} // namespace ChoiceSteps

} // namespace wainscot
