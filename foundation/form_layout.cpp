#include "foundation/form_layout.h"

namespace wainscot {

FormLayout::FormLayout() {
    setColumnStretch(1, 1);
}

bool FormLayout::addRow(UIString const& text, Glob& control, LayoutOptions const& options) {
    int const row = nextRow();
    if (!add(control, {row, 1}, options)) return false;
    addLabel(row, text, &control);
    return true;
}

/// In the first line of what it names.
void FormLayout::addLabel(int row, UIString const& text, Glob* control) {
    Label* const label =
        add(std::make_unique<Label>(text), GridCell{row, 0}, {.vertical = LayoutAlign::start});
    if (!label) return;
    if (control) label->setLabelFor(*control);
    labels_.resize(static_cast<std::size_t>(row) + 1);
    labels_.back() = HandlerRef<Label>(label);
}

Label* FormLayout::addHeading(UIString const& text) {
    return add(std::make_unique<Label>(text, Label::Part::heading), GridCell{.row = nextRow(), .columns = 2});
}

Label* FormLayout::labelOf(int row) const {
    auto const index = static_cast<std::size_t>(row);
    return row >= 0 && index < labels_.size() ? labels_[index].get() : nullptr;
}

} // namespace wainscot
