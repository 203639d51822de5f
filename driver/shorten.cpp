#include "driver/shorten.h"

#include <algorithm>

namespace wainscot {

namespace {

std::vector<UserAct> without(std::vector<UserAct> const& acts, std::size_t from, std::size_t count) {
    std::vector<UserAct> rest(acts.begin(), acts.begin() + static_cast<std::ptrdiff_t>(from));
    std::size_t const end = std::min(from + count, acts.size());
    rest.insert(rest.end(), acts.begin() + static_cast<std::ptrdiff_t>(end), acts.end());
    return rest;
}

} // namespace

std::vector<UserAct> shortened(std::vector<UserAct> acts,
                               std::function<bool(std::span<UserAct const>)> const& fails) {
    if (!fails(acts)) return acts;
    // Later acts hang on earlier ones, so pieces are left out from the end.
    for (std::size_t piece = std::max<std::size_t>(acts.size() / 2, 1); !acts.empty();) {
        bool isShorter = false;
        for (std::size_t end = acts.size(); end > 0; end -= std::min(end, piece)) {
            std::vector<UserAct> rest = without(acts, end - std::min(end, piece), std::min(end, piece));
            if (!fails(rest)) continue;
            acts = std::move(rest);
            isShorter = true;
        }
        if (piece == 1 && !isShorter) break;
        if (!isShorter) piece = std::max<std::size_t>(piece / 2, 1);
    }
    return acts;
}

} // namespace wainscot
