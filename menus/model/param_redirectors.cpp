#include "menus/model/param_redirectors.h"

#include "menus/model/menu_change.h"

namespace wainscot::GenericParam {

// The item, and with it the redirector, may go in the change: the parameter is kept.

int BoolRedirector::call(NotifyMsg const&) {
    Qv::Ptr<BoolParam> const param = param_;
    return param && param->changeByUser(!param->value());
}

int ActionRedirector::call(NotifyMsg const&) {
    Qv::Ptr<ActionParam> const param = param_;
    return param && param->fire();
}

int OptionRedirector::call(NotifyMsg const& message) {
    Qv::Ptr<OptionsParam> const param = param_;
    auto const change = message.payload().cast<MenuData::Change>();
    return param && change && param->changeByUser(change->option());
}

int IndexRedirector::call(NotifyMsg const&) {
    Qv::Ptr<OptionsParam> const param = param_;
    return param && param->changeByUser(index_);
}

} // namespace wainscot::GenericParam
