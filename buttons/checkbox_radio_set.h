#pragma once

#include "buttons/checkbox_panel.h"
#include "buttons/radio_set_checkbox.h"
#include "foundation/bindable.h"

namespace wainscot {

/// A panel of round checkboxes of which one is chosen. Its value is the index of the chosen checkbox, row by
/// row; -1 while none is chosen.
///
/// The adaptor is asked about a choice by the user; a refused choice is taken back. Then the parent is called
/// during the click with `selectionChangedMsg`, with this as sender. It may destroy everything.
class WAINSCOT_API CheckboxRadioSet : public Bindable<ValWidget<int>, CheckboxPanel>,
                                      public CheckboxRadioSetBase {
public:
    static constexpr LightweightString<char> selectionChangedMsg{"CRSChanged"};

    /// What it tells others.
    static constexpr MessageInfo messageTable[] = {
        {"CRSChanged", MessageInfo::fixed, selectionChangedMsg.view(), MessageInfo::called, 0,
         "the choice has changed by a click, a key or `setSelectedItem`"},
        {"adaptor", MessageInfo::fixed, {}, MessageInfo::callback, 0, "before, where it is bound to data"},
    };

    class WAINSCOT_API InitArgs : public CheckboxPanel::InitArgs {
    public:
        InitArgs(std::vector<UIString> texts, XY<int> const& size);
        explicit InitArgs(std::vector<UIString> texts = {}, unsigned short w = 0, unsigned short h = 0);
        /// The index that is chosen at first; -1 = none.
        int selected = -1;
    };

    explicit CheckboxRadioSet(InitArgs const& args);
    /// With one column; a width or height of 0 becomes the size that the checkboxes need.
    CheckboxRadioSet(std::vector<UIString> const& labels, Palette const& palette, int width, int height,
                     Canvas* canvas);
    ~CheckboxRadioSet() override;

    /// Chooses as a click does, with all reports. Does nothing for the chosen index, or out of range.
    void setSelectedItem(int index);
    int getSelectedItem() const { return getWidgetValue(); }
    int getWidgetValue() const override;
    /// An index out of range chooses none.
    void setNewWidgetValue(int& index, eRedrawFlag redraw) override;
    /// The callback is told instead of the parent; null = the parent again. The message keeps its name.
    void setCallback(WidgetCallback const& callback) { reporter_.setCallback(callback.getCallback()); }

    /// Whether the chosen label is bold; at first as in `InitArgs::bold`.
    void setBoldWhenTicked(bool bold);
    void setTextColourWhenTicked(Colour const& colour);

    int handleMessageEvent(LightweightString<char> name, Glob* sender) override;
    void describe(GlobDescription& description) const override;

protected:
    void handleCheckboxClick(Checkbox* clicked) override;
    void handleDataMixed(bool mixed, eRedrawFlag redraw) override;
    void reportUserChange(DataChangeType why) override;

private:
    void clearOther(Glob const* sender);

    Reporter reporter_;
};

} // namespace wainscot
