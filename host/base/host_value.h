#pragma once

#include "host/base/export.h"

#include <memory>
#include <utility>

namespace wainscot {

/// What all settings of a host have in common. User-interface thread only.
class WAINSCOT_API HostValueBase {
public:
    HostValueBase(HostValueBase const&) = delete;
    HostValueBase& operator=(HostValueBase const&) = delete;

    /// Brings every setting back to its start value: the host has gone.
    static void resetAll();

protected:
    using Reset = void (*)(HostValueBase& value);
    explicit constexpr HostValueBase(Reset reset) noexcept : reset_(reset) {}
    ~HostValueBase() = default;
    /// To be called before the value differs from the start value.
    void noteChange() {
        if (!isChanged_) joinChanged();
    }

private:
    void joinChanged();

    Reset reset_;
    HostValueBase* nextChanged_ = nullptr;
    bool isChanged_ = false;
};

/// A setting that belongs to the host: it returns to its start value when the host goes, so that the next
/// host inherits nothing. It can be read and set without a host too; the next host then finds what was set.
/// Reading costs no more than reading a variable. For objects with static storage only; the start value is
/// `T()`.
template <class T>
class HostValue final : public HostValueBase {
public:
    constexpr HostValue() noexcept(noexcept(T())) : HostValueBase(&HostValue::reset) {}

    T const& get() const { return value_; }
    void set(T value) { edit() = std::move(value); }
    /// For changing a part of the value.
    T& edit() {
        noteChange();
        return value_;
    }

private:
    static void reset(HostValueBase& value) {
        T& own = static_cast<HostValue&>(value).value_;
        std::destroy_at(&own);
        std::construct_at(&own);
    }

    T value_ = T();
};

} // namespace wainscot
