#pragma once

#include "host/events/dispatch_scope.h"
#include "tables/model/adaptor_failure_p.h"
#include "tables/table_widget.h"

namespace wainscot {

/// While it lives, the adaptor is being asked for rows or columns.
class TableWidget::Reading {
public:
    explicit Reading(TableWidget& table) : table_(table) { table_.isReading_ = true; }
    // A table that has been destroyed keeps its memory until the handler has returned.
    ~Reading() { table_.isReading_ = false; }
    Reading(Reading const&) = delete;
    Reading& operator=(Reading const&) = delete;

private:
    DispatchScope scope_;
    TableWidget& table_;
};

template <class Ask, class Answer>
Answer TableWidget::ask(Ask const& question, Answer otherwise) const {
    if (!getDataSource()) return otherwise;
    try {
        return static_cast<Answer>(question());
    } catch (...) {
        noteAdaptorFailure("TableWidget");
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
        noteAdaptorFailure("TableWidget");
    }
}

} // namespace wainscot
