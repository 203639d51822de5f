#include "text/text_store.h"

#include <algorithm>
#include <iterator>

namespace wainscot {

namespace {

/// How many characters the pieces of a long text have, and at most. A shorter piece is joined with another
/// one when it is changed.
constexpr std::size_t usual = 2048;
constexpr std::size_t most = 4096;
constexpr std::size_t least = 512;

std::size_t countLineFeeds(std::wstring_view text) {
    std::size_t count = 0;
    for (std::size_t at = text.find(L'\n'); at != std::wstring_view::npos; at = text.find(L'\n', at + 1))
        ++count;
    return count;
}

} // namespace

std::size_t TextStore::pieceOf(std::size_t index) const {
    auto const behind = std::upper_bound(places_.begin() + 1, places_.end() - 1, index,
                                         [](std::size_t i, Place const& place) { return i < place.start; });
    return static_cast<std::size_t>(behind - places_.begin()) - 1;
}

wchar_t TextStore::operator[](std::size_t index) const {
    std::size_t const piece = pieceOf(index);
    return pieces_[piece].text[index - places_[piece].start];
}

/// Hands over the parts of a text, until the visitor answers false.
template <class Visit>
void TextStore::visit(std::size_t index, std::size_t count, Visit const& visit) const {
    if (count == 0) return;
    std::size_t piece = pieceOf(index);
    std::size_t from = index - places_[piece].start;
    while (count > 0) {
        std::wstring_view const part = pieces_[piece].text.substr(from, count);
        if (!visit(part)) return;
        count -= part.size();
        from = 0;
        ++piece;
    }
}

TextStore::Text TextStore::substr(std::size_t index, std::size_t count) const {
    Text result;
    result.reserve(count);
    visit(index, count, [&](std::wstring_view part) { return result.append(part), true; });
    return result;
}

bool TextStore::holds(std::size_t index, std::wstring_view text) const {
    bool isSame = true;
    visit(index, text.size(), [&](std::wstring_view part) {
        isSame = part == text.substr(0, part.size());
        text.remove_prefix(part.size());
        return isSame;
    });
    return isSame;
}

std::size_t TextStore::commonPrefix(std::wstring_view text) const {
    std::size_t same = 0;
    visit(0, std::min(size(), text.size()), [&](std::wstring_view part) {
        std::wstring_view const other = text.substr(same, part.size());
        auto const differs = std::ranges::mismatch(part, other).in1;
        same += static_cast<std::size_t>(differs - part.begin());
        return differs == part.end();
    });
    return same;
}

std::size_t TextStore::commonSuffix(std::wstring_view text) const {
    std::size_t same = 0;
    for (std::size_t piece = pieces_.size(); piece-- > 0;) {
        std::wstring_view const part = pieces_[piece].text;
        std::wstring_view const other = text.substr(0, text.size() - same);
        auto const differs = std::mismatch(part.rbegin(), part.rend(), other.rbegin(), other.rend()).first;
        same += static_cast<std::size_t>(differs - part.rbegin());
        if (differs != part.rend()) break;
    }
    return same;
}

void TextStore::cut(std::vector<Piece>& pieces, Text const& source, std::wstring_view text) {
    while (!text.empty()) {
        std::size_t const length = text.size() > most ? usual : text.size();
        pieces.push_back({source, text.substr(0, length)});
        text.remove_prefix(length);
    }
}

void TextStore::replace(std::size_t index, std::size_t count, Text const& text) {
    std::size_t first = 0;
    std::size_t end = 0;
    std::wstring_view before;
    std::wstring_view behind;
    if (!pieces_.empty()) {
        first = pieceOf(index);
        std::size_t const last = pieceOf(index + count);
        before = pieces_[first].text.substr(0, index - places_[first].start);
        behind = pieces_[last].text.substr(index + count - places_[last].start);
        end = last + 1;
    }
    std::size_t length = before.size() + text.size() + behind.size();
    std::wstring_view next;
    if (length < least && end < pieces_.size()) next = pieces_[end++].text;
    length += next.size();
    std::vector<Piece> fresh;
    if (text.size() > most) {
        if (!before.empty()) fresh.push_back({pieces_[first].source, before});
        cut(fresh, text, text.view());
        if (!behind.empty()) fresh.push_back({pieces_[end - 1].source, behind});
    } else {
        Text joined;
        joined.reserve(length);
        joined.append(before).append(text.view()).append(behind).append(next);
        cut(fresh, joined, joined.view());
    }
    exchange(first, end - first, std::move(fresh));
}

void TextStore::exchange(std::size_t first, std::size_t count, std::vector<Piece> fresh) {
    auto const offset = static_cast<std::ptrdiff_t>(first);
    Place const oldEnd = places_[first + count];
    Place place = places_[first];
    std::vector<Place> places;
    places.reserve(fresh.size());
    for (Piece const& piece : fresh) {
        place.start += piece.text.size();
        place.lineFeeds += countLineFeeds(piece.text);
        places.push_back(place);
    }
    auto const replaceIn = [offset, count](auto& all, auto from, auto& others) {
        auto const reused = static_cast<std::ptrdiff_t>(std::min(count, others.size()));
        auto const at = std::move(others.begin(), others.begin() + reused, all.begin() + from + offset);
        all.erase(at, at + (static_cast<std::ptrdiff_t>(count) - reused));
        all.insert(all.begin() + from + offset + reused, std::make_move_iterator(others.begin() + reused),
                   std::make_move_iterator(others.end()));
    };
    std::size_t const added = fresh.size();
    replaceIn(pieces_, std::ptrdiff_t(0), fresh);
    replaceIn(places_, std::ptrdiff_t(1), places);
    // The differences may be "negative": both wrap round.
    Place const shift{place.start - oldEnd.start, place.lineFeeds - oldEnd.lineFeeds};
    for (std::size_t i = first + added + 1; i < places_.size(); ++i) {
        places_[i].start += shift.start;
        places_[i].lineFeeds += shift.lineFeeds;
    }
}

std::size_t TextStore::lineOf(std::size_t index) const {
    if (pieces_.empty()) return 0;
    std::size_t const piece = pieceOf(index);
    Place const& place = places_[piece];
    return place.lineFeeds + countLineFeeds(pieces_[piece].text.substr(0, index - place.start));
}

std::size_t TextStore::lineEnd(std::size_t index) const {
    if (pieces_.empty()) return 0;
    std::size_t const piece = pieceOf(index);
    std::wstring_view const text = pieces_[piece].text;
    std::size_t const found = text.find(L'\n', index - places_[piece].start);
    if (found != text.npos) return places_[piece].start + found;
    std::size_t const before = places_[piece + 1].lineFeeds;
    return before < end().lineFeeds ? lineStart(before + 1) - 1 : size();
}

std::size_t TextStore::lineStart(std::size_t line) const {
    if (line == 0) return 0;
    // The piece with the line feed that ends the line before.
    auto const behind =
        std::lower_bound(places_.begin() + 1, places_.end(), line,
                         [](Place const& place, std::size_t feeds) { return place.lineFeeds < feeds; });
    auto const piece = static_cast<std::size_t>(behind - places_.begin()) - 1;
    std::wstring_view const text = pieces_[piece].text;
    std::size_t at = text.find(L'\n');
    for (std::size_t feed = places_[piece].lineFeeds + 1; feed < line; ++feed) at = text.find(L'\n', at + 1);
    return places_[piece].start + at + 1;
}

} // namespace wainscot
