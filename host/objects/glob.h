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
/// A `Glob` lives on the heap and belongs to its parent; the root of a window belongs to the window manager.
/// `delete`, `destroy()` and the death of the parent are the same: the whole subtree is detached at once, so
/// that nobody finds it any more, and its memory is freed when the outermost running handler has returned.
///
/// Places and sizes are logical pixels, y upwards. The stored place is relative to the parent's lower-left
/// corner.
class WAINSCOT_API Glob : public EventHandler, public CanvasClient {
public:
    /// Asks an object to close itself.
    static constexpr LightweightString<char> pootMsg{"poot"};

    /// Makes the compiler refuse counted pointers: the tree is the owner.
    using OwnedByTree = void;
    using Visitor = std::function<bool(Glob&)>;

    explicit Glob(GlobCreationInfo const& info);
    Glob(unsigned short width, unsigned short height, Palette const& palette = Palette(), bool opaque = true,
         Canvas* canvas = nullptr);
    /// From saved settings: "name", "x", "y", "visible", "active".
    Glob(configb const& settings, unsigned short width, unsigned short height);
    ~Glob() override;

    // Not inline: compilers that see the definitions warn of a mismatch between the two.
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
    /// `child` when it is a child of this object, else null.
    Glob* getWidget(Glob* child) const;
    /// The child at an index; null when out of range.
    Glob* getWidget(unsigned short index) const;
    /// Whether `ancestor` is among the parents of `glob`.
    static bool isParentedTo(Glob const* glob, Glob const* ancestor);
    /// The same, or `glob` is `root` itself. False for null.
    static bool isWithin(Glob const* glob, Glob const* root);
    /// The topmost ancestor; a root's root is itself. Null for null.
    static Glob* getRootParent(Glob* glob);

    /// Whether `addChild` would take it.
    bool mayTake(Glob const* child) const;
    /// Takes over a child and places it. Null, and refused, for null, this object, an ancestor, the root of a
    /// window and a dying object. Null also when the child or this object was destroyed meanwhile. A child of
    /// this object is only placed again; a child of another parent is moved here.
    Glob* addChild(Glob* child, WidgetPosition const& position = {}, WidgetSurround surround = {});
    template <class T>
    T* addChild(std::unique_ptr<T> child, WidgetPosition const& position = {}, WidgetSurround surround = {}) {
        T* const added = child.get();
        if (!mayTake(added)) return addChild(nullptr), nullptr;
        child.release();
        return addChild(static_cast<Glob*>(added), position, surround) ? added : nullptr;
    }
    /// Adds a child at a corner. With `before` it lies below that sibling in the order, else on top.
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
    /// Takes a child out of the tree and hands it over to the caller; null when it is not a child of this
    /// object.
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

    // --- Walkers. Each walks a snapshot and skips objects that have died meanwhile. A visitor that answers
    // false ends the walk.
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
    /// The nearest object on the screen (by `glob_pseudo_distance`) that `accept` takes. This object, its
    /// ancestors and its descendants are not asked. Null when there is none.
    Glob* findNearestGlob(bool (*accept)(Glob*));

