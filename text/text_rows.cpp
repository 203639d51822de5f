#include "text/text_rows_p.h"

#include <algorithm>

namespace wainscot {

std::vector<TextRow> LineRows::rows(std::size_t first, std::size_t count) {
    std::size_t const numLines = document_.numLines();
    first = std::min(first, numLines - 1);
    std::vector<TextRow> rows;
    rows.reserve(std::min(count, numLines - first));
    std::size_t start = document_.lineStart(first);
    for (std::size_t line = first; line < numLines && rows.size() < count; ++line) {
        std::size_t const end = document_.lineEndFrom(start);
        rows.push_back({start, end - start, true});
        start = end + 1;
    }
    return rows;
}

} // namespace wainscot
