#pragma once

#include "host/base/export.h"

namespace wainscot {

/// The frame of a panel: its kind, and how many pixels of each edge it takes.
class WAINSCOT_API Border {
public:
    enum eType : unsigned char {
        /// Nothing is drawn, nothing is taken.
        none = 0,
        /// The raised edge of a window or pop-up, with room round the title.
        window = 1,
        /// A line.
        line = 2,
        /// A line inside a raised edge, with room round the title; for dialogues.
        dialog = 3,
        /// A raised edge.
        raised = 4,
        /// A sunken edge.
        sunken = 5,
        /// A groove round a group of widgets, with room round the title.
        group = 6,
    };

    Border() = default;
    /// With the standard width of its kind. Unknown kinds stand for `none`.
    explicit Border(eType type) : Border(type, calcSize(type)) {}
    Border(eType type, unsigned short size);

    eType getType() const { return type_; }
    /// In pixels; 0 for `none`.
    unsigned short getSize() const { return size_; }
    /// The standard width of a kind: `UifStd::getBorder()`, a single pixel line for `line`; 0 for `none`.
    static unsigned short calcSize(eType type);
    /// Whether a kind gives the title strip more room.
    static bool isRoomy(eType type) { return type == window || type == dialog || type == group; }

    friend bool operator==(Border const&, Border const&) = default;

private:
    eType type_ = none;
    unsigned short size_ = 0;
};

} // namespace wainscot
