#pragma once

#include "host/base/export.h"
#include "host/base/lightweight_string.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string_view>
#include <variant>
#include <vector>

namespace wainscot {

/// A JSON value: built step by step and written as text, or read from text with `parseJson`.
///
/// Texts are UTF-8 inside. Copies are independent. Arrays and objects are nested at most `maxDepth` deep.
class WAINSCOT_API JsonValue {
public:
    using Text = LightweightString<char>;
    using Array = std::vector<JsonValue>;
    using Object = std::map<Text, JsonValue>;
    static constexpr int maxDepth = 100;

    /// null
    JsonValue() = default;
    explicit JsonValue(bool value) : value_(value) {}
    explicit JsonValue(int value) : value_(std::int64_t(value)) {}
    explicit JsonValue(std::int64_t value) : value_(value) {}
    /// NaN and infinity are written as null.
    explicit JsonValue(double value) : value_(value) {}
    explicit JsonValue(Text value) : value_(std::move(value)) {}
    explicit JsonValue(char const* value) : value_(Text(value)) {}
    explicit JsonValue(LightweightString<wchar_t> const& value);
    explicit JsonValue(wchar_t const* value) : JsonValue(LightweightString<wchar_t>(value)) {}
    JsonValue(JsonValue const&) = default;
    JsonValue(JsonValue&&) noexcept = default;
    /// A part of this value may be assigned to it.
    JsonValue& operator=(JsonValue other) noexcept;
    static JsonValue array();
    static JsonValue object();

    bool isNull() const { return std::holds_alternative<std::monostate>(value_); }
    bool isArray() const { return std::holds_alternative<Array>(value_); }
    bool isObject() const { return std::holds_alternative<Object>(value_); }

    /// The value, or nothing when it is of another kind.
    std::optional<bool> asBool() const;
    /// Nothing for numbers with decimals or beyond 64 bits, too.
    std::optional<std::int64_t> asInteger() const;
    /// Integers count as numbers.
    std::optional<double> asNumber() const;
    std::optional<Text> asText() const;
    std::optional<LightweightString<wchar_t>> asWideText() const;

    /// Elements of an array or members of an object; 0 for everything else.
    std::size_t size() const;
    /// An element of an array; the null value where there is none.
    JsonValue const& at(std::size_t index) const;
    /// A member of an object; the null value where there is none.
    JsonValue const& member(Text const& key) const;
    bool has(Text const& key) const;
    /// The members of an object in the order of their names; empty for everything else.
    Object const& members() const;

    /// Appends to an array. False, and nothing is done, when this is not an array or would become too deep.
    bool add(JsonValue value);
    /// Sets a member of an object. False, and nothing is done, when this is not an object or would become too
    /// deep.
    bool set(Text const& key, JsonValue value);
    /// Takes a member away; false when there is none.
    bool erase(Text const& key);
    /// Sets a member of the member `outer` in place, without copying the rest. A member `outer` that is not
    /// an object is replaced by an object. False, and nothing is done, as for `set`.
    bool setWithin(Text const& outer, Text const& key, JsonValue value);
    /// Takes a member away from the member `outer`; false when there is none.
    bool eraseWithin(Text const& outer, Text const& key);

    /// The value as JSON text. Invalid UTF-8 becomes U+FFFD. Elements and members stand on lines of their
    /// own, indented by `indent` blanks a level; negative = everything on one line.
    Text write(int indent = -1) const;

    friend bool operator==(JsonValue const& a, JsonValue const& b) { return a.value_ == b.value_; }

private:
    bool mayHold(JsonValue const& child) const { return child.depth_ < maxDepth; }
    /// Null when there is none.
    JsonValue* memberToChange(Text const& key);
    void deepenFor(JsonValue const& child);

    std::variant<std::monostate, bool, std::int64_t, double, Text, Array, Object> value_;
    /// How deep arrays and objects are nested, this value included.
    int depth_ = 0;
};

/// What `parseJson` has found.
struct ParsedJson {
    /// Nothing when the text is not JSON.
    std::optional<JsonValue> value;
    /// What is wrong, for people; empty on success.
    LightweightString<char> message;
    /// Where the error was found, counted from 1; columns in characters.
    std::size_t line = 0;
    std::size_t column = 0;
};

/// Reads a whole text as one JSON value. Refused are invalid UTF-8, halves of surrogate pairs, numbers beyond
/// the range of `double`, nesting beyond `JsonValue::maxDepth`, and text behind the value. When several
/// members have one name, the last counts.
WAINSCOT_API ParsedJson parseJson(std::string_view text);
/// The same from wide text; invalid code points become U+FFFD.
WAINSCOT_API ParsedJson parseJson(LightweightString<wchar_t> const& text);

} // namespace wainscot
