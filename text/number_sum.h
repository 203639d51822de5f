#pragma once

#include "host/base/export.h"
#include "host/base/lightweight_string.h"

#include <optional>
#include <span>

namespace wainscot {

/// A unit that may stand behind a number, and what the number is multiplied by then.
struct NumberUnit {
    LightweightString<wchar_t> name;
    double factor = 1;
};

/// The result of a calculation as people write it: numbers (see `plainNumber`) with "+", "-", "*", "/" and
/// parentheses, each number with or without a unit behind it: "2*12+6", "1.5s + 20ms". A unit that is not
/// there in those letters is looked for in small and capital ones. Nothing for other texts, and for results
/// that are infinite.
WAINSCOT_API std::optional<double> sumOf(LightweightString<wchar_t> const& text,
                                         std::span<NumberUnit const> units = {});

} // namespace wainscot
