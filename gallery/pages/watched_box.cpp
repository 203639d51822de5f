#include "gallery/pages/watched_box.h"

#include "host/base/convert.h"

namespace wainscot::gallery {

LightweightString<wchar_t> WatchedBox::place() const {
    auto const number = [](std::size_t value) { return Qv::WStringFromInteger(static_cast<int>(value)); };
    auto const selection = getSelection();
    LightweightString<wchar_t> text = L"Cursor " + Qv::WStringFromInteger(getCursorPosition()) + L" of " +
                                      number(document().length()) + L", ";
    if (selection.start() < 0 || selection.start() == selection.end()) return text + L"nothing selected";
    return text + L"selected " + Qv::WStringFromInteger(selection.start()) + L" to " +
           Qv::WStringFromInteger(selection.end());
}

void WatchedBox::handleCursorChange() {
    if (moved_) moved_(*this);
}

} // namespace wainscot::gallery
