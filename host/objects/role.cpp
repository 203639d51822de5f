#include "host/objects/role.h"

#include <algorithm>
#include <iterator>

namespace wainscot {

namespace {

struct Entry {
    Role role;
    LightweightString<char> name;
};

/// In the order of the roles.
constexpr Entry entries[] = {
    {Role::panel, "panel"},
    {Role::window, "window"},
    {Role::dialog, "dialog"},
    {Role::group, "group"},
    {Role::label, "label"},
    {Role::caption, "caption"},
    {Role::text, "text"},
    {Role::button, "button"},
    {Role::checkbox, "checkbox"},
    {Role::radioButton, "radiobutton"},
    {Role::radioGroup, "radiogroup"},
    {Role::slider, "slider"},
    {Role::scrollBar, "scrollbar"},
    {Role::scrollArea, "scrollarea"},
    {Role::textBox, "textbox"},
    {Role::textArea, "textarea"},
    {Role::numberBox, "numberbox"},
    {Role::codeEditor, "codeeditor"},
    {Role::menu, "menu"},
    {Role::menuItem, "menuitem"},
    {Role::menuSeparator, "separator"},
    {Role::dropDown, "dropdown"},
    {Role::list, "list"},
    {Role::listItem, "listitem"},
    {Role::table, "table"},
    {Role::columnHeading, "heading"},
    {Role::row, "row"},
    {Role::cell, "cell"},
    {Role::tree, "tree"},
    {Role::treeItem, "treeitem"},
    {Role::tabStrip, "tabstrip"},
    {Role::tab, "tab"},
    {Role::toolTip, "tooltip"},
    {Role::note, "note"},
    {Role::status, "status"},
    {Role::progress, "progress"},
    {Role::image, "image"},
    {Role::drawing, "drawing"},
    {Role::log, "log"},
    {Role::fileBrowser, "filebrowser"},
};

constexpr bool areInOrder() {
    for (std::size_t i = 0; i < std::size(entries); ++i)
        if (static_cast<std::size_t>(entries[i].role) != i) return false;
    return true;
}
static_assert(areInOrder());
static_assert(std::size(entries) == static_cast<std::size_t>(Role::fileBrowser) + 1);

} // namespace

LightweightString<char> roleName(Role role) {
    return entries[static_cast<std::size_t>(role)].name;
}

std::optional<Role> roleOf(LightweightString<char> const& word) {
    auto const* const found = std::find_if(std::begin(entries), std::end(entries),
                                           [&](Entry const& entry) { return entry.name == word; });
    return found == std::end(entries) ? std::nullopt : std::optional(found->role);
}

LightweightString<char> allRoleNames() {
    LightweightString<char> names;
    for (Entry const& entry : entries) names += (names.empty() ? "" : ", ") + entry.name;
    return names;
}

} // namespace wainscot
