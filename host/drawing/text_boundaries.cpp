#include "host/drawing/text_boundaries_p.h"

#include <algorithm>
#include <string>
#include <unicode/ubrk.h>

namespace wainscot::TextBoundaries {
namespace {

/// Below this, every character but the line feed after a carriage return begins a cluster.
constexpr std::uint32_t firstCombining = 0x300;

/// How far a cluster is looked for; a longer one is cut.
constexpr std::size_t neighbourhood = 64;

bool isPlain(wchar_t c) {
    return static_cast<std::uint32_t>(c) < firstCombining && c != 0xAD && c != 0xA9 && c != 0xAE;
}

bool isPlainStop(wchar_t before, wchar_t after) {
    return before != L'\r' || after != L'\n';
}

/// The text in UTF-16 for the boundary finder, with the indices of the original text.
struct Utf16 {
    std::u16string units;
    std::vector<std::size_t> indices;

    explicit Utf16(std::wstring_view text) {
        for (std::size_t i = 0; i < text.size(); ++i)
            append(validCodePoint(static_cast<std::uint32_t>(text[i])), i);
        indices.push_back(text.size());
    }

    void append(std::uint32_t c, std::size_t index) {
        if (c > 0xFFFF) {
            units.push_back(static_cast<char16_t>(0xD7C0 + (c >> 10)));
            indices.push_back(index);
            c = 0xDC00 + (c & 0x3FF);
        }
        units.push_back(static_cast<char16_t>(c));
        indices.push_back(index);
    }
};

UBreakIterator* openFinder(UBreakIteratorType type) {
    UErrorCode status = U_ZERO_ERROR;
    UBreakIterator* const made = ubrk_open(type, "en", nullptr, 0, &status);
    return U_SUCCESS(status) ? made : nullptr;
}

UBreakIterator* clusterFinder() {
    static UBreakIterator* const finder = openFinder(UBRK_CHARACTER);
    return finder;
}

UBreakIterator* wordFinder() {
    static UBreakIterator* const finder = openFinder(UBRK_WORD);
    return finder;
}

/// Marks the gaps of the text at which the finder finds no boundary; nothing without a finder.
void markStops(std::wstring_view text, std::vector<bool>& inside, UBreakIterator* finder = clusterFinder()) {
    Utf16 const converted(text);
    UErrorCode status = U_ZERO_ERROR;
    if (!finder) return;
    ubrk_setText(finder, converted.units.data(), static_cast<int32_t>(converted.units.size()), &status);
    if (U_FAILURE(status)) return;
    inside.assign(text.size() + 1, true);
    for (int32_t at = ubrk_first(finder); at != UBRK_DONE; at = ubrk_next(finder))
        inside[converted.indices[static_cast<std::size_t>(at)]] = false;
    inside.front() = inside.back() = false;
}

/// A flag is a pair of regional letters, counted from the beginning of a row of them: whether a place lies
/// inside a pair.
bool oddFlagsBefore(std::wstring_view text, std::size_t index) {
    constexpr std::size_t mostFlags = 4096;
    auto const isFlagLetter = [](wchar_t c) { return c >= 0x1F1E6 && c <= 0x1F1FF; };
    if (!isFlagLetter(text[index])) return false;
    std::size_t letters = 0;
    while (letters < std::min(index, mostFlags) && isFlagLetter(text[index - letters - 1])) ++letters;
    return letters % 2 != 0;
}

/// The start of a stretch before `index` from which clusters can be counted: a plain character, if there is
/// one near.
std::size_t safeStart(std::wstring_view text, std::size_t index) {
    std::size_t const least = index > neighbourhood ? index - neighbourhood : 0;
    std::size_t start = index > 0 ? index - 1 : 0;
    while (start > least && !isPlain(text[start])) --start;
    return start + (oddFlagsBefore(text, start) ? 1 : 0);
}

bool isStopInNeighbourhood(std::wstring_view text, std::size_t index) {
    std::size_t const start = safeStart(text, index);
    std::vector<bool> inside;
    markStops(text.substr(start, index - start + 1), inside);
    return inside.empty() || !inside[index - start];
}

} // namespace

bool isStop(std::wstring_view text, std::size_t index) {
    if (index == 0 || index >= text.size()) return true;
    wchar_t const before = text[index - 1];
    wchar_t const after = text[index];
    if (isPlain(before) && isPlain(after)) return isPlainStop(before, after);
    return isStopInNeighbourhood(text, index);
}

std::size_t nextStop(std::wstring_view text, std::size_t index) {
    if (index >= text.size()) return text.size();
    std::size_t const last = std::min(text.size(), index + neighbourhood);
    std::size_t next = index + 1;
    while (next < last && !isStop(text, next)) ++next;
    return next;
}

std::size_t previousStop(std::wstring_view text, std::size_t index) {
    index = std::min(index, text.size());
    if (index == 0) return 0;
    std::size_t const least = index > neighbourhood ? index - neighbourhood : 0;
    std::size_t previous = index - 1;
    while (previous > least && !isStop(text, previous)) --previous;
    return previous;
}

std::vector<bool> gapsInsideClusters(std::wstring_view text) {
    std::vector<bool> inside;
    bool const plain = std::all_of(text.begin(), text.end(), isPlain);
    if (!plain) {
        markStops(text, inside);
    } else if (std::size_t at = text.find(L"\r\n"); at != text.npos) {
        inside.assign(text.size() + 1, false);
        for (; at != text.npos; at = text.find(L"\r\n", at + 2)) inside[at + 1] = true;
    }
    if (std::find(inside.begin(), inside.end(), true) == inside.end()) inside.clear();
    return inside;
}

std::pair<std::size_t, std::size_t> wordAt(std::wstring_view text, std::size_t index) {
    if (text.empty()) return {0, 0};
    index = std::min(index, text.size());
    bool const isBehindWord =
        index > 0 && !isBlank(text[index - 1]) && (index == text.size() || isBlank(text[index]));
    if (isBehindWord || index == text.size()) --index;
    std::vector<bool> inside;
    markStops(text, inside, wordFinder());
    if (inside.empty()) return {index, index + 1};
    std::size_t end = index + 1;
    while (inside[index]) --index;
    while (inside[end]) ++end;
    return {index, end};
}

} // namespace wainscot::TextBoundaries
