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

/// The other keys of a box with many lines. Shift selects with those that move; other modifiers do not
/// matter where they are not named.
enum class LineAction {
    backspace,
    del,
    newLine,
    left,
    right,
    up,
    down,
    home,
    end,
    pageUp,
    pageDown,
    textStart,
    textEnd,
    scrollUp,
    scrollDown
};
inline constexpr KeyRow<LineAction> lineActionTable[] = {
    {Key::backspace, LineAction::backspace,
     "takes away what is selected, or the character before the cursor"},
    {Key::del, LineAction::del, "takes away what is selected, or the character behind the cursor"},
    {Key::enter, LineAction::newLine, "begins a new line"},
    {Key::left, LineAction::left, "to the character before"},
    {Key::right, LineAction::right, "to the character behind"},
    {Key::up, LineAction::up, "to the row above"},
    {Key::down, LineAction::down, "to the row below"},
    {Key::home, LineAction::home, "to the beginning of the row"},
    {Key::end, LineAction::end, "to the end of the row"},
    {Key::pageUp, LineAction::pageUp, "up by the rows that are seen"},
    {Key::pageDown, LineAction::pageDown, "down by the rows that are seen"},
    {Key::ctrl | Key::home, LineAction::textStart, "to the beginning of the text"},
    {Key::ctrl | Key::end, LineAction::textEnd, "to the end of the text"},
    {Key::ctrl | Key::up, LineAction::scrollUp, "scrolls up by a row; the cursor stays"},
    {Key::ctrl | Key::down, LineAction::scrollDown, "scrolls down by a row; the cursor stays"},
};
/// What a key does there, with its modifiers. Nothing for Ctrl+Return, which is left to the window.
WAINSCOT_API std::optional<LineAction> lineActionFor(std::uint32_t key);
/// Whether it changes the text.
constexpr bool isEdit(LineAction action) {
    return action <= LineAction::newLine;
}

/// The key that a text box takes another key for: digits of the keypad are characters, Meta with a letter of
/// a shortcut is Ctrl, and the older keys for cut, copy, paste and undo are those of today. All others stay
/// as they are.
WAINSCOT_API std::uint32_t translated(std::uint32_t key);

} // namespace wainscot::TextKeys
