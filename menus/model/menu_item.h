#pragma once

#include "foundation/widget_callback.h"
#include "host/drawing/font.h"
#include "host/drawing/html_renderer.h"
#include "host/services/ui_string.h"
#include "menus/model/menu_item_type.h"

#include <span>
#include <vector>

namespace wainscot {

class CanvasRenderer;
class Glob;
class MenuData;
class MenuItemAction;

/// The bits of a menu item's flags. Other bits are free for the program.
struct MenuItemFlag {
    enum Bits : std::uint32_t {
        active = 1,
        /// Choosing the item closes the menu.
        closesMenu = 2,
        /// On an option: choosing it closes the menu.
        optionClosesMenu = 4,
        /// The item opens a sub-menu.
        cascading = 16,
        /// A command: choosing it never changes what a drop-down has selected.
        command = 32,
    };
};

/// One entry of a menu. A plain value: copies share what is large until one of them is changed.
///
/// The label may have parts: "Open||Ctrl+O" shows "Ctrl+O" at the right, "Size||[Small] [Large]" gives the
/// item two options, which are stepped through in place. What a single "|" stands before is not shown. Use
/// `plain()` for texts that come from elsewhere, such as the names of files.
///
/// An item is known by its id: two items are equal when their ids are, so a copy equals its original.
class WAINSCOT_API MenuItem {
public:
    using Action = Qv::Ptr<iCallbackBase<int, NotifyMsg>>;

    /// What a creator has made: either the items of a menu of the ordinary kind, or a widget of its own,
    /// which the caller then owns.
    struct SubMenu {
        Qv::Ptr<MenuData> items;
        Glob* widget = nullptr;
        explicit operator bool() const { return items || widget; }
    };

    /// Makes a sub-menu each time that it is to be shown.
    class WAINSCOT_API iSubMenuCreator : public virtual iObject {
    public:
        /// `menu` is the menu that asks. Nothing = there is no sub-menu at the moment. It may destroy
        /// everything.
        virtual SubMenu create(Glob& menu) = 0;
    };

    /// Draws the icon of an item.
    class WAINSCOT_API iIconRenderer : public virtual iObject {
    public:
        /// In logical pixels.
        virtual XY<int> size() const = 0;
        virtual void draw(CanvasRenderer& renderer, IntBox const& area, Colour const& colour) const = 0;
    };

    /// How the row of an item is laid out and drawn.
    struct Layout {
        /// Logical pixels between the edges of the row and what is in it.
        std::int32_t paddingLeft = 2;
        std::int32_t paddingRight = 2;
        bool hasLineAbove = false;
        bool hasLineBelow = false;
        bool isBold = false;
        bool isItalic = false;
        bool isSecondary = false;
        bool isIconAtRight = false;
        /// Has the mark of what is chosen among several.
        bool isMarked = false;
        /// The share of the accent in the ground of the row under the pointer.
        float highlightShare = 1.0F;
        /// A text that is too long is cut, with an ellipsis.
        bool isTextFitted = true;

        friend bool operator==(Layout const&, Layout const&) = default;
    };

    explicit MenuItem(UIString const& label = {});
    /// The format is one of `ResStrFmt`, for what is shown of the label.
    MenuItem(UIString const& label, WidgetCallback callback, MenuItemType type = eSimpleMenuItem,
             ResStrFmt format = eResStrPlain);
    MenuItem(UIString const& label, Action action);
    /// The labels of the options are formatted by `menuFormatString`.
    MenuItem(UIString const& label, WidgetCallback callback, std::vector<UIString> const& options,
             std::uint32_t format);
    MenuItem(UIString const& label, WidgetCallback callback, std::vector<MenuItem> options);
    MenuItem(UIString const& label, std::vector<MenuItem> options);
    MenuItem(UIString const& label, WidgetCallback callback, Colour const& text,
             MenuItemType type = eSimpleMenuItem);
    MenuItem(UIString const& label, WidgetCallback callback, Colour const& text, Colour const& background,
             MenuItemType type = eSimpleMenuItem);
    MenuItem(UIString const& label, Qv::Ptr<iSubMenuCreator> creator);

    /// An item whose text is shown as it is, whatever "|", "[" or mark-up it holds. It stays like that when
    /// it gets another label.
    static MenuItem plain(LightweightString<wchar_t> const& text);
    static MenuItem plain(LightweightString<wchar_t> const& text, WidgetCallback callback,
                          MenuItemType type = eSimpleMenuItem);
    bool isPlain() const { return isPlain_; }

    MenuItemType type() const { return type_.get(); }
    void setType(MenuItemType type) { type_ = Type(type); }
    bool isHeader() const { return isGroupHeader(type()); }

