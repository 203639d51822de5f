#include "host/backends/desktop/desktop_keys_p.h"
#include "host/events/key_codes.h"

#include <gmock/gmock.h>

using namespace wainscot;
using testing::ElementsAre;

namespace {

using Kind = InputEvent::Kind;

constexpr KeyTranslator::Origin origin{7, 100.0};

/// Plays keys as the window library reports them, and gives the results: presses as codes, releases as codes
/// in `released`.
class Keyboard {
public:
    Keyboard& press(SDL_Scancode scancode, SDL_Keycode symbol, unsigned modifiers = 0,
                    char const* text = nullptr) {
        keys.press({scancode, symbol, modifiers, repeat, altGr}, origin, events);
        if (text) keys.text(text, origin, events);
        keys.endOfInput();
        return *this;
    }
    Keyboard& release(SDL_Scancode scancode, unsigned modifiers = 0) {
        keys.release({scancode, 0, modifiers, false, altGr}, origin, events);
        return *this;
    }
    Keyboard& text(char const* utf8) {
        keys.text(utf8, origin, events);
        return *this;
    }
    std::vector<std::uint32_t> codes(Kind kind = Kind::keyPressed) const {
        std::vector<std::uint32_t> found;
        for (auto const& event : events)
            if (event.kind == kind) found.push_back(event.keyCode);
        return found;
    }

    KeyTranslator keys;
    std::vector<InputEvent> events;
    bool altGr = false;
    bool repeat = false;
};

std::uint32_t pressed(SDL_Scancode scancode, SDL_Keycode symbol, unsigned modifiers,
                      char const* text = nullptr) {
    Keyboard keyboard;
    keyboard.press(scancode, symbol, modifiers, text);
    return keyboard.events.size() == 1 ? keyboard.events[0].keyCode : 0xDEADBEEF;
}

} // namespace

TEST(DesktopKeys, LettersComeFromTheirTextAndOnlyOnce) {
    Keyboard keyboard;
    keyboard.press(SDL_SCANCODE_A, SDLK_a, 0, "a").press(SDL_SCANCODE_B, SDLK_b, KMOD_LSHIFT, "B");
    keyboard.press(SDL_SCANCODE_C, SDLK_c, KMOD_CAPS, "C").press(SDL_SCANCODE_SPACE, SDLK_SPACE, 0, " ");
    keyboard.press(SDL_SCANCODE_F, 0x444, 0, "\xD1\x84");
    EXPECT_THAT(keyboard.codes(), ElementsAre('a', Key::shift | 'B', 'C', ' ', 0x444));
    EXPECT_EQ(keyboard.events.size(), 5u);
    EXPECT_EQ(keyboard.events[1].modifiers, Key::shift);
    EXPECT_EQ(keyboard.events[1].window, 7u);
}

TEST(DesktopKeys, EditingAndSpecialKeysHaveTheirCodes) {
    EXPECT_EQ(pressed(SDL_SCANCODE_BACKSPACE, SDLK_BACKSPACE, 0), 8u);
    EXPECT_EQ(pressed(SDL_SCANCODE_TAB, SDLK_TAB, KMOD_RSHIFT), 0x1000009u);
    EXPECT_EQ(pressed(SDL_SCANCODE_TAB, SDLK_TAB, KMOD_CTRL), 0x2000009u);
    EXPECT_EQ(pressed(SDL_SCANCODE_KP_ENTER, SDLK_KP_ENTER, KMOD_NUM), 13u);
    EXPECT_EQ(pressed(SDL_SCANCODE_ESCAPE, SDLK_ESCAPE, 0), 27u);
    EXPECT_EQ(pressed(SDL_SCANCODE_DELETE, SDLK_DELETE, KMOD_LSHIFT), 0x9000053u);
    EXPECT_EQ(pressed(SDL_SCANCODE_LEFT, SDLK_LEFT, KMOD_LCTRL | KMOD_LSHIFT), 0xB00004Bu);
    EXPECT_EQ(pressed(SDL_SCANCODE_F4, SDLK_F4, KMOD_LALT), 0xC00003Eu);
    EXPECT_EQ(pressed(SDL_SCANCODE_F12, SDLK_F12, KMOD_NUM | KMOD_CAPS | KMOD_SCROLL), 0x8000058u);
    EXPECT_EQ(pressed(SDL_SCANCODE_BACKSPACE, SDLK_BACKSPACE, KMOD_LALT), 0x4000008u);
}

