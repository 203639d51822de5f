#include "gallery/label_glob.h"
#include "gallery/page.h"
#include "gallery/pages/input_page_parts.h"

#include "host/base/convert.h"
#include "host/services/clipboard.h"

#include <algorithm>

namespace wainscot::gallery {

namespace {

constexpr wchar_t const* sample =
    L"Gr\u00fc\u00dfe, \u0434\u0440\u0443\u0433, \u65e5\u672c\u8a9e, \U0001F3AC";

/// The beginning of a text, and how long it is.
LightweightString<wchar_t> summary(LightweightString<wchar_t> const& text) {
    constexpr std::size_t shown = 400;
    LightweightString<wchar_t> const length =
        Qv::WStringFromInteger(static_cast<int>(std::min<std::size_t>(text.size(), 2000000000)));
    return text.substr(0, shown) + (text.size() > shown ? L"\u2026" : L"") + L"\n" + length + L" characters";
}

} // namespace

std::unique_ptr<Glob> makeClipboardPage(XY<int> size, LogLine log) {
    auto page = std::make_unique<Glob>(toSize16(size.x), toSize16(size.y));
    int const margin = pageMargin();
    XY<int> const button{UifStd::getButtonHeight() * 8, UifStd::getButtonHeight()};
    int const top = margin + 2 * (button.y + margin);
    auto* const shown = static_cast<ReadOut*>(page->addChild(
        std::make_unique<ReadOut>(XY<int>{size.x - 2 * margin, size.y - top - margin}, L"The text that came"),
        TopLeft(margin, top)));
    shown->setName("pasted");
    struct Entry {
        wchar_t const* label;
        void (*act)(ReadOut& readOut, LogLine const& log);
        int column;
        int row;
    };
    constexpr Entry entries[] = {
        {L"Copy a text",
         [](ReadOut&, LogLine const& say) {
             say(WindowsClipboard::addText(sample) ? L"copied" : L"refused");
         },
         0, 0},
        {L"Paste", [](ReadOut& out, LogLine const&) { out.setText(summary(WindowsClipboard::getText())); }, 1,
         0},
        {L"Select a text",
         [](ReadOut&, LogLine const& say) {
             say(WindowsClipboard::addSelection(L"a selected text") ? L"selected" : L"refused");
         },
         0, 1},
        {L"Insert the selection",
         [](ReadOut& out, LogLine const&) { out.setText(summary(WindowsClipboard::getSelection())); }, 1, 1},
    };
    for (Entry const& entry : entries) {
        auto made = std::make_unique<LabelGlob>(button, entry.label);
        made->setAction([act = entry.act, shown, log](LabelGlob&) { act(*shown, log); });
        page->addChild(std::move(made), TopLeft(margin + entry.column * (button.x + margin),
                                                margin + entry.row * (button.y + margin)));
    }
    return page;
}

} // namespace wainscot::gallery
