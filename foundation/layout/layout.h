#pragma once

#include "foundation/layout/layout_options.h"
#include "host/base/box.h"
#include "host/base/life.h"
#include "host/objects/glob.h"

#include <memory>
#include <vector>

namespace wainscot {

class Tracks;

/// Places the children of a panel by what they need, instead of by coordinates. A panel owns at most one
/// (`StandardPanel::setLayout`), which fills the panel's user area; a layout may also be an item of another
/// one.
///
/// A layout places the children that were added to it, and leaves the others of the panel alone. It owns no
/// child once it belongs to a panel: a child that is destroyed, or taken out of the panel, drops out of it. A
/// hidden child takes no room. A child has one place: adding it a second time, also to another layout of the
/// same panel, is refused.
///
/// It is done once before the next painting when something has changed: a child was added, removed, shown or
/// hidden, has another text, font or size, the look has changed, the panel has another size. What did not
/// change its box is not touched.
///
/// An item has its natural size where there is room: what a control needs when it was made with an automatic
/// size, else the size that it was made with, or given since. Room that is left over goes to what is
/// stretched. Where room is missing, all items give way down to their minimum; what does not fit then lies
/// outside the panel at the lower or far edge, where it is cut off. For languages that are read from right to
/// left everything is placed the other way round.
///
/// Layouts in layouts may be 64 deep. Layouts and panels with layouts in each other are measured 200 deep in
/// all; what is deeper has the size that it has.
class WAINSCOT_API Layout {
public:
    static constexpr int maxDepth = 64;
    /// The room at the four sides; left is the side from which the language is read.
    struct Margins {
        int left = 0;
        int bottom = 0;
        int right = 0;
        int top = 0;
        friend bool operator==(Margins const&, Margins const&) = default;
    };

    Layout();
    virtual ~Layout();
    Layout(Layout const&) = delete;
    Layout& operator=(Layout const&) = delete;

    // --- Items
    /// False when it is no item of this layout, or of those in it.
    bool setOptions(Glob& child, LayoutOptions const& options);
    bool setOptions(Layout& nested, LayoutOptions const& options);
    /// Leaves the child where it is; one that was handed in while there is no panel yet is destroyed. False
    /// when it is no item of this layout, or of those in it.
    bool remove(Glob& child);
    /// Destroys it, and leaves its children where they are, likewise. False when it is none of this one's.
    bool remove(Layout& nested);
    /// Those whose children have died are counted until the next layout.
    std::size_t numItems() const;

    // --- Distances, in pixels; below 0 brings the standard ones back: `UifStd`'s widget gap between columns,
    // its row gap between rows, and the widget gap round the layout of a panel. Layouts in layouts have no
    // standard margins.
    void setGaps(int betweenColumns, int betweenRows);
    void setMargins(int margin) { setMargins({margin, margin, margin, margin}); }
    void setMargins(Margins const& margins);

    // --- Sizes, with margins
    /// What shows everything.
    XY<int> naturalSize();
    /// What it can give way to.
    XY<int> minimumSize();
    /// The height that it needs at a width; differs from the natural one where texts are wrapped.
    int heightForWidth(int width);
    SizeNeeds needs();

    /// Does at once what would be done before the next painting, for the whole panel. Nothing while it
    /// belongs to none.
    void layOutNow();
    /// Has it done before the next painting. Changes of the children, of their texts and of the look do this
    /// themselves.
    void changed();
    /// How often all of it has been laid out; for tests and measurements.
    std::uint64_t numLayouts() const { return numLayouts_; }
    /// Makes the panel as large as the natural size whenever that grows, as when a text does. Off until it is
    /// set. For panels that no other layout places.
    void setGrowsPanel(bool grows) { growsPanel_ = grows; }

    /// The panel to which it, or the layout in which it lies, belongs; null when there is none.
    Glob* panel() const;

