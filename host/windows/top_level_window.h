#pragma once

#include "host/drawing/surface.h"
#include "host/objects/glob.h"
#include "host/windows/backend.h"
#include "host/windows/window_margins.h"

namespace wainscot {

/// A window on the screen: the root that it shows, its pixels and the native window under it.
class WAINSCOT_API TopLevelWindow final : private Damage::Watcher {
public:
    enum class Kind : std::uint8_t { ordinary, popUp, note };

    /// Attaches the surface to the root's canvas. The window is not shown yet. `margins` is the room round
    /// the root, for what is drawn round it.
    TopLevelWindow(Glob& root, std::unique_ptr<NativeWindow> native, double scale, Kind kind = Kind::ordinary,
                   WindowMargins const& margins = {});

    Glob& root() const { return *root_; }
    IdStamp rootStamp() const { return rootStamp_; }
    Surface& surface() { return surface_; }
    NativeWindow& native() const { return *native_; }
    /// Without decoration, and never the active window; notes are such, too.
    bool isPopUp() const { return kind_ != Kind::ordinary; }
    bool isNote() const { return kind_ == Kind::note; }
    /// The root of the window that it belongs to; an invalid stamp when there is none.
    IdStamp ownerStamp() const { return owner_; }
    void setOwner(IdStamp owner) { owner_ = owner; }
    bool keepsAbove() const { return keepsAbove_; }
    void setKeepAbove(bool keep);

    /// Whether it is modal: tells the window manager, and that it belongs to `context` (null for none). It
    /// cannot be made so small that nothing is seen of it.
    void setModal(bool modal, TopLevelWindow const* context);
    bool isModal() const { return isModal_; }
    /// The least size of a root in a window of its own.
    static XY<int> leastSizeOf(Glob const& root, bool isModal);

    /// Whether the window system shows nothing of it.
    bool isHidden() const { return hidden_; }
    void setHidden(bool hidden);

    /// The window system gave it another size or place: the root follows.
    void nativeResized(XY<int> size);
    void nativeMoved(XY<int> place);
    /// The program gave the root another size or place: the window follows.
    void rootResized();
    void rootMoved();

    /// What is drawn round the root needs other room.
    void setMargins(WindowMargins const& margins);
    /// The scale of the screen is another.
    void setScale(double scale);

    /// A frame is drawn over its edges.
    void setMarked(bool marked);

    /// Hears when a window gets something to paint or present after it had nothing, and when it has something
    /// already at `watchDamage`.
    class DamageWatcher {
    public:
        virtual ~DamageWatcher() = default;
        virtual void damageAdded(TopLevelWindow& window) = 0;
    };
    /// Null for nobody. Not owned. `number()` gives the number from now on.
    void watchDamage(DamageWatcher* watcher, std::uint64_t number);
    std::uint64_t number() const { return number_; }
    /// Whether there is something to paint or present, also while painting is held back or the window is
    /// hidden.
    bool hasDamage() const;
    bool hasPaintWork();
    void paint();
    /// Brings what was painted to the screen.
    void present();
    /// Closes the native window; nothing is presented from then on.
    void close();
    bool isOpen() const { return native_ != nullptr; }

private:
    void damageAdded() override {
        if (watcher_) watcher_->damageAdded(*this);
    }
    /// Size and place of the native window for those of the root.
    XY<int> outerSize() const;
    XY<int> outerPlace() const;

    Glob* root_;
    IdStamp rootStamp_;
    std::unique_ptr<NativeWindow> native_;
    Surface surface_;
    WindowMargins margins_;
    Kind kind_;
    IdStamp owner_;
    DamageWatcher* watcher_ = nullptr;
    std::uint64_t number_ = 0;
    bool keepsAbove_ = false;
    bool isModal_ = false;
    bool hidden_ = false;
    /// A change that came from the window system is not sent back to it.
    bool following_ = false;
};

} // namespace wainscot
