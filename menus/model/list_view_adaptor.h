#pragma once

#include "foundation/val_adaptor.h"
#include "menus/model/menu_item.h"

namespace wainscot {

class ListViewWidget;

/// The application's link to the data behind a list view, such as a menu: it gives the items, and hears what
/// the user selects.
class WAINSCOT_API ListViewAdaptorBase : public AdaptorBase {
public:
    ~ListViewAdaptorBase() override;

    virtual std::vector<MenuItem> getItems() const = 0;
    /// The user has selected an item. False = refused. The widget, too, may be destroyed here.
    virtual bool requestItemSelect(unsigned int index) = 0;

    /// Applications call it when the items have changed. Does nothing while no widget has the adaptor.
    void forceWidgetUpdate(eRedrawFlag redraw) override;
    /// The widget that it was given to last; null when there is none, or it has died.
    ListViewWidget* getWidget() const { return widget_; }

private:
    friend class ListViewWidget;
    ListViewWidget* widget_ = nullptr;
};

} // namespace wainscot
