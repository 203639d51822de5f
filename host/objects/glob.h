#pragma once

#include "host/drawing/canvas.h"
#include "host/drawing/palette.h"
#include "host/events/mouse_cursor.h"
#include "host/messages/event_handler.h"
#include "host/objects/glob_creation_info.h"
#include "host/objects/look_change.h"
#include "host/objects/redraw_flag.h"
#include "host/objects/size_needs.h"
#include "host/objects/widget_position.h"
#include "host/services/ui_string.h"

#include <functional>
#include <memory>
#include <new>
#include <optional>
#include <vector>

namespace wainscot {

class configb;
class DescribedItems;
class DragDropItem;
class Event;
class Surround;
struct GlobDescription;
struct TooltipDetails;
enum class DescriptionChange : std::uint8_t;

/// A node of the on-screen tree: it has a parent, children, a place, a size, a canvas and a palette; it draws
/// itself and reacts to events.
///
/// A `Glob` lives on the heap and belongs to its parent, a top-level one to the window manager. `delete`,
/// `destroy()` and the death of the parent are the same: the whole subtree is detached at once, so that
/// nobody finds it any more, and its memory goes when the outermost handler that is running has returned.
///
/// Places and sizes are logical pixels, y upwards. The stored place is relative to the parent's lower-left
/// corner.
class WAINSCOT_API Glob : public EventHandler, public CanvasClient {
public:
    /// Asks an object to close itself.
    static constexpr LightweightString<char> pootMsg{"poot"};

    /// Keeps counted pointers away: the tree is the owner.
    using OwnedByTree = void;
    using Visitor = std::function<bool(Glob&)>;

    explicit Glob(GlobCreationInfo const& info);
    Glob(unsigned short width, unsigned short height, Palette const& palette = Palette(), bool opaque = true,
         Canvas* canvas = nullptr);
    /// From saved settings: "name", "x", "y", "visible", "active".
    Glob(configb const& settings, unsigned short width, unsigned short height);
    ~Glob() override;

    // Not inline: compilers would take the pair below for a mismatch once they see through them.
    static void* operator new(std::size_t size);
    static void operator delete(void* memory);
    static void operator delete(Glob* glob, std::destroying_delete_t);

    // iObject: the tree owns it, nobody counts.
    void addRef() const noexcept final {}
    void release() const noexcept final {}

    // --- Tree
    Glob* parent() const { return parent_; }
    bool isChildGlob() const { return parent_ != nullptr; }
    std::size_t numChildren() const { return numChildren_; }
    Glob* firstChild() const { return firstChild_; }
    Glob* lastChild() const { return lastChild_; }
    Glob* nextSibling() const { return next_; }
    Glob* previousSibling() const { return previous_; }
    /// Appends the children, oldest first.
    void getChildren(std::vector<Glob*>& children) const;
    /// The child itself when it is one of this parent's, else null.
    Glob* getWidget(Glob* child) const;
    /// The child at an index; null when out of range.
    Glob* getWidget(unsigned short index) const;
    /// Whether `ancestor` is among the parents of `glob`.
    static bool isParentedTo(Glob const* glob, Glob const* ancestor);
    /// The topmost ancestor; a root's root is itself. Null for null.
    static Glob* getRootParent(Glob* glob);

