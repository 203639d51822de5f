#pragma once

#include "host/base/life.h"
#include "host/base/ptr.h"

#include <utility>

namespace wainscot {

/// A counted object that can be called with one argument.
template <class Result, class Argument>
class iCallbackBase : public Qv::InternalRefCount {
public:
    /// Calls it; exceptions pass to the caller.
    virtual Result call(Argument const& argument) = 0;
};

namespace detail {

template <class Result, class Argument, class Function>
class FunctionCallback final : public iCallbackBase<Result, Argument> {
public:
    explicit FunctionCallback(Function function) : function_(std::move(function)) {}
    Result call(Argument const& argument) override { return function_(argument); }

private:
    Function function_;
};

} // namespace detail

/// A callback from any function object.
template <class Result, class Argument, class Function>
Qv::Ptr<iCallbackBase<Result, Argument>> makeCallback(Function function) {
    using Callback = detail::FunctionCallback<Result, Argument, Function>;
    return Qv::Ptr<iCallbackBase<Result, Argument>>(new Callback(std::move(function)));
}

/// A callback to a member function of an event handler; once the handler has died, calls answer `Result()`.
template <class Result, class Argument, class Handler>
Qv::Ptr<iCallbackBase<Result, Argument>> makeCallback(Handler* handler,
                                                      Result (Handler::*method)(Argument const&)) {
    return makeCallback<Result, Argument>(
        [handler, method, life = handler->guard()](Argument const& argument) {
            return life.alive() ? (handler->*method)(argument) : Result();
        });
}

} // namespace wainscot
