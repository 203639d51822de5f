#pragma once

#include "host/drawing/font.h"

#include <cstdint>
#include <hb.h>
#include <string>
#include <vector>

using FT_Face = struct FT_FaceRec_*;

namespace wainscot {

/// One face of a font file, at no size in particular. Faces are shared and live for ever.
class FontFace {
public:
    /// What the file lacks and must be imitated.
    struct Imitation {
        bool bold = false;
        bool italic = false;
    };

    /// Null when the file cannot be read as a font.
    static FontFace* open(std::string const& path, int index, Imitation imitation);

    hb_face_t* shaped() const { return hbFace_; }
    FT_Face outlines() const { return ftFace_; }
    Imitation imitation() const { return imitation_; }
    bool hasGlyph(std::uint32_t character) const;
    bool isFixedPitch() const;
    /// Whether a character's place depends on its neighbours only; this is known for the usual faces.
    bool isPairwise() const { return pairwise_; }
    void setPairwise() { pairwise_ = true; }
    /// Ascent and descent (positive downwards) as shares of the size.
    double ascent() const;
    double descent() const;

private:
    FontFace() = default;

    hb_face_t* hbFace_ = nullptr;
    hb_font_t* probe_ = nullptr;
    FT_Face ftFace_ = nullptr;
    Imitation imitation_;
    bool pairwise_ = false;
};

/// Finds faces by name and by the characters that they have. The usual faces are found at their usual
/// places; the font configuration, which takes milliseconds to load, is asked only for others.
namespace FontFinder {

/// The face of that name and style, or the default face; null when there is no font at all.
FontFace* find(LightweightString<char> const& name, unsigned int style);
/// A face that has the character; null when there is none.
FontFace* findFallback(std::uint32_t character, unsigned int style);
/// True once the font configuration has been loaded.
bool hasAskedConfiguration();

} // namespace FontFinder
} // namespace wainscot
