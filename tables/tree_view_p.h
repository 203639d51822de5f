#pragma once

#include "host/base/diagnostics.h"
#include "tables/tree_view.h"

namespace wainscot {

template <class Ask, class Answer>
Answer TreeView::ask(Ask const& question, Answer otherwise) const {
    iTreeViewAdaptor* const adaptor = getAdaptor();
    if (!adaptor) return otherwise;
    try {
        return static_cast<Answer>(question(*adaptor));
    } catch (...) {
        Diagnostics::count("adaptor failed", "TreeView");
        return otherwise;
    }
}

} // namespace wainscot
