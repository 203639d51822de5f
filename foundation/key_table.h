#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace wainscot {

/// What a key does in a control. Each control has a `constexpr` table of rows, `keyTable`. The control, its
/// guide and its tests use that table.
template <class Action>
struct KeyRow {
    /// With its modifiers (`host/events/key_codes.h`).
    std::uint32_t key;
    Action action;
    /// For the guide.
    std::string_view does;
};

/// The action of a key; nothing when it has none.
template <class Action, std::size_t count>
constexpr std::optional<Action> actionFor(KeyRow<Action> const (&keys)[count], std::uint32_t key) {
    for (KeyRow<Action> const& row : keys)
        if (row.key == key) return row.action;
    return std::nullopt;
}

} // namespace wainscot
