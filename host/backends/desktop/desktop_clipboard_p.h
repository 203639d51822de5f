#pragma once

#include "host/services/clipboard.h"

namespace wainscot {

/// The clipboard of the window system. Texts are fetched when they are asked for, never on a change: an owner
/// that does not answer holds the library up for a second.
class DesktopClipboard final : public iClipboard {
public:
    bool setText(Kind kind, LightweightString<char> const& utf8) override;
    LightweightString<char> text(Kind kind) override;
};

} // namespace wainscot
