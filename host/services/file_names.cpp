#include "host/services/file_names.h"

#include "host/base/convert.h"

#include <bit>
#include <cstdint>
#include <string>
#include <string_view>

namespace wainscot {

namespace {

using Narrow = LightweightString<char>;
using Wide = LightweightString<wchar_t>;

constexpr std::uint32_t escapeBase = 0xF0F00;
constexpr std::size_t longestName = 255;

bool isEscape(std::uint32_t code) {
    return code >= escapeBase + 0x80 && code <= escapeBase + 0xFF;
}

struct Decoded {
    std::uint32_t code = 0;
    std::size_t length = 0;
};

std::size_t lengthFrom(unsigned char first) {
    return first < 0x80 ? 1 : first < 0xC2 ? 0 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : first < 0xF5 ? 4 : 0;
}

/// The character at the beginning of `bytes`; its length is 0 when there is none.
Decoded decodeOne(std::string_view bytes) {
    constexpr std::uint32_t least[] = {0, 0, 0x80, 0x800, 0x10000};
    auto const first = static_cast<unsigned char>(bytes[0]);
    std::size_t const length = lengthFrom(first);
    if (length == 0 || bytes.size() < length) return {};
    std::uint32_t code = length == 1 ? first : first & (0x7FU >> length);
    for (std::size_t i = 1; i < length; ++i) {
        auto const next = static_cast<unsigned char>(bytes[i]);
        if ((next & 0xC0U) != 0x80U) return {};
        code = code << 6U | (next & 0x3FU);
    }
    bool const isSurrogate = code >= 0xD800 && code <= 0xDFFF;
    if (code < least[length] || code > 0x10FFFF || isSurrogate) return {};
    return {code, length};
}

} // namespace

LightweightString<wchar_t> fileNameFromBytes(LightweightString<char> const& bytes) {
    std::wstring name;
    name.reserve(bytes.size());
    for (std::string_view rest = bytes.view(); !rest.empty();) {
        Decoded next = decodeOne(rest);
        // A real character from the range of the escapes is escaped itself; otherwise it would come back as a
        // byte.
        if (next.length == 0 || isEscape(next.code))
            next = {escapeBase + static_cast<unsigned char>(rest[0]), 1};
        name.push_back(static_cast<wchar_t>(next.code));
        rest.remove_prefix(next.length);
    }
    return Wide(name);
}

LightweightString<char> fileNameToBytes(LightweightString<wchar_t> const& name) {
    std::string bytes;
    bytes.reserve(name.size());
    std::wstring_view rest = name.view();
    while (!rest.empty()) {
        auto const code = std::bit_cast<std::uint32_t>(rest.front());
        std::size_t plain = 0;
        while (plain < rest.size() && !isEscape(static_cast<std::uint32_t>(rest[plain]))) ++plain;
        if (plain == 0) {
            bytes.push_back(static_cast<char>(code - escapeBase));
            plain = 1;
        } else {
            bytes += toUTF8(Wide(rest.substr(0, plain))).view();
        }
        rest.remove_prefix(plain);
    }
    return Narrow(bytes);
}

FileNameFault findFileNameFault(LightweightString<wchar_t> const& name) {
    if (name.empty()) return FileNameFault::empty;
    if (name == L"." || name == L"..") return FileNameFault::reserved;
    std::wstring_view const text = name.view();
    if (text.find(L'/') != text.npos || text.find(L'\0') != text.npos) return FileNameFault::separator;
    return fileNameToBytes(name).size() > longestName ? FileNameFault::tooLong : FileNameFault::none;
}

} // namespace wainscot
