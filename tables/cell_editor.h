#pragma once

#include "host/base/ptr.h"
#include "host/objects/glob.h"
#include "tables/cell_context.h"

namespace wainscot {

/// Edits the cells of one or several field types, one cell at a time, with a widget that lies over the cell.
/// Shared by the table and who registered it (`TableWidget::registerFieldEditor`).
class WAINSCOT_API iCellEditor : public Qv::InternalRefCount {
public:
    using CellContext = iTableAdaptor::CellContext;

    ~iCellEditor() override;
    /// Makes the widget as a child of `parent` when there is none yet. Null = it has no widget.
    virtual Glob* getWidget(Glob* parent) = 0;
    /// Forgets the widget, which the table destroys.
    virtual void releaseWidget() = 0;
    /// Stores what the widget holds through the adaptor.
    virtual void storeData(CellContext& cell) const = 0;
    /// Shows the value of the cell in the widget.
    virtual void initWidgetFromData(CellContext const& cell) = 0;
    /// Whether the user has changed the value since it was shown.
    virtual bool hasChanged() const = 0;
    virtual void clearChanged() = 0;
    virtual void hide() = 0;
    virtual void reset() = 0;
    /// Whether a message that the table has got comes from its widget.
    virtual bool isResponsibleForMessage(LightweightString<char> const& message, Glob* sender) = 0;
    /// Draws a cell that is not edited. False = the table draws the text.
    virtual bool drawField(CellContext& cell) = 0;
    /// A mouse event on a cell that is not edited. True = used.
    virtual bool handleEvent(CellContext const& cell, Event const& event) = 0;
    virtual bool hasFocus() const = 0;
    virtual MouseCursorID contextCursor(CellContext const& cell, XY<int> const& place) const = 0;
    virtual LightweightString<wchar_t> contextString(CellContext const& cell, XY<int> const& place) const = 0;
};

} // namespace wainscot
