#include "host/objects/glob_memory_p.h"

#include <algorithm>
#include <cstdint>
#include <gtest/gtest.h>
#include <random>
#include <vector>

namespace wainscot {
namespace {

struct Piece {
    unsigned char* start;
    std::size_t size;
    unsigned char mark;

    bool isWhole() const {
        return std::all_of(start, start + size, [this](unsigned char byte) { return byte == mark; });
    }
};

TEST(GlobMemory, PiecesAreAlignedAndApartUnderRandomUse) {
    std::mt19937 random(7);
    std::vector<Piece> pieces;
    for (int i = 0; i < 60000; ++i) {
        // Phases of growing and of shrinking; a few sizes are common, some are very large.
        if (pieces.empty() || random() % 8 < (i / 10000 % 2 ? 1 : 7)) {
            std::size_t const size = random() % 50 == 0 ? 8 + random() % 4000 : 200 + random() % 3 * 190;
            auto* const start = static_cast<unsigned char*>(GlobMemory::allocate(size));
            ASSERT_EQ(reinterpret_cast<std::uintptr_t>(start) % 16, 0U);
            pieces.push_back({start, size, static_cast<unsigned char>(random())});
            std::fill_n(start, size, pieces.back().mark);
        } else {
            std::swap(pieces[random() % pieces.size()], pieces.back());
            ASSERT_TRUE(pieces.back().isWhole());
            GlobMemory::free(pieces.back().start);
            pieces.pop_back();
        }
    }
    for (Piece const& piece : pieces) {
        EXPECT_TRUE(piece.isWhole());
        GlobMemory::free(piece.start);
    }
}

} // namespace
} // namespace wainscot