    // --- Lifetime policies, respected by the window manager and by tools, never by `delete`.
    void setTrashable(bool trashable) { setFlag(trashableFlag, trashable); }
    bool isTrashable() const { return hasFlag(trashableFlag); }
    void setIndestructible(bool indestructible) { setFlag(indestructibleFlag, indestructible); }
    bool isIndestructible() const { return hasFlag(indestructibleFlag); }
    /// Whether the user may close it. The meaning of `reason` is up to the caller.
    virtual bool canBeDestroyed(int reason);
    void setPersistable(bool persistable) { setFlag(persistableFlag, persistable); }
    bool isPersistable() const { return hasFlag(persistableFlag); }
    /// Whether it is only a part of its parent: drivers and assistive tools do not see it.
    void setLightweight(bool lightweight) { setFlag(lightweightFlag, lightweight); }
    bool isLightweight() const { return hasFlag(lightweightFlag); }
    /// Whether it may become the active window.
    void setCanBeIt(bool can) { setFlag(canBeItFlag, can); }
    bool canBeIt() const { return hasFlag(canBeItFlag); }
    /// Detached, and waiting for its memory to be freed.
    bool isDying() const { return hasFlag(dyingFlag); }
    /// It is being destroyed, and has lost its parent and its children. Nobody finds it any more, but its
    /// memory may stay until the outermost handler has returned. Here it leaves everything that it is
    /// registered with (tab orders, observers). It must not call out. Overriders call their base.
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
    /// Its place on the canvas on which it lies. For an owner of a canvas: its place on the parent's canvas.
    int getX() const { return placeOnCanvas().x; }
    int getY() const { return placeOnCanvas().y; }
    XY<int> placeOnCanvas() const;
    /// Gives it a new size (rounded, clamped to 0 to 65535, 0 for NaN) and calls `reshape()`. Widgets
    /// override it to lay out their parts.
    virtual void resize(double width, double height);
    /// Called after the size has changed: places the children again.
    virtual void reshape();
    /// `resize()` and a repaint of the whole box.
    void reshapeAndDraw(XY<int> const& size);
    /// `reshape()` and a repaint although the size is as before.
    void forceReshape();
    void setMinSize(unsigned short width, unsigned short height);
    XY<int> getMinSize() const;
    /// The nearest allowed size. `edges` says which edges the user moves.
    virtual XY<int> sizeConstrain(XY<int> const& wanted, int edges) const;
    virtual void setResizable(bool resizable) { setFlag(resizableFlag, resizable); }
    bool isResizable() const { return hasFlag(resizableFlag); }
    void setMovable(bool movable) { setFlag(movableFlag, movable); }
    bool isMovable() const { return hasFlag(movableFlag); }
    /// Follows the pointer from now on, until `stopMoving()` or the release.
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

    /// Moves a child; its place is its place rule from now on.
    void setWidgetPos(Glob* child, XY<int> const& place);
    /// Gives a child a place and a size in one step. The place is its place rule from now on.
    void reshapeWidgetAt(Glob* child, XY<int> const& place, XY<int> const& size);
    /// The child's place in this object; (0, 0) when it is not a child.
    XY<int> getWidgetPos(Glob* child) const;
    /// Places all children by their rules.
    void positionChildWidgets();
    void positionChildWidget(WidgetDetails const& details);
    /// Where a child lies by its rule, in this parent's coordinates.
    IntBox getAbsRect(WidgetDetails const& details) const;
    /// Makes the present places the children's place rules, so that they no longer follow corners or
    /// siblings.
    void calcAbsoluteWidgetPositions();
    /// The area for children inside borders and title.
    virtual IntBox getUserArea() const;

    /// Moves its lower-left corner to a place in root coordinates. Its place rule stays as it is.
    void setScreenPos(XY<int> const& place);
    /// Moves its window by as little as possible so that it lies wholly on one monitor.
    void constrainWithinScreen();
    /// Brings its window to the front; with `activate` the window becomes the active one as well. Nothing
    /// while it has no window.
    void popToTop(bool activate = true);
    /// Has all scrolling ancestors scroll it into view, as far as it fits. Does nothing while a button of the
    /// pointer is held, so that objects stay under the pointer.
    void bringIntoView();
    /// The same for a part of it, in its own coordinates.
    void bringIntoView(IntBox const& part);
    /// For scrolling objects: scrolls an area, in its own coordinates, into view. Gives how far the contents
    /// have moved.
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
    /// Whether it is in a window, and it and all its ancestors are visible and mapped. False for removed and
    /// for dying objects.
    bool isShown() const;
    /// Whether it, or one of its ancestors, is invisible or unmapped; a window does not matter.
    bool isHidden() const;
    /// An inactive object takes no keys and no focus, and is drawn faint. So do its descendants, whose own
    /// settings stay as they are.
    virtual void setActive(bool active, eRedrawFlag redraw = eRedrawYes);
    /// Whether it and all its ancestors are active.
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
    /// Makes the outline of its canvas anew after a change of size.
    virtual void reshapeCanvas();
    bool isOpaque() const { return hasFlag(opaqueFlag); }
    void setOpaque(bool opaque) { setFlag(opaqueFlag, opaque); }
    /// Its whole box in coordinates of its canvas: the area for a renderer.
    IntBox canvasArea() const;
    /// Marks it as out of date, and damages its whole box.
    void makeDirty();
    void makeClean() { setFlag(dirtyFlag, false); }
    bool isDirty() const { return hasFlag(dirtyFlag); }
    /// Damages a part of it, in its own coordinates.
    void damage(IntBox const& part);

