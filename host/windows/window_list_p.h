#pragma once

#include "host/windows/top_level_window.h"

#include <map>
#include <memory>
#include <set>
#include <unordered_map>
#include <utility>
#include <vector>

namespace wainscot {

/// All windows: by root, by number of the window system, in the order of opening, from the front to the back,
/// and those with something to paint. Few questions go through all windows.
class WAINSCOT_API WindowList final : private TopLevelWindow::DamageWatcher {
public:
    WindowList() = default;
    WindowList(WindowList const&) = delete;
    WindowList& operator=(WindowList const&) = delete;
    ~WindowList() override;

    /// Adds a window in front of its layer. Notes lie above pop-ups, pop-ups above windows that are kept
    /// above, those above all others.
    TopLevelWindow& add(std::unique_ptr<TopLevelWindow> window, IdStamp owner);
    /// Takes a window out of the list. Null when the root has no window.
    std::unique_ptr<TopLevelWindow> take(Glob const& root);

    // Null when there is none.
    TopLevelWindow* of(Glob const* root) const;
    TopLevelWindow* of(NativeWindowId id) const;
    TopLevelWindow* ofStamp(IdStamp root) const;
    /// The window that was opened next after another; null gives the first.
    TopLevelWindow* after(TopLevelWindow const* window) const;

    /// Steps through the windows of a table.
    template <class Place>
    class Step {
    public:
        explicit Step(Place place) : place_(place) {}
        auto const& operator*() const { return place_->second; }
        Step& operator++() { return ++place_, *this; }
        bool operator!=(Step const& other) const { return place_ != other.place_; }

    private:
        Place place_;
    };
    /// In the order of opening.
    auto begin() const { return Step(windows_.begin()); }
    auto end() const { return Step(windows_.end()); }
    std::size_t size() const { return windows_.size(); }
    bool empty() const { return windows_.empty(); }
    /// Those that belong to the window of a root, in the order of opening.
    std::vector<TopLevelWindow*> ownedBy(IdStamp root) const;

    /// The foremost that `accept` takes; null when there is none.
    template <class Accept>
    TopLevelWindow* foremost(Accept accept) const {
        for (auto entry = stacking_.rbegin(); entry != stacking_.rend(); ++entry)
            if (accept(*entry->second)) return entry->second;
        return nullptr;
    }
    TopLevelWindow* topmost() const;
    /// Brings a window to the front of its layer, with all windows that belong to it.
    void bringToFront(TopLevelWindow& window);

    bool hasPaintWork() const;
    /// Those with damage, in the order of opening.
    std::vector<Glob*> damaged() const;

private:
    void damageAdded(TopLevelWindow& window) override { damaged_.insert(window.number()); }
    void putInStack(TopLevelWindow& window);

    std::uint64_t lastNumber_ = 0;
    std::map<std::uint64_t, std::unique_ptr<TopLevelWindow>> windows_;
    std::unordered_map<Glob const*, TopLevelWindow*> byRoot_;
    std::unordered_map<std::uint64_t, TopLevelWindow*> byStamp_;
    std::unordered_map<NativeWindowId, TopLevelWindow*> byId_;
    /// The numbers of the windows that belong to the window of a root, by its stamp.
    std::unordered_map<std::uint64_t, std::set<std::uint64_t>> owned_;

    /// Layer, and when it was put there.
    using StackPlace = std::pair<int, std::uint64_t>;
    std::uint64_t lastStackPlace_ = 0;
    std::map<StackPlace, TopLevelWindow*> stacking_;
    std::unordered_map<TopLevelWindow const*, StackPlace> stackPlaces_;

    /// The numbers of the windows that had damage at the last look, or got damage since.
    mutable std::set<std::uint64_t> damaged_;
};

} // namespace wainscot
