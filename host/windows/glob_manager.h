#pragma once

#include "host/base/box.h"
#include "host/drawing/drawable.h"
#include "host/objects/look_change.h"
#include "host/objects/root_host.h"
#include "host/objects/widget_position.h"
#include "host/windows/input_event.h"

#include <memory>
#include <optional>
#include <vector>

namespace wainscot {

class Backend;
class Canvas;
class Event;
class Modality;
class GlobCreationInfo;
class PopUpChain;
class TopLevelWindow;
struct NativeWindowSettings;

/// How a pop-up is to be opened. All places are root coordinates.
struct PopUpOptions {
    /// Its lower-left corner. Without it the pop-up opens where its root lies already (`setupRootPos`).
    std::optional<XY<int>> place;
    /// The pop-up lies on the monitor of this box. Without it the opener's box decides, else the pointer.
    std::optional<IntBox> anchor;
    /// The object whose press opens it. Its presses reach it while the pop-up is open.
    Glob* opener = nullptr;
    /// The open pop-up whose sub-menu it is.
    Glob* parent = nullptr;
};

/// Keeps the roots of the tree in windows.
class WAINSCOT_API GlobManager final : public iRootHost, public Drawable::Painter {
public:
    explicit GlobManager(Backend& backend);
    ~GlobManager() override;
    GlobManager(GlobManager const&) = delete;
    GlobManager& operator=(GlobManager const&) = delete;

    /// The manager of the live host; throws when no host lives.
    static GlobManager& instance();
    /// The same, or null.
    static GlobManager* current();

    /// Shows a root in a window of its own and takes it over. Its size is the window's; without `place` (its
    /// lower-left corner in root coordinates) the system chooses the place. A root that has a window is
    /// brought to the front. False, and the root still belongs to the caller, for null, a child or a dying
    /// object, and when the window system refuses. True also when the root was destroyed meanwhile.
    bool realize(Glob* root, std::optional<XY<int>> place = {});
    /// The same for a window that belongs to the window of `owner`: it stays above that window and is
    /// destroyed with it. Without `place` it opens in the middle of the owner's window, wholly on one
    /// monitor.
    bool realizeOwned(Glob* root, Glob* owner, std::optional<XY<int>> place = {});
    /// Opens a pop-up: a root in a window without decoration, above all others, never the active one and
    /// wholly on one monitor. It becomes part of the chain of pop-ups (see `PopUpChain`); its modal context
    /// is its parent pop-up, or its opener. False, and the root still belongs to the caller, when no window
    /// of the program is active, or as for `realize`. True also when the root was destroyed meanwhile.
    bool openPopUp(Glob* root, PopUpOptions const& options = {});
    /// Shows a root as a note that takes no input and belongs to the window of `owner`: above all windows, in
    /// no chain, never the active one. False, and the root still belongs to the caller, as for `realize`.
    bool openNote(Glob* root, XY<int> place, Glob& owner);
    /// The pop-up leaves its chain and stays open (it was pinned).
    void pinPopUp(Glob* root);
    /// Whether a new window can take it: it is alive, nobody's child, and in no window.
    bool isFree(Glob const* glob) const;
    /// Whether a root is in a pop-up window, pinned or not.
    bool isPopUp(Glob const* root) const;
    PopUpChain& popUps();
    PopUpChain const& popUps() const;

    /// Makes an object modal until it dies: input outside its modal chain is refused (see `Modality`). A root
    /// without a window gets a window that belongs to the window of `context`; null = the active window.
    /// False when that is refused; true also when the object was destroyed meanwhile.
    bool addModalGlob(Glob* glob, Glob* context);
    /// From now on `glob` gets input whenever modality lets `context` have input.
    void setModalContextGlob(Glob* glob, Glob* context);
    /// Takes back `addModalGlob` and `setModalContextGlob`.
    void unsetModalContextGlob(Glob* glob);
    bool isModal(Glob const& glob) const;
    Modality const& modality() const;
    /// Called with the holder of the focus and a key press that no object and no command has used; answers
    /// whether the key was used. Null until it is set.
    using UnusedKeyHandler = bool (*)(Glob& target, Event const& key);
    void setUnusedKeyHandler(UnusedKeyHandler handler) { unusedKey_ = handler; }
    bool handleUnusedKey(Glob& target, Event const& key) { return unusedKey_ && unusedKey_(target, key); }
    /// Input was refused because of a modal object: its window comes to the front and flashes.
    void showModal(Glob& modal);

