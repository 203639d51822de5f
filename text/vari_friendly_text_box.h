#pragma once

#include "text/text_box.h"

namespace wainscot {

/// The text box in a value box, whose value can also be dragged. While it is, it shows its text in another
/// colour, without a caret, and presses do not select.
class WAINSCOT_API VariFriendlyTextBox : public TextBox {
public:
    using TextBox::TextBox;

    void setDragging(bool dragging);
    bool isDragging() const { return isDragging_; }
    /// The ink of the text while its value is dragged; the accent until it is set.
    void setDraggingForeCol(Colour const& colour);

    MouseCursorID contextCursor(XY<int> const& place) const override;

protected:
    Colour shownTextColour() const override;
    bool selectsByPointer() const override { return !isDragging_; }

private:
    std::optional<Colour> draggingColour_;
    bool isDragging_ = false;
};

} // namespace wainscot
