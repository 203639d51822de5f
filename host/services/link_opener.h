#pragma once

#include "host/base/export.h"
#include "host/base/lightweight_string.h"

#include <functional>

namespace wainscot {

/// What came of opening a link.
struct LinkResult {
    enum class State : unsigned char {
        /// The desktop's program for it has been started.
        opened,
        /// It is no link, or nobody allowed its scheme.
        refused,
        /// The system could not start the program; `message` has its reason.
        failed,
    };
    State state = State::refused;
    /// Why not, for people; empty when it was opened.
    LightweightString<wchar_t> message;

    bool isOpened() const { return state == State::opened; }
};

/// Asked whether a link may be opened whose scheme (in lower case) is not among those opened without asking.
using AskForLink =
    std::function<bool(LightweightString<char> const& scheme, LightweightString<wchar_t> const& link)>;

/// The link as it is opened: without blanks at its ends, and without a scheme for the web that stands in
/// front of a whole link by mistake ("http://https://a.example" is "https://a.example"). Empty when it is no
/// link: it has no scheme, or blanks or control characters in it.
WAINSCOT_API LightweightString<wchar_t> usableLink(LightweightString<wchar_t> const& link);

/// Opens a link with the program that the desktop has for it, without a shell and without waiting for that
/// program. The schemes http, https and mailto are opened at once; any other one, local files too, only when
/// `ask` says so.
WAINSCOT_API LinkResult openLink(LightweightString<wchar_t> const& link, AskForLink const& ask = {});

} // namespace wainscot
