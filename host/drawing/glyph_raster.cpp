#include "host/drawing/glyph_raster_p.h"

#include "host/drawing/symbols_p.h"

#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_SYNTHESIS_H

#include <algorithm>
#include <cmath>

namespace wainscot {
namespace {

constexpr int fractions = 64;
/// Larger glyphs get no picture: their size would overflow.
constexpr int largestSize = 4096 * fractions;
/// Far beyond the number of glyphs that a face may have.
constexpr std::uint32_t mostGlyphs = 1U << 16;
/// The rough cost of a face in the table of faces.
constexpr std::size_t faceOverhead = 64;

/// The glyph of the face, drawn into the face's slot; false when there is none.
bool drawOutline(FontFace const& face, int size, std::uint32_t glyph) {
    FT_Face outlines = face.outlines();
    if (FT_Set_Char_Size(outlines, size, size, 72, 72) != 0) return false;
    if (FT_Load_Glyph(outlines, glyph, FT_LOAD_TARGET_LIGHT | FT_LOAD_NO_BITMAP) != 0) return false;
    FT_GlyphSlot slot = outlines->glyph;
    if (face.imitation().bold) FT_GlyphSlot_Embolden(slot);
    if (face.imitation().italic) FT_GlyphSlot_Oblique(slot);
    return FT_Render_Glyph(slot, FT_RENDER_MODE_NORMAL) == 0;
}

GlyphPicture draw(GlyphRasters::DeviceFace const& face, std::uint32_t glyph) {
    if (!face.face) return Symbols::draw(glyph, static_cast<double>(face.size) / fractions);
    if (!drawOutline(*face.face, face.size, glyph)) return {};
    FT_GlyphSlot slot = face.face->outlines()->glyph;
    FT_Bitmap const& bitmap = slot->bitmap;
    return makePicture({slot->bitmap_left, slot->bitmap_top},
                       {static_cast<int>(bitmap.width), static_cast<int>(bitmap.rows)}, bitmap.buffer,
                       bitmap.pitch);
}

} // namespace

GlyphPicture makePicture(XY<int> corner, XY<int> size, std::uint8_t const* rows, std::ptrdiff_t pitch) {
    GlyphPicture picture{corner.x, corner.y, size.x, size.y, (size.x + 3) / 4 * 4, {}};
    if (!rows || size.x <= 0 || size.y <= 0) return {};
    picture.coverage.resize(static_cast<std::size_t>(picture.stride) * static_cast<std::size_t>(size.y));
    for (int row = 0; row < size.y; ++row)
        std::copy_n(rows + row * pitch, size.x,
                    picture.coverage.begin() + static_cast<std::ptrdiff_t>(row) * picture.stride);
    return picture;
}

GlyphRasters& GlyphRasters::instance() {
    static auto& shared = *new GlyphRasters;
    return shared;
}

GlyphRasters::DeviceFace& GlyphRasters::deviceFace(FontFace* face, double deviceSize) {
    int const size =
        std::clamp(static_cast<int>(std::lround(deviceSize * fractions)), fractions, largestSize);
    std::unique_ptr<DeviceFace>& known = faces_[{face, size}];
    if (known) return *known;
    known = std::make_unique<DeviceFace>(DeviceFace{face, size, {}});
    bytes_ += sizeof(DeviceFace) + faceOverhead;
    return *known;
}

GlyphPicture const& GlyphRasters::make(DeviceFace& face, std::uint32_t glyph) {
    static constexpr GlyphPicture none;
    if (glyph >= mostGlyphs) return none;
    if (glyph >= face.pictures.size()) {
        bytes_ += (glyph + 1 - face.pictures.size()) * sizeof(void*);
        face.pictures.resize(glyph + 1);
    }
    face.pictures[glyph] = std::make_unique<GlyphPicture>(draw(face, glyph));
    bytes_ += sizeof(GlyphPicture) + face.pictures[glyph]->coverage.size();
    return *face.pictures[glyph];
}

void GlyphRasters::clear() {
    faces_.clear();
    bytes_ = 0;
}

} // namespace wainscot
