#include "host/drawing/pixel_memory.h"

#include <memory>
#include <new>
#include <sys/mman.h>

namespace wainscot {

namespace {

/// What the system calls a large page.
constexpr std::size_t largePage = std::size_t(2) << 20;
/// Smaller amounts are not rounded up to large pages.
constexpr std::size_t manyBytes = 2 * largePage;

} // namespace

void PixelMemoryDeleter::operator()(std::uint32_t*) const {
    munmap(start_, bytes_);
}

PixelMemory makePixelMemory(std::size_t count) {
    std::size_t const needed = count * sizeof(std::uint32_t);
    std::size_t space = needed < manyBytes ? needed : needed + largePage;
    void* const start = mmap(nullptr, space, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (start == MAP_FAILED) throw std::bad_alloc();
    PixelMemoryDeleter const deleter(start, space);
    void* place = start;
    if (needed >= manyBytes) {
        std::align(largePage, needed, place, space);
        // This may fail; then the pixels only cost more time.
        madvise(place, needed, MADV_HUGEPAGE);
    }
    return PixelMemory(static_cast<std::uint32_t*>(place), deleter);
}

} // namespace wainscot
