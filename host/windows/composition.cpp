#include "host/windows/composition_p.h"

#include "host/drawing/uif_std.h"

namespace wainscot {

namespace {

/// In root coordinates; nothing when no text can be entered.
std::optional<IntBox> caretOf(Glob* holder) {
    if (!holder) return {};
    LifeGuard const life = holder->guard();
    std::optional<IntBox> const inside = holder->textCaret();
    if (!inside || !life.alive()) return {};
    return inside->translated(holder->globXYToScreenXY({0, 0}));
}

} // namespace

void Composition::show(Glob* holder, LightweightString<wchar_t> const& text, int caret) {
    std::optional<IntBox> const place = caretOf(holder);
    if (!place || text.isEmpty()) return end();
    holder_ = holder->idStamp();
    text_ = {text, {}, UifStd::getFont(), caret};
    note_.showOn(*place, text_, *holder);
}

void Composition::follow(Glob* holder) {
    std::optional<IntBox> const place = caretOf(holder);
    bool const isIts = place && holder->idStamp() == holder_;
    bool const wasInterrupted = note_.isShown() && !isIts;
    if (wasInterrupted) end();
    if (place == caret_ && !wasInterrupted) return;
    caret_ = place;
    // The window system drops what it was composing.
    if (wasInterrupted && place) backend_.setTextCaret(std::nullopt);
    backend_.setTextCaret(place);
    if (note_.isShown()) note_.showOn(*place, text_, *holder);
}

} // namespace wainscot