TEST(DesktopKeys, ShortcutsUseTheUpperCaseLetterAndDropTheirText) {
    EXPECT_EQ(pressed(SDL_SCANCODE_Z, SDLK_z, KMOD_LCTRL), 0x200005Au);
    EXPECT_EQ(pressed(SDL_SCANCODE_Z, SDLK_z, KMOD_LCTRL | KMOD_LSHIFT), 0x300005Au);
    EXPECT_EQ(pressed(SDL_SCANCODE_1, SDLK_1, KMOD_LCTRL, "1"), 0x2000031u);
    EXPECT_EQ(pressed(SDL_SCANCODE_Q, SDLK_q, KMOD_RALT, "q"), 0x4000051u);
    EXPECT_EQ(pressed(SDL_SCANCODE_V, SDLK_v, KMOD_LGUI), 0x100056u);
    EXPECT_EQ(pressed(SDL_SCANCODE_SPACE, SDLK_SPACE, KMOD_LCTRL, " "), 0x2000020u);
    // The letter that the layout shows, wherever the key is; the US one where the layout has no Latin letter.
    EXPECT_EQ(pressed(SDL_SCANCODE_Y, SDLK_z, KMOD_LCTRL), 0x200005Au);
    EXPECT_EQ(pressed(SDL_SCANCODE_C, 0x441, KMOD_LCTRL), 0x2000043u);
    EXPECT_EQ(pressed(SDL_SCANCODE_SEMICOLON, 0xF6, KMOD_LCTRL), 0x20000D6u);
}

TEST(DesktopKeys, AltGrCharactersCarryNeitherCtrlNorAlt) {
    Keyboard keyboard;
    keyboard.altGr = true;
    keyboard.press(SDL_SCANCODE_Q, SDLK_q, KMOD_RALT, "@").press(SDL_SCANCODE_LEFT, SDLK_LEFT, KMOD_RALT);
    keyboard.press(SDL_SCANCODE_2, SDLK_2, KMOD_RALT | KMOD_LSHIFT, "\xC2\xB2");
    keyboard.press(SDL_SCANCODE_Q, SDLK_q, KMOD_LALT, "q");
    EXPECT_THAT(keyboard.codes(), ElementsAre('@', Key::left, Key::shift | 0xB2, Key::alt | 'Q'));
    EXPECT_EQ(keyboard.events[0].modifiers, 0u);
}

TEST(DesktopKeys, KeypadTypesUnderNumberLockOnly) {
    EXPECT_EQ(pressed(SDL_SCANCODE_KP_5, SDLK_KP_5, KMOD_NUM, "5"), 0x80000035u);
    EXPECT_EQ(pressed(SDL_SCANCODE_KP_PERIOD, SDLK_KP_PERIOD, KMOD_NUM, ","), 0x8000002Eu);
    EXPECT_EQ(pressed(SDL_SCANCODE_KP_PLUS, SDLK_KP_PLUS, 0, "+"), 0x8000002Bu);
    EXPECT_EQ(pressed(SDL_SCANCODE_KP_7, SDLK_KP_7, 0), Key::home);
    EXPECT_EQ(pressed(SDL_SCANCODE_KP_PERIOD, SDLK_KP_PERIOD, 0), Key::del);
    EXPECT_EQ(pressed(SDL_SCANCODE_KP_1, SDLK_KP_1, KMOD_NUM | KMOD_LSHIFT), Key::shift | Key::end);
    EXPECT_EQ(pressed(SDL_SCANCODE_KP_PERIOD, SDLK_KP_PERIOD, KMOD_LSHIFT, "."), 0x8000002Eu);
}

