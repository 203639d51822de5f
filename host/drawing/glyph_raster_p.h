#pragma once

#include "host/drawing/font_face_p.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <unordered_map>
#include <vector>

namespace wainscot {

/// The coverage of device pixels by one glyph.
struct GlyphPicture {
    /// From the glyph's place on the baseline to the left column and up to the top row.
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
    /// Bytes from one row to the next: a multiple of four, the rest of a row is clear.
    int stride = 0;
    std::vector<std::uint8_t> coverage;
};

/// The pictures of glyphs, made once per face, size and glyph. They are freed together when they take too
/// much memory, but never while a `Use` lives.
class GlyphRasters {
public:
    /// A face at one device size; lives as long as its pictures.
    struct DeviceFace {
        /// Null for the symbols.
        FontFace* face;
        /// In 64ths of a device pixel.
        int size;
        std::vector<std::unique_ptr<GlyphPicture>> pictures;
    };

    static constexpr std::size_t memoryLimit = 16U * 1024 * 1024;

    static GlyphRasters& instance();

    DeviceFace& deviceFace(FontFace* face, double deviceSize);
    /// The picture of a glyph; an empty one when it cannot be made.
    GlyphPicture const& picture(DeviceFace& face, std::uint32_t glyph) {
        if (glyph < face.pictures.size() && face.pictures[glyph]) return *face.pictures[glyph];
        return make(face, glyph);
    }
    std::size_t bytes() const { return bytes_; }
    std::size_t numFaces() const { return faces_.size(); }

    /// Keeps pictures valid for a scope.
    class Use {
    public:
        explicit Use(GlyphRasters& rasters) : rasters_(rasters) {
            if (rasters_.uses_++ == 0 && rasters_.bytes_ > memoryLimit) rasters_.clear();
        }
        ~Use() { --rasters_.uses_; }
        Use(Use const&) = delete;
        Use& operator=(Use const&) = delete;

    private:
        GlyphRasters& rasters_;
    };

private:
    GlyphRasters() = default;
    GlyphPicture const& make(DeviceFace& face, std::uint32_t glyph);
    void clear();

    struct FaceKey {
        FontFace* face;
        int size;

        bool operator==(FaceKey const&) const = default;
    };
    struct FaceHash {
        std::size_t operator()(FaceKey const& key) const {
            return std::hash<FontFace*>()(key.face) ^
                   (static_cast<std::size_t>(key.size) * 0x9E3779B97F4A7C15ULL);
        }
    };

    std::unordered_map<FaceKey, std::unique_ptr<DeviceFace>, FaceHash> faces_;
    std::size_t bytes_ = 0;
    int uses_ = 0;
};

/// A picture from rows of coverage, `pitch` bytes apart.
GlyphPicture makePicture(XY<int> corner, XY<int> size, std::uint8_t const* rows, std::ptrdiff_t pitch);

} // namespace wainscot
