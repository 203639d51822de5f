#pragma once

#include "buttons/button.h"
#include "containers/tabbed_dialogue.h"
#include "foundation/focusable.h"
#include "host/drawing/symbols.h"

#include <vector>

namespace wainscot {

/// The row of tabs of a dialogue, with buttons to go on in it where it is too short. One stop in the tab
/// order. It knows the order of the tabs, and which one is current; it decides nothing.
///
/// Only tabs in sight are placed and visible, so that their number costs nothing.
class TabStrip final : public Focusable<rect> {
public:
    explicit TabStrip(TabbedDialogue& dialogue);
    ~TabStrip() override;

    // --- Tabs
    std::size_t numTabs() const { return tabs_.size(); }
    /// Null when there is none.
    Tab* tabAt(std::size_t index) const { return index < tabs_.size() ? tabs_[index] : nullptr; }
    /// -1 when it is not here.
    int indexOf(Tab const* tab);
    /// Null when it could not be added.
    Tab* add(UIString const& name);
    void remove(std::size_t index);
    void removeAll();
    void move(std::size_t from, std::size_t to);
    /// Brings the tabs into this order, which is one of those that are here.
    void setOrder(std::vector<Tab*> order);
    Tab* current() const { return current_.get(); }
    void setCurrent(Tab* tab);
    std::vector<Tab*> const& tabs() const { return tabs_; }

    // --- Geometry
    int totalWidth();
    /// The width in which tabs are seen.
    int visibleWidth() const { return area_->width(); }
    /// Where the first tab begins, from the left end of the strip: 0, or less.
    int firstTabPos() const { return firstTabPos_; }
    void setFirstTabPos(int position);
    void ensureTabIsVisible(std::size_t index);
    void stepForward();
    void stepBack();
    /// Reveals a tab when the strip is laid out.
    void revealLater(Tab& tab);
    /// The tabs from here on have other places.
    void orderChanged(std::size_t from);
    /// The widths from this tab on have to be computed again.
    void widthsChanged(std::size_t from);
    void widthChanged(Tab const& tab);
    void remeasure();
    void layOut();

    // --- What tabs tell
    TabbedDialogue* dialogue() const { return dialogue_.get(); }
    void tabGone(Tab& tab);
    bool drag(Tab& tab, Event const& event, XY<int> const& pressPlace);
    void endDrag(Tab& tab, bool isTakenBack);

    // Glob
    bool react(Event const& event) override;
    void reshape() override;
    void handleLayout() override;
    void handleKbdFocus() override;
    void draw() override;
    void handleLookChange(LookChange changes) override;
    void describe(GlobDescription& description) const override;
    /// A drag that rests on a step button scrolls.
    bool canAccept(DragDropItem const& item, XY<int> const& place, eDropReason reason) override;
    void handleDragHover(DragDropItem const& item, XY<int> const& place, bool inside) override;
    MouseCursorID getDropCursor(DragDropItem const& item, XY<int> const& place) const override;

private:
    class Area;
    // From its buttons.
    static constexpr LightweightString<char> backMsg{"tabs_back"};
    static constexpr LightweightString<char> forwardMsg{"tabs_forward"};
    static constexpr LightweightString<char> listMsg{"tabs_list"};
    /// How far a notch of the wheel goes, in heights of a button.
    static constexpr int wheelStep = 3;
    /// How often it scrolls while a tab is dragged beyond its ends, or anything over its step buttons, in
    /// milliseconds.
    static constexpr double scrollInterval = 60;

    /// The left edges of the tabs, and behind them their whole width; up to date after `measure`.
    void measure();
    int startOf(std::size_t index) { return measure(), starts_[index]; }
    /// The tab at a distance from the left edge of the first one.
    std::size_t tabAtOffset(int offset);
    void placeTabs();
    int placeButtons(bool overflows);
    Button* makeButton(QvTTF::eGlyph glyph, char const* message, UIString const& name, bool repeats);
    bool reactToKey(Event const& event);
    void selectFrom(int index, int direction);
    bool openList();
    /// To which side a drag at a place scrolls: -1 or 1; 0 = to none.
    int sideAt(XY<int> const& place) const;
    void scrollWhileDragging();
    int draggedLeft() const;
    void dragOn();

    HandlerRef<TabbedDialogue> dialogue_;
    /// Cuts the tabs off at its edges.
    Glob* area_;
    HandlerRef<Button> backButton_;
    HandlerRef<Button> forwardButton_;
    HandlerRef<Button> listButton_;
    std::vector<Tab*> tabs_;
    /// Those before this one know their index.
    std::size_t numNumbered_ = 0;
    std::vector<int> starts_{0};
    /// The tabs from here on have no left edge yet.
    std::size_t numMeasured_ = 0;
    std::vector<HandlerRef<Tab>> placed_;
    HandlerRef<Tab> current_;
    HandlerRef<Tab> revealed_;
    unsigned int pass_ = 0;
    int firstTabPos_ = 0;

    /// The tab that the pointer drags along, from where, and where it was taken.
    HandlerRef<Tab> dragged_;
    std::size_t draggedFrom_ = 0;
    int grip_ = 0;
    int pointerX_ = 0;
    /// To which side a drag of something else scrolls.
    int hoverSide_ = 0;
};

} // namespace wainscot
