#pragma once

#include "host/drawing/uif_std.h"
#include "host/objects/glob.h"

namespace wainscot::gallery {

/// The room between the things on a page about input.
inline int pageMargin() {
    return UifStd::getIndentWidth() * 2;
}

/// A recessed box with lines of text in it, by which a page shows what it was told.
class ReadOut : public Glob {
public:
    ReadOut(XY<int> size, LightweightString<wchar_t> heading);

    void setText(LightweightString<wchar_t> text);
    LightweightString<wchar_t> const& text() const { return text_; }

    void draw() override;
    void describe(GlobDescription& description) const override;

private:
    LightweightString<wchar_t> heading_;
    LightweightString<wchar_t> text_;
};

} // namespace wainscot::gallery
