#include "gallery/caption.h"
#include "gallery/long_text_box.h"
#include "gallery/page.h"

#include "host/base/convert.h"
#include "host/drawing/uif_std.h"

#include <algorithm>
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

/// A heading above the box, which is as wide as the page.
class LongTextPage : public Glob {
public:
    explicit LongTextPage(XY<int> size) : Glob(toSize16(size.x), toSize16(size.y)) {
        int const margin = UifStd::getIndentWidth() * 2;
        Glob* const note = addChild(
            std::make_unique<Caption>(L"One line of 1,000,000 characters. Wheel, arrow keys, Page Up and "
                                      L"Page Down, Home and End, or the bar",
                                      Caption::Kind::note),
            TopLeft(margin, margin));
        top_ = margin + note->height() + UifStd::getRowGap();
        box_ = addChild(std::make_unique<LongTextBox>(boxSize(), longText()), TopLeft(margin, top_));
    }

    void reshape() override {
        box_->resize(boxSize().x, boxSize().y);
        Glob::reshape();
    }

private:
    XY<int> boxSize() const {
        return {std::max(width() - UifStd::getIndentWidth() * 4, 1), UifStd::getButtonHeight() * 3};
    }

    int top_ = 0;
    Glob* box_ = nullptr;
};

std::unique_ptr<Glob> make(XY<int> size, LogLine) {
    return std::make_unique<LongTextPage>(size);
}

} // namespace

extern Page const longTextPage = {"longtext",
                                  L"Long text",
                                  PageGroup::drawing,
                                  L"A million characters on one line, drawn where they are in sight.",
                                  "gallery/pages/long_text_page.cpp",
                                  make};

} // namespace wainscot::gallery
