#pragma once

#include "host/base/export.h"
#include "host/base/lightweight_string.h"

namespace wainscot {

/// Where texts are left for other programs; a backend has one. Texts are UTF-8 and may hold anything but NUL.
class WAINSCOT_API iClipboard {
public:
    /// The clipboard, and the text selected last in any program, which a middle click inserts.
    enum class Kind : unsigned char { clipboard, selection };

    virtual ~iClipboard();
    /// False when the window system refuses.
    virtual bool setText(Kind kind, LightweightString<char> const& utf8) = 0;
    /// Empty when there is none, or when its owner does not answer.
    virtual LightweightString<char> text(Kind kind) = 0;

    /// The clipboard of the live host; null without a host.
    static iClipboard* current();
    static void install(iClipboard* clipboard);
};

/// Keeps texts inside the program.
class WAINSCOT_API MemoryClipboard final : public iClipboard {
public:
    bool setText(Kind kind, LightweightString<char> const& utf8) override;
    LightweightString<char> text(Kind kind) override;

private:
    LightweightString<char> texts_[2];
};

/// The clipboard for programs: wide text inside, UTF-8 outside. A text outlives the widget that it came from.
namespace WindowsClipboard {

/// Messages of menus and keys to the object that is being edited.
inline constexpr LightweightString<char> cutTextMsg{"WindowsClipboard::cutText"};
inline constexpr LightweightString<char> copyTextMsg{"WindowsClipboard::copyText"};
inline constexpr LightweightString<char> pasteTextMsg{"WindowsClipboard::pasteText"};

/// Puts a text there, which may be empty. A NUL becomes U+FFFD. False without a host, or when the window
/// system refuses.
WAINSCOT_API bool addText(LightweightString<wchar_t> const& text);
/// The text that is there now, fetched from its owner; empty when there is none. Line ends stay as they are.
WAINSCOT_API LightweightString<wchar_t> getText();
/// The same for the text that was selected last, which a middle click inserts.
WAINSCOT_API bool addSelection(LightweightString<wchar_t> const& text);
WAINSCOT_API LightweightString<wchar_t> getSelection();

} // namespace WindowsClipboard
} // namespace wainscot
