#include "host/drawing/descriptions.h"

namespace wainscot::Glib {

TextDescription::TextDescription(LightweightString<wchar_t> string, XY<int> const& at,
                                 FontDesc const& fontDesc, Colour const& ink, TextAlignment align,
                                 double alpha)
    : TextDescription(std::move(string), at, loadFont(fontDesc), ink, align, alpha) {}

TextDescription::TextDescription(LightweightString<wchar_t> string, XY<int> const& at,
                                 Qv::Ptr<iFont> loadedFont, Colour const& ink, TextAlignment align,
                                 double alpha)
    : text(std::move(string)), position(at), font(std::move(loadedFont)), colour(ink), alignment(align),
      opacity(alpha) {}

IntBox TextDescription::calcBounds(XY<int> const& at) const {
    if (text.empty() || !font) return {};
    return boundsOfWidth(at, font->textWidth(text));
}

IntBox TextDescription::boundsOfWidth(XY<int> const& at, int width) const {
    int const before = alignment == eAlignRight ? width : alignment == eAlignCentre ? width / 2 : 0;
    XY<int> const corner = at - XY<int>(before, font->descent());
    return IntBox::sized(corner, {width, font->lineHeight()});
}

} // namespace wainscot::Glib
