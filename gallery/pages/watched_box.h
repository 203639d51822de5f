#pragma once

#include "text/text_box.h"

#include <functional>

namespace wainscot::gallery {

/// A text box that tells whenever the user may have moved its cursor.
class WatchedBox final : public TextBox {
public:
    using Moved = std::function<void(WatchedBox const&)>;

    WatchedBox(InitArgs const& args, Moved moved) : TextBox(args), moved_(std::move(moved)) {}

    /// "Cursor 5 of 12, selected 2 to 5".
    LightweightString<wchar_t> place() const;

    int handleKeyboardEvent(int keyCode) override;
    void handleKbdFocus() override;

protected:
    bool pressBegan(Event const& event) override;
    void pressMoved(Event const& event) override;
    void pressEnded(PressEnd how) override;

private:
    void tell(LifeGuard const& life) const {
        if (life.alive()) moved_(*this);
    }

    Moved moved_;
};

} // namespace wainscot::gallery
