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

TEST(LightweightString, ArraysEndAtTheirZeroOrAtTheirEnd) {
    char const padded[8] = "ab";
    EXPECT_EQ(Narrow(padded).size(), 2u);
    char const full[3] = {'x', 'y', 'z'};
    EXPECT_EQ(Narrow(full), "xyz");
}

TEST(LightweightString, NullIsEmpty) {
    char const* const nothing = nullptr;
    Narrow text(nothing);
    EXPECT_TRUE(text.empty());
    EXPECT_TRUE(text == nothing);
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

TEST(LightweightString, TakesItsOwnPartsAsArguments) {
    Narrow text = std::string("abcdef").c_str();
    text.append(text.view());
    EXPECT_EQ(text, "abcdefabcdef");
    text.reserve(100);
    text.insert(1, text.view().substr(2, 3));
    EXPECT_EQ(text, "acdebcdefabcdef");
    text.replace(0, 12, text.view().substr(12));
    EXPECT_EQ(text, "defdef");
    text += text;
    EXPECT_EQ(text, "defdefdefdef");
    text = text.substr(4, 2);
    EXPECT_EQ(text, "ef");
}

TEST(LightweightString, CharactersAreAddedNotCountedOn) {
    Narrow const text = "abc";
    EXPECT_EQ(text + 'd', "abcd");
    EXPECT_EQ('<' + std::string(text), "<abc");
    EXPECT_TRUE(Wide(L"x") + L'\u20AC' == L"x\u20AC");
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
}

/// Two strings and a copy of one of them, changed at random beside standard strings.
template <class CharT>
class StringModel {
public:
    void step(std::mt19937& random) {
        auto const at = random() % 12;
        auto const count = random() % 6;
        auto const letter = static_cast<CharT>('a' + random() % 26);
        auto const which = random() % 3;
        LightweightString<CharT>& text = texts_[which];
        std::basic_string<CharT>& model = models_[which];
        std::size_t const from = std::min<std::size_t>(at, model.size());
        switch (random() % 8) {
        case 0:
            text.append(text.view()), model.append(std::basic_string<CharT>(model));
            break;
        case 1:
            text.push_back(letter), model.push_back(letter);
            break;
        case 2:
            text.erase(at, count), model.erase(from, count);
            break;
        case 3:
            text.replace(at, count, texts_[0].view());
            model.replace(from, count, std::basic_string<CharT>(models_[0]));
            break;
        case 4:
            text = texts_[(which + 1) % 3], model = models_[(which + 1) % 3];
            break;
        case 5:
            text.setAt(at, letter);
            if (at < model.size()) model[at] = letter;
            break;
        case 6:
            text = text.substr(at, count), model = model.substr(from, count);
            break;
        default:
            text.insert(at, texts_[1].view());
            model.insert(from, std::basic_string<CharT>(models_[1]));
        }
        if (model.size() > 2000) text.clear(), model.clear();
    }

    void expectSame() const {
        for (std::size_t i = 0; i < 3; ++i) {
            ASSERT_TRUE(texts_[i].view() == models_[i]);
            ASSERT_EQ(texts_[i].c_str()[texts_[i].size()], CharT());
        }
    }

private:
    LightweightString<CharT> texts_[3];
    std::basic_string<CharT> models_[3];
};

template <class CharT>
void playModel() {
    std::mt19937 random(11);
    StringModel<CharT> model;
    for (int i = 0; i < 20000; ++i) {
        model.step(random);
        model.expectSame();
        if (testing::Test::HasFatalFailure()) return;
    }
}

TEST(LightweightString, BehavesAsTheStandardStringDoes) {
    playModel<char>();
    playModel<wchar_t>();
}

TEST(LightweightString, GrowsInFewSteps) {
    Narrow text;
    int moves = 0;
    for (int i = 0; i < 100000; ++i) {
        char const* const before = text.c_str();
        text.push_back('x');
        if (text.c_str() != before) ++moves;
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
