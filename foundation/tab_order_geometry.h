#pragma once

#include "foundation/tab_order_manager.h"

namespace wainscot {

class Glob;

/// Which way a row is read.
enum class eReadingDirection { leftToRight, rightToLeft };

/// The tab order that the eye expects: row by row from the top, each row in the reading direction. A control
/// lies in a row when it shares at least half of its height, or of the row's, with all that is in it.
namespace TabOrderGeometry {

/// The widget on the screen that a stop stands for; null when it stands for none.
WAINSCOT_API Glob* widgetOf(TabOrderable* stop);

/// The indices of all stops that stand for a widget, in reading order.
WAINSCOT_API std::vector<unsigned int>
readingOrder(TabOrderManager const& manager, eReadingDirection direction = eReadingDirection::leftToRight);

/// Numbers the stops of a manager by where they lie; those without a widget come last, in the order that they
/// have. To be called again after a change of layout.
WAINSCOT_API void arrange(TabOrderManager& manager,
                          eReadingDirection direction = eReadingDirection::leftToRight);

/// The fewest stops that would have to move for the tab order to agree with the screen, as indices in the
/// present tab order. Only widgets that are shown are looked at.
WAINSCOT_API std::vector<unsigned int>
misplacedStops(TabOrderManager const& manager, eReadingDirection direction = eReadingDirection::leftToRight);

/// Counts each of those in the diagnostics ("tab order disagrees with the screen"); the answer is how many.
WAINSCOT_API std::size_t report(TabOrderManager const& manager,
                                eReadingDirection direction = eReadingDirection::leftToRight);

} // namespace TabOrderGeometry
} // namespace wainscot
