#include "host/events/key_names.h"

#include "host/base/convert.h"
#include "host/events/key_codes.h"

#include <cstdio>
#include <string>
#include <string_view>

namespace wainscot {

namespace {

struct Name {
    std::uint32_t code;
    std::string_view name;
};

/// In the order in which modifiers are written.
constexpr Name modifierNames[] = {
    {Key::ctrl, "Ctrl"}, {Key::alt, "Alt"}, {Key::shift, "Shift"}, {Key::meta, "Meta"}};

constexpr Name keyNames[] = {{Key::backspace, "Backspace"},
                             {Key::tab, "Tab"},
                             {Key::enter, "Return"},
                             {Key::escape, "Escape"},
                             {Key::space, "Space"},
                             {Key::home, "Home"},
                             {Key::up, "Up"},
                             {Key::pageUp, "Page Up"},
                             {Key::left, "Left"},
                             {Key::right, "Right"},
                             {Key::end, "End"},
                             {Key::down, "Down"},
                             {Key::pageDown, "Page Down"},
                             {Key::insert, "Insert"},
                             {Key::del, "Delete"},
                             {Key::menu, "Menu"},
                             {Key::f11, "F11"},
                             {Key::f12, "F12"}};

std::string squeezed(std::string_view text) {
    std::string result;
    for (char const c : text) {
        if (c == ' ' || c == '_') continue;
        result += c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    }
    return result;
}

std::string functionKeyName(unsigned number) {
    std::string name("F");
    name += std::to_string(number);
    return name;
}

std::string baseName(std::uint32_t base) {
    for (Name const& key : keyNames)
        if (key.code == base) return std::string(key.name);
    if (base >= Key::f1 && base <= Key::f10) return functionKeyName(base - Key::f1 + 1);
    bool const onKeypad = (base & Key::keypad) != 0;
    std::uint32_t const character = base & ~Key::keypad;
    bool const isCharacter = !Key::isSpecial(base) && character > Key::space && character < Key::meta;
    if (!isCharacter) {
        char number[16];
        std::snprintf(number, sizeof number, "0x%X", base);
        return number;
    }
    LightweightString<wchar_t> const text(1, static_cast<wchar_t>(character));
    std::string name(onKeypad ? "Keypad " : "");
    name += toUTF8(text).c_str();
    return name;
}

std::optional<std::uint32_t> namedKey(std::string_view text) {
    std::string const wanted = squeezed(text);
    for (Name const& key : keyNames)
        if (squeezed(key.name) == wanted) return key.code;
    for (unsigned number = 1; number <= 12; ++number)
        if (wanted == squeezed(functionKeyName(number))) return Key::function(static_cast<int>(number));
    return {};
}

std::optional<std::uint32_t> characterKey(std::string_view text) {
    LightweightString<wchar_t> const wide = fromUTF8(LightweightString<char>(text));
    if (wide.size() != 1 || wide[0] <= L' ' || static_cast<std::uint32_t>(wide[0]) >= Key::meta) return {};
    return static_cast<std::uint32_t>(wide[0]);
}

std::optional<std::uint32_t> modifierNamed(std::string_view text) {
    for (Name const& modifier : modifierNames)
        if (squeezed(modifier.name) == squeezed(text)) return modifier.code;
    return {};
}

} // namespace

LightweightString<char> keyToString(std::uint32_t code) {
    std::string text;
    std::uint32_t const modifiers = code & Key::modifierMask;
    for (Name const& modifier : modifierNames)
        if ((modifiers & modifier.code) != 0) text += std::string(modifier.name) + "+";
    text += baseName(Key::base(code));
    return LightweightString<char>(text.c_str(), text.size());
}

std::optional<std::uint32_t> keyFromString(LightweightString<char> const& text) {
    std::string_view rest = text.view();
    std::uint32_t modifiers = 0;
    for (std::size_t plus = rest.find('+'); plus != std::string_view::npos && plus + 1 < rest.size();
         plus = rest.find('+')) {
        std::optional<std::uint32_t> const modifier = modifierNamed(rest.substr(0, plus));
        if (!modifier) break;
        modifiers |= *modifier;
        rest.remove_prefix(plus + 1);
    }
    std::optional<std::uint32_t> key = namedKey(rest);
    if (!key) key = characterKey(rest);
    if (!key) return {};
    bool const isSmallLetter = *key >= 'a' && *key <= 'z';
    bool const isCommand = (modifiers & ~Key::shift) != 0;
    return modifiers | (isSmallLetter && isCommand ? *key - 'a' + 'A' : *key);
}

bool Glib::isPlainKey(unsigned int code) {
    constexpr unsigned int command = Key::ctrl | Key::alt | Key::meta;
    return (code & command) == 0 && !Key::isSpecial(code);
}

} // namespace wainscot
