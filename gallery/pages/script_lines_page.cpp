#include "gallery/pages/box_page.h"
#include "gallery/pages/watched_lines.h"

#include "foundation/layout/box_layout.h"

namespace wainscot::gallery {

namespace {

constexpr wchar_t scripts[] =
    L"Ξεσκεπάζω την ψυχοφθόρα βδελυγμία, και τίποτε δεν μένει κρυφό κάτω από τον ήλιο.\n"
    L"Съешь же ещё этих мягких французских булок, да выпей чаю, пока поезд стоит на станции.\n"
    L"שלום עולם, זו שורה ארוכה שנשברת כאשר אין לה עוד מקום בתיבה הזאת, 12 מתוך 345.\n"
    L"السلام عليكم، هذا سطر طويل ينكسر عندما لا يبقى له مكان في هذا المربع.\n"
    L"abc אבג def 123 اب ghi, and all of it in one line that goes on for a while longer.\n"
    L"नमस्ते दुनिया, यह एक लंबी पंक्ति है जो डिब्बे की चौड़ाई पर टूटती है।\n"
    L"你好，世界。这一行很长，没有空格，所以在方框的边缘处随处断开，一直到最后一个字为止。\n"
    L"こんにちは世界、カメラはまだ回っています。この行も空白がありません。\n"
    L"Cafe\u0301 Stro\u0308m man\u0303ana a\u030a\u0301 o\u0308\u0323, \U0001F600 \U0001F3AC "
    L"\U0001F44D\U0001F3FD "
    L"\U0001F469\u200D\U0001F4BB \U0001F1EB\U0001F1F7 \U0001F1EF\U0001F1F5\n"
    L"Averyveryveryverylongwordwithoutanyblankinitwhichhastobecutsomewheresinceitfitsnowhereatall";

/// One text twice: wrapped to the width, and scrolled sideways.
class ScriptLinesPage final : public BoxPage {
public:
    ScriptLinesPage(XY<int> size, LogLine log) : BoxPage(size, std::move(log)) {
        auto* const column = setLayout(BoxLayout::makeColumn());
        place_ = column->add(std::make_unique<Label>(L"No box is being edited", Label::Part::secondary));
        auto* const row = column->add(BoxLayout::makeRow(), {.stretch = 1});
        addScripts(*row, true, "Wrapped");
        addScripts(*row, false, "Not wrapped");
    }

private:
    void addScripts(BoxLayout& row, bool wraps, LightweightString<char> const& name) {
        MultiLineTextBox::InitArgs args(0, 0, scripts);
        args.wrap = wraps;
        auto* const box =
            row.add(std::make_unique<WatchedLines>(
                        args, [this](WatchedLines const& lines) { place_->setString(lines.place()); }),
                    {.stretch = 1});
        box->setName(name);
        hear(*box);
    }

    Label* place_;
};

std::unique_ptr<Glob> make(XY<int> size, LogLine log) {
    return std::make_unique<ScriptLinesPage>(size, std::move(log));
}

} // namespace

extern Page const scriptLinesPage = {"script_lines",
                                     L"Scripts in lines",
                                     PageGroup::controls,
                                     L"Lines in many scripts and both directions, wrapped and not.",
                                     "gallery/pages/script_lines_page.cpp",
                                     make};

} // namespace wainscot::gallery
