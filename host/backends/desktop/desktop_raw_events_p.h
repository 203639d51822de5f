#pragma once

#include "host/base/xy.h"

#include <SDL_events.h>

#include <optional>

namespace wainscot {

/// Events of the X server that the window library does not report.
class RawEvents {
public:
    /// Has the library pass on the X events that are asked for below, in their order among its own events.
    static void watch();

    /// The pointer moved, or came, while no button was held.
    static bool hasNoButton(SDL_SysWMEvent const& event);

    /// Files that another program drags.
    struct FilesOver {
        unsigned long window = 0;
        /// On the screen, in device pixels, y downwards; none when they have left.
        std::optional<XY<int>> place;
    };
    std::optional<FilesOver> filesOver(SDL_SysWMEvent const& event);

private:
    bool hasFiles_ = false;
};

} // namespace wainscot