    /// Whether `addChild` would take it.
    bool mayTake(Glob const* child) const;
    /// Takes over a child and places it. Refused with null: no child, itself, an ancestor, a window,
    /// something dying. Null also when it, or this, was destroyed by someone who was told of it.
    /// A child of this parent is only placed anew; one of another parent is moved over.
    Glob* addChild(Glob* child, WidgetPosition const& position = {}, WidgetSurround surround = {});
    template <class T>
    T* addChild(std::unique_ptr<T> child, WidgetPosition const& position = {}, WidgetSurround surround = {}) {
        T* const added = child.get();
        if (!mayTake(added)) return addChild(nullptr), nullptr;
        child.release();
        return addChild(static_cast<Glob*>(added), position, surround) ? added : nullptr;
    }
    /// Adds a child at a corner; the last argument, where given, is the sibling below which it lies in the
    /// order.
    Glob* addWidget(Glob* child, int x, int y, CoordinateOrigin origin = CoordinateOrigin::bottomLeft,
                    WidgetSurround surround = {}, Glob* before = nullptr);
    /// Adds a child next to a sibling, which must be a child of this parent.
    Glob* addWidgetRelative(Glob* child, Glob* sibling, int gap, WidgetRelativity relativity,
                            WidgetSurround surround = {}, WidgetAlignment alignment = WidgetAlignment::start);
    /// Destroys a child and clears the caller's pointer; a pointer to anything else is only cleared.
    void removeWidget(Glob*& child, bool redraw = true);
    /// The same for a pointer to a class of widgets.
    template <class T>
    void removeWidget(T*& child, bool redraw = true) {
        Glob* removed = child;
        child = nullptr;
        removeWidget(removed, redraw);
    }
    /// Takes a child out of the tree and hands it over; null when it is none of this parent's.
    std::unique_ptr<Glob> takeWidget(Glob* child);
    void setWidgetDetails(WidgetDetails const& details);
    WidgetDetails getWidgetDetails(Glob* child) const;
    void setWidgetBorderStyle(Glob* child, WidgetSurround surround);
    /// Moves it to another parent, keeping its place rule. False when refused (see `addChild`) or not
    /// reparentable.
    bool reparentTo(Glob* parent);
    void setReparentable(bool reparentable) { setFlag(reparentableFlag, reparentable); }
    /// Above its siblings, or below them.
    void moveToTop();
    void moveToBottom();

    // --- Walkers. Each walks a snapshot and skips what has died meanwhile; a visitor that answers false ends
    // it.
    void visitChildren(Visitor const& visit);
    /// Itself first, then its descendants, parents before children.
    void visitSubtree(Visitor const& visit);
    /// Children before parents, itself last.
    void visitPostOrder(Visitor const& visit);
    /// From the parent to the root.
    void visitAncestors(Visitor const& visit);
    /// All other children of its parent.
    void visitSiblings(Visitor const& visit);
    void visitOlderSiblings(Visitor const& visit);
    void visitYoungerSiblings(Visitor const& visit);
    /// Of all objects on the screen that `accept` takes, the one with the least `glob_pseudo_distance` to
    /// this one; itself, its ancestors and its descendants are not asked. Null when there is none.
    Glob* findNearestGlob(bool (*accept)(Glob*));

    // --- Lifetime policies, respected by the window manager and by tools, never by `delete`.
    void setTrashable(bool trashable) { setFlag(trashableFlag, trashable); }
    bool isTrashable() const { return hasFlag(trashableFlag); }
    void setIndestructible(bool indestructible) { setFlag(indestructibleFlag, indestructible); }
    bool isIndestructible() const { return hasFlag(indestructibleFlag); }
    /// Whether a person's wish to close it is granted; `reason` is the asker's business.
    virtual bool canBeDestroyed(int reason);
    void setPersistable(bool persistable) { setFlag(persistableFlag, persistable); }
    bool isPersistable() const { return hasFlag(persistableFlag); }
    void setLightweight(bool lightweight) { setFlag(lightweightFlag, lightweight); }
    bool isLightweight() const { return hasFlag(lightweightFlag); }
    /// Whether it may become the active window.
    void setCanBeIt(bool can) { setFlag(canBeItFlag, can); }
    bool canBeIt() const { return hasFlag(canBeItFlag); }
    /// Detached, and waiting for its memory to be freed.
    bool isDying() const { return hasFlag(dyingFlag); }
    /// It is being destroyed, and has lost its parent and its children: nobody finds it any more, but its
    /// memory may stay until the outermost handler has returned. What it is registered with elsewhere (tab
    /// orders, observers) is to be left now. Must call nobody out; overriders call their base.
    virtual void handleDetached();

