#include "foundation/label.h"
#include "foundation/layout/box_layout.h"
#include "foundation/standard_panel.h"
#include "gallery/long_text_box.h"
#include "gallery/page.h"

#include <string>

namespace wainscot::gallery {

namespace {

constexpr std::size_t length = 1'000'000;

/// Words, and again and again the number of the character that stands there.
std::wstring longText() {
    static constexpr std::wstring_view words[] = {L"quick ",  L"brown ",  L"fox — ", L"быстрая ", L"λίγες ",
                                                  L"Straße ", L"office ", L"fjord ", L"naïve "};
    std::wstring text;
    text.reserve(length + 32);
    for (std::size_t i = 0; text.size() < length; ++i) {
        if (i % 8 == 0) text += L"[" + std::to_wstring(text.size() + 1) + L"] ";
        text += words[i % std::size(words)];
    }
    text.resize(length);
    return text;
}

std::unique_ptr<Glob> make(XY<int> size, LogLine) {
    auto page = std::make_unique<StandardPanel>(size);
    auto layout = BoxLayout::makeColumn();
    Label::InitArgs note(
        L"One line of 1,000,000 characters. Wheel, arrow keys, Page Up and Page Down, Home and "
        L"End, or the bar",
        Label::Part::secondary);
    note.wraps = true;
    layout->add(std::make_unique<Label>(note));
    layout->add(std::make_unique<LongTextBox>(longText()));
    page->setLayout(std::move(layout));
    return page;
}

} // namespace

extern Page const longTextPage = {"longtext",
                                  L"Long text",
                                  PageGroup::drawing,
                                  L"A million characters on one line, drawn where they are in sight.",
                                  "gallery/pages/long_text_page.cpp",
                                  make};

} // namespace wainscot::gallery
