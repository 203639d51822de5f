#pragma once

#include "foundation/titled_widget.h"
#include "menus/combo_box.h"
#include "menus/drop_down_menu_button.h"

namespace wainscot {

/// A combo box with a title before it.
class TitledComboBox : public Titled<ComboBox> {
public:
    TitledComboBox(UIString const& title, ComboBox::InitArgs const& args,
                   GlobCreationInfo const& size = {0, 0})
        : Titled(title, std::make_unique<ComboBox>(args), size) {}
};

/// A drop-down with a title before it.
class TitledMenuButtonPlain : public Titled<DropDownMenuButton> {
public:
    TitledMenuButtonPlain(UIString const& title, DropDownMenuButton::InitArgs const& args,
                          GlobCreationInfo const& size = {0, 0})
        : Titled(title, std::make_unique<DropDownMenuButton>(args), size) {}
};

} // namespace wainscot
