#include "host/base/lightweight_string.h"
#include "host/base/lightweight_vector.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <random>
#include <string>
#include <thread>
#include <vector>

namespace wainscot {
namespace {

using Narrow = LightweightString<char>;
using Wide = LightweightString<wchar_t>;

struct Names {
    static constexpr Narrow literalMsg = "menu_poot";
};

TEST(LightweightString, LiteralsAreShared) {
    static constexpr char const text[] = "menu_poot";
    static constexpr Narrow immortal = text;
    EXPECT_EQ(immortal.c_str(), text);
    Narrow copy = Names::literalMsg;
    EXPECT_TRUE(copy.sharesBufferWith(Names::literalMsg));
    copy += "!";
    EXPECT_EQ(copy, "menu_poot!");
    EXPECT_EQ(Names::literalMsg, "menu_poot");
}

TEST(LightweightString, ArraysEndAtTheirZeroOrAtTheirEndAndNullIsEmpty) {
    char const padded[8] = "ab";
    EXPECT_EQ(Narrow(padded).size(), 2u);
    char const full[3] = {'x', 'y', 'z'};
    EXPECT_EQ(Narrow(full), "xyz");
    char const* const nothing = nullptr;
    Narrow text(nothing);
    EXPECT_TRUE(text.empty() && text == nothing);
    text += nothing;
    EXPECT_EQ(text + nothing, nothing + text);
    EXPECT_STREQ(text.c_str(), "");
}

TEST(LightweightString, CopiesShareUntilOneChanges) {
    Wide const original(std::wstring(L"clip").c_str());
    Wide copy = original;
    EXPECT_TRUE(copy.sharesBufferWith(original));
    copy.setAt(0, L'C');
    EXPECT_FALSE(copy.sharesBufferWith(original));
    EXPECT_TRUE(original == L"clip");
    EXPECT_TRUE(copy == L"Clip");
    wchar_t const* const own = copy.c_str();
    copy.setAt(1, L'L');
    EXPECT_EQ(copy.c_str(), own);
    copy.setAt(4, L'x');
    EXPECT_TRUE(copy == L"CLip");
    EXPECT_TRUE((copy = static_cast<Wide const&>(copy)) == L"CLip");
}

TEST(LightweightString, FindsItsParts) {
    Wide const path = L"a/b/c";
    EXPECT_EQ(path.find(L'/'), 1u);
    EXPECT_EQ(path.find(L"/", 2), 3u);
    EXPECT_EQ(path.rfind(L'/'), 3u);
    EXPECT_EQ(path.rfind(L'/', 2), 1u);
    EXPECT_EQ(path.find(L'x'), Wide::npos);
    EXPECT_TRUE(path.startsWith(L"a/") && path.endsWith(L"/c"));
    EXPECT_FALSE(path.startsWith(L"a/b/c/d") || path.endsWith(L"xa/b/c"));
    EXPECT_TRUE(path.startsWith(L"") && Wide().endsWith(L""));
    EXPECT_TRUE(path.substr(4, 100) == L"c" && path.substr(5).empty() && path.substr(77).empty());
    EXPECT_TRUE(path.substr(0).sharesBufferWith(path));
}

TEST(LightweightString, OrderAndHashFollowTheCharacters) {
    Narrow const a = std::string("same").c_str();
    Narrow const b = "same";
    EXPECT_FALSE(a.sharesBufferWith(b));
    EXPECT_EQ(a, b);
    EXPECT_EQ(std::hash<Narrow>()(a), std::hash<Narrow>()(b));
    EXPECT_LT(Narrow("ab"), Narrow("b"));
    EXPECT_LT(Narrow("a"), Narrow("ab"));
    EXPECT_FALSE(Narrow("a\0b", 3) == "a");
    // Characters are added, not counted on.
    EXPECT_EQ(a + 'd', "samed");
    EXPECT_EQ('<' + std::string(a), "<same");
    EXPECT_TRUE(Wide(L"x") + L'\u20AC' == L"x\u20AC");
}

template <class CharT>
auto partOf(LightweightString<CharT> const& text, std::size_t from, std::size_t count) {
    return text.view().substr(std::min(from, text.size()), count);
}
/// A copy, because a standard string need not take its own parts.
template <class CharT>
auto partOf(std::basic_string<CharT> const& text, std::size_t from, std::size_t count) {
    return text.substr(std::min(from, text.size()), count);
}

/// Three strings that share and take each other's parts, changed at random beside standard strings.
template <class CharT>
void expectLikeStandardStrings() {
    std::mt19937 random(11);
    LightweightString<CharT> texts[3];
    std::basic_string<CharT> models[3];
    for (int i = 0; i < 20000; ++i) {
        auto const what = random() % 9, which = random() % 3, other = random() % 3;
        std::size_t const at = random() % 12, count = random() % 6, from = random() % 9;
        auto const letter = static_cast<CharT>('a' + random() % 26);
        // A place behind the end is the end.
        auto const change = [&](auto& strings, std::size_t place) {
            auto& text = strings[which];
            auto const part = partOf(strings[other], from, count % 2 ? count : 2000);
            if (what == 0) text.append(part);
            if (what == 1) text.reserve(place * 9), text.push_back(letter);
            if (what == 2) text.erase(place, count);
            if (what == 3) text.replace(place, count, part);
            if (what == 4) text = strings[other];
            if (what == 5) text = text.substr(place, count);
            if (what == 6) text.insert(place, part);
            if (what == 7) text += text;
            if (text.size() > 2000) text.clear();
        };
        std::size_t const length = models[which].size();
        change(texts, at);
        change(models, std::min(at, length));
        if (what == 8) texts[which].setAt(at, letter);
        if (what == 8 && at < length) models[which][at] = letter;
        for (std::size_t k = 0; k < 3; ++k) {
            ASSERT_TRUE(texts[k].view() == models[k]) << i << " " << what;
            ASSERT_EQ(texts[k].c_str()[texts[k].size()], CharT());
        }
    }
}

TEST(LightweightString, BehavesAsTheStandardStringDoes) {
    expectLikeStandardStrings<char>();
    expectLikeStandardStrings<wchar_t>();
}

TEST(LightweightString, GrowsInFewSteps) {
    Narrow text;
    int moves = 0;
    for (int i = 0; i < 100000; ++i) {
        char const* const before = text.c_str();
        text.push_back('x');
        moves += text.c_str() != before;
    }
    EXPECT_LT(moves, 40);
}

TEST(ThreadString, CopiesMayBeChangedAndDroppedInAnyThread) {
    Narrow const shared = std::string("shared text").c_str();
    {
        std::vector<std::jthread> threads;
        for (int t = 0; t < 4; ++t)
            threads.emplace_back([copy = shared]() mutable {
                for (int i = 0; i < 3000; ++i) {
                    Narrow const kept = copy;
                    copy += "x";
                    EXPECT_FALSE(copy.sharesBufferWith(kept));
                    copy = kept;
                }
                copy.setAt(0, 'S');
                EXPECT_EQ(copy, "Shared text");
            });
    }
    EXPECT_EQ(shared, "shared text");
}

TEST(ThreadString, TheLastOwnerMayChangeWhatOthersHaveRead) {
    for (int round = 0; round < 200; ++round) {
        Narrow text = std::string("read here, changed there").c_str();
        LightweightVector<int> numbers{1, 2, 3};
        // Relaxed, so that nothing but the counts orders the reading before the change.
        std::atomic<bool> dropped = false;
        std::jthread const reader([&dropped, copy = text, values = numbers]() mutable {
            EXPECT_EQ(copy[0], 'r');
            copy.clear();
            EXPECT_EQ(values[0], 1);
            values.clear();
            dropped.store(true, std::memory_order_relaxed);
        });
        while (!dropped.load(std::memory_order_relaxed)) std::this_thread::yield();
        text.setAt(0, 'R');
        numbers.edit()[0] = 7;
    }
}

TEST(LightweightVector, CopiesShareUntilOneChanges) {
    Vector<int> const plain{1, 2, 3};
    LightweightVector<int> first(plain);
    LightweightVector<int> second = first;
    EXPECT_TRUE(second.sharesElementsWith(first));
    EXPECT_TRUE(first == LightweightVector<int>(plain)) << "though they share nothing";
    EXPECT_EQ(second[1], 2);
    EXPECT_TRUE(second.sharesElementsWith(first));
    second.push_back(4);
    EXPECT_EQ(first.size(), 3u);
    EXPECT_EQ(second.back(), 4);
    EXPECT_FALSE(first == second);
    int const* const own = second.begin();
    second.edit()[0] = 9;
    EXPECT_EQ(second.begin(), own);
    first.clear();
    EXPECT_TRUE(first == LightweightVector<int>());
    EXPECT_EQ(first.begin(), first.end());
    first.push_back(5);
    EXPECT_EQ(first.size(), 1u);
}

} // namespace
} // namespace wainscot