    /// Shows a root again: its corner, edge or centre named by `origin` lies at `place`; then it is moved
    /// wholly onto one monitor. A root without a window gets one. `toTop` brings it to the front.
    bool redisplay(Glob* root, XY<int> const& place, CoordinateOrigin origin, bool toTop);
    /// Where a root of that size lies by a position: next to the sibling, any object on the screen, or
    /// measured from a corner of the active window's monitor.
    XY<int> getPosForGlob(GlobCreationInfo const& info, WidgetPosition const& position) const;
    /// The same, wholly on one monitor. Next to a sibling it goes to the other side when the wanted side has
    /// no room; `*opposite` then becomes true.
    XY<int> getSafePosForGlob(GlobCreationInfo const& info, WidgetPosition const& position,
                              bool* opposite = nullptr) const;
    /// Next to a box in root coordinates, on its monitor.
    XY<int> getSafePosForGlob(GlobCreationInfo const& info, IntBox const& anchor, WidgetRelativity side,
                              int gap = 0, WidgetAlignment alignment = WidgetAlignment::start,
                              bool* opposite = nullptr) const;
    /// The place of a pop-up on that side of its anchor (root coordinates). It touches the anchor and lies
    /// wholly on the anchor's monitor; it is moved along the edge as far as needed. A negative y when that
    /// side has no room.
    XY<int> calcPosForGlob(XY<int> const& size, IntBox const& anchor,
                           WidgetRelativity side = WidgetRelativity::below,
                           WidgetAlignment alignment = WidgetAlignment::start) const;
    /// Boxes of the monitors; never empty, the first is the main one.
    std::vector<IntBox> monitors() const;
    IntBox monitorFor(IntBox const& box) const;
    /// The monitor of the active window, else the main monitor.
    IntBox activeMonitor() const;
    /// The active window, or the last active one; null when it has gone.
    TopLevelWindow* activeWindow() const;

    /// Keeps the window of a canvas above all windows without this setting.
    void canvasKeepTopmost(Canvas* canvas, bool keep);
    /// The foremost window, pop-ups left out; null when there is none.
    TopLevelWindow* foremost() const;
    /// The foremost window of all.
    TopLevelWindow* topmost() const;

    /// Monitors, or the scale of the screen, have changed: windows are brought back onto the screen, laid out
    /// and painted.
    void screenChanged();
    /// Tells every object what of the look has changed, lays all windows out again and paints them.
    void lookChanged(LookChange changes);
    void setDeviceScale(double scale);
    double deviceScale() const;

    /// The root with that name, or the first object with it below a root; null when there is none.
    Glob* find(char const* name) const;
    void setWindowTitle(Glob& root, LightweightString<wchar_t> const& title);
    /// The user wants to close a window. Unless `canBeDestroyed` refuses, the root gets "poot", and is
    /// destroyed when it does not handle that.
    void closeRequested(Glob& root);

    std::size_t numWindows() const;
    /// Null when there is none.
    TopLevelWindow* windowOf(Glob const* root) const;
    TopLevelWindow* windowOf(NativeWindowId id) const;
    /// By the stamp of its root.
    TopLevelWindow* windowOfStamp(IdStamp root) const;
    /// The foremost window at a place in root coordinates; null when there is none.
    TopLevelWindow* windowAt(XY<int> place) const;
    /// The window system has brought a window to the front.
    void broughtToFront(TopLevelWindow& window);
    /// A window is the active one from now on: keys go there, and its root's canvas is `glib_rootcanvas()`.
    void activated(TopLevelWindow& window);

    bool hasPaintWork() const;
    /// Destroys all roots. Windows that open meanwhile are closed too, and in the end refused.
    void closeAll();

    // iRootHost
    void rootResized(Glob& root) override;
    void rootMoved(Glob& root) override;
    void rootVisibilityChanged(Glob& root) override;
    void rootDying(Glob& root) override;
    void rootSurroundChanged(Glob& root) override;
    void rootToTop(Glob& root, bool activate) override;
    void constrainRoot(Glob& root) override;
    bool isBlocked(Glob const& glob) const override;
    std::vector<Glob*> roots() const override;
    Glob* rootAfter(Glob const* root) const override;

    // Drawable::Painter: paints and presents all windows
    void paintPending() override;
    void dropPending() override;

private:
    static void modalityChanged();
    struct Wish;
    bool realizeFor(Glob* root, Glob* owner, std::optional<XY<int>> place, bool isModal);
    bool mayOpen(Glob const* root) const;
    void shrinkToFit(Glob& root, Wish const& wish) const;
    NativeWindowSettings settingsFor(Glob const& root, Wish const& wish) const;
    /// Opens the window of a root that has none. False when the window system refuses or the root has died.
    bool open(Glob& root, Wish const& wanted);
    void destroyOwned(Glob const& root);
    /// The window of an object; for an object in a pop-up the window to which the pop-up belongs; else the
    /// active window.
    TopLevelWindow* ordinaryWindowFor(Glob* context) const;
    static void hideNative(TopLevelWindow& window);
    /// The monitor of a box, less the room for the frame of the window.
    IntBox roomFor(TopLevelWindow const& window, IntBox const& box) const;
    IntBox roomForPopUp(Glob const& root, IntBox const& anchor) const;
    /// Makes a window that is larger than its monitor smaller, and moves it there.
    void fitOnScreen(Glob& root);
    XY<int> placeBy(GlobCreationInfo const& info, WidgetPosition const& position) const;
    template <class Visit>
    void visitDamaged(Visit visit);
    void tellLookChanged(LookChange changes);

    struct Parts;
    Backend& backend_;
    std::unique_ptr<Parts> parts_;
    UnusedKeyHandler unusedKey_ = nullptr;
    /// Whether all windows are being closed.
    bool refusesWindows_ = false;
    bool tellsLook_ = false;
    /// The changes that are still to be told.
    LookChange lookChanges_ = LookChange::none;
};

} // namespace wainscot