    // --- Geometry
    int width() const { return width_; }
    int height() const { return height_; }
    XY<int> size() const { return {width_, height_}; }
    /// The size before the last change.
    int oldWidth() const { return oldWidth_; }
    int oldHeight() const { return oldHeight_; }
    /// Its box in its parent's coordinates.
    IntBox box() const { return IntBox::sized(position_, size()); }
    /// Its box in its own coordinates.
    IntBox bounds() const { return IntBox::sized({0, 0}, size()); }
    /// Its place on the canvas on which it lies; for an owner of a canvas, its place in the parent's canvas.
    int getX() const { return placeOnCanvas().x; }
    int getY() const { return placeOnCanvas().y; }
    XY<int> placeOnCanvas() const;
    /// Gives it a new size (rounded, kept within 0 to 65535; what is not a number is 0) and calls
    /// `reshape()`. Widgets override it to lay out their parts.
    virtual void resize(double width, double height);
    /// Called after the size has changed: places the children again.
    virtual void reshape();
    /// `resize()` and a repaint of the whole box.
    void reshapeAndDraw(XY<int> const& size);
    /// `reshape()` and a repaint although the size is as before.
    void forceReshape();
    void setMinSize(unsigned short width, unsigned short height);
    XY<int> getMinSize() const;
    /// The nearest size that it can have; `edges` tells which edges are moved, for those who care.
    virtual XY<int> sizeConstrain(XY<int> const& wanted, int edges) const;
    virtual void setResizable(bool resizable) { setFlag(resizableFlag, resizable); }
    bool isResizable() const { return hasFlag(resizableFlag); }
    void setMovable(bool movable) { setFlag(movableFlag, movable); }
    bool isMovable() const { return hasFlag(movableFlag); }
    /// Begins to follow the pointer, from its present place; ended by `stopMoving()` or the release.
    void startMoving();
    void stopMoving();
    bool isMoving() const { return hasFlag(movingFlag); }

    // --- Layout
    /// The size that it wants; the base wants none.
    virtual SizeNeeds sizeNeeds() const;
    /// The height that it needs at a width, where its needs say that this depends on it.
    virtual int heightForWidth(int width) const;
    /// To be called when its needs have changed: tells its parent, and those above it as far as that changes
    /// theirs.
    void needsChanged() { tellParent(ChildChange::needs); }
    /// Something of a child has changed that a layout depends on. Whether the needs of this one may have
    /// changed by it. Must call nobody out. The base does nothing.
    virtual bool handleChildChange(Glob& child, ChildChange change);
    /// Has `handleLayout()` called once before the next painting.
    void askForLayout();
    bool isLayoutPending() const { return hasFlag(layoutPendingFlag); }
    /// No longer to be done: it has been.
    void layoutDone() { setFlag(layoutPendingFlag, false); }
    /// The time to place the children, where that was asked for. The base does nothing.
    virtual void handleLayout();

    void setWidgetPos(Glob* child, XY<int> const& place);
    /// Gives a child a place and a size in one step; its place is its rule from now on.
    void reshapeWidgetAt(Glob* child, XY<int> const& place, XY<int> const& size);
    /// The child's place in this parent; (0, 0) for anything that is no child.
    XY<int> getWidgetPos(Glob* child) const;
    /// Places all children by their rules.
    void positionChildWidgets();
    void positionChildWidget(WidgetDetails const& details);
    /// Where a child lies by its rule, in this parent's coordinates.
    IntBox getAbsRect(WidgetDetails const& details) const;
    /// Makes the present places the children's rules, so that they no longer follow corners or siblings.
    void calcAbsoluteWidgetPositions();
    /// The area for children inside borders and title.
    virtual IntBox getUserArea() const;

