#include "bench/driving.h"
#include "host/base/convert.h"
#include "host/windows/event_loop.h"
#include "host/windows/glob_manager.h"
#include "tables/model/row_ranges.h"
#include "tables/table_widget.h"

#include <array>
#include <cstdio>
#include <random>

/// A million rows of eight columns, whose texts are made on demand: shown, scrolled, tagged.
namespace {

using namespace wainscot;
using namespace wainscot::Measuring;

constexpr unsigned int numRows = 1'000'000;
constexpr int numColumns = 8;
constexpr int repetitions = 3;
constexpr int rowHeight = 24;
constexpr int columnWidth = 145;
constexpr int numScrollSteps = 2000;
constexpr int firstScrolled = 101;
constexpr int numJumps = 1000;
constexpr int numWideColumns = 200;
constexpr int numDragSteps = 500;

class Source : public iTableAdaptor {
public:
    explicit Source(bool isVariable = false) : isVariable_(isVariable) {}

    Text getFieldText(XY<int> const& cell) const override {
        auto const r = static_cast<std::uint64_t>(cell.y);
        std::array<char, 64> text{};
        auto const write = [&](char const* format, auto... values) {
            int const length = std::snprintf(text.data(), text.size(), format, values...);
            std::array<wchar_t, 64> wide{};
            std::copy_n(text.begin(), length, wide.begin());
            return Text(std::wstring_view(wide.data(), static_cast<std::size_t>(length)));
        };
        switch (cell.x) {
        case 0:
            return write("Row %d", cell.y);
        case 1:
            return write("%d", static_cast<int>(r * 7919 % 1'000'003));
        case 2:
            return write("0x%08x", static_cast<unsigned int>(r * 2654435761U));
        case 3:
            return write("clip_%06d.mov", cell.y);
        case 4: {
            int const seconds = cell.y / 25;
            return write("%02d:%02d:%02d:%02d", seconds / 3600, seconds / 60 % 60, seconds % 60, cell.y % 25);
        }
        case 5:
            return write("%d x %d", 640 + cell.y % 1280, 360 + cell.y % 720);
        case 6:
            return write("%.2f MB", static_cast<double>(r * 31 % 99991) / 100);
        default:
            return write("tag %d", cell.y % 17);
        }
    }
    unsigned int getSize() const override { return numRows; }
    std::vector<TableColumnDescription> getColumnDefinitions() const override {
        std::vector<TableColumnDescription> columns;
        for (int i = 0; i < numColumns; ++i) {
            columns.emplace_back(L"Column " + Qv::WStringFromInteger(i), StringFromInteger(i));
            columns.back().width = columnWidth;
        }
        return columns;
    }
    unsigned short getRowHeight(unsigned int row) const override {
        return isVariable_ ? toSize16(rowHeight + static_cast<int>(row % 7) * 2) : toSize16(0);
    }
    bool getTag(unsigned int row) const override { return tags_.contains(row); }
    void setTags(std::map<unsigned int, bool> const& tags, bool) override {
        for (auto const& [row, isTagged] : tags) {
            if (isTagged)
                tags_.add({row, row + 1});
            else
                tags_.remove({row, row + 1});
        }
    }
    bool setAllTags(bool tagged) override {
        if (tagsRowByRow) return false;
        tags_.clear();
        if (tagged) tags_.add({0, numRows});
        return true;
    }
    unsigned int numTagged() const { return tags_.count(); }
    bool tagsRowByRow = false;

private:
    bool isVariable_;
    RowRanges tags_;
};

/// As many columns as nobody sees at once.
class Wide final : public iTableAdaptor {
public:
    Text getFieldText(XY<int> const& cell) const override {
        return Qv::WStringFromInteger(cell.x * cell.y % 10'007);
    }
    unsigned int getSize() const override { return numRows; }
    bool hasRowHeights() const override { return false; }
    std::vector<TableColumnDescription> getColumnDefinitions() const override {
        std::vector<TableColumnDescription> columns;
        for (int i = 0; i < numWideColumns; ++i)
            columns.emplace_back(L"Column " + Qv::WStringFromInteger(i), StringFromInteger(i));
        return columns;
    }
};

class Shown {
public:
    explicit Shown(Host& host) : host_(host), table_(new TableWidget(TableWidget::InitArgs(1200, 900))) {
        table_->setLineHeight(rowHeight);
        table_->setTagFlags(TableTagFlag::useRows | TableTagFlag::allowMulti);
        host.globManager().realize(table_, XY<int>(0, 0));
        host.loop().settle();
    }
    ~Shown() {
        destroy(table_);
        host_.loop().settle();
    }
    Shown(Shown const&) = delete;
    Shown& operator=(Shown const&) = delete;

