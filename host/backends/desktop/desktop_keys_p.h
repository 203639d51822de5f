#pragma once

#include "host/windows/input_event.h"

#include <SDL_keycode.h>
#include <SDL_scancode.h>

#include <array>
#include <string_view>
#include <vector>

namespace wainscot {

/// A key press or release as the window library reports it.
struct KeyStroke {
    /// The place of the key, independent of the layout.
    SDL_Scancode scancode = SDL_SCANCODE_UNKNOWN;
    /// What the layout puts on the key without modifiers.
    SDL_Keycode symbol = 0;
    /// The library's modifier bits.
    unsigned modifiers = 0;
    bool repeat = false;
    /// The layout uses the right Alt key to reach further characters.
    bool rightAltIsAltGr = false;
};

/// The `Key` flags of the modifiers that are held. Caps Lock and Num Lock do not count.
std::uint32_t keyModifiers(unsigned modifiers, bool rightAltIsAltGr);

/// The key code, without modifiers, of a key that types no character (Home, F1, Tab, Return ...); 0 for
/// others.
std::uint32_t functionKeyCode(SDL_Scancode scancode);

/// The key code, without modifiers, of a key of the numeric keypad; 0 for others.
std::uint32_t keypadCode(SDL_Scancode scancode, bool numberLock);

/// The character that names a key in shortcuts: the layout's character when it is Latin, else the US
/// layout's; letters in upper case. 0 for a key that types no character.
std::uint32_t shortcutCharacter(SDL_Scancode scancode, SDL_Keycode symbol);

/// Makes key events from presses, releases and typed texts, so that one key gives one event: a character key
/// waits for its text; the text of other keys is dropped.
class KeyTranslator {
public:
    /// Where an event belongs; copied into each event made.
    struct Origin {
        NativeWindowId window = 0;
        double time = 0.0;
    };

    void press(KeyStroke const& stroke, Origin const& origin, std::vector<InputEvent>& input);
    void release(KeyStroke const& stroke, Origin const& origin, std::vector<InputEvent>& input);
    void text(std::string_view utf8, Origin const& origin, std::vector<InputEvent>& input);
    /// To be called after all input that has arrived was translated: text that comes later belongs to no
    /// earlier key press.
    void endOfInput() { textOfLastPress_ = TextOfLastPress::expected; }
    /// All keys count as released, without events.
    void reset();

    /// The modifiers as of the last event.
    std::uint32_t modifiers() const { return modifiers_; }

private:
    enum class TextOfLastPress { expected, unwanted };

    void emitPress(SDL_Scancode scancode, std::uint32_t base, std::uint32_t modifiers, bool repeat,
                   Origin const& origin, std::vector<InputEvent>& input);
    void emitText(LightweightString<wchar_t> const& text, Origin const& origin,
                  std::vector<InputEvent>& input) const;

    std::uint32_t modifiers_ = 0;
    SDL_Scancode pending_ = SDL_SCANCODE_UNKNOWN;
    bool pendingRepeat_ = false;
    TextOfLastPress textOfLastPress_ = TextOfLastPress::expected;
    /// What each held key was reported as, so that its release has the same name.
    std::array<std::uint32_t, SDL_NUM_SCANCODES> held_{};
};

} // namespace wainscot