    /// The whole text, with all of its parts.
    LightweightString<wchar_t> const& label() const { return label_; }
    /// Options in the new text are not looked for: the item keeps those that it has.
    void label(UIString const& label);
    /// The label up to its first "|".
    LightweightString<wchar_t> getDisplayString() const;
    /// Whether that is its display string.
    bool shows(std::wstring_view text) const;
    /// Everything behind the first "||" of the label.
    LightweightString<wchar_t> getRightAlignedText() const;
    /// The same as it is drawn: without the options, and without blanks around it.
    LightweightString<wchar_t> getShownRightAlignedText() const;
    /// What is shown of a label with mark-up, in the item's colours of now; null for other labels.
    HTMLRenderer::ParagraphsPtr formattedLabel() const;
    /// More text for the right, for example a shortcut.
    LightweightString<wchar_t> getIncidentalText() const;
    void setIncidentalText(UIString const& text);
    /// Shows the keys of a command as incidental text; none when it has no keys. Needs a live host.
    void setCommand(char const* command);

    std::span<MenuItem const> options() const;
    void setOptions(std::vector<MenuItem> const& options);
    bool hasOptions() const { return !options().empty(); }
    /// It may lie beyond the options: then none of them is chosen.
    unsigned int getCurOption() const;
    void setCurOption(unsigned int option);
    /// On to the next option, and from the last one to the first.
    void incCurOption();
    /// Null when there is none. Valid until the item changes.
    MenuItem const* currentOption() const;
    std::uint32_t getOptionFormat() const;

    /// `MenuItemFlag::Bits`. A new item has 3, with a creator of a sub-menu 19; an option that was made from
    /// a text has 1.
    std::uint32_t getFlags() const { return flags_; }
    void setFlags(std::uint32_t flags) { flags_ = flags; }
    bool hasFlag(MenuItemFlag::Bits flag) const { return (flags_ & flag) != 0; }
    bool isActive() const { return hasFlag(MenuItemFlag::active); }
    void setActive(bool active);
    bool isSelectable() const { return isActive() && isChoosable(type()); }

    /// The standard look of now, where the item has no colours or font of its own.
    Colour getTextColour() const;
    Colour getBackgroundColour() const;
    Glib::FontDesc getFont() const;
    void setColours(Colour const& text, Colour const& background);
    void setFont(Glib::FontDesc const& font);
    /// Of texts of items without a colour of their own.
    static Colour getDefaultColour();
    Layout getLayout() const;
    void setLayout(Layout const& layout);

    /// A new item has an id that no other item ever had.
    LightweightString<char> id() const;
    /// Up to the first zero character.
    void id(LightweightString<char> const& id);
    bool hasId(LightweightString<char> const& id) const;

    /// What is run when the item is chosen, in order.
    std::vector<WidgetCallback> callbacks() const;
    bool hasCallbacks() const { return hasCallback_; }
    /// The first of them, when it is a `MenuItemAction`; else null.
    MenuItemAction* action() const;
    /// The only one from now on.
    void setCallback(WidgetCallback callback);
    void addCallback(WidgetCallback callback);

    Qv::Ptr<iSubMenuCreator> subMenuCreator() const;
    /// Sets or clears the flag `cascading`, too.
    void setSubMenuCreator(Qv::Ptr<iSubMenuCreator> creator);
    /// Has the creator make the sub-menu. Nothing when there is no creator, when it gave nothing or threw
    /// (both are counted in the diagnostics), or when `menu` has died in it. Item and list may be gone too.
    SubMenu createSubMenu(Glob& menu) const;
    Qv::Ptr<iIconRenderer> iconRenderer() const;
    void setIconRenderer(Qv::Ptr<iIconRenderer> renderer);

    /// Counts the changes of the types of all items, for those who remember what follows from types.
    static std::uint64_t numTypeChanges();

    /// Whether the ids are the same.
    friend WAINSCOT_API bool operator==(MenuItem const& a, MenuItem const& b);

private:
    struct Rare;
    /// Counts its changes.
    class Type {
    public:
        Type() = default;
        Type(MenuItemType type) : value_(static_cast<unsigned char>(std::min(type + 0U, 255U))) {}
        Type(Type const&) = default;
        Type& operator=(Type const& other) noexcept;
        MenuItemType get() const { return static_cast<MenuItemType>(value_); }

    private:
        unsigned char value_ = eSimpleMenuItem;
    };

    void init();
    void parseOptions();
    void storeLabel(LightweightString<wchar_t> label);
    Rare const& rare() const;
    Rare& editRare();

    LightweightString<wchar_t> label_;
    /// What few items have: a `Rare`, not named as such, so that items can be moved without a call.
    Qv::Ptr<Qv::InternalRefCount> rare_;
    /// Its text is the id; invalid when the item was given another one.
    IdStamp stamp_;
    /// Counts when `hasCallback_`.
    WidgetCallback callback_{LightweightString<char>()};
    std::uint32_t flags_ = 0;
    Type type_;
    bool hasCallback_ = false;
    bool isPlain_ = false;
    bool isRich_ = false;
};

static_assert(sizeof(MenuItem) == 64, "menus are long");

} // namespace wainscot
