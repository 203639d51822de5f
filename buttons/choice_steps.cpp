#include "buttons/choice_steps_p.h"

#include "host/events/key_codes.h"

namespace wainscot::ChoiceSteps {

namespace {

int wrapped(int value, int size) {
    return (value % size + size) % size;
}

} // namespace

std::optional<XY<int>> directionOf(std::uint32_t key) {
    switch (key) {
    case Key::right:
        return XY<int>{1, 0};
    case Key::left:
        return XY<int>{-1, 0};
    case Key::down:
        return XY<int>{0, 1};
    case Key::up:
        return XY<int>{0, -1};
    default:
        return std::nullopt;
    }
}

int next(int from, XY<int> direction, int count, int columns, std::function<bool(int)> const& isUsable) {
    if (count <= 0) return -1;
    bool const isLine = columns <= 1 || columns >= count || from < 0;
    bool const staysInColumn = direction.x == 0 && !isLine;
    int const rows = staysInColumn ? (count + columns - 1) / columns : count;
    for (int i = 1; i <= rows; ++i) {
        int const index = staysInColumn
                              ? wrapped(from / columns + direction.y * i, rows) * columns + from % columns
                              : wrapped(from + (direction.x + direction.y) * i, count);
        if (index < count && isUsable(index)) return index;
    }
    return -1;
}

} // namespace wainscot::ChoiceSteps
