#pragma once

#include "host/drawing/long_text.h"
#include "host/objects/glob.h"

namespace wainscot::gallery {

/// One line of text of any length, far wider than its box: scrolled with the wheel, with the arrow keys,
/// Page Up, Page Down, Home and End, and by pressing or dragging on the bar below. Tells what part is shown.
class LongTextBox : public Glob {
public:
    LongTextBox(XY<int> size, std::wstring_view text);

    /// The x in the text at which the box begins; kept within the text.
    int offset() const { return offset_; }
    void scrollTo(int offset);
    /// "Characters 1 to 80 of 1000000".
    LightweightString<wchar_t> place() const;

    bool react(Event const& event) override;
    void reshape() override;
    void draw() override;
    void handleKbdFocus() override { makeDirty(); }
    void describe(GlobDescription& description) const override;

private:
    bool reactToMouse(Event const& event);
    bool reactToKey(Event const& event);
    int lineStep() const;
    int lastOffset() const;
    // All in its own coordinates.
    IntBox textBox() const;
    IntBox track() const;
    IntBox thumb() const;
    void scrollToThumbAt(int x);

    Glib::LongText text_;
    int offset_ = 0;
};

} // namespace wainscot::gallery
