#include "menus/model/menu_data.h"

#include "host/base/convert.h"
#include "host/base/diagnostics.h"
#include "host/base/first_exception.h"
#include "host/events/messages.h"
#include "menus/model/menu_change.h"

#include <utility>

namespace wainscot {

MenuData::~MenuData() = default;

bool MenuData::hasRoomFor(std::size_t count) const {
    if (count <= maxItems - items_.size()) return true;
    Diagnostics::count("menu too long", StringFromInteger(items_.size() + count).c_str());
    return false;
}

bool MenuData::checkIndex(unsigned short item, char const* where) const {
    if (item < items_.size()) return true;
    Diagnostics::count("menu index refused", where);
    return false;
}

bool MenuData::setItems(std::vector<MenuItem> items) {
    if (items.size() > maxItems) {
        Diagnostics::count("menu too long", StringFromInteger(items.size()).c_str());
        return false;
    }
    haveRows_ = false;
    items_.swap(items);
    return true;
}

/// Long lists grow in large steps: what costs time is memory that is used, not memory that is set aside.
void MenuData::growForOne() {
    constexpr std::size_t longList = 1024;
    if (items_.size() == items_.capacity() && items_.size() >= longList) reserve(items_.size() * 4);
}

bool MenuData::addItem(MenuItem item) {
    if (!hasRoomFor(1)) return false;
    haveRows_ = false;
    growForOne();
    items_.push_back(std::move(item));
    return true;
}

bool MenuData::insertItem(unsigned short before, MenuItem item) {
    if (before == items_.size()) return addItem(std::move(item));
    if (!checkIndex(before, "insertItem") || !hasRoomFor(1)) return false;
    haveRows_ = false;
    items_.insert(items_.begin() + before, std::move(item));
    return true;
}

bool MenuData::removeItems(unsigned short first, std::size_t count) {
    if (count == 0) return true;
    if (!checkIndex(first, "removeItems")) return false;
    if (count > items_.size() - first) return checkIndex(none, "removeItems");
    auto const begin = items_.begin() + first;
    takeOut(begin, begin + static_cast<std::ptrdiff_t>(count));
    return true;
}

MenuData::Removed MenuData::takeOut(std::vector<MenuItem>::iterator first,
                                    std::vector<MenuItem>::iterator last) {
    Removed removed(std::make_move_iterator(first), std::make_move_iterator(last));
    items_.erase(first, last);
    haveRows_ = false;
    return removed;
}

namespace {

template <class Condition>
unsigned short firstItem(std::span<MenuItem const> items, Condition condition) {
    auto const found = std::find_if(items.begin(), items.end(), condition);
    return found == items.end() ? MenuData::none : static_cast<unsigned short>(found - items.begin());
}

} // namespace

unsigned short MenuData::findItem(LightweightString<char> const& id) const {
    return firstItem(items_, [&](MenuItem const& item) { return item.hasId(id); });
}

unsigned short MenuData::findItem(LightweightString<wchar_t> const& text) const {
    return firstItem(items_, [&](MenuItem const& item) { return item.shows(text.view()); });
}

bool MenuData::isSelectable(unsigned short item) const {
    return item < items_.size() && items_[item].isSelectable();
}

bool MenuData::canBeSelected(unsigned short item) const {
    return isSelectable(item) && !items_[item].hasFlag(MenuItemFlag::command) &&
           !items_[item].label().empty() && physicalToLogical(item) <= maxSelected;
}

int MenuData::nextToSelect(int from, int direction) const {
    auto const count = static_cast<int>(numItems());
    for (int item = from + direction; item >= 0 && item < count; item += direction)
        if (canBeSelected(static_cast<unsigned short>(item))) return item;
    return -1;
}

unsigned short MenuData::numSelectableItems() const {
    auto const isOne = [](MenuItem const& item) { return item.isSelectable(); };
    return static_cast<unsigned short>(std::count_if(items_.begin(), items_.end(), isOne));
}

bool MenuData::isGroupStart(unsigned short item) const {
    return item < items_.size() && items_[item].isHeader();
}

unsigned short MenuData::getLastInGroup(unsigned short header) const {
    if (!isGroupStart(header)) return none;
    auto const isMember = [](MenuItem const& item) { return item.type() == eGroupedMenuItem; };
    auto const end = std::find_if_not(items_.begin() + header + 1, items_.end(), isMember);
    auto const last = static_cast<unsigned short>(end - items_.begin() - 1);
    return last == header ? none : last;
}

MenuRows const& MenuData::rows() const {
    if (haveRows_ && rowsMadeAt_ == MenuItem::numTypeChanges()) return rows_;
    rows_ = MenuRows(items_);
    rowsMadeAt_ = MenuItem::numTypeChanges();
    haveRows_ = true;
    return rows_;
}

bool MenuData::issueCallback(unsigned short item, EventHandler* destination, iObject* data) const {
    if (!checkIndex(item, "issueCallback")) return false;
    issueCallbacks(items_[item], item, destination, data);
    return true;
}

namespace {

/// What one callback is told, after others may have destroyed everything.
struct Telling {
    Qv::Ptr<MenuData::Change> change;
    Qv::Ptr<iObject> payload;
    HandlerRef<> destination;
    bool hasOptions;

    void operator()(WidgetCallback const& callback) const {
        if (callback.getCallback())
            callback.getCallback()->call(NotifyMsg(callback.getMessage(), payload));
        else if (EventHandler* const target = destination.get())
            send(callback.getMessage(), target);
    }
    void send(LightweightString<char> const& message, EventHandler* target) const {
        if (hasOptions)
            sendMessageWithData(message, target, change, change->data());
        else
            sendMessage(message, target, change->data(), true);
    }
};

} // namespace

void MenuData::issueCallbacks(MenuItem const& chosen, unsigned short item, EventHandler* destination,
                              iObject* data) {
    if (!chosen.hasCallbacks()) return;
    // Copies of all, since the item may go in the first call.
    std::vector<WidgetCallback> const callbacks = chosen.callbacks();
    auto const option = static_cast<unsigned short>(std::min(chosen.getCurOption(), 0xFFFFU));
    auto const change = Qv::makePtr<Change>(item, option, data);
    bool const hasOptions = chosen.hasOptions();
    Telling const tell{change, hasOptions ? Qv::Ptr<iObject>(change) : change->payload(),
                       HandlerRef<>(destination), hasOptions};
    FirstException thrown;
    for (WidgetCallback const& callback : callbacks) thrown.run([&] { tell(callback); });
    thrown.rethrow();
}

MenuData::Change::Change(unsigned short item, unsigned short option, iObject* data)
    : item_(item), option_(option) {
    auto* const handler = dynamic_cast<EventHandler*>(data);
    handler_ = HandlerRef<>(handler);
    if (data && !handler) counted_ = Qv::Ptr<iObject>(data);
}

MenuData::Change::~Change() = default;

iObject* MenuData::Change::data() const {
    return counted_ ? counted_.get() : static_cast<iObject*>(handler_.get());
}

Qv::Ptr<iObject> MenuData::Change::payload() const {
    return handler_ ? wrapData(handler_) : counted_;
}

} // namespace wainscot
