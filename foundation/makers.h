#pragma once

#include "host/drawing/font.h"
#include "host/objects/glob.h"
#include "host/services/ui_string.h"

#include <functional>
#include <memory>
#include <optional>

namespace wainscot {

class MenuGlob;
class MenuItem;
class StandardPanel;

/// A context menu, as its object sees it; a higher family of widgets provides it.
class WAINSCOT_API iContextMenu {
public:
    virtual ~iContextMenu();
    virtual void clear() = 0;
    virtual void add(MenuItem const& item) = 0;
    /// Takes away the items with an id.
    virtual void remove(LightweightString<char> const& id) = 0;
    virtual bool isEmpty() const = 0;
    /// Opens the menu with its corner at a place in root coordinates; it sends its messages to `owner`. Gives
    /// the pop-up, which may outlive this object; null when it did not open.
    virtual Glob* open(MenuGlob& owner, XY<int> const& place) = 0;
};

/// The text box that stands in the title strip of a panel with an editable title. It calls
/// `StandardPanel::handleTitleTyped()` on every change of its text and `handleTitleEdited()` when editing has
/// ended.
class WAINSCOT_API iTitleBox {
public:
    virtual ~iTitleBox();
    /// The widget itself; the panel owns it.
    virtual Glob& glob() = 0;
    virtual LightweightString<wchar_t> titleText() const = 0;
    virtual void setTitleText(LightweightString<wchar_t> const& text) = 0;
};

/// What a box for a name tells when editing has ended: the text, or nothing when the user took it back.
using NameEdited = std::function<void(std::optional<LightweightString<wchar_t>> const&)>;

/// The widgets that a panel can have in its title strip and its corner.
enum class StandardWidget : unsigned char {
    close,
    size,
    pin,
    settings,
    /// A latching icon button in the place of the settings button.
    latch,
    doIt,
};

/// How panels get widgets of higher families. Each family registers its makers when the toolkit loads. A
/// widget without a maker is not made.
class WAINSCOT_API Registry {
public:
    using MakeContextMenu = std::unique_ptr<iContextMenu> (*)();
    /// The caller owns the widget. Latching widgets are an `iStateButton`.
    using MakeStandardWidget = Glob* (*)(Palette const& palette, StandardWidget which);
    /// Gives the title box; the caller owns its widget.
    using MakeTitleBox = iTitleBox* (*)(StandardPanel& panel, LightweightString<wchar_t> const& title,
                                        Glib::FontDesc const& font);

    /// Gives a text box in which a name is edited in its place; the caller owns it, shows it and gives it the
    /// focus. It calls the function once, when editing has ended.
    using MakeNameBox = Glob* (*)(LightweightString<wchar_t> const& name, Glib::FontDesc const& font,
                                  Palette const& palette, NameEdited ended);

    /// The registry of the host; it is emptied when the host goes.
    static Registry& instance();

    MakeContextMenu makeContextMenu = nullptr;
    MakeStandardWidget makeStandardWidget = nullptr;
    MakeTitleBox makeTitleBox = nullptr;
    MakeNameBox makeNameBox = nullptr;
};

/// A standard widget that shows a state of its panel: the pin button, for example, whether the panel is
/// pinned.
class WAINSCOT_API iStateButton {
public:
    virtual ~iStateButton();
    virtual bool isDown() const = 0;
    /// Nobody is told.
    virtual void setDown(bool down, eRedrawFlag redraw) = 0;
};

} // namespace wainscot
