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
    std::u16string units(std::min(line.size(), most), u' ');
    std::transform(line.begin(), line.begin() + static_cast<std::ptrdiff_t>(units.size()), units.begin(),
                   unitFor);
    UErrorCode status = U_ZERO_ERROR;
    Analysis const analysis(ubidi_open(), &ubidi_close);
    ubidi_setPara(analysis.get(), units.data(), static_cast<std::int32_t>(units.size()), UBIDI_DEFAULT_LTR,
                  nullptr, &status);
    UBiDiLevel const* levels = U_SUCCESS(status) ? ubidi_getLevels(analysis.get(), &status) : nullptr;
    rightToLeft_ = levels && (ubidi_getParaLevel(analysis.get()) & 1);
    for (std::size_t i = 0; levels && i < units.size(); ++i) {
        if (runs_.empty() || runs_.back().level != levels[i]) runs_.push_back({i, i, levels[i]});
        runs_.back().end = i + 1;
    }
    // Without memory for an analysis the line runs from left to right.
    std::size_t const reached = runs_.empty() ? 0 : runs_.back().end;
    if (reached < line.size()) runs_.push_back({reached, line.size(), 0});
}

std::vector<std::int32_t> BidiLevels::fromLeftToRight(std::vector<std::uint8_t> const& levels) {
    std::vector<std::int32_t> order(levels.size());
    std::iota(order.begin(), order.end(), 0);
    if (!order.empty())
        ubidi_reorderVisual(levels.data(), static_cast<std::int32_t>(levels.size()), order.data());
    return order;
}

} // namespace wainscot
