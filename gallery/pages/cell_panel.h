#pragma once

#include "gallery/page.h"

#include "buttons/button.h"
#include "foundation/standard_panel.h"
#include "host/base/convert.h"
#include "host/drawing/uif_std.h"

namespace wainscot::gallery {

/// A panel that says which messages it hears from its widgets, and places them in a grid of cells from the
/// upper left.
class CellPanel : public StandardPanel {
public:
    CellPanel(XY<int> size, LogLine log);

    int handleMessageEvent(LightweightString<char> name, Glob* sender) override;

    /// Adds a button in a cell and makes it a stop of the panel.
    template <class B>
    B* addButton(std::unique_ptr<B> button, int column, int row) {
        B* const added = addChild(std::move(button), UserTopLeft(cell(column), rowTop(row)));
        if (added) addTabStop(*added);
        return added;
    }
    Glob* addNote(LightweightString<wchar_t> const& text, int column, int row);

    static XY<int> buttonSize() { return {UifStd::getButtonHeight() * 5, UifStd::getButtonHeight()}; }

protected:
    void say(LightweightString<wchar_t> const& line) const { log_(line); }
    /// Where a column begins, from the left, and a row, from above.
    static int cell(int column);
    static int rowTop(int row);

private:
    LogLine log_;
};

} // namespace wainscot::gallery
