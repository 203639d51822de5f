#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace wainscot {

/// In which direction the characters of a line run.
namespace Bidi {

/// True for the characters that can make a line run from right to left, in whole or in part: those of the
/// scripts that do, and the controls of direction. A text without them runs from left to right.
constexpr bool mayTurn(std::uint32_t c) {
    if (c < 0x590) return false;
    return c < 0x900 || c == 0x200F || (c >= 0x202A && c <= 0x202E) || (c >= 0x2066 && c <= 0x2069) ||
           (c >= 0xFB1D && c <= 0xFDFF) || (c >= 0xFE70 && c < 0xFEFF) || (c >= 0x10800 && c < 0x11000) ||
           (c >= 0x1E800 && c < 0x1F000);
}

/// True when the text has such a character. Much quicker than looking at each one by one.
bool mayTurn(std::wstring_view text);

/// For a beginning of a line, up to `end`, that has no such character: true when it runs from left to right
/// from the left end of the line, whatever follows. Looks at what follows only where the beginning has no
/// letters.
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

    /// For pieces in reading order, of one level each: their indices as they stand from left to right.
    static std::vector<std::int32_t> fromLeftToRight(std::vector<std::uint8_t> const& levels);

private:
    std::vector<Run> runs_;
    bool rightToLeft_ = false;
};

} // namespace wainscot
