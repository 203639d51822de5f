#pragma once

#include "host/drawing/long_text.h"
#include "host/objects/glob.h"

namespace wainscot::gallery {

/// One line of text of any length, far wider than its box: scrolled with the wheel, with the arrow keys,
/// Page Up, Page Down, Home and End, and by pressing or dragging on the bar below. Tells what part is shown.
class LongTextBox : public Glob {
public:
    explicit LongTextBox(std::wstring_view text);

    /// Lets the box begin at an x in the text; kept within the text.
    void scrollTo(int offset);
    /// "Characters 1 to 80 of 1000000".
    LightweightString<wchar_t> place() const;

    SizeNeeds sizeNeeds() const override;
    bool react(Event const& event) override;
    void reshape() override;
    void draw() override;
    void handleKbdFocus() override { makeDirty(); }
    void handleLookChange(LookChange changes) override;
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
    /// The x in the text at which the box begins.
    int offset_ = 0;
};

} // namespace wainscot::gallery
