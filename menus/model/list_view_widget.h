#pragma once

#include "menus/model/list_view_adaptor.h"

namespace wainscot {

/// Base of widgets that show a list and report what is selected in it to an adaptor.
class WAINSCOT_API ListViewWidget {
public:
    ListViewWidget() = default;
    ListViewWidget(ListViewWidget const&) = delete;
    ListViewWidget& operator=(ListViewWidget const&) = delete;
    virtual ~ListViewWidget();

    Qv::Ptr<ListViewAdaptorBase> const& getListViewAdaptor() const { return adaptor_; }
    /// Replaces the adaptor; null = none. An adaptor serves the widget that it was given to last. What is
    /// shown stays as it is.
    void setListViewAdaptor(Qv::Ptr<ListViewAdaptorBase> adaptor);
    /// The adaptor's answer; true without an adaptor. The widget may be dead afterwards.
    bool requestItemSelect(unsigned int index);
    /// The adaptor has other items: the widget shows them. Nobody is told.
    virtual void showItems(std::vector<MenuItem> items, eRedrawFlag redraw) = 0;

protected:
    /// From now on the adaptor does not know it: for a widget that is being destroyed.
    void leaveListViewAdaptor();

private:
    Qv::Ptr<ListViewAdaptorBase> adaptor_;
};

} // namespace wainscot
