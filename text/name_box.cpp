#include "host/events/dispatch_scope.h"
#include "host/objects/kbd_focus.h"
#include "text/name_box_p.h"

namespace wainscot {

namespace {

TextBox::InitArgs argsFor(LightweightString<wchar_t> const& name, Glib::FontDesc const& font,
                          Palette const& palette) {
    unsigned short const button = UifStd::getButtonHeight();
    TextBox::InitArgs args(button, button, name);
    args.palette = palette;
    args.font = font;
    return args;
}

} // namespace

NameBox::NameBox(Text const& name, Glib::FontDesc const& font, Palette const& palette, NameEdited ended)
    : TextBox(argsFor(name, font, palette)), ended_(std::move(ended)) {}

void NameBox::tellEnd(std::optional<Text> const& name) {
    if (auto const ended = std::exchange(ended_, nullptr)) ended(name);
}

int NameBox::handleKeyboardEvent(int keyCode) {
    auto const key = static_cast<std::uint32_t>(keyCode);
    bool const isEnd = key == Key::enter || key == Key::escape;
    if (!isEnd) return TextBox::handleKeyboardEvent(keyCode);
    DispatchScope const scope;
    tellEnd(key == Key::enter ? std::optional(getText()) : std::nullopt);
    return 1;
}

/// A button may need the name, and takes no focus. The box's own menu is not elsewhere.
void NameBox::handlePressElsewhere() {
    DispatchScope const scope;
    if (!contextMenu()) tellEnd(getText());
}

void NameBox::handleKbdFocus() {
    DispatchScope const scope;
    LifeGuard const life = guard();
    TextBox::handleKbdFocus();
    if (!life.alive()) return;
    if (get_kbd_focus() == this)
        selectAll();
    else
        tellEnd(getText());
}

} // namespace wainscot
