#pragma once

#include "text/text_document.h"
#include "text/text_rules.h"

namespace wainscot {

/// A place in a text: the gap before the character of that index.
struct CharPos {
    constexpr CharPos(int character) : index(character) {}
    int index;
};

/// What a user does to a text, of one line or of many: typing, deleting, moving, selecting. It knows neither
/// keys nor windows. The answers say whether the text has changed.
class WAINSCOT_API TextEngine {
public:
    /// Both must outlive it.
    TextEngine(TextDocument& document, TextRules const& rules) : document_(document), rules_(rules) {}

    /// Inserts what may be entered of a text, in the place of the selection. One change for undo.
    bool paste(LightweightString<wchar_t> const& text);
    /// Whether one more character may be entered in the place of the selection.
    bool hasRoom() const;
    /// Selects the character behind the cursor, if there is one; the cursor stays.
    void selectNextCharacter();
    /// Takes characters away, from either place to the other. The cursor stands there then.
    bool erase(CharPos from, CharPos to, bool recordUndo);
    bool eraseSelection(bool recordUndo);
    /// Takes the selection away; without one the character or the word before, or behind, the cursor.
    bool eraseBackwards(bool byWord);
    bool eraseForwards(bool byWord);
    /// Another text, which can be taken back as one change. The cursor stands at the end.
    bool replaceAll(LightweightString<wchar_t> const& text);

    void selectAll();
    /// Selects from a place to the cursor's new place; the cursor alone where both are the same.
    void select(CharPos from, CharPos to);
    /// Takes the end of the selection to another place. Without an anchor it begins at the cursor.
    void extendTo(CharPos place);

private:
    /// What may be entered of a text into `length` characters.
    LightweightString<wchar_t> kept(LightweightString<wchar_t> const& text, std::size_t length) const;

    TextDocument& document_;
    TextRules const& rules_;
};

} // namespace wainscot
