#pragma once

#include "foundation/val_server.h"
#include "menus/model/menu_data.h"

namespace wainscot {

/// The items of a drop-down, and which of them is selected. The value of the server is the logical index of
/// the selected item, at first 0; -1 stands for none. Items added or removed do not change it.
class WAINSCOT_API DropDownMenuData : public MenuData, public ValServer<int> {
public:
    DropDownMenuData() = default;
    explicit DropDownMenuData(std::vector<MenuItem> items) : MenuData(std::move(items)) {}
    ~DropDownMenuData() override;
    using ValServer<int>::operator=;

    /// Selects an item; it need not be active, and may be selected already. With `notify` the observers are
    /// told before and after, without the guard being asked; then the item's callbacks are run, as they were
    /// when it was selected, unless the data died meanwhile. A command item is never selected, and only its
    /// callbacks are run. False = refused: no such item, no logical index, one beyond `maxSelected`, or a
    /// command without `notify`.
    bool setSelectedItemPhysical(unsigned short item, bool notify);
    /// Selects nothing.
    void clearSelection(bool notify);

    /// The logical index; -1 when nothing is selected.
    short getSelectedItem() const;
    /// `none` when nothing is selected, or when the list has become too short.
    unsigned short getSelectedItemPhysical() const;
    /// The full label; empty when nothing is selected.
    LightweightString<wchar_t> getSelectedItemNameW() const;

private:
    /// False when it died meanwhile.
    bool select(int logical, bool notify);
};

} // namespace wainscot
