#include "host/backends/desktop/desktop_clipboard_p.h"

#include "host/backends/desktop/desktop_backend_p.h"
#include "host/backends/desktop/desktop_x11_p.h"
#include "host/base/diagnostics.h"

#include <SDL_clipboard.h>
#include <SDL_error.h>

namespace wainscot {

namespace {

char const* selectionOf(iClipboard::Kind kind) {
    return kind == iClipboard::Kind::clipboard ? "CLIPBOARD" : "PRIMARY";
}

} // namespace

bool DesktopClipboard::setText(Kind kind, LightweightString<char> const& utf8) {
    int const answer = kind == Kind::clipboard ? SDL_SetClipboardText(utf8.c_str())
                                               : SDL_SetPrimarySelectionText(utf8.c_str());
    if (answer != 0) Diagnostics::count("clipboard refused", SDL_GetError());
    // Only then the reader's connection sees the new owner.
    finishRequests(backend_.display());
    own_[static_cast<std::size_t>(kind)] = {utf8, answer == 0 ? reader_.owner(selectionOf(kind)) : 0};
    return answer == 0;
}

LightweightString<char> DesktopClipboard::text(Kind kind) {
    unsigned long const owner = reader_.owner(selectionOf(kind));
    if (owner == 0) return {};
    Own const& own = own_[static_cast<std::size_t>(kind)];
    if (owner == own.window) return own.text;
    std::optional<std::string> const read = reader_.read(selectionOf(kind));
    return read ? LightweightString<char>(std::string_view(*read)) : LightweightString<char>();
}

} // namespace wainscot
