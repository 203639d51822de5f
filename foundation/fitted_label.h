#pragma once

#include "host/drawing/canvas_renderer.h"
#include "host/drawing/font.h"
#include "host/drawing/uif_std.h"
#include "host/services/ui_string.h"

namespace wainscot {

class Glob;
struct TooltipDetails;

/// The label of a control: a text in a font, cut to the room that there is, and shown whole as a tool tip
/// when it was cut. The standard font follows the user's text size until another one is set.
class WAINSCOT_API FittedLabel {
public:
    explicit FittedLabel(UIString text = {}, Glib::FontDesc const& font = UifStd::getFont())
        : text_(std::move(text)), font_(font), isStandardFont_(font == UifStd::getFont()) {}

    UIString const& text() const { return text_; }
    bool isEmpty() const { return text_.text().isEmpty(); }
    Glib::FontDesc const& font() const { return font_; }
    /// False when it is that already.
    bool setText(UIString const& text);
    bool setFont(Glib::FontDesc const& font);
    /// The same label with another text, or in another font.
    FittedLabel withText(UIString const& text) const;
    FittedLabel withFont(Glib::FontDesc const& font) const;
    /// To be called when the look has changed.
    void followLook();

    /// What the whole text needs, in pixels.
    int neededWidth() const;
    /// The text as it is drawn in so many pixels, and whether it was cut.
    LightweightString<wchar_t> fitted(int room, bool* wasCut = nullptr) const;
    /// Draws it in the middle of the height of `row`. What x is the place of depends on the alignment.
    void draw(CanvasRenderer& renderer, IntBox const& row, int x, int room, Colour const& colour,
              TextAlignment alignment = eAlignLeft) const;
    /// The whole text as the tip of all of the control. False when it was not cut.
    bool getTip(Glob const& control, int room, TooltipDetails& details) const;

private:
    UIString text_;
    Glib::FontDesc font_;
    bool isStandardFont_;
};

} // namespace wainscot
