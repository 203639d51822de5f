#pragma once

#include "menus/model/generic_param.h"
#include "menus/model/menu_item_action.h"

namespace wainscot::GenericParam {

// Actions of menu items that hand the user's choice to a parameter, which they share. The answer is 1 when
// the parameter took it, else 0: an inactive parameter takes nothing.

/// Choosing the item turns the value over.
class WAINSCOT_API BoolRedirector : public MenuItemAction {
public:
    explicit BoolRedirector(Qv::Ptr<BoolParam> param) : param_(std::move(param)) {}
    int call(NotifyMsg const& message) override;
    void showIn(MenuItem& item) const override;
    NotifierBase* source() const override { return param_.get(); }

private:
    Qv::Ptr<BoolParam> param_;
};

/// Choosing the item fires the action.
class WAINSCOT_API ActionRedirector : public MenuItemAction {
public:
    explicit ActionRedirector(Qv::Ptr<ActionParam> param) : param_(std::move(param)) {}
    int call(NotifyMsg const& message) override;
    void showIn(MenuItem& item) const override;
    NotifierBase* source() const override { return param_.get(); }

private:
    Qv::Ptr<ActionParam> param_;
};

/// Choosing an option of the item sets its index.
class WAINSCOT_API OptionRedirector : public MenuItemAction {
public:
    explicit OptionRedirector(Qv::Ptr<OptionsParam> param) : param_(std::move(param)) {}
    int call(NotifyMsg const& message) override;
    void showIn(MenuItem& item) const override;
    NotifierBase* source() const override { return param_.get(); }

private:
    Qv::Ptr<OptionsParam> param_;
};

/// Choosing the item sets one certain index.
class WAINSCOT_API IndexRedirector : public MenuItemAction {
public:
    IndexRedirector(Qv::Ptr<OptionsParam> param, unsigned int index)
        : param_(std::move(param)), index_(index) {}
    int call(NotifyMsg const& message) override;
    void showIn(MenuItem& item) const override;
    NotifierBase* source() const override { return param_.get(); }

private:
    Qv::Ptr<OptionsParam> param_;
    unsigned int index_;
};

} // namespace wainscot::GenericParam
