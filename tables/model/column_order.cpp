#include "tables/model/column_order.h"

#include <algorithm>
#include <charconv>
#include <map>
#include <optional>
#include <utility>

namespace wainscot {

namespace {

// A text has an entry for each column: its identifier, occurrence, width and whether it is hidden. Characters
// of identifiers that could be taken for one of these signs are written as two hexadecimal digits.
constexpr char entryEnd = ';';
constexpr char fieldEnd = ',';
constexpr char escape = '%';
constexpr std::string_view hexDigits = "0123456789ABCDEF";
constexpr std::string_view shown = "shown";
constexpr std::string_view hidden = "hidden";

bool isPlain(char c) {
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_' ||
           c == '-' || c == '.';
}

void appendEscaped(std::string& text, std::string_view identifier) {
    for (char const c : identifier) {
        if (isPlain(c)) {
            text += c;
            continue;
        }
        auto const byte = static_cast<unsigned char>(c);
        text += {escape, hexDigits[byte / hexDigits.size()], hexDigits[byte % hexDigits.size()]};
    }
}

std::optional<LightweightString<char>> unescaped(std::string_view text) {
    std::string plain;
    for (std::size_t index = 0; index < text.size(); ++index) {
        if (isPlain(text[index])) {
            plain += text[index];
            continue;
        }
        if (text[index] != escape || text.size() - index <= 2) return std::nullopt;
        std::size_t const high = hexDigits.find(text[++index]);
        std::size_t const low = hexDigits.find(text[++index]);
        if (high == std::string_view::npos || low == std::string_view::npos) return std::nullopt;
        plain += static_cast<char>(high * hexDigits.size() + low);
    }
    return LightweightString<char>(std::string_view(plain));
}

/// Cuts off the text up to a sign, and the sign; nothing when the sign is missing.
std::optional<std::string_view> takeUpTo(char sign, std::string_view& text) {
    std::size_t const end = text.find(sign);
    if (end == std::string_view::npos) return std::nullopt;
    std::string_view const taken = text.substr(0, end);
    text.remove_prefix(end + 1);
    return taken;
}

template <class Number>
bool read(std::optional<std::string_view> const& text, Number& number) {
    if (!text) return false;
    char const* const end = text->data() + text->size();
    auto const result = std::from_chars(text->data(), end, number);
    return result.ec == std::errc() && result.ptr == end && number >= 0;
}

} // namespace

void ColumnOrder::setColumns(Identifiers identifiers, int numSticky) {
    arrange(known(), std::move(identifiers), numSticky);
}

int ColumnOrder::numStickyViewColumns() const {
    return static_cast<int>(
        std::count_if(view_.begin(), view_.end(), [this](int column) { return isSticky(column); }));
}

int ColumnOrder::viewToData(int column) const {
    return validViewColumn(column) ? view_[static_cast<std::size_t>(column)] : none;
}

int ColumnOrder::dataToView(int column) const {
    return validDataColumn(column) ? viewOfData_[static_cast<std::size_t>(column)] : none;
}

bool ColumnOrder::move(int from, int to) {
    if (!canChangePlaces(from, to)) return false;
    auto const source = placeOf(from);
    auto const target = placeOf(to);
    if (from < to)
        std::rotate(source, source + 1, target + 1);
    else
        std::rotate(target, source, source + 1);
    findViewColumns();
    return true;
}

bool ColumnOrder::swap(int a, int b) {
    if (!canChangePlaces(a, b)) return false;
    std::iter_swap(placeOf(a), placeOf(b));
    findViewColumns();
    return true;
}

bool ColumnOrder::setHidden(int dataColumn, bool isHidden) {
    if (!validDataColumn(dataColumn) || this->isHidden(dataColumn) == isHidden) return false;
    hidden_[static_cast<std::size_t>(dataColumn)] = isHidden;
    findViewColumns();
    return true;
}

bool ColumnOrder::isHidden(int dataColumn) const {
    return validDataColumn(dataColumn) && hidden_[static_cast<std::size_t>(dataColumn)];
}

std::string ColumnOrder::text(std::span<unsigned short const> widths) const {
    std::string text;
    for (int const column : order_) {
        auto const index = static_cast<std::size_t>(column);
        appendEscaped(text, identifiers_[index].view());
        text += fieldEnd;
        text += std::to_string(occurrences_[index]);
        text += fieldEnd;
        text += std::to_string(index < widths.size() ? widths[index] : 0);
        text += fieldEnd;
        text += hidden_[index] ? hidden : shown;
        text += entryEnd;
    }
    return text;
}

bool ColumnOrder::restore(std::string_view text, Identifiers identifiers, std::span<unsigned short> widths,
                          int numSticky) {
    std::vector<Known> columns;
    bool const isWhole = parse(text, columns);
    if (!isWhole) columns.clear();
    std::vector<int> const knownOf = arrange(columns, std::move(identifiers), numSticky);
    for (std::size_t index = 0; index < std::min(knownOf.size(), widths.size()); ++index)
        if (knownOf[index] != none) widths[index] = columns[static_cast<std::size_t>(knownOf[index])].width;
    return isWhole;
}

std::vector<int> ColumnOrder::occurrencesOf(Identifiers const& identifiers) {
    std::map<std::string_view, int> counts;
    std::vector<int> occurrences;
    occurrences.reserve(identifiers.size());
    for (auto const& identifier : identifiers) occurrences.push_back(counts[identifier.view()]++);
    return occurrences;
}

bool ColumnOrder::parse(std::string_view text, std::vector<Known>& columns) {
    while (!text.empty()) {
        auto entry = takeUpTo(entryEnd, text);
        if (!entry) return false;
        auto const name = takeUpTo(fieldEnd, *entry);
        auto const identifier = name ? unescaped(*name) : std::nullopt;
        if (!identifier) return false;
        Known column{*identifier};
        if (!read(takeUpTo(fieldEnd, *entry), column.occurrence)) return false;
        if (!read(takeUpTo(fieldEnd, *entry), column.width)) return false;
        if (*entry != shown && *entry != hidden) return false;
        column.isHidden = *entry == hidden;
        columns.push_back(std::move(column));
    }
    return true;
}

std::vector<ColumnOrder::Known> ColumnOrder::known() const {
    std::vector<Known> columns;
    columns.reserve(order_.size());
    for (int const column : order_) {
        auto const index = static_cast<std::size_t>(column);
        columns.push_back({identifiers_[index], occurrences_[index], 0, hidden_[index]});
    }
    return columns;
}

std::vector<int> ColumnOrder::arrange(std::vector<Known> const& known, Identifiers identifiers,
                                      int numSticky) {
    identifiers_ = std::move(identifiers);
    occurrences_ = occurrencesOf(identifiers_);
    numSticky_ = numSticky;
    hidden_.assign(identifiers_.size(), false);

    std::map<std::pair<std::string_view, int>, int> dataColumns;
    for (int column = 0; column < numDataColumns(); ++column) {
        auto const index = static_cast<std::size_t>(column);
        dataColumns[{identifiers_[index].view(), occurrences_[index]}] = column;
    }
    std::vector<int> knownOf(identifiers_.size(), none);
    std::vector<int> knownOrder;
    for (std::size_t place = 0; place < known.size(); ++place) {
        auto const found = dataColumns.find({known[place].identifier.view(), known[place].occurrence});
        if (found == dataColumns.end()) continue;
        auto const index = static_cast<std::size_t>(found->second);
        // The first entry of a column counts.
        if (knownOf[index] != none) continue;
        knownOf[index] = static_cast<int>(place);
        hidden_[index] = known[place].isHidden;
        knownOrder.push_back(found->second);
    }

    // New columns follow the column before them, those at the very beginning come first.
    auto const isNew = [&](int column) {
        return column < numDataColumns() && knownOf[static_cast<std::size_t>(column)] == none;
    };
    order_.clear();
    for (int next = 0; isNew(next); ++next) order_.push_back(next);
    for (int const column : knownOrder) {
        order_.push_back(column);
        for (int next = column + 1; isNew(next); ++next) order_.push_back(next);
    }
    std::stable_partition(order_.begin(), order_.end(), [this](int column) { return isSticky(column); });
    findViewColumns();
    return knownOf;
}

bool ColumnOrder::canChangePlaces(int a, int b) const {
    return a != b && validViewColumn(a) && validViewColumn(b) &&
           isSticky(viewToData(a)) == isSticky(viewToData(b));
}

std::vector<int>::iterator ColumnOrder::placeOf(int viewColumn) {
    return std::find(order_.begin(), order_.end(), viewToData(viewColumn));
}

void ColumnOrder::findViewColumns() {
    view_.clear();
    viewOfData_.assign(order_.size(), none);
    for (int const column : order_) {
        if (isHidden(column)) continue;
        viewOfData_[static_cast<std::size_t>(column)] = numViewColumns();
        view_.push_back(column);
    }
}

} // namespace wainscot
