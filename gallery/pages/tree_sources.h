#pragma once

#include "host/events/one_shot_timer.h"
#include "host/events/ui_thread_callback.h"
#include "tables/tree_view.h"

#include <condition_variable>
#include <deque>
#include <map>
#include <mutex>
#include <thread>

namespace wainscot::gallery {

/// Folders and clips that can be renamed, moved by dragging, deleted and added. Names are numbers, so that
/// two clips may be shown with the same text.
class ProjectBin final : public iTreeViewAdaptor {
public:
    ProjectBin();

    void setTree(TreeView* tree) { tree_ = HandlerRef<TreeView>(tree); }

    Children listChildren(Item const* parent) override;
    Text getDisplayText(Item const& item) const override;
    Text getIcon(Item const& item, bool isExpanded) const override;
    bool canRename(Item const&) const override { return true; }
    bool rename(Item const& item, Text const& name) override;
    std::vector<MenuItem> getMenuItems(std::vector<Item> const& items) override;
    LightweightString<char> getDragType(Item const&) const override { return "bin"; }
    Qv::Ptr<DragDropItem> createDragDropItem(Item const& item, XY<int> const& place) override;
    bool canAcceptDrop(Text const& target, DragDropItem const* item, Glob::eDropReason reason) override;
    bool acceptDrop(Text const& target, DragDropItem* item, Glob::eDropReason reason) override;
    bool canInsertDrop(Text const& parent, Text const& before, DragDropItem const* item) override;
    bool insertDrop(Text const& parent, Text const& before, DragDropItem* item) override;

private:
    struct Node {
        Text shown;
        bool isFolder = false;
        Text parent;
        std::vector<Text> children;
    };

    Text add(Text const& parent, Text const& shown, bool isFolder);
    void take(Text const& name);
    bool isWithin(Text name, Text const& folder) const;
    bool move(std::vector<Text> const& names, Text const& folder, Text const& before);
    void remove(std::vector<Item> const& items);

    std::map<Text, Node> nodes_;
    int numNames_ = 0;
    HandlerRef<TreeView> tree_;
};

/// The folders and files of this machine, which another thread lists.
class FolderTree final : public iTreeViewAdaptor {
public:
    FolderTree();
    ~FolderTree() override;

    void setTree(TreeView* tree) { tree_ = HandlerRef<TreeView>(tree); }

    Children listChildren(Item const* parent) override;
    Text getDisplayText(Item const& item) const override;
    Text getIcon(Item const& item, bool isExpanded) const override;

private:
    struct Listing {
        Text folder;
        std::vector<Item> items;
    };

    /// On the other thread.
    void listFolders();
    static std::vector<Item> list(Text const& folder);
    void take(Listing const& listing);
    void showNew();

    std::map<Text, std::vector<Item>> known_;
    /// Folders that were listed and are not shown yet: those that come together are shown together.
    std::vector<Text> new_;
    OneShotTimer timer_;
    HandlerRef<TreeView> tree_;
    UIThreadCallback<Listing> listed_;
    std::mutex mutex_;
    std::condition_variable wake_;
    std::deque<Text> wanted_;
    bool ends_ = false;
    std::thread thread_;
};

/// A thousand branches of a thousand leaves, whose names are made when they are seen.
class ManyLeaves final : public iTreeViewAdaptor {
public:
    Children listChildren(Item const* parent) override;
    Item getChild(Item const* parent, unsigned int index) const override;
    int findChild(Item const* parent, Text const& name) const override;
};

/// Items come and go by themselves.
class RestlessTree final : public iTreeViewAdaptor {
public:
    RestlessTree();

    void setTree(TreeView* tree) { tree_ = HandlerRef<TreeView>(tree); }
    Children listChildren(Item const* parent) override;

private:
    void tick();

    unsigned int ticks_ = 0;
    OneShotTimer timer_;
    HandlerRef<TreeView> tree_;
};

} // namespace wainscot::gallery
