#pragma once

#include "foundation/val_widget.h"
#include "host/objects/description.h"

namespace wainscot {

/// A widget that can be bound to data: `Base` is its class of widgets, `Value` a `ValWidget<T>`. It leaves
/// its data at once when it is destroyed.
template <class Value, class Base>
class Bindable : public Base, public Value {
public:
    using Base::Base;

    void setEnabledState(bool enabled) override { this->setActive(enabled); }
    void handleDetached() override {
        this->leaveDataAdaptor();
        Base::handleDetached();
    }
};

} // namespace wainscot
