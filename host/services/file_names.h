#pragma once

#include "host/base/lightweight_string.h"

namespace wainscot {

// File names are bytes for the system and wide text for people. Each byte that is not valid UTF-8 becomes a
// character from U+F0F80 to U+F0FFF, so that every name can be shown, kept as UTF-8 and opened.

/// The name or path as wide text.
WAINSCOT_API LightweightString<wchar_t> fileNameFromBytes(LightweightString<char> const& bytes);
/// The bytes from which `fileNameFromBytes` made the text; for other texts their UTF-8.
WAINSCOT_API LightweightString<char> fileNameToBytes(LightweightString<wchar_t> const& name);

/// Why a name cannot stand for one entry of a folder.
enum class FileNameFault : unsigned char {
    none,
    empty,
    /// "." or ".."
    reserved,
    /// It contains "/" or a zero character.
    separator,
    /// More than 255 bytes.
    tooLong,
};
/// What is wrong with a name; `none` when it can stand for one entry.
WAINSCOT_API FileNameFault findFileNameFault(LightweightString<wchar_t> const& name);

} // namespace wainscot
