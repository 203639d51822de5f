#include "host/services/wstrxcmp.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

namespace wainscot {
namespace {

using Wide = LightweightString<wchar_t>;

int sign(int value) {
    return (value > 0) - (value < 0);
}

TEST(Wstrxcmp, OrdersAsPeopleDo) {
    // Where the values are the same, as in "010" and "10", the code points decide.
    std::vector<Wide> const names = {L"",
                                     L" x",
                                     L"2",
                                     L"010",
                                     L"10",
                                     L"0010b",
                                     L"a",
                                     L"a 2",
                                     L"A1",
                                     L"a01",
                                     L"a1",
                                     L"a1b",
                                     L"a2",
                                     L"A10",
                                     L"a99999999999999999999",
                                     L"a100000000000000000000",
                                     L"ab",
                                     L"b.png",
                                     L"B2.png",
                                     L"b10.png",
                                     L"\u00C4",
                                     L"\u00E4",
                                     L"\u00E4b",
                                     L"\u00C4c",
                                     L"\U0001F600"};
    for (std::size_t i = 0; i < names.size(); ++i)
        for (std::size_t k = 0; k < names.size(); ++k)
            EXPECT_EQ(sign(wstrxcmp(names[i], names[k])), sign(static_cast<int>(i) - static_cast<int>(k)))
                << i << " " << k;
}

TEST(Wstrxcmp, IsATotalOrderOfRandomNames) {
    std::wstring const characters = L"0019aAbB.\u00E9\u00C9\u212Ak_";
    std::mt19937 random(11);
    std::vector<Wide> names;
    for (int i = 0; i < 90; ++i) {
        std::wstring name;
        for (auto n = random() % 6; n > 0; --n) name += characters[random() % characters.size()];
        names.emplace_back(name);
    }
    names.emplace_back(1, static_cast<wchar_t>(0xFFFFFFFF));
    for (Wide const& a : names)
        for (Wide const& b : names) {
            int const ab = sign(wstrxcmp(a, b));
            ASSERT_EQ(ab, -sign(wstrxcmp(b, a)));
            ASSERT_EQ(ab == 0, a == b);
            for (Wide const& c : names) ASSERT_TRUE(ab > 0 || wstrxcmp(b, c) > 0 || wstrxcmp(a, c) <= 0);
        }
}

TEST(Wstrxcmp, LongRunsOfDigitsDoNotOverflow) {
    Wide const nines(300'000, L'9');
    EXPECT_LT(wstrxcmp(nines, Wide(L"1") + Wide(300'000, L'0')), 0);
    EXPECT_GT(wstrxcmp(nines, Wide(500'000, L'0') + L"8"), 0);
}

} // namespace
} // namespace wainscot
