#pragma once

#include "foundation/key_table.h"
#include "host/events/key_codes.h"

namespace wainscot::TextKeys {

/// The shortcuts of all text boxes.
enum class Shortcut { selectAll, copy, paste, cut, redo, undo };
inline constexpr KeyRow<Shortcut> shortcutTable[] = {
    {Key::ctrl | 'A', Shortcut::selectAll, "selects everything, or nothing where something is selected"},
    {Key::ctrl | 'C', Shortcut::copy, "copies what is selected, or everything"},
    {Key::ctrl | 'V', Shortcut::paste, "inserts the clipboard's text"},
    {Key::ctrl | 'X', Shortcut::cut, "copies and takes away what is selected, or everything"},
    {Key::ctrl | 'Y', Shortcut::redo, "makes again what was taken back"},
    {Key::ctrl | 'Z', Shortcut::undo, "takes back the last change; of typed text the last word"},
};
/// The shortcut of a key; letters count in both forms.
WAINSCOT_API std::optional<Shortcut> shortcutFor(std::uint32_t key);

/// The other keys of a box with one line, without their modifiers.
enum class Action { backspace, tab, enter, escape, home, left, right, end, del };
inline constexpr KeyRow<Action> actionTable[] = {
    {Key::backspace, Action::backspace, "takes away what is selected, or the character before the cursor"},
    {Key::del, Action::del, "takes away what is selected, or the character behind the cursor"},
    {Key::left, Action::left, "to the character before"},
    {Key::right, Action::right, "to the character behind"},
    {Key::home, Action::home, "to the beginning"},
    {Key::end, Action::end, "to the end"},
    {Key::enter, Action::enter, "ends editing"},
    {Key::escape, Action::escape, "brings back the text from before editing"},
    {Key::tab, Action::tab, "goes on to the next control"},
};

/// The key that a text box takes another key for: digits of the keypad are characters, Meta with a letter of
/// a shortcut is Ctrl, and the older keys for cut, copy, paste and undo are those of today. All others stay
/// as they are.
WAINSCOT_API std::uint32_t translated(std::uint32_t key);

} // namespace wainscot::TextKeys
