#pragma once

#include <cstddef>

namespace wainscot {

/// The memory of the objects of the tree. A window has many objects of few sizes, which come and go together.
/// Objects of one size lie side by side in blocks; each block is as large as all earlier ones together, and
/// is given back as a whole. User-interface thread only.
class GlobMemory {
public:
    static void* allocate(std::size_t size);
    /// Frees what `allocate` gave.
    static void free(void* memory);
};

} // namespace wainscot
