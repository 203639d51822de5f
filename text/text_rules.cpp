#include "text/text_rules.h"

#include "host/events/key_codes.h"

#include <algorithm>

namespace wainscot {

namespace {

/// Control characters; none of them can be entered.
constexpr int lastControl = 31;
/// Never on the code of a character.
constexpr std::uint32_t reservedFlag = 0x20000000;

/// Whatever the restriction.
bool canBeEntered(wchar_t character) {
    auto const code = static_cast<char32_t>(character);
    return (code & Key::special) == 0 && code > lastControl;
}

} // namespace

bool TextRules::isPrintable(int keyCode) {
    constexpr std::uint32_t flags = reservedFlag | Key::special | Key::alt | Key::ctrl | Key::meta;
    auto const code = static_cast<std::uint32_t>(keyCode);
    return (code & flags) == 0 && static_cast<int>(code & ~Key::shift) > lastControl;
}

void TextRules::setCharacters(LightweightString<wchar_t> const& characters,
                              eCharacterRestriction restriction) {
    characters_ = characters;
    restriction_ = restriction;
    sorted_.assign(characters_.begin(), characters_.end());
    std::ranges::sort(sorted_);
}

bool TextRules::isListed(wchar_t character) const {
    return std::ranges::binary_search(sorted_, character);
}

bool TextRules::isRestricted(wchar_t character) const {
    switch (restriction_) {
    case eOnlyCharacters:
        return !isListed(character);
    case eNotCharacters:
        return isListed(character);
    case eNoRestriction:
        break;
    }
    return false;
}

bool TextRules::isAllowed(wchar_t character) const {
    if (character == L'\n') return lineFeeds_;
    return canBeEntered(character) && !isRestricted(character);
}

bool TextRules::areAllowed(std::wstring_view text) const {
    bool good = true;
    wchar_t const lineFeed = lineFeeds_ ? L'\n' : L' ';
    for (wchar_t const c : text) good = good & (canBeEntered(c) | (c == lineFeed));
    if (!good) return false;
    return restriction_ == eNoRestriction ||
           std::ranges::all_of(text, [this](wchar_t c) { return isAllowed(c); });
}

LightweightString<wchar_t> TextRules::withLineFeeds(LightweightString<wchar_t> const& text) {
    constexpr wchar_t carriageReturn = L'\r';
    if (text.find(carriageReturn) == LightweightString<wchar_t>::npos) return text;
    LightweightString<wchar_t> result;
    result.reserve(text.size());
    bool wasReturn = false;
    for (wchar_t const c : text.view()) {
        bool const isSecond = wasReturn && c == L'\n';
        wasReturn = c == carriageReturn;
        if (!isSecond) result.push_back(wasReturn ? L'\n' : c);
    }
    return result;
}

} // namespace wainscot
