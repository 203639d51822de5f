#pragma once

#include "text/text_box.h"

#include <functional>

namespace wainscot::gallery {

/// A text box that tells whenever text, cursor or selection have changed.
class WatchedBox final : public TextBox {
public:
    using Moved = std::function<void(WatchedBox const&)>;

    WatchedBox(InitArgs const& args, Moved moved) : TextBox(args), moved_(std::move(moved)) {}

    /// "Cursor 5 of 12, selected 2 to 5".
    LightweightString<wchar_t> place() const;

protected:
    void handleCursorChange() override;

private:
    Moved moved_;
};

} // namespace wainscot::gallery
