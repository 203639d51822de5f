#pragma once

#include "host/base/export.h"
#include "host/base/lightweight_string.h"

#include <functional>

namespace wainscot {

/// The result of opening a link.
struct LinkResult {
    enum class State : unsigned char {
        /// The desktop's program for it has been started.
        opened,
        /// It is not a link, or its scheme was not allowed.
        refused,
        /// The system could not start the program; `message` has its reason.
        failed,
    };
    State state = State::refused;
    /// Why it was not opened, for people; empty on success.
    LightweightString<wchar_t> message;

    bool isOpened() const { return state == State::opened; }
};

/// Asked whether a link with this scheme (in lower case) may be opened. Not asked for web and mail links.
using AskForLink =
    std::function<bool(LightweightString<char> const& scheme, LightweightString<wchar_t> const& link)>;

/// The link as it is opened: without blanks at its ends, and without a doubled web scheme
/// ("http://https://a.example" is "https://a.example"). Empty when it is not a link: it has no scheme, or it
/// contains blanks or control characters.
WAINSCOT_API LightweightString<wchar_t> usableLink(LightweightString<wchar_t> const& link);

/// Opens a link with the desktop's program for it, without a shell and without waiting for that program.
/// Links with the schemes http, https and mailto are opened at once; all others, local files too, only when
/// `ask` allows it.
WAINSCOT_API LinkResult openLink(LightweightString<wchar_t> const& link, AskForLink const& ask = {});

} // namespace wainscot
