#pragma once

#include "host/base/export.h"
#include "host/base/life.h"
#include "host/base/lightweight_string.h"

#include <cstdint>
#include <vector>

namespace wainscot {

/// One node of a tree, as its source gives it.
struct WAINSCOT_API TreeItem {
    using Text = LightweightString<wchar_t>;
    /// In `flags`: it may have children.
    static constexpr std::uint8_t branch = 1;

    /// Names are how items are found, remembered and reported. Where two have the same, the one that is shown
    /// first is meant, and both share one remembered state.
    Text name;
    std::uint8_t flags = 0;

    bool isBranch() const { return (flags & branch) != 0; }
    bool operator==(TreeItem const&) const = default;
};

/// What a tree asks for its items: when a branch is opened, and again when it is refreshed. A null parent
/// stands for what lies above the uppermost items. A source that throws has no children there.
class WAINSCOT_API TreeSource {
public:
    using Text = TreeItem::Text;

    /// What lies in a branch: a list, or, for a branch of very many, their number alone.
    struct Children {
        std::vector<TreeItem> items = {};
        /// Counts where `items` is empty: `getChild` is asked for each when it is needed.
        unsigned int count = 0;
        /// With `count`: none of them is a branch, so that none is asked before it is seen.
        bool areLeaves = false;
        /// They are not known yet. The tree says so beside the branch; refresh the branch when they are. What
        /// was listed before stays meanwhile.
        bool isPending = false;
    };

    virtual ~TreeSource();

    virtual Children listChildren(TreeItem const* parent) = 0;
    /// For children that were counted. An empty item here.
    virtual TreeItem getChild(TreeItem const* parent, unsigned int index) const;
    /// The index of a child that was counted; -1 when there is none. `unknown` = each child is asked for and
    /// compared, as here.
    virtual int findChild(TreeItem const* parent, Text const& name) const;
    static constexpr int unknown = -2;

    LifeToken const& life() const { return life_; }

private:
    LifeToken life_;
};

} // namespace wainscot
