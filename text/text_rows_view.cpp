#include "text/text_rows_view_p.h"

#include "text/wrapped_rows_p.h"

#include <algorithm>

namespace wainscot {

TextRowsView::TextRowsView(TextDocument const& document) : document_(document) {
    makeRows();
}

// Layout

std::unique_ptr<iTextRows> TextRowsView::wrapped() const {
    auto rows = std::make_unique<WrappedRows>(document_);
    rows->setLayout(font_, width_);
    return rows;
}

void TextRowsView::makeRows() {
    rows_ = wraps_ && font_ ? wrapped() : std::make_unique<LineRows>(document_);
    topRow_.reset();
    contentWidth_ = 0;
    isOutdated_ = true;
}

void TextRowsView::setFont(Qv::Ptr<iFont> font) {
    font_ = std::move(font);
    rowHeight_ = std::max(font_->lineHeight(), 1);
    shown_.clear();
    makeRows();
}

void TextRowsView::setWrapping(bool wraps) {
    if (wraps == wraps_) return;
    wraps_ = wraps;
    scrollX_ = 0;
    makeRows();
}

void TextRowsView::setAlignment(TextAlignment alignment) {
    alignment_ = alignment;
}

void TextRowsView::setRoom(int width, int height) {
    width = std::max(width, 1);
    bool const isOther = wraps_ && width != width_;
    isOutdated_ = isOutdated_ || isOther || height != height_;
    width_ = width;
    height_ = std::max(height, 0);
    if (isOther) makeRows();
}

void TextRowsView::reset() {
    rows_->reset();
    shown_.clear();
    top_ = 0;
    topRow_.reset();
    scrollX_ = 0;
    contentWidth_ = 0;
    isOutdated_ = true;
}

void TextRowsView::edit(TextEdit const& edit) {
    rows_->edit(edit);
    isOutdated_ = true;
    std::size_t const removedTo = edit.index + edit.removed;
    if (wraps_ || edit.index < top_) topRow_.reset();
    if (removedTo <= top_ && edit.index < top_)
        top_ += edit.inserted.size() - edit.removed;
    else if (edit.index < top_)
        top_ = edit.index;
    std::erase_if(shown_, [&](Shown& shown) { return !editShown(shown, edit); });
}

/// Whether the row can be shown as it is now.
bool TextRowsView::editShown(Shown& shown, TextEdit const& edit) {
    TextRow& row = shown.row;
    std::size_t const removedTo = edit.index + edit.removed;
    if (row.end() < edit.index) return true;
    if (row.start >= removedTo && row.start > edit.index) {
        row.start += edit.inserted.size() - edit.removed;
        return true;
    }
    bool const isInside = row.start <= edit.index && removedTo <= row.end();
    if (!isInside || edit.inserted.find(L'\n') != LightweightString<wchar_t>::npos) return false;
    if (!wraps_ && shown.text.width() >= contentWidth_) contentWidth_ = 0;
    shown.text.replace(edit.index - row.start, edit.removed, edit.inserted);
    row.length += edit.inserted.size() - edit.removed;
    shown.version = ++versions_;
    return true;
}

void TextRowsView::settle(std::size_t characters) {
    if (rows_->isSettled()) return;
    rows_->settle(characters);
    topRow_.reset();
    isOutdated_ = true;
}

// Rows

std::size_t TextRowsView::numFitting() const {
    return static_cast<std::size_t>(std::max(height_ / rowHeight_, 1));
}

std::size_t TextRowsView::rowOf(int gap, bool isAtEnd) {
    auto const place = static_cast<std::size_t>(gap);
    std::size_t const found = rows_->rowOf(place);
    if (!isAtEnd || found == 0) return found;
    TextRow const above = row(found - 1);
    return above.endsLine || above.end() != place ? found : found - 1;
}

TextRowsView::Shown TextRowsView::make(TextRow const& row) {
    Shown shown;
    shown.row = row;
    shown.version = ++versions_;
    shown.text.setFont(font_);
    shown.text.setText(document_.substr(row.start, row.length));
    return shown;
}

void TextRowsView::update() {
    std::size_t const top = topRow();
    if (!isOutdated_) return;
    isOutdated_ = false;
    auto const count = static_cast<std::size_t>(height_ / rowHeight_ + 1);
    std::vector<Shown> before = std::exchange(shown_, {});
    auto known = before.begin();
    for (TextRow const& row : rows_->rows(top, count)) {
        while (known != before.end() && known->row.start < row.start) ++known;
        bool const isKnown =
            known != before.end() && known->row.start == row.start && known->row.length == row.length;
        shown_.push_back(isKnown ? std::move(*known++) : make(row));
        shown_.back().row = row;
    }
    top_ = shown_.front().row.start;
    std::size_t line = document_.lineOf(top_);
    std::size_t lineStart = document_.lineStart(line);
    for (Shown& shown : shown_) {
        shown.line = line;
        shown.column = shown.row.start - lineStart;
        if (!wraps_) contentWidth_ = std::max(contentWidth_, shown.text.width());
        if (!shown.row.endsLine) continue;
        ++line;
        lineStart = shown.row.next();
    }
}

std::vector<TextRowsView::Shown> const& TextRowsView::shown() {
    update();
    return shown_;
}

TextRowsView::Shown* TextRowsView::find(std::size_t row) {
    update();
    std::size_t const top = topRow();
    return row >= top && row - top < shown_.size() ? &shown_[row - top] : nullptr;
}

// Scrolling

std::size_t TextRowsView::mostTop() const {
    std::size_t const rows = numRows();
    return rows - std::min(rows, numFitting());
}

std::size_t TextRowsView::topRow() {
    if (!topRow_) topRow_ = rows_->rowOf(top_);
    if (*topRow_ > mostTop()) setTopRow(mostTop());
    return *topRow_;
}

void TextRowsView::setTopRow(std::size_t row) {
    row = std::min(row, mostTop());
    if (topRow_ == row) return;
    TextRow const first = rows_->rows(row, 1).front();
    top_ = first.start;
    // Rows that were estimated are settled when they are asked for.
    topRow_ = rows_->isSettled() ? row : std::min(rows_->rowOf(top_), mostTop());
    isOutdated_ = true;
}

int TextRowsView::contentWidth() {
    update();
    return wraps_ ? width_ : contentWidth_;
}

int TextRowsView::mostScrollX() {
    // The caret stands behind the last character.
    return wraps_ ? 0 : std::max(contentWidth() + 1 - width_, 0);
}

void TextRowsView::setScrollX(int x) {
    scrollX_ = std::clamp(x, 0, mostScrollX());
}

void TextRowsView::show(int gap, bool isAtEnd) {
    // What is wrapped for this may change the numbers of rows that were estimated.
    constexpr int mostRounds = 4;
    std::size_t row = 0;
    for (int round = 0; round < mostRounds; ++round) {
        bool const isSure = rows_->isSettled();
        rowOf(gap, isAtEnd);
        if (!isSure) topRow_.reset();
        std::size_t const top = topRow();
        row = rowOf(gap, isAtEnd);
        if (row >= top && row - top < numFitting()) break;
        setTopRow(row < top ? row : row - numFitting() + 1);
        if (isSure) break;
    }
    int const x = gapX(gap, row);
    if (x < 0) return setScrollX(scrollX_ + x);
    setScrollX(x >= width_ ? scrollX_ + x - width_ + 1 : scrollX_);
}

// Places

/// Blanks at which a row is wrapped stand beyond its end: at the left, where it runs from right to left.
int TextRowsView::rowX(Shown const& shown) {
    std::size_t length = shown.row.length;
    while (!shown.row.endsLine && length > 0 && document_.at(shown.row.start + length - 1) == L' ') --length;
    int const blanks =
        length < shown.row.length ? shown.text.gapX(length) - shown.text.gapX(shown.row.length) : 0;
    int const left = -scrollX_ - std::max(blanks, 0);
    if (alignment_ == eAlignLeft) return left;
    int const free = std::max(contentWidth(), width_) - (shown.text.width() - std::abs(blanks)) - 1;
    return left + (alignment_ == eAlignCentre ? free / 2 : free);
}

int TextRowsView::gapX(int gap, std::size_t index) {
    auto const inRow = [&](Shown const& shown) {
        auto const place = std::clamp(static_cast<std::size_t>(gap), shown.row.start, shown.row.end());
        return rowX(shown) + shown.text.gapX(place - shown.row.start);
    };
    if (Shown const* const seen = find(index)) return inRow(*seen);
    return inRow(make(row(index)));
}

int TextRowsView::gapAt(std::size_t index, int x) {
    auto const inRow = [&](Shown const& shown) {
        std::size_t const found = shown.text.indexAt(std::max(x - rowX(shown), 0));
        return static_cast<int>(shown.row.start + std::min(found, shown.row.length));
    };
    if (Shown const* const seen = find(index)) return inRow(*seen);
    return inRow(make(row(index)));
}

std::size_t TextRowsView::rowAt(int y) {
    std::int64_t const offset = y >= 0 ? y / rowHeight_ : -((-std::int64_t(y) + rowHeight_ - 1) / rowHeight_);
    auto const row = static_cast<std::int64_t>(topRow()) + offset;
    return static_cast<std::size_t>(std::clamp<std::int64_t>(row, 0, std::int64_t(numRows()) - 1));
}

// Painting

std::pair<std::size_t, std::size_t> TextRowsView::selectedPart(TextRow const& row,
                                                               TextSelection const& selection) {
    auto const first = std::clamp(static_cast<std::size_t>(selection.first()), row.start, row.next());
    auto const last = std::clamp(static_cast<std::size_t>(selection.last()), row.start, row.next());
    return first < last ? std::pair(first - row.start, last - row.start)
                        : std::pair<std::size_t, std::size_t>();
}

std::vector<std::pair<int, int>> TextRowsView::takeChanged(TextSelection const& selection) {
    update();
    std::vector<Painted> now;
    now.reserve(shown_.size());
    for (Shown const& shown : shown_) {
        auto const [first, last] = selectedPart(shown.row, selection);
        now.push_back({shown.version, rowX(shown), first, last});
    }
    std::vector<std::pair<int, int>> changed;
    if (!isPainted_) changed.emplace_back(0, height_ / rowHeight_ + 1);
    for (std::size_t i = 0; isPainted_ && i < std::max(now.size(), painted_.size()); ++i) {
        bool const isSame = i < now.size() && i < painted_.size() && now[i] == painted_[i];
        auto const index = static_cast<int>(i);
        if (isSame) continue;
        if (!changed.empty() && changed.back().second == index)
            ++changed.back().second;
        else
            changed.emplace_back(index, index + 1);
    }
    painted_ = std::move(now);
    isPainted_ = true;
    return changed;
}

} // namespace wainscot
