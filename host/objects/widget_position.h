#pragma once

#include "host/base/export.h"
#include "host/base/xy.h"
#include "host/messages/handler_ref.h"

#include <cstdint>

namespace wainscot {

class Glob;

/// The point of the parent from which a child's place is measured.
enum class CoordinateOrigin : std::uint8_t {
    bottomLeft = 0,
    bottomRight = 1,
    centre = 2,
    topLeft = 3,
    topRight = 4,
    leftCentre = 5,
    rightCentre = 6,
};

/// On which side of its sibling a child stands.
enum class WidgetRelativity : std::uint8_t { above, below, leftOf, rightOf };

/// How a child lines up with its sibling along their common edge: start is left or bottom, end is right or
/// top.
enum class WidgetAlignment : std::uint8_t { start, centre, end };

/// The frame that the parent draws round a child.
struct WidgetSurround {
    enum class Style : std::uint8_t { none, line, inset };
    Style style = Style::none;
    /// Width of the frame; 0 = the standard one.
    std::uint8_t width = 0;

    friend constexpr bool operator==(WidgetSurround const&, WidgetSurround const&) = default;
};

/// Where a child sits: at a corner or edge of its parent, measured inwards (from a centre: to the right and
/// upwards), or next to a sibling. The child is placed again whenever its parent is laid out.
class WAINSCOT_API WidgetPosition {
public:
    /// The lower-left corner.
    constexpr WidgetPosition() = default;
    /// With `userArea` the corner is a corner of the parent's user area.
    constexpr WidgetPosition(CoordinateOrigin origin, XY<int> offset, bool userArea = false)
        : origin_(origin), userArea_(userArea), offset_(offset) {}
    /// Next to a sibling, `gap` pixels away.
    WidgetPosition(Glob* sibling, int gap, WidgetRelativity relativity, WidgetAlignment alignment);

    constexpr bool isRelative() const { return relative_; }
    constexpr CoordinateOrigin origin() const { return origin_; }
    constexpr bool inUserArea() const { return userArea_; }
    constexpr XY<int> offset() const { return offset_; }
    /// The sibling; null when it has died.
    Glob* sibling() const;
    constexpr int gap() const { return offset_.x; }
    constexpr WidgetRelativity relativity() const { return relativity_; }
    constexpr WidgetAlignment alignment() const { return alignment_; }

private:
    CoordinateOrigin origin_ = CoordinateOrigin::bottomLeft;
    WidgetRelativity relativity_ = WidgetRelativity::rightOf;
    WidgetAlignment alignment_ = WidgetAlignment::start;
    bool relative_ = false;
    bool userArea_ = false;
    XY<int> offset_;
    HandlerRef<Glob> sibling_;
};

/// All that a parent knows about the place of one child.
struct WidgetDetails {
    Glob* widget = nullptr;
    WidgetPosition position;
    WidgetSurround surround;
};

// At a corner, edge or centre of the parent; with `User` of the parent's user area.
WAINSCOT_API WidgetPosition TopLeft(int x, int y);
WAINSCOT_API WidgetPosition TopRight(int x, int y);
WAINSCOT_API WidgetPosition BottomLeft(int x, int y);
WAINSCOT_API WidgetPosition BottomRight(int x, int y);
WAINSCOT_API WidgetPosition Centre(int x, int y);
WAINSCOT_API WidgetPosition LeftCentre(int x, int y);
WAINSCOT_API WidgetPosition RightCentre(int x, int y);
WAINSCOT_API WidgetPosition UserTopLeft(int x, int y);
WAINSCOT_API WidgetPosition UserTopRight(int x, int y);
WAINSCOT_API WidgetPosition UserBottomLeft(int x, int y);
WAINSCOT_API WidgetPosition UserBottomRight(int x, int y);
// Next to a sibling.
WAINSCOT_API WidgetPosition Above(int gap, Glob* sibling, WidgetAlignment alignment = WidgetAlignment::start);
WAINSCOT_API WidgetPosition Below(int gap, Glob* sibling, WidgetAlignment alignment = WidgetAlignment::start);
WAINSCOT_API WidgetPosition LeftOf(int gap, Glob* sibling,
                                   WidgetAlignment alignment = WidgetAlignment::start);
WAINSCOT_API WidgetPosition RightOf(int gap, Glob* sibling,
                                    WidgetAlignment alignment = WidgetAlignment::start);

} // namespace wainscot
