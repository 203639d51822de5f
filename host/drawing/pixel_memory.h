#pragma once

#include "host/base/export.h"

#include <cstddef>
#include <cstdint>
#include <memory>

namespace wainscot {

/// Gives the memory of pixels back.
class WAINSCOT_API PixelMemoryDeleter {
public:
    PixelMemoryDeleter() = default;
    PixelMemoryDeleter(void* start, std::size_t bytes) : start_(start), bytes_(bytes) {}
    void operator()(std::uint32_t*) const;

private:
    void* start_ = nullptr;
    std::size_t bytes_ = 0;
};

/// The pixels of a window, straight from the system: it clears them as they are first touched, in large
/// pieces where there are many.
using PixelMemory = std::unique_ptr<std::uint32_t[], PixelMemoryDeleter>;

/// So many pixels, all 0. Throws `std::bad_alloc` when there is no memory.
WAINSCOT_API PixelMemory makePixelMemory(std::size_t count);

} // namespace wainscot
