#include "gallery/pages/tree_sources.h"

#include "host/base/convert.h"
#include "host/objects/drag_drop_item.h"
#include "menus/model/menu_item.h"

#include <algorithm>
#include <filesystem>
#include <utility>

namespace wainscot::gallery {

namespace {

using Text = LightweightString<wchar_t>;

constexpr unsigned int numBranches = 1000;
constexpr unsigned int numLeaves = 1000;
constexpr double tickInterval = 700;
constexpr double showInterval = 20;

std::uint8_t flagsOf(bool isBranch) {
    return isBranch ? TreeItem::branch : std::uint8_t(0);
}

Text number(unsigned int value) {
    return Qv::WStringFromInteger(static_cast<int>(value));
}

/// The items of a bin that are being dragged.
class BinItems final : public DragDropItem {
public:
    BinItems(std::vector<Text> names, Text const& label)
        : DragDropItem("bin", label), names_(std::move(names)) {}
    std::vector<Text> const& names() const { return names_; }

private:
    std::vector<Text> names_;
};

/// Null for other drags.
BinItems const* binItems(DragDropItem const* item) {
    return item && item->type() == "bin" ? dynamic_cast<BinItems const*>(item) : nullptr;
}

} // namespace

// Project bin

ProjectBin::ProjectBin() {
    nodes_[Text()].isFolder = true;
    for (wchar_t const* const folder : {L"Footage", L"Music", L"Titles", L"Exports"}) {
        Text const inside = add({}, folder, true);
        for (wchar_t const* const day : {L"Monday", L"Tuesday", L"Wednesday"}) {
            Text const reel = add(inside, day, true);
            for (unsigned int clip = 1; clip <= 5; ++clip) add(reel, L"Take " + number(clip), false);
        }
        add(inside, L"Notes", false);
    }
    add({}, L"Sequence", false);
}

Text ProjectBin::add(Text const& parent, Text const& shown, bool isFolder) {
    Text name = Qv::WStringFromInteger(++numNames_);
    nodes_[name] = {shown, isFolder, parent, {}};
    nodes_[parent].children.push_back(name);
    return name;
}

TreeSource::Children ProjectBin::listChildren(Item const* parent) {
    Children children;
    for (Text const& name : nodes_[parent ? parent->name : Text()].children)
        children.items.push_back({name, flagsOf(nodes_[name].isFolder)});
    return children;
}

Text ProjectBin::getDisplayText(Item const& item) const {
    auto const found = nodes_.find(item.name);
    return found == nodes_.end() ? Text() : found->second.shown;
}

Text ProjectBin::getIcon(Item const& item, bool) const {
    return item.isBranch() ? L"folder.png" : L"led_blue_on.png";
}

bool ProjectBin::rename(Item const& item, Text const& name) {
    nodes_[item.name].shown = name;
    return true;
}

std::vector<MenuItem> ProjectBin::getMenuItems(std::vector<Item> const& items) {
    std::vector<MenuItem> menu;
    auto const offer = [&](wchar_t const* text, std::function<void()> const& act) {
        auto const callback = makeCallback<int, NotifyMsg>([act](NotifyMsg const&) {
            act();
            return 1;
        });
        menu.push_back(MenuItem::plain(text, WidgetCallback(callback, "")));
    };
    Text const parent = items.empty()         ? Text()
                        : items[0].isBranch() ? items[0].name
                                              : nodes_[items[0].name].parent;
    offer(L"New Folder", [this, parent, ref = tree_] {
        TreeView* const tree = ref.get();
        if (!tree) return;
        Text const made = add(parent, L"Folder", true);
        tree->refresh();
        tree->expand(parent);
        tree->changeSelectedItem(made);
        tree->enableEditing(made);
    });
    if (!items.empty())
        offer(L"Delete", [this, items, ref = tree_] {
            if (ref) remove(items);
        });
    return menu;
}

void ProjectBin::take(Text const& name) {
    std::erase(nodes_[nodes_[name].parent].children, name);
}

void ProjectBin::remove(std::vector<Item> const& items) {
    for (Item const& item : items)
        if (nodes_.contains(item.name)) take(item.name);
    if (TreeView* const tree = tree_.get()) tree->refresh();
}

Qv::Ptr<DragDropItem> ProjectBin::createDragDropItem(Item const& item, XY<int> const&) {
    std::vector<Text> names;
    if (TreeView* const tree = tree_.get())
        for (Item const& tagged : tree->getTaggedItems()) names.push_back(tagged.name);
    if (std::ranges::find(names, item.name) == names.end()) names = {item.name};
    Text const label = names.size() == 1 ? getDisplayText(item) : number(unsigned(names.size())) + L" items";
    return Qv::Ptr<DragDropItem>(new BinItems(names, label));
}

bool ProjectBin::isWithin(Text name, Text const& folder) const {
    for (; !name.empty(); name = nodes_.at(name).parent)
        if (name == folder) return true;
    return folder.empty();
}

bool ProjectBin::canAcceptDrop(Text const& target, DragDropItem const* item, Glob::eDropReason) {
    return binItems(item) && nodes_.contains(target) && nodes_[target].isFolder;
}

bool ProjectBin::acceptDrop(Text const& target, DragDropItem* item, Glob::eDropReason) {
    BinItems const* const items = binItems(item);
    return items && move(items->names(), target, {});
}

bool ProjectBin::canInsertDrop(Text const& parent, Text const&, DragDropItem const* item) {
    return binItems(item) && nodes_.contains(parent);
}

bool ProjectBin::insertDrop(Text const& parent, Text const& before, DragDropItem* item) {
    BinItems const* const items = binItems(item);
    return items && move(items->names(), parent, before);
}

bool ProjectBin::move(std::vector<Text> const& names, Text const& folder, Text const& before) {
    bool hasMoved = false;
    // They go before the next item that is not moved itself.
    auto const& siblings = nodes_[folder].children;
    auto const isMoved = [&](Text const& name) { return std::ranges::find(names, name) != names.end(); };
    auto const stays = std::find_if_not(std::ranges::find(siblings, before), siblings.end(), isMoved);
    Text const next = stays == siblings.end() ? Text() : *stays;
    for (Text const& name : names) {
        if (!nodes_.contains(name) || isWithin(folder, name)) continue;
        take(name);
        nodes_[name].parent = folder;
        auto& children = nodes_[folder].children;
        children.insert(std::ranges::find(children, next), name);
        hasMoved = true;
    }
    if (TreeView* const tree = tree_.get(); tree && hasMoved) tree->refresh();
    return hasMoved;
}

// Folders

FolderTree::FolderTree()
    : timer_([this] { showNew(); }),
      listed_(makeCallback<int, Listing>([this](Listing const& listing) { return take(listing), 1; })),
      thread_([this] { listFolders(); }) {}

FolderTree::~FolderTree() {
    {
        std::lock_guard const lock(mutex_);
        ends_ = true;
    }
    wake_.notify_one();
    thread_.join();
}

TreeSource::Children FolderTree::listChildren(Item const* parent) {
    Children children;
    if (!parent) {
        children.items.push_back({L"/", TreeItem::branch});
        return children;
    }
    if (auto const found = known_.find(parent->name); found != known_.end()) {
        children.items = found->second;
        return children;
    }
    children.isPending = true;
    {
        std::lock_guard const lock(mutex_);
        wanted_.push_back(parent->name);
    }
    wake_.notify_one();
    return children;
}

void FolderTree::listFolders() {
    std::unique_lock lock(mutex_);
    for (;;) {
        wake_.wait(lock, [this] { return ends_ || !wanted_.empty(); });
        if (ends_) return;
        Text const folder = wanted_.front();
        wanted_.pop_front();
        lock.unlock();
        listed_.call({folder, list(folder)});
        lock.lock();
    }
}

std::vector<TreeItem> FolderTree::list(Text const& folder) {
    namespace files = std::filesystem;
    std::vector<Item> items;
    std::error_code failed;
    files::directory_iterator const end;
    for (files::directory_iterator at(folder.c_str(), failed); !failed && at != end; at.increment(failed)) {
        std::error_code unknown;
        bool const isFolder = at->is_directory(unknown) && !at->is_symlink(unknown);
        items.push_back({fromUTF8(at->path().string().c_str()), flagsOf(isFolder)});
    }
    std::ranges::sort(items, [](Item const& a, Item const& b) {
        return a.isBranch() != b.isBranch() ? a.isBranch() : a.name < b.name;
    });
    return items;
}

void FolderTree::take(Listing const& listing) {
    known_[listing.folder] = listing.items;
    new_.push_back(listing.folder);
    if (!timer_.isRunning()) timer_.start(showInterval);
}

void FolderTree::showNew() {
    for (Text const& folder : std::exchange(new_, {}))
        if (TreeView* const tree = tree_.get(); tree && tree->getAdaptor() == this) tree->refresh(folder);
}

Text FolderTree::getDisplayText(Item const& item) const {
    std::size_t const slash = item.name.rfind(L'/');
    return item.name.size() > 1 && slash != Text::npos ? item.name.substr(slash + 1) : item.name;
}

Text FolderTree::getIcon(Item const& item, bool) const {
    return item.isBranch() ? Text(L"folder.png") : Text();
}

// Many leaves

TreeSource::Children ManyLeaves::listChildren(Item const* parent) {
    Children children;
    children.count = parent ? numLeaves : numBranches;
    children.areLeaves = parent != nullptr;
    return children;
}

TreeItem ManyLeaves::getChild(Item const* parent, unsigned int index) const {
    if (!parent) return {L"Branch " + number(index), TreeItem::branch};
    return {L"Leaf " + parent->name.substr(Text(L"Branch ").size()) + L"." + number(index), 0};
}

/// The number at the end of a name, when the name is the one that belongs to it.
int ManyLeaves::findChild(Item const* parent, Text const& name) const {
    std::size_t const at = name.view().find_last_of(parent ? L'.' : L' ');
    if (at == Text::npos) return -1;
    auto const index = static_cast<unsigned int>(std::wcstoul(name.c_str() + at + 1, nullptr, 10));
    bool const isHere = index < (parent ? numLeaves : numBranches) && getChild(parent, index).name == name;
    return isHere ? static_cast<int>(index) : -1;
}

// Restless

RestlessTree::RestlessTree() : timer_([this] { tick(); }) {
    timer_.start(tickInterval);
}

void RestlessTree::tick() {
    ++ticks_;
    timer_.start(tickInterval);
    TreeView* const tree = tree_.get();
    if (tree && tree->getAdaptor() == this) tree->refresh();
}

TreeSource::Children RestlessTree::listChildren(Item const* parent) {
    Children children;
    if (!parent) {
        for (unsigned int i = 0; i < 5; ++i)
            children.items.push_back({L"Channel " + number(i + 1), TreeItem::branch});
        return children;
    }
    for (unsigned int i = 0; i < 8; ++i)
        if ((ticks_ + i) % 4 != 0) children.items.push_back({parent->name + L", take " + number(i + 1), 0});
    return children;
}

} // namespace wainscot::gallery
