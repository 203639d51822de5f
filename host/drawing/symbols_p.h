#pragma once

#include "host/drawing/glyph_raster_p.h"
#include "host/drawing/symbols.h"

#include <cstdint>

namespace wainscot::Symbols {

/// Stands for a face in layouts: its glyphs are the symbols.
inline constexpr std::uint16_t face = 0xFFFF;

/// True for a code point that draws a symbol.
bool isSymbol(std::uint32_t character);
constexpr std::uint32_t glyphOf(std::uint32_t character) {
    return character - static_cast<std::uint32_t>(QvTTF::firstCodePoint);
}

/// A symbol's coverage of device pixels, like a glyph's; empty for an unknown number.
GlyphPicture draw(std::uint32_t glyph, double deviceSize);

} // namespace wainscot::Symbols
