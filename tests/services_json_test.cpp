#include "host/services/json.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>
#include <string>

namespace wainscot {
namespace {

JsonValue parsed(std::string const& text) {
    ParsedJson const result = parseJson(text);
    EXPECT_TRUE(result.value) << text.substr(0, 100) << ": " << result.message.c_str();
    return result.value ? *result.value : JsonValue();
}

TEST(Json, BuildsAndReadsBack) {
    JsonValue items = JsonValue::array();
    items.add(JsonValue(L"/a \u00E9\U0001F600\n\"\\\x01"));
    items.add(JsonValue(-7));
    items.add(JsonValue(0.1));
    items.add(JsonValue(true));
    items.add(JsonValue());
    JsonValue history = JsonValue::object();
    EXPECT_TRUE(history.set("Pos", JsonValue(std::numeric_limits<std::int64_t>::min())));
    EXPECT_TRUE(history.set("Items", items));
    EXPECT_EQ(history.write(), "{\"Items\":[\"/a \u00E9\U0001F600\\n\\\"\\\\\\u0001\",-7,0.1,true,null],"
                               "\"Pos\":-9223372036854775808}");
    for (int const indent : {-1, 2}) EXPECT_EQ(parsed(history.write(indent).c_str()), history);
    EXPECT_EQ(history.member("Items").at(0).asWideText(), L"/a \u00E9\U0001F600\n\"\\\x01");
    EXPECT_TRUE(history.erase("Pos"));
    EXPECT_FALSE(history.erase("Pos"));
    EXPECT_EQ(history.size(), 1u);
}

TEST(Json, AValueBecomesAPartOfItself) {
    JsonValue value = parsed(R"({"a": [1, {"b": [[2, "deep"]]}]})");
    value = value.member("a");
    value = value.at(1);
    value = std::move(const_cast<JsonValue&>(value.member("b").at(0)));
    EXPECT_EQ(value.write(), R"([2,"deep"])");
    JsonValue all = JsonValue::object();
    EXPECT_TRUE(all.setWithin("keys", "a", JsonValue(1)) && all.setWithin("keys", "b", value));
    EXPECT_TRUE(all.eraseWithin("keys", "a"));
    EXPECT_FALSE(all.eraseWithin("keys", "a") || value.setWithin("keys", "a", JsonValue(1)));
    EXPECT_EQ(all.write(), R"({"keys":{"b":[2,"deep"]}})");
    for (int depth = 2; depth < JsonValue::maxDepth; ++depth) {
        JsonValue outer = JsonValue::array();
        outer.add(std::exchange(value, {}));
        value = outer;
    }
    EXPECT_TRUE(all.setWithin("keys", "c", JsonValue(value.at(0))));
    EXPECT_FALSE(all.setWithin("keys", "c", value)) << "too deep";
}

TEST(Json, KindsAreNotMixedUp) {
    JsonValue const number = parsed("12");
    EXPECT_EQ(number.asInteger(), 12);
    EXPECT_EQ(number.asNumber(), 12.0);
    EXPECT_FALSE(number.asBool() || number.asText() || number.isNull());
    for (char const* text : {"1.5", "\"1\"", "true", "9223372036854775808"})
        EXPECT_FALSE(parsed(text).asInteger()) << text;
    EXPECT_EQ(parsed("9223372036854775807").asInteger(), std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(parsed("18446744073709551616").asNumber(), 18446744073709551616.0);
    EXPECT_TRUE(parsed("[1]").at(1).isNull() && parsed("[1]").member("x").isNull());
    JsonValue scalar(1);
    EXPECT_FALSE(scalar.add(JsonValue(1)) || scalar.set("x", JsonValue(1)));
    EXPECT_EQ(JsonValue(std::numeric_limits<double>::infinity()).write(), "null");
}

TEST(Json, EscapesAndSurrogates) {
    EXPECT_EQ(parsed(R"("\u0041\ud83d\ude00\/\b\u0000")").asWideText(),
              LightweightString<wchar_t>(L"A\U0001F600/\b\0", 5));
    for (char const* text : {R"("\ud83d")", R"("\ud83dx")", R"("\ude00")", R"("\u12")", R"("\x")", "\"\xFF\"",
                             "\"\xED\xA0\x80\"", "\"\xC0\x80\"", "\"\n\"", "\"\xE2\x82"})
        EXPECT_FALSE(parseJson(text).value) << text;
    EXPECT_EQ(JsonValue("a\xFF").write(), "\"a\uFFFD\"");
}

TEST(Json, FaultsHaveAMessageAndAPlace) {
    struct {
        char const* text;
        std::size_t line, column;
    } const faults[] = {{"", 1, 1},          {"{\"a\":1,\n \"\u00E9\": x}", 2, 7},
                        {"[1] 2", 1, 5},     {"[1e999]", 1, 6},
                        {"{\"a\" 1}", 1, 6}, {"[1,]", 1, 4},
                        {"nul", 1, 4},       {"'a'", 1, 1},
                        {"[\n\n01]", 3, 2}};
    for (auto const& fault : faults) {
        ParsedJson const result = parseJson(fault.text);
        EXPECT_FALSE(result.value) << fault.text;
        EXPECT_FALSE(result.message.empty()) << fault.text;
        EXPECT_EQ(result.line, fault.line) << fault.text << ": " << result.message.c_str();
        EXPECT_EQ(result.column, fault.column) << fault.text << ": " << result.message.c_str();
    }
    EXPECT_LT(parseJson("\"" + std::string(100000, 'x')).message.size(), 200u);
}

TEST(Json, DepthIsLimited) {
    auto const nested = [](std::size_t depth) { return std::string(depth, '[') + std::string(depth, ']'); };
    JsonValue const deepest = parsed(nested(JsonValue::maxDepth));
    ParsedJson const tooDeep = parseJson("\n" + nested(JsonValue::maxDepth + 1));
    EXPECT_FALSE(tooDeep.value || tooDeep.message.empty());
    EXPECT_EQ(tooDeep.line, 2u);
    EXPECT_EQ(tooDeep.column, std::size_t(JsonValue::maxDepth) + 1);
    EXPECT_FALSE(parseJson(std::string(5'000'000, '[')).value);
    EXPECT_FALSE(parseJson(std::string(1'000'000, ']') + std::string(1'000'000, '[')).value);
    EXPECT_TRUE(parseJson("[\"[\\\"" + std::string(1000, '[') + "\"]").value);
    JsonValue parent = JsonValue::array();
    EXPECT_FALSE(parent.add(deepest));
    EXPECT_TRUE(parent.add(deepest.at(0)));
    EXPECT_FALSE(JsonValue::object().set("x", deepest));
}

TEST(Json, LargeInputs) {
    std::string list = "[";
    for (int i = 0; i < 200'000; ++i) list += std::to_string(i) + ",\n";
    list += "\"" + std::string(2'000'000, 'x') + "\"]";
    JsonValue const value = parsed(list);
    EXPECT_EQ(value.size(), 200'001u);
    EXPECT_EQ(value.at(199'999).asInteger(), 199'999);
    list.back() = '}';
    EXPECT_EQ(parseJson(list).line, 200'001u);
}

/// Pieces of JSON in any order: what is taken must be written and read back as the same.
TEST(Json, RandomTextsAreTakenRightOrRefused) {
    char const* const pieces[] = {"{",           "}",  "[",  "]",        ",",    ":",    "\"a\"",
                                  "\"\\ud800\"", "1",  "-",  "1e5",      "0.5",  "true", "null",
                                  " ",           "\n", "\"", "\xC3\xA9", "\xFF", "\\"};
    std::mt19937 random(7);
    int taken = 0;
    for (int i = 0; i < 20'000; ++i) {
        std::string text;
        for (auto n = random() % 8; n > 0; --n) text += pieces[random() % std::size(pieces)];
        ParsedJson const result = parseJson(text);
        EXPECT_EQ(result.value.has_value(), result.message.empty()) << text;
        if (!result.value) continue;
        ++taken;
        EXPECT_EQ(parsed(result.value->write().c_str()), *result.value) << text;
    }
    EXPECT_GT(taken, 500);
}

} // namespace
} // namespace wainscot
