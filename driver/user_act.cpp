#include "driver/user_act.h"

#include "host/base/convert.h"
#include "host/events/pointer_state.h"

#include <array>
#include <sstream>
#include <string>

namespace wainscot {

namespace {

using Button = InputEvent::Button;
using Kind = UserAct::Kind;

struct KindName {
    Kind kind;
    char const* name;
};
constexpr KindName kindNames[] = {{Kind::move, "move"},   {Kind::press, "press"}, {Kind::release, "release"},
                                  {Kind::wheel, "wheel"}, {Kind::key, "key"},     {Kind::repeat, "repeat"},
                                  {Kind::hold, "hold"},   {Kind::wait, "wait"}};

struct ButtonName {
    Button button;
    char const* name;
};
constexpr ButtonName buttonNames[] = {
    {Button::left, "left"}, {Button::middle, "middle"}, {Button::right, "right"}};

bool hasPlace(Kind kind) {
    return kind == Kind::move;
}

bool hasButton(Kind kind) {
    return kind == Kind::press || kind == Kind::release;
}

bool hasAmount(Kind kind) {
    return kind != Kind::move && kind != Kind::release;
}

bool readButton(std::istream& words, Button& button) {
    std::string name;
    words >> name;
    for (ButtonName const& known : buttonNames)
        if (name == known.name) {
            button = known.button;
            return true;
        }
    return false;
}

/// What follows the name of the kind, and nothing else.
bool readRest(std::istream& words, UserAct& act) {
    if (hasPlace(act.kind)) words >> act.place.x >> act.place.y;
    if (hasButton(act.kind) && !readButton(words, act.button)) return false;
    if (hasAmount(act.kind)) words >> act.amount;
    std::string more;
    return !words.fail() && !(words >> more);
}

void pressAgain(Driver& driver, std::uint32_t code) {
    driver.keyDown(code);
    driver.keyDown(code, true);
    driver.keyUp(code);
}

} // namespace

void UserAct::perform(Driver& driver) const {
    auto const code = static_cast<std::uint32_t>(amount);
    switch (kind) {
    case Kind::move:
        return static_cast<void>(driver.moveTo(place));
    case Kind::press:
        return static_cast<void>(driver.press(button, amount));
    case Kind::release:
        return static_cast<void>(driver.release(button));
    case Kind::wheel:
        return static_cast<void>(driver.wheelAt(glib_getMousePos(), amount));
    case Kind::key:
        return static_cast<void>(driver.key(code));
    case Kind::repeat:
        return pressAgain(driver, code);
    case Kind::hold:
        return driver.holdModifiers(code);
    case Kind::wait:
        return static_cast<void>(driver.advance(amount));
    }
}

LightweightString<char> UserAct::line() const {
    LightweightString<char> text;
    for (KindName const& known : kindNames)
        if (known.kind == kind) text = known.name;
    if (hasPlace(kind)) text += " " + StringFromInteger(place.x) + " " + StringFromInteger(place.y);
    for (ButtonName const& known : buttonNames)
        if (hasButton(kind) && known.button == button) text += LightweightString<char>(" ") + known.name;
    if (hasAmount(kind)) text += " " + StringFromInteger(amount);
    return text;
}

std::optional<UserAct> UserAct::fromLine(LightweightString<char> const& line) {
    std::istringstream words(line.c_str());
    std::string name;
    words >> name;
    for (KindName const& known : kindNames) {
        if (name != known.name) continue;
        UserAct act{.kind = known.kind};
        return readRest(words, act) ? std::optional(act) : std::nullopt;
    }
    return {};
}

LightweightString<char> writeActs(std::span<UserAct const> acts) {
    LightweightString<char> text;
    for (UserAct const& act : acts) text += act.line() + "\n";
    return text;
}

bool readActs(LightweightString<char> const& text, std::vector<UserAct>& acts) {
    std::istringstream lines(text.c_str());
    for (std::string line; std::getline(lines, line);) {
        if (line.find_first_not_of(" \t\r") == std::string::npos || line.front() == '#') continue;
        std::optional<UserAct> const act = UserAct::fromLine(line.c_str());
        if (!act) return false;
        acts.push_back(*act);
    }
    return true;
}

} // namespace wainscot
