#include "host/backends/desktop/desktop_keys_p.h"

#include "host/base/convert.h"
#include "host/events/key_codes.h"

namespace wainscot {

namespace {

/// From here on code points would collide with the modifier flags.
constexpr std::uint32_t firstUncodable = 0x100000;

constexpr std::uint32_t special(std::uint32_t scanCode) {
    return Key::special | scanCode;
}

bool isModifierKey(SDL_Scancode scancode) {
    switch (scancode) {
    case SDL_SCANCODE_LCTRL:
    case SDL_SCANCODE_RCTRL:
    case SDL_SCANCODE_LSHIFT:
    case SDL_SCANCODE_RSHIFT:
    case SDL_SCANCODE_LALT:
    case SDL_SCANCODE_RALT:
    case SDL_SCANCODE_LGUI:
    case SDL_SCANCODE_RGUI:
    case SDL_SCANCODE_MODE:
    case SDL_SCANCODE_CAPSLOCK:
    case SDL_SCANCODE_NUMLOCKCLEAR:
    case SDL_SCANCODE_SCROLLLOCK:
        return true;
    default:
        return false;
    }
}

/// The US layout's character on a key that is neither letter nor digit.
std::uint32_t usPunctuation(SDL_Scancode scancode) {
    switch (scancode) {
    case SDL_SCANCODE_SPACE:
        return ' ';
    case SDL_SCANCODE_MINUS:
        return '-';
    case SDL_SCANCODE_EQUALS:
        return '=';
    case SDL_SCANCODE_LEFTBRACKET:
        return '[';
    case SDL_SCANCODE_RIGHTBRACKET:
        return ']';
    case SDL_SCANCODE_BACKSLASH:
    case SDL_SCANCODE_NONUSBACKSLASH:
        return '\\';
    case SDL_SCANCODE_NONUSHASH:
        return '#';
    case SDL_SCANCODE_SEMICOLON:
        return ';';
    case SDL_SCANCODE_APOSTROPHE:
        return '\'';
    case SDL_SCANCODE_GRAVE:
        return '`';
    case SDL_SCANCODE_COMMA:
        return ',';
    case SDL_SCANCODE_PERIOD:
        return '.';
    case SDL_SCANCODE_SLASH:
        return '/';
    default:
        return 0;
    }
}

std::uint32_t usCharacter(SDL_Scancode scancode) {
    if (scancode >= SDL_SCANCODE_A && scancode <= SDL_SCANCODE_Z)
        return 'A' + static_cast<std::uint32_t>(scancode - SDL_SCANCODE_A);
    if (scancode >= SDL_SCANCODE_1 && scancode <= SDL_SCANCODE_9)
        return '1' + static_cast<std::uint32_t>(scancode - SDL_SCANCODE_1);
    return scancode == SDL_SCANCODE_0 ? '0' : usPunctuation(scancode);
}

bool isLatin(std::uint32_t character) {
    constexpr std::uint32_t multiply = 0xD7, divide = 0xF7, lastLatinLetter = 0x24F;
    if (character > 0x20 && character < 0x7F) return true;
    return character >= 0xC0 && character <= lastLatinLetter && character != multiply && character != divide;
}

std::uint32_t upperCase(std::uint32_t character) {
    bool const asciiLetter = character >= 'a' && character <= 'z';
    bool const latin1Letter = character >= 0xE0 && character <= 0xFE;
    return asciiLetter || latin1Letter ? character - 0x20 : character;
}

/// The keypad key's character; 0 for keys that have one under number lock only.
std::uint32_t keypadOperator(SDL_Scancode scancode) {
    switch (scancode) {
    case SDL_SCANCODE_KP_DIVIDE:
        return '/';
    case SDL_SCANCODE_KP_MULTIPLY:
        return '*';
    case SDL_SCANCODE_KP_MINUS:
        return '-';
    case SDL_SCANCODE_KP_PLUS:
        return '+';
    case SDL_SCANCODE_KP_EQUALS:
        return '=';
    case SDL_SCANCODE_KP_COMMA:
        return ',';
    default:
        return 0;
    }
}

struct KeypadKey {
    char character;
    std::uint32_t special;
};

/// Character with number lock and special code without, of the keys that have two meanings.
KeypadKey keypadKey(SDL_Scancode scancode) {
    switch (scancode) {
    case SDL_SCANCODE_KP_0:
        return {'0', Key::insert};
    case SDL_SCANCODE_KP_1:
        return {'1', Key::end};
    case SDL_SCANCODE_KP_2:
        return {'2', Key::down};
    case SDL_SCANCODE_KP_3:
        return {'3', Key::pageDown};
    case SDL_SCANCODE_KP_4:
        return {'4', Key::left};
    case SDL_SCANCODE_KP_5:
        return {'5', special(0x4C)};
    case SDL_SCANCODE_KP_6:
        return {'6', Key::right};
    case SDL_SCANCODE_KP_7:
        return {'7', Key::home};
    case SDL_SCANCODE_KP_8:
        return {'8', Key::up};
    case SDL_SCANCODE_KP_9:
        return {'9', Key::pageUp};
    case SDL_SCANCODE_KP_PERIOD:
        return {'.', Key::del};
    default:
        return {0, 0};
    }
}

/// Number lock makes the keypad type; Shift turns that round for as long as it is held.
bool keypadTypes(unsigned modifiers) {
    return ((modifiers & KMOD_NUM) != 0) != ((modifiers & KMOD_SHIFT) != 0);
}

/// The code of a press that does not depend on the text it types, without modifiers; 0 for a character key.
std::uint32_t codeWithoutText(KeyStroke const& stroke, std::uint32_t modifiers) {
    if (auto const code = functionKeyCode(stroke.scancode)) return code;
    if (auto const code = keypadCode(stroke.scancode, keypadTypes(stroke.modifiers))) return code;
    bool const shortcut = (modifiers & (Key::ctrl | Key::alt | Key::meta)) != 0;
    return shortcut ? shortcutCharacter(stroke.scancode, stroke.symbol) : 0;
}

bool isControlCharacter(wchar_t character) {
    auto const code = static_cast<std::uint32_t>(character);
    return code < 0x20 || (code >= 0x7F && code < 0xA0);
}

InputEvent makeEvent(InputEvent::Kind kind, std::uint32_t modifiers, KeyTranslator::Origin const& origin) {
    InputEvent event;
    event.kind = kind;
    event.window = origin.window;
    event.time = origin.time;
    event.modifiers = modifiers;
    return event;
}

} // namespace

std::uint32_t keyModifiers(unsigned modifiers, bool rightAltIsAltGr) {
    unsigned const altKeys = rightAltIsAltGr ? KMOD_LALT : KMOD_ALT;
    return (modifiers & KMOD_SHIFT ? Key::shift : 0) | (modifiers & KMOD_CTRL ? Key::ctrl : 0) |
           (modifiers & altKeys ? Key::alt : 0) | (modifiers & KMOD_GUI ? Key::meta : 0);
}

std::uint32_t functionKeyCode(SDL_Scancode scancode) {
    if (scancode >= SDL_SCANCODE_F1 && scancode <= SDL_SCANCODE_F12)
        return Key::function(scancode - SDL_SCANCODE_F1 + 1);
    if (scancode >= SDL_SCANCODE_F13 && scancode <= SDL_SCANCODE_F24)
        return special(0x64 + static_cast<std::uint32_t>(scancode - SDL_SCANCODE_F13));
    switch (scancode) {
    case SDL_SCANCODE_BACKSPACE:
        return Key::backspace;
    case SDL_SCANCODE_TAB:
        return Key::tab;
    case SDL_SCANCODE_RETURN:
    case SDL_SCANCODE_RETURN2:
    case SDL_SCANCODE_KP_ENTER:
        return Key::enter;
    case SDL_SCANCODE_ESCAPE:
        return Key::escape;
    case SDL_SCANCODE_HOME:
        return Key::home;
    case SDL_SCANCODE_UP:
        return Key::up;
    case SDL_SCANCODE_PAGEUP:
        return Key::pageUp;
    case SDL_SCANCODE_LEFT:
        return Key::left;
    case SDL_SCANCODE_RIGHT:
        return Key::right;
    case SDL_SCANCODE_END:
        return Key::end;
    case SDL_SCANCODE_DOWN:
        return Key::down;
    case SDL_SCANCODE_PAGEDOWN:
        return Key::pageDown;
    case SDL_SCANCODE_INSERT:
        return Key::insert;
    case SDL_SCANCODE_DELETE:
        return Key::del;
    case SDL_SCANCODE_APPLICATION:
    case SDL_SCANCODE_MENU:
        return Key::menu;
    case SDL_SCANCODE_PRINTSCREEN:
        return special(0x37);
    case SDL_SCANCODE_PAUSE:
        return special(0x45);
    default:
        return 0;
    }
}

std::uint32_t keypadCode(SDL_Scancode scancode, bool numberLock) {
    if (auto const character = keypadOperator(scancode)) return Key::keypad | character;
    KeypadKey const key = keypadKey(scancode);
    return numberLock && key.character ? Key::keypad | static_cast<std::uint32_t>(key.character)
                                       : key.special;
}

std::uint32_t shortcutCharacter(SDL_Scancode scancode, SDL_Keycode symbol) {
    auto const character = static_cast<std::uint32_t>(symbol);
    return isLatin(character) ? upperCase(character) : usCharacter(scancode);
}

void KeyTranslator::press(KeyStroke const& stroke, Origin const& origin, std::vector<InputEvent>& input) {
    modifiers_ = keyModifiers(stroke.modifiers, stroke.rightAltIsAltGr);
    pending_ = SDL_SCANCODE_UNKNOWN;
    textOfLastPress_ = TextOfLastPress::expected;
    if (isModifierKey(stroke.scancode)) return;
    if (auto const code = codeWithoutText(stroke, modifiers_)) {
        textOfLastPress_ = TextOfLastPress::unwanted;
        // On the keypad Shift is part of the character.
        std::uint32_t const spent = (code & Key::keypad) != 0 ? Key::shift : 0;
        emitPress(stroke.scancode, code, modifiers_ & ~spent, stroke.repeat, origin, input);
        return;
    }
    pending_ = stroke.scancode;
    pendingRepeat_ = stroke.repeat;
}

void KeyTranslator::release(KeyStroke const& stroke, Origin const& origin, std::vector<InputEvent>& input) {
    modifiers_ = keyModifiers(stroke.modifiers, stroke.rightAltIsAltGr);
    auto const index = static_cast<std::size_t>(stroke.scancode);
    if (index >= held_.size() || held_[index] == 0) return;
    InputEvent event = makeEvent(InputEvent::Kind::keyReleased, modifiers_, origin);
    event.keyCode = held_[index] | modifiers_;
    held_[index] = 0;
    input.push_back(event);
}

void KeyTranslator::text(std::string_view utf8, Origin const& origin, std::vector<InputEvent>& input) {
    if (textOfLastPress_ == TextOfLastPress::unwanted) return;
    LightweightString<wchar_t> const text = fromUTF8(LightweightString<char>(utf8));
    if (text.empty() || (text.size() == 1 && isControlCharacter(text[0]))) return;
    if (text.size() == 1 && static_cast<std::uint32_t>(text[0]) < firstUncodable)
        emitPress(pending_, static_cast<std::uint32_t>(text[0]), modifiers_ & Key::shift, pendingRepeat_,
                  origin, input);
    else
        emitText(text, origin, input);
    pending_ = SDL_SCANCODE_UNKNOWN;
    pendingRepeat_ = false;
}

void KeyTranslator::reset() {
    modifiers_ = 0;
    pending_ = SDL_SCANCODE_UNKNOWN;
    pendingRepeat_ = false;
    textOfLastPress_ = TextOfLastPress::expected;
    held_.fill(0);
}

void KeyTranslator::emitPress(SDL_Scancode scancode, std::uint32_t base, std::uint32_t modifiers, bool repeat,
                              Origin const& origin, std::vector<InputEvent>& input) {
    InputEvent event = makeEvent(InputEvent::Kind::keyPressed, modifiers, origin);
    event.keyCode = base | modifiers;
    event.repeat = repeat;
    input.push_back(event);
    auto const index = static_cast<std::size_t>(scancode);
    if (scancode != SDL_SCANCODE_UNKNOWN && index < held_.size()) held_[index] = base;
}

void KeyTranslator::emitText(LightweightString<wchar_t> const& text, Origin const& origin,
                             std::vector<InputEvent>& input) const {
    // Long texts arrive in pieces; these are joined.
    if (!input.empty() && input.back().kind == InputEvent::Kind::composedText &&
        input.back().window == origin.window) {
        input.back().text += text;
        return;
    }
    InputEvent event = makeEvent(InputEvent::Kind::composedText, 0, origin);
    event.text = text;
    input.push_back(event);
}

} // namespace wainscot
