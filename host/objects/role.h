#pragma once

#include "host/base/export.h"
#include "host/base/lightweight_string.h"

#include <cstdint>
#include <optional>

namespace wainscot {

/// What kind of thing a widget, or something in it, is to a person.
enum class Role : std::uint8_t {
    panel,
    window,
    dialog,
    /// A framed group of widgets.
    group,
    label,
    caption,
    /// A text that cannot be edited.
    text,
    button,
    checkbox,
    radioButton,
    radioGroup,
    slider,
    scrollBar,
    scrollArea,
    /// One line of text.
    textBox,
    /// Several lines of text.
    textArea,
    numberBox,
    codeEditor,
    menu,
    menuItem,
    menuSeparator,
    dropDown,
    list,
    listItem,
    table,
    columnHeading,
    row,
    cell,
    tree,
    treeItem,
    tabStrip,
    tab,
    toolTip,
    /// A small text above all windows.
    note,
    status,
    progress,
    image,
    drawing,
    log,
    fileBrowser,
};

/// The word that scripts and printed trees use: "button", "textbox" ...
WAINSCOT_API LightweightString<char> roleName(Role role);
/// The role of a word; nothing for unknown words.
WAINSCOT_API std::optional<Role> roleOf(LightweightString<char> const& word);
/// All words, for messages that say what is allowed: "panel, window, ...".
WAINSCOT_API LightweightString<char> allRoleNames();

} // namespace wainscot
