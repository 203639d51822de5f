#include "host/objects/description.h"

#include "host/objects/glob.h"

namespace wainscot {

GlobDescription GlobDescription::of(Glob const& glob, std::uint32_t parts) {
    GlobDescription description;
    description.parts = parts;
    glob.describe(description);
    if (Glob const* const label = glob.getLabelledBy()) {
        // Only the label's own words are used, so that labels that name each other do not lead in circles.
        GlobDescription words;
        label->describe(words);
        if (!words.name.isEmpty()) description.name = words.name;
    }
    if (description.wants(relations) && glob.parent()) glob.parent()->describeChild(glob, description);
    return description;
}

} // namespace wainscot
