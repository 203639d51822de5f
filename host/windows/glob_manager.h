#pragma once

#include "host/drawing/drawable.h"
#include "host/objects/root_host.h"
#include "host/windows/top_level_window.h"

#include <memory>
#include <optional>
#include <vector>

namespace wainscot {

/// Keeps the roots of the tree in windows.
class WAINSCOT_API GlobManager final : public iRootHost, public Drawable::Painter {
public:
    explicit GlobManager(Backend& backend);
    ~GlobManager() override;
    GlobManager(GlobManager const&) = delete;
    GlobManager& operator=(GlobManager const&) = delete;

    /// That of the live host; throws when none lives.
    static GlobManager& instance();
    /// The same, or null.
    static GlobManager* current();

    /// Shows a root in a window of its own and takes it over. Its size is the window's; the system chooses
    /// the place unless one is given (root coordinates of the lower-left corner). A root that has a window is
    /// brought to the front. False for null, a child, something dying, or when the window system refuses.
    bool realize(Glob* root, std::optional<XY<int>> place = {});
    /// The root with that name, or the first object with it below a root; null when there is none.
    Glob* find(char const* name) const;
    void setWindowTitle(Glob& root, LightweightString<wchar_t> const& title);
    /// Grants, or not, a person's wish to close a window: the root gets "poot" unless it cannot be destroyed,
    /// and is destroyed when it does not handle that.
    void closeRequested(Glob& root);

    std::size_t numWindows() const { return windows_.size(); }
    /// Null when there is none.
    TopLevelWindow* windowOf(Glob const* root) const;
    TopLevelWindow* windowOf(NativeWindowId id) const;
    /// The foremost window at a place in root coordinates; null when there is none.
    TopLevelWindow* windowAt(XY<int> place) const;
    /// It is above all others from now on, as far as is known here.
    void broughtToFront(TopLevelWindow& window);
    /// It is the active one from now on: keys go there, and its root's canvas is `glib_rootcanvas()`.
    void activated(TopLevelWindow& window);

    bool hasPaintWork() const;
    /// Destroys all roots.
    void closeAll();

    // iRootHost
    void rootResized(Glob& root) override;
    void rootMoved(Glob& root) override;
    void rootVisibilityChanged(Glob& root) override;
    void rootDying(Glob& root) override;
    std::vector<Glob*> roots() const override;

    // Drawable::Painter: paints and presents all windows
    void paintPending() override;
    void dropPending() override;

private:
    NativeWindowSettings settingsFor(Glob const& root, std::optional<XY<int>> place) const;
    template <class Visit>
    void visitWindows(Visit visit);

    Backend& backend_;
    /// In the order of opening.
    std::vector<std::unique_ptr<TopLevelWindow>> windows_;
    /// The foremost last.
    std::vector<TopLevelWindow*> stacking_;
};

} // namespace wainscot
