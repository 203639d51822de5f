#pragma once

#include "host/drawing/symbols.h"

#include <cstdint>
#include <pixman.h>

namespace wainscot::Symbols {

/// Stands for a face in layouts: its glyphs are the symbols.
inline constexpr std::uint16_t face = 0xFFFF;

/// True for a code point that draws a symbol.
bool isSymbol(std::uint32_t character);
constexpr std::uint32_t glyphOf(std::uint32_t character) {
    return character - static_cast<std::uint32_t>(QvTTF::firstCodePoint);
}

/// A symbol as coverage of device pixels, and where its lower-left corner lies from the start on the baseline
/// (y upwards). The image belongs to the caller; null when it cannot be made.
struct Picture {
    pixman_image_t* image = nullptr;
    int left = 0;
    int top = 0;
};
Picture draw(std::uint32_t glyph, double deviceSize);

} // namespace wainscot::Symbols
