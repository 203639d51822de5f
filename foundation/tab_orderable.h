#pragma once

#include "host/base/life.h"

#include <cstddef>
#include <vector>

namespace wainscot {

class TabOrderManager;

/// A control that can hold the tab focus. It is a stop in the managers to which it was added, and leaves them
/// when it dies.
///
/// A control that is also a panel has `setTabStopFocus` and `isTabStopFocus` twice, and chooses by
/// using-declarations which ones need no prefix.
class WAINSCOT_API TabOrderable {
public:
    /// Forward: Tab and direct focusing; backward: Shift+Tab.
    enum eDirection { forward = 0, backward = 1 };

    TabOrderable() = default;
    TabOrderable(TabOrderable const&) = delete;
    TabOrderable& operator=(TabOrderable const&) = delete;
    virtual ~TabOrderable();

    /// Whether it can take the focus now.
    virtual bool isTabStopActive() = 0;
    /// It has become the current stop; the former stop hears of its loss afterwards. When it was the current
    /// stop already, it hears of its own loss next (`isReceivingTabStopFocus()` tells that loss from others).
    /// Does nothing here.
    virtual void handleTabStopFocusReceipt(eDirection direction);
    /// It is no longer the current stop. Does nothing here.
    virtual void handleTabStopFocusLoss();

    /// Asks all its managers to focus it. True when one of them does.
    bool setTabStopFocus();
    /// Has all its managers clear their focus, whoever holds it.
    void relinquishTabStopFocus();
    /// Whether it is the current stop of one of its managers.
    bool isTabStopFocus() const;
    /// Whether a manager is giving it the focus at this moment. It ignores a loss that it hears meanwhile,
    /// which follows its own receipt.
    bool isReceivingTabStopFocus() const;

    /// Called by the manager only, once for each stop; leaving removes the first matching entry.
    void registerManager(TabOrderManager* manager);
    void deregisterManager(TabOrderManager* manager);
    /// One entry for each registration.
    std::vector<TabOrderManager*> const& tabOrderManagers() const { return managers_; }

protected:
    /// Ends all its registrations. Nobody is told.
    void leaveAllManagers();
    LifeToken const& tabStopLife() const { return life_; }

private:
    friend class TabOrderManager;
    class Receiving;

    /// A manager that can be asked later; it, or this object, may die meanwhile.
    struct ManagerRef {
        TabOrderManager* manager;
        LifeGuard life;
    };
    /// Each manager once, in the order of registration.
    std::vector<ManagerRef> distinctManagers() const;
    void leaveManager(TabOrderManager* manager);

    std::vector<TabOrderManager*> managers_;
    LifeToken life_;
};

/// A composite widget that owns several controls that can hold the tab focus.
class WAINSCOT_API TabOrderableHost {
public:
    virtual ~TabOrderableHost();
    /// Appends its controls in the order in which they are to be added. `order` is the tab order that the
    /// caller asked for.
    virtual void getTabOrderables(std::vector<TabOrderable*>& controls, unsigned int order) = 0;
};

} // namespace wainscot
