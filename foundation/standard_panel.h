#pragma once

#include "foundation/border.h"
#include "foundation/makers.h"
#include "foundation/rect.h"
#include "foundation/report.h"
#include "foundation/tab_order_manager.h"
#include "host/objects/surround.h"

#include <string_view>

namespace wainscot {

class CanvasRenderer;
class Layout;

/// The standard distances of panels, see `StandardPanel::calcSize`.
enum eSpacing : int {
    spacingButton = 0,
    spacingIndent = 1,
    spacingDoubleIndent = 2,
    spacingTitleStrip = 3,
    spacingEdge = 4,
};

/// How much a panel shows of itself.
enum size_state : unsigned char { sizeFull = 0, sizeMinimised = 1 };

/// A panel: a coloured body with a border, an optional title strip with standard widgets, a context menu and
/// a tab order of its own. The base of panels that hold widgets, and of most widgets.
///
/// Events come to the virtual handlers below; the answer 1 consumes an event. Other events are handled by the
/// panel, and then by `Glob`.
///
/// Messages, to the parent, queued, with the panel as sender: `titleTypedMsg` whenever the text of an
/// editable title changes, `titleChangedMsg` when editing has ended with another title.
class WAINSCOT_API StandardPanel : public rect, public TabOrderManager {
public:
    /// What the do-it button sends to its panel.
    static constexpr LightweightString<char> doItMsg{"do_it"};
    static constexpr LightweightString<char> titleTypedMsg{"StdPanelTitleTyped"};
    static constexpr LightweightString<char> titleChangedMsg{"StdPanelTitleChanged"};

    /// What it tells its parent.
    enum Messages { titleTyped, titleChanged };
    static constexpr MessageInfo messageTable[] = {
        {"StdPanelTitleTyped", MessageInfo::fixed, titleTypedMsg.view(), MessageInfo::queued, 0,
         "the text of an editable title has changed"},
        {"StdPanelTitleChanged", MessageInfo::fixed, titleChangedMsg.view(), MessageInfo::queued, 0,
         "editing the title has ended with another text"},
    };

    /// What a panel can have besides its own widgets; bits, which may be added.
    enum StandardWidgetFlags : int {
        closeWidget = 0x01,
        settingsWidget = 0x02,
        sizeWidget = 0x04,
        doItWidget = 0x08,
        pinWidget = 0x10,
        editableTitle = 0x20,
        editableTitleToo = 0x40,
        /// A latching icon button in the place of the settings button, unless there is a settings button.
        latchWidget = 0x80,
        /// Makes no widget: stands for a title in the calculation of sizes.
        plainTitle = 0x100,
        /// Each of these brings the title strip.
        stripFlags = closeWidget | settingsWidget | sizeWidget | pinWidget | editableTitle |
                     editableTitleToo | latchWidget | plainTitle,
    };

    /// The pixels that border and title take on each side.
    struct UserAreaBorders {
        int left = 0;
        int bottom = 0;
        int right = 0;
        int top = 0;
        friend bool operator==(UserAreaBorders const&, UserAreaBorders const&) = default;
    };

    /// Construction record; derived widgets derive their records from it.
    class WAINSCOT_API InitArgs : public GlobCreationInfo {
    public:
        InitArgs(unsigned short w, unsigned short h, Border const& frame = Border())
            : GlobCreationInfo(w, h), border(frame) {}
        explicit InitArgs(XY<int> const& size, Border const& frame = Border())
            : GlobCreationInfo(size), border(frame) {}
        explicit InitArgs(int const (&size)[2], Border const& frame = Border())
            : GlobCreationInfo(size), border(frame) {}
        InitArgs(GlobCreationInfo const& info, Border const& frame = Border())
            : GlobCreationInfo(info), border(frame) {}

        Border border;
    };

    explicit StandardPanel(InitArgs const& args);
    StandardPanel(unsigned short width, unsigned short height);
    StandardPanel(unsigned short width, unsigned short height, Palette const& palette, bool opaque = true,
                  Canvas* canvas = nullptr);
    /// Sizes are kept within 0 to 65535.
    explicit StandardPanel(XY<int> const& size);
    /// The same for a size in braces: `StandardPanel({300, 200})`.
    explicit StandardPanel(int const (&size)[2]) : StandardPanel(XY<int>{size[0], size[1]}) {}
    StandardPanel(XY<int> const& size, Palette const& palette);
    /// From saved settings; besides those of `rect`: "border" (a kind), "border_size", "title",
    /// "standard_widgets" (flags). Invalid kinds and sizes count as none.
    StandardPanel(configb const& settings, unsigned short width, unsigned short height);
    ~StandardPanel() override;

