#include "tables/tree_view.h"

#include "host/drawing/drawable.h"
#include "host/drawing/uif_std.h"
#include "host/events/dispatch_scope.h"
#include "host/objects/description.h"
#include "host/objects/kbd_focus.h"
#include "tables/model/row_notices.h"
#include "tables/tree_body_p.h"
#include "tables/tree_view_p.h"

#include <algorithm>
#include <utility>

namespace wainscot {

namespace {

constexpr char treeChangedMsg[] = "TreeChanged";

} // namespace

TreeView::TreeView(InitArgs const& args)
    : Focusable<StandardPanel>(args), later_([this] { takeAdaptor(); }), refreshTimer_([this] { refresh(); }),
      body_(new TreeBody(*this)), options_(args.options), scrollBars_(args.scrollBars),
      layoutTimer_([this] { layOut(); }), hoverTimer_([this] { openHovered(); }),
      scrollTimer_([this] { scrollWhileDragging(); }) {
    addWidget(body_, 0, 0);
    bars_.make(*this, *body_);
    TreeView::reshape();
    if (args.adaptor) TreeView::setAdaptor(args.adaptor);
}

TreeView::~TreeView() = default;

/// The adaptor may have died before it.
void TreeView::handleDetached() {
    hoverTimer_.stop();
    scrollTimer_.stop();
    later_.stop();
    refreshTimer_.stop();
    layoutTimer_.stop();
    body_ = nullptr;
    Focusable<StandardPanel>::handleDetached();
}

NotifierSubscription TreeView::addListener(Listener listener) {
    auto const unwrap = [listener = std::move(listener)](NotifyMsg const& message) {
        eEventType const* const type = unwrapData<eEventType>(message.payload());
        if (type && listener) listener(*type);
        return 0;
    };
    return listeners_.subscribe({}, makeCallback<int, NotifyMsg>(unwrap));
}

void TreeView::informListeners(eEventType type) {
    DispatchScope const scope;
    LifeGuard const life = guard();
    if (listeners_.numListeners() > 0)
        listeners_.issueNotification(NotifyMsg(treeChangedMsg, wrapData(type)), CallbackInvokerBase::anyType);
    if (!life.alive()) return;
    for (MessageInfo const& info : messageTable)
        if (info.code == type) Reporter().report(*this, parent(), info);
}

// Data

void TreeView::setAdaptor(iTreeViewAdaptor* adaptor) {
    nextAdaptor_ = adaptor;
    nextLife_.reset();
    if (adaptor) nextLife_.emplace(adaptor->life());
    // While an adaptor is asked, its rows stay; there are none to ask for any more.
    if (rows_.isAsking()) {
        rows_.setSource(nullptr);
        later_.start(0);
        return;
    }
    takeAdaptor();
}

void TreeView::takeAdaptor() {
    DispatchScope const scope;
    LifeGuard const life = guard();
    endEditing(std::nullopt);
    if (!life.alive()) return;
    iTreeViewAdaptor* const adaptor = nextLife_ && nextLife_->alive() ? nextAdaptor_ : nullptr;
    later_.stop();
    selected_.reset();
    isHiddenTold_ = false;
    current_ = anchor_ = pressedRow_ = hoveredRow_ = editedRow_ = -1;
    tags_.clear();
    setDrop({});
    windowTop_ = 0;
    windowLeft_ = contentWidth_ = 0;
    rows_.setSource(adaptor);
    if (life.alive()) rowsChanged(false);
}

void TreeView::refresh() {
    listAgain({}, [this](std::vector<unsigned int> const& kept) { return rows_.refresh(kept); });
}

void TreeView::refresh(Text const& name) {
    if (name.empty()) return refresh();
    DispatchScope const scope;
    auto const open = rows_.findOpen(name);
    int const row = open ? static_cast<int>(*open) : findItem(name);
    if (row < 0) return;
    auto const number = static_cast<unsigned int>(row);
    if (!rows_.isExpanded(number)) return damageRow(number);
    listAgain(number, [&](std::vector<unsigned int> const& kept) { return rows_.refresh(number, kept); });
}

/// The tags, the row of the keys and the first row in sight stay with their items. What lies outside the
/// branch costs nothing, so that very many branches may come one by one.
void TreeView::listAgain(std::optional<unsigned int> branchRow, ListAgain const& list) {
    if (rows_.isAsking()) {
        refreshTimer_.start(0);
        return;
    }
    DispatchScope const scope;
    Glib::UpdateDeferrer const deferrer(canvas());
    LifeGuard const life = guard();
    bool const wasShown = selectedRow() >= 0;
    if (!life.alive()) return;
    auto const listed = [&] {
        unsigned int const first = branchRow ? *branchRow + 1 : 0;
        return RowRange{first, branchRow ? rows_.findLastChild(*branchRow) + 1 : numRows()};
    };
    RowRange const before = listed();
    int const height = getRowHeight();
    // What the user looks at stays in its place: the row of the keys, or the first one in sight.
    int top = marksRow() ? current_ : static_cast<int>(windowTop_ / height);
    std::int64_t const part = windowTop_ - std::int64_t{top} * height;
    int* const followers[] = {&top, &current_, &anchor_, &pressedRow_, &hoveredRow_, &editedRow_};
    std::vector<unsigned int> kept;
    for (int const* row : followers) kept.push_back(static_cast<unsigned int>(std::max(*row, 0)));
    for (RowRange const range : tags_.ranges())
        for (unsigned int row = std::max(range.first, before.first); row < std::min(range.end, before.end);
             ++row)
            kept.push_back(row);
    unsigned int const version = rows_.version();
    TreeRows::Places const places = list(kept);
    if (!life.alive() || rows_.version() == version) return;
    RowRange const after = listed();
    std::size_t place = 0;
    for (int* const row : followers) {
        auto const& found = places[place++];
        if (*row < static_cast<int>(before.first)) continue;
        if (*row >= static_cast<int>(before.end))
            *row += static_cast<int>(after.count()) - static_cast<int>(before.count());
        else if (found)
            *row = static_cast<int>(*found);
        else if (row == &current_)
            // The keys go on beside an item that has gone.
            *row = std::min(*row, static_cast<int>(after.end) - 1);
        else if (row != &top)
            *row = -1;
    }
    windowTop_ = std::max<std::int64_t>(std::int64_t{top} * height + part, 0);
    unsigned int const numTagged = tags_.count();
    follow(tags_, {RowNotice::Kind::removed, before.first, before.count()});
    follow(tags_, {RowNotice::Kind::inserted, after.first, after.count()});
    std::vector<RowRange> tagged(tags_.ranges().begin(), tags_.ranges().end());
    for (; place < places.size(); ++place)
        if (places[place]) tagged.push_back({*places[place], *places[place] + 1});
    tags_.assign(tagged);
    // A name is edited on while its item is there.
    if (isEditing() && editedRow() < 0) endEditing(std::nullopt);
    if (life.alive()) rowsChanged(wasShown, branchRow);
    if (life.alive() && tags_.count() != numTagged) informListeners(eTagsChanged);
    if (life.alive()) tellSelectionHidden(wasShown);
}

void TreeView::tellSelectionHidden(bool wasShown) {
    DispatchScope const scope;
    LifeGuard const life = guard();
    bool const isHidden = wasShown && selected_ && selectedRow() < 0;
    if (!life.alive() || !isHidden) return;
    isHiddenTold_ = true;
    informListeners(eSelectionHidden);
}

int TreeView::rowOf(Text const& name, int row) const {
    DispatchScope const scope;
    LifeGuard const life = guard();
    if (row >= 0 && rows_.at(static_cast<unsigned int>(row)).item.name == name) return row;
    return life.alive() ? findItem(name) : -1;
}

int TreeView::selectedRow() const {
    DispatchScope const scope;
    if (!selected_ || current_ < 0) return -1;
    return rows_.at(static_cast<unsigned int>(current_)).item.name == *selected_ ? current_ : -1;
}

int TreeView::editedRow() const {
    return rowOf(editedName_, editedRow_);
}

void TreeView::rowsChanged(bool wasSelectionShown, std::optional<unsigned int> branchRow) {
    LifeGuard const life = guard();
    if (selected_ && selectedRow() < 0 && life.alive() && selected_) {
        // It may have left the branch, but only into the branch can it have come.
        Text const name = *selected_;
        auto const row = branchRow && !wasSelectionShown ? rows_.findIn(*branchRow, name) : rows_.find(name);
        if (life.alive() && row) current_ = static_cast<int>(*row);
    }
    if (!life.alive()) return;
    current_ = std::min(current_, static_cast<int>(numRows()) - 1);
    if (drop_.kind == Drop::onRow || drop_.kind == Drop::beforeRow) {
        // The mark goes with its row.
        Drop drop = drop_;
        drop.row = rowOf(drop.kind == Drop::onRow ? drop.target : drop.before, drop.row);
        if (!life.alive()) return;
        setDrop(drop.row < 0 ? Drop() : drop);
    }
    layOut();
    if (life.alive()) measureRows();
    if (!life.alive()) return;
    placeNameBox();
    damageRows();
    describeChanged(DescriptionChange::children);
}

// Branches

bool TreeView::toggleBranchExpansion(unsigned int row) {
    DispatchScope const scope;
    Glib::UpdateDeferrer const deferrer(canvas());
    LifeGuard const life = guard();
    TreeRows::Row const data = rows_.at(row);
    if (!life.alive() || row >= numRows() || rows_.isAsking() || !data.item.isBranch()) return false;
    bool const wasSelected = selected_.has_value();
    endEditing(std::nullopt);
    bool const wasShown = life.alive() && selectedRow() >= 0;
    if (!life.alive()) return true;
    unsigned int const numTagged = tags_.count();
    unsigned int added = 0;
    if (data.isExpanded) {
        unsigned int const removed = rows_.collapseBranch(row);
        if (!life.alive()) return true;
        RowNotice const notice{RowNotice::Kind::removed, row + 1, removed};
        follow(tags_, notice);
        for (int* const at : {&current_, &anchor_, &pressedRow_, &hoveredRow_})
            if (*at > static_cast<int>(row))
                *at = *at > static_cast<int>(row + removed) ? *at - static_cast<int>(removed)
                                                            : static_cast<int>(row);
    } else {
        added = rows_.expandBranch(row);
        if (!life.alive() || !rows_.isExpanded(row)) return !life.alive();
        follow(tags_, {RowNotice::Kind::inserted, row + 1, added});
        for (int* const at : {&current_, &anchor_, &pressedRow_, &hoveredRow_})
            if (*at > static_cast<int>(row)) *at += static_cast<int>(added);
    }
    rowsChanged(wasShown, row);
    if (!life.alive()) return true;
    unsigned int const version = rows_.version();
    informListeners(data.isExpanded ? eBranchCollapsed : eBranchExpanded);
    if (!life.alive()) return true;
    if (tags_.count() != numTagged) informListeners(eTagsChanged);
    if (!life.alive()) return true;
    if (rows_.version() != version) {
        // The listeners have changed the rows.
        auto const found = rows_.find(data.item.name);
        if (!found || rows_.isExpanded(*found) == data.isExpanded) return true;
        row = *found;
        added = rows_.findLastChild(row) - row;
    }
    std::int64_t const rowTop = std::int64_t{row} * getRowHeight();
    std::int64_t const bottom = rowTop + std::int64_t{added + 1} * getRowHeight();
    std::int64_t const overhang = bottom - windowTop_ - visibleHeight();
    if (added > 0 && overhang > 0)
        setWindowTop(std::max(windowTop_, std::min(windowTop_ + overhang, rowTop)));
    if (life.alive()) tellSelectionHidden(wasSelected);
    return true;
}

bool TreeView::expand(Text const& name) {
    DispatchScope const scope;
    int const row = findItem(name);
    return row >= 0 && !rows_.isExpanded(static_cast<unsigned int>(row)) &&
           toggleBranchExpansion(static_cast<unsigned int>(row));
}

bool TreeView::collapse(Text const& name) {
    DispatchScope const scope;
    int const row = findItem(name);
    return row >= 0 && rows_.isExpanded(static_cast<unsigned int>(row)) &&
           toggleBranchExpansion(static_cast<unsigned int>(row));
}

void TreeView::expandAll() {
    LifeGuard const life = guard();
    unsigned int const before = numRows();
    listAgain({}, [this](std::vector<unsigned int> const& kept) { return rows_.expandAll(kept); });
    if (life.alive() && numRows() > before) informListeners(eBranchExpanded);
}

bool TreeView::expandAll(Text const& name) {
    DispatchScope const scope;
    int const row = findItem(name);
    return row >= 0 && expandAllAt(static_cast<unsigned int>(row));
}

bool TreeView::expandAllAt(unsigned int row) {
    DispatchScope const scope;
    LifeGuard const life = guard();
    if (!rows_.at(row).item.isBranch() || !life.alive()) return false;
    unsigned int const before = numRows();
    listAgain(row, [&](std::vector<unsigned int> const& kept) { return rows_.expandAll(row, kept); });
    if (life.alive() && numRows() > before) informListeners(eBranchExpanded);
    return true;
}

bool TreeView::isExpanded(Text const& name) const {
    DispatchScope const scope;
    int const row = findItem(name);
    return row >= 0 && rows_.isExpanded(static_cast<unsigned int>(row));
}

// Rows

TreeView::ItemEx TreeView::getRow(unsigned int row) const {
    if (row >= numRows()) return {};
    DispatchScope const scope;
    TreeRows::Row const data = rows_.at(row);
    ItemEx item(data.item, data.isExpanded, data.depth);
    item.parentName = data.parentName;
    item.isPending = data.isPending;
    item.textColour =
        ask([&](auto& adaptor) { return adaptor.getTextColour(data.item); }, std::optional<Colour>());
    if (isEditing() && editedName_ == data.item.name) item.nameBox = nameBox_;
    return item;
}

int TreeView::findItem(Text const& name) const {
    DispatchScope const scope;
    auto const row = rows_.find(name);
    return row ? static_cast<int>(*row) : -1;
}

std::optional<TreeView::ItemEx> TreeView::findItemByName(Text const& name) const {
    DispatchScope const scope;
    int const row = findItem(name);
    return row < 0 ? std::nullopt : std::optional(getRow(static_cast<unsigned int>(row)));
}

int TreeView::findVisibleItem(Text const& name) const {
    DispatchScope const scope;
    int const row = findItem(name);
    return row >= 0 && isVisible(static_cast<unsigned int>(row)) ? row : -1;
}

std::vector<TreeView::Item> TreeView::getVisibleItems() const {
    std::vector<Item> items;
    RowRange const seen = rowsInSight();
    DispatchScope const scope;
    rows_.visit(seen.first, seen.end, [&](unsigned int, TreeRows::Row const& data) {
        items.push_back(data.item);
        return true;
    });
    return items;
}

// Selection

void TreeView::setSelectedItem(Text const& name) {
    if (selected_ == name) return;
    DispatchScope const scope;
    selected_ = name;
    isHiddenTold_ = false;
    int const row = findItem(name);
    if (row >= 0) current_ = anchor_ = row;
    damageRows();
    describeChanged(DescriptionChange::selection);
}

void TreeView::clearSelection() {
    if (!selected_) return;
    selected_.reset();
    isHiddenTold_ = false;
    damageRows();
    describeChanged(DescriptionChange::selection);
}

bool TreeView::changeSelectedItem(Text const& name) {
    DispatchScope const scope;
    int const row = findItem(name);
    if (row < 0) return false;
    moveTo(static_cast<unsigned int>(row), 0);
    return true;
}

bool TreeView::selectRow(unsigned int row) {
    if (row >= numRows()) return false;
    DispatchScope const scope;
    LifeGuard const life = guard();
    Text const name = rows_.at(row).item.name;
    if (!life.alive()) return true;
    bool const isOther = selected_ != name || isHiddenTold_;
    int const former = selectedRow();
    if (!life.alive()) return true;
    bool const markedRow = marksRow();
    damageRow(static_cast<unsigned int>(std::max(current_, 0)));
    if (former >= 0) damageRow(static_cast<unsigned int>(former));
    damageRow(row);
    current_ = static_cast<int>(row);
    selected_ = name;
    isHiddenTold_ = false;
    // Without a row in sight the mark of the focus goes round all of them.
    if (!markedRow || !marksRow()) damageRows();
    reveal(row);
    if (!life.alive() || !isOther) return true;
    describeChanged(DescriptionChange::selection);
    informListeners(eItemSelected);
    return true;
}

// Tags

bool TreeView::canTag(unsigned int row) const {
    if (row >= numRows()) return false;
    DispatchScope const scope;
    Item const item = rows_.at(row).item;
    return ask([&](auto& adaptor) { return adaptor.canTag(item); }, true);
}

bool TreeView::canTagBoth(unsigned int a, unsigned int b) const {
    DispatchScope const scope;
    if (!canTag(a) || !canTag(b)) return false;
    return (options_ & tagsSiblingsOnly) == 0 || rows_.at(a).parentName == rows_.at(b).parentName;
}

std::vector<TreeView::Item> TreeView::getTaggedItems() const {
    std::vector<Item> items;
    DispatchScope const scope;
    std::vector<RowRange> const tagged(tags_.ranges().begin(), tags_.ranges().end());
    rows_.visit(tagged, [&](unsigned int, TreeRows::Row const& data) {
        items.push_back(data.item);
        return true;
    });
    return items;
}

void TreeView::clearTags() {
    if (tags_.empty()) return;
    tags_.clear();
    damageRows();
    describeChanged(DescriptionChange::selection);
}

void TreeView::takeTags(RowRanges tags) {
    if (tags_ == tags) return;
    RowRange const seen = rowsInSight();
    for (unsigned int row = seen.first; row < seen.end; ++row)
        if (tags.contains(row) != tags_.contains(row)) damageRow(row);
    tags_ = std::move(tags);
    describeChanged(DescriptionChange::selection);
    informListeners(eTagsChanged);
}

/// What a click does to the tags: alone it tags the row and no other, with Ctrl it turns that of the row
/// round, with Shift it tags all from the last row that was picked.
void TreeView::pick(unsigned int row, std::uint32_t modifiers) {
    if ((options_ & allowsTags) == 0) return;
    DispatchScope const scope;
    bool const extends = (modifiers & Key::shift) != 0 && anchor_ >= 0;
    if (extends) return tagRange(static_cast<unsigned int>(anchor_), row);
    LifeGuard const life = guard();
    anchor_ = static_cast<int>(row);
    RowRanges tags;
    if ((modifiers & Key::ctrl) != 0) {
        // Rows that cannot be tagged together replace each other.
        auto const first = tags_.first();
        if (!first || canTagBoth(*first, row)) tags = tags_;
    }
    if (!life.alive()) return;
    bool const isTaken = canTag(row);
    if (!life.alive()) return;
    if (isTaken) tags.toggle({row, row + 1});
    takeTags(std::move(tags));
}

void TreeView::tagRange(unsigned int from, unsigned int to) {
    auto const [low, high] = std::minmax(from, to);
    DispatchScope const scope;
    LifeGuard const life = guard();
    Text const parent = rows_.at(from).parentName;
    bool const siblings = (options_ & tagsSiblingsOnly) != 0;
    if (life.alive()) tagRows(low, high, siblings ? std::optional(parent) : std::nullopt);
}

void TreeView::tagRows(unsigned int first, unsigned int last, std::optional<Text> const& parentName) {
    DispatchScope const scope;
    LifeGuard const life = guard();
    std::vector<RowRange> ranges;
    rows_.visit(first, last + 1, [&](unsigned int row, TreeRows::Row const& data) {
        if (parentName && data.parentName != *parentName) return true;
        if (ask([&](auto& adaptor) { return adaptor.canTag(data.item); }, true))
            ranges.push_back({row, row + 1});
        return life.alive();
    });
    if (!life.alive()) return;
    RowRanges tags;
    tags.assign(ranges);
    takeTags(std::move(tags));
}

// Renaming

bool TreeView::enableEditing(Text const& name) {
    auto const make = Registry::instance().makeNameBox;
    int const row = findItem(name);
    if (row < 0 || !make || !isActive() || !isShown() || !body_) return false;
    DispatchScope const scope;
    LifeGuard const life = guard();
    endEditing(std::nullopt);
    if (!life.alive()) return false;
    Item const item = rows_.at(static_cast<unsigned int>(row)).item;
    if (!life.alive() || !ask([&](auto& adaptor) { return adaptor.canRename(item); }, false)) return false;
    if (!life.alive() || !reveal(name) || !life.alive()) return false;
    Text const text = textOf(item);
    if (!life.alive()) return false;
    Glob* const box = make(text, UifStd::getFont(), getPalette().makeTextPalette(),
                           [ref = HandlerRef<TreeView>(this)](std::optional<Text> const& edited) {
                               if (TreeView* const tree = ref.get()) tree->endEditing(edited);
                           });
    nameBox_ = HandlerRef<Glob>(box);
    editedName_ = item.name;
    editedRow_ = row;
    body_->addChild(box, BottomLeft(0, 0));
    if (!life.alive() || !nameBox_) return false;
    placeNameBox();
    // Other rows are marked now.
    damageRows();
    box->claimKbdFocus();
    return life.alive() && isEditing();
}

void TreeView::endEditing(std::optional<Text> const& name) {
    Glob* const box = nameBox_.get();
    if (!box) return;
    DispatchScope const scope;
    LifeGuard const life = guard();
    nameBox_ = {};
    Text const before = std::exchange(editedName_, {});
    if (FocusStop::holderBeside(*this) == box) claimKbdFocus();
    destroy(box);
    if (!life.alive()) return;
    damageRows();
    int const row = rowOf(before, std::exchange(editedRow_, -1));
    if (!name || name->empty() || row < 0) return;
    auto const number = static_cast<unsigned int>(row);
    TreeRows::Row const data = rows_.at(number);
    Text const shown = textOf(data.item);
    if (!life.alive() || *name == shown) return;
    bool const isRenamed = ask([&](auto& adaptor) { return adaptor.rename(data.item, *name); }, false);
    if (!life.alive() || !isRenamed) return;
    // It has another name now, perhaps the one that was typed; it stays open and selected.
    bool const wasRemembered = rows_.getDefaultBranchState(*name);
    if (data.isExpanded) {
        rows_.rememberIn(number);
        if (!life.alive()) return;
        rows_.setDefaultBranchState(*name, true);
    }
    bool const wasSelected = selected_ == before;
    int const parent = rows_.parentRow(number);
    if (wasSelected) selected_.reset();
    auto const branchRow = parent < 0 ? std::nullopt : std::optional(static_cast<unsigned int>(parent));
    listAgain(branchRow, [&](std::vector<unsigned int> const& kept) {
        return branchRow ? rows_.refresh(*branchRow, kept) : rows_.refresh(kept);
    });
    if (!life.alive()) return;
    rows_.setDefaultBranchState(*name, wasRemembered);
    if (wasSelected) {
        // The text may have been shown only; and names that are made from others, as paths are, are known by
        // their place.
        Text selected = before;
        if (!rows_.find(before))
            selected = rows_.find(*name) || number >= numRows() ? *name : rows_.at(number).item.name;
        setSelectedItem(selected);
        if (int const now = findItem(selected); life.alive() && now >= 0)
            reveal(static_cast<unsigned int>(now));
    }
    if (life.alive()) informListeners(eItemRenamed);
}

} // namespace wainscot
