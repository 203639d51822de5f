#pragma once

#include "foundation/press.h"
#include "tables/table_widget.h"

namespace wainscot {

/// The area of the cells. It draws what the table tells it, and hands it what the pointer does.
class TableBody final : public Pressable<Glob> {
public:
    explicit TableBody(TableWidget& table);

    bool react(Event const& event) override;
    void draw() override;
    void handleMouseContainment(bool inside) override;
    MouseCursorID contextCursor(XY<int> const& place) const override;
    bool getTooltipDetails(XY<int> const& place, TooltipDetails& details) const override;

protected:
    bool pressBegan(Event const& event) override;
    void pressMoved(Event const& event) override;
    void pressEnded(PressEnd how) override;

private:
    HandlerRef<TableWidget> table_;
};

} // namespace wainscot