    // --- Geometry
    /// A standard distance in pixels: `spacingButton` is the height of a button, `scale` times;
    /// `spacingIndent` and `spacingEdge` the indent, `spacingDoubleIndent` twice that; `spacingTitleStrip`
    /// the height of a title strip in that border. 0 for any other number.
    static int calcSize(eSpacing spacing, float scale = 1.0F, Border const& border = Border());
    /// The size of a panel with these standard widgets and that border, for a wanted user area.
    static XY<int> calcPanelSize(XY<int> const& userSize, int flags, Border const& border);
    /// The room for border and title strip. The do-it button takes none: it lies above the user area.
    static UserAreaBorders getUserAreaBorders(int flags, Border const& border);
    /// The standard width of a kind of border.
    static unsigned short calcBorderSize(Border::eType type) { return Border::calcSize(type); }
    /// The area that border, title strip and status area leave, in the panel's coordinates; it may be empty.
    IntBox getUserArea() const override;

    /// From now on this places the children that were added to it, in the user area. The former one is
    /// destroyed, the children stay; null leaves them where they are. A layout that belongs to another panel
    /// cannot be given.
    template <class T>
    T* setLayout(std::unique_ptr<T> layout) {
        T* const taken = layout.get();
        return takeLayout(std::move(layout)) ? taken : nullptr;
    }
    void setLayout(std::nullptr_t);
    /// Null when it has none.
    Layout* getLayout() const;

    Border const& getBorder() const { return border_; }
    /// Lays the panel out again.
    void setBorder(Border const& border);
    void setBorderStyle(Border::eType type) { setBorder(Border(type)); }

    // --- Title
    /// An empty text takes the title away, and the strip too unless a standard widget stands there.
    void setTitle(UIString const& title, Glib::FontDesc const& font, eRedrawFlag redraw = eRedrawYes);
    /// In the standard font for titles.
    void setTitle(UIString const& title, eRedrawFlag redraw = eRedrawYes);
    UIString getTitle() const;
    /// The shown text.
    LightweightString<wchar_t> getTitleW() const;
    /// The number of the title's resource text; `noResText` when it has none.
    ResId getTitleResId() const;
    Glib::FontDesc getTitleFont() const;
    /// Lets the user edit the title, or no longer. Nothing is edited while no title boxes are registered.
    void setEditableTitle(bool editable);
    /// The title box; null when there is none.
    Glob* getTitleWidget() const;
    /// The width of a text in the title's font.
    int calcTitleWidth(UIString const& title) const;
    /// The width that the standard widgets leave in the title strip.
    int calcMaxTitleWidgetWidth() const;
    /// Gives the title box that width, and calls `handleTitleWidgetResize()`.
    void resizeTitleWidget();
    /// The title was changed by the program: shows it in the title box and calls `handleTitleChange()`.
    void handleTitleChangeInternal(eRedrawFlag redraw);
    /// Called by the title box: its text has changed, and editing has ended.
    void handleTitleTyped();
    void handleTitleEdited();

    // --- Standard widgets
    /// Asks for widgets by `StandardWidgetFlags` besides those asked for already, and makes those that are
    /// missing.
    void addStandardWidgets(int flags);
    void removeStandardWidgets(int flags, bool redraw = true);
    /// All flags that were asked for.
    int getStandardWidgetFlags() const { return standardFlags_; }
    /// Whether it is one of the standard widgets or the title box.
    bool isStandardWidget(Glob const* widget) const;
    /// The standard widget of that kind; null when there is none.
    Glob* getStandardWidget(StandardWidget which) const;
    /// Puts the standard widgets in their places: from the upper right corner to the left close, size, pin
    /// and settings or latch; in the lower right corner do-it.
    void positionStandardWidgets();
    /// Adds a widget, which the panel then owns, to the status area along the lower edge, behind the others.
    /// The user area lies above that. A width of 0 leaves the widget its width. Null when refused, as by
    /// `addChild`.
    Glob* addStatusWidget(Glob* widget, unsigned short width);

    // --- State
    /// Whether there is a pin button and it is down.
    bool isPinned() const;
    /// The pin button was pressed, down or up: calls `handleAutoClose` with the opposite.
    void handlePinned(bool pinned);
    /// Stores the size state; the settings or latch button shows it, down when minimised.
    void setSizeFlag(size_state state);
    size_state getSizeFlag() const { return sizeState_; }
    /// Lets the size button change between the full size and the title strip alone, unless `handleFlipSize`
    /// consumes the press.
    void setMinimisable(bool minimisable) { minimisable_ = minimisable; }
    bool isMinimisable() const { return minimisable_; }
    /// Shrinks it to its title strip, with its upper edge in place, or brings the former height back. Its own
    /// widgets are hidden meanwhile.
    void setMinimised(bool minimised);
    bool isMinimised() const { return minimised_; }
    /// Whether its window is resizable, as for any `Glob`, and whether its edges can be dragged, for panels
    /// without a frame of the window system. Edges are fixed until this is called.
    void setResizable(bool resizable) override;
    bool hasResizableEdges() const { return resizableEdges_; }

