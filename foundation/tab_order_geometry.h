#pragma once

#include "foundation/tab_order_manager.h"

namespace wainscot {

class Glob;

/// Which way a row is read.
enum class eReadingDirection { leftToRight, rightToLeft };

/// The tab order that the eye expects: row by row from the top, each row in the reading direction. A control
/// belongs to a row when it overlaps all of the row's controls by at least half of its height or of the
/// row's.
namespace TabOrderGeometry {

/// The widget on the screen of a stop; null when it has none.
WAINSCOT_API Glob* widgetOf(TabOrderable* stop);

/// The indices of all stops with a widget, in reading order.
WAINSCOT_API std::vector<unsigned int>
readingOrder(TabOrderManager const& manager, eReadingDirection direction = eReadingDirection::leftToRight);

/// Numbers the stops of a manager by their places; stops without a widget come last, in their present order.
/// To be called again after a change of layout.
WAINSCOT_API void arrange(TabOrderManager& manager,
                          eReadingDirection direction = eReadingDirection::leftToRight);

/// The fewest stops that have to move to make the tab order agree with the screen, as indices in the present
/// tab order. Only shown widgets count.
WAINSCOT_API std::vector<unsigned int>
misplacedStops(TabOrderManager const& manager, eReadingDirection direction = eReadingDirection::leftToRight);

/// Counts these stops in the diagnostics ("tab order disagrees with the screen"), and gives their number.
WAINSCOT_API std::size_t report(TabOrderManager const& manager,
                                eReadingDirection direction = eReadingDirection::leftToRight);

} // namespace TabOrderGeometry
} // namespace wainscot
