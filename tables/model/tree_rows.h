#pragma once

#include "tables/model/row_ranges.h"
#include "tables/model/tree_source.h"

#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <unordered_map>
#include <unordered_set>

namespace wainscot {

/// The rows of a tree in the order of display: the uppermost items, and below each open branch its children.
/// It remembers which branches were open when a branch round them was closed.
///
/// A row costs nothing but its item, and not even that where the source has counted its children. A row is
/// found in the time that its depth takes, and a branch is opened and closed in the time of its own rows,
/// however many rows lie behind it.
///
/// While the source is asked, it may call anything here that only reads; what would change the rows does
/// nothing and answers 0.
class WAINSCOT_API TreeRows {
public:
    using Text = TreeItem::Text;

    /// The depth of the uppermost rows is 0. Deeper branches are not opened.
    static constexpr std::uint16_t mostDepth = 65535;
    /// `expandAll` opens no more branches at once.
    static constexpr unsigned int mostExpanded = 1'000'000;

    struct Row {
        TreeItem item;
        Text parentName;
        std::uint16_t depth = 0;
        bool isExpanded = false;
        /// Its children are not known yet.
        bool isPending = false;
    };

    TreeRows();
    ~TreeRows();
    TreeRows(TreeRows const&) = delete;
    TreeRows& operator=(TreeRows const&) = delete;

    /// Lists the uppermost items. Forgets which branches were open. Null empties the tree.
    void setSource(TreeSource* source);
    /// Null as well when it has died.
    TreeSource* source() const;
    /// Whether the source is being asked.
    bool isAsking() const { return numAsking_ > 0; }
    /// Changes whenever rows have come, gone or changed their numbers.
    unsigned int version() const { return version_; }

    unsigned int numRows() const;
    /// An empty one when there is no such row.
    Row at(unsigned int row) const;
    /// Calls `visit` with the rows from `first` up to `end`, and their numbers, until it answers false.
    using Visitor = std::function<bool(unsigned int row, Row const& data)>;
    void visit(unsigned int first, unsigned int end, Visitor const& visit) const;
    /// The same for ranges in rising order.
    void visit(std::span<RowRange const> ranges, Visitor const& visit) const;
    bool isExpanded(unsigned int row) const;
    /// The row of the branch in which a row lies; -1 for the uppermost ones.
    int parentRow(unsigned int row) const;
    /// The names of a row and of the branches round it, from the inside.
    std::vector<Text> pathOf(unsigned int row) const;
    /// The last row below a row at any depth; the row itself when there is none.
    unsigned int findLastChild(unsigned int row) const;
    /// The first row with this name.
    std::optional<unsigned int> find(Text const& name) const;
    /// The same among the rows in a branch, at any depth.
    std::optional<unsigned int> findIn(unsigned int branchRow, Text const& name) const;
    /// The row of an open branch with this name, in the time that its depth takes; nothing when none has it,
    /// or when several have.
    std::optional<unsigned int> findOpen(Text const& name) const;
    /// Branches that are open, in no order.
    std::vector<TreeItem> expandedItems() const;

    /// Opens a branch, and in it those that are remembered as open. How many rows have come: those right
    /// behind `row`.
    unsigned int expandBranch(unsigned int row);
    /// Closes a branch and remembers the states of those in it. How many rows have gone.
    unsigned int collapseBranch(unsigned int row);

    /// Whether a branch of this name is remembered as open.
    bool getDefaultBranchState(Text const& name) const { return remembered_.contains(name); }
    void setDefaultBranchState(Text const& name, bool isOpen);

    /// Remembers which branches are open in an open one.
    void rememberIn(unsigned int branchRow);

    // These answer where the rows with some numbers are afterwards: those of the same names, first of all in
    // the same branches, or those of the same numbers where children were counted.

    using Places = std::vector<std::optional<unsigned int>>;
    /// Opens all branches, or a branch and all in it. What is open already is listed again.
    Places expandAll(std::span<unsigned int const> rows);
    Places expandAll(unsigned int branchRow, std::span<unsigned int const> rows);
    /// Lists all open branches again, or one and those in it. Branches that are still there stay open; those
    /// that have gone are remembered as open, in case they come back.
    Places refresh(std::span<unsigned int const> rows);
    Places refresh(unsigned int branchRow, std::span<unsigned int const> rows);

private:
    struct Branch;
    struct Place;
    class Numbering;
    class Asking;
    class Gathering;

    Place locate(unsigned int row) const;
    unsigned int rowOf(Branch const& branch, unsigned int index) const;
    Row rowAt(Place const& place) const;
    TreeItem itemAt(Branch const& branch, unsigned int index) const;
    int indexIn(Branch const& branch, Text const& name) const;
    std::optional<unsigned int> findFrom(Branch const& top, Text const& name) const;
    TreeSource::Children list(TreeItem const* parent);
    void rememberIn(Branch const& branch);
    void attach(std::unique_ptr<Branch> branch, Branch& parent, unsigned int index);
    std::unique_ptr<Branch> detach(Branch& parent, std::size_t openIndex);
    /// Puts a branch into the place of an open one.
    void replace(Branch& parent, std::size_t openIndex, std::unique_ptr<Branch> branch);
    static void belowChanged(Branch& branch, unsigned int added, unsigned int gone);
    // The open branches by their names, from when one was first sought.
    void enterOpen(Branch& top) const;
    void leaveOpen(Branch& top) const;
    Places listAgain(Gathering& gathering, Place const& place, Branch* old,
                     std::span<unsigned int const> rows);
    Places listAgain(Gathering& gathering, unsigned int branchRow, std::span<unsigned int const> rows);
    void changed() { ++version_; }

    TreeSource* source_ = nullptr;
    std::optional<LifeGuard> sourceLife_;
    std::unique_ptr<Branch> root_;
    std::unordered_set<Text> remembered_;
    LifeToken life_;
    mutable int numAsking_ = 0;
    unsigned int version_ = 0;
    mutable std::optional<std::unordered_map<Text, std::vector<Branch*>>> openByName_;
    /// Where the last row was found, and the row of the first child there.
    mutable Branch* nearBranch_ = nullptr;
    mutable unsigned int nearFirst_ = 0;
    mutable std::optional<unsigned int> nearVersion_;
    mutable Text foundName_;
    mutable std::optional<unsigned int> foundRow_;
    mutable std::optional<unsigned int> foundVersion_;
};

} // namespace wainscot
