#include "host/backends/desktop/desktop_text_p.h"

#include <cstdint>

namespace wainscot {

namespace {

constexpr std::uint32_t replacement = 0xFFFD;

bool isScalar(std::uint32_t code) {
    return code <= 0x10FFFF && (code < 0xD800 || code > 0xDFFF);
}

/// Number of continuation bytes after a leading byte; -1 for a byte that cannot lead.
int continuations(unsigned char lead) {
    if (lead < 0x80) return 0;
    if (lead >= 0xC2 && lead < 0xE0) return 1;
    if (lead >= 0xE0 && lead < 0xF0) return 2;
    return lead >= 0xF0 && lead < 0xF5 ? 3 : -1;
}

/// Takes one code point off the front of the text.
std::uint32_t takeCodePoint(std::string_view& text) {
    static constexpr std::uint32_t leadMask[] = {0x7F, 0x1F, 0x0F, 0x07};
    static constexpr std::uint32_t least[] = {0, 0x80, 0x800, 0x10000};
    auto const lead = static_cast<unsigned char>(text.front());
    text.remove_prefix(1);
    int const count = continuations(lead);
    if (count < 0) return replacement;
    std::uint32_t code = lead & leadMask[count];
    for (int i = 0; i < count; ++i) {
        if (text.empty() || (static_cast<unsigned char>(text.front()) & 0xC0) != 0x80) return replacement;
        code = code << 6 | (static_cast<unsigned char>(text.front()) & 0x3F);
        text.remove_prefix(1);
    }
    return isScalar(code) && code >= least[count] ? code : replacement;
}

void appendUtf8(std::string& text, std::uint32_t code) {
    auto const tail = [code](int shift) { return static_cast<char>(0x80 | (code >> shift & 0x3F)); };
    if (code < 0x80) {
        text += static_cast<char>(code);
    } else if (code < 0x800) {
        text += {static_cast<char>(0xC0 | code >> 6), tail(0)};
    } else if (code < 0x10000) {
        text += {static_cast<char>(0xE0 | code >> 12), tail(6), tail(0)};
    } else {
        text += {static_cast<char>(0xF0 | code >> 18), tail(12), tail(6), tail(0)};
    }
}

} // namespace

LightweightString<wchar_t> wideFromUtf8(std::string_view text) {
    LightweightString<wchar_t> wide;
    wide.reserve(text.size());
    while (!text.empty()) wide.push_back(static_cast<wchar_t>(takeCodePoint(text)));
    return wide;
}

std::string utf8FromWide(LightweightString<wchar_t> const& text) {
    std::string narrow;
    for (wchar_t const character : text) {
        auto const code = static_cast<std::uint32_t>(character);
        appendUtf8(narrow, isScalar(code) ? code : replacement);
    }
    return narrow;
}

} // namespace wainscot
