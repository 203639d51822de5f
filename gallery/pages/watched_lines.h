#pragma once

#include "text/multi_line_text_box.h"

#include <functional>

namespace wainscot::gallery {

/// A box with lines of text that tells whenever text, cursor or selection have changed.
class WatchedLines final : public MultiLineTextBox {
public:
    using Moved = std::function<void(WatchedLines const&)>;

    WatchedLines(InitArgs const& args, Moved moved) : MultiLineTextBox(args), moved_(std::move(moved)) {}

    /// "Line 3 of 12, column 5, 7 selected".
    LightweightString<wchar_t> place() const;

protected:
    void handleCursorChange() override;

private:
    Moved moved_;
};

} // namespace wainscot::gallery
