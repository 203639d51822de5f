#pragma once

#include "host/base/export.h"

#include <functional>
#include <map>
#include <optional>

namespace wainscot {

/// The tag flags of a table.
namespace TableTagFlag {
/// Rows themselves carry the tags.
inline constexpr unsigned int useRows = 1;
/// More than one row may be tagged.
inline constexpr unsigned int allowMulti = 2;
/// A plain click replaces the tags; Ctrl adds or removes one row, Shift extends a range.
inline constexpr unsigned int windowsStyle = 4;
/// The current row is tagged on demand.
inline constexpr unsigned int currentOnDemand = 8;
/// When all tags are cleared at once, there is no current position any more.
inline constexpr unsigned int clearUnsetsCurrent = 16;
} // namespace TableTagFlag

/// What becomes of the tags of a table. Rows that are not in the map keep theirs. Made for
/// `iTableAdaptor::setTags`; each row is asked for its tag once at most.
namespace TagRules {

using Tags = std::map<unsigned int, bool>;
using GetTag = std::function<bool(unsigned int row)>;
/// The first tagged row from a row on.
using FindTagged = std::function<std::optional<unsigned int>(unsigned int row)>;

struct Click {
    unsigned int row = 0;
    bool shift = false;
    bool ctrl = false;
};

/// A click on the tag column. `flags` are those of `TableTagFlag`. Empty when there is no such row. Without
/// `findTagged` each row is asked.
WAINSCOT_API Tags tagsAfterClick(Click const& click, unsigned int flags, unsigned int numRows,
                                 GetTag const& getTag, FindTagged const& findTagged = {});

struct AllTagged {
    /// Empty without rows.
    Tags tags;
    /// Whether the current position is to be unset as well.
    bool unsetsCurrent = false;
};
/// Tags all rows, or untags all when the first one is tagged.
WAINSCOT_API AllTagged toggleAll(unsigned int flags, unsigned int numRows, GetTag const& getTag);

WAINSCOT_API Tags invertedTags(unsigned int numRows, GetTag const& getTag);

} // namespace TagRules

} // namespace wainscot
