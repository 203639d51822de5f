#pragma once

#include "foundation/data_change_type.h"

#include <utility>

namespace wainscot {

/// The value of a thumb while the user holds it: what it was at first, what the data took last, and which
/// changes the data was told of. Data that hears of a start hears of the end, unless the widget dies.
template <class T>
class HeldValue {
public:
    void begin(T const& value) {
        atPress_ = accepted_ = value;
        isChanging_ = false;
    }
    T const& atPress() const { return atPress_; }
    /// What to go back to when the data refuses a change.
    T const& accepted() const { return accepted_; }
    void accept(T const& value) { accepted_ = value; }

    /// Whether the data was told of a change, and not yet of the last one.
    bool isChanging() const { return isChanging_; }
    /// How the data is told of the next change.
    DataChangeType nextChange() {
        return std::exchange(isChanging_, true) ? DataChangeType::continued : DataChangeType::started;
    }
    /// Whether the data is to be told that this was the last change; once.
    bool end() { return std::exchange(isChanging_, false); }

private:
    T atPress_{};
    T accepted_{};
    bool isChanging_ = false;
};

/// What came of a value that the data was asked to take.
enum class DataAnswer { taken, refused, widgetHasGone };

} // namespace wainscot
