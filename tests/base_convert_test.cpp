#include "host/base/convert.h"
#include "host/base/data_convert.h"
#include "tests/comma_locale.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <string>

namespace wainscot {
namespace {

using Narrow = LightweightString<char>;
using Wide = LightweightString<wchar_t>;

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

TEST(Convert, EveryCodePointSurvivesUTF8) {
    std::wstring all;
    for (wchar_t c = 0; c <= 0x10FFFF; ++c)
        if (c < 0xD800 || c > 0xDFFF) all.push_back(c);
    Wide const text(all);
    Narrow const bytes = toUTF8(text);
    EXPECT_EQ(bytes.size(), 0x80u + 2 * 0x780 + 3 * (0x10000 - 0x800 - 0x800) + 4 * 0x100000);
    EXPECT_TRUE(fromUTF8(bytes) == text);
    EXPECT_EQ(toUTF8(L"a\u00E9\u20AC\U0001F600"), "a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80");
}

TEST(Convert, WhatIsNoCodePointIsReplaced) {
    for (std::uint32_t const bad : {0xD800u, 0xDFFFu, 0x110000u, 0x7FFFFFFFu, 0xFFFFFFFFu}) {
        wchar_t const text[] = {L'a', static_cast<wchar_t>(bad), L'b', 0};
        EXPECT_EQ(toUTF8(text), "a\xEF\xBF\xBD"
                                "b")
            << std::hex << bad;
    }
}

struct BadBytes {
    Narrow bytes;
    Wide text;
};

TEST(Convert, EachInvalidPartBecomesOneReplacement) {
    BadBytes const cases[] = {
        {"\x80", L"\uFFFD"},
        {"a\xC0\xAFz", L"a\uFFFD\uFFFDz"},
        {"\xC3", L"\uFFFD"},
        {"\xC3(", L"\uFFFD("},
        {"\xE0\x80\xAF", L"\uFFFD\uFFFD\uFFFD"},
        {"\xED\xA0\x80", L"\uFFFD\uFFFD\uFFFD"},
        {"\xE2\x82", L"\uFFFD"},
        {"\xE2\x82z", L"\uFFFDz"},
        {"\xE2\x82\xE2\x82\xAC", L"\uFFFD\u20AC"},
        {"\xF0\x80\x80\x80", L"\uFFFD\uFFFD\uFFFD\uFFFD"},
        {"\xF0\x9F\x98", L"\uFFFD"},
        {"\xF4\x90\x80\x80", L"\uFFFD\uFFFD\uFFFD\uFFFD"},
        {"\xF1\x80\x80\xE1\x80\xC2\x62\x80\x63\x80\xBF\x64", L"\uFFFD\uFFFD\uFFFDb\uFFFDc\uFFFD\uFFFDd"},
        {"\xF5\xFE\xFF", L"\uFFFD\uFFFD\uFFFD"},
    };
    for (auto const& [bytes, text] : cases) EXPECT_TRUE(fromUTF8(bytes) == text) << bytes.c_str();
}

TEST(Convert, AnyBytesGiveTextThatSurvives) {
    std::mt19937 random(7);
    for (int round = 0; round < 2000; ++round) {
        std::string bytes;
        for (auto left = random() % 40; left > 0; --left) {
            auto const choice = random();
            bytes.push_back(static_cast<char>(choice % 3 ? 0x80 | choice >> 8 : choice >> 8));
        }
        Wide const text = fromUTF8(Narrow(bytes));
        EXPECT_TRUE(fromUTF8(toUTF8(text)) == text);
        EXPECT_EQ(bytes.empty(), text.empty());
    }
}

TEST(Convert, ZeroCharactersPass) {
    EXPECT_EQ(toUTF8(Wide(L"a\0b", 3)), Narrow("a\0b", 3));
    EXPECT_TRUE(fromUTF8(Narrow("a\0b", 3)) == Wide(L"a\0b", 3));
}

void expectNumbersAsInC() {
    EXPECT_EQ(StringFromFloat(1234567.891), "1234567.891");
    EXPECT_TRUE(Qv::WStringFromFloat(0.5) == L"0.5");
    EXPECT_EQ(StringFromInteger(1234567), "1234567");
    EXPECT_EQ(Qv::FloatFromWString(L"1234.5"), 1234.5);
    EXPECT_EQ(Qv::FloatFromWString(L"1,5"), std::nullopt);
    EXPECT_TRUE(bytesAsString(1536) == L"1.5 KB");
    EXPECT_EQ(DataConvert::convert<Narrow>(2.25), "2.25");
}

TEST(Convert, NumbersAreTheSameInEveryLocale) {
    expectNumbersAsInC();
    CommaLocale const comma;
    expectNumbersAsInC();
}

TEST(Convert, FloatsAreRoundedAndTrimmed) {
    EXPECT_EQ(StringFromFloat(2.0), "2");
    EXPECT_EQ(StringFromFloat(2.0, 3, false), "2.000");
    EXPECT_EQ(StringFromFloat(100.0, 0), "100");
    EXPECT_EQ(StringFromFloat(0.1 + 0.2), "0.3");
    EXPECT_EQ(StringFromFloat(9.9996), "10");
    EXPECT_EQ(StringFromFloat(-0.0004), "0");
    EXPECT_EQ(StringFromFloat(-0.0004, 3, false), "0.000");
    EXPECT_EQ(StringFromFloat(-0.5), "-0.5");
    EXPECT_EQ(StringFromFloat(1.5, -4), "2");
    EXPECT_EQ(StringFromFloat(0.5, 1000, false).size(), 22u);
    EXPECT_EQ(StringFromFloat(std::numeric_limits<double>::lowest(), 20, false).size(), 331u);
    EXPECT_EQ(StringFromFloat(notANumber), "nan");
    EXPECT_EQ(StringFromFloat(infinity), "inf");
    EXPECT_TRUE(Qv::WStringFromFloat(-infinity) == L"-inf");
}

TEST(Convert, IntegersReachTheirLimits) {
    EXPECT_EQ(StringFromInteger(std::numeric_limits<std::int64_t>::min()), "-9223372036854775808");
    EXPECT_TRUE(Qv::WStringFromInteger(std::numeric_limits<std::uint64_t>::max()) == L"18446744073709551615");
    EXPECT_EQ(Qv::IntFromWString(L"-2147483648"), std::numeric_limits<int>::min());
    EXPECT_EQ(Qv::IntFromWString(L"2147483648"), std::nullopt);
    EXPECT_EQ(Qv::UIntFromWString(L"4294967295"), 0xFFFFFFFFu);
    EXPECT_EQ(Qv::UIntFromWString(L"4294967296"), std::nullopt);
    EXPECT_EQ(Qv::UIntFromWString(L"-1"), std::nullopt);
}

TEST(Convert, NumbersStandForTheWholeText) {
    EXPECT_EQ(Qv::IntFromWString(L" \t+42 "), 42);
    EXPECT_EQ(Qv::FloatFromWString(L"-1.5e3"), -1500.0);
    EXPECT_EQ(Qv::FloatFromWString(L".25"), 0.25);
    EXPECT_EQ(Qv::FloatFromWString(L"7."), 7.0);
    for (wchar_t const* const bad : {L"", L" ", L"+", L"-", L"+-1", L"--1", L"1 2", L"12a", L"0x10",
                                     L"\u0661", L"1\u00A0", L".", L"inf", L"nan", L"1e999", L"-1e999"}) {
        EXPECT_EQ(Qv::IntFromWString(bad), std::nullopt) << toUTF8(bad);
        EXPECT_EQ(Qv::UIntFromWString(bad), std::nullopt) << toUTF8(bad);
        EXPECT_EQ(Qv::FloatFromWString(bad), std::nullopt) << toUTF8(bad);
    }
    EXPECT_EQ(Qv::IntFromWString(Wide(L"1\0", 2)), std::nullopt);
    EXPECT_EQ(Qv::FloatFromWString(L"1e-400"), std::nullopt);
    EXPECT_EQ(Qv::FloatFromWString(Wide(100000, L'0') + L"5"), 5.0);
}

TEST(Convert, AmountsOfMemory) {
    EXPECT_TRUE(bytesAsString(0) == L"0 bytes");
    EXPECT_TRUE(bytesAsString(1) == L"1 byte");
    EXPECT_TRUE(bytesAsString(1023) == L"1023 bytes");
    EXPECT_TRUE(bytesAsString(1024) == L"1 KB");
    EXPECT_TRUE(bytesAsString((1 << 20) - 1) == L"1 MB");
    EXPECT_TRUE(bytesAsString(std::uint64_t{5} << 29) == L"2.5 GB");
    EXPECT_TRUE(bytesAsString(std::numeric_limits<std::uint64_t>::max()) == L"16 EB");
}

TEST(Convert, ValuesAreEqualButForRounding) {
    EXPECT_TRUE(valEqualsVal(0.1 + 0.2, 0.3));
    EXPECT_TRUE(valEqualsVal(1e15 / 3.0 * 3.0, 1e15));
    EXPECT_TRUE(valEqualsVal(0.0, -0.0));
    EXPECT_FALSE(valEqualsVal(1.0, 1.0 + 1e-9));
    EXPECT_FALSE(valEqualsVal(0.0, 1e-9));
    EXPECT_TRUE(valEqualsVal(infinity, infinity));
    EXPECT_FALSE(valEqualsVal(infinity, -infinity));
    EXPECT_FALSE(valEqualsVal(infinity, 1e308));
    EXPECT_TRUE(valEqualsVal(notANumber, notANumber));
    EXPECT_FALSE(valEqualsVal(notANumber, 0.0));
}

TEST(Convert, SizesSaturate) {
    EXPECT_EQ(toSize16(-1), 0);
    EXPECT_EQ(toSize16(65535), 65535);
    EXPECT_EQ(toSize16(65536), 65535);
    static_assert(toSize16(std::numeric_limits<int>::min()) == 0);
}

TEST(DataConvert, NumbersSaturate) {
    EXPECT_EQ(DataConvert::convert<std::uint8_t>(-3), 0);
    EXPECT_EQ(DataConvert::convert<std::int8_t>(200u), 127);
    EXPECT_EQ(DataConvert::convert<int>(-2.9), -2);
    EXPECT_EQ(DataConvert::convert<int>(1e300), std::numeric_limits<int>::max());
    EXPECT_EQ(DataConvert::convert<std::int64_t>(-infinity), std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(DataConvert::convert<std::uint64_t>(18446744073709551616.0),
              std::numeric_limits<std::uint64_t>::max());
    EXPECT_EQ(DataConvert::convert<int>(notANumber), 0);
    EXPECT_EQ(DataConvert::convert<float>(1e300), std::numeric_limits<float>::max());
    EXPECT_FALSE(DataConvert::convert<bool>(notANumber));
    EXPECT_TRUE(DataConvert::convert<bool>(-0.5));
    EXPECT_EQ(DataConvert::convert<int>(true), 1);
}

TEST(DataConvert, TextsBecomeValuesOrSayThatTheyAreNone) {
    EXPECT_EQ(DataConvert::convert<int>(L"17"), 17);
    EXPECT_EQ(DataConvert::convert<int>(Wide(L"x"), -5), -5);
    EXPECT_EQ(DataConvert::convert<std::int8_t>("128", std::int8_t{9}), 9);
    EXPECT_EQ(DataConvert::convert<std::uint64_t>("18446744073709551615"),
              std::numeric_limits<std::uint64_t>::max());
    EXPECT_EQ(DataConvert::convert<double>("1.25"), 1.25);
    EXPECT_EQ(DataConvert::convert<float>("1e300", 2.0f), 2.0f);
    EXPECT_TRUE(DataConvert::convert<bool>("true"));
    EXPECT_TRUE(DataConvert::convert<bool>("maybe", true));
    EXPECT_EQ(DataConvert::convert<Narrow>(Wide(L"\u00E9")), "\xC3\xA9");
}

TEST(DataConvert, NumbersReadBackAsTheSame) {
    for (double const value : {0.1, 1e-300, 1.7976931348623157e308, -123456.789, 5e-324}) {
        Wide const text = DataConvert::convert<Wide>(value);
        EXPECT_EQ(DataConvert::convert<double>(text, -1.0), value) << toUTF8(text);
    }
    EXPECT_TRUE(DataConvert::convert<Wide>(true) == L"true");
    EXPECT_EQ(DataConvert::convert<Narrow>(-7), "-7");
}

} // namespace
} // namespace wainscot
