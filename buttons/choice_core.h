#pragma once

#include "foundation/key_table.h"
#include "host/base/life.h"
#include "host/base/xy.h"
#include "host/events/key_codes.h"
#include "host/messages/handler_ref.h"

#include <vector>

namespace wainscot {

class Glob;

/// Which way the keys go from one member of a set to the next: x to the right, y downwards.
inline constexpr KeyRow<XY<int>> choiceKeys[] = {
    {Key::right,
     {1, 0},
     "choose the next member in that direction, round the ends; disabled members are skipped"},
    {Key::left,
     {-1, 0},
     "choose the next member in that direction, round the ends; disabled members are skipped"},
    {Key::down,
     {0, 1},
     "choose the next member in that direction, round the ends; disabled members are skipped"},
    {Key::up,
     {0, -1},
     "choose the next member in that direction, round the ends; disabled members are skipped"},
};

/// The common part of all sets of which one member is chosen. It keeps the members, which are not owned and
/// may die before it; they keep their indices when others die. A choice that is made while another is being
/// told replaces that one. A set is one tab stop, and keys step through it.
class WAINSCOT_API ChoiceCore {
public:
    ChoiceCore() = default;
    ChoiceCore(ChoiceCore const&) = delete;
    ChoiceCore& operator=(ChoiceCore const&) = delete;
    virtual ~ChoiceCore();

    /// Dead members are counted.
    int numMembers() const { return static_cast<int>(members_.size()); }
    /// Null for a member that has died or joined another set, and for an index out of range.
    Glob* memberAt(int index) const;
    /// The member that is chosen; -1 when none is.
    virtual int chosenIndex() const = 0;
    /// Whether Tab stops at a member: the chosen member; or, when none is chosen or the chosen one cannot
    /// take the focus, the first member that can.
    bool isTabStopAt(int index) const;
    /// The next member that can take the focus, from a member (-1 = from before the first) in a direction and
    /// round the ends; -1 when there is none. Sideways, and in a single row or column, all members are tried;
    /// upwards and downwards only those of the same column.
    int nextUsable(int from, XY<int> direction) const;
    LifeToken const& choiceLife() const { return life_; }

protected:
    /// A choice that is being made.
    class WAINSCOT_API Choosing {
    public:
        explicit Choosing(ChoiceCore& core) : core_(&core), life_(core.life_), number_(++core.choice_) {}
        /// Whether the set lives, and no other choice was made since.
        bool goesOn() const { return life_.alive() && number_ == core_->choice_; }

    private:
        ChoiceCore* core_;
        LifeGuard life_;
        unsigned int number_;
    };

    /// Its index.
    int addMemberGlob(Glob& member);
    void removeMemberGlobs();
    /// In how many columns the members lie, row by row.
    void setChoiceColumns(int columns) { columns_ = columns; }
    /// Whether the object that was added at an index is still a member. True here.
    virtual bool belongs(Glob const& member, int index) const;
    /// Whether a member is chosen; for a moment more than one may be. Here: whether it is the member at
    /// `chosenIndex()`.
    virtual bool isChosenMember(int index) const;
    /// The index of a member; -1 when it is not a member.
    virtual int indexOfMember(Glob const& glob) const = 0;
    /// When a member that is not chosen has the keyboard focus, the focus goes to the chosen member: the set
    /// is one stop.
    void takeFocusAlong();

private:
    bool isUsable(int index) const;

    std::vector<HandlerRef<Glob>> members_;
    int columns_ = 1;
    unsigned int choice_ = 0;
    LifeToken life_;
};

} // namespace wainscot
