#pragma once

#include "host/windows/backend.h"
#include "host/windows/floating_note_p.h"

namespace wainscot {

/// Text that an input method has not finished: shows it at the caret of whoever has the keyboard focus, and
/// tells the window system where that is.
class WAINSCOT_API Composition {
public:
    explicit Composition(Backend& backend) : backend_(backend) {}

    /// `holder` has the focus; null when nobody has. An empty text ends the composition. It stays at the
    /// holder's caret, and ends when somebody else gets the focus.
    void show(Glob* holder, LightweightString<wchar_t> const& text, int caret);
    void end() { note_.hide(); }
    /// To be called when the caret or the focus may have moved.
    void follow(Glob* holder);

private:
    Backend& backend_;
    FloatingNote note_;
    NoteText text_;
    /// Whose text it is.
    IdStamp holder_;
    std::optional<IntBox> caret_;
};

} // namespace wainscot
