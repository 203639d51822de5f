#pragma once

#include "foundation/tab_orderable.h"
#include "host/base/ptr.h"

#include <memory>

namespace wainscot {

/// The tab order of a panel: a list of stops, each with a number, its tab order. Tab goes to the next larger
/// number, Shift+Tab to the next smaller one, both round the ends. The places of the controls on the screen
/// do not matter.
///
/// The index of a stop is its position in the order of adding; it has nothing to do with its tab order.
/// Overloads with an index are for tools; code that has the control uses the control.
///
/// Every call of a control (receipt, loss, the question whether it is active) may destroy, remove or focus
/// any control, and destroy the manager. No operation recurses. Each takes logarithmic time in the number of
/// stops, plus the inactive stops that a step passes, and in adding a small share of the run of orders that
/// it pushes.
class WAINSCOT_API TabOrderManager {
public:
    /// One stop.
    class ClientInfo;

    /// No index, no order.
    static constexpr unsigned int noTabStop = 0xFFFFFFFF;
    /// As an order: after the last stop.
    static constexpr unsigned int appendTabStop = 0xFFFFFFFE;
    /// The largest order that a caller can ask for.
    static constexpr unsigned int maxTabOrder = 0xFFFFEFFE;

    /// With `allowDuplicates`, one control can be several stops.
    explicit TabOrderManager(bool allowDuplicates);
    TabOrderManager(TabOrderManager const&) = delete;
    TabOrderManager& operator=(TabOrderManager const&) = delete;
    /// Gives up all controls. No control is told.
    virtual ~TabOrderManager();

    /// Adds a stop with exactly this order: the stop that has it, and the unbroken run of orders behind it,
    /// go one up. `appendTabStop` stands for the order after the highest. False, and nothing has changed,
    /// when the control is a stop already (unless duplicates are allowed), or when an order is or becomes too
    /// large.
    bool addTabStop(TabOrderable& object, unsigned int order = appendTabStop);
    /// Adds the controls of a composite widget, one by one, each with this order. Ends with false at the
    /// first null or refused control; those before it stay. False for a null host.
    bool addTabStopsFrom(TabOrderableHost& host, unsigned int order = appendTabStop);
    bool addTabStopsFrom(TabOrderableHost* host, unsigned int order = appendTabStop);

    /// Removes all stops of a control; false when there were none. No control is told of a loss. A current
    /// index behind them moves down, and the next step goes on from the place of the current stop.
    bool removeTabStop(TabOrderable const& object);
    /// Removes one stop. The current index stays, so that it may then mean another stop, or none.
    bool removeTabStop(unsigned int index);

    /// Moves a stop to another order, and pushes others (and itself) as in adding. False when there is no
    /// such stop or the order is too large, as `appendTabStop` is.
    bool setTabOrder(TabOrderable const& object, unsigned int order);
    bool setTabOrder(unsigned int index, unsigned int order);
    /// Gives the stops at these indices the orders 0, 1, 2 ...; the other stops follow in their present
    /// order. Unknown and repeated indices are ignored.
    void renumberTabStops(std::vector<unsigned int> const& indices);

    /// Makes a stop the current one. The new stop hears of the receipt, then the old stop of the loss, also
    /// when both are the same; redraws are held back until both have heard. False, and nothing happens, when
    /// there is no such stop, or it is disabled or inactive. The index `noTabStop` clears the focus and
    /// answers true.
    bool setTabStopFocus(unsigned int index);
    bool setTabStopFocus(TabOrderable const& object);

    /// Tab and Shift+Tab: focus the next enabled, active stop in the tab order, round the ends. When there is
    /// none, the focus is cleared. The answer is the new current index.
    unsigned int incrementTabStop();
    unsigned int decrementTabStop();
    /// Focus the first and the last enabled, active stop of the tab order, wherever the focus is now.
    unsigned int focusFirstTabStop();
    unsigned int focusLastTabStop();
    /// Whether a step finds a stop without going round the end.
    bool hasTabStopAhead(TabOrderable::eDirection direction);
    /// Focuses the current stop again; a forward step when there is none. The answer is the current index.
    unsigned int refocusCurrentTabStop();

