#include "host/drawing/font_face_p.h"

#include <array>
#include <cstdlib>
#include <filesystem>
#include <fontconfig/fontconfig.h>
#include <memory>
#include <string_view>

namespace wainscot::FontFinder {
namespace {

/// A family at the place where its package puts it: the files of the four styles.
struct UsualFamily {
    std::string_view name;
    std::string_view folder;
    std::array<std::string_view, 4> files;
    int index;
    bool pairwise;
};

constexpr std::array<UsualFamily, 5> usualFamilies{{
    {"DejaVu Sans",
     "/usr/share/fonts/truetype/dejavu/",
     {"DejaVuSans.ttf", "DejaVuSans-Bold.ttf", "DejaVuSans-Oblique.ttf", "DejaVuSans-BoldOblique.ttf"},
     0,
     true},
    {"DejaVu Sans Mono",
     "/usr/share/fonts/truetype/dejavu/",
     {"DejaVuSansMono.ttf", "DejaVuSansMono-Bold.ttf", "DejaVuSansMono-Oblique.ttf",
      "DejaVuSansMono-BoldOblique.ttf"},
     0,
     true},
    {"DejaVu Serif",
     "/usr/share/fonts/truetype/dejavu/",
     {"DejaVuSerif.ttf", "DejaVuSerif-Bold.ttf", "DejaVuSerif-Italic.ttf", "DejaVuSerif-BoldItalic.ttf"},
     0,
     true},
    {"WenQuanYi Micro Hei", "/usr/share/fonts/truetype/wqy/", {"wqy-microhei.ttc", "", "", ""}, 0, false},
    {"WenQuanYi Micro Hei Mono",
     "/usr/share/fonts/truetype/wqy/",
     {"wqy-microhei.ttc", "", "", ""},
     1,
     false},
}};

constexpr std::string_view defaultFamily = "DejaVu Sans";
constexpr std::string_view defaultFixedFamily = "DejaVu Sans Mono";
constexpr unsigned int styleMask = Glib::eFontBold | Glib::eFontItalic;

bool asked = false;

FontFace* openUsual(UsualFamily const& family, unsigned int style) {
    // The wanted style first; then styles whose missing slant, weight or both are imitated.
    for (unsigned int const dropped :
         {0U, unsigned(Glib::eFontItalic), unsigned(Glib::eFontBold), styleMask}) {
        if ((style & dropped) != dropped) continue;
        std::string_view const file = family.files[style & ~dropped];
        if (file.empty()) continue;
        std::string const path = std::string(family.folder).append(file);
        std::error_code ignored;
        if (!std::filesystem::exists(path, ignored)) continue;
        FontFace::Imitation const imitation{(dropped & Glib::eFontBold) != 0,
                                            (dropped & Glib::eFontItalic) != 0};
        FontFace* face = FontFace::open(path, family.index, imitation);
        if (!face) continue;
        if (family.pairwise) face->setPairwise();
        return face;
    }
    return nullptr;
}

FontFace* findUsual(std::string_view name, unsigned int style) {
    for (UsualFamily const& family : usualFamilies)
        if (family.name == name) return openUsual(family, style);
    return nullptr;
}

struct PatternDeleter {
    void operator()(FcPattern* pattern) const { FcPatternDestroy(pattern); }
};
using PatternPtr = std::unique_ptr<FcPattern, PatternDeleter>;

FcConfig* configuration() {
    asked = true;
    static FcConfig* const loaded = FcInitLoadConfigAndFonts();
    return loaded;
}

PatternPtr makePattern(char const* name, unsigned int style) {
    PatternPtr pattern(FcPatternCreate());
    if (name && *name) FcPatternAddString(pattern.get(), FC_FAMILY, reinterpret_cast<FcChar8 const*>(name));
    FcPatternAddInteger(pattern.get(), FC_WEIGHT,
                        style & Glib::eFontBold ? FC_WEIGHT_BOLD : FC_WEIGHT_NORMAL);
    FcPatternAddInteger(pattern.get(), FC_SLANT,
                        style & Glib::eFontItalic ? FC_SLANT_ITALIC : FC_SLANT_ROMAN);
    FcPatternAddBool(pattern.get(), FC_SCALABLE, FcTrue);
    FcConfigSubstitute(configuration(), pattern.get(), FcMatchPattern);
    FcDefaultSubstitute(pattern.get());
    return pattern;
}

FontFace* openMatch(FcPattern* match, unsigned int style) {
    FcChar8* path = nullptr;
    int index = 0;
    int weight = FC_WEIGHT_NORMAL;
    int slant = FC_SLANT_ROMAN;
    if (FcPatternGetString(match, FC_FILE, 0, &path) != FcResultMatch) return nullptr;
    FcPatternGetInteger(match, FC_INDEX, 0, &index);
    FcPatternGetInteger(match, FC_WEIGHT, 0, &weight);
    FcPatternGetInteger(match, FC_SLANT, 0, &slant);
    FontFace::Imitation const imitation{(style & Glib::eFontBold) && weight < FC_WEIGHT_DEMIBOLD,
                                        (style & Glib::eFontItalic) && slant == FC_SLANT_ROMAN};
    return FontFace::open(reinterpret_cast<char const*>(path), index, imitation);
}

bool hasFamily(FcPattern* match, char const* name) {
    FcChar8* family = nullptr;
    for (int i = 0; FcPatternGetString(match, FC_FAMILY, i, &family) == FcResultMatch; ++i)
        if (FcStrCmpIgnoreCase(family, reinterpret_cast<FcChar8 const*>(name)) == 0) return true;
    return false;
}

/// The configured face of exactly that name; no substitute.
FontFace* findConfigured(char const* name, unsigned int style) {
    if (!configuration()) return nullptr;
    PatternPtr const pattern = makePattern(name, style);
    FcResult result = FcResultNoMatch;
    PatternPtr const match(FcFontMatch(configuration(), pattern.get(), &result));
    return match && hasFamily(match.get(), name) ? openMatch(match.get(), style) : nullptr;
}

/// The face that the configuration prefers, when no usual face is installed.
FontFace* findAny(unsigned int style) {
    if (!configuration()) return nullptr;
    PatternPtr const pattern = makePattern("sans-serif", style);
    FcResult result = FcResultNoMatch;
    PatternPtr const match(FcFontMatch(configuration(), pattern.get(), &result));
    return match ? openMatch(match.get(), style) : nullptr;
}

bool soundsFixedPitch(std::string_view name) {
    for (std::string_view const sign :
         {"Mono", "mono", "Courier", "Fixed", "fixed", "Code", "Consol", "Typewriter"})
        if (name.find(sign) != std::string_view::npos) return true;
    return false;
}

/// All faces, the likeliest first.
FcFontSet* sortedFaces(unsigned int style) {
    static std::array<FcFontSet*, 4> sets{};
    FcFontSet*& set = sets[style & styleMask];
    if (set || !configuration()) return set;
    PatternPtr const pattern = makePattern("sans-serif", style);
    FcResult result = FcResultNoMatch;
    set = FcFontSort(configuration(), pattern.get(), FcTrue, nullptr, &result);
    return set;
}

} // namespace

FontFace* find(LightweightString<char> const& name, unsigned int style) {
    style &= styleMask;
    std::string_view const wanted = name.empty() ? defaultFamily : name.view();
    if (FontFace* face = findUsual(wanted, style)) return face;
    if (!name.empty())
        if (FontFace* face = findConfigured(name.c_str(), style)) return face;
    if (FontFace* face = findUsual(soundsFixedPitch(wanted) ? defaultFixedFamily : defaultFamily, style))
        return face;
    return findAny(style);
}

FontFace* findFallback(std::uint32_t character, unsigned int style) {
    style &= styleMask;
    FcFontSet const* set = sortedFaces(style);
    for (int i = 0; set && i < set->nfont; ++i) {
        FcCharSet* characters = nullptr;
        if (FcPatternGetCharSet(set->fonts[i], FC_CHARSET, 0, &characters) != FcResultMatch) continue;
        if (!FcCharSetHasChar(characters, character)) continue;
        FontFace* face = openMatch(set->fonts[i], style);
        if (face && face->hasGlyph(character)) return face;
    }
    return nullptr;
}

bool hasAskedConfiguration() {
    return asked;
}

} // namespace wainscot::FontFinder
