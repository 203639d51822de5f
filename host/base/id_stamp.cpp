#include "host/base/id_stamp.h"

#include <atomic>
#include <charconv>

namespace wainscot {

namespace {
constinit std::atomic<std::uint64_t> lastStamp{0};
}

IdStamp IdStamp::make() noexcept {
    IdStamp stamp;
    stamp.value_ = lastStamp.fetch_add(1, std::memory_order_relaxed) + 1;
    return stamp;
}

LightweightString<char> IdStamp::asString() const {
    char digits[24];
    char* end = std::to_chars(digits, digits + sizeof digits, value_).ptr;
    return LightweightString<char>(digits, static_cast<std::size_t>(end - digits));
}

} // namespace wainscot
