#include "buttons/radio_set_base.h"

#include "host/base/diagnostics.h"
#include "host/drawing/drawable.h"

#include <algorithm>

namespace wainscot {

template <class T>
RadioSetBase<T>::~RadioSetBase() = default;

template <class T>
std::uint32_t RadioSetBase<T>::addMember(T& added) {
    if (count() >= maxMembers) {
        vex_printf("RadioSetBase:: attempt to exceed max no of radio buttons");
        return refused;
    }
    return static_cast<std::uint32_t>(addMemberGlob(added));
}

template <class T>
void RadioSetBase<T>::removeMembers() {
    removeMemberGlobs();
    current_ = -1;
}

template <class T>
void RadioSetBase<T>::set_current(int index, bool quiet) {
    int const wanted = std::max(index, -1);
    if (wanted == current_ || wanted >= numMembers()) return;
    Choosing const choosing(*this);
    T* const before = member(current_);
    T* const first = before ? before : member(wanted);
    Glib::UpdateDeferrer const deferrer(first ? first->canvas() : nullptr);
    if (before) switchMember(*before, false, !quiet);
    // A choice that was made meanwhile replaces this one.
    if (!choosing.goesOn()) return;
    current_ = wanted;
    if (T* const chosen = member(wanted)) switchMember(*chosen, true, !quiet);
}

template class RadioSetBase<Button>;
template class RadioSetBase<Checkbox>;

} // namespace wainscot
