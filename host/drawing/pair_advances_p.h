#pragma once

#include <array>
#include <cstdint>
#include <hb.h>
#include <memory>
#include <string_view>

namespace wainscot {

/// How far plain characters advance, by the character that follows, learnt from the shaper pair by pair. In a
/// face whose rules look at neighbours only, texts are laid out from this without shaping them again.
class PairAdvances {
public:
    /// The characters that take part: the printable ones of ASCII.
    static constexpr std::uint32_t first = 0x20;
    static constexpr std::uint32_t count = 0x5F;
    static constexpr bool takesPart(std::uint32_t character) { return character - first < count; }

    /// Stands for two characters that change each other, in a ligature for example.
    static constexpr std::int32_t entangled = INT32_MIN;

    explicit PairAdvances(hb_font_t* shaper) : shaper_(shaper) {}
    ~PairAdvances();
    PairAdvances(PairAdvances const&) = delete;
    PairAdvances& operator=(PairAdvances const&) = delete;

    /// The advance of `character` before `next`, in 64ths of a pixel.
    std::int32_t advance(std::uint32_t character, std::uint32_t next) {
        std::int32_t& known = pairs()[(character - first) * count + (next - first)];
        return known != unknown ? known : known = learn(character, next);
    }
    /// The advance of `character` at the end of a text.
    std::int32_t lastAdvance(std::uint32_t character) { return single(character).advance; }
    std::uint32_t glyph(std::uint32_t character) { return single(character).glyph; }

    /// The width of a text in 64ths; `entangled` where it must be shaped.
    std::int32_t width(std::wstring_view text);

private:
    static constexpr std::int32_t unknown = INT32_MIN + 1;

    struct Single {
        std::uint32_t glyph = 0;
        std::int32_t advance = unknown;
    };
    using Pairs = std::array<std::int32_t, count * count>;

    Pairs& pairs();
    Single const& single(std::uint32_t character);
    std::int32_t learn(std::uint32_t character, std::uint32_t next);
    void shape(std::uint32_t const* characters, int length);

    hb_font_t* shaper_;
    hb_buffer_t* buffer_ = nullptr;
    std::array<Single, count> singles_;
    std::unique_ptr<Pairs> pairs_;
};

} // namespace wainscot
