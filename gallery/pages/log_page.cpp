#include "gallery/pages/box_page.h"
#include "gallery/pages/watched_lines.h"

#include "buttons/button.h"
#include "buttons/checkbox.h"
#include "foundation/layout/box_layout.h"

#include <string>

namespace wainscot::gallery {

namespace {

constexpr int numLines = 100'000;

/// What a program might tell about its work.
std::wstring lineOf(int number) {
    static constexpr std::wstring_view tasks[] = {
        L"decoded 24 frames of harbour_12A.mov", L"conformed 3 tracks to 48000 Hz",
        L"wrote proxy of harbour_12C.mov, which had none since the move to the new store",
        L"waited for the store", L"matched 118 of 120 edges"};
    auto const padded = [](int value, std::size_t digits) {
        std::wstring const text = std::to_wstring(value);
        return std::wstring(digits - std::min(digits, text.size()), L'0') + text;
    };
    return padded(number + 1, 6) + L"  " + padded(number / 3600 % 24, 2) + L":" +
           padded(number / 60 % 60, 2) + L":" + padded(number % 60, 2) + L"  " +
           std::wstring(tasks[number % std::size(tasks)]);
}

std::wstring longLog() {
    std::wstring text;
    for (int i = 0; i < numLines; ++i) text += lineOf(i) + (i + 1 < numLines ? L"\n" : L"");
    return text;
}

/// A long log that grows.
class LogPage final : public BoxPage {
public:
    LogPage(XY<int> size, LogLine log) : BoxPage(size, std::move(log)) {
        auto* const column = setLayout(BoxLayout::makeColumn());
        auto* const options = column->add(BoxLayout::makeRow());
        add_ = options->add(std::make_unique<Button>(Button::InitArgs(L"Add a line", "add")));
        wraps_ = options->add(std::make_unique<Checkbox>(Checkbox::InitArgs(L"Wrap lines")));
        isEditable_ = options->add(std::make_unique<Checkbox>(Checkbox::InitArgs(L"Can be edited")));
        options->addStretch();
        place_ = options->add(
            std::make_unique<Label>(L"Line 100000 of 100000, column 100", Label::Part::secondary));
        MultiLineTextBox::InitArgs args(0, 0, LightweightString<wchar_t>(longLog()));
        args.wrap = false;
        args.editable = false;
        box_ = column->add(std::make_unique<WatchedLines>(
                               args, [this](WatchedLines const& box) { place_->setString(box.place()); }),
                           {.stretch = 1});
        box_->setName("Log");
        box_->setTopRow(box_->numRows());
        addTabStop(*add_);
        addTabStop(*wraps_);
        addTabStop(*isEditable_);
        hear(*box_);
        place_->setString(box_->place());
    }

    int handleMessageEvent(LightweightString<char> name, Glob* sender) override {
        if (sender == add_)
            box_->append(L"\n" + LightweightString<wchar_t>(lineOf(static_cast<int>(box_->numLines()))));
        if (sender == add_) place_->setString(box_->place());
        if (sender == wraps_) box_->setWrap(wraps_->isTicked());
        if (sender == isEditable_) box_->setEditable(isEditable_->isTicked());
        return BoxPage::handleMessageEvent(name, sender);
    }

private:
    Button* add_;
    Checkbox* wraps_;
    Checkbox* isEditable_;
    Label* place_;
    WatchedLines* box_;
};

std::unique_ptr<Glob> make(XY<int> size, LogLine log) {
    return std::make_unique<LogPage>(size, std::move(log));
}

} // namespace

extern Page const logPage = {"log",
                             L"Long log",
                             PageGroup::controls,
                             L"A hundred thousand lines that can be scrolled, edited and added to.",
                             "gallery/pages/log_page.cpp",
                             make};

} // namespace wainscot::gallery
