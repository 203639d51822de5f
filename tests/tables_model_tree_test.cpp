#include "host/base/convert.h"
#include "tables/model/tree_rows.h"

#include <gtest/gtest.h>

#include <map>
#include <numeric>
#include <random>
#include <set>

namespace wainscot {
namespace {

using Text = TreeItem::Text;

/// A tree that changes. It lists its children, or counts them.
class Forest final : public TreeSource {
public:
    struct Node {
        std::vector<std::string> children;
        bool isBranch = true;
    };
    enum class Way { lists, counts, countsAndFinds };

    Children listChildren(TreeItem const* parent) override {
        ++numListed;
        auto const& names = childrenOf(parent);
        Children children;
        if (way != Way::lists) {
            children.count = static_cast<unsigned int>(names.size());
            return children;
        }
        for (std::string const& name : names) children.items.push_back(item(name));
        return children;
    }
    TreeItem getChild(TreeItem const* parent, unsigned int index) const override {
        auto const& names = childrenOf(parent);
        return index < names.size() ? item(names[index]) : TreeItem();
    }
    int findChild(TreeItem const* parent, Text const& name) const override {
        if (way == Way::counts) return unknown;
        auto const& names = childrenOf(parent);
        auto const found = std::ranges::find(names, toUTF8(name).c_str());
        return found == names.end() ? -1 : static_cast<int>(found - names.begin());
    }
    TreeItem item(std::string const& name) const {
        auto const found = nodes.find(name);
        bool const isBranch = found != nodes.end() && found->second.isBranch;
        return {fromUTF8(name.c_str()), static_cast<std::uint8_t>(isBranch ? TreeItem::branch : 0)};
    }
    std::vector<std::string> const& childrenOf(TreeItem const* parent) const {
        static std::vector<std::string> const none;
        auto const found = nodes.find(parent ? toUTF8(parent->name).c_str() : "/");
        return found == nodes.end() ? none : found->second.children;
    }

    std::map<std::string, Node> nodes{{"/", {}}};
    Way way = Way::lists;
    int numListed = 0;
};

/// Rows as lines of "depth name", open branches with "+".
std::vector<std::string> linesOf(TreeRows const& rows) {
    std::vector<std::string> lines;
    rows.visit(0, rows.numRows(), [&](unsigned int row, TreeRows::Row const& data) {
        EXPECT_EQ(row, lines.size());
        lines.push_back(std::to_string(data.depth) + (data.isExpanded ? "+" : " ") +
                        toUTF8(data.item.name).c_str() + " in " + toUTF8(data.parentName).c_str());
        return true;
    });
    return lines;
}

/// The same, kept row by row.
class Plain {
public:
    explicit Plain(Forest& forest) : forest_(forest) {}

    struct Line {
        std::string name;
        std::string parent;
        int depth;
        bool isOpen;
    };
    std::size_t expand(std::size_t row) {
        Line const line = lines[row];
        lines[row].isOpen = true;
        std::size_t at = row + 1;
        TreeItem const item = forest_.item(line.name);
        for (std::string const& name : forest_.childrenOf(&item)) {
            lines.insert(lines.begin() + static_cast<std::ptrdiff_t>(at),
                         {name, line.name, line.depth + 1, false});
            if (forest_.item(name).isBranch() && remembered.count(name)) at += expand(at);
            ++at;
        }
        return at - row - 1;
    }
    void collapse(std::size_t row) {
        lines[row].isOpen = false;
        std::size_t end = row + 1;
        while (end < lines.size() && lines[end].depth > lines[row].depth) ++end;
        for (std::size_t i = row; i < end; ++i) remember(lines[i]);
        lines.erase(lines.begin() + static_cast<std::ptrdiff_t>(row) + 1,
                    lines.begin() + static_cast<std::ptrdiff_t>(end));
    }
    void refresh() {
        std::set<std::string> const before = remembered;
        std::set<std::string> open;
        for (Line const& line : lines)
            if (line.isOpen) open.insert(line.name);
        // Names are unique here, so that what is open may stand for what is remembered.
        remembered.insert(open.begin(), open.end());
        lines.clear();
        for (std::string const& name : forest_.childrenOf(nullptr)) {
            lines.push_back({name, "", 0, false});
            if (forest_.item(name).isBranch() && remembered.count(name)) expand(lines.size() - 1);
        }
        for (Line const& line : lines)
            if (line.isOpen && open.count(line.name) && !before.count(line.name)) remembered.erase(line.name);
    }
    void remember(Line const& line) {
        if (!forest_.item(line.name).isBranch()) return;
        if (line.isOpen)
            remembered.insert(line.name);
        else
            remembered.erase(line.name);
    }
    std::vector<std::string> text() const {
        std::vector<std::string> text;
        for (Line const& line : lines)
            text.push_back(std::to_string(line.depth) + (line.isOpen ? "+" : " ") + line.name + " in " +
                           line.parent);
        return text;
    }

