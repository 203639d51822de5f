#pragma once

#include "foundation/menu_glob.h"
#include "menus/model/menu_data.h"

namespace wainscot {

/// The context menu of an object of the tree. A menu that is open keeps its items when the list is made anew.
class ContextMenu final : public iContextMenu {
public:
    static std::unique_ptr<iContextMenu> make();

    void clear() override;
    void add(MenuItem const& item) override;
    void remove(LightweightString<char> const& id) override;
    bool isEmpty() const override;
    Glob* open(MenuGlob& owner, XY<int> const& place) override;

private:
    Qv::Ptr<MenuData> items_ = Qv::makePtr<MenuData>();
};

} // namespace wainscot
