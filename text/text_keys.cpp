#include "text/text_keys.h"

namespace wainscot::TextKeys {

namespace {

constexpr std::uint32_t firstOfKeypad = 0x2A;
constexpr std::uint32_t lastOfKeypad = 0x39;

struct Pair {
    std::uint32_t from;
    std::uint32_t to;
};
constexpr Pair olderKeys[] = {
    {Key::shift | Key::del, Key::ctrl | 'X'},
    {Key::shift | Key::insert, Key::ctrl | 'V'},
    {Key::ctrl | Key::insert, Key::ctrl | 'C'},
    {Key::alt | Key::backspace, Key::ctrl | 'Z'},
};

/// The same with a capital letter.
constexpr std::uint32_t withCapital(std::uint32_t key) {
    std::uint32_t const letter = Key::base(key);
    return letter >= 'a' && letter <= 'z' ? key - ('a' - 'A') : key;
}

} // namespace

std::optional<Shortcut> shortcutFor(std::uint32_t key) {
    return actionFor(shortcutTable, withCapital(key));
}

std::optional<LineAction> lineActionFor(std::uint32_t key) {
    std::uint32_t const base = Key::base(key);
    if ((key & Key::ctrl) == 0) return actionFor(lineActionTable, base);
    if (base == Key::enter) return std::nullopt;
    auto const withCtrl = actionFor(lineActionTable, base | Key::ctrl);
    return withCtrl ? withCtrl : actionFor(lineActionTable, base);
}

std::uint32_t translated(std::uint32_t key) {
    std::uint32_t const character = key & ~Key::keypad;
    bool const isOnKeypad = (key & Key::keypad) != 0;
    if (isOnKeypad && character >= firstOfKeypad && character <= lastOfKeypad) return character;
    for (Pair const& pair : olderKeys)
        if (pair.from == key) return pair.to;
    std::uint32_t const withCtrl = (key & ~Key::meta) | Key::ctrl;
    bool const isMetaAlone = (key & Key::modifierMask) == Key::meta;
    return isMetaAlone && shortcutFor(withCtrl) ? withCtrl : key;
}

} // namespace wainscot::TextKeys
