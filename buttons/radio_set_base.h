#pragma once

#include "buttons/button.h"
#include "buttons/checkbox.h"
#include "buttons/choice_core.h"

#include <cstdint>

namespace wainscot {

/// Keeps at most one of its members chosen. The members tell it when they were clicked; they are not owned,
/// and may die before it. `T` is `Button` or `Checkbox`.
template <class T>
class WAINSCOT_API RadioSetBase : public ChoiceCore {
public:
    static constexpr std::size_t maxMembers = 1024;
    /// The index of a member that could not be added.
    static constexpr std::uint32_t refused = 0xFFFFFFFF;

    ~RadioSetBase() override;

    /// Chooses a member: the member chosen before is released first; both report unless `quiet`. A negative
    /// index leaves none chosen. Does nothing for the chosen member and for an index that is too large.
    virtual void set_current(int index, bool quiet);
    /// -1 when none is chosen.
    int getCurrent() const { return current_; }
    int chosenIndex() const override { return current_; }
    std::size_t count() const { return static_cast<std::size_t>(numMembers()); }
    /// Null for a member that has died, and for an index out of range.
    T* member(int index) const { return static_cast<T*>(memberAt(index)); }

    /// Gives the member's index; `refused`, with a diagnostic, when there are too many.
    std::uint32_t addMember(T& member);

protected:
    /// Chooses or releases a member.
    virtual void switchMember(T& member, bool on, bool notify) = 0;
    void storeCurrent(int index) { current_ = index; }
    /// Leaves the set without members and without a choice.
    void removeMembers();

private:
    int current_ = -1;
};

extern template class RadioSetBase<Button>;
extern template class RadioSetBase<Checkbox>;

} // namespace wainscot