    /// Steps and focusing skip disabled stops; a disabled current stop keeps the focus. For a control with
    /// several stops the first one counts. False when there is no such stop.
    bool setTabStopEnabled(TabOrderable const& object, bool enabled);
    bool setTabStopEnabled(unsigned int index, bool enabled);
    /// False for an unknown stop; `found`, unless null, gets whether there is such a stop.
    bool getTabStopEnabled(TabOrderable const& object, bool* found = nullptr) const;
    bool getTabStopEnabled(unsigned int index, bool* found = nullptr) const;

    /// How many stops there are.
    unsigned int numTabStops() const;
    /// `noTabStop` when out of range.
    unsigned int getTabStopTabOrder(unsigned int index) const;
    /// Null when out of range.
    TabOrderable* getTabStopObject(unsigned int index) const;
    /// `noTabStop` when no stop holds the focus.
    unsigned int getCurrentTabStopIndex() const { return currentIndex_; }
    /// The order of the stop that holds the focus, or of the place from which the next step goes on; else
    /// `noTabStop`.
    unsigned int getCurrentTabOrder() const { return currentOrder_; }
    /// Whether the first stop of a control is the current one.
    bool isTabStopFocus(TabOrderable const& object) const;
    /// The index of a control's first stop; `noTabStop` when it is not a stop here.
    unsigned int getTabStopIndex(TabOrderable const& object) const;

    /// The bounds within which adding pushes others, with the index that each stop had when it set the bound;
    /// `noTabStop` before the first stop. Removal leaves them as they are.
    struct TabOrderBounds {
        unsigned int lowestOrder = noTabStop;
        unsigned int lowestIndex = noTabStop;
        unsigned int highestOrder = noTabStop;
        unsigned int highestIndex = noTabStop;
    };
    TabOrderBounds const& tabOrderBounds() const;

    LifeToken const& tabOrderLife() const { return life_; }

protected:
    /// Gives up all controls and the focus. No control is told.
    void removeAllTabStops();
    /// Whether a control still lies where this manager keeps the focus; it may have been moved. Other
    /// controls are skipped and cannot be focused. Always true here.
    virtual bool isTabStopHere(TabOrderable& stop) const;

private:
    friend class TabOrderable;
    struct Stops;

    Stops& tabStops();
    ClientInfo* stopAt(unsigned int index) const;
    ClientInfo* firstStopOf(TabOrderable const& object) const;
    unsigned int indexOfStop(ClientInfo const& stop) const;
    bool makeWay(unsigned int order);
    void appendStop(TabOrderable& object, unsigned int order);
    void noteAddedOrder(unsigned int order, unsigned int index);
    bool moveStop(ClientInfo& stop, unsigned int order);
    /// Takes out all stops of a control, and corrects the current index. Does not touch the control.
    bool dropStopsOf(TabOrderable const& object);
    void dropStop(ClientInfo& stop);
    bool internalSetTabStopFocus(unsigned int index, bool, TabOrderable::eDirection direction);
    bool clearTabStopFocus();
    bool focusStop(ClientInfo& stop, TabOrderable::eDirection direction);
    unsigned int focusFound(ClientInfo* found, TabOrderable::eDirection direction);
    /// The first stop that a step may focus, from an order upwards, or below an order downwards; null when
    /// there is none, or when the manager has died in the search.
    Qv::Ptr<ClientInfo> findStopFrom(unsigned int order);
    Qv::Ptr<ClientInfo> findStopBelow(unsigned int order);
    Qv::Ptr<ClientInfo> findStopBetween(unsigned int first, unsigned int last);
    /// Asks the control: afterwards the stop may be removed and the manager dead.
    bool canFocusStop(ClientInfo& stop);

    /// Made with the first stop: most panels have none.
    std::unique_ptr<Stops> stops_;
    bool allowDuplicates_;
    unsigned int currentOrder_ = noTabStop;
    unsigned int currentIndex_ = noTabStop;
    LifeToken life_;
};

} // namespace wainscot
