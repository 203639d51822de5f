#pragma once

#include "host/objects/glob_ref.h"

#include <vector>

namespace wainscot {

/// Disables the members of a composite with it, and enables those again that were enabled before.
class MemberSwitch {
public:
    /// Takes `getMember(i)` for each index below `count`; it may be null. Ends when the panel has gone, or
    /// somebody who was told of it has switched it back.
    template <class Get>
    void setActive(Glob const& panel, bool active, eRedrawFlag redraw, int count, Get getMember) {
        LifeGuard const life = panel.guard();
        if (active) return enable(panel, life, redraw);
        for (int i = 0; life.alive() && !panel.isActive() && i < count; ++i) {
            Glob* const member = getMember(i);
            if (!member || !member->isActive()) continue;
            disabled_.emplace_back(member);
            member->setActive(false, redraw);
        }
    }

private:
    void enable(Glob const& panel, LifeGuard const& life, eRedrawFlag redraw) {
        std::vector<GlobRef<Glob>> const members = std::move(disabled_);
        disabled_.clear();
        for (std::size_t i = 0; life.alive() && i < members.size(); ++i) {
            Glob* const member = members[i].get();
            if (member && panel.isActive())
                member->setActive(true, redraw);
            else if (member)
                disabled_.push_back(members[i]);
        }
    }

    std::vector<GlobRef<Glob>> disabled_;
};

} // namespace wainscot
