#pragma once

#include "host/base/lightweight_string.h"
#include "host/services/resources.h"

#include <optional>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace wainscot {

/// Texts by number, from language files.
class TextTable {
public:
    /// The languages that the environment asks for, the best first, with English at the end: "de_AT", "de",
    /// "en".
    static std::vector<LightweightString<char>> wantedLanguages();

    /// Built-in texts, then those of the wanted languages over them.
    void load();
    /// Takes the lines of a language file; `name` is used in reports.
    void addLines(std::string_view lines, LightweightString<char> const& name);
    /// Null when there is none.
    LightweightString<wchar_t> const* find(ResId id) const;

private:
    void addBuiltIn();

    std::unordered_map<ResId, LightweightString<wchar_t>> texts_;
};

} // namespace wainscot