    /// Moves it so that its lower-left corner lies there in root coordinates; its place rule stays as it is.
    void setScreenPos(XY<int> const& place);
    /// Moves its window by as little as possible so that it lies wholly on one monitor.
    void constrainWithinScreen();
    /// Brings its window to the front; with `activate` the window becomes the active one as well. Nothing
    /// while it has no window.
    void popToTop(bool activate = true);
    /// Has what scrolls round it scroll it into view, as far as it fits. Nothing while a button of the
    /// pointer is held: what is under the pointer stays there.
    void bringIntoView();
    /// The same for a part of it, in its own coordinates.
    void bringIntoView(IntBox const& part);
    /// For what scrolls: an area of it, in its own coordinates, is wanted in view. The answer is how far the
    /// contents have moved.
    virtual XY<int> handleBringIntoView(IntBox const& area);
    /// From root coordinates to its own, and back.
    XY<int> screenXYToGlobXY(XY<int> const& place) const;
    XY<int> globXYToScreenXY(XY<int> const& place) const;
    /// Its box in root coordinates.
    IntBox screenBox() const;

    // --- Visibility, activity
    /// Hiding takes focus and pointer away without telling it.
    virtual void setVisible(bool visible);
    /// Its own setting; see `isShown()`.
    bool isVisible() const { return hasFlag(visibleFlag); }
    /// It is in a window, and it and all its ancestors are visible and mapped. Not so for what has been
    /// removed, also while its memory waits to be freed.
    bool isShown() const;
    /// It, or one of its ancestors, is invisible or unmapped, whether it is in a window or not.
    bool isHidden() const;
    /// What is inactive takes no keys and no focus, and is drawn faint; the same holds for all that lies in
    /// it, whose own settings stay as they are.
    virtual void setActive(bool active, eRedrawFlag redraw = eRedrawYes);
    /// It and all its ancestors are active.
    bool isActive() const { return (flags_ & (activeFlag | inactiveAboveFlag)) == activeFlag; }
    /// Its own setting.
    bool isActiveItself() const { return hasFlag(activeFlag); }
    void setOpacity(double opacity);
    double opacity() const { return canvas_->opacity(); }
    void mapCanvas();
    void unmapCanvas();

    // --- Drawing
    Canvas* canvas() const { return canvas_; }
    bool ownsCanvas() const { return canvas_ == &ownCanvas_; }
    /// Draws itself, not its children: background, then border.
    virtual void draw();
    virtual void drawBackground();
    virtual void drawBorder();
    /// Draws the children now instead of after `draw()`, so that the rest of `draw()` lies above them.
    virtual void drawWidgets();
    /// False keeps it and its children off the screen in this painting visit.
    virtual bool canDraw();
    /// Re-forms the outline of its canvas after a change of size.
    virtual void reshapeCanvas();
    bool isOpaque() const { return hasFlag(opaqueFlag); }
    void setOpaque(bool opaque) { setFlag(opaqueFlag, opaque); }
    /// Its whole box in coordinates of its canvas: what a renderer over all of it takes.
    IntBox canvasArea() const;
    /// Marks it as out of date, and damages its whole box.
    void makeDirty();
    void makeClean() { setFlag(dirtyFlag, false); }
    bool isDirty() const { return hasFlag(dirtyFlag); }
    /// Damages a part of it, in its own coordinates.
    void damage(IntBox const& part);

    Palette const& getPalette() const { return palette_; }
    virtual void setPalette(Palette const& palette);
    /// The look has changed: what was computed or loaded for it is to be made again. Everything is laid out
    /// and painted after it.
    virtual void handleLookChange(LookChange changes);
    /// The colour of its ground: that of the palette until one is set.
    Colour getCol() const;
    virtual void setCol(Colour const& colour, bool redraw);

