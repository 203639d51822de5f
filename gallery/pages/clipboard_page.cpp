#include "gallery/pages/cell_panel.h"
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

class ClipboardPage final : public CellPanel {
public:
    ClipboardPage(XY<int> size, LogLine log) : CellPanel(size, std::move(log)) {
        for (auto const& [label, message, column, row] : commands)
            addButton(std::make_unique<Button>(Button::InitArgs(label, message)), column, row);
        shown_ =
            grid().add(std::make_unique<ReadOut>(L"The text that came"), {.row = 2, .columns = allColumns});
        shown_->setName("pasted");
        grid().setEqualColumns(false);
        grid().setRowStretch(2, 1);
        grid().setColumnStretch(2, 1);
    }

    int handleMessageEvent(LightweightString<char> name, Glob* sender) override {
        if (name == copyMsg) say(WindowsClipboard::addText(sample) ? L"copied" : L"refused");
        if (name == pasteMsg) shown_->setText(summary(WindowsClipboard::getText()));
        if (name == selectMsg)
            say(WindowsClipboard::addSelection(L"a selected text") ? L"selected" : L"refused");
        if (name == insertMsg) shown_->setText(summary(WindowsClipboard::getSelection()));
        bool const isCommand = std::ranges::find(commands, name, &Command::message) != std::end(commands);
        return isCommand ? 1 : CellPanel::handleMessageEvent(name, sender);
    }

private:
    static constexpr LightweightString<char> copyMsg{"copy"};
    static constexpr LightweightString<char> pasteMsg{"paste"};
    static constexpr LightweightString<char> selectMsg{"select"};
    static constexpr LightweightString<char> insertMsg{"insert"};
    struct Command {
        wchar_t const* label;
        LightweightString<char> message;
        int column;
        int row;
    };
    static constexpr Command commands[] = {{L"Copy a text", copyMsg, 0, 0},
                                           {L"Paste", pasteMsg, 1, 0},
                                           {L"Select a text", selectMsg, 0, 1},
                                           {L"Insert the selection", insertMsg, 1, 1}};

    ReadOut* shown_;
};

std::unique_ptr<Glob> make(XY<int> size, LogLine log) {
    return std::make_unique<ClipboardPage>(size, std::move(log));
}

} // namespace

extern Page const clipboardPage = {"clipboard",
                                   L"Clipboard",
                                   PageGroup::testBench,
                                   L"Text is put on the clipboard and read from it.",
                                   "gallery/pages/clipboard_page.cpp",
                                   make};

} // namespace wainscot::gallery
