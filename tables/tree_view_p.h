#pragma once

#include "tables/model/adaptor_failure_p.h"
#include "tables/tree_view.h"

namespace wainscot {

template <class Ask, class Answer>
Answer TreeView::ask(Ask const& question, Answer otherwise) const {
    iTreeViewAdaptor* const adaptor = getAdaptor();
    if (!adaptor) return otherwise;
    try {
        return static_cast<Answer>(question(*adaptor));
    } catch (...) {
        noteAdaptorFailure("TreeView");
        return otherwise;
    }
}

} // namespace wainscot
