#pragma once

#include "gallery/page.h"

#include "foundation/focusable.h"
#include "foundation/key_table.h"
#include "host/events/one_shot_timer.h"
#include "host/objects/described_items.h"

#include <vector>

namespace wainscot::gallery {

/// The list of all pages in their groups. It is as high as its rows; what it lies in scrolls it. A press and
/// the keys of `keyTable` choose a page, typed letters the next one whose title, or a word of it, begins with
/// them. A filter leaves out pages; the chosen one may be among those.
class PageChooser final : public Focusable<Pressable<rect>>, private DescribedItems {
public:
    enum class Step { previous, next, previousGroup, nextGroup, first, last };
    static constexpr KeyRow<Step> keyTable[] = {{Key::up, Step::previous, "the page above"},
                                                {Key::down, Step::next, "the page below"},
                                                {Key::pageUp, Step::previousGroup, "the group above"},
                                                {Key::pageDown, Step::nextGroup, "the group below"},
                                                {Key::home, Step::first, "the first page"},
                                                {Key::end, Step::last, "the last page"}};

    /// `choose` hears of each page that the user chooses; it may destroy this.
    explicit PageChooser(std::function<void(Page const&)> choose);

    /// Shows that a page is the chosen one, without telling.
    void setCurrent(Page const& page);
    /// Chooses another page, as a key would.
    void take(Step step);
    /// Has only the pages with that text in their title, and their headings; all when it is empty.
    void setFilter(LightweightString<wchar_t> const& text);
    bool hasPages() const { return !rows_.empty(); }
    /// Chooses the first page; without `always` only while the list lacks the chosen one.
    void takeFirst(bool always);
    SizeNeeds sizeNeeds() const override;
    void reshape() override;

    bool react(Event const& event) override;
    void drawBackground() override;
    void handleMouseContainment(bool inside) override;
    void handleKbdFocus() override;
    void handleLookChange(LookChange changes) override;
    void describe(GlobDescription& description) const override;
    DescribedItems* describedItems() override { return this; }

protected:
    bool pressBegan(Event const& event) override;
    void pressEnded(PressEnd) override {}

private:
    static constexpr std::size_t none = static_cast<std::size_t>(-1);

    // DescribedItems: the rows, headings and pages, by their number from 1.
    std::size_t numItems(ItemKey in) const override;
    Range itemsInSight(ItemKey in) const override;
    ItemKey itemAt(ItemKey in, std::size_t index) const override;
    bool describeItem(ItemKey item, GlobDescription& description) const override;
    bool performItemAction(ItemKey item, std::uint32_t action) override;

    /// A heading where there is no page.
    struct Row {
        Page const* page;
        PageGroup group;
    };
    static std::vector<Row> rowsWith(LightweightString<wchar_t> const& text);

    std::size_t rowOf(Page const* page) const;
    /// The row of a page that a step leads to.
    std::size_t rowAfter(Step step) const;
    /// The next page row in that direction; the same where there is none.
    std::size_t pageRowFrom(std::size_t row, bool isDown) const;
    std::size_t firstOfGroup(PageGroup group) const;
    bool type(std::uint32_t character);
    std::size_t rowBeginningWith(LightweightString<wchar_t> const& text) const;
    void choose(std::size_t row);
    void setHovered(std::size_t row);
    void bringCurrentIntoView();

    static int rowHeight();
    /// In own coordinates.
    IntBox boxOf(std::size_t row) const;
    std::size_t rowAt(XY<int> place) const;
    void drawRow(CanvasRenderer& renderer, std::size_t row) const;
    void drawNothingFound(CanvasRenderer& renderer) const;

    std::vector<Row> rows_;
    Page const* currentPage_ = nullptr;
    /// The row of that page.
    std::size_t current_ = none;
    std::size_t hovered_ = none;
    LightweightString<wchar_t> typed_;
    OneShotTimer forgetTyped_;
    std::function<void(Page const&)> choose_;
};

} // namespace wainscot::gallery
