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

/// The pixels of a window, in memory straight from the system, which clears it when it is first touched.
using PixelMemory = std::unique_ptr<std::uint32_t[], PixelMemoryDeleter>;

/// Makes `count` pixels, all 0. Throws `std::bad_alloc` when there is no memory.
WAINSCOT_API PixelMemory makePixelMemory(std::size_t count);

} // namespace wainscot