    std::vector<Line> lines;
    std::set<std::string> remembered;

private:
    Forest& forest_;
};

TEST(TreeRows, RandomScriptsAgreeWithRowsKeptOneByOne) {
    std::mt19937 random(5);
    for (int script = 0; script < 90; ++script) {
        Forest forest;
        forest.way = static_cast<Forest::Way>(script % 3);
        int numNames = 0;
        auto const grow = [&](std::string const& parent) {
            std::string const name = "n" + std::to_string(numNames++);
            forest.nodes[name].isBranch = random() % 3 != 0;
            auto& children = forest.nodes[parent].children;
            children.insert(children.begin() + static_cast<std::ptrdiff_t>(random() % (children.size() + 1)),
                            name);
        };
        for (int i = 0; i < 6; ++i) grow("/");
        for (int i = 0; i < 50; ++i)
            grow("n" + std::to_string(random() % static_cast<unsigned int>(numNames)));
        TreeRows rows;
        rows.setSource(&forest);
        Plain plain(forest);
        plain.refresh();
        for (int step = 0; step < 60; ++step) {
            ASSERT_EQ(linesOf(rows), plain.text()) << "script " << script << ", step " << step;
            if (plain.lines.empty()) break;
            std::size_t const row = random() % plain.lines.size();
            Plain::Line const line = plain.lines[row];
            auto const number = static_cast<unsigned int>(row);
            ASSERT_EQ(rows.find(fromUTF8(line.name.c_str())), number);
            ASSERT_EQ(rows.findOpen(fromUTF8(line.name.c_str())),
                      line.isOpen ? std::optional(number) : std::nullopt);
            int const parent = rows.parentRow(number);
            if (parent >= 0) {
                ASSERT_EQ(rows.findIn(static_cast<unsigned int>(parent), fromUTF8(line.name.c_str())),
                          number);
            }
            ASSERT_EQ(parent < 0 ? "" : plain.lines[static_cast<std::size_t>(parent)].name, line.parent);
            switch (random() % 8) {
            case 0:
            case 1:
            case 2:
                if (!forest.item(line.name).isBranch() || line.isOpen) {
                    EXPECT_EQ(rows.expandBranch(number), 0U);
                } else {
                    std::size_t const added = plain.expand(row);
                    ASSERT_EQ(rows.expandBranch(number), added);
                    ASSERT_EQ(rows.findLastChild(number), row + added);
                }
                break;
            case 3:
            case 4:
                if (line.isOpen) plain.collapse(row);
                rows.collapseBranch(number);
                break;
            default: {
                // The source changes: something comes, goes or moves. Rows are found again.
                if (random() % 2 == 0)
                    grow("n" + std::to_string(random() % static_cast<unsigned int>(numNames)));
                auto& siblings = forest.nodes[line.parent.empty() ? "/" : line.parent].children;
                if (random() % 2 == 0) std::rotate(siblings.begin(), siblings.begin() + 1, siblings.end());
                bool const goes = random() % 3 == 0;
                if (goes) std::erase(siblings, line.name);
                bool const moves = forest.way == Forest::Way::lists && random() % 2 == 0;
                if (goes && moves) forest.nodes["/"].children.push_back(line.name);
                std::vector<unsigned int> kept{number / 2, number};
                std::vector<std::string> const names{plain.lines[number / 2].name, line.name};
                plain.refresh();
                TreeRows::Places const places = rows.refresh(kept);
                if (forest.way != Forest::Way::lists) break;
                for (std::size_t i = 0; i < kept.size(); ++i) {
                    auto const isThere = std::ranges::find(plain.lines, names[i], &Plain::Line::name);
                    if (isThere == plain.lines.end())
                        EXPECT_FALSE(places[i]);
                    else
                        EXPECT_EQ(places[i], isThere - plain.lines.begin());
                }
            }
            }
        }
    }
}

/// One child in each branch, without end; or the same name again and again.
class Chain final : public TreeSource {
public:
    explicit Chain(bool isCycle = false) : isCycle_(isCycle) {}
    Children listChildren(TreeItem const* parent) override {
        int const depth = parent ? std::atoi(toUTF8(parent->name).c_str()) + 1 : 0;
        Text const name = isCycle_ && depth > 0 ? Text(L"1") : Qv::WStringFromInteger(depth);
        // It may be its end.
        if (auto const act = onList) act();
        return {{{name, TreeItem::branch}}};
    }
    std::function<void()> onList;

private:
    bool isCycle_;
};

TEST(TreeRows, DeepTreesAndCyclesEnd) {
    Chain chain;
    TreeRows rows;
    rows.setSource(&chain);
    rows.expandAll({});
    EXPECT_EQ(rows.numRows(), TreeRows::mostDepth + 1U);
    EXPECT_EQ(rows.at(rows.numRows() - 1).depth, TreeRows::mostDepth);
    std::vector<unsigned int> all(rows.numRows());
    std::iota(all.begin(), all.end(), 0U);
    EXPECT_EQ(rows.refresh(all), TreeRows::Places(all.begin(), all.end())) << "at once, too";
    EXPECT_EQ(rows.expandBranch(rows.numRows() - 1), 0U);
    EXPECT_EQ(rows.collapseBranch(0), std::uint32_t(TreeRows::mostDepth));
    EXPECT_EQ(rows.expandBranch(0), std::uint32_t(TreeRows::mostDepth));
    Chain cycle(true);
    rows.setSource(&cycle);
    rows.expandAll({});
    EXPECT_EQ(rows.numRows(), 3U) << "a name is opened once on the way from the root";
    EXPECT_EQ(rows.expandBranch(2), 1U) << "the user may go on";
}

TEST(TreeRows, SourcesMayFailDieAndAskBack) {
    auto chain = std::make_unique<Chain>();
    auto rows = std::make_unique<TreeRows>();
    rows->setSource(chain.get());
    chain->onList = [] { throw std::runtime_error("not here"); };
    EXPECT_EQ(rows->expandBranch(0), 0U);
    EXPECT_TRUE(rows->isExpanded(0));
    chain->onList = [&] {
        EXPECT_EQ(rows->collapseBranch(0), 0U) << "nothing changes while the source is asked";
        EXPECT_EQ(rows->expandBranch(0), 0U);
        rows->setSource(chain.get());
    };
    rows->refresh({});
    chain->onList = nullptr;
    rows->setSource(chain.get());
    EXPECT_EQ(rows->expandBranch(0), 1U);
    chain->onList = [&] { chain.reset(); };
    EXPECT_EQ(rows->expandBranch(1), 0U);
    EXPECT_EQ(rows->source(), nullptr);
    EXPECT_EQ(rows->at(1).item.name, Text(L"1"));
    Chain last;
    rows->setSource(&last);
    last.onList = [&] { rows.reset(); };
    EXPECT_EQ(rows->expandBranch(0), 0U);
    EXPECT_EQ(rows, nullptr);
}

} // namespace
} // namespace wainscot
