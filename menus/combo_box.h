#pragma once

#include "menus/drop_down_button_base.h"
#include "menus/model/menu_data.h"
#include "text/text_box.h"

namespace wainscot {

/// A text box with a list of texts to choose from. Any text can be entered. What is typed is completed to the
/// first item that begins with it; the completion is selected, so that typing goes on over it. A long list
/// opens while the user types, with the items that hold the typed text.
///
/// Its value and what it tells are those of the text box: a choice from the list is a change of the text
/// (`eChanged`), for which bound data is asked at once. After a choice the callbacks of the item run, and the
/// parent is told `chosenMsg`.
class WAINSCOT_API ComboBox : public TextBox {
public:
    /// Sent to the parent when the user has chosen an item, from the list or with the arrow keys.
    static constexpr LightweightString<char> chosenMsg{"comboBoxChosen"};
    /// Longer lists open while the user types.
    static constexpr std::size_t longestPlainList = 30;
    static constexpr MessageInfo messageTable[] = {
        {"chosen", MessageInfo::fixed, chosenMsg.view(), MessageInfo::queued, 0,
         "the user has chosen an item, from the list or with the arrow keys"},
        {"items", MessageInfo::fixed, {}, MessageInfo::callback, 0, "before: the callbacks of the item"},
        {"appearing",
         MessageInfo::fixed,
         {},
         MessageInfo::callback,
         0,
         "the list is about to open, after `setAppearing`; the items may still be changed"},
    };

    enum Step { openList, nextItem, previousItem };
    static constexpr KeyRow<Step> keyTable[] = {
        {Key::alt | Key::down, openList, "opens the list, or closes it"},
        {Key::alt | Key::up, openList, "opens the list, or closes it"},
        {Key::function(4), openList, "opens the list, or closes it"},
        {Key::down, nextItem, "chooses the next item"},
        {Key::up, previousItem, "chooses the item before"},
    };

    class WAINSCOT_API InitArgs : public TextBox::InitArgs {
    public:
        explicit InitArgs(Qv::Ptr<MenuData> list, unsigned short w, unsigned short h = 0, Text content = {})
            : TextBox::InitArgs(w, h, std::move(content)), items(std::move(list)) {}

        Qv::Ptr<MenuData> items;
        /// The list grows no higher than that; 0 = a dozen rows.
        unsigned short maxHeight = 0;
    };

    explicit ComboBox(InitArgs const& args);
    ~ComboBox() override;

    Qv::Ptr<MenuData> const& getItems() const { return items_; }
    /// Other items; the text stays. An open list closes.
    void setItems(Qv::Ptr<MenuData> items);
    /// The item that shows the present text; `MenuData::none` when there is none.
    unsigned short getChosenItem() const;
    /// Whether what is typed is completed. At first it is.
    void setCompletes(bool completes) { completes_ = completes; }
    /// Called before the list opens.
    void setAppearing(std::function<void()> prepare);
    bool isListOpen() const;
    bool showList();
    void hideList();

    int handleMouseEvent(Event const& event) override;
    void reshape() override;
    void setActive(bool active, eRedrawFlag redraw = eRedrawYes) override;
    void describe(GlobDescription& description) const override;

protected:
    int performKey(std::uint32_t key) override;
    Use performAction(std::uint32_t key, bool hadAnchor) override;
    void handleCursorChange() override;
    void handleEditEnd() override;
    void leaveByReturn() override;

private:
    void takeSpelling();
    class Arrow;
    class List;

    void placeArrow();
    void complete();
    void followTyping();
    void step(int direction);
    void choose(MenuItem const& item);
    /// The items that the list shows now.
    std::vector<unsigned short> matchingItems() const;
    List* makeList();

    Qv::Ptr<MenuData> items_;
    HandlerRef<Arrow> arrow_;
    /// What was typed since the last choice, without the completion.
    Text typed_;
    unsigned short maxHeight_ = 0;
    bool completes_ = true;
    bool hasTyped_ = false;
};

} // namespace wainscot
