#pragma once

#include "menus/model/menu_data.h"

#include <utility>

namespace wainscot {

namespace detail {

template <class Function>
class FunctionSubMenuCreator final : public MenuItem::iSubMenuCreator, public Qv::InternalRefCount {
public:
    explicit FunctionSubMenuCreator(Function function) : function_(std::move(function)) {}
    MenuItem::SubMenu create(Glob& menu) override { return MenuItem::SubMenu{function_(menu)}; }

private:
    Function function_;
};

} // namespace detail

/// A creator of sub-menus from a function, which gets the asking menu and gives a `Qv::Ptr<MenuData>`
/// or a `MenuItem::SubMenu`.
template <class Function>
Qv::Ptr<MenuItem::iSubMenuCreator> makeSubMenuCreator(Function function) {
    return Qv::Ptr<MenuItem::iSubMenuCreator>(
        new detail::FunctionSubMenuCreator<Function>(std::move(function)));
}

} // namespace wainscot
