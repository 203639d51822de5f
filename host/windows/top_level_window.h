#pragma once

#include "host/drawing/surface.h"
#include "host/objects/glob.h"
#include "host/windows/backend.h"

namespace wainscot {

/// A window on the screen: the root that it shows, its pixels and the native window under it.
class WAINSCOT_API TopLevelWindow {
public:
    /// Attaches the surface to the root's canvas. The window is not shown yet.
    TopLevelWindow(Glob& root, std::unique_ptr<NativeWindow> native, double scale);

    Glob& root() const { return *root_; }
    IdStamp rootStamp() const { return rootStamp_; }
    Surface& surface() { return surface_; }
    NativeWindow& native() const { return *native_; }

    /// The window system shows nothing of it.
    bool isHidden() const { return hidden_; }
    void setHidden(bool hidden);

    /// The window system gave it another size or place: the root follows.
    void nativeResized(XY<int> size);
    void nativeMoved(XY<int> place);
    /// The program gave the root another size or place: the window follows.
    void rootResized();
    void rootMoved();

    bool hasPaintWork();
    void paint();
    /// Brings what was painted to the screen.
    void present();
    /// Closes the native window; nothing is presented from then on.
    void close();
    bool isOpen() const { return native_ != nullptr; }

private:
    Glob* root_;
    IdStamp rootStamp_;
    std::unique_ptr<NativeWindow> native_;
    Surface surface_;
    bool hidden_ = false;
    /// A change that came from the window system is not sent back to it.
    bool following_ = false;
};

} // namespace wainscot
