#include "gallery/pages/box_page.h"

#include "foundation/layout/box_layout.h"
#include "foundation/val_server.h"
#include "foundation/val_server_adaptor.h"
#include "host/drawing/uif_std.h"
#include "text/numeric_text_box.h"

#include <functional>

namespace wainscot::gallery {

namespace {

using Text = LightweightString<wchar_t>;

constexpr std::size_t shortestName = 3;

/// Refuses names that are too short.
class NameGuard final : public iValGuard<Text>, public Qv::InternalRefCount {
public:
    explicit NameGuard(LogLine log) : log_(std::move(log)) {}
    bool requestValChange(ValServer<Text>*, Text& value) override {
        bool const isAccepted = value.size() >= shortestName;
        if (!isAccepted) log_(L"the data refuses  " + value);
        return isAccepted;
    }

private:
    LogLine log_;
};

/// Boxes with one line in every form.
class TextBoxesPage final : public BoxPage {
public:
    TextBoxesPage(XY<int> size, LogLine log)
        : BoxPage(size, log), title_(Text(L"Evening")), name_(Text(L"Reel 4")) {
        name_.setGuard(Qv::makePtr<NameGuard>(std::move(log)));
        auto* const page = setLayout(BoxLayout::makeColumn());
        auto* const row = page->add(BoxLayout::makeRow());
        auto* const left = row->add(std::make_unique<FormLayout>(), {.stretch = 1});
        addTexts(*left);
        addFixed(*left);
        row->addSpace(UifStd::getIndentWidth());
        auto* const right = row->add(std::make_unique<FormLayout>(), {.stretch = 1});
        addRestricted(*right);
        addNumbers(*right);
        addBound(*right);
        addPanel(*page);
        page->addStretch();
    }

private:
    static TextBox::InitArgs with(Text text, std::function<void(TextBox::InitArgs&)> const& prepare = {}) {
        TextBox::InitArgs args(0, 0, std::move(text));
        if (prepare) prepare(args);
        return args;
    }

    void addTexts(FormLayout& form) {
        form.addHeading(L"Texts");
        addBox(form, L"Plain", with(L"Evening at the harbour"));
        addBox(form, L"Ghost label", with({}, [](auto& args) { args.ghostLabel = L"Name of the clip"; }));
        addBox(form, L"Suffix", with(L"25", [](auto& args) { args.suffix = L" fps"; }));
        addBox(form, L"Right", with(L"00:01:25:12", [](auto& args) { args.alignment = eAlignRight; }));
        addBox(form, L"Centre", with(L"Scene 12", [](auto& args) { args.alignment = eAlignCentre; }));
        addBox(form, L"Overwrite", with(L"01:00:00:00"))->setEditMode(eOverwriteMode);
        addBox(form, L"Password", with(L"drawbridge", [](auto& args) { args.obfuscated = true; }));
    }
    void addFixed(FormLayout& form) {
        form.addHeading(L"Not to be edited");
        addBox(form, L"Read only", with(L"Click twice", [](auto& args) { args.editable = false; }));
        addBox(form, L"Disabled", with(L"Out of use"))->setActive(false);
    }
    void addRestricted(FormLayout& form) {
        form.addHeading(L"What can be entered");
        addBox(form, L"Only hexadecimal", with(L"7F3A", [](auto& args) {
                   args.characters = L"0123456789abcdefABCDEF";
                   args.restriction = eOnlyCharacters;
               }));
        addBox(form, L"No / \\ :", with(L"take 1", [](auto& args) {
                   args.characters = L"/\\:";
                   args.restriction = eNotCharacters;
               }));
        addBox(form, L"At most 8", with(L"A007C012", [](auto& args) { args.sizeLimit = 8; }));
    }
    NumericTextBox* addNumber(FormLayout& form, UIString const& label, Text number, Text const& unit) {
        return addBox(form, label, std::make_unique<NumericTextBox>(with(std::move(number), [&](auto& args) {
                          args.suffix = unit;
                      })));
    }
    void addNumbers(FormLayout& form) {
        form.addHeading(L"Numbers");
        addNumber(form, L"Whole", L"50", L" %")->setValueRange(0, 100);
        addNumber(form, L"Fractions", L"-6", L" dB")->setValueRange(-24.0, 24.0);
    }
    static void bind(TextBox* box, ValServer<Text>& value) { bindToServer<Text>(*box, value); }
    void addBound(FormLayout& form) {
        form.addHeading(L"Bound to data");
        bind(addBox(form, L"One value", with({})), title_);
        bind(addBox(form, L"The same value", with({})), title_);
        bind(addBox(form, L"At least 3", with({})), name_);
    }
    void addPanel(BoxLayout& page) {
        auto panel = std::make_unique<StandardPanel>(InitArgs(1, 1, Border(Border::window)));
        panel->setTitle(L"A title that can be edited");
        panel->addStandardWidgets(editableTitle);
        panel->setTabGoesOn(true);
        auto layout = BoxLayout::makeColumn();
        layout->add(
            std::make_unique<Label>(L"Click the title, or go there with Tab.", Label::Part::secondary));
        panel->setLayout(std::move(layout));
        auto* const title = dynamic_cast<TextBox*>(panel->getTitleWidget());
        page.add(std::move(panel));
        if (title) addTabStop(*title);
    }

    ValServer<Text> title_;
    ValServer<Text> name_;
};

std::unique_ptr<Glob> make(XY<int> size, LogLine log) {
    return std::make_unique<TextBoxesPage>(size, std::move(log));
}

} // namespace

extern Page const textBoxesPage = {"text_boxes",
                                   L"Text boxes",
                                   PageGroup::controls,
                                   L"Boxes with one line of text or a number, in every form.",
                                   "gallery/pages/text_boxes_page.cpp",
                                   make};

} // namespace wainscot::gallery
