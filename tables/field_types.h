#pragma once

namespace wainscot {

/// What kind of value a cell of a table holds. The code is a character; which editor a cell gets depends on
/// it.
struct DBFieldTypes {
    enum eType : int {
        eNone = 0,
        eText = 'u',
        eTextToo = 'a',
        eTextAlso = 'A',
        eFraction = 'f',
        eWhole = 'n',
        eDateAndTime = 'M',
        eDate = 'd',
        eTime = 'D',
        eChoice = 'w',
        eChoices = 'W',
        eBoolean = 'b',
        eTimecode = 't',
        eWebLink = 'U',
        eNotes = 'm',
        eHTML = 'h',
        eLines = 'S',
        eTable = 'B',
    };
};

} // namespace wainscot
