#pragma once

#include "foundation/makers.h"
#include "host/messages/handler_ref.h"

namespace wainscot {

/// An object of the tree that can carry a context menu: it collects the items and opens the menu on a right
/// press, on the Menu key and on Shift+F10. Without items no menu opens and the event goes on.
class WAINSCOT_API MenuGlob : public Glob {
public:
    explicit MenuGlob(GlobCreationInfo const& info);
    MenuGlob(unsigned short width, unsigned short height, Palette const& palette = Palette(),
             bool opaque = true, Canvas* canvas = nullptr);
    MenuGlob(configb const& settings, unsigned short width, unsigned short height);
    ~MenuGlob() override;

    void clearMenu();
    /// Appends an item to the context menu; nothing happens while no menus are registered.
    void addMenuItem(MenuItem const& item);
    /// Takes away the items of the context menu with an id.
    void removeMenuItem(LightweightString<char> const& id);
    bool hasMenuItems() const { return menu_ && !menu_->isEmpty(); }
    /// Called before the menu opens, so that the items can be brought up to date. `event` opens it; null when
    /// the program does. Does nothing here.
    virtual void reviewMenu(Event const* event);
    /// Opens the menu at a place in root coordinates, and closes an open one. False when there are no items,
    /// or when it did not open.
    bool openMenu(XY<int> const& place, Event const* event = nullptr);
    /// The open context menu; null when none is open.
    Glob* contextMenu() const;

    bool react(Event const& event) override;

protected:
    /// Where keys open the menu, in its own coordinates: at the caret, or in the middle, here.
    virtual XY<int> menuPlaceForKeys() const;

private:
    bool opensMenu(Event const& event, XY<int>& place) const;

    std::unique_ptr<iContextMenu> menu_;
    HandlerRef<Glob> open_;
};

} // namespace wainscot
