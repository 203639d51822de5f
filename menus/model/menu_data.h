#pragma once

#include "menus/model/menu_item.h"
#include "menus/model/menu_rows.h"

#include <algorithm>
#include <iterator>

namespace wainscot {

class EventHandler;

/// The items of a menu, in the order in which they are shown, headers and hidden members included. What is
/// called an index here counts all of them ("physical"); `none` stands for no item, and refused indices are
/// counted in the diagnostics. At most 65,535 items: more are refused.
///
/// Counted, when it is held by a `Qv::Ptr`. Items may be changed, and the data destroyed, by the callbacks of
/// an item that was chosen.
class WAINSCOT_API MenuData : public Qv::InternalRefCount {
public:
    class Change;

    static constexpr unsigned short none = 0xFFFF;
    static constexpr std::size_t maxItems = 0xFFFF;
    /// The last logical index that a drop-down can have selected.
    static constexpr int maxSelected = 0x7FFF;

    MenuData() = default;
    /// Stays empty when there are too many.
    explicit MenuData(std::vector<MenuItem> items) { setItems(std::move(items)); }
    ~MenuData() override;

    std::size_t numItems() const { return items_.size(); }
    bool isEmpty() const { return items_.empty(); }
    std::span<MenuItem const> items() const { return items_; }
    /// The index must be one of the list. Valid until items are added or removed.
    MenuItem const& getItem(unsigned short item) const { return items_[item]; }
    MenuItem& getItem(unsigned short item) { return items_[item]; }

    // False, and nothing is done, when there would be too many items, or when there is no such index.
    bool setItems(std::vector<MenuItem> items);
    bool addItem(MenuItem item);
    /// In front of the item with that index; the number of items stands for the end.
    bool insertItem(unsigned short before, MenuItem item);
    bool removeItem(unsigned short item) { return removeItems(item, 1); }
    bool removeItems(unsigned short first, std::size_t count);
    /// Removes those for which `condition` is true, in one walk; gives their number.
    template <class Condition>
    std::size_t removeItemsIf(Condition condition);
    void clear() { setItems({}); }
    void reserve(std::size_t count) { items_.reserve(std::min(count, maxItems)); }

    /// The first item with that id.
    unsigned short findItem(LightweightString<char> const& id) const;
    /// The first item whose display string is that text.
    unsigned short findItem(LightweightString<wchar_t> const& text) const;

    /// The number of items before it that are no headers.
    unsigned short physicalToLogical(unsigned short item) const { return rows().logicalOfItem(item); }
    unsigned short logicalToPhysical(unsigned short logical) const { return rows().itemOfLogical(logical); }
    /// The row of the item while members of compressed groups are hidden; of such a member the row of the
    /// header.
    unsigned short physicalToVisible(unsigned short item) const { return rows().rowOfItem(item); }
    /// Active, and no header.
    bool isSelectable(unsigned short item) const;
    unsigned short numSelectableItems() const;
    /// Whether a drop-down can have it selected: selectable, no command, no separator, and its
    /// logical index not beyond `maxSelected`.
    bool canBeSelected(unsigned short item) const;
    /// The nearest such item behind (1) or before (-1) an index, which may lie one beyond the ends; -1 when
    /// there is none.
    int nextToSelect(int from, int direction) const;
    bool isGroupStart(unsigned short item) const;
    /// The last member of the group that the header opens; `none` when it has no members, or is no header.
    unsigned short getLastInGroup(unsigned short header) const;
    unsigned short getNumGroups() const { return static_cast<unsigned short>(rows().numGroups()); }
    bool hasGroups() const { return getNumGroups() > 0; }
    /// All of that for the items as they are now. Valid until an item is added or removed, or gets another
    /// type.
    MenuRows const& rows() const;

    /// Runs the callbacks of a chosen item. Those that hold an object are called. The others are messages,
    /// queued for `destination` unless it is null or has died. False, and nothing happens, when there is no
    /// such item.
    ///
    /// `data` is the sender of messages. An item with options sends a `Change`, which holds it, too. For
    /// others it is the payload of calls: itself when it is counted, and as `wrapData(HandlerRef<>)` when it
    /// is an event handler. It may die at any time. An exception passes to the caller after all callbacks
    /// have run.
    bool issueCallback(unsigned short item, EventHandler* destination, iObject* data) const;

protected:
    /// The same for an item that may have left the list.
    static void issueCallbacks(MenuItem const& chosen, unsigned short item, EventHandler* destination,
                               iObject* data);
    /// Whether there is such an item; if not, counts it.
    bool checkIndex(unsigned short item, char const* where) const;

private:
    bool hasRoomFor(std::size_t count) const;
    void growForOne();
    /// Items are destroyed last: what they hold may change or destroy this list.
    using Removed = std::vector<MenuItem>;
    Removed takeOut(std::vector<MenuItem>::iterator first, std::vector<MenuItem>::iterator last);

    std::vector<MenuItem> items_;
    mutable MenuRows rows_;
    /// `MenuItem::numTypeChanges()` when the rows were made.
    mutable std::uint64_t rowsMadeAt_ = 0;
    mutable bool haveRows_ = false;
};

template <class Condition>
std::size_t MenuData::removeItemsIf(Condition condition) {
    auto const stays = [&](MenuItem const& item) { return !condition(item); };
    auto const firstGone = std::stable_partition(items_.begin(), items_.end(), stays);
    return takeOut(firstGone, items_.end()).size();
}

} // namespace wainscot
