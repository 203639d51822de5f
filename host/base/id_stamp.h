#pragma once

#include "host/base/lightweight_string.h"

#include <compare>
#include <cstdint>

namespace wainscot {

/// The identity of one live object. Stamps come from one 64-bit counter and are never used again, so that a
/// remembered address together with its stamp names one object for ever.
class WAINSCOT_API IdStamp {
public:
    /// A stamp that names nothing.
    constexpr IdStamp() noexcept = default;
    /// A new, valid stamp; safe from any thread.
    static IdStamp make() noexcept;
    /// The stamp that once had this value.
    static constexpr IdStamp fromValue(std::uint64_t value) noexcept {
        IdStamp stamp;
        stamp.value_ = value;
        return stamp;
    }

    constexpr bool valid() const noexcept { return value_ != 0; }
    constexpr void invalidate() noexcept { value_ = 0; }
    constexpr std::uint64_t value() const noexcept { return value_; }
    LightweightString<char> asString() const;

    friend constexpr auto operator<=>(IdStamp const&, IdStamp const&) noexcept = default;

private:
    std::uint64_t value_ = 0;
};

} // namespace wainscot
