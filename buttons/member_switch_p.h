#pragma once

#include "host/objects/glob_ref.h"

#include <vector>

namespace wainscot {

/// Disables the members of a composite with it, and enables those again that were enabled before.
class MemberSwitch {
public:
    /// Takes `getMember(i)` for each index below `count`; it may be null. Ends when the owner has gone.
    template <class Get>
    void setActive(bool active, eRedrawFlag redraw, LifeGuard const& owner, int count, Get getMember) {
        if (active) return enable(redraw, owner);
        for (int i = 0; owner.alive() && i < count; ++i) {
            Glob* const member = getMember(i);
            if (!member || !member->isActive()) continue;
            disabled_.emplace_back(member);
            member->setActive(false, redraw);
        }
    }

private:
    void enable(eRedrawFlag redraw, LifeGuard const& owner) {
        std::vector<GlobRef<Glob>> const members = std::move(disabled_);
        disabled_.clear();
        for (std::size_t i = 0; owner.alive() && i < members.size(); ++i)
            if (Glob* const member = members[i].get()) member->setActive(true, redraw);
    }

    std::vector<GlobRef<Glob>> disabled_;
};

} // namespace wainscot
