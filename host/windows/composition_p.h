#pragma once

#include "host/windows/backend.h"
#include "host/windows/floating_note_p.h"

namespace wainscot {

/// Shows unfinished text of an input method at the caret of the holder of the keyboard focus, and tells the
/// window system where the caret is.
class WAINSCOT_API Composition {
public:
    explicit Composition(Backend& backend) : backend_(backend) {}

    /// `holder` has the focus; null when there is none. The text stays at the holder's caret, until an empty
    /// text comes or another object gets the focus.
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
