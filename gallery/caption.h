#pragma once

#include "host/objects/glob.h"

namespace wainscot::gallery {

/// A line of text that takes no input.
class Caption : public Glob {
public:
    enum class Kind { heading, note };

    Caption(LightweightString<wchar_t> text, Kind kind);
    void draw() override;
    void describe(GlobDescription& description) const override;

private:
    LightweightString<wchar_t> text_;
    Kind kind_;
};

} // namespace wainscot::gallery
