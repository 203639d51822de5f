#include "host/drawing/font_face_p.h"

#include <ft2build.h>
#include FT_FREETYPE_H

#include <hb-ot.h>
#include <map>
#include <tuple>

namespace wainscot {
namespace {

FT_Library outlineLibrary() {
    static FT_Library const library = [] {
        FT_Library made = nullptr;
        return FT_Init_FreeType(&made) == 0 ? made : nullptr;
    }();
    return library;
}

using FaceKey = std::tuple<std::string, int, bool, bool>;

std::map<FaceKey, FontFace*>& openFaces() {
    static auto& faces = *new std::map<FaceKey, FontFace*>;
    return faces;
}

struct Opened {
    hb_face_t* shaped = nullptr;
    FT_Face outlines = nullptr;
};

/// Both libraries read the same mapped file.
Opened openFile(std::string const& path, int index) {
    hb_blob_t* blob = hb_blob_create_from_file_or_fail(path.c_str());
    if (!blob) return {};
    unsigned int length = 0;
    auto const* bytes = reinterpret_cast<FT_Byte const*>(hb_blob_get_data(blob, &length));
    Opened result;
    if (outlineLibrary() && FT_New_Memory_Face(outlineLibrary(), bytes, static_cast<FT_Long>(length), index,
                                               &result.outlines) == 0)
        result.shaped = hb_face_create(blob, static_cast<unsigned>(index));
    // The outlines read the blob for ever, so it is kept.
    if (!result.shaped) hb_blob_destroy(blob);
    return result;
}

} // namespace

FontFace* FontFace::open(std::string const& path, int index, Imitation imitation) {
    auto const [place, isNew] =
        openFaces().try_emplace(FaceKey(path, index, imitation.bold, imitation.italic), nullptr);
    if (!isNew) return place->second;
    Opened const opened = openFile(path, index);
    if (!opened.shaped) return nullptr;
    auto* face = new FontFace;
    face->hbFace_ = opened.shaped;
    face->ftFace_ = opened.outlines;
    face->imitation_ = imitation;
    face->probe_ = hb_font_create(opened.shaped);
    place->second = face;
    return face;
}

bool FontFace::hasGlyph(std::uint32_t character) const {
    hb_codepoint_t glyph = 0;
    return hb_font_get_nominal_glyph(probe_, character, &glyph) != 0;
}

bool FontFace::isFixedPitch() const {
    return FT_IS_FIXED_WIDTH(ftFace_);
}

double FontFace::ascent() const {
    return static_cast<double>(ftFace_->ascender) / std::max<int>(1, ftFace_->units_per_EM);
}

double FontFace::descent() const {
    return -static_cast<double>(ftFace_->descender) / std::max<int>(1, ftFace_->units_per_EM);
}

} // namespace wainscot
