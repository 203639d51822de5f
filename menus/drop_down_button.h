#pragma once

#include "host/events/dispatch_scope.h"
#include "menus/drop_down_button_base.h"

#include <functional>
#include <optional>

namespace wainscot {

/// A button that opens a `T`: any widget that can be a window of its own. A derived class makes it.
template <class T>
class DropDownButton : public DropDownButtonBase {
public:
    using DropDownButtonBase::DropDownButtonBase;

    /// The open pop-up; null when there is none.
    T* getDropDown() const { return static_cast<T*>(DropDownButtonBase::getDropDown()); }

protected:
    bool displayWidget(T* popUp) { return DropDownButtonBase::displayWidget(popUp); }
    T* makeDropDown() override = 0;
};

/// A button that makes its pop-up from stored arguments, each time it opens.
template <class T>
class DropDownButtonEx : public DropDownButton<T> {
public:
    using DropDownButton<T>::DropDownButton;

    /// The arguments of the next pop-up. Until they are set, nothing is opened.
    void setDropDownArgs(typename T::InitArgs const& args) { args_ = args; }
    /// A new pop-up; null without arguments.
    virtual T* generateDropDown() { return args_ ? new T(*args_) : nullptr; }

protected:
    T* makeDropDown() override { return generateDropDown(); }

private:
    std::optional<typename T::InitArgs> args_;
};

/// A pop-up that tells a function when it goes, for whatever reason, until it is detached from it.
template <class T>
class DropDownWidgetWithDtorNotify : public T {
public:
    using T::T;

    void setDtorNotify(std::function<void()> notify) { notify_ = std::move(notify); }
    bool isAttached() const { return static_cast<bool>(notify_); }
    /// From now on nobody is told.
    void detach() { notify_ = nullptr; }

    void handleDetached() override {
        auto const notify = std::exchange(notify_, nullptr);
        T::handleDetached();
        // Nothing may leave a destructor.
        if (notify) runHandler("DropDownWidgetWithDtorNotify", notify);
    }

private:
    std::function<void()> notify_;
};

} // namespace wainscot