    /// What is drawn round it, painted by its parent.
    void addSurround(Surround const& surround);
    void removeSurround();
    bool hasSurround() const;
    /// Adds a soft shadow to its surround, at the edges named by `Surround::Edge`.
    void addShadow(int size, double opacity, unsigned edges = 15);

    // --- Events
    bool handleEvent(Event const& event) override;
    /// What the widget does with an event. True = consumed. What it does not consume it passes to its base
    /// class. The end of that chain: messages go to the two message handlers; keys, mouse and wheel go on to
    /// the parent.
    virtual bool react(Event const& event);
    /// Which kinds of event it wants besides those that reach it anyway; 4096 = timer events. Idempotent.
    void setInterest(int kinds);
    void clearInterest(int kinds);
    int interest() const { return interest_; }
    /// When its next timer event comes; see `EventTimeServer::setNextTimer`.
    void setNextTimer(double ms);
    /// `handler` is offered all events of these kinds (groups) that reach this `Glob`, before itself.
    void addEventHandler(Glob* handler, int kinds);
    /// Removes the handlers that were added for exactly these kinds.
    void removeEventHandler(int kinds);
    /// The pointer has entered or left its box.
    virtual void handleMouseContainment(bool inside);
    bool containsPointer() const { return hasFlag(containsPointerFlag); }
    /// A held Return or space is to repeat for it, as for text and lists.
    virtual bool repeatsReturnAndSpace() const;
    /// A character without Ctrl, Alt or Meta, or one of the plain control characters.
    static bool isPlainKey(unsigned int code);
    IdStamp windowStamp() const override;
    Glob* asGlob() override;

    // --- Pointer
    /// The pointer's shape over a place in its own coordinates; `inheritCursor` leaves it to the parent.
    virtual MouseCursorID contextCursor(XY<int> const& place) const;
    /// The text shown when the pointer rests on it; `more` stands below it in a smaller voice. Empty texts
    /// leave it to the parent.
    void setContextString(UIString const& tip, UIString const& more = UIString());
    /// What is shown when the pointer rests at a place in its own coordinates. False = nothing of its own.
    virtual bool getTooltipDetails(XY<int> const& place, TooltipDetails& details) const;
    /// While it holds the pointer: its way is wanted in small steps, none left out.
    virtual bool wantsFullMotion() const;
    /// While it holds the pointer: the way goes on past the screen's edges, and the pointer is back at the
    /// place of the press in the end.
    virtual bool wantsUnboundedMotion() const;
    /// While it holds the pointer and has timer interest: it measures time with the processor clock, which
    /// therefore runs with wall time meanwhile.
    virtual bool isAutoRepeating() const;
    // A press ends once: with the release of its last button, or with one of these two; no release comes
    // after them, and nothing is to be chosen by them.
    /// Escape was pressed while it holds the pointer, or the release is lost, since its window was
    /// deactivated, minimised or hidden: what the press began is to be undone. It holds the pointer no more.
    /// The base goes back to where it was when it was moving, and calls `handleCaptureLost()`: who has
    /// nothing to undo needs only that.
    virtual void handlePressCancelled(Event const& press);
    /// It was holding the pointer and does no more, since it was hidden or taken out of its parent, the
    /// release went to a pop-up, or another took the pointer. Told when that change is done. What is held is
    /// to be let go of without a report. The base stops moving.
    virtual void handleCaptureLost();
    /// Tells a former holder, where it lives; what it does may destroy anything.
    static void tellCaptureLost(HandlerRef<Glob> const& holder);

    // --- Text entry
    /// The caret's box in its own coordinates while text can be entered here; nothing else. While it holds
    /// the focus, composed text appears at the caret before it is finished.
    virtual std::optional<IntBox> textCaret() const;

