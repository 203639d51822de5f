#include "host/services/clipboard.h"

#include "host/base/convert.h"

#include <algorithm>

namespace wainscot {

namespace {

constinit iClipboard* liveClipboard = nullptr;

LightweightString<wchar_t> untilNul(LightweightString<wchar_t> const& text) {
    auto const nul = std::find(text.begin(), text.end(), L'\0');
    return nul == text.end() ? text : text.substr(0, static_cast<std::size_t>(nul - text.begin()));
}

bool put(iClipboard::Kind kind, LightweightString<wchar_t> const& text) {
    return liveClipboard && liveClipboard->setText(kind, toUTF8(untilNul(text)));
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
