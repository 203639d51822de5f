#pragma once

#include "host/base/lightweight_string.h"
#include "host/messages/handler_ref.h"
#include "host/objects/glob.h"

#include <optional>

namespace wainscot {

class StandardPanel;

/// The scroll bars of a widget of rows: one to the right of them, one below.
class WAINSCOT_API RowBars {
public:
    /// All rows, and the widest, in pixels.
    struct Content {
        std::int64_t height = 0;
        int width = 0;
    };
    /// Where the user has moved a bar: by a step, or to a share of the content.
    struct Move {
        bool isVertical = false;
        int step = 0;
        double share = 0;
    };
    enum class Display : unsigned char {
        /// They take no room.
        never,
        /// They keep their room.
        hidden,
        whereNeeded
    };

    /// Adds them to the widget that holds the rows.
    void make(StandardPanel& owner, Glob& rows);
    /// Puts them into an area and answers what they leave for the rows. The owner may be gone afterwards.
    IntBox place(Glob& owner, IntBox const& area, Content const& content, Display display);
    /// They show that so much of the content is seen, from there on.
    void show(XY<int> const& seen, Content const& content, std::int64_t top, int left);
    /// Nothing when the message is none of a scroll bar; a step of 0 with a share otherwise.
    static std::optional<Move> moveOf(LightweightString<char> const& message, Glob* sender);

private:
    HandlerRef<Glob> vertical_;
    HandlerRef<Glob> horizontal_;
};

} // namespace wainscot
