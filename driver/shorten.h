#pragma once

#include "driver/user_act.h"

#include <functional>

namespace wainscot {

/// The shortest list that still fails, found by leaving out ever smaller pieces: no single act can be left
/// out of what is given back. `fails` does the acts from the same beginning each time; it is asked about n
/// log n times for n acts at best. The list itself when it does not fail.
WAINSCOT_API std::vector<UserAct> shortened(std::vector<UserAct> acts,
                                            std::function<bool(std::span<UserAct const>)> const& fails);

} // namespace wainscot
