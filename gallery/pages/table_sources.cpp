#include "gallery/pages/table_sources.h"

#include "host/base/convert.h"
#include "host/drawing/canvas_renderer.h"
#include "host/drawing/shapes.h"
#include "host/drawing/uif_std.h"

#include <array>
#include <cmath>
#include <utility>

namespace wainscot::gallery {

namespace {

using Text = LightweightString<wchar_t>;

/// Of one slice of sorting, in microseconds, and the pause between two, in milliseconds.
constexpr unsigned int slice = 4000;
constexpr double pause = 1;
constexpr double tickInterval = 100;
/// How long late rows take.
constexpr double delay = 400;
constexpr int framesPerSecond = 25;
constexpr unsigned int scatter = 7919;
constexpr unsigned int numLevels = 997;
constexpr unsigned int numSizes = 99991;
constexpr unsigned int fewTags = 500;

constexpr std::array labels{L"Interview", L"Titles", L"Music", L"Effects"};

Text twoDigits(unsigned int number) {
    return (number < 10 ? L"0" : L"") + Qv::WStringFromInteger(static_cast<int>(number));
}

Text timecodeOf(unsigned int frame) {
    unsigned int const seconds = frame / framesPerSecond;
    return twoDigits(seconds / 3600) + L":" + twoDigits(seconds / 60 % 60) + L":" + twoDigits(seconds % 60) +
           L":" + twoDigits(frame % framesPerSecond);
}

unsigned int levelOfClip(unsigned int clip) {
    return clip * scatter % numLevels;
}

/// A bar in a cell, filled to a share.
void drawBar(iTableAdaptor::CellContext& cell, double share, Colour const& colour) {
    int const inset = cell.area.height() / 4;
    IntBox bar{cell.area.x1 + inset, cell.area.y1 + inset, cell.area.x2 - inset, cell.area.y2 - inset};
    cell.renderer->renderPrimitive(Glib::RectDescription(bar, cell.palette.window(eWindowNormal)));
    bar.x2 = bar.x1 + static_cast<int>(std::lround(bar.width() * share));
    cell.renderer->renderPrimitive(Glib::RectDescription(bar, colour));
}

template <class Tags>
void takeTags(RowRanges& ranges, Tags const& tags) {
    for (auto const& [row, isTagged] : tags) {
        if (isTagged)
            ranges.add({row, row + 1});
        else
            ranges.remove({row, row + 1});
    }
}

} // namespace

// Clips

ClipBin::ClipBin(unsigned int size) : order_(size), timer_([this] { sortOn(); }) {}

unsigned int ClipBin::clipOf(int row) const {
    return order_.sourceRow(static_cast<unsigned int>(row)).value_or(0);
}

Text ClipBin::getFieldText(XY<int> const& cell) const {
    unsigned int const clip = clipOf(cell.y);
    switch (cell.x) {
    case name:
        return L"clip_" + Qv::WStringFromInteger(static_cast<int>(clip)) + L".mov";
    case timecode:
        return timecodeOf(clip);
    case level:
        return Qv::WStringFromInteger(static_cast<int>(levelOfClip(clip)));
    case label:
        return labels[clip % labels.size()];
    case megabytes:
        return Qv::WStringFromFloat(clip * 31 % numSizes / 100.0, 2, false) + L" MB";
    default:
        return {};
    }
}

std::vector<TableColumnDescription> ClipBin::getColumnDefinitions() const {
    std::vector<TableColumnDescription> columns{{L"", TagColumn::tagAllMsg}, {L"Clip", "clip"},
                                                {L"Start", "start"},         {L"Level", "level"},
                                                {L"Label", "label"},         {L"Size", "size"}};
    columns[name].width = 200;
    columns[name].minWidth = 60;
    columns[level].width = 140;
    return columns;
}

std::pair<int, int> ClipBin::getTextAlignment(XY<int> const& cell) const {
    return {cell.x == megabytes ? 1 : -1, 1};
}

bool ClipBin::drawField(CellContext& context) {
    unsigned int const clip = clipOf(context.position.y);
    if (context.position.x == level) {
        drawBar(context, levelOfClip(clip) / double(numLevels), context.palette.mark(eMarkAccent));
        return true;
    }
    if (context.position.x == label) {
        // A patch of the colour of the label, and then its text.
        int const inset = context.area.height() / 3;
        IntBox const patch{context.area.x1, context.area.y1 + inset, context.area.x1 + inset,
                           context.area.y2 - inset};
        constexpr std::array colours{0.9, 0.6, 0.4, 0.2};
        double const hue = colours[clip % colours.size()];
        context.renderer->renderPrimitive(Glib::RectDescription(patch, Colour(hue, 0.5, 1 - hue)));
    }
    return false;
}

bool ClipBin::getTag(unsigned int row) const {
    return tags_.contains(clipOf(static_cast<int>(row)));
}

void ClipBin::setTags(std::map<unsigned int, bool> const& tags, bool) {
    std::map<unsigned int, bool> ofClips;
    for (auto const& [row, isTagged] : tags) ofClips[clipOf(static_cast<int>(row))] = isTagged;
    takeTags(tags_, ofClips);
}

std::optional<unsigned int> ClipBin::findTagged(unsigned int from) const {
    // Many are found soon, row by row; of few the next one is sought.
    if (tags_.count() > fewTags) return iTableAdaptor::findTagged(from);
    std::optional<unsigned int> next;
    for (RowRange const range : tags_.ranges())
        for (unsigned int clip = range.first; clip < range.end; ++clip)
            if (auto const row = order_.viewRow(clip); row && *row >= from && (!next || *row < *next))
                next = row;
    return next;
}

bool ClipBin::setAllTags(bool tagged) {
    tags_.clear();
    if (tagged) tags_.add({0, order_.numRows()});
    return true;
}

void ClipBin::sort(LightweightString<char> const& column, bool reversed) {
    RowOrder::Key key;
    key.descending = reversed;
    if (column == "level") key.number = [](unsigned int clip) { return std::int64_t{levelOfClip(clip)}; };
    if (column == "label") key.number = [](unsigned int clip) { return std::int64_t(clip % labels.size()); };
    if (column == "size") key.number = [](unsigned int clip) { return std::int64_t(clip * 31 % numSizes); };
    if (column == "clip" || column == "start")
        key.number = [](unsigned int clip) { return std::int64_t{clip}; };
    order_.setKeys({key});
    sortOn();
}

void ClipBin::sortOn() {
    if (!order_.work(slice)) return timer_.start(pause);
    if (TableWidget* const table = table_.get()) table->dataChanged();
}

std::uint64_t ClipBin::getRowIdentity(unsigned int row) const {
    return std::uint64_t{clipOf(static_cast<int>(row))} + 1;
}

std::optional<unsigned int> ClipBin::findRow(std::uint64_t identity) const {
    return order_.viewRow(static_cast<unsigned int>(identity - 1));
}

// Notes

Text NotesList::getFieldText(XY<int> const& cell) const {
    if (cell.x == 0) return L"Note " + Qv::WStringFromInteger(cell.y + 1);
    Text text = L"The shot is soft at the beginning.";
    for (int i = 0; i < cell.y % 5; ++i) text += L" Another word about the light in the room.";
    return text;
}

std::vector<TableColumnDescription> NotesList::getColumnDefinitions() const {
    std::vector<TableColumnDescription> columns{{L"Note", "note"}, {L"Text", "text"}};
    columns[0].width = 100;
    columns[0].setResizeable(false);
    columns[1].width = 320;
    return columns;
}

unsigned short NotesList::getRowHeight(unsigned int row) const {
    return row % 5 == 0 ? toSize16(0)
                        : toSize16(UifStd::getTableRowHeight() * (1 + static_cast<int>(row % 5) / 2));
}

int NotesList::getTextStyle(XY<int> const& cell) const {
    return cell.x == 1 ? 2 : 1;
}

void NotesList::setTags(std::map<unsigned int, bool> const& tags, bool) {
    takeTags(tags_, tags);
}

// Many columns

Text WideSheet::getFieldText(XY<int> const& cell) const {
    return cell.x == 0 ? L"Row " + Qv::WStringFromInteger(cell.y + 1)
                       : Qv::WStringFromInteger(cell.x * cell.y % static_cast<int>(scatter));
}

std::vector<TableColumnDescription> WideSheet::getColumnDefinitions() const {
    std::vector<TableColumnDescription> columns;
    for (int i = 0; i < 200; ++i) {
        Text const number = Qv::WStringFromInteger(i + 1);
        columns.emplace_back(L"Column " + number, toUTF8(number));
        columns.back().width = 90;
        columns.back().isSticky = i < 2;
    }
    return columns;
}

// Live

LiveMeters::LiveMeters() : timer_([this] { tick(); }) {
    timer_.start(tickInterval);
}

void LiveMeters::tick() {
    ++ticks_;
    timer_.start(tickInterval);
    TableWidget* const table = table_.get();
    if (table && table->getDataSource() == this)
        table->dataChanged({RowNotice::Kind::changed, 0, getSize(), 0});
}

double LiveMeters::levelOf(int row) const {
    return 0.5 + 0.5 * std::sin(ticks_ * 0.2 + row);
}

Text LiveMeters::getFieldText(XY<int> const& cell) const {
    return cell.x == 0 ? L"Track " + Qv::WStringFromInteger(cell.y + 1)
                       : Qv::WStringFromFloat(levelOf(cell.y), 2, false);
}

std::vector<TableColumnDescription> LiveMeters::getColumnDefinitions() const {
    std::vector<TableColumnDescription> columns{
        {L"Track", "track"}, {L"Level", "level"}, {L"Number", "number"}};
    for (TableColumnDescription& column : columns) column.width = 150;
    return columns;
}

bool LiveMeters::drawField(CellContext& context) {
    if (context.position.x != 1) return false;
    drawBar(context, levelOf(context.position.y), context.palette.mark(eMarkAccent));
    return true;
}

// Late

LateClips::LateClips() : RemoteTableAdaptor(1'000'000), timer_([this] { deliver(); }) {}

std::vector<TableColumnDescription> LateClips::getColumnDefinitions() const {
    std::vector<TableColumnDescription> columns{{L"Clip", "clip"}, {L"Start", "start"}};
    for (TableColumnDescription& column : columns) column.width = 180;
    return columns;
}

void LateClips::requestRows(RowRange rows) {
    requested_.push_back(rows);
    if (!timer_.isRunning()) timer_.start(delay);
}

void LateClips::deliver() {
    for (RowRange const requested : std::exchange(requested_, {})) {
        std::vector<RowTexts> rows;
        for (unsigned int row = requested.first; row < requested.end; ++row)
            rows.push_back({L"clip_" + Qv::WStringFromInteger(static_cast<int>(row)) + L".mov",
                            timecodeOf(row * framesPerSecond)});
        rowsHaveCome(requested.first, std::move(rows));
    }
}

} // namespace wainscot::gallery
