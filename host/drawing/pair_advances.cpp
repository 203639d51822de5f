#include "host/drawing/pair_advances_p.h"

namespace wainscot {

PairAdvances::~PairAdvances() {
    hb_buffer_destroy(buffer_);
}

PairAdvances::Pairs& PairAdvances::pairs() {
    if (!pairs_) {
        pairs_ = std::make_unique<Pairs>();
        pairs_->fill(unknown);
    }
    return *pairs_;
}

void PairAdvances::shape(std::uint32_t const* characters, int length) {
    if (!buffer_) buffer_ = hb_buffer_create();
    hb_buffer_clear_contents(buffer_);
    hb_buffer_add_utf32(buffer_, characters, length, 0, length);
    hb_buffer_set_direction(buffer_, HB_DIRECTION_LTR);
    hb_buffer_set_script(buffer_, HB_SCRIPT_LATIN);
    hb_buffer_set_language(buffer_, hb_language_get_default());
    hb_shape(shaper_, buffer_, nullptr, 0);
}

PairAdvances::Single const& PairAdvances::single(std::uint32_t character) {
    Single& known = singles_[character - first];
    if (known.advance != unknown) return known;
    shape(&character, 1);
    unsigned glyphs = 0;
    hb_glyph_info_t const* infos = hb_buffer_get_glyph_infos(buffer_, &glyphs);
    hb_glyph_position_t const* positions = hb_buffer_get_glyph_positions(buffer_, &glyphs);
    if (glyphs == 1)
        known = {infos[0].codepoint, positions[0].x_advance};
    else
        known.advance = entangled;
    return known;
}

std::int32_t PairAdvances::learn(std::uint32_t character, std::uint32_t next) {
    Single const a = single(character);
    Single const b = single(next);
    std::uint32_t const both[] = {character, next};
    shape(both, 2);
    unsigned glyphs = 0;
    hb_glyph_info_t const* infos = hb_buffer_get_glyph_infos(buffer_, &glyphs);
    hb_glyph_position_t const* positions = hb_buffer_get_glyph_positions(buffer_, &glyphs);
    bool const apart = glyphs == 2 && infos[0].codepoint == a.glyph && infos[1].codepoint == b.glyph &&
                       positions[1].x_advance == b.advance && positions[0].x_offset == 0 &&
                       positions[0].y_offset == 0 && positions[1].x_offset == 0 && positions[1].y_offset == 0;
    return apart ? positions[0].x_advance : entangled;
}

std::int32_t PairAdvances::width(std::wstring_view text) {
    if (text.empty()) return 0;
    std::int32_t total = 0;
    auto current = static_cast<std::uint32_t>(text[0]);
    if (!takesPart(current)) return entangled;
    for (std::size_t i = 1; i < text.size(); ++i) {
        auto const next = static_cast<std::uint32_t>(text[i]);
        if (!takesPart(next)) return entangled;
        std::int32_t const step = advance(current, next);
        if (step == entangled) return entangled;
        total += step;
        current = next;
    }
    std::int32_t const last = lastAdvance(current);
    return last == entangled ? entangled : total + last;
}

} // namespace wainscot
