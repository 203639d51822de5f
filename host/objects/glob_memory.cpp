#include "host/objects/glob_memory_p.h"

#include <algorithm>
#include <cstdint>
#include <new>

namespace wainscot {

namespace {

struct Block;

/// With separate memory for each object, the sanitizer finds uses after the end.
#ifdef __SANITIZE_ADDRESS__
constexpr bool isWatched = true;
#else
constexpr bool isWatched = false;
#endif

/// What stands before each object.
struct Header {
    /// Null for an object with memory of its own.
    Block* block;
};

/// The memory of a destroyed object.
struct Vacant {
    Vacant* next;
};

constexpr std::size_t alignment = 16;
static_assert(sizeof(Header) <= alignment && alignment >= __STDCPP_DEFAULT_NEW_ALIGNMENT__);
/// Larger objects are rare.
constexpr std::size_t largest = 2048;
constexpr std::size_t blockBytes = 65536;
/// How many empty blocks of that size are kept: a large window that closes is often followed by another.
constexpr int mostSpares = 128;

/// The blocks for objects of one size.
struct Blocks {
    /// The blocks with room.
    Block* first = nullptr;
    std::size_t numObjects = 0;
};

struct Block {
    Blocks* family;
    Block* previous;
    Block* next;
    Vacant* vacant;
    /// Memory that was never used.
    std::byte* fresh;
    std::byte* end;
    std::size_t numObjects;
    /// It takes `blockBytes`.
    bool isLargest;

    bool isFull() const { return !vacant && fresh == end; }
};

constinit Blocks families[largest / alignment + 1];
/// Linked by `next`.
constinit Block* spares = nullptr;
constinit int numSpares = 0;

std::size_t slotBytes(std::size_t size) {
    return (size + sizeof(Header) + alignment - 1) / alignment * alignment;
}

void link(Block& block) {
    Blocks& family = *block.family;
    block.previous = nullptr;
    block.next = family.first;
    if (block.next) block.next->previous = &block;
    family.first = &block;
}

void unlink(Block& block) {
    (block.previous ? block.previous->next : block.family->first) = block.next;
    if (block.next) block.next->previous = block.previous;
}

/// The first slot begins where its object, which follows the header, is aligned.
constexpr std::size_t firstSlot =
    (sizeof(Block) + sizeof(Header) + alignment - 1) / alignment * alignment - sizeof(Header);

void* takeSpare() {
    Block* const spare = spares;
    spares = spare->next;
    --numSpares;
    return spare;
}

void freeBlock(Block& block) {
    if (!block.isLargest || numSpares == mostSpares) return ::operator delete(&block);
    block.next = spares;
    spares = &block;
    ++numSpares;
}

/// The first block of a size is small: many sizes have one object only.
Block& addBlock(Blocks& family, std::size_t bytesEach) {
    std::size_t const most = (blockBytes - firstSlot) / bytesEach;
    std::size_t const room = std::clamp<std::size_t>(family.numObjects, 1, most) * bytesEach;
    bool const isLargest = room == most * bytesEach;
    void* const place =
        isLargest && spares ? takeSpare() : ::operator new(isLargest ? blockBytes : firstSlot + room);
    auto* const memory = static_cast<std::byte*>(place);
    std::byte* const slots = memory + firstSlot;
    auto* const block =
        new (memory) Block{&family, nullptr, nullptr, nullptr, slots, slots + room, 0, isLargest};
    link(*block);
    return *block;
}

void* withHeader(void* slot, Block* block) {
    return new (slot) Header{block} + 1;
}

void* takeSlot(Block& block, std::size_t bytesEach) {
    void* slot = block.vacant;
    if (slot) {
        block.vacant = block.vacant->next;
    } else {
        slot = block.fresh;
        block.fresh += bytesEach;
    }
    return slot;
}

} // namespace

void* GlobMemory::allocate(std::size_t size) {
    if (isWatched) return ::operator new(size);
    if (size > largest - sizeof(Header)) {
        auto* const memory = static_cast<std::byte*>(::operator new(size + alignment));
        return withHeader(memory + alignment - sizeof(Header), nullptr);
    }
    std::size_t const bytesEach = slotBytes(size);
    Blocks& family = families[bytesEach / alignment];
    Block& block = family.first ? *family.first : addBlock(family, bytesEach);
    void* const slot = takeSlot(block, bytesEach);
    ++block.numObjects;
    ++family.numObjects;
    if (block.isFull()) unlink(block);
    return withHeader(slot, &block);
}

void GlobMemory::free(void* memory) {
    if (!memory) return;
    if (isWatched) return ::operator delete(memory);
    Header* const header = static_cast<Header*>(memory) - 1;
    Block* const block = header->block;
    if (!block) return ::operator delete(reinterpret_cast<std::byte*>(header) + sizeof(Header) - alignment);
    if (block->isFull()) link(*block);
    block->vacant = new (header) Vacant{block->vacant};
    --block->family->numObjects;
    if (--block->numObjects > 0) return;
    unlink(*block);
    freeBlock(*block);
}

} // namespace wainscot
