#pragma once

#include "host/base/diagnostics.h"
#include "tables/table_widget.h"

namespace wainscot {

template <class Ask, class Answer>
Answer TableWidget::ask(Ask const& question, Answer otherwise) const {
    if (!getDataSource()) return otherwise;
    try {
        return static_cast<Answer>(question());
    } catch (...) {
        Diagnostics::count("adaptor failed", "TableWidget");
        return otherwise;
    }
}

/// It may destroy everything.
template <class Act>
void TableWidget::tellAdaptor(Act const& act) {
    if (!getDataSource()) return;
    try {
        act();
    } catch (...) {
        Diagnostics::count("adaptor failed", "TableWidget");
    }
}

} // namespace wainscot
