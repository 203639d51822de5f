#pragma once

namespace wainscot {

/// Whether a change is to be seen at once, or the caller will see to that.
enum eRedrawFlag : bool { eRedrawNo = false, eRedrawYes = true };

} // namespace wainscot
