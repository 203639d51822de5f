#pragma once

#include "host/base/lightweight_string.h"

#include <cstddef>
#include <string_view>
#include <vector>

namespace wainscot {

/// The characters of a text that is edited, in pieces, so that the cost of a change hardly depends on the
/// length of the text. Pieces of a long text share its memory until they are changed. It knows where lines
/// begin, which end at line feeds. Indices must lie in the text.
class WAINSCOT_API TextStore {
public:
    using Text = LightweightString<wchar_t>;

    TextStore() = default;
    explicit TextStore(Text const& text) { replace(0, 0, text); }

    std::size_t size() const { return end().start; }
    wchar_t operator[](std::size_t index) const;
    Text substr(std::size_t index, std::size_t count) const;
    /// Whether the text has these characters there.
    bool holds(std::size_t index, std::wstring_view text) const;
    /// How many characters at the beginning are the same as those of a text; how many at the end.
    std::size_t commonPrefix(std::wstring_view text) const;
    std::size_t commonSuffix(std::wstring_view text) const;
    /// Replaces characters. The memory of a long text is shared.
    void replace(std::size_t index, std::size_t count, Text const& text);

    /// At least 1.
    std::size_t numLines() const { return end().lineFeeds + 1; }
    /// The line in which a gap lies.
    std::size_t lineOf(std::size_t index) const;
    std::size_t lineStart(std::size_t line) const;
    /// The end of the line in which a gap lies.
    std::size_t lineEnd(std::size_t index) const;

private:
    struct Piece {
        /// What has the characters.
        Text source;
        std::wstring_view text;
    };
    /// What lies before a piece.
    struct Place {
        std::size_t start = 0;
        std::size_t lineFeeds = 0;
    };

    Place const& end() const { return places_.back(); }
    /// The piece in which a character stands, or the last one. There must be one.
    std::size_t pieceOf(std::size_t index) const;
    template <class Visit>
    void visit(std::size_t index, std::size_t count, Visit const& visit) const;
    static void cut(std::vector<Piece>& pieces, Text const& source, std::wstring_view text);
    /// Replaces `count` pieces by others.
    void exchange(std::size_t first, std::size_t count, std::vector<Piece> fresh);

    std::vector<Piece> pieces_;
    /// Where each piece begins and the last one ends.
    std::vector<Place> places_{1};
};

} // namespace wainscot
