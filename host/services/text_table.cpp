#include "host/base/convert.h"
#include "host/base/diagnostics.h"
#include "host/services/atomic_file_p.h"
#include "host/services/data_folders.h"
#include "host/services/text_ids.h"
#include "host/services/text_table_p.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <string>
#include <unordered_set>

namespace wainscot {

namespace {

constexpr std::size_t maxFileSize = std::size_t(64) * 1024 * 1024;
/// The most reports for one file.
constexpr int maxReports = 10;

struct BuiltIn {
    ResId id;
    wchar_t const* text;
};

constexpr BuiltIn builtInTexts[] = {
    {TextId::off, L"Off"},
    {TextId::on, L"On"},
    {TextId::readingDirection, L"ltr"},
    {TextId::fileSystem, L"File system"},
    {TextId::home, L"Home"},
    {TextId::desktop, L"Desktop"},
    {TextId::documents, L"Documents"},
    {TextId::downloads, L"Downloads"},
    {TextId::music, L"Music"},
    {TextId::pictures, L"Pictures"},
    {TextId::videos, L"Videos"},
    {TextId::nameEmpty, L"The name is empty."},
    {TextId::nameReserved, L"The names \".\" and \"..\" cannot be used."},
    {TextId::nameSeparator, L"A name cannot contain \"/\"."},
    {TextId::nameTooLong, L"The name is too long."},
    {TextId::ok, L"OK"},
    {TextId::close, L"Close"},
    {TextId::changeSize, L"Change size"},
    {TextId::keepOpen, L"Keep open"},
    {TextId::settings, L"Settings"},
    {TextId::options, L"Options"},
    {TextId::severalValues, L"Several values"},
    {TextId::undo, L"Undo"},
    {TextId::redo, L"Redo"},
    {TextId::cut, L"Cut"},
    {TextId::copy, L"Copy"},
    {TextId::paste, L"Paste"},
    {TextId::selectAll, L"Select all"},
    {TextId::putDefaultBack, L"Put the default back"},
    {TextId::addItem, L"Add..."},
    {TextId::previousTabs, L"Tabs before"},
    {TextId::nextTabs, L"Tabs behind"},
    {TextId::allTabs, L"All tabs"},
    {TextId::stillLoading, L"Loading\u2026"},
    {TextId::linkUnusable, L"This is no link that can be opened."},
    {TextId::linkNotAllowed, L"Links of this kind are not opened."},
};

bool isBlank(char c) {
    return c == ' ' || c == '\t';
}

std::string_view trimmed(std::string_view text) {
    while (!text.empty() && isBlank(text.front())) text.remove_prefix(1);
    while (!text.empty() && isBlank(text.back())) text.remove_suffix(1);
    return text;
}

std::optional<std::string> unescaped(std::string_view text) {
    constexpr std::string_view letters = "nts\\", meanings = "\n\t \\";
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\\') {
            result += text[i];
            continue;
        }
        std::size_t const kind = ++i < text.size() ? letters.find(text[i]) : std::string_view::npos;
        if (kind == std::string_view::npos) return {};
        result += meanings[kind];
    }
    return result;
}

struct Line {
    ResId id = 0;
    LightweightString<wchar_t> text;
};

/// The number and text in a line such as "10001 = Off"; nothing for other lines.
std::optional<Line> parseLine(std::string_view line) {
    std::size_t const equals = line.find('=');
    if (equals == std::string_view::npos) return {};
    std::string_view const number = trimmed(line.substr(0, equals));
    Line result;
    auto const read = std::from_chars(number.data(), number.data() + number.size(), result.id);
    if (read.ec != std::errc() || read.ptr != number.data() + number.size()) return {};
    std::optional<std::string> const text = unescaped(trimmed(line.substr(equals + 1)));
    if (!text || result.id == noResText) return {};
    LightweightString<char> const bytes(*text);
    result.text = fromUTF8(bytes);
    return toUTF8(result.text) == bytes ? std::optional(result) : std::nullopt;
}

/// The value of the variable that decides about the language of messages.
std::string languageSetting() {
    for (char const* variable : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        char const* const value = std::getenv(variable);
        if (value && *value) return value;
    }
    return {};
}

/// It becomes part of a file name: it must not lead out of the folder.
bool isLanguageName(std::string_view name) {
    auto const fits = [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' ||
               c == '-';
    };
    return !name.empty() && name.size() < 40 && std::all_of(name.begin(), name.end(), fits);
}

} // namespace

std::vector<LightweightString<char>> TextTable::wantedLanguages() {
    std::string setting = languageSetting();
    setting.erase(std::min(setting.find_first_of(".@"), setting.size()));
    std::vector<LightweightString<char>> languages;
    if (isLanguageName(setting) && setting != "C" && setting != "POSIX") {
        languages.emplace_back(setting);
        std::size_t const country = setting.find('_');
        if (country != std::string::npos && country > 0) languages.emplace_back(setting.substr(0, country));
    }
    if (languages.empty() || !(languages.back() == "en")) languages.emplace_back("en");
    return languages;
}

void TextTable::load() {
    addBuiltIn();
    std::vector<LightweightString<char>> languages = wantedLanguages();
    std::reverse(languages.begin(), languages.end());
    for (LightweightString<char> const& language : languages) {
        LightweightString<char> const path = findDataFile("texts/" + language + ".txt");
        if (path.empty()) continue;
        FileBytes const file = readWholeFile(path, maxFileSize);
        if (file.state == FileBytes::State::read)
            addLines(file.bytes.view(), path);
        else
            LogBoth("texts: %s cannot be read (%s)", path.c_str(), file.message.c_str());
    }
}

void TextTable::addBuiltIn() {
    for (BuiltIn const& text : builtInTexts) texts_[text.id] = text.text;
}

void TextTable::addLines(std::string_view lines, LightweightString<char> const& name) {
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    if (lines.substr(0, byteOrderMark.size()) == byteOrderMark) lines.remove_prefix(byteOrderMark.size());
    std::unordered_set<ResId> seen;
    int reports = 0;
    for (int number = 1; !lines.empty(); ++number) {
        std::size_t const end = std::min(lines.find('\n'), lines.size());
        std::string_view line = lines.substr(0, end);
        lines.remove_prefix(std::min(end + 1, lines.size()));
        if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
        line = trimmed(line);
        if (line.empty() || line.front() == '#') continue;
        std::optional<Line> const parsed = parseLine(line);
        bool const isNew = parsed && seen.insert(parsed->id).second;
        if (isNew)
            texts_[parsed->id] = parsed->text;
        else if (++reports <= maxReports)
            LogBoth("%s:%d: %s", name.c_str(), number,
                    parsed ? "this number was given before" : "not of the form: number = text");
    }
}

LightweightString<wchar_t> const* TextTable::find(ResId id) const {
    auto const found = texts_.find(id);
    return found == texts_.end() ? nullptr : &found->second;
}

} // namespace wainscot
