#pragma once

#include "host/base/lightweight_string.h"

#include <cstdint>
#include <vector>

namespace wainscot {

class Surface;

/// Writes the pixels of a surface as a PNG file (UTF-8 path). Empty on success, else what went wrong.
WAINSCOT_API LightweightString<char> writePng(Surface const& surface, LightweightString<char> const& path);
/// The same into memory; `out` is empty on failure.
WAINSCOT_API LightweightString<char> writePng(Surface const& surface, std::vector<std::uint8_t>& out);

} // namespace wainscot
