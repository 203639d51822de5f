#pragma once

#include "host/base/lightweight_string.h"

#include <cstdint>
#include <functional>
#include <vector>

namespace wainscot {

/// Writes one diagnostic line, formatted as by `printf`, bounded to 1,023 bytes. Numbers have a "." in every
/// locale.
WAINSCOT_API void vex_printf(char const* format, ...) __attribute__((format(printf, 1, 2)));
/// The same, and also kept in the log that `Diagnostics::lines()` gives.
WAINSCOT_API void LogBoth(char const* format, ...) __attribute__((format(printf, 1, 2)));

/// Counts what would otherwise go wrong in silence: messages nobody handled, refused indices, exceptions in
/// handlers. Safe from any thread.
namespace Diagnostics {

struct Entry {
    LightweightString<char> kind;
    LightweightString<char> firstDetail;
    std::uint64_t count = 0;
};

/// Counts one misuse; debug builds print the first of each kind.
WAINSCOT_API void count(char const* kind, char const* detail);
WAINSCOT_API std::uint64_t countOf(char const* kind);
WAINSCOT_API std::vector<Entry> entries();
WAINSCOT_API std::vector<LightweightString<char>> lines();
/// Forgets all counts and lines.
WAINSCOT_API void reset();
/// Where lines go instead of the standard error stream; null restores that.
WAINSCOT_API void setSink(std::function<void(char const* line)> sink);

} // namespace Diagnostics
} // namespace wainscot
