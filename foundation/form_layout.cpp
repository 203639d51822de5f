#include "foundation/form_layout.h"

#include <algorithm>

namespace wainscot {

FormLayout::FormLayout() {
    setColumnStretch(1, 1);
}

bool FormLayout::addRow(UIString const& text, Glob& control, LayoutOptions const& options) {
    int const row = nextRow();
    Label* const label = addLabel(row, text);
    bool const isAdded = add(control, {.row = row, .column = 1}, options);
    finishRow(row, label, &control, isAdded);
    return isAdded;
}

/// In the first line of what it names.
Label* FormLayout::addLabel(int row, UIString const& text) {
    return add(std::make_unique<Label>(text), GridCell{.row = row}, {.vertical = LayoutAlign::start});
}

void FormLayout::finishRow(int row, Label* label, Glob* control, bool isAdded) {
    if (!is_good_glob_ptr(label)) return;
    if (!isAdded) {
        bool const hasParent = label->parent() != nullptr;
        remove(*label);
        if (hasParent) destroy(label);
        return;
    }
    if (control) label->setLabelFor(*control);
    auto const index = static_cast<std::size_t>(row);
    labels_.resize(std::max(labels_.size(), index + 1));
    labels_[index] = HandlerRef<Label>(label);
}

Label* FormLayout::addHeading(UIString const& text) {
    return add(std::make_unique<Label>(text, Label::Part::heading), GridCell{.row = nextRow(), .columns = 2});
}

Label* FormLayout::labelOf(int row) const {
    auto const index = static_cast<std::size_t>(row);
    return row >= 0 && index < labels_.size() ? labels_[index].get() : nullptr;
}

} // namespace wainscot
