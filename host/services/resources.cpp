#include "host/services/resources.h"

#include "host/base/convert.h"
#include "host/base/diagnostics.h"
#include "host/services/text_table_p.h"

#include <memory>
#include <string>
#include <unicode/uchar.h>

namespace wainscot {

namespace {

using Wide = LightweightString<wchar_t>;

std::unique_ptr<TextTable>& loadedTable() {
    static auto& table = *new std::unique_ptr<TextTable>;
    return table;
}

TextTable const& theTable() {
    std::unique_ptr<TextTable>& table = loadedTable();
    if (!table) {
        table = std::make_unique<TextTable>();
        table->load();
    }
    return *table;
}

template <class Change>
Wide changed(Wide const& text, Change change) {
    std::wstring result(text.view());
    for (wchar_t& c : result)
        if (c > 0 && c <= 0x10FFFF) c = static_cast<wchar_t>(change(static_cast<UChar32>(c)));
    return Wide(result);
}

bool has(std::uint32_t format, ResStrFmt part) {
    return (format & part) != 0;
}

bool endsWithEllipsis(Wide const& text) {
    return text.endsWith(L"...") || text.endsWith(L"\u2026");
}

Wide formatted(Wide text, std::uint32_t format) {
    if (text.empty()) return text;
    if (has(format, eResStrUpperCase)) text = changed(text, u_toupper);
    if (has(format, eResStrLowerCase)) text = changed(text, u_tolower);
    if (has(format, eResStrEllipsis) && !endsWithEllipsis(text)) text += L"...";
    return has(format, eResStrPadded) ? L" " + text + L" " : text;
}

} // namespace

LightweightString<wchar_t> resourceStrW(ResId id) {
    if (id == noResText) return {};
    if (Wide const* const text = theTable().find(id)) return *text;
    LightweightString<char> const number = StringFromInteger(id);
    Diagnostics::count("no resource text", number.c_str());
    return L"#" + Qv::WStringFromInteger(id);
}

LightweightString<wchar_t> resourceStrW(ResId id, ResStrFmt format) {
    return formatted(resourceStrW(id), format);
}

LightweightString<wchar_t> paddedResourceStrW(ResId id) {
    return resourceStrW(id, eResStrPadded);
}

LightweightString<wchar_t> ellipsisResourceStrW(ResId id) {
    return resourceStrW(id, eResStrEllipsis);
}

LightweightString<wchar_t> formatString(LightweightString<wchar_t> const& text, ResStrFmt format) {
    return formatted(text, format);
}

LightweightString<wchar_t> formatString(LightweightString<wchar_t> const& text,
                                        std::initializer_list<LightweightString<wchar_t>> values) {
    std::wstring result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        wchar_t const next = text[i] == L'%' && i + 1 < text.size() ? text[i + 1] : L'\0';
        bool const isPlace =
            next >= L'1' && next <= L'9' && static_cast<std::size_t>(next - L'1') < values.size();
        if (isPlace)
            result += (values.begin() + (next - L'1'))->view();
        else
            result += text[i];
        if (isPlace || next == L'%') ++i;
    }
    return Wide(result);
}

LightweightString<wchar_t> menuFormatString(LightweightString<wchar_t> const& text, std::uint32_t format) {
    std::size_t start = 0;
    std::size_t end = text.size();
    while (start < end && text[start] == L' ') ++start;
    while (end > start && text[end - 1] == L' ') --end;
    return formatted(text.substr(start, end - start), format);
}

void reloadResourceTexts() {
    loadedTable().reset();
}

} // namespace wainscot
