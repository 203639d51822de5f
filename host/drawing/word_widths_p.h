#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

namespace wainscot {

class Font;

/// The widths of words in a face whose rules look at neighbours only. The width of a block is the sum of its
/// words, each with the blank behind it. Long texts repeat words, and each word is shaped once.
class WordWidths {
public:
    explicit WordWidths(Font const& font) : font_(font) {}

    /// The width of a block that runs from left to right only, as when it is shaped as a whole. Nothing where
    /// a blank and the word behind it change each other.
    std::optional<double> width(std::wstring_view block);

private:
    struct Word {
        double width;
        /// The script of its last letter, as the shaper knows it; characters behind it that belong to any
        /// script take that script.
        std::uint32_t script;
        /// A blank before it changes nothing.
        bool standsAlone;
    };
    /// More are forgotten together.
    static constexpr std::size_t most = 4096;

    Word word(std::wstring_view text, std::uint32_t script);
    std::optional<Word> byPairs(std::wstring_view text, std::uint32_t script) const;
    Word shaped(std::wstring_view text, std::uint32_t script) const;

    Font const& font_;
    /// By the script before the word, and the word.
    std::unordered_map<std::wstring, Word> known_;
    std::wstring key_;
};

} // namespace wainscot
