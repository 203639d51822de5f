#pragma once

#include "buttons/checkbox_panel.h"

namespace wainscot {

/// A framed panel of checkboxes that are ticked independently of each other.
///
/// Sends `clickedMsg` to its parent, queued, with this as sender, whenever the user has toggled a checkbox.
class WAINSCOT_API CheckboxGroup : public CheckboxPanel {
public:
    static constexpr LightweightString<char> clickedMsg{"CheckboxGroupClicked"};

    /// What it tells others.
    static constexpr MessageInfo messageTable[] = {{"CheckboxGroupClicked", MessageInfo::fixed,
                                                    clickedMsg.view(), MessageInfo::queued, 0,
                                                    "the user has toggled one; read `getLastClicked()`"}};

    class WAINSCOT_API InitArgs : public CheckboxPanel::InitArgs {
    public:
        /// With a frame and a title on it.
        InitArgs(UIString const& heading, std::vector<UIString> texts, XY<int> const& size);
        InitArgs(UIString const& heading, std::vector<UIString> texts, unsigned short w = 0,
                 unsigned short h = 0);
    };

    explicit CheckboxGroup(InitArgs const& args);
    ~CheckboxGroup() override;

    /// False when there is no such checkbox.
    bool isTicked(int index) const;
    /// Nobody is told.
    void setTicked(int index, bool ticked);
    /// The checkbox that the user toggled last; -1 = none yet.
    int getLastClicked() const { return lastClicked_; }
    /// The callback is told instead of the parent; null = the parent again. The message keeps its name.
    void setCallback(WidgetCallback const& callback) { reporter_.setCallback(callback.getCallback()); }

    int handleMessageEvent(LightweightString<char> name, Glob* sender) override;
    void describe(GlobDescription& description) const override;

private:
    int lastClicked_ = -1;
    Reporter reporter_;
};

} // namespace wainscot
