#pragma once

#include "gallery/page.h"

#include "buttons/button.h"
#include "foundation/label.h"
#include "foundation/layout/grid_layout.h"
#include "foundation/standard_panel.h"
#include "host/base/convert.h"
#include "host/drawing/uif_std.h"

namespace wainscot::gallery {

/// A panel whose controls lie in a grid of equal columns. It logs the messages that it hears from them. Room
/// that is left over stays free at the far and the lower edge.
class CellPanel : public StandardPanel {
public:
    CellPanel(XY<int> size, LogLine log);

    int handleMessageEvent(LightweightString<char> name, Glob* sender) override;

    /// A note above the controls that it is about.
    Label* addNote(LightweightString<wchar_t> const& text, int column, int row, int columns = 1);
    static constexpr int allColumns = 5;

protected:
    void say(LightweightString<wchar_t> const& line) const { log_(line); }
    LogLine const& log() const { return log_; }
    GridLayout& grid() { return *grid_; }

    template <class W>
    W* put(std::unique_ptr<W> widget, GridCell const& cell) {
        LayoutOptions options;
        options.vertical = LayoutAlign::start;
        return grid_->add(std::move(widget), cell, options);
    }
    /// Adds a control in a cell and makes it a stop of the panel.
    template <class B>
    B* addButton(std::unique_ptr<B> button, int column, int row) {
        B* const added = put(std::move(button), {row, column});
        if (added) addTabStop(*added);
        return added;
    }

private:
    LogLine log_;
    GridLayout* grid_;
};

} // namespace wainscot::gallery