    // --- Dragging
    enum eDropReason {
        /// The item is being dragged over it.
        dropHover,
        /// It was let go here.
        dropFinal
    };
    /// Whether it takes an item at a place in its own coordinates. Asked from the object under the pointer
    /// upwards.
    virtual bool canAccept(DragDropItem const& item, XY<int> const& place, eDropReason reason);
    /// Takes the item. False = it did not after all.
    virtual bool acceptDrop(DragDropItem& item, XY<int> const& place, eDropReason reason);
    /// The pointer's shape while an item that it takes is dragged over it; `inheritCursor` = the usual one.
    virtual MouseCursorID getDropCursor(DragDropItem const& item, XY<int> const& place) const;
    /// An item has come over it (and moves on it), or has left; so that it can mark where it would go.
    virtual void handleDragHover(DragDropItem const& item, XY<int> const& place, bool inside);
    /// The drag that began here has ended; whether somebody took the item.
    virtual void handleDragEnd(DragDropItem& item, bool taken);

    // --- Messages
    /// Queued; this is the sender. False when there is no target.
    bool sendMsg(Glob* target, char const* name);
    /// Delivered before it returns; the answer is the handler's, as that of `callMessage`.
    int callMsg(Glob* target, char const* name);

    // --- Keyboard focus
    /// Called when it has gained or lost the focus; `get_kbd_focus()` tells which.
    virtual void handleKbdFocus();
    /// False when it is not shown or not active.
    bool claimKbdFocus();
    /// Hands the focus on when it holds it; to the root where `to` is null or cannot take it.
    void relinquishKbdFocus(Glob* to);

    // --- Self-description
    /// Fills in what it says about itself; overriders call their base first.
    virtual void describe(GlobDescription& description) const;
    /// Adds what a child is to this one: which of a set it is. Called only when relations are asked for.
    virtual void describeChild(Glob const& child, GlobDescription& description) const;
    /// What is in it and is no `Glob`: rows, cells, nodes. Null when there is nothing of the kind, as here.
    virtual DescribedItems* describedItems() { return nullptr; }
    /// To be called when something of that has changed; free when nobody listens.
    void describeChanged(DescriptionChange what);
    /// The widget that says in words what this one is: its name counts instead of this one's own. Null takes
    /// it away. It may die first.
    void setLabelledBy(Glob* label);
    /// Null when there is none, or it has died.
    Glob* getLabelledBy() const;
    /// What changes when this is used, as what a scroll bar scrolls. Null takes it away. It may die first.
    void setControls(Glob* controlled);
    LightweightString<char> name() const;
    void setName(LightweightString<char> name);

    // CanvasClient
    CanvasPlace canvasPlace() const override;
    void damageAbove(IntBox const& area) override;
    void sharedCanvasDying(Canvas const& canvas) override;

private:
    friend class Activity;
    friend class Tree;
    friend class Placement;
    friend class Painting;
    friend class Lifetime;
    friend class ContainmentPath;
    friend class GlobNotices;
    struct Side;

    enum Flag : std::uint32_t {
        visibleFlag = 1u << 0,
        activeFlag = 1u << 1,
        opaqueFlag = 1u << 2,
        dirtyFlag = 1u << 3,
        dyingFlag = 1u << 4,
        trashableFlag = 1u << 5,
        indestructibleFlag = 1u << 6,
        persistableFlag = 1u << 7,
        lightweightFlag = 1u << 8,
        canBeItFlag = 1u << 9,
        resizableFlag = 1u << 10,
        movableFlag = 1u << 11,
        movingFlag = 1u << 12,
        reparentableFlag = 1u << 13,
        containsPointerFlag = 1u << 14,
        /// The children were drawn by `drawWidgets()` in this visit.
        widgetsDrawnFlag = 1u << 15,
        /// Marks of a layout pass.
        placingFlag = 1u << 16,
        placedFlag = 1u << 17,
        relativeFlag = 1u << 18,
        userAreaFlag = 1u << 19,
        watchedFlag = 1u << 20,
        /// One of its ancestors is inactive.
        inactiveAboveFlag = 1u << 21,
        layoutPendingFlag = 1u << 22,
    };