    Palette const& getPalette() const { return palette_; }
    /// Sets the palette and has the object painted; children keep their palettes.
    virtual void setPalette(Palette const& palette);
    /// The look has changed: overriders compute and load again what depends on it. Afterwards everything is
    /// laid out and painted.
    virtual void handleLookChange(LookChange changes);
    /// The colour of its ground: the palette's until it is set.
    Colour getCol() const;
    virtual void setCol(Colour const& colour, bool redraw);

    /// What is drawn round it, painted by its parent.
    void addSurround(Surround const& surround);
    void removeSurround();
    bool hasSurround() const;
    /// What is drawn round it; an empty one when there is nothing.
    Surround getSurround() const;
    /// Adds a soft shadow to its surround, at the edges named by `Surround::Edge`.
    void addShadow(int size, double opacity, unsigned edges = 15);

    // --- Events
    bool handleEvent(Event const& event) override;
    /// What the widget does with an event. True = consumed. Overriders pass all other events to their base.
    /// `Glob::react` calls the two message handlers for messages, and passes keys, mouse and wheel on to the
    /// parent.
    virtual bool react(Event const& event);
    /// Adds kinds of events that it wants besides those that reach it anyway; 4096 = timer events.
    void setInterest(int kinds);
    void clearInterest(int kinds);
    int interest() const { return interest_; }
    /// When its next timer event comes; see `EventTimeServer::setNextTimer`.
    void setNextTimer(double ms);
    /// From now on `handler` is offered all events of these kinds (groups) that reach this object, before
    /// this object.
    void addEventHandler(Glob* handler, int kinds);
    /// Removes the handlers that were added for exactly these kinds.
    void removeEventHandler(int kinds);
    /// The pointer has entered or left its box.
    virtual void handleMouseContainment(bool inside);
    bool containsPointer() const { return hasFlag(containsPointerFlag); }
    /// Whether a held Return or space repeats, as for text and lists.
    virtual bool repeatsReturnAndSpace() const;
    /// A character without Ctrl, Alt or Meta, or one of the plain control characters.
    static bool isPlainKey(unsigned int code);
    IdStamp windowStamp() const override;
    Glob* asGlob() override;

    // --- Pointer
    /// The pointer's shape over a place in its own coordinates; `inheritCursor` leaves it to the parent.
    virtual MouseCursorID contextCursor(XY<int> const& place) const;
    /// The text shown when the pointer rests on it; `more` stands below it in fainter letters. Empty texts
    /// leave it to the parent.
    void setContextString(UIString const& tip, UIString const& more = UIString());
    /// What is shown when the pointer rests at a place in its own coordinates. False = nothing of its own.
    virtual bool getTooltipDetails(XY<int> const& place, TooltipDetails& details) const;
    /// Whether the pointer's way comes in small steps, none left out, while this object holds the pointer.
    virtual bool wantsFullMotion() const;
    /// Whether the pointer's way goes on past the screen's edges while this object holds the pointer. At the
    /// end the pointer is back at the place of the press.
    virtual bool wantsUnboundedMotion() const;
    /// Whether it measures time with the processor clock. While it holds the pointer and has timer interest,
    /// that clock then runs with wall time.
    virtual bool isAutoRepeating() const;
    // A press ends once: with the release of its last button, or with one of the next two calls. After these
    // no release comes, and they choose nothing.
    /// Escape was pressed while it held the pointer, or the release is lost, because its window was
    /// deactivated, minimised or hidden. It holds the pointer no more. Overriders undo what the press began.
    /// The base moves a moving object back to where it was, and calls `handleCaptureLost()`, which is enough
    /// for objects with nothing to undo.
    virtual void handlePressCancelled(Event const& press);
    /// It has lost the pointer: it was hidden or taken out of its parent, the release went to a pop-up, or
    /// another object took the pointer. Called when that change is done. Overriders let go of what they hold,
    /// without a report. The base stops moving.
    virtual void handleCaptureLost();
    /// Calls `handleCaptureLost()` of a former holder that still lives. That may destroy anything.
    static void tellCaptureLost(HandlerRef<Glob> const& holder);

    // --- Text entry
    /// The caret's box in its own coordinates while text can be entered here; otherwise nothing. While it
    /// holds the focus, unfinished composed text appears at the caret.
    virtual std::optional<IntBox> textCaret() const;

