#pragma once

#include "host/drawing/colour.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <emmintrin.h>

/// Colouring pixels by coverage: the inner loops of text and round corners. Pixels are premultiplied ARGB.
namespace wainscot::CoverageBlend {

/// The product of two shares of 255, rounded.
inline std::uint32_t share(std::uint32_t a, std::uint32_t b) {
    std::uint32_t const product = a * b + 128;
    return (product + (product >> 8)) >> 8;
}

inline std::uint32_t premultiplied(Colour const& colour, double alpha) {
    auto const a = static_cast<std::uint32_t>(std::clamp(alpha, 0.0, 1.0) * 255.0 + 0.5);
    std::uint32_t const c = colour.getAsLong();
    return a << 24 | share(c >> 16 & 0xFF, a) << 16 | share(c >> 8 & 0xFF, a) << 8 | share(c & 0xFF, a);
}

/// All four bytes of a pixel times a share of 255, two at a time.
inline std::uint32_t scaledPixel(std::uint32_t pixel, std::uint32_t by) {
    constexpr std::uint32_t evenBytes = 0x00FF00FF;
    constexpr std::uint32_t halves = 0x00800080;
    std::uint32_t low = (pixel & evenBytes) * by + halves;
    std::uint32_t high = ((pixel >> 8) & evenBytes) * by + halves;
    low = ((low + ((low >> 8) & evenBytes)) >> 8) & evenBytes;
    high = (high + ((high >> 8) & evenBytes)) & ~evenBytes;
    return low | high;
}

/// An opaque ink over a pixel: a mixture of the two, rounded once.
inline std::uint32_t mixedPixel(std::uint32_t pixel, std::uint32_t ink, std::uint32_t coverage) {
    constexpr std::uint32_t evenBytes = 0x00FF00FF;
    constexpr std::uint32_t halves = 0x00800080;
    std::uint32_t const rest = 255 - coverage;
    std::uint32_t low = (pixel & evenBytes) * rest + (ink & evenBytes) * coverage + halves;
    std::uint32_t high = ((pixel >> 8) & evenBytes) * rest + ((ink >> 8) & evenBytes) * coverage + halves;
    low = ((low + ((low >> 8) & evenBytes)) >> 8) & evenBytes;
    high = (high + ((high >> 8) & evenBytes)) & ~evenBytes;
    return low | high;
}

inline bool isOpaque(std::uint32_t ink) {
    return ink >> 24 == 255;
}

inline void blend(std::uint32_t& pixel, std::uint32_t ink, std::uint32_t coverage) {
    if (coverage == 0) return;
    if (isOpaque(ink)) {
        pixel = coverage == 255 ? ink : mixedPixel(pixel, ink, coverage);
        return;
    }
    std::uint32_t const source = scaledPixel(ink, coverage);
    pixel = source + scaledPixel(pixel, 255 - (source >> 24));
}

/// Eight 16-bit products of bytes, each divided by 255 and rounded: (x + x / 256) / 256 is x * 257 / 65536.
inline __m128i dividedBy255(__m128i products) {
    return _mm_mulhi_epu16(_mm_add_epi16(products, _mm_set1_epi16(128)), _mm_set1_epi16(257));
}

/// Two pixels in 16-bit lanes, with their coverage in each lane.
inline __m128i blendTwo(__m128i pixels, __m128i ink, __m128i coverage) {
    __m128i const source = dividedBy255(_mm_mullo_epi16(ink, coverage));
    __m128i const alpha = _mm_shufflehi_epi16(_mm_shufflelo_epi16(source, 0xFF), 0xFF);
    __m128i const rest = _mm_sub_epi16(_mm_set1_epi16(255), alpha);
    return _mm_add_epi16(source, dividedBy255(_mm_mullo_epi16(pixels, rest)));
}

/// The same for an opaque ink.
inline __m128i mixTwo(__m128i pixels, __m128i ink, __m128i coverage) {
    __m128i const rest = _mm_sub_epi16(_mm_set1_epi16(255), coverage);
    return dividedBy255(_mm_add_epi16(_mm_mullo_epi16(ink, coverage), _mm_mullo_epi16(pixels, rest)));
}

/// Four pixels by four bytes of coverage; the same as `blend` four times. `opaque` tells about the ink.
template <bool opaque>
inline void blendFour(std::uint32_t* pixels, std::uint8_t const* coverage, std::uint32_t ink) {
    std::uint32_t four = 0;
    std::memcpy(&four, coverage, sizeof four);
    if (four == 0) return;
    __m128i const zero = _mm_setzero_si128();
    __m128i spread = _mm_cvtsi32_si128(static_cast<int>(four));
    spread = _mm_unpacklo_epi8(spread, spread);
    spread = _mm_unpacklo_epi16(spread, spread);
    __m128i const inks = _mm_unpacklo_epi8(_mm_set1_epi32(static_cast<int>(ink)), zero);
    auto* place = reinterpret_cast<__m128i*>(pixels);
    __m128i const old = _mm_loadu_si128(place);
    auto const combine = opaque ? mixTwo : blendTwo;
    __m128i const low = combine(_mm_unpacklo_epi8(old, zero), inks, _mm_unpacklo_epi8(spread, zero));
    __m128i const high = combine(_mm_unpackhi_epi8(old, zero), inks, _mm_unpackhi_epi8(spread, zero));
    _mm_storeu_si128(place, _mm_packus_epi16(low, high));
}

/// Colours a row of pixels.
inline void fill(std::uint32_t* pixels, int count, std::uint32_t ink) {
    if (count < 4) {
        for (; count > 0; --count) *pixels++ = ink;
        return;
    }
    __m128i const inks = _mm_set1_epi32(static_cast<int>(ink));
    auto const store = [&](std::uint32_t* four) { _mm_storeu_si128(reinterpret_cast<__m128i*>(four), inks); };
    std::uint32_t* const last = pixels + count - 4;
    for (; pixels + 12 <= last; pixels += 16) {
        store(pixels);
        store(pixels + 4);
        store(pixels + 8);
        store(pixels + 12);
    }
    for (; pixels < last; pixels += 4) store(pixels);
    // May meet those before.
    store(last);
}

} // namespace wainscot::CoverageBlend
