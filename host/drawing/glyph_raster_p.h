#pragma once

#include "host/drawing/font_face_p.h"

#include <pixman.h>

namespace wainscot {

/// The pictures of glyphs, made once per face, size and glyph and kept by the pixel library.
/// Pictures may go when the last `Use` ends.
class GlyphRasters {
public:
    /// A face at one device size; what the pictures are kept under.
    struct DeviceFace {
        /// Null for the symbols.
        FontFace* face;
        /// In 64ths of a device pixel.
        int size;
    };

    static GlyphRasters& instance();

    /// Lives for ever.
    DeviceFace& deviceFace(FontFace* face, double deviceSize);
    pixman_glyph_cache_t* cache() const { return cache_; }

    /// Keeps pictures valid for a scope.
    class Use {
    public:
        explicit Use(GlyphRasters& rasters) : rasters_(rasters) { pixman_glyph_cache_freeze(rasters.cache_); }
        ~Use() { pixman_glyph_cache_thaw(rasters_.cache_); }
        Use(Use const&) = delete;
        Use& operator=(Use const&) = delete;

        /// Null when the glyph cannot be pictured.
        void const* picture(DeviceFace& face, std::uint32_t glyph);

    private:
        GlyphRasters& rasters_;
    };

private:
    GlyphRasters() : cache_(pixman_glyph_cache_create()) {}
    void const* make(DeviceFace& face, std::uint32_t glyph, void* glyphKey);
    void const* makeSymbol(DeviceFace& face, std::uint32_t glyph, void* glyphKey);

    pixman_glyph_cache_t* cache_;
};

} // namespace wainscot
