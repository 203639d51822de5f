#include "gallery/pages/box_page.h"

#include "host/base/convert.h"

namespace wainscot::gallery {

namespace {

/// The beginning of what a box shows; what is masked is masked here as well.
LightweightString<wchar_t> shownIn(TextEntry const& box) {
    constexpr int most = 60;
    if (box.isObfuscatedDisplay()) return {box.getText().size(), TextBoxBase::maskCharacter};
    LightweightString<wchar_t> const text = box.getText(0, most + 1);
    return text.size() > most ? text.substr(0, most) + L"…" : text;
}

} // namespace

BoxPage::BoxPage(XY<int> size, LogLine log) : StandardPanel(size), log_(std::move(log)) {
    setTabGoesOn(true);
}

void BoxPage::hear(TextEntry& box) {
    addTabStop(box);
    box.requestCallback("edit start", this, eEditStart);
    box.requestCallback("edit end", this, eEditEnd);
    box.requestCallback(changedMsg, this, eChanged);
    box.requestCallback(returnMsg, this, eReturn);
    box.requestCallback("double click", this, eDoubleClick);
}

int BoxPage::handleMessageEvent(LightweightString<char> name, Glob* sender) {
    if (name == pootMsg) return 0;
    auto const* const box = dynamic_cast<TextEntry const*>(sender);
    LightweightString<wchar_t> line = sender ? GlobDescription::of(*sender).name : L"(sender has gone)";
    line += L"  sends  " + fromUTF8(name);
    if (box) line += L"  " + shownIn(*box);
    say(line);
    return 1;
}

} // namespace wainscot::gallery
