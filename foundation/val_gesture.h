#pragma once

#include "foundation/data_change_type.h"

#include <utility>

namespace wainscot {

template <class T>
class ValWidget;

/// A change by the user in several steps, such as the drag of a thumb: the value at its beginning, and what
/// the data was told. Data that hears of a start hears of the end, unless the widget dies. A member of each
/// control that can be dragged; see `ValWidget::stepGesture`. The control calls `finishGesture` when the
/// gesture ends, and from `handleDataAdaptorChange`.
template <class T>
class ValGesture {
public:
    void begin(T const& value) {
        atBegin_ = value;
        isHeld_ = true;
        isChanging_ = false;
    }
    /// Ends the gesture; the data is told by `ValWidget::finishGesture`.
    void letGo() { isHeld_ = false; }
    bool isHeld() const { return isHeld_; }
    /// The value at the beginning of the gesture.
    T const& atBegin() const { return atBegin_; }

private:
    friend class ValWidget<T>;

    /// How the data is told of the next change.
    DataChangeType nextChange() {
        return std::exchange(isChanging_, true) ? DataChangeType::continued : DataChangeType::started;
    }

    T atBegin_{};
    bool isHeld_ = false;
    /// Whether the data was told of a change, and not yet of the last one.
    bool isChanging_ = false;
};

} // namespace wainscot
