#pragma once

#include "host/base/box.h"
#include "host/base/lightweight_string.h"
#include "host/base/ptr.h"

namespace wainscot {

class Colour;

enum TextAlignment { eAlignLeft = 0, eAlignRight = 1, eAlignCentre = 2 };

namespace Glib {

enum eFontStyle : unsigned int { eFontRegular = 0, eFontBold = 1, eFontItalic = 2 };

/// What font is wanted: face name (UTF-8; empty stands for the default face), size in logical pixels and
/// style bits.
struct WAINSCOT_API FontDesc {
    LightweightString<char> name;
    unsigned short size = 12;
    unsigned int style = eFontRegular;

    constexpr FontDesc() = default;
    FontDesc(LightweightString<char> faceName, unsigned short sizeInPixels, unsigned int styleBits = 0)
        : name(std::move(faceName)), size(sizeInPixels), style(styleBits) {}

    friend bool operator==(FontDesc const&, FontDesc const&) = default;
};

} // namespace Glib

/// A loaded font: one face, size and style, with the fallback faces behind it. Measures are logical pixels
/// and do not depend on the scale of the screen. A drawn text covers exactly its measured width.
class WAINSCOT_API iFont : public Qv::InternalRefCount {
public:
    enum eCharSeekMethod {
        eSeekPrevChar = 0,
        eSeekNextChar = 1,
        eSeekNextWord = 2,
        eSeekPrevWord = 3,
        eSeekStart = 4,
        eSeekEnd = 5,
        eSeekAbsolute = 6,
    };
    /// Stands for the current position where an index is optional.
    static constexpr int currentIndex = -1;

    virtual Glib::FontDesc const& desc() const = 0;
    unsigned short size() const { return desc().size; }
    /// From the baseline up to the top of a line, at least 1.
    virtual int ascent() const = 0;
    /// From the baseline down to the bottom of a line, 0 or more.
    virtual int descent() const = 0;
    int lineHeight() const { return ascent() + descent(); }
    /// True for a fixed-pitch face.
    virtual bool isFixedPitch() const = 0;

    /// The width of a text, rounded.
    virtual int textWidth(LightweightString<wchar_t> const& text) const = 0;
    /// The x of the gap before character `index` (clamped to the text), from the left end of it all. Equals
    /// the place at which the text is drawn, so that carets and selections meet the characters.
    virtual int prefixWidth(LightweightString<wchar_t> const& text, int index) const = 0;
    /// The gap nearest to `x`: 0 to the length of the text, never inside a grapheme cluster.
    virtual int characterAtX(LightweightString<wchar_t> const& text, int x) const = 0;
    /// The position reached from `current`; positions step by grapheme clusters and words (blanks are
    /// skipped, then what is not blank) and stay in 0..length. `index` is for `eSeekAbsolute`, where a
    /// negative one keeps the current position.
    virtual int seek(LightweightString<wchar_t> const& text, int current, eCharSeekMethod method,
                     int index = currentIndex) const = 0;

private:
    /// The only implementation, so that a renderer may cast to it.
    friend class Font;
    iFont() = default;
};

namespace Glib {

/// The shared font for a description; never null. A missing face is replaced by the default face (for fixed
/// pitch by the default fixed-pitch face). The size is clamped to 1 to 1,024.
WAINSCOT_API Qv::Ptr<iFont> loadFont(FontDesc const& desc);

/// The standard font with these style bits.
WAINSCOT_API FontDesc getDefaultFont(unsigned int style = eFontRegular);
WAINSCOT_API LightweightString<char> getDefaultFontName(unsigned int style = eFontRegular);
WAINSCOT_API unsigned short getDefaultFontSize();

/// How `fitTextToWidth` and `clipStringToFit` mark what was left out.
inline constexpr wchar_t ellipsis = L'\u2026';

/// The text when it is no wider than `width`, else its longest beginning with an ellipsis; empty when not
/// even that fits. Control characters are dropped. `wasCut`, unless null, gets whether anything is missing.
WAINSCOT_API LightweightString<wchar_t> fitTextToWidth(Qv::Ptr<iFont> const& font,
                                                       LightweightString<wchar_t> const& text,
                                                       unsigned short width, bool* wasCut = nullptr);

} // namespace Glib

/// The face of the symbol font.
WAINSCOT_API LightweightString<char> getQvUtilityFontName();
/// The size of the symbol font: `scale` times the standard size.
WAINSCOT_API unsigned short getQvUtilityFontSize(float scale = 1.0F);
/// The baseline, above the bottom of a box that is `height` high, on which a line of text stands centred.
WAINSCOT_API int getFontYOffset(int height, Qv::Ptr<iFont> const& font);
/// The longest beginning (or, with `keepEnd`, the longest end) of a text that fits, marked by an ellipsis
/// when something was left out.
WAINSCOT_API LightweightString<wchar_t> clipStringToFit(LightweightString<wchar_t> const& text,
                                                        unsigned short width, bool keepEnd,
                                                        Qv::Ptr<iFont> const& font);

} // namespace wainscot