    // --- For the panel that owns it
    /// Becomes the layout of a panel, which takes over the children that were handed in; null = of none any
    /// more.
    void attach(Glob* panel);
    /// What `Glob::handleChildChange` has told. The answer is that of the handler.
    bool childChanged(Glob& child, ChildChange change);
    /// All children are asked again for what they need.
    void forgetNeeds();
    /// Destroys a layout that was given up; later, where layouts are being asked or placed.
    static void retire(std::unique_ptr<Layout> layout);

protected:
    /// Where an item lies among the columns and rows.
    struct Cell {
        int column = 0;
        int row = 0;
        int columns = 1;
        int rows = 1;
    };
    /// No row or column has a larger number.
    static constexpr int maxTracks = 65535;

    /// False, with a diagnostic, when it was refused; then the child is the caller's, or that of its parent.
    bool addItem(Glob* child, Cell const& cell, LayoutOptions const& options);
    /// Destroyed when it was refused.
    bool addItem(std::unique_ptr<Glob> child, Cell const& cell, LayoutOptions const& options);
    bool addItem(std::unique_ptr<Layout> nested, Cell const& cell, LayoutOptions const& options);
    bool addSpacer(int size, Cell const& cell, LayoutOptions const& options);

    /// Says where an item lies at present; `shown` counts the items that are shown before it.
    virtual Cell cellOf(Cell const& given, int shown) const = 0;
    /// Says what is stretched besides what the items say.
    virtual void stretch(Tracks& columns, Tracks& rows) const = 0;
    /// The stretch of an item goes to its row or its column.
    virtual bool stretchesRows() const = 0;
    /// All columns are as wide as the widest.
    virtual bool hasEqualColumns() const { return false; }

private:
    struct Item;
    struct Placed;
    struct Root;

    Layout const& root() const;
    Layout& root();
    int depthAbove() const;
    int depthBelow() const { return depthBelow_; }
    void noteDepth();
    bool mayAdd(Cell const& cell) const;
    bool accept(Glob* child) const;
    Item& append(Cell const& cell, LayoutOptions const& options);
    Item* find(Glob const& child) const;
    void adoptChildren();
    void collectChildren(std::vector<std::unique_ptr<Glob>>& owned);
    void mergeInto(Layout& top);
    void forget(Glob const& child);
    void forgetChildren();
    void setStale();
    int columnGap() const;
    int rowGap() const;
    Margins margins() const;

    void measure();
    void dropDead();
    static bool isShown(Item const& item, Glob const* panel);
    SizeNeeds measured(Item& item);
    void measureColumns();
    void measureRows(int width, Tracks& rows);
    int heightOf(Item& item, int width);
    void place(IntBox const& area, std::vector<Placed>& placed);
    void apply(std::vector<Placed> const& placed);
    void growPanel();

    std::vector<std::unique_ptr<Item>> items_;
    /// Null for the outermost one.
    Layout* outer_ = nullptr;
    /// Its place in that one.
    Item* item_ = nullptr;
    /// What only the outermost one has.
    std::unique_ptr<Root> root_;
    std::unique_ptr<Tracks> columns_;
    std::unique_ptr<Tracks> rows_;
    SizeNeeds needs_;
    XY<int> gaps_{-1, -1};
    /// The needs for which the panel was made larger last.
    XY<int> grownFor_{-1, -1};
    Margins margins_{-1, -1, -1, -1};
    /// The last answer for a width.
    int widthAsked_ = -1;
    int heightAnswered_ = 0;
    std::uint64_t numLayouts_ = 0;
    /// Levels of layouts in it.
    int depthBelow_ = 0;
    LifeToken life_;
    bool measured_ = false;
    bool hasDead_ = false;
    bool isPlacing_ = false;
    bool isMeasuring_ = false;
    bool growsPanel_ = false;
};

/// Gives a panel the size that its layout needs, as before its window is opened, and lays it out. Another
/// object takes what it needs itself; nothing for what has no needs.
WAINSCOT_API void sizeToLayout(Glob& panel);

} // namespace wainscot
