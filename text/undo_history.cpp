#include "text/undo_history.h"

#include <iterator>
#include <utility>

namespace wainscot {

bool UndoHistory::sameCharType(wchar_t a, wchar_t b) {
    if (a == L' ' || b == L' ') return a == b;
    return a != L'\n' && b != L'\n';
}

bool UndoHistory::isSingle(Entry const& entry) {
    return !entry.isAlone && entry.group.size() == 1 && entry.group[0].inserted.size() == 1;
}

bool UndoHistory::goesWith(Entry const& entry, Entry const& next) {
    return isSingle(entry) && isSingle(next) &&
           sameCharType(entry.group[0].inserted[0], next.group[0].inserted[0]);
}

/// What was typed without a break becomes one change.
void UndoHistory::append(Group& group, HistoryItem const& item) {
    bool const touches = !group.empty() && item.position() == group.back().cursorAfter;
    if (!touches) return group.push_back(item);
    group.back().removed += item.removed;
    group.back().inserted += item.inserted;
    group.back().cursorAfter = item.cursorAfter;
}

void UndoHistory::add(HistoryItem const& item, bool isAlone) {
    redo_.clear();
    undo_.push_back({{item}, isAlone});
    if (undo_.size() > most_) dropOld();
}

void UndoHistory::dropOld() {
    std::size_t first = undo_.size() - keptItems;
    while (first > 0 && goesWith(undo_[first - 1], undo_[first])) --first;
    undo_.erase(undo_.begin(), undo_.begin() + static_cast<std::ptrdiff_t>(first));
    most_ = undo_.size() + keptItems / 10;
}

void UndoHistory::clear() {
    undo_.clear();
    redo_.clear();
}

UndoHistory::Group const* UndoHistory::undo() {
    if (undo_.empty()) return nullptr;
    std::size_t first = undo_.size() - 1;
    while (first > 0 && goesWith(undo_[first - 1], undo_[first])) --first;
    Entry entry = std::move(undo_[first]);
    for (std::size_t i = first + 1; i < undo_.size(); ++i) append(entry.group, undo_[i].group[0]);
    undo_.resize(first);
    redo_.push_back(std::move(entry));
    return &redo_.back().group;
}

UndoHistory::Group const* UndoHistory::redo() {
    if (redo_.empty()) return nullptr;
    undo_.push_back(std::move(redo_.back()));
    redo_.pop_back();
    return &undo_.back().group;
}

} // namespace wainscot
