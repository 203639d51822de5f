#pragma once

#include "host/base/lightweight_string.h"

#include <cstdint>
#include <string_view>
#include <vector>

namespace wainscot {

/// What the characters of `TextBoxBase::setCharacters` mean.
enum eCharacterRestriction : int {
    eNoRestriction = 0,
    /// Only these may be entered.
    eOnlyCharacters = 1,
    /// These may not be entered.
    eNotCharacters = 2,
};

/// Which characters may be entered into a text, and how many. What is in the text already does not matter.
class WAINSCOT_API TextRules {
public:
    /// Whether a key code is that of a character: no Ctrl, Alt or Meta, no special key, above 31.
    static bool isPrintable(int keyCode);

    void setCharacters(LightweightString<wchar_t> const& characters, eCharacterRestriction restriction);
    LightweightString<wchar_t> const& characters() const { return characters_; }
    eCharacterRestriction restriction() const { return restriction_; }
    /// The most characters that a text may have; 0 = any number.
    void setSizeLimit(std::uint64_t limit) { sizeLimit_ = limit; }
    std::uint64_t sizeLimit() const { return sizeLimit_; }

    /// Whether line feeds may be entered, whatever the restriction; no, at first.
    void setLineFeeds(bool areAllowed) { lineFeeds_ = areAllowed; }
    bool areLineFeedsAllowed() const { return lineFeeds_; }

    /// Whether the restriction forbids a character.
    bool isRestricted(wchar_t character) const;
    /// Whether a character may be entered at all.
    bool isAllowed(wchar_t character) const;
    /// Whether all characters of a text may be entered.
    bool areAllowed(std::wstring_view text) const;

    /// The text with a line feed at the end of each line: instead of a carriage return, and of one with a
    /// line feed behind it.
    static LightweightString<wchar_t> withLineFeeds(LightweightString<wchar_t> const& text);

private:
    bool isListed(wchar_t character) const;

    LightweightString<wchar_t> characters_;
    /// The characters in order.
    std::vector<wchar_t> sorted_;
    eCharacterRestriction restriction_ = eNoRestriction;
    std::uint64_t sizeLimit_ = 0;
    bool lineFeeds_ = false;
};

} // namespace wainscot
