#include "host/services/json.h"

#include "host/base/convert.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <nlohmann/json.hpp>
#include <string>

namespace wainscot {

namespace {

using Library = nlohmann::json;

constexpr std::size_t maxReason = 160;

template <class T, class Variant>
std::optional<T> heldAs(Variant const& value) {
    T const* const held = std::get_if<T>(&value);
    return held ? std::optional<T>(*held) : std::nullopt;
}

std::string asString(JsonValue::Text const& text) {
    return std::string(text.view());
}

/// The library's form of a value, for writing. Recurses at most `maxDepth` deep.
Library toLibrary(JsonValue const& value) {
    if (auto const truth = value.asBool()) return *truth;
    if (auto const integer = value.asInteger()) return *integer;
    if (auto const number = value.asNumber()) return *number;
    if (auto const text = value.asText()) return asString(*text);
    if (value.isNull()) return nullptr;
    Library result = value.isArray() ? Library::array() : Library::object();
    if (value.isArray())
        for (std::size_t i = 0; i < value.size(); ++i) result.push_back(toLibrary(value.at(i)));
    for (auto const& [key, member] : value.members()) result[asString(key)] = toLibrary(member);
    return result;
}

/// The place where arrays and objects are nested too deep; npos when there is none.
std::size_t tooDeepAt(std::string_view text) {
    int depth = 0;
    bool inText = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        char const c = text[i];
        if (c == '"')
            inText = !inText;
        else if (inText)
            i += c == '\\' ? 1 : 0;
        else if ((c == '[' || c == '{') && ++depth > JsonValue::maxDepth)
            return i;
        else if (c == ']' || c == '}')
            --depth;
    }
    return std::string_view::npos;
}

/// Builds a value from the library's reports; takes memory in proportion to the text only.
class Builder {
public:
    bool null() { return place({}); }
    bool boolean(bool value) { return place(JsonValue(value)); }
    bool number_integer(Library::number_integer_t value) { return place(JsonValue(std::int64_t(value))); }
    bool number_unsigned(Library::number_unsigned_t value) {
        constexpr std::uint64_t largest = std::numeric_limits<std::int64_t>::max();
        return place(value <= largest ? JsonValue(static_cast<std::int64_t>(value))
                                      : JsonValue(static_cast<double>(value)));
    }
    bool number_float(Library::number_float_t value, std::string const&) { return place(JsonValue(value)); }
    bool string(std::string const& value) { return place(JsonValue(JsonValue::Text(value))); }
    bool binary(Library::binary_t const&) { return false; }
    bool start_object(std::size_t) { return open(JsonValue::object()); }
    bool start_array(std::size_t) { return open(JsonValue::array()); }
    bool key(std::string const& name) {
        open_.back().key = JsonValue::Text(name);
        return true;
    }
    bool end_object() { return close(); }
    bool end_array() { return close(); }
    bool parse_error(std::size_t place, std::string const&, Library::exception const& fault) {
        faultPlace = place;
        reason = fault.what();
        return false;
    }

    JsonValue result;
    std::size_t faultPlace = 0;
    std::string reason;

private:
    struct Open {
        JsonValue value;
        JsonValue::Text key;
    };

    bool open(JsonValue value) {
        open_.push_back({std::move(value), {}});
        return true;
    }
    bool close() {
        JsonValue value = std::move(open_.back().value);
        open_.pop_back();
        return place(std::move(value));
    }
    bool place(JsonValue value) {
        if (open_.empty()) {
            result = std::move(value);
            return true;
        }
        Open& parent = open_.back();
        return parent.value.isArray() ? parent.value.add(std::move(value))
                                      : parent.value.set(parent.key, std::move(value));
    }

    std::vector<Open> open_;
};

/// The library's reason without its marks and places, short and as valid UTF-8.
LightweightString<char> readable(std::string reason) {
    if (std::size_t const mark = reason.find("] "); mark < 60) reason.erase(0, mark + 2);
    if (reason.compare(0, 14, "parse error at") == 0) reason.erase(0, reason.find(": ") + 2);
    if (reason.size() > maxReason) reason = reason.substr(0, maxReason) + "...";
    return toUTF8(fromUTF8(LightweightString<char>(reason)));
}

ParsedJson failure(std::string_view text, std::size_t offset, LightweightString<char> message) {
    std::string_view const before = text.substr(0, std::min(offset, text.size()));
    std::size_t const lineStart = before.rfind('\n') + 1;
    auto const isCharacter = [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U; };
    ParsedJson result;
    result.message = std::move(message);
    result.line = 1 + static_cast<std::size_t>(std::count(before.begin(), before.end(), '\n'));
    result.column =
        1 + static_cast<std::size_t>(std::count_if(before.begin() + static_cast<std::ptrdiff_t>(lineStart),
                                                   before.end(), isCharacter));
    return result;
}

} // namespace

