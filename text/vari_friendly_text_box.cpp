#include "text/vari_friendly_text_box.h"

#include "foundation/effects.h"

namespace wainscot {

void VariFriendlyTextBox::setDragging(bool dragging) {
    if (dragging == isDragging_) return;
    DispatchScope const scope;
    LifeGuard const life = guard();
    if (dragging) dropPress();
    if (!life.alive()) return;
    isDragging_ = dragging;
    if (TextCursor* const caret = getCaret()) caret->setVisible(!dragging);
    makeDirty();
}

void VariFriendlyTextBox::setDraggingForeCol(Colour const& colour) {
    changeSetting(*this, draggingColour_, colour, Effect::paint);
}

Colour VariFriendlyTextBox::shownTextColour() const {
    if (!isDragging_ || !isActive()) return TextBox::shownTextColour();
    return draggingColour_.value_or(getPalette().mark(eMarkAccent));
}

MouseCursorID VariFriendlyTextBox::contextCursor(XY<int> const& place) const {
    return isDragging_ ? sizeHorizontalCursor : TextBox::contextCursor(place);
}

} // namespace wainscot
