#include "gallery/pages/watched_box.h"

#include "host/base/convert.h"

namespace wainscot::gallery {

LightweightString<wchar_t> WatchedBox::place() const {
    auto const number = [](std::size_t value) { return Qv::WStringFromInteger(static_cast<int>(value)); };
    auto const selection = getSelection();
    LightweightString<wchar_t> text = L"Cursor " + Qv::WStringFromInteger(getCursorPosition()) + L" of " +
                                      number(document().length()) + L", ";
    if (selection.start() < 0 || selection.start() == selection.end()) return text + L"nothing selected";
    return text + L"selected " + Qv::WStringFromInteger(selection.start()) + L" to " +
           Qv::WStringFromInteger(selection.end());
}

int WatchedBox::handleKeyboardEvent(int keyCode) {
    LifeGuard const life = guard();
    int const answer = TextBox::handleKeyboardEvent(keyCode);
    tell(life);
    return answer;
}

void WatchedBox::handleKbdFocus() {
    LifeGuard const life = guard();
    TextBox::handleKbdFocus();
    tell(life);
}

bool WatchedBox::pressBegan(Event const& event) {
    LifeGuard const life = guard();
    bool const isTaken = TextBox::pressBegan(event);
    tell(life);
    return isTaken;
}

void WatchedBox::pressMoved(Event const& event) {
    LifeGuard const life = guard();
    TextBox::pressMoved(event);
    tell(life);
}

void WatchedBox::pressEnded(PressEnd how) {
    LifeGuard const life = guard();
    TextBox::pressEnded(how);
    tell(life);
}

} // namespace wainscot::gallery
