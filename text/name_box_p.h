#pragma once

#include "foundation/makers.h"
#include "text/text_box.h"

namespace wainscot {

/// The box in which the name of something is edited in its place: Return, leaving it and a press elsewhere
/// take the name, Escape takes it back.
class NameBox final : public TextBox {
public:
    NameBox(Text const& name, Glib::FontDesc const& font, Palette const& palette, NameEdited ended);

    int handleKeyboardEvent(int keyCode) override;
    void handleKbdFocus() override;

protected:
    void handlePressElsewhere() override;

private:
    /// Told once; it may destroy everything.
    void tellEnd(std::optional<Text> const& name);

    NameEdited ended_;
};

} // namespace wainscot
