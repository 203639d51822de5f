#pragma once

#include "host/drawing/font.h"
#include "host/objects/glob.h"

namespace wainscot {

/// What a floating note shows.
struct NoteText {
    LightweightString<wchar_t> text;
    /// Stands below the text, in fainter letters.
    LightweightString<wchar_t> more;
    Glib::FontDesc font;
    /// For unfinished text: it is underlined, with a caret before this character.
    int caret = -1;

    friend bool operator==(NoteText const&, NoteText const&) = default;
};

/// A small window with a text, above all others, that takes no input: tool tips, what is being dragged, text
/// that is being composed. It has at most one window, which is destroyed with this object.
class WAINSCOT_API FloatingNote {
public:
    FloatingNote() = default;
    ~FloatingNote() { hide(); }
    FloatingNote(FloatingNote const&) = delete;
    FloatingNote& operator=(FloatingNote const&) = delete;

    /// Shows a text beside a box in root coordinates (below it where there is room), wholly on its monitor;
    /// it belongs to the window of `owner` and is destroyed with it. An empty text hides it.
    void showBeside(IntBox const& anchor, NoteText const& text, Glob& owner);
    /// The same with the beginning of the text on the lower-left corner of the box.
    void showOn(IntBox const& box, NoteText const& text, Glob& owner);
    void hide();
    bool isShown() const { return glob_.get() != nullptr; }
    /// The shown object; null when there is none.
    Glob* glob() const { return glob_.get(); }

private:
    XY<int> prepare(NoteText const& text);
    void showAt(XY<int> place, NoteText const& text, Glob& owner);

    HandlerRef<Glob> glob_;
    NoteText text_;
    XY<int> place_;
};

} // namespace wainscot
