#include "gallery/pages/label_page.h"

#include "host/base/convert.h"

namespace wainscot::gallery {

LabelPage::LabelPage(XY<int> size, LogLine log) : StandardPanel(size), log_(std::move(log)) {}

int LabelPage::handleMessageEvent(LightweightString<char> name, Glob* sender) {
    if (name == pootMsg) return 0;
    auto const* const label = dynamic_cast<LabelGlob const*>(sender);
    log_(fromUTF8(name) + L"  " +
         (label ? label->label() : LightweightString<wchar_t>(L"(sender has gone)")));
    return 1;
}

} // namespace wainscot::gallery
