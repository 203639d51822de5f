#include "host/services/clipboard.h"

#include "host/base/convert.h"

#include <algorithm>

namespace wainscot {

namespace {

constinit iClipboard* liveClipboard = nullptr;

/// Other programs take a NUL for the end of the text.
LightweightString<wchar_t> withoutNul(LightweightString<wchar_t> const& text) {
    constexpr wchar_t replacement = 0xFFFD;
    if (text.find(L'\0') == LightweightString<wchar_t>::npos) return text;
    std::wstring shown(text.view());
    std::ranges::replace(shown, L'\0', replacement);
    return LightweightString<wchar_t>(shown);
}

bool put(iClipboard::Kind kind, LightweightString<wchar_t> const& text) {
    return liveClipboard && liveClipboard->setText(kind, toUTF8(withoutNul(text)));
}

LightweightString<wchar_t> fetch(iClipboard::Kind kind) {
    return liveClipboard ? fromUTF8(liveClipboard->text(kind)) : LightweightString<wchar_t>();
}

} // namespace

iClipboard::~iClipboard() = default;

iClipboard* iClipboard::current() {
    return liveClipboard;
}

void iClipboard::install(iClipboard* clipboard) {
    liveClipboard = clipboard;
}

bool MemoryClipboard::setText(Kind kind, LightweightString<char> const& utf8) {
    texts_[static_cast<std::size_t>(kind)] = utf8;
    return true;
}

LightweightString<char> MemoryClipboard::text(Kind kind) {
    return texts_[static_cast<std::size_t>(kind)];
}

bool WindowsClipboard::addText(LightweightString<wchar_t> const& text) {
    return put(iClipboard::Kind::clipboard, text);
}

LightweightString<wchar_t> WindowsClipboard::getText() {
    return fetch(iClipboard::Kind::clipboard);
}

bool WindowsClipboard::addSelection(LightweightString<wchar_t> const& text) {
    return put(iClipboard::Kind::selection, text);
}

LightweightString<wchar_t> WindowsClipboard::getSelection() {
    return fetch(iClipboard::Kind::selection);
}

} // namespace wainscot
