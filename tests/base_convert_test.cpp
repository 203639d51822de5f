#include "host/base/convert.h"
#include "host/base/data_convert.h"
#include "host/services/json.h"
#include "tests/comma_locale.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
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

TEST(Convert, EachInvalidPartBecomesOneReplacement) {
    for (std::uint32_t const bad : {0xD800u, 0xDFFFu, 0x110000u, 0x7FFFFFFFu, 0xFFFFFFFFu}) {
        wchar_t const text[] = {L'a', static_cast<wchar_t>(bad), L'-', 0};
        EXPECT_EQ(toUTF8(text), "a\xEF\xBF\xBD-") << std::hex << bad;
    }
    struct {
        Narrow bytes;
        Wide text;
    } const cases[] = {
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

void expectNumbersAsInC() {
    EXPECT_EQ(StringFromFloat(1234567.891), "1234567.891");
    EXPECT_TRUE(Qv::WStringFromFloat(0.5) == L"0.5");
    EXPECT_EQ(StringFromInteger(1234567), "1234567");
    EXPECT_EQ(Qv::FloatFromWString(L"1234.5"), 1234.5);
    EXPECT_EQ(Qv::FloatFromWString(L"1,5"), std::nullopt);
    EXPECT_TRUE(bytesAsString(1536) == L"1.5 KB");
    EXPECT_EQ(DataConvert::convert<Narrow>(2.25), "2.25");
    EXPECT_EQ(parseJson("1.5").value->asNumber(), 1.5);
    EXPECT_EQ(JsonValue(1.5).write(), "1.5");
}

TEST(Convert, NumbersAreTheSameInEveryLocale) {
    expectNumbersAsInC();
    CommaLocale const comma;
    expectNumbersAsInC();
}

TEST(Convert, FloatsAreRoundedAndTrimmed) {
    struct {
        double value;
        int decimals;
        char const *trimmed, *whole;
    } const cases[] = {
        {2.0, 3, "2", "2.000"},      {100.0, 0, "100", "100"},      {0.1 + 0.2, 3, "0.3", "0.300"},
        {9.9996, 3, "10", "10.000"}, {-0.0004, 3, "0", "0.000"},    {-0.5, 3, "-0.5", "-0.500"},
        {1.5, -4, "2", "2"},         {notANumber, 3, "nan", "nan"}, {infinity, 3, "inf", "inf"}};
    for (auto const& [value, decimals, trimmed, whole] : cases) {
        EXPECT_EQ(StringFromFloat(value, decimals), trimmed);
        EXPECT_EQ(StringFromFloat(value, decimals, false), whole);
    }
    EXPECT_EQ(StringFromFloat(0.5, 1000, false).size(), 22u);
    EXPECT_EQ(StringFromFloat(std::numeric_limits<double>::lowest(), 20, false).size(), 331u);
    EXPECT_TRUE(Qv::WStringFromFloat(-infinity) == L"-inf");
}

TEST(Convert, NumbersStandForTheWholeText) {
    EXPECT_EQ(StringFromInteger(std::numeric_limits<std::int64_t>::min()), "-9223372036854775808");
    EXPECT_TRUE(Qv::WStringFromInteger(std::numeric_limits<std::uint64_t>::max()) == L"18446744073709551615");
    constexpr auto none = std::nullopt;
    struct {
        Wide text;
        std::optional<int> asInt;
        std::optional<unsigned> asUnsigned;
        std::optional<double> asFloat;
    } const cases[] = {{L" \t+42 ", 42, 42u, 42.0},
                       {Wide(L"1\0", 2), none, none, none},
                       {L"-2147483648", std::numeric_limits<int>::min(), none, -2147483648.0},
                       {L"2147483648", none, 2147483648u, 2147483648.0},
                       {L"4294967295", none, 0xFFFFFFFFu, 4294967295.0},
                       {L"4294967296", none, none, 4294967296.0},
                       {L"-1.5e3", none, none, -1500.0},
                       {L".25", none, none, 0.25},
                       {L"7.", none, none, 7.0},
                       {Wide(100000, L'0') + L"5", 5, 5u, 5.0}};
    for (auto const& [text, asInt, asUnsigned, asFloat] : cases) {
        EXPECT_EQ(Qv::IntFromWString(text), asInt) << toUTF8(text);
        EXPECT_EQ(Qv::UIntFromWString(text), asUnsigned) << toUTF8(text);
        EXPECT_EQ(Qv::FloatFromWString(text), asFloat) << toUTF8(text);
    }
    for (wchar_t const* const bad : {L"", L" ", L"+", L"-", L"+-1", L"--1", L"1 2", L"12a", L"0x10",
                                     L"\u0661", L"1\u00A0", L".", L"inf", L"nan", L"1e999", L"1e-400"}) {
        EXPECT_EQ(Qv::IntFromWString(bad), none) << toUTF8(bad);
        EXPECT_EQ(Qv::UIntFromWString(bad), none) << toUTF8(bad);
        EXPECT_EQ(Qv::FloatFromWString(bad), none) << toUTF8(bad);
    }
}

TEST(Convert, AmountsOfMemory) {
    std::uint64_t const amounts[] = {
        0, 1, 1023, 1024, (1 << 20) - 1, std::uint64_t{5} << 29, ~std::uint64_t{}};
    std::wstring all;
    for (std::uint64_t const bytes : amounts) all += std::wstring(bytesAsString(bytes).view()) + L", ";
    EXPECT_EQ(all, L"0 bytes, 1 byte, 1023 bytes, 1 KB, 1 MB, 2.5 GB, 16 EB, ");
}

TEST(Convert, ValuesAreEqualButForRounding) {
    double const values[] = {0.0, 0.3, 1.0, 1.0 + 1e-9, 1e-9, 1e15, 1e308, infinity, -infinity, notANumber};
    double const rounded[] = {-0.0,  0.1 + 0.2, 1.0,       1.0 + 1e-9, 1e-9, 1e15 / 3.0 * 3.0,
                              1e308, infinity,  -infinity, notANumber};
    for (std::size_t i = 0; i < std::size(values); ++i)
        for (std::size_t k = 0; k < std::size(rounded); ++k)
            EXPECT_EQ(valEqualsVal(values[i], rounded[k]), i == k) << values[i] << " " << rounded[k];
}

TEST(DataConvert, NumbersSaturate) {
    static_assert(toSize16(std::numeric_limits<int>::min()) == 0 && toSize16(-1) == 0);
    static_assert(toSize16(65535) == 65535 && toSize16(65536) == 65535);
    EXPECT_EQ(DataConvert::convert<std::uint8_t>(-3), 0);
    EXPECT_EQ(DataConvert::convert<std::int8_t>(200u), 127);
    EXPECT_EQ(DataConvert::convert<int>(-2.9), -2);
    EXPECT_EQ(DataConvert::convert<int>(1e300), std::numeric_limits<int>::max());
    EXPECT_EQ(DataConvert::convert<std::int64_t>(-infinity), std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(DataConvert::convert<std::uint64_t>(18446744073709551616.0),
              std::numeric_limits<std::uint64_t>::max());
    EXPECT_EQ(DataConvert::convert<int>(notANumber), 0);
    EXPECT_EQ(DataConvert::convert<float>(1e300), std::numeric_limits<float>::max());
    EXPECT_EQ(DataConvert::convert<float>(infinity), std::numeric_limits<float>::infinity());
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
    EXPECT_EQ(DataConvert::convert<float>("1e300", 2.0f), 2.0f);
    EXPECT_TRUE(DataConvert::convert<bool>("true") && DataConvert::convert<bool>("1"));
    EXPECT_FALSE(DataConvert::convert<bool>("false", true) || DataConvert::convert<bool>("0", true));
    EXPECT_TRUE(DataConvert::convert<bool>("maybe", true));
    EXPECT_EQ(DataConvert::convert<Narrow>(Wide(L"\u00E9")), "\xC3\xA9");
    for (double const value : {0.1, 1e-300, 1.7976931348623157e308, -123456.789, 5e-324}) {
        Wide const text = DataConvert::convert<Wide>(value);
        EXPECT_EQ(DataConvert::convert<double>(text, -1.0), value) << toUTF8(text);
    }
    EXPECT_TRUE(DataConvert::convert<Wide>(true) == L"true");
    EXPECT_EQ(DataConvert::convert<Narrow>(-7), "-7");
}

} // namespace
} // namespace wainscot
