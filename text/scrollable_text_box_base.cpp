#include "text/scrollable_text_box_base.h"

#include "foundation/layout/box_layout.h"

namespace wainscot {

using Text = LightweightString<wchar_t>;

ScrollableTextBoxBase::ScrollableTextBoxBase(MultiLineTextBox::InitArgs const& args)
    : ScrollableTextBoxBase(args, std::make_unique<MultiLineTextBox>(args)) {}

ScrollableTextBoxBase::ScrollableTextBoxBase(MultiLineTextBox::InitArgs const& args,
                                             std::unique_ptr<MultiLineTextBox> box)
    : StandardPanel(
          StandardPanel::InitArgs(GlobCreationInfo(args, toSize16(box->width()), toSize16(box->height())))),
      box_(box.get()) {
    auto* const column = setLayout(BoxLayout::makeColumn());
    column->setMargins(0);
    column->add(std::move(box), {.stretch = 1});
}

ScrollableTextBoxBase::~ScrollableTextBoxBase() = default;

Text ScrollableTextBoxBase::getText() const {
    return box_ ? getTextBox()->getText() : Text();
}

void ScrollableTextBoxBase::setText(UIString const& text) {
    if (MultiLineTextBox* const box = getTextBox()) box->setText(text);
}

void ScrollableTextBoxBase::getTabOrderables(std::vector<TabOrderable*>& controls, unsigned int) {
    // It may have been taken out.
    MultiLineTextBox* const box = getTextBox();
    if (box && Glob::isParentedTo(box, this)) controls.push_back(box);
}

namespace {

MultiLineTextBox::InitArgs shownOnly(MultiLineTextBox::InitArgs args) {
    args.editable = false;
    args.wrap = true;
    return args;
}

} // namespace

TextViewer::TextViewer(MultiLineTextBox::InitArgs const& args) : ScrollableTextBoxBase(shownOnly(args)) {}

} // namespace wainscot
