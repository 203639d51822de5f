#pragma once

#include "buttons/checkbox_radio_set_base.h"

#include <optional>

namespace wainscot {

/// A member of a set of which one is chosen: a round box with a dot. Its label can be bold or of another
/// colour while it is chosen. Arrow keys choose the next member in their direction.
class WAINSCOT_API RadioSetCheckbox : public Checkbox {
public:
    class WAINSCOT_API InitArgs : public Checkbox::InitArgs {
    public:
        InitArgs(UIString text, bool isTicked, XY<int> const& size);
        explicit InitArgs(UIString text, bool isTicked = false, unsigned short w = 0, unsigned short h = 0);
    };

    explicit RadioSetCheckbox(InitArgs const& args);
    /// A member of a set from the start.
    RadioSetCheckbox(InitArgs const& args, CheckboxRadioSetBase& set);
    ~RadioSetCheckbox() override;

    /// How the label looks while it is the chosen one.
    void setBoldWhenTicked(bool bold);
    void setTextColourWhenTicked(Colour const& colour);

protected:
    Colour getTextColour() const override;
    Glib::FontDesc getTextFont() const override;

private:
    std::optional<Colour> colourWhenTicked_;
    bool boldWhenTicked_ = false;
};

} // namespace wainscot