    bool hasFlag(Flag flag) const { return (flags_ & flag) != 0; }
    void setFlag(Flag flag, bool on) { flags_ = on ? flags_ | flag : flags_ & ~flag; }
    Side& side();
    void init(XY<int> size, Canvas* canvas, bool opaque);
    /// Takes focus and captured pointer away from it and all below it, and tells nobody: the former holder of
    /// the pointer, which is given, is told when the change is done that asked for it.
    HandlerRef<Glob> loseInput();
    enum class Whose { itsToo, below };
    /// The pointer alone: its own and that of all below it, or of these only.
    HandlerRef<Glob> losePointer(Whose whose);
    /// Hands on the focus that it, or what lies in it, has.
    void handOnKbdFocus();
    bool moveHere(Glob* child);
    void tellParent(ChildChange change);
    void surroundChanged();
    /// It is the root of a window.
    bool isWindow() const;
    /// Damages it with what is drawn round it.
    void damageWithSurround();
    /// It lies on its parent's canvas, or on its own there: what damages the parent damages it.
    bool liesOnParent() const;
    /// Whether a handler that was added for such events has consumed it.
    bool offerToHandlers(Event const& event);
    void leaveSharedCanvas();
    /// It, and what shares a canvas with it below, lies on this canvas from now on.
    void moveToCanvas(Canvas& canvas);
    /// What a moving object does with the pointer. True = used.
    bool followPointer(Event const& event);

    std::uint32_t flags_;
    std::uint32_t numChildren_ = 0;
    Glob* parent_ = nullptr;
    Glob* firstChild_ = nullptr;
    Glob* lastChild_ = nullptr;
    Glob* previous_ = nullptr;
    Glob* next_ = nullptr;
    XY<int> position_;
    unsigned short width_ = 0;
    unsigned short height_ = 0;
    unsigned short oldWidth_ = 0;
    unsigned short oldHeight_ = 0;
    /// The place rule: offset from a corner, or with `relativeFlag` a rule in the side record.
    XY<int> offset_;
    CoordinateOrigin origin_ = CoordinateOrigin::bottomLeft;
    int interest_ = 0;
    /// Its number in the parent's child grid.
    std::uint32_t gridNumber_ = 0;
    /// `Damage::numTaken()` when all of it was damaged and none of that has been painted; else another
    /// number.
    std::uint32_t wholeDamaged_ = 0;
    Canvas ownCanvas_;
    Canvas* canvas_ = nullptr;
    Palette palette_;
    /// What few have: surround, limits, colour, name, relative place, child grid, event handlers.
    std::unique_ptr<Side> side_;
};

static_assert(sizeof(Glob) <= 192);

/// Whether a pointer still names a live `Glob`; never touches it.
WAINSCOT_API bool is_good_glob_ptr(Glob const* glob);
/// Same as `delete`; null and dangling pointers are ignored.
WAINSCOT_API void destroy(Glob* glob);
/// The gap between two boxes on the screen in pixels; negative exactly when they overlap.
WAINSCOT_API double glob_pseudo_distance(Glob const* a, Glob const* b);
/// The event's place in the coordinates of a `Glob`.
WAINSCOT_API XY<int> eventXYToGlobXY(Event const& event, Glob const& glob);
/// Steps through the roots of all windows: null gives the first, each root the next, the last one null.
WAINSCOT_API Glob* walk_all_root_globs(Glob* previous);
/// The owner of a canvas; null for null.
WAINSCOT_API Glob* canvas_to_glob(Canvas const* canvas);
/// The `Glob` that sent a message; null when it was none or has died.
WAINSCOT_API Glob* event_to_sender_glob(Event const& event);
WAINSCOT_API bool canvas_is_mapped_to_root(Canvas const* canvas);
/// Damages all of a canvas.
WAINSCOT_API void canvupd_mark_all(Canvas* canvas);

} // namespace wainscot