    /// Lets Tab go from the last stop, and Shift+Tab from the first stop, to the next panel in the window,
    /// instead of round this panel. Off unless set: then F6 leaves the panel.
    void setTabGoesOn(bool goesOn) { tabGoesOn_ = goesOn; }
    bool doesTabGoOn() const { return tabGoesOn_; }

    // --- For derived classes. Unless stated otherwise each does nothing and answers 0. 1 = consumed.
    // `handleMessageEvent` and `handleDataMessageEvent` are those of `EventHandler`.
    /// A key press. After 0, Tab and Shift+Tab go to the next stop of the panel. All other answers but 1
    /// leave the key to `Glob`.
    virtual int handleKeyboardEvent(int keyCode);
    virtual int handleKeyReleaseEvent(int keyCode);
    /// Presses, releases, moves and the wheel.
    virtual int handleMouseEvent(Event const& event);
    /// Steps of a zoom gesture, positive = in.
    virtual int handleZoom(int steps);
    virtual int handleTimerEvent();
    /// The size button was pressed.
    virtual int handleFlipSize();
    /// The title has changed, by the program or by the user.
    virtual void handleTitleChange();
    virtual void handleTitleWidgetResize();
    /// Sets whether presses outside close the panel when it is a pop-up. The base takes the pop-up out of its
    /// chain, or makes it a chain of its own again.
    virtual void handleAutoClose(bool closes);
    /// "poot" was heard and not consumed: destroys the panel, unless `canBeDestroyed` says no.
    virtual void handlePoot();
    /// The palette for standard widgets and other children: the panel's palette, or one derived from the
    /// panel's own colour.
    virtual Palette getColoursForWidgets() const;

    // --- Drawing
    /// Draws the border as if it were `scale` times as wide, with round corners if the body has them, and the
    /// title.
    virtual void drawBorder(float scale);
    /// The border alone, with square corners, along these edges (`Surround::Edge`).
    void drawSquarePanelBorder(float scale, unsigned int edges = Surround::allEdges);
    /// The line under the title strip, `scale` times as thick as usual.
    virtual void drawTitleSeparator(float scale);
    /// Fills a box, in the panel's coordinates, at once.
    void eraseRectangle(IntBox const& box, Colour const& colour);
    /// The coloured part of the title strip, in the panel's coordinates; empty without a strip.
    IntBox getTitleBar() const;

    /// Recolours the standard widgets as well.
    void setPalette(Palette const& palette) override;
    void setCol(Colour const& colour, bool redraw = true) override;

    // Glob
    SizeNeeds sizeNeeds() const override;
    int heightForWidth(int width) const override;
    bool handleChildChange(Glob& child, ChildChange change) override;
    void handleLayout() override;
    bool react(Event const& event) override;
    void handlePressCancelled(Event const& press) override;
    void handleCaptureLost() override;
    void handleDetached() override;
    void reshape() override;
    void drawBackground() override;
    void drawBorder() override;
    MouseCursorID contextCursor(XY<int> const& place) const override;
    /// Over a title that was cut to fit, its full text, unless the panel has a tip of its own.
    bool getTooltipDetails(XY<int> const& place, TooltipDetails& details) const override;
    void handleLookChange(LookChange changes) override;
    void describe(GlobDescription& description) const override;

private:
    friend class PanelFrame;
    friend class PanelLook;
    friend class PanelMinimising;
    friend class PanelTabKeys;
    friend class PanelTitle;
    friend class PanelWidgets;
    struct Extras;

    void init(Border const& border);
    Extras& extras();
    /// The flags that were asked for, and whether there is a title.
    int layoutFlags() const;
    bool hasStrip() const { return (layoutFlags() & stripFlags) != 0; }
    /// False when it, or this, was destroyed by someone who was told of a new child.
    bool takeLayout(std::unique_ptr<Layout> layout);
    UserAreaBorders takenOfUserArea() const;
    /// Puts everything that depends on border and strip in its place.
    void layOut();

    bool reactToKey(Event const& event);
    bool reactToMessage(Event const& event);
    bool reactToMouse(Event const& event);
    bool isTabStopHere(TabOrderable& stop) const override;

    /// Title, widgets, and the state while it is minimised or dragged: few panels have any of that.
    std::unique_ptr<Extras> extras_;
    Border border_;
    size_state sizeState_ = sizeFull;
    /// The edges that are being dragged, or the title strip.
    unsigned char grip_ = 0;
    unsigned short standardFlags_ : 9 = 0;
    /// Follows the standard width.
    bool standardBorder_ : 1 = true;
    bool minimisable_ : 1 = false;
    bool minimised_ : 1 = false;
    bool resizableEdges_ : 1 = false;
    bool tabGoesOn_ : 1 = false;
};

static_assert(sizeof(StandardPanel) <= 272);

} // namespace wainscot
