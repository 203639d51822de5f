#pragma once

#include "host/base/box.h"
#include "host/base/export.h"
#include "host/base/lightweight_string.h"
#include "host/messages/handler_ref.h"
#include "host/objects/role.h"

#include <cstddef>
#include <cstdint>
#include <optional>

namespace wainscot {

class Glob;

/// A value as a number.
struct NumberValue {
    double value = 0;
    double minimum = 0;
    double maximum = 0;
    /// The smallest change by a key; 0 = there is none.
    double step = 0;
    /// For scrolling widgets: how much is in sight at once; else 0.
    double page = 0;

    friend bool operator==(NumberValue const&, NumberValue const&) = default;
};

/// The contents of a text widget. Places are gaps between characters.
struct TextContent {
    LightweightString<wchar_t> text;
    std::size_t caret = 0;
    /// Where the selection begins; it ends at the caret.
    std::size_t anchor = 0;
};

/// What a widget, or an item in one, says about itself to drivers, scripts and assistive tools.
struct WAINSCOT_API GlobDescription {
    enum State : std::uint32_t {
        visible = 1,
        enabled = 2,
        focused = 4,
        focusable = 8,
        pressed = 16,
        checked = 32,
        expanded = 64,
        selected = 128,
        editable = 256,
        /// Its value stands for several different values.
        mixed = 512,
        /// Return presses it when nothing else uses that key.
        isDefault = 1024,
    };
    /// What can be done with it.
    enum Action : std::uint32_t {
        press = 1,
        toggle = 2,
        drag = 4,
        select = 8,
        /// Scrolls it into sight.
        reveal = 16,
    };
    /// Parts that cost more than the rest and are filled in only when asked for.
    enum Part : std::uint32_t { relations = 1, textContent = 2, allParts = 3 };

    /// The parts that were asked for; overriders look here before they fill in such a part.
    std::uint32_t parts = 0;
    bool wants(Part part) const { return (parts & part) != 0; }

    Role role = Role::panel;
    /// What a person would call it: its label.
    LightweightString<wchar_t> name;
    LightweightString<wchar_t> value;
    /// The value of a widget with a range.
    std::optional<NumberValue> number;
    std::uint32_t states = 0;
    /// `Action`s.
    std::uint32_t actions = 0;
    /// Root coordinates. For an item, the part in sight; empty when it is out of sight.
    IntBox box;

    // --- Text content, for text widgets
    std::optional<TextContent> content;

    // --- Relations
    HandlerRef<Glob> labelledBy;
    HandlerRef<Glob> controls;
    /// The set of which it is a member.
    HandlerRef<Glob> memberOf;
    /// Its place in the set, from 1, and the number of members; 0 = it belongs to no set.
    std::size_t position = 0;
    std::size_t setSize = 0;

    /// The description of a widget, with its label's name and its place in its parent.
    static GlobDescription of(Glob const& glob, std::uint32_t parts = 0);
};

/// What has changed in a description. A widget with items tells of `children` when the items have changed.
/// `selection` is the caret or the selection of a text.
enum class DescriptionChange : std::uint8_t { name, value, state, place, children, relations, selection };

} // namespace wainscot
