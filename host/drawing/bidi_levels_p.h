#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace wainscot {

/// In which direction the characters of a line run.
namespace Bidi {

/// Whether a character can make a line run from right to left, in whole or in part: a character of such a
/// script, or a control of direction. A text without such characters runs from left to right.
constexpr bool mayTurn(std::uint32_t c) {
    if (c < 0x590) return false;
    return c < 0x900 || c == 0x200F || (c >= 0x202A && c <= 0x202E) || (c >= 0x2066 && c <= 0x2069) ||
           (c >= 0xFB1D && c <= 0xFDFF) || (c >= 0xFE70 && c < 0xFEFF) || (c >= 0x10800 && c < 0x11000) ||
           (c >= 0x1E800 && c < 0x1F000);
}

/// The same for a text. Much quicker than asking for each character.
bool mayTurn(std::wstring_view text);

/// Whether the beginning of a line, up to `end`, runs from left to right at the left end of the line,
/// whatever follows. The beginning has no character that may turn. Looks at what follows only when the
/// beginning has no letters.
bool startsPlainly(std::wstring_view line, std::size_t end);

} // namespace Bidi

/// The embedding levels of the characters of one line: odd ones run from right to left.
class BidiLevels {
public:
    /// Characters that run together: of one level.
    struct Run {
        std::size_t start;
        std::size_t end;
        std::uint8_t level;

        bool isRightToLeft() const { return level & 1; }
    };

    /// The direction of the line is that of its first letter.
    explicit BidiLevels(std::wstring_view line);

    bool isRightToLeft() const { return rightToLeft_; }
    /// In reading order.
    std::vector<Run> const& runs() const { return runs_; }

    /// The indices of pieces from left to right; `levels` are the levels of the pieces in reading order.
    static std::vector<std::int32_t> fromLeftToRight(std::vector<std::uint8_t> const& levels);

private:
    std::vector<Run> runs_;
    bool rightToLeft_ = false;
};

} // namespace wainscot