TEST(DesktopKeys, DeadKeysGiveOneCharacter) {
    Keyboard keyboard;
    keyboard.press(SDL_SCANCODE_EQUALS, 0).release(SDL_SCANCODE_EQUALS);
    EXPECT_TRUE(keyboard.events.empty());
    keyboard.press(SDL_SCANCODE_E, SDLK_e, 0, "\xC3\xA9");
    EXPECT_THAT(keyboard.codes(), ElementsAre(0xE9));
}

TEST(DesktopKeys, TextWithoutAKeyOfItsOwn) {
    Keyboard keyboard;
    keyboard.press(SDL_SCANCODE_C, SDLK_c, KMOD_LCTRL, "c").release(SDL_SCANCODE_C, KMOD_LCTRL);
    // Typed by an input method: one character is a key, more are composed text, in as many pieces as they
    // come.
    keyboard.text("\xE6\x97\xA5").text("\xE6\x97\xA5\xE6\x9C\xAC").text("ab");
    // A code point that would read as a Meta key.
    keyboard.text("\xF4\x80\x80\x80");
    EXPECT_THAT(keyboard.codes(), ElementsAre(Key::ctrl | 'C', 0x65E5));
    ASSERT_EQ(keyboard.events.back().kind, Kind::composedText);
    EXPECT_EQ(keyboard.events.back().text, LightweightString<wchar_t>(L"\u65e5\u672cab\U00100000"));
    EXPECT_EQ(keyboard.events.back().modifiers, 0u);
}

TEST(DesktopKeys, ControlCharactersAreNeverTyped) {
    Keyboard keyboard;
    keyboard.text("\x7F").text("\x03").text("\xC2\x85").text("");
    EXPECT_TRUE(keyboard.events.empty());
}

TEST(DesktopKeys, AReleaseHasTheNameOfItsPress) {
    Keyboard keyboard;
    keyboard.press(SDL_SCANCODE_LSHIFT, SDLK_LSHIFT, KMOD_LSHIFT);
    keyboard.press(SDL_SCANCODE_A, SDLK_a, KMOD_LSHIFT, "A").release(SDL_SCANCODE_LSHIFT);
    keyboard.release(SDL_SCANCODE_A).release(SDL_SCANCODE_A).release(SDL_SCANCODE_B);
    EXPECT_THAT(keyboard.codes(), ElementsAre(Key::shift | 'A'));
    EXPECT_THAT(keyboard.codes(Kind::keyReleased), ElementsAre('A'));
}

TEST(DesktopKeys, RepeatsAreMarkedAndHeldKeysForgottenOnReset) {
    Keyboard keyboard;
    keyboard.press(SDL_SCANCODE_A, SDLK_a, 0, "a");
    keyboard.repeat = true;
    keyboard.press(SDL_SCANCODE_A, SDLK_a, 0, "a").press(SDL_SCANCODE_DOWN, SDLK_DOWN, 0);
    EXPECT_FALSE(keyboard.events[0].repeat);
    EXPECT_TRUE(keyboard.events[1].repeat);
    EXPECT_TRUE(keyboard.events[2].repeat);
    keyboard.press(SDL_SCANCODE_LCTRL, SDLK_LCTRL, KMOD_LCTRL);
    EXPECT_EQ(keyboard.keys.modifiers(), Key::ctrl);
    keyboard.keys.reset();
    EXPECT_EQ(keyboard.keys.modifiers(), 0u);
    keyboard.release(SDL_SCANCODE_A);
    EXPECT_THAT(keyboard.codes(Kind::keyReleased), ElementsAre());
}
