#include "gallery/pages/box_page.h"
#include "gallery/pages/watched_box.h"

#include "foundation/layout/box_layout.h"

namespace wainscot::gallery {

namespace {

struct Sample {
    wchar_t const* script;
    wchar_t const* text;
    TextAlignment alignment = eAlignLeft;
};

constexpr Sample samples[] = {
    {L"Combining marks", L"Cafe\u0301 Stro\u0308m man\u0303ana a\u030a\u0301 o\u0308\u0323"},
    {L"Greek", L"Ξεσκεπάζω την ψυχοφθόρα"},
    {L"Cyrillic", L"Съешь же ещё этих мягких булок"},
    {L"Hebrew", L"שלום עולם", eAlignRight},
    {L"Arabic", L"السلام عليكم", eAlignRight},
    {L"Right to left, numbers", L"קליפ 12 מתוך 345, (4:2)", eAlignRight},
    {L"Both directions", L"abc אבג def 123 اب ghi"},
    {L"Hindi", L"नमस्ते दुनिया"},
    {L"Thai", L"สวัสดีชาวโลก"},
    {L"Chinese", L"你好，世界"},
    {L"Japanese", L"こんにちは世界、カメラ"},
    {L"Emoji", L"\U0001F600 \U0001F3AC \U0001F44D\U0001F3FD \U0001F469\u200D\U0001F4BB"},
    {L"Flags", L"\U0001F1EB\U0001F1F7 \U0001F1EF\U0001F1F5 \U0001F1F0\U0001F1EA"},
};

/// A box for each script, and where the cursor stands in the one that is used.
class ScriptsPage final : public BoxPage {
public:
    ScriptsPage(XY<int> size, LogLine log) : BoxPage(size, std::move(log)) {
        auto* const column = setLayout(BoxLayout::makeColumn());
        Label::InitArgs note(L"Indices count characters as they are stored; the cursor stops where a reader "
                             L"would. A script without a font on this system is shown as boxes.",
                             Label::Part::secondary);
        note.wraps = true;
        column->add(std::make_unique<Label>(note));
        place_ = column->add(std::make_unique<Label>(L"No box is being edited"));
        auto* const form = column->add(std::make_unique<FormLayout>());
        for (Sample const& sample : samples) addSample(*form, sample);
        column->addStretch();
    }

private:
    void addSample(FormLayout& form, Sample const& sample) {
        TextBox::InitArgs args(0, 0, sample.text);
        args.alignment = sample.alignment;
        addBox(form, sample.script, std::make_unique<WatchedBox>(args, [this](WatchedBox const& box) {
                   place_->setString(GlobDescription::of(box).name + L": " + box.place());
               }));
    }

    Label* place_;
};

std::unique_ptr<Glob> make(XY<int> size, LogLine log) {
    return std::make_unique<ScriptsPage>(size, std::move(log));
}

} // namespace

extern Page const scriptsPage = {"scripts",
                                 L"Scripts",
                                 PageGroup::controls,
                                 L"Text in many scripts and both directions, to be edited.",
                                 "gallery/pages/scripts_page.cpp",
                                 make};

} // namespace wainscot::gallery
