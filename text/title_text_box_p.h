#pragma once

#include "foundation/makers.h"
#include "text/text_box.h"

namespace wainscot {

/// The box in which the user edits the title of a panel.
class TitleTextBox final : public TextBox, public iTitleBox {
public:
    TitleTextBox(StandardPanel& panel, Text const& title, Glib::FontDesc const& font);

    Glob& glob() override { return *this; }
    Text titleText() const override { return getText(); }
    void setTitleText(Text const& text) override;
    void handleLookChange(LookChange changes) override;

private:
    /// That of the panel's title.
    void takeFont() override;
    static InitArgs argsFor(StandardPanel const& panel, Text const& title, Glib::FontDesc const& font);

    HandlerRef<StandardPanel> panel_;
};

} // namespace wainscot
