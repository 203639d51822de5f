#pragma once

#include "foundation/val_widget.h"
#include "host/objects/description.h"

namespace wainscot {

/// A widget that can be bound to data: `Base` is what it is on the screen, `Value` its value face, a
/// `ValWidget<T>`. It leaves its data when it is destroyed, at once.
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
