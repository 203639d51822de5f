#pragma once

#include "foundation/type_ahead.h"
#include "foundation/val_observer.h"
#include "menus/drop_down_button.h"
#include "menus/drop_down_menu.h"

namespace wainscot {

/// A choice of one item out of a list: the face shows the selected item, a press opens the list. The wheel
/// and the arrow keys go to the next item that can be selected, letters find one.
///
/// The selection belongs to the `DropDownMenuData`, which other widgets may show, too. The parent is told of
/// what the user chooses, not of what the program selects.
class WAINSCOT_API DropDownMenuButton : public DropDownButton<DropDownMenu>, private ValObserverClient {
public:
    /// Sent to the parent when the user has chosen an item, or a command.
    static constexpr LightweightString<char> dropDownMenuButtonMsg{"ddMenuBtnMsg"};
    static constexpr MessageInfo messageTable[] = {
        {"chosen", MessageInfo::fixed, dropDownMenuButtonMsg.view(), MessageInfo::queued, 0,
         "the user has chosen an item: in the list, with the wheel or with keys"},
        {"appearing",
         MessageInfo::fixed,
         {},
         MessageInfo::callback,
         0,
         "the list is about to open, after `setAppearing`; the items may still be changed"},
        {"items", MessageInfo::fixed, {}, MessageInfo::callback, 0, "before: the callbacks of the item"},
    };

    enum Step { openList, previousItem, nextItem, firstItem, lastItem };
    static constexpr KeyRow<Step> keyTable[] = {
        {Key::alt | Key::down, openList, "opens the list, or closes it"},
        {Key::alt | Key::up, openList, "opens the list, or closes it"},
        {Key::function(4), openList, "opens the list, or closes it"},
        {Key::up, previousItem, "selects the item above"},
        {Key::down, nextItem, "selects the item below"},
        {Key::home, firstItem, "selects the first item"},
        {Key::end, lastItem, "selects the last item"},
    };

    class WAINSCOT_API InitArgs : public Button::InitArgs {
    public:
        /// A width of 0 becomes the width that the widest item needs.
        explicit InitArgs(Qv::Ptr<DropDownMenuData> list, unsigned short w = 0, unsigned short h = 0);
        InitArgs(Qv::Ptr<DropDownMenuData> list, XY<int> const& size);

        Qv::Ptr<DropDownMenuData> items;
        eMode mode = eStaysDown;
        /// The list grows no higher than that; 0 = as high as there is room above or below the button.
        unsigned short maxHeight = 0;
    };

    explicit DropDownMenuButton(InitArgs const& args);
    explicit DropDownMenuButton(Qv::Ptr<DropDownMenuData> items);
    ~DropDownMenuButton() override;

    Qv::Ptr<DropDownMenuData> const& getItems() const { return items_; }
    /// Other items. An open list closes.
    void setItems(Qv::Ptr<DropDownMenuData> items);
    /// The logical index; -1 when nothing is selected.
    short getSelectedItem() const { return items_->getSelectedItem(); }
    /// Selects an item by its physical index. False as for `DropDownMenuData::setSelectedItemPhysical`.
    bool setSelectedItemInternal(unsigned short item, bool notify);
    /// Whether the face shows the selected item. Otherwise it shows the button's label.
    void useSelectedForButtonDisplay(bool use);
    /// Takes the width that the widest item needs.
    void autoSize();
    /// That width, in pixels.
    int calcWidth() const;

    /// The items, or the selection, were changed: shows the selected item.
    virtual void handleCurrentItemChange();

    bool react(Event const& event) override;
    void handleLookChange(LookChange changes) override;
    SizeNeeds sizeNeeds() const override;
    void describe(GlobDescription& description) const override;

protected:
    DropDownMenu* makeDropDown() override;
    /// What the list is made from.
    DropDownMenu::InitArgs listArgs();
    void handleMouseWheelDelta(int delta) override;
    /// An item was chosen in the list. The message holds a `MenuData::Change`.
    virtual void handleItemClick(NotifyMsg const& message);
    /// Tells the parent of a choice. Anything may be destroyed in it.
    virtual void informOwner();
    void drawDropDownButtonText() override;
    /// A press gives it the keyboard focus, except in a pop-up.
    bool pressBegan(Event const& event) override;

private:
    void notifyValChanged(ValObserverBase* observer) override;
    void initCurrentString();
    void setItemColours();
    bool performStep(Step step);
    bool selectNear(int from, int direction);
    int selectedIndex() const;
    bool select(int item);
    bool typeAhead(std::uint32_t key);

    Qv::Ptr<DropDownMenuData> items_;
    ValObserver<int> observer_;
    UIString ownLabel_;
    std::optional<Colour> itemText_;
    std::optional<Colour> itemGround_;
    TypeAhead typed_;
    unsigned short maxHeight_ = 0;
    bool showsSelected_ = true;
    bool automaticWidth_ = false;
};

} // namespace wainscot
