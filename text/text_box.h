#pragma once

#include "text/text_entry.h"

#include <memory>

namespace wainscot {

class TextLineView;

/// One line of text that the user edits. Its value is the text.
///
/// It tells its owner what `requestCallback` asks for: `eEditStart` and `eEditEnd` when it gets and loses the
/// keyboard focus, `eChanged` when the user changes the text, `eReturn` when Return ends the editing,
/// `eDoubleClick` when a box that cannot be edited is clicked twice. Bound data is asked once at the end of
/// editing, before the owner hears of that; also before a press elsewhere, and before a key that the box does
/// not use, so that buttons and commands find what was entered.
class WAINSCOT_API TextBox : public TextEntry {
public:
    /// What it tells others, by `eCallbackEvent`. The messages have the names that were asked for.
    static constexpr MessageInfo messageTable[] = {
        {"edit start",
         MessageInfo::ownThenText,
         {},
         MessageInfo::queued,
         eEditStart,
         "it has got the keyboard focus"},
        {"edit end",
         MessageInfo::ownThenText,
         {},
         MessageInfo::queued,
         eEditEnd,
         "it has lost the keyboard focus; called when a step has set a new number"},
        {"changed",
         MessageInfo::ownThenText,
         {},
         MessageInfo::called,
         eChanged,
         "the user has changed the text"},
        {"return",
         MessageInfo::ownThenText,
         {},
         MessageInfo::queued,
         eReturn,
         "Return was pressed; the keyboard focus goes next"},
        {"double click",
         MessageInfo::ownThenText,
         {},
         MessageInfo::queued,
         eDoubleClick,
         "a box that cannot be edited was clicked twice within 400 ms"},
        {"callback", MessageInfo::fixed, {}, MessageInfo::callback, 0, "instead, where a callback was given"},
        {"data",
         MessageInfo::fixed,
         {},
         MessageInfo::callback,
         0,
         "at the end of editing, before, where it is bound to data"},
    };

    /// A width or height of 0 is that of the text and of a button.
    class WAINSCOT_API InitArgs : public TextEntry::InitArgs {
    public:
        using TextEntry::InitArgs::InitArgs;
        InitArgs(GlobCreationInfo const& info) : TextEntry::InitArgs(info) {}

        /// Shown behind the text, such as a unit.
        Text suffix;
        bool obfuscated = false;
    };

    explicit TextBox(InitArgs const& args);
    TextBox(unsigned short width, unsigned short height, Palette const& palette, Canvas* canvas = nullptr);
    ~TextBox() override;

    /// What is shown: text, mask or ghost label, with the suffix.
    Text getDisplayText() const;

    // --- Look
    /// The text begins at the left margin.
    void setMargins(unsigned short left, unsigned short right) override;
    void setDisplaySuffix(Text const& suffix);
    void setObfuscatedDisplay(bool obfuscated) override;
    /// Between places in the text, from its left end, and places in a box that is not scrolled.
    int textXToDisplayX(int x) const;
    int displayXToTextX(int x) const;
    /// By how many pixels the text is scrolled to the left.
    int getScroll() const;
    void updateVisibleWindow() override;

    /// Tab selects all of the text.
    void handleTabStopFocusReceipt(eDirection direction) override;
    SizeNeeds sizeNeeds() const override;
    bool getTooltipDetails(XY<int> const& place, TooltipDetails& details) const override;

protected:
    /// Return was pressed, and told: gives up the focus.
    virtual void leaveByReturn();
    void takeFont() override;
    void showAll() override;
    void resetScroll() override;
    void damageText() override;
    void drawText(CanvasRenderer& renderer) override;
    XY<int> caretPlace() const override;
    int gapAt(XY<int> const& place) override;
    bool showsTextAt(XY<int> const& place) const override;
    Use performAction(std::uint32_t key, bool hadAnchor) override;
    bool bringsTextBack() const override { return true; }
    void handleEditEnd() override;
    void textEdited(TextEdit const& edit) override;

private:
    void init(InitArgs const& args);
    Use performReturn(std::uint32_t key);
    void performEscape();
    /// Where text can be seen, in its own coordinates.
    IntBox textArea() const;

    std::unique_ptr<TextLineView> line_;
    Text suffix_;
    /// As wide and as high as the standard says.
    bool standardWidth_ = false;
    bool standardHeight_ = false;
};

} // namespace wainscot
