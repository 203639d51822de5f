#pragma once

#include "foundation/layout/layout.h"

#include <concepts>

namespace wainscot {

/// Places items one after the other: in a row from left to right, or in a column from above downwards.
class WAINSCOT_API BoxLayout : public Layout {
public:
    enum Direction : std::uint8_t { row, column };

    explicit BoxLayout(Direction direction) : direction_(direction) {}
    static std::unique_ptr<BoxLayout> makeRow() { return std::make_unique<BoxLayout>(row); }
    static std::unique_ptr<BoxLayout> makeColumn() { return std::make_unique<BoxLayout>(column); }
    Direction direction() const { return direction_; }

    /// Behind the items that there are. A child of the panel, or one that will be by the time of the layout.
    /// False when refused: null, dying, an item already.
    bool add(Glob& child, LayoutOptions const& options = {}) { return addItem(&child, {}, options); }
    /// A new child, which becomes one of the panel's as soon as there is a panel. Null when refused.
    template <class T>
    requires std::derived_from<T, Glob> T* add(std::unique_ptr<T> child, LayoutOptions const& options = {}) {
        T* const added = child.get();
        return addItem(std::unique_ptr<Glob>(child.release()), {}, options) ? added : nullptr;
    }
    /// A layout as an item. Null when refused: null, or nested too deep.
    template <class T>
    requires std::derived_from<T, Layout> T* add(std::unique_ptr<T> nested,
                                                 LayoutOptions const& options = {}) {
        T* const added = nested.get();
        return addItem(std::unique_ptr<Layout>(std::move(nested)), {}, options) ? added : nullptr;
    }
    /// Room of a fixed size.
    void addSpace(int size) { addSpacer(size, {}, {}); }
    /// Room that takes its share of what is left over.
    void addStretch(int stretch = 1) { addSpacer(0, {}, {.stretch = stretch}); }

protected:
    Cell cellOf(Cell const& given, int shown) const override;
    void stretch(Tracks& columns, Tracks& rows) const override;
    bool stretchesRows() const override { return direction_ == column; }

private:
    Direction direction_;
};

} // namespace wainscot
