#pragma once

#include "host/base/export.h"
#include "host/base/lightweight_string.h"
#include "host/events/one_shot_timer.h"

#include <cstdint>
#include <functional>

namespace wainscot {

/// Letters that are typed in a row to find an item of a list. After a pause they are forgotten. A letter that
/// is typed again and again goes through the items that begin with it.
class WAINSCOT_API TypeAhead {
public:
    using Text = LightweightString<wchar_t>;

    /// `forgotten` is called when the time is over.
    explicit TypeAhead(std::function<void()> forgotten = {});

    /// Adds what a key types; the backspace key takes the last letter away. False when the key types nothing.
    bool take(std::uint32_t key);
    bool isEmpty() const { return text_.empty(); }
    Text const& text() const { return text_; }
    /// Whether a text begins with what was typed; large and small letters are the same.
    bool matches(Text const& text) const;
    /// Whether a text is what was typed, likewise.
    bool isAll(Text const& text) const;
    /// The first of `count` items from `current` on, and then from the start, for which `matches` is true; -1
    /// when there is none. One for which `isExact` is true as well comes before the others.
    int find(int count, int current, std::function<bool(int)> const& matches,
             std::function<bool(int)> const& isExact);
    /// False when nothing was typed.
    bool forget();

private:
    bool isRepeated() const;

    std::function<void()> forgotten_;
    Text text_;
    OneShotTimer timer_;
};

} // namespace wainscot
