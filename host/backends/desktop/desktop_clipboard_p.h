#pragma once

#include "host/backends/desktop/desktop_selection_p.h"
#include "host/services/clipboard.h"

namespace wainscot {

class DesktopBackend;

/// The clipboard of the window system. Texts are fetched when they are asked for, never on a change: an owner
/// that does not answer holds the program up for a second.
class DesktopClipboard final : public iClipboard {
public:
    explicit DesktopClipboard(DesktopBackend const& backend) : backend_(backend) {}

    bool setText(Kind kind, LightweightString<char> const& utf8) override;
    LightweightString<char> text(Kind kind) override;

private:
    /// The text that this program has put there, and the window that owns it since.
    struct Own {
        LightweightString<char> text;
        unsigned long window = 0;
    };

    DesktopBackend const& backend_;
    SelectionReader reader_;
    Own own_[2];
};

} // namespace wainscot
