#pragma once

#include "host/drawing/long_text.h"
#include "text/text_document.h"

#include <optional>
#include <utility>

namespace wainscot {

/// Shows a text in one line of a box: where it begins, how far it is scrolled, and which place of the text
/// lies where. It shows the characters of a document or a mask, and a suffix behind them.
class TextLineView {
public:
    void setFont(Qv::Ptr<iFont> font);
    /// Shows a whole text, of which `length` characters belong to the document.
    void show(LightweightString<wchar_t> const& text, std::size_t length);
    /// The text has changed; `inserted` is shown for the new characters.
    void edit(TextEdit const& edit, LightweightString<wchar_t> const& inserted);

    /// Places the text in a box of that width, and scrolls by as little as shows the caret.
    void place(int width, int leftMargin, int rightMargin, TextAlignment alignment, int cursor);
    void resetScroll() { scroll_ = 0; }

    /// What differs from the last call, from left to right in the box; nothing where all is as before.
    struct Extent {
        int left;
        int right;
    };
    std::optional<Extent> takeChanged(int width, TextSelection const& selection);

    int textWidth() const { return shown_.width(); }
    int origin() const { return origin_; }
    void setOrigin(int origin) { origin_ = origin; }
    int scroll() const { return scroll_; }
    /// Where a gap lies, in text coordinates: from the left end of the text.
    int gapX(int index) const { return shown_.gapX(static_cast<std::size_t>(index)); }
    /// Where a gap lies on the screen, in the box.
    int displayX(int index) const { return gapX(index) + origin_ - scroll_; }
    /// The gap nearest to a place in the box.
    int indexAt(int displayX) const;

    /// Draws the text on a baseline, as far as it lies in `clip`, and what is selected in other colours.
    struct Colours {
        Colour text;
        Colour selectedText;
        Colour selection;
    };
    void draw(CanvasRenderer& renderer, XY<int> const& box, IntBox const& clip, int baseline,
              TextSelection const& selection, Colours const& colours) const;

private:
    /// What is selected, as boxes on the canvas, for a text that begins at `x`.
    std::vector<IntBox> selectedParts(TextSelection const& selection, int x, IntBox const& clip) const;

    Glib::LongText shown_;
    /// How many of the shown characters belong to the document.
    std::size_t length_ = 0;
    int origin_ = 0;
    int scroll_ = 0;

    /// As it was at the last `takeChanged`.
    struct Painted {
        int origin = 0;
        int scroll = 0;
        TextSelection selection;
    };
    Extent between(int from, int to) const;
    static std::optional<std::pair<int, int>> differing(TextSelection const& a, TextSelection const& b);

    Painted painted_;
    /// The first character that has changed since; -1 = none.
    int editedFrom_ = -1;
    bool isOther_ = true;
};

} // namespace wainscot
