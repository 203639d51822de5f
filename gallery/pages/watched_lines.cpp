#include "gallery/pages/watched_lines.h"

#include "host/base/convert.h"

namespace wainscot::gallery {

LightweightString<wchar_t> WatchedLines::place() const {
    auto const number = [](std::size_t value) { return Qv::WStringFromInteger(static_cast<int>(value)); };
    auto const selection = document().selection();
    LightweightString<wchar_t> text = L"Line " + number(getCursorLine() + 1) + L" of " + number(numLines()) +
                                      L", column " + Qv::WStringFromInteger(getCursorColumn() + 1);
    if (selection.isEmpty()) return text;
    return text + L", " + Qv::WStringFromInteger(selection.last() - selection.first()) + L" selected";
}

void WatchedLines::handleCursorChange() {
    if (moved_) moved_(*this);
}

} // namespace wainscot::gallery
