#pragma once

#include "foundation/fitted_label.h"
#include "foundation/press.h"
#include "foundation/report.h"
#include "foundation/val_adaptor.h"

namespace wainscot {

class Checkbox;
class TabStrip;

/// A tab of a tabbed dialogue: a name that is pressed to bring a page forward, and on the wish of the owner a
/// check box and a button that closes the page. `TabbedDialogue` makes and owns it.
///
/// Where tabs can be renamed, a double click on the name edits it in place. Dragging something over a tab
/// brings its page forward after a moment.
class WAINSCOT_API Tab : public Pressable<rect> {
public:
    /// Sent to the dialogue, with the tab as sender, when the user has edited the name.
    static constexpr LightweightString<char> nameChangedMsg{"NameChanged"};
    static constexpr MessageInfo messageTable[] = {{"NameChanged", MessageInfo::fixed, nameChangedMsg.view(),
                                                    MessageInfo::queued, 0,
                                                    "the user has given the tab another name"}};

    /// A tab in a strip; null = in none.
    Tab(UIString const& name, TabStrip* strip);
    ~Tab() override;

    UIString const& getName() const { return label_.text(); }
    /// Nobody is told.
    void setName(UIString const& name);
    void setFont(Glib::FontDesc const& font);
    Glib::FontDesc const& getFont() const { return label_.font(); }
    /// The colour of the name; nothing = the palette's.
    void setTextColour(std::optional<Colour> const& colour);
    /// Whether its page is the one in front.
    bool isCurrent() const;
    /// The width in which everything is seen, up to a limit for long names.
    int neededWidth() const;
    int neededHeight() const;

    // --- Check box
    void addCheckbox();
    /// Null when it has none.
    Checkbox* getCheckbox() const;
    /// Binds the check box, which is made where there is none, and shows the data in it. Null binds it to
    /// nothing.
    void setCheckboxDataAdaptor(ValAdaptorBase<bool>* adaptor);

    // --- Close button
    void setClosable(bool closable);
    bool isClosable() const { return static_cast<bool>(closeButton_); }

    // --- Renaming
    /// Lets the user edit the name. False when it is out of sight, or while no boxes for names are
    /// registered.
    bool startRenaming();
    bool isRenaming() const { return static_cast<bool>(nameBox_); }

    // Glob
    bool react(Event const& event) override;
    void reshape() override;
    void draw() override;
    void drawBackground() override;
    void drawBorder() override;
    /// The accent along the upper edge of the current tab.
    virtual void drawTopEdge();
    bool canAccept(DragDropItem const& item, XY<int> const& place, eDropReason reason) override;
    void handleDragHover(DragDropItem const& item, XY<int> const& place, bool inside) override;
    MouseCursorID getDropCursor(DragDropItem const& item, XY<int> const& place) const override;
    bool getTooltipDetails(XY<int> const& place, TooltipDetails& details) const override;
    void setActive(bool active, eRedrawFlag redraw = eRedrawYes) override;
    void handleLookChange(LookChange changes) override;
    void handleDetached() override;
    void describe(GlobDescription& description) const override;

protected:
    bool pressBegan(Event const& event) override;
    void pressMoved(Event const& event) override;
    void pressEnded(PressEnd how) override;

private:
    friend class TabbedDialogue;
    friend class LazyTabbedDialogue;
    friend class TabStrip;

    /// Where the name is drawn, in its own coordinates.
    IntBox labelArea() const;
    void placeParts();
    /// What it needs has changed.
    void widthChanged();
    void endRenaming(std::optional<LightweightString<wchar_t>> const& name);

    FittedLabel label_;
    std::optional<Colour> textColour_;
    HandlerRef<TabStrip> strip_;
    HandlerRef<Glob> checkbox_;
    HandlerRef<Glob> closeButton_;
    HandlerRef<Glob> nameBox_;
    /// Whether the press is of the middle button; the pointer drags the tab.
    bool isMiddlePress_ = false;
    bool isDragged_ = false;

    // What the dialogue keeps of each tab.
    LightweightString<wchar_t> id_;
    HandlerRef<Glob> page_;
    /// What had the keyboard focus in the page when it was left.
    HandlerRef<Glob> focus_;
    bool isBuilt_ = false;
    // What the strip keeps.
    std::size_t index_ = 0;
    /// The pass of the strip in which it was placed last.
    unsigned int pass_ = 0;
};

} // namespace wainscot
