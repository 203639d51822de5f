#include "menus/model/list_view_widget.h"

#include <utility>

namespace wainscot {

ListViewAdaptorBase::~ListViewAdaptorBase() = default;

void ListViewAdaptorBase::forceWidgetUpdate(eRedrawFlag redraw) {
    if (!widget_) return;
    // The widget may let go of it.
    Qv::Ptr<ListViewAdaptorBase> const held(this);
    std::vector<MenuItem> items = getItems();
    if (widget_) widget_->showItems(std::move(items), redraw);
}

ListViewWidget::~ListViewWidget() {
    leaveListViewAdaptor();
}

void ListViewWidget::leaveListViewAdaptor() {
    if (adaptor_ && adaptor_->widget_ == this) adaptor_->widget_ = nullptr;
}

void ListViewWidget::setListViewAdaptor(Qv::Ptr<ListViewAdaptorBase> adaptor) {
    // The old one is released last: its destructor may destroy the widget.
    Qv::Ptr<ListViewAdaptorBase> const old = std::exchange(adaptor_, std::move(adaptor));
    if (old && old->widget_ == this) old->widget_ = nullptr;
    if (adaptor_) adaptor_->widget_ = this;
}

bool ListViewWidget::requestItemSelect(unsigned int index) {
    Qv::Ptr<ListViewAdaptorBase> const held = adaptor_;
    return !held || held->requestItemSelect(index);
}

} // namespace wainscot
