#include "host/backends/desktop/desktop_clipboard_p.h"

#include "host/base/diagnostics.h"

#include <SDL_clipboard.h>
#include <SDL_error.h>
#include <SDL_stdinc.h>

namespace wainscot {

bool DesktopClipboard::setText(Kind kind, LightweightString<char> const& utf8) {
    int const answer = kind == Kind::clipboard ? SDL_SetClipboardText(utf8.c_str())
                                               : SDL_SetPrimarySelectionText(utf8.c_str());
    if (answer != 0) Diagnostics::count("clipboard refused", SDL_GetError());
    return answer == 0;
}

LightweightString<char> DesktopClipboard::text(Kind kind) {
    char* const owned = kind == Kind::clipboard ? SDL_GetClipboardText() : SDL_GetPrimarySelectionText();
    LightweightString<char> const copy(owned ? owned : "");
    SDL_free(owned);
    return copy;
}

} // namespace wainscot
