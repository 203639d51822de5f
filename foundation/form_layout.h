#pragma once

#include "foundation/label.h"
#include "foundation/layout/grid_layout.h"

#include <concepts>

namespace wainscot {

/// A form: rows of a label and the control that it names. The labels' column is as wide as the widest label,
/// the controls take the rest.
class WAINSCOT_API FormLayout : public GridLayout {
public:
    FormLayout();

    /// A row below those that there are. The label is related to the control (`Label::setLabelFor`). Null
    /// when refused, as by `GridLayout::add`; then there is no label either.
    template <class T>
    requires std::derived_from<T, Glob> T* addRow(UIString const& text, std::unique_ptr<T> control,
                                                  LayoutOptions const& options = {}) {
        int const row = nextRow();
        Label* const label = addLabel(row, text);
        T* const added = add(std::move(control), GridCell{.row = row, .column = 1}, options);
        finishRow(row, label, added, added != nullptr);
        return added;
    }
    /// The same for several controls, which the label does not name.
    template <class T>
    requires std::derived_from<T, Layout> T* addRow(UIString const& text, std::unique_ptr<T> controls,
                                                    LayoutOptions const& options = {}) {
        int const row = nextRow();
        Label* const label = addLabel(row, text);
        T* const added = add(std::move(controls), GridCell{.row = row, .column = 1}, options);
        finishRow(row, label, nullptr, added != nullptr);
        return added;
    }
    /// The same for a child of the panel. False when refused.
    bool addRow(UIString const& text, Glob& control, LayoutOptions const& options = {});
    /// A line of its own above what follows. Null when refused.
    Label* addHeading(UIString const& text);
    /// The label of a row; null when it has none, or has died.
    Label* labelOf(int row) const;

private:
    /// Before what it names, as they are read.
    Label* addLabel(int row, UIString const& text);
    /// Relates both, or takes the label back.
    void finishRow(int row, Label* label, Glob* control, bool isAdded);

    std::vector<HandlerRef<Label>> labels_;
};

} // namespace wainscot
