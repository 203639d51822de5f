#pragma once

#include "host/events/one_shot_timer.h"
#include "tables/model/row_order.h"
#include "tables/remote_table_adaptor.h"
#include "tables/table_widget.h"

namespace wainscot::gallery {

/// A million clips, whose texts are made when they are asked for. They are sorted in slices.
class ClipBin final : public iTableAdaptor {
public:
    explicit ClipBin(unsigned int size = 1'000'000);

    /// The table that shows it; it may die first.
    void setTable(TableWidget* table) { table_ = HandlerRef<TableWidget>(table); }

    Text getFieldText(XY<int> const& cell) const override;
    unsigned int getSize() const override { return order_.numRows(); }
    bool hasRowHeights() const override { return false; }
    std::vector<TableColumnDescription> getColumnDefinitions() const override;
    std::pair<int, int> getTextAlignment(XY<int> const& cell) const override;
    bool getTag(unsigned int row) const override;
    void setTags(std::map<unsigned int, bool> const& tags, bool byUser) override;
    bool setAllTags(bool tagged) override;
    std::optional<unsigned int> findTagged(unsigned int from) const override;
    unsigned int getNumTagged() const override { return tags_.count(); }
    bool drawField(CellContext& context) override;
    void sort(LightweightString<char> const& column, bool reversed) override;
    std::uint64_t getRowIdentity(unsigned int row) const override;
    std::optional<unsigned int> findRow(std::uint64_t identity) const override;

private:
    enum Column { tag, name, timecode, level, label, megabytes, numColumns };

    unsigned int clipOf(int row) const;
    void sortOn();

    RowOrder order_;
    /// Of clips, so that they follow every order.
    RowRanges tags_;
    OneShotTimer timer_;
    HandlerRef<TableWidget> table_;
};

/// Notes of one or several lines.
class NotesList final : public iTableAdaptor {
public:
    Text getFieldText(XY<int> const& cell) const override;
    unsigned int getSize() const override { return 500; }
    std::vector<TableColumnDescription> getColumnDefinitions() const override;
    unsigned short getRowHeight(unsigned int row) const override;
    int getTextStyle(XY<int> const& cell) const override;
    bool getTag(unsigned int row) const override { return tags_.contains(row); }
    void setTags(std::map<unsigned int, bool> const& tags, bool byUser) override;

private:
    RowRanges tags_;
};

/// Two hundred columns, of which the first two are sticky.
class WideSheet final : public iTableAdaptor {
public:
    Text getFieldText(XY<int> const& cell) const override;
    unsigned int getSize() const override { return 10'000; }
    bool hasRowHeights() const override { return false; }
    std::vector<TableColumnDescription> getColumnDefinitions() const override;
};

/// Rows that come a while after they are first seen, as from a server.
class LateClips final : public RemoteTableAdaptor {
public:
    LateClips();

    std::vector<TableColumnDescription> getColumnDefinitions() const override;

protected:
    void requestRows(RowRange rows) override;

private:
    void deliver();

    std::vector<RowRange> requested_;
    OneShotTimer timer_;
};

/// Changes ten times a second.
class LiveMeters final : public iTableAdaptor {
public:
    LiveMeters();

    void setTable(TableWidget* table) { table_ = HandlerRef<TableWidget>(table); }
    Text getFieldText(XY<int> const& cell) const override;
    unsigned int getSize() const override { return 200; }
    bool hasRowHeights() const override { return false; }
    std::vector<TableColumnDescription> getColumnDefinitions() const override;
    bool drawField(CellContext& context) override;

private:
    double levelOf(int row) const;
    void tick();

    unsigned int ticks_ = 0;
    OneShotTimer timer_;
    HandlerRef<TableWidget> table_;
};

} // namespace wainscot::gallery
