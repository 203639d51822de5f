#include "host/base/letter_case.h"

#include <algorithm>
#include <cwctype>

namespace wainscot {

namespace {

bool isSameLetter(wchar_t a, wchar_t b) {
    return std::towlower(static_cast<wint_t>(a)) == std::towlower(static_cast<wint_t>(b));
}

} // namespace

bool isSameText(std::wstring_view a, std::wstring_view b) {
    return std::ranges::equal(a, b, isSameLetter);
}

bool beginsWithText(std::wstring_view text, std::wstring_view start) {
    return isSameText(text.substr(0, start.size()), start);
}

bool holdsText(std::wstring_view text, std::wstring_view part) {
    return part.empty() ||
           std::search(text.begin(), text.end(), part.begin(), part.end(), isSameLetter) != text.end();
}

wchar_t largeLetter(wchar_t letter) {
    return static_cast<wchar_t>(std::towupper(static_cast<wint_t>(letter)));
}

} // namespace wainscot
