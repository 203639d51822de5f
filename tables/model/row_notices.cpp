#include "tables/model/row_notices.h"

#include <utility>

namespace wainscot {

namespace {

constexpr char rowsChangedMsg[] = "RowsChanged";

} // namespace

void follow(RowRanges& rows, RowNotice const& notice) {
    switch (notice.kind) {
    case RowNotice::Kind::inserted:
        rows.insertRows(notice.first, notice.count);
        break;
    case RowNotice::Kind::removed:
        rows.removeRows(notice.first, notice.count);
        break;
    case RowNotice::Kind::moved:
        rows.moveRows(notice.first, notice.count, notice.target);
        break;
    case RowNotice::Kind::changed:
        break;
    case RowNotice::Kind::reset:
        rows.clear();
        break;
    }
}

NotifierSubscription RowNotices::subscribe(Listener listener) {
    auto const unwrap = [listener = std::move(listener)](NotifyMsg const& message) {
        RowNotice const* const notice = unwrapData<RowNotice>(message.payload());
        if (notice && listener) listener(*notice);
        return 0;
    };
    return notifier_.subscribe({}, makeCallback<int, NotifyMsg>(unwrap));
}

void RowNotices::tell(RowNotice const& notice) {
    if (notifier_.numListeners() == 0) return;
    notifier_.issueNotification(NotifyMsg(rowsChangedMsg, wrapData(notice)), CallbackInvokerBase::anyType);
}

} // namespace wainscot
