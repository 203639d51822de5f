#include "host/objects/widget_position.h"

#include "host/objects/glob.h"

namespace wainscot {

WidgetPosition::WidgetPosition(Glob* sibling, int gap, WidgetRelativity relativity, WidgetAlignment alignment)
    : relativity_(relativity), alignment_(alignment), relative_(true), offset_(gap, 0), sibling_(sibling) {}

Glob* WidgetPosition::sibling() const {
    return sibling_.get();
}

WidgetPosition TopLeft(int x, int y) {
    return {CoordinateOrigin::topLeft, {x, y}};
}

WidgetPosition TopRight(int x, int y) {
    return {CoordinateOrigin::topRight, {x, y}};
}

WidgetPosition BottomLeft(int x, int y) {
    return {CoordinateOrigin::bottomLeft, {x, y}};
}

WidgetPosition BottomRight(int x, int y) {
    return {CoordinateOrigin::bottomRight, {x, y}};
}

WidgetPosition Centre(int x, int y) {
    return {CoordinateOrigin::centre, {x, y}};
}

WidgetPosition LeftCentre(int x, int y) {
    return {CoordinateOrigin::leftCentre, {x, y}};
}

WidgetPosition RightCentre(int x, int y) {
    return {CoordinateOrigin::rightCentre, {x, y}};
}

WidgetPosition UserTopLeft(int x, int y) {
    return {CoordinateOrigin::topLeft, {x, y}, true};
}

WidgetPosition UserTopRight(int x, int y) {
    return {CoordinateOrigin::topRight, {x, y}, true};
}

WidgetPosition UserBottomLeft(int x, int y) {
    return {CoordinateOrigin::bottomLeft, {x, y}, true};
}

WidgetPosition UserBottomRight(int x, int y) {
    return {CoordinateOrigin::bottomRight, {x, y}, true};
}

WidgetPosition Above(int gap, Glob* sibling, WidgetAlignment alignment) {
    return {sibling, gap, WidgetRelativity::above, alignment};
}

WidgetPosition Below(int gap, Glob* sibling, WidgetAlignment alignment) {
    return {sibling, gap, WidgetRelativity::below, alignment};
}

WidgetPosition LeftOf(int gap, Glob* sibling, WidgetAlignment alignment) {
    return {sibling, gap, WidgetRelativity::leftOf, alignment};
}

WidgetPosition RightOf(int gap, Glob* sibling, WidgetAlignment alignment) {
    return {sibling, gap, WidgetRelativity::rightOf, alignment};
}

} // namespace wainscot
