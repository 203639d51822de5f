#include "host/windows/composition.h"

#include "host/drawing/uif_std.h"

namespace wainscot {

namespace {

/// In root coordinates; nothing where no text can be entered.
std::optional<IntBox> caretOf(Glob* holder) {
    std::optional<IntBox> const inside = holder ? holder->textCaret() : std::nullopt;
    if (!inside) return {};
    return inside->translated(holder->globXYToScreenXY({0, 0}));
}

} // namespace

void Composition::show(Glob* holder, LightweightString<wchar_t> const& text, int caret) {
    std::optional<IntBox> const place = caretOf(holder);
    if (!place || text.isEmpty()) return end();
    note_.showOn(*place, {text, {}, UifStd::getFont(), caret}, *holder);
}

void Composition::follow(Glob* holder) {
    std::optional<IntBox> const place = caretOf(holder);
    if (place == caret_) return;
    caret_ = place;
    if (!place) end();
    backend_.setTextCaret(place);
}

} // namespace wainscot
