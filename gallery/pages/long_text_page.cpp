#include "gallery/pages/box_page.h"
#include "gallery/pages/watched_box.h"

#include "containers/scroll_bar.h"
#include "foundation/layout/box_layout.h"

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

/// The part of the bar that its thumb takes.
constexpr double thumbSize = 0.02;
/// How many characters an arrow button or a notch of the wheel goes.
constexpr int step = 50;

/// The text in a box, and a bar that takes the cursor to any place of it.
class LongTextPage final : public BoxPage {
public:
    LongTextPage(XY<int> size, LogLine log) : BoxPage(size, std::move(log)) {
        auto* const column = setLayout(BoxLayout::makeColumn());
        Label::InitArgs note(L"One line of 1,000,000 characters, to be edited. The bar takes the cursor to a "
                             L"place; so do the wheel over the bar, Home, End and the arrow keys.",
                             Label::Part::secondary);
        note.wraps = true;
        column->add(std::make_unique<Label>(note));
        auto* const form = column->add(std::make_unique<FormLayout>());
        TextBox::InitArgs args(0, 0, LightweightString<wchar_t>(longText()));
        box_ = addBox(*form, L"Long text",
                      std::make_unique<WatchedBox>(args, [this](WatchedBox const&) { showPlace(); }));
        bar_ = form->addRow(L"Place", std::make_unique<ScrollBar>(ScrollBar::InitArgs(eHorizontal)));
        bar_->setThumbSize(thumbSize);
        bar_->setControls(box_);
        place_ = form->add(std::make_unique<Label>(L"", Label::Part::secondary),
                           {.row = form->nextRow(), .column = 1});
        column->addStretch();
        showPlace();
    }

    int handleMessageEvent(LightweightString<char> name, Glob* sender) override {
        if (sender != bar_) return BoxPage::handleMessageEvent(name, sender);
        int to = box_->getCursorPosition();
        if (name == ScrollBar::thumbMovedMsg)
            to = static_cast<int>(bar_->getThumbPos() / (1 - thumbSize) * static_cast<double>(length));
        if (name == ScrollBar::leftButtonPressedMsg || name == ScrollBar::upButtonPressedMsg) to -= step;
        if (name == ScrollBar::rightButtonPressedMsg || name == ScrollBar::downButtonPressedMsg) to += step;
        box_->setCursorIndex(to);
        showPlace();
        return 1;
    }

private:
    void showPlace() {
        place_->setString(box_->place());
        if (!bar_->isDragging())
            bar_->setThumbPos(box_->getCursorPosition() / static_cast<double>(length) * (1 - thumbSize));
    }

    WatchedBox* box_;
    ScrollBar* bar_;
    Label* place_;
};

std::unique_ptr<Glob> make(XY<int> size, LogLine log) {
    return std::make_unique<LongTextPage>(size, std::move(log));
}

} // namespace

extern Page const longTextPage = {
    "longtext",
    L"Long text",
    PageGroup::drawing,
    L"A million characters on one line, edited and drawn where they are in sight.",
    "gallery/pages/long_text_page.cpp",
    make};

} // namespace wainscot::gallery
