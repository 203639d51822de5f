#include "buttons/radio_set_base.h"

#include "host/base/diagnostics.h"
#include "host/drawing/drawable.h"

#include <algorithm>

namespace wainscot {

template <class T>
RadioSetBase<T>::~RadioSetBase() = default;

template <class T>
T* RadioSetBase<T>::member(int index) const {
    bool const exists = index >= 0 && static_cast<std::size_t>(index) < members_.size();
    return exists ? members_[static_cast<std::size_t>(index)].get() : nullptr;
}

template <class T>
std::uint32_t RadioSetBase<T>::addMember(T& added) {
    if (members_.size() >= maxMembers) {
        vex_printf("RadioSetBase:: attempt to exceed max no of radio buttons");
        return refused;
    }
    members_.push_back(GlobRef<T>(&added));
    return static_cast<std::uint32_t>(members_.size() - 1);
}

template <class T>
void RadioSetBase<T>::removeMembers() {
    members_.clear();
    current_ = -1;
    ++choice_;
}

template <class T>
void RadioSetBase<T>::set_current(int index, bool quiet) {
    int const wanted = std::max(index, -1);
    if (wanted == current_) return;
    if (wanted >= 0 && static_cast<std::size_t>(wanted) >= members_.size()) return;
    LifeGuard const life(life_);
    unsigned int const choice = ++choice_;
    T* const before = member(current_);
    T* const first = before ? before : member(wanted);
    Glib::UpdateDeferrer const deferrer(first ? first->canvas() : nullptr);
    if (before) switchMember(*before, false, !quiet);
    // A choice that was made meanwhile counts instead of this one.
    if (!life.alive() || choice != choice_) return;
    current_ = wanted;
    if (T* const chosen = member(wanted)) switchMember(*chosen, true, !quiet);
}

template class RadioSetBase<Button>;
template class RadioSetBase<Checkbox>;

} // namespace wainscot
