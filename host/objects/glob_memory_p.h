#pragma once

#include <cstddef>

namespace wainscot {

/// The memory of the objects of the tree. A window has many objects of few sizes, which come and go together:
/// objects of one size lie side by side in blocks, each as large as all before it, and a block goes back as a
/// whole. User-interface thread only.
class GlobMemory {
public:
    static void* allocate(std::size_t size);
    /// What `allocate` gave.
    static void free(void* memory);
};

} // namespace wainscot
