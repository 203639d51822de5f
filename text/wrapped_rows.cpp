#include "text/wrapped_rows_p.h"

#include "host/drawing/text_seek.h"

#include <algorithm>
#include <iterator>
#include <numeric>
#include <string_view>

namespace wainscot {
namespace {

/// More characters than a look may measure behind its block.
constexpr std::size_t lookLength = 8192;
/// How many characters are measured together, and how many after an edit, at first.
constexpr std::size_t window = 4096;
constexpr std::size_t editWindow = 256;
/// More than the breaker looks ahead in a word that no row can hold.
constexpr std::size_t reach = 2048;
/// A word that an edit makes fit into a row, and the row into which it moves up, began no more rows before.
constexpr std::size_t rowsBack = 3;
/// How much of a long word is measured together, so that an edit may change rows that end before it.
constexpr std::size_t measuredAhead = 320;

constexpr std::uint32_t lineFeedBit = 1U << 31;

constexpr std::size_t count(std::uint32_t length) {
    return length & ~lineFeedBit;
}

std::size_t sum(std::vector<std::uint32_t> const& lengths) {
    return std::accumulate(lengths.begin(), lengths.end(), std::size_t(0),
                           [](std::size_t all, std::uint32_t length) { return all + count(length); });
}

bool isLineEnd(wchar_t c) {
    return c == L'\n' || c == 0x2028 || c == 0x2029;
}

/// A row may begin behind it, or does.
bool endsWord(wchar_t c) {
    return c == L' ' || (c >= L'\t' && c <= L'\r') || (c >= 0x2000 && c <= 0x200A) || c == 0x3000 ||
           isLineEnd(c);
}

double meanAdvance(iFont const& font) {
    constexpr std::wstring_view sample = L"the quick brown fox jumps over the lazy dog ";
    return std::max(0.5, double(font.textWidth(LightweightString<wchar_t>(sample))) / double(sample.size()));
}

} // namespace

WrappedRows::WrappedRows(TextDocument const& document, std::size_t blockLength)
    : document_(document), blockLength_(std::max<std::size_t>(blockLength, 2)), font_(Glib::loadFont({})),
      renderer_(font_, 1) {
    reset();
}

// --- Layout

void WrappedRows::setLayout(Qv::Ptr<iFont> font, int width) {
    font_ = font ? std::move(font) : Glib::loadFont({});
    width_ = std::max(width, 1);
    renderer_ = Glib::WordWrappingTextRenderer(font_, width_);
    advance_ = meanAdvance(*font_);
    std::vector<Block> blocks;
    std::size_t start = 0;
    for (Block const& block : blocks_) {
        start += block.characters;
        if (block.characters <= 2 * blockLength_)
            blocks.push_back({block.characters, estimate(block), block.lineFeeds, State::estimated, {}});
        else
            append(blocks, start - block.characters, start);
    }
    last_ = {};
    exchange(0, blocks_.size(), std::move(blocks));
}

void WrappedRows::reset() {
    std::vector<Block> blocks;
    append(blocks, 0, document_.length());
    last_ = {};
    exchange(0, blocks_.size(), std::move(blocks));
}

std::uint32_t WrappedRows::estimate(Block const& block) const {
    double const lines = std::max<std::uint32_t>(block.lineFeeds, 1);
    double const full = double(block.characters) / lines * advance_ / width_;
    // A row that ends at a word is not full, and the last of a line may be short.
    double const rows = full <= 1 ? 1 : std::min(full + 0.5, double(block.characters) / lines);
    return static_cast<std::uint32_t>(std::max(1.0, lines * rows));
}

bool WrappedRows::hasEmptyEnd() const {
    return document_.length() == 0 || isLineEnd(document_.at(document_.length() - 1));
}

bool WrappedRows::isLineStart(std::size_t index) const {
    return index == 0 || document_.at(index - 1) == L'\n';
}

bool WrappedRows::isInWord(std::size_t index) const {
    return index > 0 && !endsWord(document_.at(index - 1));
}

// --- Blocks

/// Where to begin a block behind this text: at a line, else at a word, else between clusters.
std::size_t WrappedRows::goodCut(std::wstring_view text) const {
    std::size_t const line = text.rfind(L'\n');
    if (line != text.npos) return line + 1;
    auto const blank = std::find_if(text.rbegin(), text.rend(), endsWord);
    if (blank != text.rend()) return static_cast<std::size_t>(text.rend() - blank);
    std::size_t const stop = Glib::seekInText(text, text.size(), iFont::eSeekPrevChar);
    return stop > 0 ? stop : text.size();
}

void WrappedRows::append(std::vector<Block>& blocks, std::size_t from, std::size_t to) const {
    while (from < to) {
        LightweightString<wchar_t> const text = document_.substr(from, std::min(blockLength_, to - from));
        std::size_t const length = from + text.size() == to ? text.size() : goodCut(text.view());
        std::wstring_view const held = text.view().substr(0, length);
        Block block;
        block.characters = length;
        block.lineFeeds = static_cast<std::uint32_t>(std::count(held.begin(), held.end(), L'\n'));
        block.rows = estimate(block);
        blocks.push_back(std::move(block));
        from += length;
    }
}

/// Replaces blocks. The first of them must be where it was looked last, or none is replaced.
void WrappedRows::exchange(std::size_t first, std::size_t count, std::vector<Block> fresh) {
    auto const at = blocks_.begin() + static_cast<std::ptrdiff_t>(first);
    auto const end = at + static_cast<std::ptrdiff_t>(count);
    auto const isUnsettled = [](Block const& block) { return block.state != State::settled; };
    for (auto old = at; old != end; ++old) {
        rows_ -= old->rows;
        unsettled_ -= isUnsettled(*old) ? 1 : 0;
    }
    for (Block const& block : fresh) {
        rows_ += block.rows;
        unsettled_ += isUnsettled(block) ? 1 : 0;
    }
    firstUnsettled_ = std::min(firstUnsettled_, first);
    std::size_t const same = std::min(count, fresh.size());
    auto const moved = fresh.begin() + static_cast<std::ptrdiff_t>(same);
    auto const behind = std::move(fresh.begin(), moved, at);
    if (same < count) blocks_.erase(behind, end);
    blocks_.insert(blocks_.begin() + static_cast<std::ptrdiff_t>(first + same),
                   std::make_move_iterator(moved), std::make_move_iterator(fresh.end()));
    if (last_.block >= blocks_.size()) last_ = {};
}

/// Of a block that has changed.
void WrappedRows::change(std::size_t block, Block const& before) {
    Block const& now = blocks_[block];
    rows_ = rows_ - before.rows + now.rows;
    if (before.state != State::settled) --unsettled_;
    if (now.state == State::settled) return;
    ++unsettled_;
    firstUnsettled_ = std::min(firstUnsettled_, block);
}

/// The rows are estimated again; the place must not lie behind the block.
void WrappedRows::unsettle(std::size_t block) {
    Block& changed = blocks_[block];
    Block const before = {changed.characters, changed.rows, changed.lineFeeds, changed.state, {}};
    changed.state = State::estimated;
    changed.lengths = {};
    changed.rows = estimate(changed);
    change(block, before);
}

void WrappedRows::step(bool forward) {
    if (!forward) --last_.block;
    Block const& passed = blocks_[last_.block];
    last_.start = forward ? last_.start + passed.characters : last_.start - passed.characters;
    last_.row = forward ? last_.row + passed.rows : last_.row - passed.rows;
    if (forward) ++last_.block;
}

/// The last block whose first character, row or number is not behind that; there must be a block.
WrappedRows::Place const& WrappedRows::find(std::size_t Place::*value, std::size_t wanted) {
    if (wanted < last_.*value / 2) last_ = {};
    while (last_.*value > wanted) step(false);
    while (last_.block + 1 < blocks_.size()) {
        Place const before = last_;
        step(true);
        if (last_.*value <= wanted) continue;
        last_ = before;
        break;
    }
    return last_;
}

// --- Wrapping

/// Adds rows from the beginning of one on, as many as that much of the text tells for sure, or more of it
/// until there are `least`. The text ends at `stop`.
void WrappedRows::wrapWindow(std::size_t start, std::size_t stop, std::size_t size, std::size_t least,
                             Lengths& lengths) {
    std::size_t const known = lengths.size();
    for (;; size *= 2) {
        LightweightString<wchar_t> const text = document_.substr(start, std::min(size, stop - start));
        bool const isWhole = start + text.size() == stop;
        measured_ += text.size();
        renderer_.analyse(text);
        auto const& lines = renderer_.lines();
        std::vector<std::size_t> starts(lines.size() + 1, text.size());
        // An empty line does not tell where it begins: one line end before the next.
        for (std::size_t i = lines.size(); i-- > 0;)
            starts[i] = lines[i].start < text.size() ? lines[i].start
                        : i + 1 < lines.size()       ? starts[i + 1] - 1
                                                     : text.size();
        std::size_t word = text.size();
        while (word > 0 && !endsWord(text[word - 1])) --word;
        bool const isCut = starts[lines.size() - 1] > word;
        for (std::size_t i = 0; i < lines.size(); ++i) {
            std::size_t const end = starts[i + 1];
            if (end == starts[i]) continue;
            bool const isLine = text[end - 1] == L'\n';
            if (!isWhole && !isLine && end >= word && (!isCut || end + reach > text.size())) break;
            lengths.push_back(static_cast<std::uint32_t>(end - starts[i]) | (isLine ? lineFeedBit : 0));
        }
        if (lengths.size() >= known + least || isWhole) return;
        lengths.resize(known);
    }
}

/// The same from a row on of which the one before may be known. Inside a word it is begun there, where the
/// word is known not to fit.
void WrappedRows::wrapNext(std::size_t at, std::size_t before, std::size_t stop, std::size_t size,
                           Lengths& lengths) {
    if (before < at && isInWord(at)) {
        Lengths both;
        wrapWindow(before, stop, size + (at - before), 2, both);
        if (both.size() > 1 && before + count(both[0]) == at) {
            lengths.insert(lengths.end(), both.begin() + 1, both.end());
            return;
        }
    }
    wrapWindow(at, stop, size, 1, lengths);
}

bool WrappedRows::beginsRight(Place const& place) const {
    return isLineStart(place.start) || blocks_[place.block - 1].state == State::settled;
}

/// Where the last row of the block before begins, if that is known.
std::size_t WrappedRows::rowBefore(Place const& place) const {
    if (place.block == 0 || blocks_[place.block - 1].lengths.empty()) return place.start;
    return place.start - count(blocks_[place.block - 1].lengths.back());
}

/// The rows of the block; the last may end behind it. Nothing when that cannot be told before `stop`.
WrappedRows::Lengths WrappedRows::rowsOf(Place const& place, std::size_t stop) {
    Lengths lengths;
    std::size_t before = rowBefore(place);
    std::size_t const end = endOf(place);
    for (std::size_t at = place.start; at < end;) {
        std::size_t const known = lengths.size();
        wrapNext(at, before, stop, window, lengths);
        for (std::size_t i = known; i < lengths.size(); ++i) {
            before = at;
            at += count(lengths[i]);
            if (at < end) continue;
            lengths.resize(i + 1);
            break;
        }
    }
    return lengths;
}

/// Gives a block its rows; what is left of its characters goes to the next one.
void WrappedRows::take(Place const& place, Lengths lengths, State state) {
    Block& block = blocks_[place.block];
    Block const before = {block.characters, block.rows, block.lineFeeds, block.state, {}};
    std::size_t const tail = block.characters - sum(lengths);
    block.characters -= tail;
    block.rows = static_cast<std::uint32_t>(lengths.size());
    block.lineFeeds = static_cast<std::uint32_t>(
        std::count_if(lengths.begin(), lengths.end(), [](std::uint32_t l) { return l & lineFeedBit; }));
    block.state = state;
    block.lengths = std::move(lengths);
    change(place.block, before);
    if (tail == 0) return;
    blocks_[place.block + 1].characters += tail;
    unsettle(place.block + 1);
}

/// Makes the block end at a character behind it; what is left of the block there is estimated.
void WrappedRows::stretch(Place const& place, std::size_t to) {
    std::size_t next = place.block;
    std::size_t end = place.start;
    while (end < to) end += blocks_[next++].characters;
    std::vector<Block> blocks(1);
    blocks[0].characters = to - place.start;
    append(blocks, to, end);
    exchange(place.block, next - place.block, std::move(blocks));
}

/// Wraps a block that begins at a row and ends in a line. False when a look costs too much.
bool WrappedRows::wrapOpen(Place const& place, bool mayJoin) {
    std::size_t const end = endOf(place);
    std::size_t const length = document_.length();
    std::size_t const stop = mayJoin ? length : std::min(length, end + lookLength);
    Lengths lengths = rowsOf(place, stop);
    std::size_t const all = place.start + sum(lengths);
    if (all == stop && stop < length) return false;
    if (all > end && lengths.size() > 1)
        lengths.pop_back();
    else if (all > end && !mayJoin)
        return false;
    else if (all > end)
        stretch(place, all);
    take(place, std::move(lengths), State::settled);
    return true;
}

void WrappedRows::wrapBlock(Place place, bool mayJoin) {
    std::size_t const end = endOf(place);
    bool const isOpen = end < document_.length() && !isLineStart(end);
    bool const isRight = beginsRight(place);
    if (!isRight || !isOpen || !wrapOpen(place, mayJoin))
        take(place, rowsOf(place, end), isRight && !isOpen ? State::settled : State::provisional);
    balance(place.block);
}

void WrappedRows::settle(std::size_t characters) {
    std::size_t const begun = measured_;
    while (unsettled_ > 0 && measured_ - begun < characters) {
        while (blocks_[firstUnsettled_].state == State::settled) ++firstUnsettled_;
        wrapBlock(find(&Place::block, firstUnsettled_), true);
    }
}

// --- Looks

TextRow WrappedRows::row(std::size_t index) {
    for (;;) {
        if (hasEmptyEnd() && index >= rows_) return {document_.length(), 0, true};
        Place const place = find(&Place::row, std::min(index, rows_ - 1));
        Lengths const& lengths = blocks_[place.block].lengths;
        if (lengths.empty()) {
            wrapBlock(place, false);
            continue;
        }
        std::size_t start = place.start;
        std::size_t const wanted = std::min(index, rows_ - 1) - place.row;
        for (std::size_t i = 0; i < wanted; ++i) start += count(lengths[i]);
        bool const hasLineFeed = lengths[wanted] & lineFeedBit;
        std::size_t const end = start + count(lengths[wanted]);
        return {start, end - start - (hasLineFeed ? 1 : 0),
                hasLineFeed || (end == document_.length() && !hasEmptyEnd())};
    }
}

std::vector<TextRow> WrappedRows::rows(std::size_t first, std::size_t count) {
    std::vector<TextRow> found;
    first = std::min(first, numRows() - 1);
    for (std::size_t index = first; index < first + count && index < numRows(); ++index)
        found.push_back(row(index));
    return found;
}

std::size_t WrappedRows::rowOf(std::size_t character) {
    character = std::min(character, document_.length());
    if (character == document_.length() && hasEmptyEnd()) return rows_;
    while (blocks_[find(&Place::start, character).block].lengths.empty()) wrapBlock(last_, false);
    Place const place = last_;
    Lengths const& lengths = blocks_[place.block].lengths;
    std::size_t row = 0;
    for (std::size_t end = place.start + count(lengths[0]); end <= character && row + 1 < lengths.size();)
        end += count(lengths[++row]);
    return place.row + row;
}

// --- Edits

void WrappedRows::edit(TextEdit const& edit) {
    if (blocks_.empty()) return reset();
    Place const place = find(&Place::start, edit.index);
    if (!editRows(place, edit)) editBlocks(place, edit);
}

/// Puts other blocks in the place of those that the edit touches.
void WrappedRows::editBlocks(Place const& place, TextEdit const& edit) {
    std::size_t const removedTo = edit.index + edit.removed;
    std::size_t next = place.block;
    std::size_t end = place.start;
    while (next < blocks_.size() && (next == place.block || end < removedTo))
        end += blocks_[next++].characters;
    std::vector<Block> fresh;
    append(fresh, place.start, end - edit.removed + edit.inserted.size());
    exchange(place.block, next - place.block, std::move(fresh));
    // A word may move up, into rows of blocks above.
    Place above = place;
    for (std::size_t rows = 0;
         above.block > 0 && !isLineStart(above.start) &&
         (rows < rowsBack || (isInWord(above.start) && place.start - above.start <= measuredAhead));) {
        above = find(&Place::block, above.block - 1);
        rows += blocks_[above.block].rows;
        unsettle(above.block);
    }
}

/// Breaks rows anew in one settled block, from above the edit until a row begins where one did before. False
/// when that is not enough.
bool WrappedRows::editRows(Place const& place, TextEdit const& edit) {
    Block const& block = blocks_[place.block];
    if (block.state != State::settled || block.characters > 4 * blockLength_ ||
        edit.inserted.size() > blockLength_ || edit.index + edit.removed > endOf(place))
        return false;
    Lengths const& old = block.lengths;
    std::size_t row = 0;
    std::size_t at = place.start;
    while (row + 1 < old.size() && at + count(old[row]) <= edit.index) at += count(old[row++]);
    std::size_t const edited = row;
    while (row > 0 && !isLineStart(at) &&
           (edited - row < rowsBack || (isInWord(at) && edit.index - at <= measuredAhead)))
        at -= count(old[--row]);
    if (row == 0 && !isLineStart(at)) return false;

    std::size_t const end = endOf(place) - edit.removed + edit.inserted.size();
    bool const isOpen = end < document_.length() && !isLineStart(end);
    std::size_t const stop = isOpen ? std::min(document_.length(), end + lookLength) : end;
    Lengths lengths(old.begin(), old.begin() + static_cast<std::ptrdiff_t>(row));
    // The old row that is compared, and where it begins now; up to the edit none is.
    std::size_t same = row;
    std::size_t sameStart = at + edit.inserted.size();
    std::size_t const compared = edit.index + edit.inserted.size() + edit.removed;
    std::size_t before = at;
    for (std::size_t size = editWindow; at < end; size = std::min(2 * size, window)) {
        std::size_t const known = lengths.size();
        wrapNext(at, before, stop, size, lengths);
        for (std::size_t i = known; i < lengths.size(); ++i) {
            before = at;
            at += count(lengths[i]);
            while (same < old.size() && (sameStart < compared || sameStart < at + edit.removed))
                sameStart += count(old[same++]);
            bool const meets = same < old.size() && sameStart == at + edit.removed && at <= end;
            if (!meets && at < end) continue;
            lengths.resize(i + 1);
            if (meets)
                lengths.insert(lengths.end(), old.begin() + static_cast<std::ptrdiff_t>(same), old.end());
            if (meets) at = end;
            break;
        }
    }
    if (at == stop && stop != end && stop < document_.length()) return false;
    if (at > end) lengths.pop_back();
    if (lengths.empty()) return false;
    blocks_[place.block].characters = end - place.start;
    take(place, std::move(lengths), State::settled);
    balance(place.block);
    return true;
}

/// Divides a wrapped block that has become too large, and joins small ones.
void WrappedRows::balance(std::size_t index) {
    Block const& block = blocks_[index];
    if (block.characters > 2 * blockLength_ && block.lengths.size() > 1)
        exchange(index, 1, divided(block.lengths, block.state));
    if (index + 1 == blocks_.size()) return;
    Block const& next = blocks_[index + 1];
    if (block.characters > blockLength_ / 8 || next.characters > blockLength_) return;
    if (block.state != State::settled || block.characters > 4 * blockLength_ || next.state != State::settled)
        return;
    Lengths both = block.lengths;
    both.insert(both.end(), next.lengths.begin(), next.lengths.end());
    exchange(index, 2, divided(both, State::settled));
}

std::vector<WrappedRows::Block> WrappedRows::divided(Lengths const& lengths, State state) const {
    std::vector<Block> parts;
    for (std::uint32_t const length : lengths) {
        if (parts.empty() || parts.back().characters > blockLength_ + blockLength_ / 8) parts.emplace_back();
        Block& part = parts.back();
        part.state = state;
        part.characters += count(length);
        part.lineFeeds += length & lineFeedBit ? 1 : 0;
        part.lengths.push_back(length);
        ++part.rows;
    }
    return parts;
}

} // namespace wainscot