    TableWidget* operator->() { return table_; }
    TableWidget* table() { return table_; }
    /// Milliseconds of a call with all its effects.
    template <class Act>
    double time(Act const& act) {
        double const start = now();
        act();
        host_.loop().settle();
        return now() - start;
    }

private:
    Host& host_;
    TableWidget* table_;
};

void benchRows(char const* name, bool isVariable) {
    Report report(name, numRows);
    std::unique_ptr<Host> const host = makeHost();
    std::vector<double> setting, tagging, byRow, alternate, growth;
    Steps scrolling, jumping;
    for (int r = 0; r < repetitions; ++r) {
        Source source(isVariable);
        Shown table(*host);
        double const before = residentBytes();
        setting.push_back(table.time([&] { table->setDataSource(&source); }));
        if (r == 0) growth.push_back((residentBytes() - before) / (1024 * 1024));
        std::vector<double> steps, jumps;
        for (int i = 0; i < numScrollSteps; ++i)
            steps.push_back(1000 * table.time([&] {
                if (isVariable)
                    table->setWindowTop(table->getWindowTop() + rowHeight);
                else
                    table->setWindowTop(std::int64_t{firstScrolled + i} * rowHeight);
            }));
        scrolling.add(steps);
        std::mt19937 random(2);
        for (int i = 0; i < numJumps; ++i) {
            auto const row = static_cast<std::int64_t>(random() % numRows);
            jumps.push_back(1000 * table.time([&] {
                table->setWindowTop(isVariable ? table->getTotalHeight() / std::int64_t{numRows} * row
                                               : row * rowHeight);
            }));
        }
        jumping.add(jumps);
        if (r + 1 == repetitions) addPicture(report, table.table());
        tagging.push_back(table.time([&] { table->tagAll(); }));
        check(source.numTagged() == numRows, "not all rows were tagged");
        table.time([&] { table->tagAll(); });
        source.tagsRowByRow = true;
        byRow.push_back(table.time([&] { table->tagAll(); }));
        check(source.numTagged() == numRows, "not all rows were tagged one by one");
        table.time([&] { table->tagAll(); });
        std::map<unsigned int, bool> every;
        for (unsigned int row = 0; row < numRows; row += 2) every.emplace_hint(every.end(), row, true);
        std::set<unsigned short> columns;
        alternate.push_back(table.time([&] { table->setTags(every, columns, true); }));
        check(source.numTagged() == numRows / 2, "not every second row was tagged");
    }
    report.addRuns("set_model_first_paint_ms", setting);
    scrolling.addTo(report, "scroll_step_us");
    jumping.addTo(report, "jump_us");
    report.addRuns("select_all_ms", tagging);
    report.addRuns("select_all_by_list_ms", byRow);
    report.addRuns("tag_every_second_ms", alternate);
    report.addRuns("rss_growth_mb", growth);
    report.print();
}

void benchColumns() {
    Report report("columns", numWideColumns);
    std::unique_ptr<Host> const host = makeHost();
    std::vector<double> automatic, stretched;
    Steps dragging;
    for (int r = 0; r < repetitions; ++r) {
        Wide source;
        Shown table(*host);
        table->setDataSource(&source);
        automatic.push_back(table.time([&] { table->autoSizeColumns(); }));
        stretched.push_back(table.time([&] { table->stretchColumnsToFit(); }));
        table->autoSizeColumns();
        std::vector<double> steps;
        for (int i = 0; i < numDragSteps; ++i)
            steps.push_back(1000 * table.time([&] { table->resizeColumn(3, 60 + i % 100); }));
        dragging.add(steps);
    }
    report.addRuns("auto_size_ms", automatic);
    report.addRuns("stretch_ms", stretched);
    dragging.addTo(report, "column_drag_us");
    report.print();
}

} // namespace

/// Without arguments all groups; else those named: W2, variable, columns.
int main(int count, char** names) {
    return runWorkloads(count, names,
                        {{"W2", [] { benchRows("W2", false); }},
                         {"variable", [] { benchRows("variable", true); }},
                         {"columns", benchColumns}});
}