JsonValue::JsonValue(LightweightString<wchar_t> const& value) : value_(toUTF8(value)) {}

/// The old contents are freed last: `other` may have been a part of them.
JsonValue& JsonValue::operator=(JsonValue other) noexcept {
    value_.swap(other.value_);
    std::swap(depth_, other.depth_);
    return *this;
}

JsonValue JsonValue::array() {
    JsonValue result;
    result.value_ = Array();
    result.depth_ = 1;
    return result;
}

JsonValue JsonValue::object() {
    JsonValue result;
    result.value_ = Object();
    result.depth_ = 1;
    return result;
}

std::optional<bool> JsonValue::asBool() const {
    return heldAs<bool>(value_);
}

std::optional<std::int64_t> JsonValue::asInteger() const {
    return heldAs<std::int64_t>(value_);
}

std::optional<double> JsonValue::asNumber() const {
    if (auto const integer = asInteger()) return static_cast<double>(*integer);
    return heldAs<double>(value_);
}

std::optional<JsonValue::Text> JsonValue::asText() const {
    return heldAs<Text>(value_);
}

std::optional<LightweightString<wchar_t>> JsonValue::asWideText() const {
    Text const* const text = std::get_if<Text>(&value_);
    return text ? std::optional(fromUTF8(*text)) : std::nullopt;
}

std::size_t JsonValue::size() const {
    if (Array const* const elements = std::get_if<Array>(&value_)) return elements->size();
    return members().size();
}

JsonValue const& JsonValue::at(std::size_t index) const {
    static JsonValue const none;
    Array const* const elements = std::get_if<Array>(&value_);
    return elements && index < elements->size() ? (*elements)[index] : none;
}

JsonValue const& JsonValue::member(Text const& key) const {
    static JsonValue const none;
    auto const found = members().find(key);
    return found == members().end() ? none : found->second;
}

bool JsonValue::has(Text const& key) const {
    return members().count(key) != 0;
}

JsonValue::Object const& JsonValue::members() const {
    static Object const none;
    Object const* const held = std::get_if<Object>(&value_);
    return held ? *held : none;
}

void JsonValue::deepenFor(JsonValue const& child) {
    depth_ = std::max(depth_, child.depth_ + 1);
}

bool JsonValue::add(JsonValue value) {
    Array* const elements = std::get_if<Array>(&value_);
    if (!elements || !mayHold(value)) return false;
    deepenFor(value);
    elements->push_back(std::move(value));
    return true;
}

bool JsonValue::set(Text const& key, JsonValue value) {
    Object* const held = std::get_if<Object>(&value_);
    if (!held || !mayHold(value)) return false;
    deepenFor(value);
    held->insert_or_assign(key, std::move(value));
    return true;
}

bool JsonValue::erase(Text const& key) {
    Object* const held = std::get_if<Object>(&value_);
    return held && held->erase(key) != 0;
}

JsonValue* JsonValue::memberToChange(Text const& key) {
    Object* const held = std::get_if<Object>(&value_);
    if (!held) return nullptr;
    auto const found = held->find(key);
    return found == held->end() ? nullptr : &found->second;
}

bool JsonValue::setWithin(Text const& outer, Text const& key, JsonValue value) {
    if (value.depth_ + 1 >= maxDepth) return false;
    JsonValue* const inner = memberToChange(outer);
    if (!inner || !inner->isObject()) {
        JsonValue made = object();
        return made.set(key, std::move(value)) && set(outer, std::move(made));
    }
    if (!inner->set(key, std::move(value))) return false;
    deepenFor(*inner);
    return true;
}

bool JsonValue::eraseWithin(Text const& outer, Text const& key) {
    JsonValue* const inner = memberToChange(outer);
    return inner && inner->erase(key);
}

JsonValue::Text JsonValue::write(int indent) const {
    return Text(toLibrary(*this).dump(indent, ' ', false, Library::error_handler_t::replace));
}

ParsedJson parseJson(std::string_view text) {
    if (std::size_t const place = tooDeepAt(text); place != std::string_view::npos)
        return failure(text, place, "arrays and objects lie too deep inside each other");
    Builder builder;
    if (!Library::sax_parse(text.begin(), text.end(), &builder))
        return failure(text, builder.faultPlace > 0 ? builder.faultPlace - 1 : 0, readable(builder.reason));
    return {std::move(builder.result), {}, 0, 0};
}

ParsedJson parseJson(LightweightString<wchar_t> const& text) {
    return parseJson(toUTF8(text).view());
}

} // namespace wainscot
