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
    {Key::right, {1, 0}, "choose the next member that way, round the ends, past disabled ones"},
    {Key::left, {-1, 0}, "choose the next member that way, round the ends, past disabled ones"},
    {Key::down, {0, 1}, "choose the next member that way, round the ends, past disabled ones"},
    {Key::up, {0, -1}, "choose the next member that way, round the ends, past disabled ones"},
};

/// What all sets have in common of which one member is chosen: the members, which are not owned and may die
/// before it; that a choice made while another is being told counts instead of that; that a set is one tab
/// stop; and how keys step through it. Members keep their indices when others die.
class WAINSCOT_API ChoiceCore {
public:
    ChoiceCore() = default;
    ChoiceCore(ChoiceCore const&) = delete;
    ChoiceCore& operator=(ChoiceCore const&) = delete;
    virtual ~ChoiceCore();

    /// Those that have died are counted.
    int numMembers() const { return static_cast<int>(members_.size()); }
    /// Null for one that has died or gone to another set, and out of range.
    Glob* memberAt(int index) const;
    /// The member that is chosen; -1 when none is.
    virtual int chosenIndex() const = 0;
    /// Where Tab stops: at the chosen member, or at the first one that can take the focus when that cannot,
    /// or none is chosen.
    bool isTabStopAt(int index) const;
    /// The next member that can take the focus, from one of them (-1 = from before the first) in a direction
    /// and round the ends; -1 when there is none. Sideways, and in a single row or column, every member is
    /// come by; else upwards and downwards only those of the same column.
    int nextUsable(int from, XY<int> direction) const;
    LifeToken const& choiceLife() const { return life_; }

protected:
    /// A choice that is being made.
    class WAINSCOT_API Choosing {
    public:
        explicit Choosing(ChoiceCore& core) : core_(&core), life_(core.life_), number_(++core.choice_) {}
        /// The set lives, and nobody has chosen since.
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
    /// Whether what was added at an index is a member still. True here.
    virtual bool belongs(Glob const& member, int index) const;
    /// More than one may be, for a moment. Here that is the member at `chosenIndex()`.
    virtual bool isChosenMember(int index) const;
    /// The index of what may be a member; -1 when it is none.
    virtual int indexOfMember(Glob const& glob) const = 0;
    /// Where the keyboard focus lies on a member that is not chosen, it goes to the chosen one: the set is
    /// one stop.
    void takeFocusAlong();

private:
    bool isUsable(int index) const;

    std::vector<HandlerRef<Glob>> members_;
    int columns_ = 1;
    unsigned int choice_ = 0;
    LifeToken life_;
};

} // namespace wainscot