    // --- Dragging
    enum eDropReason {
        /// The item is being dragged over it.
        dropHover,
        /// It was let go here.
        dropFinal
    };
    /// Whether it takes an item at a place in its own coordinates. The object under the pointer is asked
    /// first, then its ancestors.
    virtual bool canAccept(DragDropItem const& item, XY<int> const& place, eDropReason reason);
    /// Takes the item. False = it has refused it after all.
    virtual bool acceptDrop(DragDropItem& item, XY<int> const& place, eDropReason reason);
    /// The pointer's shape while an accepted item is dragged over it; `inheritCursor` = the usual shape.
    virtual MouseCursorID getDropCursor(DragDropItem const& item, XY<int> const& place) const;
    /// An item has come over it, moves over it, or has left, so that it can mark where the item would go.
    virtual void handleDragHover(DragDropItem const& item, XY<int> const& place, bool inside);
    /// The drag that began here has ended; `taken` says whether somebody took the item.
    virtual void handleDragEnd(DragDropItem& item, bool taken);

    // --- Messages
    /// Queues a message with this object as sender. False when there is no target.
    bool sendMsg(Glob* target, char const* name);
    /// Delivers a message with this object as sender, and gives the handler's answer, as `callMessage` does.
    int callMsg(Glob* target, char const* name);

    // --- Keyboard focus
    /// Called when it has gained or lost the focus; `get_kbd_focus()` tells which.
    virtual void handleKbdFocus();
    /// False when it is not shown or not active.
    bool claimKbdFocus();
    /// Hands the focus on when it holds it; to the root when `to` is null or cannot take it.
    void relinquishKbdFocus(Glob* to);

    // --- Self-description
    /// Fills in what it says about itself; overriders call their base first.
    virtual void describe(GlobDescription& description) const;
    /// Adds what a child is to this object: its place in a set. Called only when relations are asked for.
    virtual void describeChild(Glob const& child, GlobDescription& description) const;
    /// The items in it: rows, cells, nodes. Null when it has no items, as here.
    virtual DescribedItems* describedItems() { return nullptr; }
    /// To be called when a part of its description has changed; free when nobody listens.
    void describeChanged(DescriptionChange what);
    /// Sets the widget whose name counts as the name of this one. Null takes it away. It may die first.
    void setLabelledBy(Glob* label);
    /// Null when there is none, or it has died.
    Glob* getLabelledBy() const;
    /// Sets the widget that changes when this one is used, such as the list that a scroll bar scrolls. Null
    /// takes it away. It may die first.
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
    /// Takes the focus and the captured pointer away from it and its descendants, and tells nobody. Gives the
    /// former holder of the pointer, which the caller tells when its change is done.
    HandlerRef<Glob> loseInput();
    enum class Whose { itsToo, below };
    /// The same for the pointer alone: from it and its descendants, or from the descendants only.
    HandlerRef<Glob> losePointer(Whose whose);
    /// Hands on the focus when it or a descendant holds it.
    void handOnKbdFocus();
    bool moveHere(Glob* child);
    void tellParent(ChildChange change);
    void surroundChanged();
    /// Whether it is the root of a window.
    bool isWindow() const;
    /// Damages it with what is drawn round it.
    void damageWithSurround();
    /// Whether it lies on its parent's canvas, or on its own canvas there: damage of the parent is damage of
    /// this object.
    bool liesOnParent() const;
    /// Whether a handler that was added for such events has consumed it.
    bool offerToHandlers(Event const& event);
    void leaveSharedCanvas();
    /// It, and the descendants that share its canvas, lie on this canvas from now on.
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
    /// Equals `Damage::numTaken()` while all of it is damaged and nothing of that has been painted.
    std::uint32_t wholeDamaged_ = 0;
    Canvas ownCanvas_;
    Canvas* canvas_ = nullptr;
    Palette palette_;
    /// What few objects have: surround, limits, colour, name, relative place, child grid, event handlers.
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
/// The `Glob` that sent a message; null when the sender is not a `Glob` or has died.
WAINSCOT_API Glob* event_to_sender_glob(Event const& event);
WAINSCOT_API bool canvas_is_mapped_to_root(Canvas const* canvas);
/// Damages all of a canvas.
WAINSCOT_API void canvupd_mark_all(Canvas* canvas);

} // namespace wainscot
