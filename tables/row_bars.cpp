#include "tables/row_bars.h"
#include "containers/scroll_bar.h"

#include <algorithm>

namespace wainscot {

void RowBars::make(StandardPanel& owner, Glob& rows) {
    for (Orientation const lie : {eVertical, eHorizontal}) {
        auto* const bar = new ScrollBar(ScrollBar::InitArgs(lie, 0));
        (lie == eVertical ? vertical_ : horizontal_) = HandlerRef<Glob>(bar);
        owner.addWidget(bar, 0, 0);
        bar->setControls(&rows);
    }
}

IntBox RowBars::place(Glob& owner, IntBox const& area, Content const& content, Display display) {
    int const thickness = ScrollBar::thickness();
    bool const mayTake = display != Display::never;
    // Each bar takes room that may make the other one necessary.
    bool below = mayTake && content.width > area.width();
    bool const beside = mayTake && content.height > area.height() - (below ? thickness : 0);
    below = mayTake && content.width > area.width() - (beside ? thickness : 0);
    IntBox const rows{area.x1, area.y1 + (below ? thickness : 0),
                      std::max(area.x1, area.x2 - (beside ? thickness : 0)),
                      std::max(area.y1 + (below ? thickness : 0), area.y2)};
    LifeGuard const life = owner.guard();
    auto const put = [&](HandlerRef<Glob> const& bar, IntBox const& box, bool isNeeded) {
        if (life.alive() && bar) owner.reshapeWidgetAt(bar.get(), box.bottomLeft(), box.size());
        if (life.alive() && bar) bar.get()->setVisible(isNeeded && display == Display::whereNeeded);
    };
    // This object goes with its owner; what is needed of it is held here.
    HandlerRef<Glob> const vertical = vertical_;
    HandlerRef<Glob> const horizontal = horizontal_;
    put(vertical, {rows.x2, rows.y1, rows.x2 + thickness, rows.y2}, beside);
    put(horizontal, {area.x1, area.y1, rows.x2, area.y1 + thickness}, below);
    return rows;
}

void RowBars::show(XY<int> const& seen, Content const& content, std::int64_t top, int left) {
    auto const show = [](Glob* glob, double position, double size) {
        ThumbSettings thumb{position, std::clamp(size, 0.0, 1.0)};
        if (auto* const bar = static_cast<ScrollBar*>(glob)) bar->setNewWidgetValue(thumb, eRedrawYes);
    };
    HandlerRef<Glob> const horizontal = horizontal_;
    auto const high = static_cast<double>(content.height);
    if (high > 0) show(vertical_.get(), static_cast<double>(top) / high, seen.y / high);
    if (content.width > 0)
        show(horizontal.get(), double(left) / content.width, double(seen.x) / content.width);
}

std::optional<RowBars::Move> RowBars::moveOf(LightweightString<char> const& message, Glob* sender) {
    auto* const bar = ScrollBar::isScrollBarMsg(message) ? dynamic_cast<ScrollBar*>(sender) : nullptr;
    if (!bar) return std::nullopt;
    Move move{bar->isVertical(), 0, bar->getThumbPos()};
    if (message == ScrollBar::upButtonPressedMsg || message == ScrollBar::leftButtonPressedMsg)
        move.step = -1;
    if (message == ScrollBar::downButtonPressedMsg || message == ScrollBar::rightButtonPressedMsg)
        move.step = 1;
    return move;
}

} // namespace wainscot
