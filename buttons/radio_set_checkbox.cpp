#include "buttons/radio_set_checkbox.h"

#include "foundation/effects.h"

namespace wainscot {

RadioSetCheckbox::InitArgs::InitArgs(UIString text, bool isTicked, unsigned short w, unsigned short h)
    : Checkbox::InitArgs(std::move(text), isTicked, w, h) {
    appearance = roundTickBox;
}

RadioSetCheckbox::InitArgs::InitArgs(UIString text, bool isTicked, XY<int> const& size)
    : InitArgs(std::move(text), isTicked) {
    setSize(size);
}

RadioSetCheckbox::RadioSetCheckbox(InitArgs const& args) : Checkbox(args) {}

RadioSetCheckbox::RadioSetCheckbox(InitArgs const& args, CheckboxRadioSetBase& set) : RadioSetCheckbox(args) {
    set.addCheckbox(this);
}

RadioSetCheckbox::~RadioSetCheckbox() = default;

void RadioSetCheckbox::setBoldWhenTicked(bool bold) {
    changeSetting(*this, boldWhenTicked_, bold, Effect::paint);
}

void RadioSetCheckbox::setTextColourWhenTicked(Colour const& colour) {
    changeSetting(*this, colourWhenTicked_, colour, Effect::paint);
}

Colour RadioSetCheckbox::getTextColour() const {
    return colourWhenTicked_ && isTicked() && isActive() ? *colourWhenTicked_ : Checkbox::getTextColour();
}

Glib::FontDesc RadioSetCheckbox::getTextFont() const {
    Glib::FontDesc font = Checkbox::getTextFont();
    if (boldWhenTicked_ && isTicked()) font.style |= Glib::eFontBold;
    return font;
}

} // namespace wainscot
