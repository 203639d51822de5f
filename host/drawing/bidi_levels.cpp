#include "host/drawing/bidi_levels_p.h"

#include "host/drawing/text_boundaries_p.h"

#include <algorithm>
#include <limits>
#include <memory>
#include <numeric>
#include <string>
#include <unicode/ubidi.h>

namespace wainscot {
namespace {

/// One UTF-16 unit for a supplementary character, with the same class of direction.
char16_t unitOfClass(std::uint32_t c) {
    switch (u_charDirection(static_cast<UChar32>(c))) {
    case U_RIGHT_TO_LEFT:
        return u'\u05D0';
    case U_RIGHT_TO_LEFT_ARABIC:
        return u'\u0627';
    case U_ARABIC_NUMBER:
        return u'\u0660';
    case U_EUROPEAN_NUMBER:
        return u'0';
    case U_OTHER_NEUTRAL:
        return u'\u2600';
    case U_DIR_NON_SPACING_MARK:
        return u'\u0300';
    case U_BOUNDARY_NEUTRAL:
        return u'\u200B';
    default:
        return u'\u4E00';
    }
}

char16_t unitFor(wchar_t character) {
    std::uint32_t const c = TextBoundaries::shapedAs(static_cast<std::uint32_t>(character));
    // A line is one paragraph.
    if (c == 0x2029) return u'\u2028';
    return c <= 0xFFFF ? static_cast<char16_t>(c) : unitOfClass(c);
}

/// The unit that stands for all the letters of a common alphabet; zero for other characters.
char16_t alphabetOf(wchar_t character) {
    auto const c = static_cast<std::uint32_t>(character);
    if ((c | 0x20) - 'a' < 26) return u'a';
    if (c - 0x5D0 < 27) return u'\u05D0';
    if (c - 0x620 < 43) return u'\u0627';
    return 0;
}

/// What is analysed of a line. Letters of one alphabet side by side are all of one level, so that one unit
/// stands for them all.
struct Units {
    std::u16string text;
    /// Which character each stands for, or the first of them.
    std::vector<std::uint32_t> starts;

    explicit Units(std::wstring_view line) {
        text.reserve(line.size());
        starts.reserve(line.size());
        char16_t before = 0;
        for (std::size_t i = 0; i < line.size(); ++i) {
            char16_t const alphabet = alphabetOf(line[i]);
            bool const continues = alphabet && alphabet == before;
            before = alphabet;
            if (continues) continue;
            text.push_back(alphabet ? alphabet : unitFor(line[i]));
            starts.push_back(static_cast<std::uint32_t>(i));
        }
    }
};

bool isLeftToRightLetter(wchar_t character) {
    auto const c = static_cast<std::uint32_t>(character);
    if (c < 0x80) return (c | 0x20) >= 'a' && (c | 0x20) <= 'z';
    return u_charDirection(static_cast<UChar32>(TextBoundaries::validCodePoint(c))) == U_LEFT_TO_RIGHT;
}

using Analysis = std::unique_ptr<UBiDi, decltype(&ubidi_close)>;

} // namespace

bool Bidi::mayTurn(std::wstring_view text) {
    std::uint32_t bits = 0;
    for (wchar_t const c : text) bits |= static_cast<std::uint32_t>(c);
    return bits >= 0x400 && std::any_of(text.begin(), text.end(),
                                        [](wchar_t c) { return mayTurn(static_cast<std::uint32_t>(c)); });
}

bool Bidi::startsPlainly(std::wstring_view line, std::size_t end) {
    std::wstring_view const beginning = line.substr(0, end);
    return std::any_of(beginning.begin(), beginning.end(), isLeftToRightLetter) || !mayTurn(line.substr(end));
}

BidiLevels::BidiLevels(std::wstring_view line) {
    constexpr std::size_t most = std::numeric_limits<std::int32_t>::max();
    Units const units(line.substr(0, most));
    UErrorCode status = U_ZERO_ERROR;
    Analysis const analysis(ubidi_open(), &ubidi_close);
    ubidi_setPara(analysis.get(), units.text.data(), static_cast<std::int32_t>(units.text.size()),
                  UBIDI_DEFAULT_LTR, nullptr, &status);
    UBiDiLevel const* levels = U_SUCCESS(status) ? ubidi_getLevels(analysis.get(), &status) : nullptr;
    rightToLeft_ = levels && (ubidi_getParaLevel(analysis.get()) & 1);
    for (std::size_t i = 0; levels && i < units.starts.size(); ++i) {
        if (!runs_.empty() && runs_.back().level == levels[i]) continue;
        if (!runs_.empty()) runs_.back().end = units.starts[i];
        runs_.push_back({units.starts[i], line.size(), levels[i]});
    }
    // Without memory for an analysis the line runs from left to right.
    if (runs_.empty() && !line.empty()) runs_.push_back({0, line.size(), 0});
}

std::vector<std::int32_t> BidiLevels::fromLeftToRight(std::vector<std::uint8_t> const& levels) {
    std::vector<std::int32_t> order(levels.size());
    std::iota(order.begin(), order.end(), 0);
    if (!order.empty())
        ubidi_reorderVisual(levels.data(), static_cast<std::int32_t>(levels.size()), order.data());
    return order;
}

} // namespace wainscot
