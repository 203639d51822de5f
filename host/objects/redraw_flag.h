#pragma once

namespace wainscot {

/// Whether a setter has the change painted, or the caller does that.
enum eRedrawFlag : bool { eRedrawNo = false, eRedrawYes = true };

} // namespace wainscot
