#pragma once

#include "host/base/lightweight_string.h"
#include "host/base/ptr.h"

namespace wainscot {

/// Plain data as the payload of a message.
template <class T>
class WrappedData final : public Qv::InternalRefCount {
public:
    explicit WrappedData(T value) : value_(std::move(value)) {}
    T const& value() const { return value_; }

private:
    T value_;
};

/// A payload that carries a copy of `value`.
template <class T>
Qv::Ptr<iObject> wrapData(T value) {
    return Qv::Ptr<iObject>(new WrappedData<T>(std::move(value)));
}

/// The data inside a payload made by `wrapData`; null when it carries something else.
template <class T>
T const* unwrapData(Qv::Ptr<iObject> const& payload) {
    auto const* wrapped = dynamic_cast<WrappedData<T> const*>(payload.get());
    return wrapped ? &wrapped->value() : nullptr;
}

/// A named notification with an optional code and payload.
class WAINSCOT_API NotifyMsg {
public:
    explicit NotifyMsg(LightweightString<char> name, Qv::Ptr<iObject> payload = {})
        : name_(std::move(name)), payload_(std::move(payload)) {}
    /// The name is the text in UTF-8.
    NotifyMsg(LightweightString<wchar_t> const& name, int code);
    explicit NotifyMsg(Qv::Ptr<iObject> payload) : payload_(std::move(payload)) {}

    LightweightString<char> const& name() const { return name_; }
    int code() const { return code_; }
    void setCode(int code) { code_ = code; }
    Qv::Ptr<iObject> const& payload() const { return payload_; }
    /// Hands out the inner name: never keep it across a call out.
    operator char const*() const { return name_.c_str(); }

private:
    LightweightString<char> name_;
    int code_ = 0;
    Qv::Ptr<iObject> payload_;
};

} // namespace wainscot
