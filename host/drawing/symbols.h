#pragma once

#include "host/base/lightweight_string.h"

namespace wainscot {

/// The symbols of the user interface: drawn as shapes, in any font and at any size, as wide as the font's
/// size.
namespace QvTTF {

enum eGlyph {
    eArrowUp = 1,
    eArrowDown = 2,
    eArrowLeft = 3,
    eArrowRight = 4,
    eChevronUp = 5,
    eChevronDown = 6,
    eChevronLeft = 7,
    eChevronRight = 8,
    eTick = 10,
    eCross = 11,
    ePlus = 12,
    eMinus = 13,
    eDot = 14,
    eSquare = 15,
    eRing = 16,
    eBranchClosed = 20,
    eBranchOpen = 21,
    eSortAscending = 22,
    eSortDescending = 23,
    eSubMenu = 24,
    ePin = 30,
    eMaximise = 31,
    eSearch = 32,
    eGrip = 33,
    ePlay = 34,
    eStar = 35,
    /// For a folding button: while it is up, and while it is down.
    eFoldClosed = 72,
    eFoldOpen = 73,
    /// For a button that opens a list.
    eDropDown = 102,
};

/// The private-use code point of glyph 0; the others follow.
inline constexpr wchar_t firstCodePoint = 0xF5000;
inline constexpr wchar_t codePointCount = 128;

} // namespace QvTTF

/// The string that draws one symbol; empty for an unknown number.
WAINSCOT_API LightweightString<wchar_t> getString(QvTTF::eGlyph glyph);

} // namespace wainscot
