#include "host/base/recent_map.h"
#include "host/drawing/font_p.h"
#include "host/drawing/uif_std.h"

#include <algorithm>
#include <string_view>

namespace wainscot {
namespace {

constexpr unsigned short largestSize = 1024;

/// More than a program shows at a time. The limit matters when the size of a text is animated.
constexpr std::size_t mostFonts = 256;

struct DescHash {
    std::size_t operator()(Glib::FontDesc const& desc) const {
        std::size_t const numbers = desc.size * 64U + desc.style;
        return std::hash<std::string_view>()(desc.name.view()) ^ (numbers * 0x9E3779B97F4A7C15ULL);
    }
};

Qv::Ptr<iFont> load(Glib::FontDesc const& desc) {
    Glib::FontDesc usable = desc;
    usable.size = std::clamp<unsigned short>(desc.size, 1, largestSize);
    return Qv::Ptr<iFont>(new Font(usable, FontFinder::find(desc.name, desc.style)));
}

} // namespace

namespace Glib {

Qv::Ptr<iFont> loadFont(FontDesc const& desc) {
    static auto& loaded = *new RecentMap<FontDesc, Qv::Ptr<iFont>, DescHash>(mostFonts);
    static auto& last = *new Qv::Ptr<iFont>;
    if (last && last->desc() == desc) return last;
    Qv::Ptr<iFont> const* const known = loaded.find(desc);
    return last = known ? *known : loaded.add(desc, load(desc));
}

FontDesc getDefaultFont(unsigned int style) {
    return {getDefaultFontName(style), getDefaultFontSize(), style};
}

LightweightString<char> getDefaultFontName(unsigned int) {
    static constexpr LightweightString<char> name("DejaVu Sans");
    return name;
}

unsigned short getDefaultFontSize() {
    return UifStd::getFont().size;
}

} // namespace Glib

LightweightString<char> getQvUtilityFontName() {
    return Glib::getDefaultFontName();
}

unsigned short getQvUtilityFontSize(float scale) {
    double const size = UifStd::metrics().utilityFontSize * static_cast<double>(scale);
    return static_cast<unsigned short>(
        std::clamp(UifStd::calcScaledValue(static_cast<float>(size)), 1, 1024));
}

int getFontYOffset(int height, Qv::Ptr<iFont> const& font) {
    if (!font) return 0;
    // Rounded downwards, also when the line is higher than the box.
    return (Coordinate::difference(height, font->lineHeight()) >> 1) + font->descent();
}

} // namespace wainscot
