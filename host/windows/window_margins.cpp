#include "host/windows/window_margins.h"

#include "host/objects/painting_p.h"
#include "host/objects/surround.h"

#include <algorithm>

namespace wainscot {

WindowMargins WindowMargins::forRoot(Glob const& root, bool composited) {
    if (!root.hasSurround()) return {};
    Surround const& surround = Painting::surroundOf(root);
    auto const at = [&](Surround::Edge edge) {
        int const wanted = surround.extentAt(edge);
        return composited ? wanted : std::min(wanted, std::max(surround.frameWidthAt(edge), 1));
    };
    return {at(Surround::left), at(Surround::bottom), at(Surround::right), at(Surround::top)};
}

} // namespace wainscot
