#include "host/drawing/glyph_raster_p.h"

#include "host/drawing/symbols_p.h"

#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_SYNTHESIS_H

#include <algorithm>
#include <cmath>
#include <cstring>
#include <map>
#include <memory>

namespace wainscot {
namespace {

constexpr int fractions = 64;
/// A larger glyph is not worth a picture, and its size would overflow.
constexpr int largestSize = 4096 * fractions;

/// Null for a key would mean "none".
void* keyOf(std::uint32_t glyph) {
    return reinterpret_cast<void*>(static_cast<std::uintptr_t>(glyph) + 1);
}

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

struct ImageDeleter {
    void operator()(pixman_image_t* image) const { pixman_image_unref(image); }
};
using ImagePtr = std::unique_ptr<pixman_image_t, ImageDeleter>;

/// A glyph without ink gets one clear pixel, so that it is known next time.
ImagePtr copyOf(FT_Bitmap const& bitmap) {
    int const width = std::max(1, static_cast<int>(bitmap.width));
    int const rows = std::max(1, static_cast<int>(bitmap.rows));
    ImagePtr image(pixman_image_create_bits(PIXMAN_a8, width, rows, nullptr, 0));
    if (!image) return nullptr;
    auto* target = reinterpret_cast<unsigned char*>(pixman_image_get_data(image.get()));
    int const stride = pixman_image_get_stride(image.get());
    for (unsigned row = 0; row < bitmap.rows; ++row)
        std::memcpy(target + static_cast<std::ptrdiff_t>(row) * stride,
                    bitmap.buffer + static_cast<std::ptrdiff_t>(row) * bitmap.pitch, bitmap.width);
    return image;
}

} // namespace

GlyphRasters& GlyphRasters::instance() {
    static auto& shared = *new GlyphRasters;
    return shared;
}

GlyphRasters::DeviceFace& GlyphRasters::deviceFace(FontFace* face, double deviceSize) {
    static auto& faces = *new std::map<std::pair<FontFace*, int>, std::unique_ptr<DeviceFace>>;
    int const size =
        std::clamp(static_cast<int>(std::lround(deviceSize * fractions)), fractions, largestSize);
    std::unique_ptr<DeviceFace>& place = faces[{face, size}];
    if (!place) place = std::make_unique<DeviceFace>(DeviceFace{face, size});
    return *place;
}

void const* GlyphRasters::Use::picture(DeviceFace& face, std::uint32_t glyph) {
    void* const key = keyOf(glyph);
    void const* known = pixman_glyph_cache_lookup(rasters_.cache_, &face, key);
    return known ? known : rasters_.make(face, glyph, key);
}

void const* GlyphRasters::make(DeviceFace& face, std::uint32_t glyph, void* glyphKey) {
    if (!face.face) return makeSymbol(face, glyph, glyphKey);
    if (!drawOutline(*face.face, face.size, glyph)) return nullptr;
    FT_GlyphSlot slot = face.face->outlines()->glyph;
    ImagePtr const image = copyOf(slot->bitmap);
    if (!image) return nullptr;
    return pixman_glyph_cache_insert(cache_, &face, glyphKey, -slot->bitmap_left, slot->bitmap_top,
                                     image.get());
}

void const* GlyphRasters::makeSymbol(DeviceFace& face, std::uint32_t glyph, void* glyphKey) {
    Symbols::Picture const picture = Symbols::draw(glyph, static_cast<double>(face.size) / fractions);
    ImagePtr const image(picture.image);
    if (!image) return nullptr;
    return pixman_glyph_cache_insert(cache_, &face, glyphKey, -picture.left, picture.top, image.get());
}

} // namespace wainscot
