#pragma once

#include "host/drawing/font.h"
#include "host/drawing/font_face_p.h"
#include "host/drawing/pair_advances_p.h"
#include "host/drawing/text_layout_p.h"
#include "host/drawing/word_widths_p.h"

#include <optional>
#include <string_view>
#include <unordered_map>

namespace wainscot {

/// The font behind `iFont`: its own face first, then the fallback faces that its texts have needed so far.
class Font final : public iFont {
public:
    Font(Glib::FontDesc desc, FontFace* face);
    ~Font() override;

    static Font const& of(iFont const& font) { return static_cast<Font const&>(font); }

    Glib::FontDesc const& desc() const override { return desc_; }
    int ascent() const override { return ascent_; }
    int descent() const override { return descent_; }
    bool isFixedPitch() const override;
    int textWidth(LightweightString<wchar_t> const& text) const override;
    int prefixWidth(LightweightString<wchar_t> const& text, int index) const override;
    int characterAtX(LightweightString<wchar_t> const& text, int x) const override;
    int seek(LightweightString<wchar_t> const& text, int current, eCharSeekMethod method,
             int index) const override;

    /// Tells fonts apart in caches; an id is never used again.
    std::uint32_t id() const { return id_; }
    /// The exact width of a text of any length.
    double exactWidth(std::wstring_view text) const;
    /// The exact width of one block. Its layout is not cached, so that long texts drive nothing else out of
    /// the cache.
    double blockWidth(std::wstring_view block) const;
    /// The same for a block that runs from left to right only; nothing for a block that may not.
    std::optional<double> plainWidth(std::wstring_view block) const;
    /// Null when the face must always be shaped.
    PairAdvances* pairs() const { return pairs_.get(); }

    /// A face and its shaper at this font's size.
    struct SizedFace {
        FontFace* face = nullptr;
        hb_font_t* shaper = nullptr;
    };
    SizedFace const& sizedFace(std::size_t index) const { return faces_[index]; }
    std::size_t faceCount() const { return faces_.size(); }
    /// The face that has the character, or `Symbols::face`; 0 (the own face) when none has it.
    std::uint16_t faceFor(std::uint32_t character) const;

private:
    std::optional<double> widthByPairs(std::wstring_view block) const;
    std::uint16_t addFace(FontFace* face) const;

    Glib::FontDesc desc_;
    std::uint32_t id_;
    int ascent_;
    int descent_;
    mutable std::vector<SizedFace> faces_;
    std::unique_ptr<PairAdvances> pairs_;
    /// Made when needed; none where `pairs_` is none.
    mutable std::unique_ptr<WordWidths> words_;
    mutable std::unordered_map<std::uint32_t, std::uint16_t> fallbacks_;
};

} // namespace wainscot
