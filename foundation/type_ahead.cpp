#include "foundation/type_ahead.h"

#include "host/base/letter_case.h"
#include "host/events/key_codes.h"

#include <algorithm>

namespace wainscot {

namespace {

/// How long what was typed stays, in milliseconds.
constexpr double stay = 1500;
constexpr std::uint32_t notTyped = Key::ctrl | Key::alt | Key::meta | Key::special;

} // namespace

TypeAhead::TypeAhead(std::function<void()> forgotten)
    : forgotten_(std::move(forgotten)), timer_([this] {
          auto const tell = forgotten_;
          text_ = {};
          if (tell) tell();
      }) {}

bool TypeAhead::take(std::uint32_t key) {
    if (key == Key::backspace && !isEmpty()) {
        text_ = text_.substr(0, text_.size() - 1);
    } else {
        std::uint32_t const code = key & ~(Key::shift | Key::keypad);
        // A text does not begin with a blank.
        if ((key & notTyped) != 0 || code < Key::space || (code == Key::space && isEmpty())) return false;
        text_ += static_cast<wchar_t>(code);
    }
    timer_.start(stay);
    return true;
}

bool TypeAhead::matches(Text const& text) const {
    return !isEmpty() && beginsWithText(text.view(), text_.view());
}

bool TypeAhead::isAll(Text const& text) const {
    return isSameText(text.view(), text_.view());
}

bool TypeAhead::isRepeated() const {
    return text_.size() > 1 && std::ranges::all_of(text_, [this](wchar_t c) { return c == text_[0]; });
}

int TypeAhead::find(int count, int current, std::function<bool(int)> const& matches,
                    std::function<bool(int)> const& isExact) {
    auto const findFrom = [&](int from) {
        int first = -1;
        for (int i = 0; i < count; ++i) {
            int const item = (std::max(from, 0) + i) % count;
            if (!matches(item)) continue;
            if (isExact(item)) return item;
            if (first < 0) first = item;
        }
        return first;
    };
    // The first letter leaves the present item, further ones narrow the choice.
    int const found = findFrom(text_.size() == 1 ? current + 1 : current);
    if (found >= 0 || !isRepeated()) return found;
    text_ = text_.substr(0, 1);
    return findFrom(current + 1);
}

bool TypeAhead::forget() {
    timer_.stop();
    bool const had = !isEmpty();
    text_ = {};
    return had;
}

} // namespace wainscot
