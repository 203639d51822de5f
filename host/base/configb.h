#pragma once

#include "host/base/lightweight_string.h"
#include "host/base/xy.h"

#include <cstdint>
#include <map>
#include <variant>

namespace wainscot {

/// A keyed record of settings, from which objects are built and into which they are saved.
class WAINSCOT_API configb {
public:
    using Value =
        std::variant<bool, std::int64_t, double, LightweightString<char>, LightweightString<wchar_t>>;

    /// Reads a value into `value`; false, and nothing changed, when the key is unknown or holds another type.
    bool in(LightweightString<char> const& key, bool& value) const { return read(key, value); }
    bool in(LightweightString<char> const& key, int& value) const;
    bool in(LightweightString<char> const& key, double& value) const { return read(key, value); }
    bool in(LightweightString<char> const& key, LightweightString<char>& value) const {
        return read(key, value);
    }
    bool in(LightweightString<char> const& key, LightweightString<wchar_t>& value) const {
        return read(key, value);
    }

    /// Sets a value, whatever the key had before.
    void set(LightweightString<char> const& key, bool value) { values_[key] = value; }
    void set(LightweightString<char> const& key, int value) { values_[key] = std::int64_t(value); }
    void set(LightweightString<char> const& key, double value) { values_[key] = value; }
    void set(LightweightString<char> const& key, LightweightString<char> value) {
        values_[key] = std::move(value);
    }
    void set(LightweightString<char> const& key, LightweightString<wchar_t> value) {
        values_[key] = std::move(value);
    }
    void set(LightweightString<char> const& key, char const* value) {
        values_[key] = LightweightString<char>(value);
    }

    bool isEmpty() const { return values_.empty(); }

private:
    template <class T>
    bool read(LightweightString<char> const& key, T& value) const {
        auto const found = values_.find(key);
        T const* const held = found == values_.end() ? nullptr : std::get_if<T>(&found->second);
        if (held) value = *held;
        return held != nullptr;
    }

    std::map<LightweightString<char>, Value> values_;
};

} // namespace wainscot
