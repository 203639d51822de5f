#pragma once

#include "host/drawing/palette.h"
#include "host/services/ui_string.h"
#include "tables/field_types.h"

#include <cstdint>
#include <optional>

namespace wainscot {

/// One column of a table, as its adaptor describes it. A plain value.
class WAINSCOT_API TableColumnDescription {
public:
    enum Resizability : std::uint32_t { fixedWidth = 0, fullyResizable = 3 };

    TableColumnDescription(UIString title, LightweightString<char> identifier);
    /// The palette, or the colour, is that of the column's header.
    TableColumnDescription(UIString title, LightweightString<char> identifier, Palette const& palette);
    TableColumnDescription(UIString title, LightweightString<char> identifier, Colour const& colour);

    UIString title;
    /// By which the column is found, sorted and remembered.
    LightweightString<char> identifier;
    /// In pixels; 0 = sized automatically.
    unsigned short width = 0;
    /// The least width that the user can give it.
    unsigned short minWidth = 0;
    DBFieldTypes::eType fieldType = DBFieldTypes::eNone;
    /// Stays at the left end while the others are scrolled. Only the first columns can be sticky.
    bool isSticky = false;
    /// Whether the user can move it, hide it, and sort by it.
    bool isMovable = true;
    bool isHideable = true;
    bool isSortable = true;
    /// Whether the user can edit its cells, where editing is enabled.
    bool isEditable = true;

    /// At least `minWidth`.
    void setWidth(unsigned short wanted);
    void setResizeable(bool resizeable) { resizability_ = resizeable ? fullyResizable : fixedWidth; }
    void setResizability(std::uint32_t resizability) { resizability_ = resizability; }
    std::uint32_t getResizability() const { return resizability_; }
    bool isResizeable() const { return resizability_ != fixedWidth; }
    void setColour(Colour const& colour) { colour_ = colour; }
    Colour const& getColour() const { return colour_; }
    std::optional<Palette> const& getPalette() const { return palette_; }

    /// On each side of a cell's text, in pixels: of the user's size of the time when the toolkit was loaded.
    static int textMargin;

private:
    std::uint32_t resizability_ = fullyResizable;
    Colour colour_;
    std::optional<Palette> palette_;
};

} // namespace wainscot
