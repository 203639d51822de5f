#include "menus/model/param_redirectors.h"

#include "menus/model/menu_change.h"

namespace wainscot::GenericParam {

// The item, and with it the redirector, may go in the change: the parameter is kept.

int BoolRedirector::call(NotifyMsg const&) {
    Qv::Ptr<BoolParam> const param = param_;
    return param && param->changeByUser(!param->value());
}

void BoolRedirector::showIn(MenuItem& item) const {
    item.setCurOption(param_->value());
    item.setActive(param_->isActive());
}

int ActionRedirector::call(NotifyMsg const&) {
    Qv::Ptr<ActionParam> const param = param_;
    return param && param->fire();
}

void ActionRedirector::showIn(MenuItem& item) const {
    item.setActive(param_->isActive());
}

int OptionRedirector::call(NotifyMsg const& message) {
    Qv::Ptr<OptionsParam> const param = param_;
    auto const change = message.payload().cast<MenuData::Change>();
    return param && change && param->changeByUser(change->option());
}

void OptionRedirector::showIn(MenuItem& item) const {
    item.setCurOption(param_->value());
    item.setActive(param_->isActive());
}

int IndexRedirector::call(NotifyMsg const&) {
    Qv::Ptr<OptionsParam> const param = param_;
    return param && param->changeByUser(index_);
}

void IndexRedirector::showIn(MenuItem& item) const {
    MenuItem::Layout layout = item.getLayout();
    layout.isMarked = param_->value() == index_;
    item.setLayout(layout);
    item.setActive(param_->isActive());
}

} // namespace wainscot::GenericParam
