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
    /// What the smallest change by a key is; 0 = there is none.
    double step = 0;
    /// How much is in sight at once, for what scrolls; else 0.
    double page = 0;

    friend bool operator==(NumberValue const&, NumberValue const&) = default;
};

/// What stands in a text. Places are gaps between its characters.
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
        /// Its value stands for several that differ.
        mixed = 512,
        /// Return presses it while nothing else has use for that key.
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
    /// What costs more than the rest, and is filled in only when it is asked for.
    enum Part : std::uint32_t { relations = 1, textContent = 2, allParts = 3 };

    /// What was asked for; overriders look before they fill in such a part.
    std::uint32_t parts = 0;
    bool wants(Part part) const { return (parts & part) != 0; }

    Role role = Role::panel;
    /// What a person would call it: its label.
    LightweightString<wchar_t> name;
    LightweightString<wchar_t> value;
    /// The value of what is set within a range.
    std::optional<NumberValue> number;
    std::uint32_t states = 0;
    /// `Action`s.
    std::uint32_t actions = 0;
    /// Root coordinates. Of an item, what is in sight of it: empty when nothing is.
    IntBox box;

    // --- Text content, of what is text
    std::optional<TextContent> content;

    // --- Relations
    HandlerRef<Glob> labelledBy;
    HandlerRef<Glob> controls;
    /// What it is one of several in.
    HandlerRef<Glob> memberOf;
    /// Which one it is, from 1, and how many there are; 0 = it is no member of a set.
    std::size_t position = 0;
    std::size_t setSize = 0;

    /// What a widget says, with its label's name and its place in its parent.
    static GlobDescription of(Glob const& glob, std::uint32_t parts = 0);
};

/// What has changed in a description. Who has items tells of `children` when there are others.
enum class DescriptionChange : std::uint8_t { name, value, state, place, children, relations };

} // namespace wainscot
