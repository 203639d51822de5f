#pragma once

#include "host/base/lightweight_string.h"

#include <cstddef>
#include <deque>
#include <vector>

namespace wainscot {

/// One change of a text, as undo and redo need it. The inserted text begins its own length before
/// `cursorAfter`.
struct HistoryItem {
    LightweightString<wchar_t> removed;
    LightweightString<wchar_t> inserted;
    int cursorBefore = 0;
    int cursorAfter = 0;

    int position() const { return cursorAfter - static_cast<int>(inserted.size()); }
    friend bool operator==(HistoryItem const&, HistoryItem const&) = default;
};

/// The changes of a text, for undo and redo. Characters that were typed one after the other are taken back
/// together, a word or a row of spaces at a time. The latest 10,000 changes are kept; older ones are dropped,
/// such words as a whole.
class WAINSCOT_API UndoHistory {
public:
    /// Changes that are taken back, or made again, together; oldest first.
    using Group = std::vector<HistoryItem>;

    static constexpr std::size_t keptItems = 10'000;

    /// Whether two typed characters may be taken back together: spaces with spaces, a newline with nothing,
    /// all others with each other.
    static bool sameCharType(wchar_t a, wchar_t b);

    /// Adds a change; nothing can be made again any more. `isAlone` = it is never taken back together with
    /// others, whatever it inserts.
    void add(HistoryItem const& item, bool isAlone = false);
    void clear();
    std::size_t numUndo() const { return undo_.size(); }
    std::size_t numRedo() const { return redo_.size(); }

    /// The group to be taken back now, which can then be made again; null when there is none. It stays valid
    /// until the next call.
    Group const* undo();
    /// The group to be made again, which can then be taken back.
    Group const* redo();

private:
    struct Entry {
        Group group;
        bool isAlone = false;
    };

    /// Whether a change is one typed character.
    static bool isSingle(Entry const& entry);
    /// Whether a change is taken back together with the next one.
    static bool goesWith(Entry const& entry, Entry const& next);
    static void append(Group& group, HistoryItem const& item);
    void dropOld();

    std::deque<Entry> undo_;
    std::vector<Entry> redo_;
    /// How many changes there may be before old ones are dropped.
    std::size_t most_ = keptItems + keptItems / 10;
};

} // namespace wainscot
