#include "host/objects/description.h"

#include "host/objects/glob.h"

namespace wainscot {

namespace {

/// What a button or a checkbox says itself belongs to its name even when a label names it.
LightweightString<wchar_t> ownText(GlobDescription const& description) {
    bool const saysIt = description.role == Role::button || description.role == Role::checkbox ||
                        description.role == Role::radioButton;
    if (!saysIt || description.name.isEmpty()) return {};
    return L" " + description.name;
}

} // namespace

GlobDescription GlobDescription::of(Glob const& glob, std::uint32_t parts) {
    GlobDescription description;
    description.parts = parts;
    glob.describe(description);
    if (Glob const* const label = glob.getLabelledBy()) {
        // Only the label's own words are used, so that labels that name each other do not lead in circles.
        GlobDescription words;
        label->describe(words);
        if (!words.name.isEmpty()) description.name = words.name + ownText(description);
    }
    if (description.wants(relations) && glob.parent()) glob.parent()->describeChild(glob, description);
    return description;
}

} // namespace wainscot
