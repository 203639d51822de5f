#pragma once

namespace wainscot {

/// Which way something lies.
enum Orientation : int { eHorizontal = 0, eVertical = 1 };

} // namespace wainscot
