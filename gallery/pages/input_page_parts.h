#pragma once

#include "host/drawing/uif_std.h"
#include "host/objects/glob.h"

namespace wainscot::gallery {

/// A recessed box in which a page shows what it was told, as lines of text below a heading.
class ReadOut : public Glob {
public:
    explicit ReadOut(LightweightString<wchar_t> heading);

    void setText(LightweightString<wchar_t> text);
    LightweightString<wchar_t> const& text() const { return text_; }

    SizeNeeds sizeNeeds() const override;
    void draw() override;
    void describe(GlobDescription& description) const override;

private:
    LightweightString<wchar_t> heading_;
    LightweightString<wchar_t> text_;
};

} // namespace wainscot::gallery
